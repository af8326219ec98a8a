#pragma once

#include "core/device_node.h"
#include "core/hardware_info.h"
#include "core/storage_volume.h"

#include <QList>
#include <QString>

#include <optional>

// What the overview's header and configuration card show of the machine.
namespace Presentation {

// "laptopcomputer" when the machine has a battery record, "desktopcomputer" otherwise.
QString machineSymbol(bool hasBattery);
// The model name, or "Analyse du Mac…" while the machine is not known yet.
QString overviewTitle(const std::optional<HardwareInfo> &hardware);
// The chip, the memory and the system version, separated by spaced middle dots.
QString machineConfigurationLine(const HardwareInfo &hardware);
// The commercial name (else the model identifier), then the core description.
QString machineModelLine(const HardwareInfo &hardware);

// One labelled figure of the configuration card; the tint is a colour role.
struct StatFigure
{
    QString label;
    QString value;
    QString tintRole;

    friend bool operator==(const StatFigure &, const StatFigure &) = default;
};

// The capacity of the first internal volume (else of the first volume), "—" without any.
QString storageValue(const QList<StorageVolume> &volumes);
// The first native resolution among the displays hanging on the graphics processors.
std::optional<QString> screenValue(const QList<DeviceNode> &displayRoots);
// The configuration card's figures, in order; "Écran" and "Série" only when known.
QList<StatFigure> configurationFigures(
    const HardwareInfo &hardware, const QList<StorageVolume> &volumes, const QList<DeviceNode> &displayRoots);

} // namespace Presentation
