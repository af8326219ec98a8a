#pragma once

// Readable views of what the collectors build, over the stand-in Mac.

#include "collectors/inventory_service.h"
#include "common/fake_mac.h"
#include "core/device_node.h"
#include "sources/system_profiler.h"

#include <QJsonArray>
#include <QTest>

// "label = value", one per row, with " [key]" for a row other screens look up.
inline QStringList rowTexts(const QList<InfoRow> &rows)
{
    static const char *const keys[] = {"chargeLevel", "powerState", "nativeResolution"};
    QStringList texts;
    for (const InfoRow &row : rows) {
        const QString key = row.key ? u" ["_s + QLatin1StringView(keys[int(*row.key)]) + u']' : QString();
        texts.append(row.label + u" = "_s + row.value + key);
    }
    return texts;
}

// One line per node, "name | subtitle | symbol | status" ("-" for no subtitle, " | built in"
// for a built-in device), indented four spaces per level of depth.
inline QStringList nodeLines(const QList<DeviceNode> &roots)
{
    static const char *const statuses[] = {"connected", "disconnected", "warning", "neutral"};
    QStringList lines;
    for (const auto &[node, depth] : flattenedAll(roots))
        lines.append(QString(depth * 4, u' ') + node.name + u" | "_s + node.subtitle.value_or(u"-"_s) + u" | "_s + node.symbol + u" | "_s
                     + QLatin1StringView(statuses[int(node.status)]) + (node.isBuiltIn ? u" | built in"_s : QString()));
    return lines;
}

// The profiler data type of each device section.
inline QString dataTypeOf(AppSection section)
{
    static const QHash<AppSection, QString> types{
        {AppSection::displays, u"SPDisplaysDataType"_s}, {AppSection::usb, u"SPUSBDataType"_s},
        {AppSection::thunderbolt, u"SPThunderboltDataType"_s}, {AppSection::bluetooth, u"SPBluetoothDataType"_s},
        {AppSection::network, u"SPNetworkDataType"_s}, {AppSection::audio, u"SPAudioDataType"_s},
        {AppSection::camera, u"SPCameraDataType"_s}};
    return types.value(section);
}

// The nodes of a device section built from `{"<its data type>": [<items>]}`; a failure is
// reported and gives no nodes.
inline QList<DeviceNode> nodesIn(AppSection section, const QByteArray &items)
{
    FakeMac mac;
    mac.profiler->answerItems(dataTypeOf(section), items);
    const Result<QList<DeviceNode>> result = InventoryService::devices(mac.platform(), section);
    if (!result.ok())
        qWarning("%s", qPrintable(result.failure().description()));
    return result.ok() ? result.value() : QList<DeviceNode>();
}

inline QStringList tree(AppSection section, const QByteArray &items) { return nodeLines(nodesIn(section, items)); }

// The rows of the node at `position` in the depth-first walk of the section.
inline QStringList rowsIn(AppSection section, const QByteArray &items, int position = 0)
{
    return rowTexts(flattenedAll(nodesIn(section, items)).value(position).first.rows);
}
