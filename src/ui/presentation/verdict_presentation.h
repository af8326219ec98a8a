#pragma once

#include "diagnostics/diagnostics_report.h"
#include "live/live_values.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

// How the verdicts are drawn on the overview and the diagnostics screen: the colour role
// of a level, which measurement a check's row and tile show (a live reading first), the
// tile's face, and the lines that sum a report up.
namespace Presentation {

// A level's raw value as QML names it: "ok", "attention", "alerte", "info", "nonApplicable".
QString checkStatusRawValue(CheckStatus status);
std::optional<CheckStatus> checkStatusFromRawValue(const QString &rawValue);
// The colour of a level by role: "green", "orange", "red", "accent" or "secondary".
QString levelColourRole(CheckStatus status);

// The live text of the reading a check is tied to, when the monitors have one.
std::optional<QString> liveMeasurement(const HardwareCheck &check, const LiveValues &live);
// The live fraction drawn as a tile's gauge: only the processor load has one.
std::optional<double> liveProgress(const HardwareCheck &check, const LiveValues &live);
// A check row's measurement: the live reading, else the stored measurement, else none.
std::optional<QString> rowMeasurement(const HardwareCheck &check, const LiveValues &live);

// What a verdict tile shows under its header.
struct TileFace
{
    // The live measurement, else the check's measurement, else the level's label.
    QString value;
    // "secondary" for a check without object, "primary" otherwise.
    QString valueColourRole;
    // The gauge's fill from 0 to 1; none when the tile has no gauge.
    std::optional<double> progress;
    // "mesure en direct" under a live reading, else the check's caption.
    std::optional<QString> caption;
    // The colour of the whole tile ("red", "orange") for the levels that call for action;
    // empty for a tile on the card surface.
    QString tone;

    friend bool operator==(const TileFace &, const TileFace &) = default;
};
TileFace tileFace(
    const HardwareCheck &check, const std::optional<QString> &liveMeasurement, std::optional<double> liveProgress);

// The titles of the checks that call for action, in report order, joined with ", "; the
// all-normal sentence when there are none.
QString verdictDetailLine(const DiagnosticsReport &report);
// "{n} composants contrôlés", followed by " · {m} sans objet" when some checks have no object.
QString coverageLine(const DiagnosticsReport &report);
// "{n} contrôles · " followed by the time the report was built (time only).
QString reportLine(const DiagnosticsReport &report);
// The levels that get a tally on the diagnostics banner, in order.
QList<CheckStatus> talliedLevels();
// "Analyse de {time} · ⌘R pour relancer"; none before the first analysis.
std::optional<QString> footerLine(const std::optional<QDateTime> &lastRefresh);

} // namespace Presentation
