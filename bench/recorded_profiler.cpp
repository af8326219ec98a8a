#include "recorded_profiler.h"

#include <QThread>

RecordedProfiler::RecordedProfiler(const ProfilerSource &source, const QStringList &dataTypes)
{
    for (const QString &dataType : dataTypes)
        m_answers.insert(dataType, source.run({ QStringLiteral("-json"), dataType }));
}

ProcessOutput RecordedProfiler::run(const QStringList &arguments) const
{
    const QString dataType = arguments.value(1);
    if (const int delay = m_delayMsecs.value(dataType); delay > 0)
        QThread::msleep(static_cast<unsigned long>(delay));
    // A data type that was not recorded: the tool started and printed nothing.
    ProcessOutput unknown;
    unknown.started = true;
    return m_answers.value(dataType, unknown);
}

Platform withProfiler(const Platform &platform, std::shared_ptr<const ProfilerSource> profiler)
{
    Platform copy = platform;
    copy.profiler = std::move(profiler);
    return copy;
}
