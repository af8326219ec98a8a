#include "diagnostics/diagnostics_report.h"

#include "core/texts.h"

#include <QHashFunctions>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct LevelPresentation
{
    int severityRank;
    const char *label;
    const char16_t *symbol;
    CheckColourRole colourRole;
};

// Indexed by the level's declaration order.
constexpr std::array<LevelPresentation, 5> levels{{
    {1, "Correct", u"checkmark.circle.fill", CheckColourRole::green},
    {2, "À surveiller", u"exclamationmark.triangle.fill", CheckColourRole::orange},
    {3, "Anomalie", u"xmark.octagon.fill", CheckColourRole::red},
    {0, "Info", u"info.circle.fill", CheckColourRole::accent},
    {-1, "Sans objet", u"minus.circle", CheckColourRole::secondary},
}};

const LevelPresentation &presentationOf(CheckStatus status)
{
    return levels[size_t(status)];
}

QString faultPart(qint64 faults)
{
    return faults == 1 ? localized("%1 anomalie").arg(faults) : localized("%1 anomalies").arg(faults);
}

QString warningPart(qint64 warnings)
{
    return warnings == 1 ? localized("%1 point à surveiller").arg(warnings)
                         : localized("%1 points à surveiller").arg(warnings);
}

} // namespace

namespace CheckStatuses {

QList<CheckStatus> allCases()
{
    return {CheckStatus::ok, CheckStatus::attention, CheckStatus::alerte, CheckStatus::info,
            CheckStatus::nonApplicable};
}

int severityRank(CheckStatus status)
{
    return presentationOf(status).severityRank;
}

QString label(CheckStatus status)
{
    return localized(presentationOf(status).label);
}

QString symbol(CheckStatus status)
{
    return QString::fromUtf16(presentationOf(status).symbol);
}

CheckColourRole colourRole(CheckStatus status)
{
    return presentationOf(status).colourRole;
}

} // namespace CheckStatuses

size_t qHash(CheckStatus status, size_t seed)
{
    return qHash(int(status), seed);
}

size_t qHash(LiveMetric metric, size_t seed)
{
    return qHash(int(metric), seed);
}

int DiagnosticsReport::count(CheckStatus status) const
{
    return int(std::count_if(checks.cbegin(), checks.cend(),
                             [status](const HardwareCheck &check) { return check.status == status; }));
}

CheckStatus DiagnosticsReport::worst() const
{
    if (checks.isEmpty())
        return CheckStatus::info;
    CheckStatus current = checks.first().status;
    for (const HardwareCheck &check : checks) {
        // Strictly greater: on a tie the earlier level stays.
        if (CheckStatuses::severityRank(check.status) > CheckStatuses::severityRank(current))
            current = check.status;
    }
    return current;
}

int DiagnosticsReport::applicableCount() const
{
    return int(checks.size()) - count(CheckStatus::nonApplicable);
}

namespace {

QString levelsHeadline(qint64 faults, qint64 warnings)
{
    if (faults == 0 && warnings == 0)
        return localized("Aucun problème détecté");
    if (faults == 0)
        return warningPart(warnings);
    if (warnings == 0) {
        return faults == 1 ? localized("%1 anomalie détectée").arg(faults)
                           : localized("%1 anomalies détectées").arg(faults);
    }
    return faultPart(faults) + u" · "_s + warningPart(warnings);
}

QString failedReadPart(qint64 reads)
{
    return reads == 1 ? localized("%1 lecture impossible").arg(reads)
                      : localized("%1 lectures impossibles").arg(reads);
}

} // namespace

QString DiagnosticsReport::headline() const
{
    const qint64 faults = count(CheckStatus::alerte);
    const qint64 warnings = count(CheckStatus::attention);
    const qint64 reads = failedReads.size();
    if (reads == 0)
        return levelsHeadline(faults, warnings);
    // A machine whose reads failed is never declared free of problems.
    if (faults == 0 && warnings == 0)
        return localized("Bilan incomplet — ") + failedReadPart(reads);
    return levelsHeadline(faults, warnings) + u" · "_s + failedReadPart(reads);
}
