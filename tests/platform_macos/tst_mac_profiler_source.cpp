#include "common/test_main.h"

#include "common/fake_mac.h"
#include "platform/macos/mac_profiler_source.h"
#include "records/history.h"
#include "records/report_builder.h"
#include "sources/system_profiler.h"
#include "state/app_state.h"

#include <QFile>
#include <QTemporaryDir>

#include <thread>

using namespace Qt::StringLiterals;

namespace {

// Writes an executable shell script standing in for the system profiler tool.
QString writeScript(const QTemporaryDir &dir, const QString &name, const QByteArray &body)
{
    const QString path = dir.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write("#!/bin/sh\n" + body + '\n');
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

} // namespace

class TestMacProfilerSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_dir.isValid()); }

    void reportsTheExitStatus_data()
    {
        QTest::addColumn<int>("status");
        QTest::newRow("success") << 0;
        QTest::newRow("exit 2") << 2;
        QTest::newRow("exit 255") << 255;
    }

    void reportsTheExitStatus()
    {
        QFETCH(int, status);
        const QString tool = writeScript(m_dir, u"failing"_s, "printf 'partial'\nprintf 'warning: slow bus' >&2\nexit \"$1\"");
        const ProcessOutput output = MacProfilerSource(tool).run({QString::number(status)});
        QVERIFY(output.started);
        QCOMPARE(output.exitStatus, status);
        QCOMPARE(output.standardOutput, QByteArray("partial"));
    }

    // Far more than a pipe holds on both streams: the run must drain them, not block.
    void readsLargeAnswersOnBothStreams()
    {
        const QString tool = writeScript(m_dir, u"large"_s,
                                         "head -c 3000000 /dev/zero | tr '\\000' e >&2\n"
                                         "head -c 3000000 /dev/zero | tr '\\000' o\n"
                                         "exit 0");
        const ProcessOutput output = MacProfilerSource(tool).run({});
        QVERIFY(output.started);
        QCOMPARE(output.exitStatus, 0);
        QCOMPARE(output.standardOutput.size(), 3000000);
        QCOMPARE(output.standardOutput.count('o'), 3000000);
    }

    void missingProgramDoesNotStart()
    {
        const ProcessOutput output = MacProfilerSource(m_dir.filePath(u"no-such-tool"_s)).run({u"-json"_s});
        QVERIFY(!output.started);
        QVERIFY(!output.startError.isEmpty());
        QVERIFY(output.standardOutput.isEmpty());
    }

    // A tool killed by a signal has no exit status of its own; it must not read as success.
    void toolEndedBySignalIsNotASuccess()
    {
        const QString tool = writeScript(m_dir, u"crashing"_s, "printf '{}'\nkill -KILL $$");
        const ProcessOutput output = MacProfilerSource(tool).run({});
        QVERIFY(output.started);
        QCOMPARE_NE(output.exitStatus, 0);
    }

    // A tool that never answers is killed at its time limit and reads as no answer.
    void toolPastItsTimeLimitIsKilled()
    {
        const QString marker = m_dir.filePath(u"still-running"_s);
        const QString tool = writeScript(m_dir, u"silent"_s, "printf '{'\nexec sleep 60");
        const ProcessOutput output = MacProfilerSource(tool, std::chrono::milliseconds(300)).run({});
        QVERIFY(output.started);
        QCOMPARE(output.stoppedAfterSeconds, std::optional<int>(1));
        const SystemProfiler::Failure failure = std::get<SystemProfiler::Failure>(
            SystemProfiler::parseAnswer(output, u"SPBluetoothDataType"_s));
        QCOMPARE(failure.description(), u"system_profiler ne répond pas après 1 s pour SPBluetoothDataType"_s);
    }

    // A full load whose Bluetooth answer never comes: the other sections are judged,
    // reported and recorded, and Bluetooth fails with the time limit's text.
    void aToolThatNeverAnswersLeavesTheRestOfTheBilan()
    {
        const QString sample = QStringLiteral(QUILLON_CAPTURES_DIR) + u"/sample/profiler"_s;
        const QString tool = writeScript(m_dir, u"profiler"_s,
                                         "[ \"$2\" = SPBluetoothDataType ] && exec sleep 60\n"
                                         "cat \"" + sample.toUtf8() + "/$2.json\"");
        AppState state(silentPlatform(std::make_shared<MacProfilerSource>(tool, std::chrono::milliseconds(1500))));
        bool loaded = false;
        state.loadEverything(false, [&loaded] { loaded = true; });
        QTRY_VERIFY_WITH_TIMEOUT(loaded, 20000);
        QVERIFY(state.report());
        QCOMPARE(state.failure(AppSection::bluetooth),
                 std::optional<QString>(u"system_profiler ne répond pas après 2 s pour SPBluetoothDataType"_s));
        QVERIFY(state.hardware());
        QVERIFY(state.report()->headline().endsWith(u"1 lecture impossible"_s));
        ReportContents contents;
        contents.hardware = state.hardware();
        contents.report = state.report();
        const QString text = ReportBuilder::build(contents, ReportStamp::ofThisApplication(QDateTime::currentDateTimeUtc()));
        QVERIFY(text.contains(u"\nLecture impossible : Bluetooth — system_profiler ne répond pas après 2 s pour SPBluetoothDataType\n"_s));
        History journal(silentPlatform(nullptr).clock, m_dir.filePath(u"journal"_s));
        journal.record(state.hardware(), state.battery(), state.volumes(), state.report());
        QCOMPARE(journal.count(), 1);
    }

    // Last on purpose: once the application quits, no run is allowed again.
    void terminateAllEndsRunsInFlightAndRefusesNewOnes()
    {
        const QString marker = m_dir.filePath(u"started"_s);
        const QString tool = writeScript(m_dir, u"hanging"_s, "touch \"$1\"\nexec sleep 60");
        ProcessOutput inFlight;
        std::thread runner([&] { inFlight = MacProfilerSource(tool).run({marker}); });
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(marker), 10000);

        MacProfilerSource::terminateAll();
        runner.join();
        // Killed, not left to end: a tool that ran its course would have exited with 0.
        QVERIFY(inFlight.started);
        QCOMPARE_NE(inFlight.exitStatus, 0);

        const QString quick = writeScript(m_dir, u"quick"_s, "printf '{}'");
        const ProcessOutput later = MacProfilerSource(quick).run({});
        QVERIFY(!later.started);
        QVERIFY(!later.startError.isEmpty());
    }

private:
    QTemporaryDir m_dir;
};

QUILLON_TEST_MAIN(TestMacProfilerSource)
#include "tst_mac_profiler_source.moc"
