#pragma once

// Stand-ins for the platform's services, each holding the answers a test gives it, and
// readable views of what the collectors build.

#include "collectors/inventory_service.h"
#include "core/device_node.h"
#include "platform/capture/capture_folder.h"
#include "platform/capture/capture_platform.h"
#include "sources/platform.h"
#include "sources/system_profiler.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

// A property dictionary written as JSON: whole numbers come out as 64-bit integers.
inline PropertyDictionary properties(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).toVariant().toMap();
}

class FakeRegistry final : public RegistrySource
{
public:
    QHash<QString, QList<PropertyDictionary>> byClass;
    QHash<QString, QList<PropertyDictionary>> byName;
    QList<PropertyDictionary> servicesOfClass(const QString &name) const override { return byClass.value(name); }
    QList<PropertyDictionary> servicesNamed(const QString &name) const override { return byName.value(name); }
};

// One output per data type, nothing printed for the others; every run is remembered.
class FakeProfiler final : public ProfilerSource
{
public:
    void answer(const QString &dataType, const QByteArray &output, int exitStatus = 0)
    {
        m_answers.insert(dataType, ProcessOutput{true, {}, exitStatus, output});
    }
    // `{"<dataType>": [<items>]}`.
    void answerItems(const QString &dataType, const QByteArray &items)
    {
        answer(dataType, "{\"" + dataType.toUtf8() + "\": [" + items + "]}");
    }
    ProcessOutput run(const QStringList &arguments) const override
    {
        runs.append(arguments);
        return m_answers.value(arguments.value(1), ProcessOutput{true, {}, 0, {}});
    }
    mutable QList<QStringList> runs;

private:
    QHash<QString, ProcessOutput> m_answers;
};

// Kernel values written as the members of a capture's kernel.json.
class FakeKernel final : public KernelSource
{
public:
    explicit FakeKernel(const QByteArray &json = "{}") : values(QJsonDocument::fromJson(json).object()) {}
    QJsonObject values;
    std::optional<QByteArray> value(const QByteArray &name) const override
    {
        const QString key = QString::fromLatin1(name);
        return values.contains(key) ? kernelBytes(name, values.value(key)) : std::nullopt;
    }
};

class FakePowerSources final : public PowerSourceList
{
public:
    QList<PropertyDictionary> list;
    QList<PropertyDictionary> descriptions() const override { return list; }
};

class FakeProcess final : public ProcessInformation
{
public:
    QString host;
    QString version;
    ThermalState state = ThermalState::unknown;
    QString hostName() const override { return host; }
    QString operatingSystemVersion() const override { return version; }
    ThermalState thermalState() const override { return state; }
};

class FakeClock final : public Clock
{
public:
    QDateTime moment = QDateTime::fromSecsSinceEpoch(1'800'000'000, Qt::UTC);
    QDateTime now() const override { return moment; }
};

struct FakeMac
{
    std::shared_ptr<FakeRegistry> registry = std::make_shared<FakeRegistry>();
    std::shared_ptr<FakeProfiler> profiler = std::make_shared<FakeProfiler>();
    std::shared_ptr<FakeKernel> kernel = std::make_shared<FakeKernel>();
    std::shared_ptr<FakePowerSources> powerSources = std::make_shared<FakePowerSources>();
    std::shared_ptr<FakeProcess> process = std::make_shared<FakeProcess>();
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();

    Platform platform() const { return Platform{profiler, kernel, registry, powerSources, process, clock}; }
};

inline Platform capturePlatform(const QString &name)
{
    const auto opened = CaptureFolder::open(QStringLiteral(QUILLON_CAPTURES_DIR) + u'/' + name);
    if (const QString *error = std::get_if<QString>(&opened))
        qFatal("%s", qPrintable(*error));
    return makeCapturePlatform(std::get<std::shared_ptr<CaptureFolder>>(opened));
}

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
