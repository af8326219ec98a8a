#pragma once

#include <functional>
#include <thread>

// While it lives, SIGINT and SIGTERM no longer end the program at once: the first one calls
// `onInterrupt` with its number, on a thread of this object's own (so it is called even
// while the main thread waits), and is remembered. A second one ends the program the
// default way. The previous handling of both signals comes back when this object ends.
// One at a time in a process.
class Interruption
{
public:
    explicit Interruption(std::function<void(int signalNumber)> onInterrupt);
    ~Interruption();

    Interruption(const Interruption &) = delete;
    Interruption &operator=(const Interruption &) = delete;

    // The signal received so far, or 0.
    int signalNumber() const;

    // The exit status of a program ended by that signal: 128 plus its number.
    static int exitStatus(int signalNumber) { return 128 + signalNumber; }

private:
    std::function<void(int)> m_onInterrupt;
    std::thread m_watcher;
};
