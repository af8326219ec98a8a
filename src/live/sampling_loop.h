#pragma once

#include <QObject>
#include <QString>
#include <QThread>

#include <chrono>
#include <functional>

class QTimer;

// A monitor's private serial thread and its repeating timer. Work posted to the thread runs
// there one item at a time, in the order it was posted. start(), stop() and isRunning() belong
// to the monitor's own (main) thread; the timer itself lives on the private thread.
class SamplingLoop final
{
public:
    // `tick` runs on the private thread at every firing of the timer. `label` names the thread.
    SamplingLoop(const QString &label, std::chrono::milliseconds interval, std::function<void()> tick);
    ~SamplingLoop();

    SamplingLoop(const SamplingLoop &) = delete;
    SamplingLoop &operator=(const SamplingLoop &) = delete;

    // Creates the timer, first firing at once and then at every interval, unless one exists.
    void start();
    // Cancels the timer and drops it, if there is one.
    void stop();
    // True from start() to stop(): a timer exists or is being created.
    bool isRunning() const { return m_running; }

    // Runs `work` on the private thread after everything posted before it.
    void post(std::function<void()> work);
    // Runs one tick on the private thread now, as a firing of the timer would.
    void tickNow();
    // Blocks until the private thread has run everything posted so far.
    void waitForQueue();
    // Cancels the timer and ends the thread; nothing posted afterwards runs. Called by the
    // owner's destructor before the state that `tick` uses goes away.
    void shutdown();

private:
    void createTimer();
    void dropTimer();

    QThread m_thread;
    QObject *m_context = nullptr; // lives on m_thread; deleted there when the thread ends
    QTimer *m_timer = nullptr;    // touched only on m_thread
    std::chrono::milliseconds m_interval;
    std::function<void()> m_tick;
    bool m_running = false;
};

// A monitor thread's label: the application identifier, a dot and `name` ("cpu", "battery"…).
QString monitorThreadLabel(const QString &name);
