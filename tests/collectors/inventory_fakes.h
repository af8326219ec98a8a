#pragma once

// Small fakes and helpers shared by the inventory tests: a profiler that answers from JSON
// written in the test, the captures shipped with the project, and readable views of nodes.

#include "core/device_node.h"
#include "platform/capture/capture_folder.h"
#include "platform/capture/capture_platform.h"
#include "sources/platform.h"
#include "sources/system_profiler.h"

#include <QHash>
#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <QTest>

#include <memory>
#include <utility>

// Answers one fixed output per data type and remembers the argument lists it was run with.
class FakeProfiler : public ProfilerSource
{
public:
    void answer(const QString &dataType, const QByteArray &standardOutput, int exitStatus = 0)
    {
        ProcessOutput output;
        output.started = true;
        output.exitStatus = exitStatus;
        output.standardOutput = standardOutput;
        m_outputs.insert(dataType, output);
    }

    ProcessOutput run(const QStringList &arguments) const override
    {
        QMutexLocker lock(&m_mutex);
        m_runs.append(arguments);
        const QString dataType = arguments.value(1);
        if (m_outputs.contains(dataType))
            return m_outputs.value(dataType);
        ProcessOutput nothing;
        nothing.started = true;
        return nothing;
    }

    QList<QStringList> runs() const
    {
        QMutexLocker lock(&m_mutex);
        return m_runs;
    }

private:
    QHash<QString, ProcessOutput> m_outputs;
    mutable QMutex m_mutex;
    mutable QList<QStringList> m_runs;
};

// A platform whose only working part is the fake profiler.
inline Platform platformWith(const std::shared_ptr<FakeProfiler> &profiler)
{
    Platform platform;
    platform.profiler = profiler;
    return platform;
}

// A platform whose profiler answers `{"<dataType>": [<items>]}` for one data type.
inline Platform platformAnswering(const QString &dataType, const QByteArray &itemsJson)
{
    auto profiler = std::make_shared<FakeProfiler>();
    profiler->answer(dataType, "{\"" + dataType.toUtf8() + "\": [" + itemsJson + "]}");
    return platformWith(profiler);
}

// One of the captures shipped with the project.
inline std::optional<Platform> capturePlatform(const QString &name)
{
    auto opened = CaptureFolder::open(QStringLiteral(QUILLON_CAPTURES_DIR) + u'/' + name);
    if (!std::holds_alternative<std::shared_ptr<CaptureFolder>>(opened)) {
        qWarning("%s", qPrintable(std::get<QString>(opened)));
        return std::nullopt;
    }
    return makeCapturePlatform(std::get<std::shared_ptr<CaptureFolder>>(opened));
}

// Rows written "label = value", one string per row, in their order.
inline QStringList rowTexts(const QList<InfoRow> &rows)
{
    QStringList out;
    for (const InfoRow &row : rows)
        out.append(row.label + QStringLiteral(" = ") + row.value);
    return out;
}

// Names of the nodes of a tree in depth-first order, each indented by two spaces per level.
inline QStringList treeOutline(const QList<DeviceNode> &roots)
{
    QStringList out;
    for (const auto &[node, depth] : flattenedAll(roots))
        out.append(QString(depth * 2, u' ') + node.name);
    return out;
}

inline QStringList names(const QList<DeviceNode> &nodes)
{
    QStringList out;
    for (const DeviceNode &node : nodes)
        out.append(node.name);
    return out;
}

// The node of a tree with that name, at any depth; fails the test when there is none.
inline const DeviceNode *findNode(const QList<DeviceNode> &roots, const QString &name)
{
    for (const DeviceNode &node : roots) {
        if (node.name == name)
            return &node;
        if (const DeviceNode *found = findNode(node.children, name))
            return found;
    }
    return nullptr;
}

Q_DECLARE_METATYPE(DeviceStatus)

// Readable values in failure messages.
namespace QTest {
template <>
inline char *toString(const std::optional<QString> &value)
{
    return value ? toString(u'"' + *value + u'"') : qstrdup("nothing");
}
template <>
inline char *toString(const std::optional<bool> &value)
{
    return value ? qstrdup(*value ? "true" : "false") : qstrdup("nothing");
}
template <>
inline char *toString(const DeviceStatus &status)
{
    static const char *const names[] = {"connected", "disconnected", "warning", "neutral"};
    return qstrdup(names[int(status)]);
}
} // namespace QTest
