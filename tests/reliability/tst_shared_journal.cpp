#include "common/test_main.h"
#include "records/history.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

class SystemClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
};

// The serial numbers of the journal in `folder`, newest first; nothing when it does not
// open as it was left (a damaged file would be set aside and said).
std::optional<QStringList> serialsIn(const QString &folder)
{
    const History history(std::make_shared<SystemClock>(), folder);
    if (!history.problem().isEmpty() || !history.notes().filter(u"illisible"_s).isEmpty())
        return std::nullopt;
    QStringList serials;
    for (const HistoryEntry &entry : history.entries())
        serials << entry.serialNumber.value_or(u"-"_s);
    return serials;
}

QStringList numbered(const QString &prefix, int from, int to)
{
    QStringList out;
    for (int i = from; i >= to; --i)
        out << prefix + QString::number(i);
    return out;
}

QStringList startingWith(const QStringList &serials, const QString &prefix)
{
    QStringList out;
    for (const QString &serial : serials) {
        if (serial.startsWith(prefix))
            out << serial;
    }
    return out;
}

} // namespace

// The journal file shared by processes: a process killed while saving, and processes
// recording at the same time, the application's journal and quillon-bilan --record.
class TestSharedJournal : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

    QString journalFolder() const { return m_home.filePath(u"data/Quillon"_s); }
    QString formerJournalPath() const { return journalFolder() + u"/journal.json"_s; }

    void startWriter(QProcess &writer, const QString &prefix, int count) const
    {
        writer.start(QStringLiteral(QUILLON_JOURNAL_WRITER), {journalFolder(), prefix, QString::number(count)});
    }

private Q_SLOTS:
    void init()
    {
        QVERIFY(m_home.isValid());
        QDir(m_home.path()).removeRecursively();
        QVERIFY(QDir().mkpath(journalFolder()));
    }

    // A former journal of 300 entries, then a writer that keeps recording, killed at random
    // moments again and again: after every kill the journal opens whole and holds every
    // entry recorded before.
    void writerKilledWhileSavingLeavesAWholeFile()
    {
        QList<HistoryEntry> older;
        for (int i = 300; i >= 1; --i)
            older.append(HistoryEntry{.date = QDateTime::currentDateTimeUtc().addDays(-1), .serialNumber = u"P%1"_s.arg(i)});
        QFile file(formerJournalPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(HistoryFile::encode(older));
        file.close();

        const QStringList olderSerials = numbered(u"P"_s, 300, 1);
        int saved = 0;
        for (int round = 0; round < 30; ++round) {
            QProcess writer;
            startWriter(writer, u"N"_s, 0);
            QVERIFY2(writer.waitForReadyRead(60000), writer.readAllStandardError().constData());
            QThread::usleep(QRandomGenerator::global()->bounded(20000));
            ::kill(pid_t(writer.processId()), SIGKILL);
            QVERIFY(writer.waitForFinished(60000));

            const std::optional<QStringList> serials = serialsIn(journalFolder());
            QVERIFY2(serials, "the journal does not open whole after a kill");
            const int now = int(startingWith(*serials, u"N"_s).size());
            QVERIFY2(now > saved, "an entry saved before the kill is missing");
            QCOMPARE(*serials, numbered(u"N"_s, now, 1) + olderSerials);
            saved = now;
        }
        QProcess last;
        startWriter(last, u"N"_s, 1);
        QVERIFY(last.waitForFinished(60000));
        QCOMPARE(startingWith(serialsIn(journalFolder()).value_or(QStringList()), u"N"_s).size(), saved + 1);
        QVERIFY(QDir(journalFolder()).entryList({u"journal-illisible*"_s}).isEmpty());
    }

    // A disk that fills up: the record that does not fit is refused and said, and every entry
    // recorded before it is still there, on a journal that opens whole.
    void fullDiskLosesNothingAndSaysSo()
    {
        QProcess writer;
        writer.start(QStringLiteral(QUILLON_JOURNAL_WRITER), {journalFolder(), u"F"_s, u"0"_s, u"262144"_s});
        QVERIFY(writer.waitForFinished(120000));
        QCOMPARE(writer.exitCode(), 3);
        const QStringList said = QString::fromUtf8(writer.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
        const QString recordedLine = said.filter(u"recorded "_s).value(0);
        QVERIFY2(!recordedLine.isEmpty(), qPrintable(said.join(u'\n')));
        const int recorded = recordedLine.mid(9).toInt();
        QVERIFY(recorded > 10);
        QVERIFY2(said.last().startsWith(u"la machine n’a pas été notée au journal : "_s), qPrintable(said.last()));
        const std::optional<QStringList> serials = serialsIn(journalFolder());
        QVERIFY2(serials, "the journal does not open whole after a full disk");
        QCOMPARE(*serials, numbered(u"F"_s, recorded, 1));
    }

    // Two processes record 40 machines each while quillon-bilan records the sample Mac: all 81
    // are in the journal, each process's entries newest first.
    void processesRecordingTogetherLoseNoEntry()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, m_home.path());
        environment.insert(u"XDG_DATA_HOME"_s, m_home.path() + u"/data"_s);
        environment.insert(u"XDG_CONFIG_HOME"_s, m_home.path() + u"/config"_s);
        QProcess first, second, bilan;
        bilan.setProcessEnvironment(environment);
        startWriter(first, u"A"_s, 40);
        startWriter(second, u"B"_s, 40);
        bilan.start(QStringLiteral(QUILLON_BILAN),
                    {u"--capture"_s, QStringLiteral(QUILLON_CAPTURES_DIR) + u"/sample"_s, u"--record"_s});
        for (QProcess *process : {&first, &second, &bilan}) {
            QVERIFY(process->waitForFinished(120000));
            QCOMPARE(process->exitCode(), 0);
        }
        const QStringList serials = serialsIn(journalFolder()).value_or(QStringList());
        QCOMPARE(serials.size(), 81);
        QCOMPARE(startingWith(serials, u"A"_s), numbered(u"A"_s, 40, 1));
        QCOMPARE(startingWith(serials, u"B"_s), numbered(u"B"_s, 40, 1));
        QVERIFY(serials.contains(u"K7Q2XW9J4F"_s)); // the sample Mac's serial number
    }
};

QUILLON_TEST_MAIN(TestSharedJournal)
#include "tst_shared_journal.moc"
