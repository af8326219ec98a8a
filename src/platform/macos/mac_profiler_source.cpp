#include "platform/macos/mac_profiler_source.h"

#include <QProcess>

#include <atomic>

using namespace Qt::StringLiterals;

namespace {

// Set once, when the application quits.
std::atomic<bool> quitting = false;

// How often a run looks whether the application is quitting while the tool works.
constexpr int quitCheckIntervalMs = 100;

// Waits for the tool's end, however long it takes, unless the application quits first.
// QProcess keeps reading both pipes into its buffers meanwhile, so a large answer on either
// stream never fills its pipe and blocks the tool.
void waitForEnd(QProcess &process)
{
    while (process.state() != QProcess::NotRunning) {
        if (quitting.load()) {
            process.kill();
            process.waitForFinished(-1);
            return;
        }
        process.waitForFinished(quitCheckIntervalMs);
    }
}

// The tool's exit status. A tool ended by a signal never reads as a success: QProcess on
// Unix gives the signal's number as the exit code then (9 for a kill), else -1 stands in.
int exitStatusOf(const QProcess &process)
{
    if (process.exitStatus() == QProcess::NormalExit)
        return process.exitCode();
    return process.exitCode() != 0 ? process.exitCode() : -1;
}

} // namespace

MacProfilerSource::MacProfilerSource(QString program) : m_program(std::move(program)) {}

ProcessOutput MacProfilerSource::run(const QStringList &arguments) const
{
    ProcessOutput output;
    if (quitting.load()) {
        output.startError = u"l’application se ferme"_s;
        return output;
    }
    QProcess process;
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
    process.start(m_program, arguments);
    if (!process.waitForStarted(-1)) {
        output.startError = process.errorString();
        return output;
    }
    output.started = true;
    waitForEnd(process);
    output.standardOutput = process.readAllStandardOutput();
    // Standard error went to a buffer of its own and is dropped with the process.
    output.exitStatus = exitStatusOf(process);
    return output;
}

void MacProfilerSource::cancelAll() const
{
    terminateAll();
}

void MacProfilerSource::terminateAll()
{
    quitting.store(true);
}
