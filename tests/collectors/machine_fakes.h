#pragma once

#include "core/info_row.h"
#include "platform/capture/capture_folder.h"
#include "platform/capture/capture_platform.h"
#include "sources/platform.h"

#include <QJsonObject>
#include <QTest>

// Small stand-ins for the platform's services, each holding the answers a test gives it.

class FakeRegistry final : public RegistrySource
{
public:
    QHash<QString, QList<PropertyDictionary>> byClass;
    QHash<QString, QList<PropertyDictionary>> byName;
    QList<PropertyDictionary> servicesOfClass(const QString &name) const override { return byClass.value(name); }
    QList<PropertyDictionary> servicesNamed(const QString &name) const override { return byName.value(name); }
};

// Answers per data type; a data type without an answer prints nothing.
class FakeProfiler final : public ProfilerSource
{
public:
    QHash<QString, ProcessOutput> answers;
    void answer(const QString &dataType, const QByteArray &output, int exitStatus = 0)
    {
        answers.insert(dataType, ProcessOutput{true, {}, exitStatus, output});
    }
    ProcessOutput run(const QStringList &arguments) const override
    {
        return answers.value(arguments.value(1), ProcessOutput{true, {}, 0, {}});
    }
};

// Kernel values written as the members of a capture's kernel.json.
class FakeKernel final : public KernelSource
{
public:
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
    QDateTime now() const override { return QDateTime::fromSecsSinceEpoch(1'800'000'000, Qt::UTC); }
};

struct FakeMac
{
    std::shared_ptr<FakeRegistry> registry = std::make_shared<FakeRegistry>();
    std::shared_ptr<FakeProfiler> profiler = std::make_shared<FakeProfiler>();
    std::shared_ptr<FakeKernel> kernel = std::make_shared<FakeKernel>();
    std::shared_ptr<FakePowerSources> powerSources = std::make_shared<FakePowerSources>();
    std::shared_ptr<FakeProcess> process = std::make_shared<FakeProcess>();

    Platform platform() const
    {
        return Platform{profiler, kernel, registry, powerSources, process, std::make_shared<FakeClock>()};
    }
};

inline Platform capturePlatform(const QString &name)
{
    const auto opened = CaptureFolder::open(QStringLiteral(QUILLON_CAPTURES_DIR) + u'/' + name);
    if (const QString *error = std::get_if<QString>(&opened))
        qFatal("%s", qPrintable(*error));
    return makeCapturePlatform(std::get<std::shared_ptr<CaptureFolder>>(opened));
}

// "label = value", one per row, for comparisons that print well when they fail.
inline QStringList rowTexts(const QList<InfoRow> &rows)
{
    QStringList texts;
    for (const InfoRow &row : rows)
        texts.append(row.label + QStringLiteral(" = ") + row.value);
    return texts;
}
