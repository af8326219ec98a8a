#include "common/test_main.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

// The lines of an strace log where a program makes a socket other than a local one (Unix
// domain, kernel netlink) or names an Internet address.
QStringList networkUses(const QString &log)
{
    static const QRegularExpression socketCall(uR"(\bsocket(?:pair)?\((\w+))"_s);
    static const QRegularExpression internetAddress(uR"(\b(?:AF|PF)_INET6?\b)"_s);
    static const QStringList localFamilies{u"AF_UNIX"_s, u"AF_LOCAL"_s, u"AF_NETLINK"_s,
                                           u"PF_UNIX"_s, u"PF_LOCAL"_s, u"PF_NETLINK"_s};
    QStringList uses;
    for (const QString &line : log.split(u'\n')) {
        const QRegularExpressionMatch call = socketCall.match(line);
        if ((call.hasMatch() && !localFamilies.contains(call.captured(1))) || internetAddress.match(line).hasMatch())
            uses << line;
    }
    return uses;
}

// The first child of a process (Linux), here the program that strace started.
qint64 childOf(qint64 pid)
{
    QFile children(u"/proc/%1/task/%1/children"_s.arg(pid));
    if (!children.open(QIODevice::ReadOnly))
        return 0;
    return children.readAll().split(' ').value(0).toLongLong();
}

} // namespace

// Nothing leaves the machine: quillon-bilan and the application run under strace, which
// logs every network call; the log shows no socket but local ones and no Internet address.
// What stays on it, the journal and the report with their serial numbers, is readable by
// its owner only.
class TestPrivacy : public QObject
{
    Q_OBJECT

    QString m_strace;

private Q_SLOTS:
    void initTestCase()
    {
        m_strace = QStandardPaths::findExecutable(u"strace"_s);
        if (m_strace.isEmpty())
            QSKIP("strace est absent : installez-le (scripts/setup le fait sur Debian) pour vérifier que rien ne sort.");
    }

    // Each row: the program and its arguments, the files it writes in its home folder; the
    // application runs until it is told to quit: the run ends once the sample Mac is in the
    // journal. The first row is a program that does connect, to show that the check sees it.
    void noSocketButLocalOnes_data()
    {
        QTest::addColumn<QStringList>("command");
        QTest::addColumn<bool>("untilRecorded");
        QTest::addColumn<bool>("sendsOut");
        QTest::addColumn<QStringList>("privateFiles");
        const QString sample = QStringLiteral(QUILLON_CAPTURES_DIR) + u"/sample"_s;
        const QString journal = u"data/Quillon/journal.sqlite"_s;
        QTest::newRow("bash opening a TCP connection")
            << QStringList{u"bash"_s, u"-c"_s, u"exec 3<>/dev/tcp/127.0.0.1/9 || true"_s} << false << true
            << QStringList();
        QTest::newRow("quillon-bilan report, journal and export")
            << QStringList{QStringLiteral(QUILLON_BILAN), u"--capture"_s, sample, u"--record"_s, u"--output"_s, u"bilan.txt"_s}
            << false << false << QStringList{journal, u"bilan.txt"_s};
#ifdef QUILLON_APP
        QTest::newRow("application off-screen")
            << QStringList{QStringLiteral(QUILLON_APP)} << true << false << QStringList{journal};
#endif
    }

    void noSocketButLocalOnes()
    {
        QFETCH(QStringList, command);
        QFETCH(bool, untilRecorded);
        QFETCH(bool, sendsOut);
        QFETCH(QStringList, privateFiles);
        QTemporaryDir home;
        QVERIFY(home.isValid());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, home.path());
        environment.insert(u"XDG_DATA_HOME"_s, home.filePath(u"data"_s));
        environment.insert(u"XDG_CONFIG_HOME"_s, home.filePath(u"config"_s));
        environment.insert(u"XDG_RUNTIME_DIR"_s, home.path());
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        // LeakSanitizer stops the threads through ptrace, which strace holds already.
        environment.insert(u"ASAN_OPTIONS"_s, environment.value(u"ASAN_OPTIONS"_s) + u":detect_leaks=0"_s);
        QProcess traced;
        traced.setProcessEnvironment(environment);
        traced.setWorkingDirectory(home.path());
        const QString log = home.filePath(u"network.log"_s);
        traced.start(m_strace, QStringList{u"-f"_s, u"-e"_s, u"trace=network"_s, u"-o"_s, log} + command);
        QVERIFY(traced.waitForStarted());
        bool recorded = true;
        if (untilRecorded) {
            // The window is being reworked: an application that never records still has its
            // start-up checked, and the row says why it checked no more.
            recorded = QTest::qWaitFor([&] { return QFile::exists(home.filePath(privateFiles.value(0))); }, 120000);
            const qint64 application = childOf(traced.processId());
            QVERIFY2(application > 0, "the application stopped on its own");
            ::kill(pid_t(application), SIGTERM);
        }
        QVERIFY(traced.waitForFinished(180000));
        if (!untilRecorded) // the application ends by its signal
            QVERIFY2(traced.exitStatus() == QProcess::NormalExit && traced.exitCode() == 0,
                     traced.readAllStandardError().constData());
        QFile file(log);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList uses = networkUses(QString::fromUtf8(file.readAll()));
        QVERIFY2(uses.isEmpty() != sendsOut, qPrintable(uses.join(u'\n')));
        if (!recorded)
            QSKIP("L’application n’a pas noté le Mac d’exemple dans son journal en deux minutes : seul son démarrage est vérifié.");
        for (const QString &written : std::as_const(privateFiles)) {
            QVERIFY2(QFile::exists(home.filePath(written)), qPrintable(written));
            QCOMPARE(QFile::permissions(home.filePath(written)) & 0x00FF, QFileDevice::Permissions()); // group, others
        }
    }
};

QUILLON_TEST_MAIN(TestPrivacy)
#include "tst_privacy.moc"
