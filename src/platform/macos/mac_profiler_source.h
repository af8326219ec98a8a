#pragma once

#include "sources/platform.h"

// Runs the system profiler tool as a child process, started directly (no shell), with its
// standard output and standard error on pipes of their own and standard input inherited.
// A run has no time limit; only the application quitting ends it early.
class MacProfilerSource final : public ProfilerSource
{
public:
    static constexpr char16_t systemProfilerPath[] = u"/usr/sbin/system_profiler";

    // `program` is the tool to run; another program can stand in for it.
    explicit MacProfilerSource(QString program = QString::fromUtf16(systemProfilerPath));

    ProcessOutput run(const QStringList &arguments) const override;
    // The same as terminateAll().
    void cancelAll() const override;

    // Ends every run in flight and refuses any later one, so that quitting never waits for
    // the tool: each run kills its own child within a fraction of a second and returns. To
    // be called once, when the application is about to quit; it cannot be undone.
    static void terminateAll();

private:
    QString m_program;
};
