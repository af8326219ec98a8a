#include "common/fake_mac.h"
#include "common/test_main.h"

#include "cli/bilan_run.h"
#include "cli/interruption.h"
#include "state/app_state.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <thread>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// A system profiler whose answer never comes: every run waits until cancelAll(). A run that
// is still waiting after a minute gives up and says so, so that a missing cancellation
// fails the test instead of hanging it.
class NeverAnsweringProfiler final : public ProfilerSource
{
public:
    ProcessOutput run(const QStringList &arguments) const override
    {
        std::unique_lock lock(m_mutex);
        m_started.append(arguments.value(1));
        ++m_waiting;
        m_changed.notify_all();
        const bool cancelled = m_changed.wait_for(lock, std::chrono::minutes(1), [this] { return m_cancelled; });
        --m_waiting;
        if (!cancelled)
            ++m_gaveUp;
        m_changed.notify_all();
        // What a tool ended by a kill gives: a failed run.
        return ProcessOutput { true, {}, 9, {} };
    }

    void cancelAll() const override
    {
        std::lock_guard lock(m_mutex);
        m_cancelled = true;
        m_changed.notify_all();
    }

    // Waits (a minute at most) until `count` runs are waiting for their answer.
    bool waitForWaitingRuns(int count) const
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::minutes(1), [&] { return m_waiting == count; });
    }

    // How many runs wait, gave up, whether they were cancelled, and the data types asked.
    struct Seen
    {
        int waiting, gaveUp;
        bool cancelled;
        QStringList started;
    };
    Seen seen() const
    {
        std::lock_guard lock(m_mutex);
        return {m_waiting, m_gaveUp, m_cancelled, m_started};
    }

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    mutable int m_waiting = 0;
    mutable int m_gaveUp = 0;
    mutable bool m_cancelled = false;
    mutable QStringList m_started;
};

// The machine without a battery asks the profiler for the hardware, the storage and the
// seven device sections at once; the battery collector stops before asking it.
constexpr int runsOfAFullLoad = 9;

} // namespace

class TestInterruptedRuns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void endingTheStateEndsRunsThatNeverAnswer()
    {
        auto profiler = std::make_shared<NeverAnsweringProfiler>();
        auto state = std::make_unique<AppState>(silentPlatform(profiler));
        bool finished = false;
        state->loadEverything(false, [&finished] { finished = true; });
        QVERIFY(profiler->waitForWaitingRuns(runsOfAFullLoad));
        QVERIFY(!profiler->seen().cancelled);

        state.reset();

        QVERIFY(profiler->seen().cancelled);
        QCOMPARE(profiler->seen().waiting, 0);
        QCOMPARE(profiler->seen().gaveUp, 0);
        // The state is gone: nothing is delivered to it afterwards.
        QCoreApplication::processEvents();
        QVERIFY(!finished);
    }

    void interruptedBilanEndsItsRunsAndSaysSo_data()
    {
        QTest::addColumn<int>("signalNumber");
        QTest::addColumn<int>("exitStatus");
        QTest::newRow("SIGINT (Ctrl-C)") << SIGINT << 130;
        QTest::newRow("SIGTERM") << SIGTERM << 143;
    }

    void interruptedBilanEndsItsRunsAndSaysSo()
    {
        QFETCH(int, signalNumber);
        QFETCH(int, exitStatus);
        QTemporaryDir folder;
        QVERIFY(folder.isValid());
        BilanOptions options;
        options.output = folder.filePath(u"bilan.txt"_s);
        auto profiler = std::make_shared<NeverAnsweringProfiler>();
        // The signal comes from elsewhere while every run waits for the tool.
        std::thread sender([&] {
            if (profiler->waitForWaitingRuns(runsOfAFullLoad))
                ::kill(::getpid(), signalNumber);
        });
        QString output;
        QString errors;
        QTextStream outputStream(&output);
        QTextStream errorStream(&errors);

        const int status = runBilan(options, silentPlatform(profiler), outputStream, errorStream);
        sender.join();

        QCOMPARE(status, exitStatus);
        QCOMPARE(errors, u"quillon-bilan : interrompu, les relevés en cours sont arrêtés.\n"_s);
        QCOMPARE(output, QString());
        QVERIFY(!QFile::exists(*options.output));
        QCOMPARE(profiler->seen().waiting, 0);
        QCOMPARE(profiler->seen().gaveUp, 0);
    }

    void interruptionCallsBackOnceAndRestoresTheSignals_data()
    {
        QTest::addColumn<int>("signalNumber");
        QTest::newRow("SIGINT (Ctrl-C)") << SIGINT;
        QTest::newRow("SIGTERM") << SIGTERM;
    }

    void interruptionCallsBackOnceAndRestoresTheSignals()
    {
        QFETCH(int, signalNumber);
        // A handler of the test's own stands for "the previous handling".
        static std::atomic<int> previousHandlerCalls = 0;
        previousHandlerCalls = 0;
        struct sigaction own = {};
        own.sa_handler = [](int) { ++previousHandlerCalls; };
        sigemptyset(&own.sa_mask);
        struct sigaction saved = {};
        sigaction(signalNumber, &own, &saved);

        std::atomic<int> calledWith = 0;
        {
            Interruption interruption([&calledWith](int number) { calledWith = number; });
            QCOMPARE(interruption.signalNumber(), 0);
            QCOMPARE(std::raise(signalNumber), 0);
            QTRY_COMPARE_WITH_TIMEOUT(calledWith.load(), signalNumber, 10000);
            QCOMPARE(interruption.signalNumber(), signalNumber);
            QCOMPARE(previousHandlerCalls.load(), 0);
            QCOMPARE(Interruption::exitStatus(signalNumber), 128 + signalNumber);
        }
        QCOMPARE(std::raise(signalNumber), 0);
        QCOMPARE(previousHandlerCalls.load(), 1);
        sigaction(signalNumber, &saved, nullptr);
    }
};

QUILLON_TEST_MAIN(TestInterruptedRuns)
#include "tst_interrupted_runs.moc"
