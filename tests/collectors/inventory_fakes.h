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

using InventoryOperation = Result<QList<DeviceNode>> (*)(const Platform &);

// The nodes an operation builds from `{"<dataType>": [<items>]}`; a failure is reported and
// gives no nodes.
inline QList<DeviceNode> nodesOf(InventoryOperation operation, const QString &dataType, const QByteArray &itemsJson)
{
    const Result<QList<DeviceNode>> result = operation(platformAnswering(dataType, itemsJson));
    if (!result.ok()) {
        qWarning("%s", qPrintable(result.failure().description()));
        return {};
    }
    return result.value();
}

// The only node built from one item, or an empty node when there is not exactly one.
inline DeviceNode onlyNode(InventoryOperation operation, const QString &dataType, const QByteArray &itemJson)
{
    const QList<DeviceNode> nodes = nodesOf(operation, dataType, itemJson);
    return nodes.size() == 1 ? nodes.first() : DeviceNode();
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

inline QStringList names(const QList<DeviceNode> &nodes)
{
    QStringList out;
    for (const DeviceNode &node : nodes)
        out.append(node.name);
    return out;
}

inline const char *statusName(DeviceStatus status)
{
    static const char *const statusNames[] = {"connected", "disconnected", "warning", "neutral"};
    return statusNames[int(status)];
}

// A tree as a technician reads it, one line per node, "name | subtitle | symbol | status"
// ("-" for no subtitle, "| built in" added for a built-in device), followed by its rows
// "label = value"; each level of depth indents by four spaces, rows by two more.
inline QStringList describeTree(const QList<DeviceNode> &roots)
{
    QStringList out;
    for (const auto &[node, depth] : flattenedAll(roots)) {
        const QString indent(depth * 4, u' ');
        QString line = indent + node.name + QStringLiteral(" | ") + node.subtitle.value_or(QStringLiteral("-"))
            + QStringLiteral(" | ") + node.symbol + QStringLiteral(" | ") + QLatin1StringView(statusName(node.status));
        if (node.isBuiltIn)
            line += QStringLiteral(" | built in");
        out.append(line);
        for (const QString &row : rowTexts(node.rows))
            out.append(indent + QStringLiteral("  ") + row);
    }
    return out;
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
inline char *toString(const DeviceStatus &status)
{
    return qstrdup(statusName(status));
}
} // namespace QTest
