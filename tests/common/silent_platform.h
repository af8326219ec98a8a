#pragma once

#include "sources/platform.h"

#include <QDate>
#include <QDateTime>
#include <QTime>

#include <memory>

// A Mac that answers nothing but through the profiler it is given: no registry services, no
// kernel values, no power sources, no host name, and the clock stopped at the sample's moment.
namespace SilentPlatform {

class NoRegistry final : public RegistrySource
{
public:
    QList<PropertyDictionary> servicesOfClass(const QString &) const override { return {}; }
    QList<PropertyDictionary> servicesNamed(const QString &) const override { return {}; }
};

class NoKernel final : public KernelSource
{
public:
    std::optional<QByteArray> value(const QByteArray &) const override { return std::nullopt; }
};

class NoPowerSources final : public PowerSourceList
{
public:
    QList<PropertyDictionary> descriptions() const override { return {}; }
};

class NoProcess final : public ProcessInformation
{
public:
    QString hostName() const override { return {}; }
    QString operatingSystemVersion() const override { return {}; }
    ThermalState thermalState() const override { return ThermalState::unknown; }
};

class FixedClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7), Qt::UTC); }
};

inline Platform with(std::shared_ptr<const ProfilerSource> profiler)
{
    Platform platform;
    platform.profiler = std::move(profiler);
    platform.kernel = std::make_shared<NoKernel>();
    platform.registry = std::make_shared<NoRegistry>();
    platform.powerSources = std::make_shared<NoPowerSources>();
    platform.process = std::make_shared<NoProcess>();
    platform.clock = std::make_shared<FixedClock>();
    return platform;
}

} // namespace SilentPlatform
