#include "platform/macos/mac_profiler_source.h"

#include <QElapsedTimer>
#include <QProcess>

#include <atomic>

using namespace Qt::StringLiterals;

namespace {

// Set once, when the application quits.
std::atomic<bool> quitting = false;

// How often a run looks whether the application is quitting while the tool works.
constexpr int quitCheckIntervalMs = 100;

void killAndReap(QProcess &process)
{
    process.kill();
    process.waitForFinished(-1);
}

// Waits for the tool's end until the time limit, unless the application quits first; false
// when the limit ended the run. QProcess keeps reading both pipes into its buffers
// meanwhile, so a large answer on either stream never fills its pipe and blocks the tool.
bool waitForEnd(QProcess &process, std::chrono::milliseconds limit)
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (process.state() != QProcess::NotRunning) {
        if (quitting.load()) {
            killAndReap(process);
            return true;
        }
        if (std::chrono::milliseconds(elapsed.elapsed()) >= limit) {
            killAndReap(process);
            return false;
        }
        process.waitForFinished(quitCheckIntervalMs);
    }
    return true;
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

MacProfilerSource::MacProfilerSource(QString program, std::chrono::milliseconds timeLimit)
    : m_program(std::move(program)), m_timeLimit(timeLimit)
{
}

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
    if (!waitForEnd(process, m_timeLimit)) {
        output.stoppedAfterSeconds = int(std::chrono::ceil<std::chrono::seconds>(m_timeLimit).count());
        return output;
    }
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
