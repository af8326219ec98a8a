#pragma once

#include "core/app_section.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// The level of one verdict. The declaration order is the stored index 0 to 4.
enum class CheckStatus { ok, attention, alerte, info, nonApplicable };

// The colour a screen draws a level with, by role; the theme maps roles to colours.
enum class CheckColourRole { green, orange, red, accent, secondary };

namespace CheckStatuses {
// The five levels in declaration order.
QList<CheckStatus> allCases();
// The only ordering of levels: ok 1, attention 2, alerte 3, info 0, nonApplicable -1.
// An informational verdict never makes a report look better or worse than a correct
// one, and a verdict without object counts for nothing.
int severityRank(CheckStatus status);
// "Correct", "À surveiller", "Anomalie", "Info", "Sans objet".
QString label(CheckStatus status);
// The symbol name a screen draws the level with ("checkmark.circle.fill"…).
QString symbol(CheckStatus status);
CheckColourRole colourRole(CheckStatus status);
} // namespace CheckStatuses

size_t qHash(CheckStatus status, size_t seed = 0);

// A live reading that replaces a check's fixed measurement on screen.
enum class LiveMetric { lidAngle, processorLoad, processorTemperature };

size_t qHash(LiveMetric metric, size_t seed = 0);

// Where a verdict belongs: the components of the machine, or who else may still control it.
enum class CheckGroup { components, ownership };

// One verdict about one component. Every check gets a fresh identifier, so two runs of
// the rules never share one.
struct HardwareCheck
{
    QUuid id = QUuid::createUuid();
    // Short name of the component examined ("Batterie", "Stockage", "Wi-Fi").
    QString title;
    // Symbol name of the component ("battery.100.bolt").
    QString symbol;
    CheckStatus status = CheckStatus::info;
    // One French sentence that explains the verdict.
    QString summary;
    // Short measured value shown large on the check's tile.
    std::optional<QString> measurement;
    // Fill of the gauge under the measurement, 0 to 1.
    std::optional<double> progress;
    // Small line under the measurement.
    std::optional<QString> caption;
    // Live reading shown instead of the measurement when one is available.
    std::optional<LiveMetric> live;
    // The window section that shows the details; a click on the check opens it.
    std::optional<AppSection> section;
    // One of the large tiles at the top of the diagnostics screen.
    bool isHighlighted = false;
    CheckGroup group = CheckGroup::components;

    friend bool operator==(const HardwareCheck &, const HardwareCheck &) = default;
};

// A data section whose last read failed, and why: the verdicts that needed it say so
// rather than judge what is missing.
struct FailedRead
{
    AppSection section;
    QString failure;

    friend bool operator==(const FailedRead &, const FailedRead &) = default;
};

// One run of the rules: the checks in their fixed order and the moment it was built.
struct DiagnosticsReport
{
    QList<HardwareCheck> checks;
    QDateTime generatedAt;
    // The sections that could not be read, in the order of the data sections.
    QList<FailedRead> failedReads;

    // Number of checks at this level. Warnings are count(attention), faults count(alerte).
    int count(CheckStatus status) const;
    // The level with the highest severity rank, the earlier one on ties; info when empty.
    CheckStatus worst() const;
    // Number of checks whose level is not nonApplicable.
    int applicableCount() const;
    // "Aucun problème détecté", "1 anomalie détectée", "2 anomalies · 1 point à surveiller"…;
    // with failed reads, "Bilan incomplet — 1 lecture impossible" when nothing else is
    // wrong, else the usual headline followed by " · 2 lectures impossibles".
    QString headline() const;

    friend bool operator==(const DiagnosticsReport &, const DiagnosticsReport &) = default;
};
