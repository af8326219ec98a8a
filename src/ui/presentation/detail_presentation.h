#pragma once

#include "core/built_in_components.h"
#include "core/info_row.h"
#include "core/storage_volume.h"
#include "records/history_entry.h"

#include <QList>
#include <QString>

#include <optional>

// The rules of the hardware, storage and journal screens, kept out of QML so that they
// are tested: a volume's usage figures, tint and rows; the texts and rows of the live
// processor card and of the built-in components; the rows and look of a journal entry.
namespace DetailPresentation {

// --- Storage volumes ---

// The colour of a volume's used share: the accent below 75 % used, orange below 90 %,
// red from 90 %.
enum class VolumeTint { accent, orange, red };
// The colour role of a tint as the theme names it: "accent", "orange" or "red".
QString tintRole(VolumeTint tint);

struct VolumeUsage
{
    // Total minus free, never below 0.
    double usedBytes = 0;
    // Used over total; 0 when the total is not above 0. Not clamped above 1.
    double usedFraction = 0;
    // The used fraction in percent, truncated to a whole number.
    qint64 percent = 0;
    VolumeTint tint = VolumeTint::accent;
};
VolumeUsage volumeUsage(double totalBytes, double freeBytes);

// The gauge bar: the track's width times the used fraction, never narrower than 4 points.
constexpr double minimumGaugeBarWidth = 4;
double gaugeBarWidth(double trackWidth, double usedFraction);

// The card's header badge: "Interne" or "Externe", and its icon.
QString volumeBadge(bool isInternal);
QString volumeSymbol(bool isInternal);

// The volume card's lines under the gauge: disk, file system, mount point and S.M.A.R.T.
// state, each only when known.
// The rows of a drive's health log on its volume's card.
QList<InfoRow> wearRows(const DriveWear &wear);
QList<InfoRow> volumeRows(const StorageVolume &volume);

// --- Live processor card ---

// "Charge globale" and "Température du die", with their waiting texts while the monitor
// has no reading.
QList<InfoRow> processorRows(const std::optional<QString> &loadText, const std::optional<QString> &temperatureText);
// "die 52 °C" when the temperature is known.
std::optional<QString> processorAccessory(const std::optional<QString> &temperatureText);

// One bar of the per-core chart: the accent colour at an opacity that grows with the load,
// rising to the load's share of a 46-point slot, at least 2 points high.
constexpr double coreSlotHeight = 46;
constexpr double minimumCoreBarHeight = 2;
struct CoreBar
{
    double opacity = 0;
    double height = 0;
};
CoreBar coreBar(double loadFraction);

// --- Built-in components ---

// "{count} interfaces de capteurs".
QString componentsAccessory(qint64 sensorInterfaces);
// The line under a component's title. `lidAngle` is the lid-angle monitor's text ("118°").
QString componentStateText(const BuiltInComponents::Listed &entry, const std::optional<QString> &lidAngle);
// The component's own rows; the lid-angle sensor adds the angle measured now.
QList<InfoRow> componentRows(const BuiltInComponents::Listed &entry, const std::optional<QString> &lidAngle);

// --- Journal ---

// "{count} machine(s) contrôlée(s)".
QString journalCountText(qint64 count);
// An entry without warnings nor faults is clean: a check icon and a green headline;
// otherwise a warning icon and an orange headline.
bool journalEntryIsClean(qint64 warningCount, qint64 faultCount);
QString journalEntrySymbol(qint64 warningCount, qint64 faultCount, qint64 failedReadCount = 0);
// "green" or "orange".
QString journalHeadlineRole(qint64 warningCount, qint64 faultCount, qint64 failedReadCount = 0);
// Serial number, configuration, storage, battery health and cycles, each only when known.
QList<InfoRow> journalEntryRows(const HistoryEntry &entry);

} // namespace DetailPresentation
