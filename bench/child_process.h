#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

// One run of a program as a child process, measured from outside: wall time from just
// before it is started to its exit, and its peak resident memory as the kernel counted it
// (wait4's resource usage of that child).
struct ChildRun
{
    bool started = false;
    int exitStatus = -1;
    double wallMs = 0;
    double peakResidentMB = 0; // 10^6 bytes
    double processorMs = 0; // user + system time of the child
    QByteArray standardOutput;
};

// Runs `program` with `arguments` and the current environment plus `environment`
// (QUILLON_BENCH_SPAWN_NS is set to the monotonic clock at start, in nanoseconds).
// Standard output is kept when `keepOutput`, else thrown away; standard error is inherited.
ChildRun runChild(const QString &program, const QStringList &arguments,
    const QHash<QByteArray, QByteArray> &environment, bool keepOutput);

// The monotonic clock shared by every process of the machine, in nanoseconds.
qint64 monotonicNanoseconds();
