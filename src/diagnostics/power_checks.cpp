#include "diagnostics/diagnostics_rules.h"

#include "core/texts.h"

using namespace Qt::StringLiterals;

namespace {

// Under this share of its original capacity a battery is something to watch; the watch
// verdict writes this figure as the limit.
constexpr qint64 healthyCapacityPercent = 80;
// At or below this share the battery is a fault rather than something to watch.
constexpr qint64 wornOutCapacityPercent = 69;

QString cyclesPhrase(const BatteryInfo &battery)
{
    if (!battery.cycleCount)
        return localized("cycles inconnus");
    return localized("%1 cycles").arg(QString::number(*battery.cycleCount));
}

QString chargePhrase(const BatteryInfo &battery)
{
    return localized("charge %1 %").arg(QString::number(battery.chargePercent));
}

// The first matching verdict wins: capacity first, then the cycle count, then the
// condition macOS reports, so a worn battery shows only its capacity verdict.
std::pair<CheckStatus, QString> batteryVerdict(const BatteryInfo &battery)
{
    const std::optional<qint64> health = battery.healthPercent;
    const QString cycles = cyclesPhrase(battery);
    const QString charge = chargePhrase(battery);
    if (health && *health <= wornOutCapacityPercent) {
        return {CheckStatus::alerte,
                localized("Capacité tombée à %1 % de l'origine (%2, %3) — remplacement à envisager.")
                    .arg(QString::number(*health), cycles, charge)};
    }
    if (health && *health < healthyCapacityPercent) {
        return {CheckStatus::attention, localized("Capacité maximale à %1 %, sous le seuil de %2 % (%3, %4).")
                                            .arg(QString::number(*health), QString::number(healthyCapacityPercent),
                                                 cycles, charge)};
    }
    if (battery.cycleCount && battery.designCycleCount && *battery.cycleCount >= *battery.designCycleCount) {
        return {CheckStatus::attention, localized("%1 cycles : la batterie a dépassé la durée de vie prévue par Apple.")
                                            .arg(QString::number(*battery.cycleCount))};
    }
    if (battery.condition && !battery.isConditionHealthy)
        return {CheckStatus::attention, localized("macOS signale : %1 (%2).").arg(*battery.condition, cycles)};
    if (!health)
        return {CheckStatus::ok, localized("Batterie détectée, %1, %2.").arg(cycles, charge)};
    return {CheckStatus::ok, localized("Capacité maximale à %1 % de l'origine (%2, %3).")
                                 .arg(QString::number(*health), cycles, charge)};
}

} // namespace

namespace DiagnosticsService {

HardwareCheck batteryCheck(const std::optional<BatteryInfo> &battery)
{
    if (!battery) {
        return {.title = localized("Batterie"),
                .symbol = u"battery.100"_s,
                .status = CheckStatus::nonApplicable,
                .summary = localized("Ce Mac n'a pas de batterie interne."),
                .section = AppSection::battery};
    }
    const auto [status, summary] = batteryVerdict(*battery);
    // The gauge shows the health when it is known, the charge otherwise.
    const qint64 shown = battery->healthPercent.value_or(battery->chargePercent);
    std::optional<QString> caption;
    if (battery->cycleCount)
        caption = localized("%1 cycles").arg(QString::number(*battery->cycleCount));
    return {.title = localized("Batterie"),
            .symbol = battery->isCharging ? u"battery.100.bolt"_s : u"battery.100"_s,
            .status = status,
            .summary = summary,
            .measurement = QString::number(shown) + u" %"_s,
            .progress = double(shown) / 100.0,
            .caption = caption,
            .section = AppSection::battery,
            .isHighlighted = true};
}

} // namespace DiagnosticsService
