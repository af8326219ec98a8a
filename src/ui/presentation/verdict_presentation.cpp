#include "ui/presentation/verdict_presentation.h"

#include "core/formatting.h"
#include "core/texts.h"

using namespace Qt::StringLiterals;

namespace Presentation {

QString checkStatusRawValue(CheckStatus status)
{
    switch (status) {
    case CheckStatus::ok:
        return u"ok"_s;
    case CheckStatus::attention:
        return u"attention"_s;
    case CheckStatus::alerte:
        return u"alerte"_s;
    case CheckStatus::info:
        return u"info"_s;
    case CheckStatus::nonApplicable:
        break;
    }
    return u"nonApplicable"_s;
}

std::optional<CheckStatus> checkStatusFromRawValue(const QString &rawValue)
{
    for (CheckStatus status : CheckStatuses::allCases()) {
        if (checkStatusRawValue(status) == rawValue)
            return status;
    }
    return std::nullopt;
}

QString levelColourRole(CheckStatus status)
{
    switch (CheckStatuses::colourRole(status)) {
    case CheckColourRole::green:
        return u"green"_s;
    case CheckColourRole::orange:
        return u"orange"_s;
    case CheckColourRole::red:
        return u"red"_s;
    case CheckColourRole::accent:
        return u"accent"_s;
    case CheckColourRole::secondary:
        break;
    }
    return u"secondary"_s;
}

std::optional<QString> liveMeasurement(const HardwareCheck &check, const LiveValues &live)
{
    if (!check.live)
        return std::nullopt;
    switch (*check.live) {
    case LiveMetric::lidAngle:
        return live.lidAngle;
    case LiveMetric::processorLoad:
        return live.processorLoad;
    case LiveMetric::processorTemperature:
        break;
    }
    return live.processorTemperature;
}

std::optional<double> liveProgress(const HardwareCheck &check, const LiveValues &live)
{
    if (check.live == LiveMetric::processorLoad)
        return live.processorLoadFraction;
    return std::nullopt;
}

std::optional<QString> rowMeasurement(const HardwareCheck &check, const LiveValues &live)
{
    if (std::optional<QString> reading = liveMeasurement(check, live))
        return reading;
    return check.measurement;
}

TileFace tileFace(
    const HardwareCheck &check, const std::optional<QString> &liveMeasurement, std::optional<double> liveProgress)
{
    TileFace face;
    face.value = liveMeasurement.value_or(check.measurement.value_or(CheckStatuses::label(check.status)));
    face.valueColourRole = check.status == CheckStatus::nonApplicable ? u"secondary"_s : u"primary"_s;
    if (std::optional<double> fraction = liveProgress ? liveProgress : check.progress)
        face.progress = qBound(0.0, *fraction, 1.0);
    face.caption = liveMeasurement ? std::optional<QString>(localized("mesure en direct")) : check.caption;
    // Only the two levels that call for action colour the whole tile.
    if (check.status == CheckStatus::alerte)
        face.tone = u"red"_s;
    else if (check.status == CheckStatus::attention)
        face.tone = u"orange"_s;
    return face;
}

QString verdictDetailLine(const DiagnosticsReport &report)
{
    QStringList titles;
    for (const HardwareCheck &check : report.checks) {
        if (check.status == CheckStatus::attention || check.status == CheckStatus::alerte)
            titles.append(check.title);
    }
    if (titles.isEmpty())
        return localized("Tous les composants contrôlés répondent normalement.");
    return titles.join(u", "_s);
}

QString coverageLine(const DiagnosticsReport &report)
{
    QString line = QString::number(report.applicableCount()) + localized(" composants contrôlés");
    if (const int withoutObject = report.count(CheckStatus::nonApplicable); withoutObject > 0)
        line += u" · "_s + QString::number(withoutObject) + localized(" sans objet");
    return line;
}

QString reportLine(const DiagnosticsReport &report)
{
    return localized("%1 contrôles · %2")
        .arg(QString::number(report.applicableCount()), Format::standardTime(report.generatedAt));
}

QList<CheckStatus> talliedLevels()
{
    return { CheckStatus::ok, CheckStatus::attention, CheckStatus::alerte };
}

std::optional<QString> footerLine(const std::optional<QDateTime> &lastRefresh)
{
    if (!lastRefresh)
        return std::nullopt;
    return localized("Analyse de ") + Format::standardTime(*lastRefresh) + localized(" · ⌘R pour relancer");
}

} // namespace Presentation
