#include "common/test_main.h"
#include "records/history_entry.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

// The serial numbers of the journal file, newest first; nothing when it does not read.
std::optional<QStringList> serialsInFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const auto entries = HistoryFile::decode(file.readAll());
    if (!entries)
        return std::nullopt;
    QStringList serials;
    for (const HistoryEntry &entry : *entries)
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
    QString journalPath() const { return journalFolder() + u"/journal.json"_s; }

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

    // A journal of 300 older entries, then a writer that keeps recording, killed at random
    // moments again and again: after every kill the file reads whole, as the last save left
    // it, and holds every entry saved before; the lock left by a killed writer stops no one
    // and the next save clears what it left.
    void writerKilledWhileSavingLeavesAWholeFile()
    {
        QList<HistoryEntry> older;
        for (int i = 300; i >= 1; --i)
            older.append(HistoryEntry{.date = QDateTime::currentDateTimeUtc().addDays(-1), .serialNumber = u"P%1"_s.arg(i)});
        QFile file(journalPath());
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

            const std::optional<QStringList> serials = serialsInFile(journalPath());
            QVERIFY2(serials, "the journal file does not read after a kill");
            const int now = int(startingWith(*serials, u"N"_s).size());
            QVERIFY2(now > saved, "an entry saved before the kill is missing");
            QCOMPARE(*serials, (numbered(u"N"_s, now, 1) + olderSerials).mid(0, 500));
            saved = now;
        }
        QProcess last;
        startWriter(last, u"N"_s, 1);
        QVERIFY(last.waitForFinished(60000));
        QCOMPARE(startingWith(serialsInFile(journalPath()).value_or(QStringList()), u"N"_s).size(), saved + 1);
        // Neither the killed writers' temporary files nor their locks are left.
        QCOMPARE(QDir(journalFolder()).entryList(QDir::Files | QDir::Hidden), QStringList{u"journal.json"_s});
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
        const QStringList serials = serialsInFile(journalPath()).value_or(QStringList());
        QCOMPARE(serials.size(), 81);
        QCOMPARE(startingWith(serials, u"A"_s), numbered(u"A"_s, 40, 1));
        QCOMPARE(startingWith(serials, u"B"_s), numbered(u"B"_s, 40, 1));
        QVERIFY(serials.contains(u"K7Q2XW9J4F"_s)); // the sample Mac's serial number
    }
};

QUILLON_TEST_MAIN(TestSharedJournal)
#include "tst_shared_journal.moc"
