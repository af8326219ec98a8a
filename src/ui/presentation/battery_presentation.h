#pragma once

#include "core/battery_info.h"
#include "core/info_row.h"

#include <QList>
#include <QString>

#include <optional>

// How the battery card of the overview and the battery screen show the battery: the live
// snapshot of the battery monitor first, the battery record otherwise.
namespace Presentation {

// The charge level and the plugged-in flag, live first.
int chargePercent(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot);
bool isPluggedIn(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot);
// "battery.100.bolt" while charging, else a level symbol by charge percentage.
QString batterySymbol(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot);
// The live snapshot's remaining time when it has one, else the record's.
std::optional<QString> remainingTime(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot);

// The colour role of the maximum capacity: red below 70 %, orange below 80 %, green from
// 80 %; `whenUnknown` when the battery does not report it.
QString healthColourRole(std::optional<qint64> healthPercent, const QString &whenUnknown);
// The colour role of the power state figure: orange for a worn battery, red for a low
// charge on battery power, green otherwise.
QString powerColourRole(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot);
// The maximum capacity as a bar's fill, 0 when unknown.
double healthFraction(const BatteryInfo &battery);

// The figures of the battery card, "—" when unknown.
QString healthText(const BatteryInfo &battery);
QString conditionText(const BatteryInfo &battery);
QString cycleCountText(const BatteryInfo &battery);
// The charge level followed by " %", live first.
QString chargeText(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot);
// The live power state in words, "—" without a snapshot.
QString powerStateText(const std::optional<BatterySnapshot> &snapshot);

// The line under the battery screen's capacity: cycles, charge, power state and
// remaining time, the ones that apply, joined with " · ".
QString batterySubtitle(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot);
// A worn battery (capacity known and below 80 %, or a condition that is not normal).
bool showsReplacementWarning(const BatteryInfo &battery);
// The battery lines, with the charge level and the power state of the live snapshot.
QList<InfoRow> liveBatteryRows(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot);

} // namespace Presentation
