#pragma once

#include "core/battery_info.h"
#include "core/hardware_info.h"
#include "core/inventory.h"
#include "core/storage_volume.h"
#include "diagnostics/diagnostics_report.h"
#include "sources/platform.h"

#include <QList>
#include <QString>

#include <optional>

// What a full load of the application state gave.
struct Loaded
{
    std::optional<HardwareInfo> hardware;
    std::optional<BatteryInfo> battery;
    QList<StorageVolume> volumes;
    Inventory inventory;
    std::optional<DiagnosticsReport> report;
};

// A fresh application state's full load (the ten sections side by side, then the
// verdicts), waited for in an event loop as the programs do.
Loaded fullLoad(const Platform &platform);

// The text report of a load, as quillon-bilan writes it (no workshop header, no live values).
QString reportText(const Platform &platform, const Loaded &loaded);

// Both: what the start of the application or of quillon-bilan costs above the sources.
QString fullLoadAndReport(const Platform &platform);
