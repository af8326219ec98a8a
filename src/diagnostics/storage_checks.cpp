#include "diagnostics/diagnostics_rules.h"

#include "core/byte_format.h"
#include "core/formatting.h"
#include "core/texts.h"

using namespace Qt::StringLiterals;

namespace {

// A volume is something to watch from this used share of its capacity up, compared on
// the exact fraction: a volume 89.99 % full stays correct although its percent rounds to 90.
constexpr double fullFraction = 0.9;

std::pair<CheckStatus, QString> volumeVerdict(const StorageVolume &volume)
{
    const double used = volume.usedFraction();
    const QString usedPercent = QString::number(volume.totalBytes > 0 ? Format::roundedPercent(used * 100) : 0);
    const QString freeText = ByteFormat::string(volume.freeBytes);
    // An unknown verification counts as verified.
    if (volume.smartIsVerified == false) {
        return {CheckStatus::alerte, localized("État S.M.A.R.T. : %1 — sauvegarde immédiate conseillée.")
                                         .arg(volume.smartStatus.value_or(u"?"_s))};
    }
    if (volume.totalBytes > 0 && used >= fullFraction)
        return {CheckStatus::attention, localized("Rempli à %1 %, il ne reste que %2.").arg(usedPercent, freeText)};
    QString summary = localized("%1 disponibles (%2 % utilisés)").arg(freeText, usedPercent);
    if (volume.smartStatus)
        summary += u", S.M.A.R.T. "_s + volume.smartStatus->toLower();
    return {CheckStatus::ok, summary + u"."_s};
}

HardwareCheck volumeCheck(const StorageVolume &volume)
{
    const auto [status, summary] = volumeVerdict(volume);
    return {.title = volume.name,
            .symbol = volume.isInternal ? u"internaldrive"_s : u"externaldrive"_s,
            .status = status,
            .summary = summary,
            .measurement = ByteFormat::string(volume.totalBytes),
            .progress = volume.usedFraction(),
            .section = AppSection::storage};
}

} // namespace

namespace DiagnosticsService {

QList<HardwareCheck> storageChecks(const QList<StorageVolume> &volumes)
{
    if (volumes.isEmpty()) {
        return {{.title = localized("Stockage"),
                 .symbol = u"internaldrive"_s,
                 .status = CheckStatus::attention,
                 .summary = localized("Aucun volume détecté."),
                 .section = AppSection::storage}};
    }
    QList<HardwareCheck> checks;
    for (const StorageVolume &volume : volumes)
        checks.append(volumeCheck(volume));
    return checks;
}

} // namespace DiagnosticsService
