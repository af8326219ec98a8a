#pragma once

#include "sources/platform.h"

#include <QHash>
#include <QString>
#include <QStringList>

// The system profiler's answers of a platform, asked once and then handed back from memory,
// so that a measurement sees only the code above the tool. Each answer can be held back for
// a fixed time first, standing for the tool's own run time on a real Mac.
class RecordedProfiler final : public ProfilerSource
{
public:
    // Asks `source` once for each data type.
    RecordedProfiler(const ProfilerSource &source, const QStringList &dataTypes);

    // Milliseconds each data type's answer waits before it is handed back; none by default.
    void setDelays(QHash<QString, int> delayMsecs) { m_delayMsecs = std::move(delayMsecs); }

    ProcessOutput run(const QStringList &arguments) const override;

    // The recorded answer of one data type.
    ProcessOutput answer(const QString &dataType) const { return m_answers.value(dataType); }

private:
    QHash<QString, ProcessOutput> m_answers;
    QHash<QString, int> m_delayMsecs;
};

// The platform with its profiler replaced by `profiler`; every other source is shared.
Platform withProfiler(const Platform &platform, std::shared_ptr<const ProfilerSource> profiler);
