#pragma once

#include "sources/platform.h"

#include <chrono>

// Runs the system profiler tool as a child process, started directly (no shell), with its
// standard output and standard error on pipes of their own and standard input inherited.
// A run that has not ended within its time limit is killed and reads as no answer (the tool
// is known to hang for some data types, e.g. Bluetooth on Macs without it); the application
// quitting ends every run at once.
class MacProfilerSource final : public ProfilerSource
{
public:
    static constexpr char16_t systemProfilerPath[] = u"/usr/sbin/system_profiler";

    static constexpr std::chrono::seconds defaultTimeLimit { 60 };

    // `program` is the tool to run; another program can stand in for it.
    explicit MacProfilerSource(QString program = QString::fromUtf16(systemProfilerPath),
                               std::chrono::milliseconds timeLimit = defaultTimeLimit);

    ProcessOutput run(const QStringList &arguments) const override;
    // The same as terminateAll().
    void cancelAll() const override;

    // Ends every run in flight and refuses any later one, so that quitting never waits for
    // the tool: each run kills its own child within a fraction of a second and returns. To
    // be called once, when the application is about to quit; it cannot be undone.
    static void terminateAll();

private:
    QString m_program;
    std::chrono::milliseconds m_timeLimit;
};
