#pragma once

// Stand-ins for the platform's services, each holding the answers a test gives it.

#include "platform/capture/capture_folder.h"
#include "platform/capture/capture_platform.h"
#include "sources/platform.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMutex>

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
    // Every class looked up, from any thread.
    mutable QStringList classesAsked;
    mutable QMutex mutex;
    QList<PropertyDictionary> servicesOfClass(const QString &name) const override
    {
        QMutexLocker lock(&mutex);
        classesAsked.append(name);
        return byClass.value(name);
    }
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

// A Mac that answers through the given profiler only, its clock at the sample's moment.
inline Platform silentPlatform(std::shared_ptr<const ProfilerSource> profiler)
{
    FakeMac mac;
    mac.clock->moment = QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7), Qt::UTC);
    Platform platform = mac.platform();
    platform.profiler = std::move(profiler);
    return platform;
}
