#include "diagnostics/diagnostics_rules.h"

#include "core/byte_format.h"
#include "core/formatting.h"
#include "core/texts.h"

using namespace Qt::StringLiterals;

namespace {

// A volume is something to watch from this used share of its capacity up, compared on
// the exact fraction: a volume 89.99 % full stays correct although its percent rounds to 90.
constexpr double fullFraction = 0.9;

// Of the drive's rated endurance, from this share used the drive is to watch, and from
// the second one it is worn out.
constexpr int wornPercentUsed = 80;
constexpr int wornOutPercentUsed = 95;

QString count(double value)
{
    return Format::groupThousands(QString::number(qint64(value)));
}

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
    const std::optional<std::pair<CheckStatus, QString>> wear
        = volume.wear ? DiagnosticsService::wearVerdict(*volume.wear) : std::nullopt;
    if (wear && wear->first == CheckStatus::alerte)
        return *wear;
    if (volume.totalBytes > 0 && used >= fullFraction)
        return {CheckStatus::attention, localized("Rempli à %1 %, il ne reste que %2.").arg(usedPercent, freeText)};
    if (wear)
        return *wear;
    QString summary = localized("%1 disponibles (%2 % utilisés)").arg(freeText, usedPercent);
    if (volume.smartStatus)
        summary += u", S.M.A.R.T. "_s + volume.smartStatus->toLower();
    if (volume.wear)
        summary += localized(", usure ") + DiagnosticsService::wearSummary(*volume.wear).section(u" · "_s, 0, 0);
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

std::optional<std::pair<CheckStatus, QString>> wearVerdict(const DriveWear &wear)
{
    if (wear.unreadable)
        return std::nullopt;
    QStringList faults;
    if (wear.percentageUsed >= wornOutPercentUsed)
        faults << localized("%1 % de son endurance consommée").arg(wear.percentageUsed);
    if (wear.criticalWarning != 0)
        faults << localized("alerte critique du contrôleur (0x%1)").arg(wear.criticalWarning, 2, 16, QChar(u'0'));
    if (wear.mediaErrors > 0)
        faults << (wear.mediaErrors == 1 ? localized("1 erreur de support")
                                         : localized("%1 erreurs de support").arg(count(wear.mediaErrors)));
    if (!faults.isEmpty())
        return std::pair{CheckStatus::alerte,
                         localized("SSD usé : %1 — sauvegarde et remplacement à prévoir.").arg(faults.join(u", "_s))};
    QStringList watches;
    if (wear.percentageUsed >= wornPercentUsed)
        watches << localized("%1 % de son endurance consommée").arg(wear.percentageUsed);
    if (wear.availableSpare < wear.availableSpareThreshold)
        watches << localized("réserve à %1 %, sous son seuil de %2 %").arg(wear.availableSpare).arg(wear.availableSpareThreshold);
    if (!watches.isEmpty())
        return std::pair{CheckStatus::attention, localized("SSD fatigué : %1.").arg(watches.join(u", "_s))};
    return std::nullopt;
}

QString wearSummary(const DriveWear &wear)
{
    if (wear.unreadable)
        return localized("illisible — %1").arg(*wear.unreadable);
    return localized("%1 % · %2 écrits · %3 h de fonctionnement")
        .arg(QString::number(wear.percentageUsed), ByteFormat::string(wear.bytesWritten), count(wear.powerOnHours));
}

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
