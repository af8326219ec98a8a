#pragma once

#include "core/hardware_info.h"
#include "sources/platform.h"
#include "sources/property_values.h"
#include "sources/system_profiler.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

// Builds the machine identity: model, chip, cores, memory, system, uptime, the hardware
// screen's lines and the built-in components.
namespace HardwareService {

// Fails only when the hardware data type of the system profiler fails.
Result<HardwareInfo> load(const Platform &platform);

// "cpu_type à current_processor_speed" for Intel processors; the type alone without a
// speed, and an empty text without a type.
QString intelProcessorLabel(const PropertyDictionary &hardwareItem);

// The counts of "number_processors": "proc 12:8:4" gives total, performance and efficiency;
// since macOS 26 a fourth field counts a second tier of large cores ("proc 18:6:0:12");
// an Intel Mac reports a plain count.
QList<qint64> coreCounts(const PropertyDictionary &hardwareItem);

// One tier of cores, named in French ("super", "performance", "efficacité").
struct CoreTier
{
    QString name;
    qint64 count = 0;
};

// The core tiers of a chip with a "super" tier or a second tier of large cores, best first,
// named by the kernel (hw.perflevelN.name) or else by the fields' order; empty for every
// other Mac, whose counts read as performance and efficiency.
QList<CoreTier> coreTiers(const PropertyDictionary &hardwareItem, const KernelSource &kernel);

// "12 cœurs — 8 performance + 4 efficacité", "18 cœurs — 6 super + 12 performance",
// "8 cœurs / 16 threads", "8 cœurs" or "—".
QString coreSummary(const PropertyDictionary &hardwareItem, const KernelSource &kernel);

// The tile form: "12 (8P + 4E)", "18 (6S + 12P)", "8 cœurs" or "—".
QString shortCoreSummary(const PropertyDictionary &hardwareItem, const KernelSource &kernel);

// The profiler's memory text with its English unit ("16 GB"), or the kernel's byte count
// when the profiler gave none.
QString localizedMemory(const std::optional<QString> &physicalMemory, const KernelSource &kernel);

// "macOS 15.1 (24B83)".
QString osVersion(const KernelSource &kernel, const ProcessInformation &process);

// Time since start: "3 j 20 h", "2 h 5 min" or "45 min"; "—" without a boot time.
QString uptime(const KernelSource &kernel, const QDateTime &now);

QString thermalState(ThermalState state);

// The text of the processor architecture the application was built for ("arm64", "x86_64"...).
QString architectureText(const QString &buildArchitecture);
// The same for this build.
QString architectureText();

} // namespace HardwareService
