#pragma once

#include "core/battery_info.h"
#include "core/info_row.h"
#include "sources/platform.h"
#include "sources/property_values.h"

#include <QByteArray>
#include <QDate>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// Reads the internal battery from the smart-battery service of the I/O registry, the
// power-source list and the system profiler's power report. A machine without a battery
// gives nothing; nothing else fails: an unreadable value drops its field or its line.
namespace BatteryService {

// The full record with the battery screen's lines.
std::optional<BatteryInfo> load(const Platform &platform);

// A light reading for the live monitor: the smart-battery service only, no profiler run.
std::optional<BatterySnapshot> liveSnapshot(const Platform &platform);

// Cell makers by the three-letter code found in the battery's manufacturer data.
const QHash<QString, QString> &knownCellMakers();

// The properties of the first "AppleSmartBattery" service, or nothing.
std::optional<PropertyDictionary> smartBatteryProperties(const RegistrySource &registry);
// The first power-source description whose "Type" is "InternalBattery".
std::optional<PropertyDictionary> internalBatteryDescription(const PowerSourceList &powerSources);
// The profiler's battery item ("spbattery_information").
std::optional<PropertyDictionary> batteryInformation(const QList<PropertyDictionary> &powerItems);

// The maximum capacity the system itself reports ("89%" gives 89).
std::optional<qint64> officialHealthPercent(const QList<PropertyDictionary> &powerItems);
// The present full-charge capacity over the design capacity, in percent, not clamped.
std::optional<qint64> computedHealthPercent(std::optional<qint64> presentCapacity, std::optional<qint64> designCapacity);

// The day the battery was made, from its "ManufactureDate": the smart-battery packed form
// (year since 1980, month and day in 16 bits), or on Apple silicon, in "BatteryData", six
// ASCII digits YYMMDD in the integer's bytes, least significant first, the year counted
// from 1992 ("291014" is 14 October 2021). Anything else gives nothing.
std::optional<QDate> manufactureDate(const PropertyDictionary &smartBattery);
// "Fabriquée en mars 2022 (4 ans)": the month and the whole years since, to `today`.
QString ageText(const QDate &made, const QDate &today);
// When macOS's maximum capacity and the measured mAh ratio differ by more than 3 points:
// the measured figure and the sentence that explains the difference.
std::optional<QString> capacityGapText(std::optional<qint64> official, std::optional<qint64> computed);

// The health word: the profiler's first, the power source's otherwise.
std::optional<QString> rawConditionValue(const std::optional<PropertyDictionary> &powerSource,
                                         const QList<PropertyDictionary> &powerItems);
// The health word in French; an unknown word is shown as it is.
std::optional<QString> conditionLabel(const std::optional<QString> &rawWord);
// Only "Good" and "Normal" are healthy; no word at all counts as healthy.
bool isConditionHealthy(const std::optional<QString> &rawWord);

// Time to full while charging, to empty otherwise: "2 h 5 min" or "45 min"; nothing for
// an estimate outside 1 to 59999 minutes (65535 means "not known yet").
std::optional<QString> timeRemainingLabel(const PropertyDictionary &smartBattery, bool isCharging);

// The length-prefixed printable words of the manufacturer data.
QStringList manufacturerWords(const QByteArray &blob);
// The cell maker and lot code found in "ManufacturerData".
QList<InfoRow> cellProvenanceRows(const PropertyDictionary &smartBattery);
// The power adapter's lines from the profiler's charger item.
QList<InfoRow> adapterRows(const QList<PropertyDictionary> &powerItems);

} // namespace BatteryService
