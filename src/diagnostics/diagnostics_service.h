#pragma once

#include "core/battery_info.h"
#include "core/hardware_info.h"
#include "core/inventory.h"
#include "core/storage_volume.h"
#include "diagnostics/diagnostics_report.h"
#include "sources/platform.h"

#include <QHash>
#include <QList>

#include <optional>

// The rules that judge the collected records. Stateless: besides its arguments, a build
// reads only the swap usage, the installed memory, the boot time and the thermal state
// (through the platform's kernel and process sources) and the current time (its clock).
namespace DiagnosticsService {

// The report of every rule in its fixed order: battery, one check per storage volume,
// displays, Wi-Fi, Bluetooth, audio, camera, keyboard, keyboard backlight, trackpad,
// haptics, Touch ID, lid angle, other sensors, USB, Thunderbolt, memory, processor,
// temperature, system. `hardware` is absent when the hardware section has not loaded,
// `battery` when the machine has none; a section missing from `inventory` counts as empty.
// The generation time is the clock's time once every check is built. A check judged from a
// section of `failures` (its last read failed, with this text) reads "Lecture impossible" at
// the info level instead, and the report lists the failed reads.
DiagnosticsReport build(const Platform &platform, const std::optional<HardwareInfo> &hardware,
                        const std::optional<BatteryInfo> &battery, const QList<StorageVolume> &volumes,
                        const Inventory &inventory, const QHash<AppSection, QString> &failures = {});

} // namespace DiagnosticsService
