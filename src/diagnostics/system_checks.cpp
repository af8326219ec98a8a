#include "diagnostics/diagnostics_rules.h"

#include "core/byte_format.h"
#include "core/texts.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

// Past this many whole days without a restart, a restart is advised.
constexpr qint64 restartAdvisedAfterDays = 30;
constexpr double secondsPerDay = 86400.0;

// Whole days between boot and now, truncated toward zero; 0 when the boot time is unknown.
qint64 daysSinceBoot(const std::optional<QDateTime> &bootTime, const QDateTime &now)
{
    if (!bootTime || !bootTime->isValid() || !now.isValid())
        return 0;
    const double seconds = double(bootTime->msecsTo(now)) / 1000.0;
    return qint64(std::trunc(seconds / secondsPerDay));
}

// The machine swaps more than half of its installed memory.
bool isShortOfMemory(quint64 swapUsedBytes, std::optional<qint64> installedMemoryBytes)
{
    if (!installedMemoryBytes || *installedMemoryBytes < 1)
        return false;
    // Integer halving gives the same answer as the exact half against a whole byte count.
    return quint64(*installedMemoryBytes) / 2 < swapUsedBytes;
}

} // namespace

namespace DiagnosticsService {

HardwareCheck memoryCheck(const std::optional<HardwareInfo> &hardware, const std::optional<Sysctl::SwapUsage> &swap,
                          std::optional<qint64> installedMemoryBytes)
{
    const QString memory = hardware ? hardware->memory : missingValueMark();
    HardwareCheck check{.title = localized("Mémoire"),
                        .symbol = u"memorychip"_s,
                        .status = CheckStatus::info,
                        .summary = localized("%1 de mémoire vive.").arg(memory),
                        .measurement = memory,
                        .section = AppSection::hardware};
    // No machine swaps 2^63 bytes or more: such a reading (a hostile capture) cannot be
    // written as a byte count and counts as no reading.
    if (!swap || swap->used > quint64(std::numeric_limits<qint64>::max()))
        return check;
    const QString swapText = ByteFormat::string(qint64(swap->used));
    if (isShortOfMemory(swap->used, installedMemoryBytes)) {
        check.status = CheckStatus::attention;
        check.summary = localized("%1 de RAM mais %2 d'échange sur disque — la machine manque de mémoire.")
                            .arg(memory, swapText);
    } else {
        check.status = CheckStatus::ok;
        check.summary = localized("%1 de RAM, %2 d'échange sur disque.").arg(memory, swapText);
    }
    return check;
}

HardwareCheck processorCheck(const std::optional<HardwareInfo> &hardware)
{
    // Without a hardware record the sentence begins with the separator, as the load
    // measured on screen still follows it.
    QString summary;
    if (hardware)
        summary = hardware->chip + u" — "_s + hardware->cores;
    summary += localized(" · charge mesurée en continu.");
    return {.title = localized("Processeur"),
            .symbol = u"cpu"_s,
            .status = CheckStatus::info,
            .summary = summary,
            .live = LiveMetric::processorLoad,
            .section = AppSection::hardware};
}

QString labelForThermal(ThermalState state)
{
    switch (state) {
    case ThermalState::nominal:
        return localized("Normale");
    case ThermalState::fair:
        return localized("Correcte");
    case ThermalState::serious:
        return localized("Élevée");
    case ThermalState::critical:
        return localized("Critique");
    case ThermalState::unknown:
        break;
    }
    return localized("Inconnue");
}

HardwareCheck thermalCheck(ThermalState state, const BuiltInComponents &components)
{
    HardwareCheck check{.title = localized("Température"),
                        .symbol = u"thermometer.medium"_s,
                        .status = CheckStatus::info,
                        .summary = localized("État thermique inconnu."),
                        .measurement = labelForThermal(state),
                        .live = LiveMetric::processorTemperature,
                        .section = AppSection::hardware};
    switch (state) {
    case ThermalState::nominal:
        check.status = CheckStatus::ok;
        check.summary = components.smc.present
                            ? localized("Température de fonctionnement normale, contrôleur SMC actif.")
                            : localized("Température de fonctionnement normale.");
        break;
    case ThermalState::fair:
        check.status = CheckStatus::ok;
        check.summary = localized("Légère montée en température, sans conséquence.");
        break;
    case ThermalState::serious:
        check.status = CheckStatus::attention;
        check.summary = localized("Température élevée : macOS réduit les performances.");
        break;
    case ThermalState::critical:
        check.status = CheckStatus::alerte;
        check.summary = localized("Température critique : la machine se protège en bridant fortement le processeur.");
        break;
    case ThermalState::unknown:
        break;
    }
    return check;
}

HardwareCheck systemCheck(const std::optional<HardwareInfo> &hardware, const std::optional<QDateTime> &bootTime,
                          const QDateTime &now)
{
    HardwareCheck check{.title = localized("Système"),
                        .symbol = u"gearshape"_s,
                        .status = CheckStatus::info,
                        .summary = localized("Informations système indisponibles."),
                        .section = AppSection::hardware};
    if (!hardware)
        return check;
    const qint64 days = daysSinceBoot(bootTime, now);
    check.measurement = hardware->uptime;
    if (days < restartAdvisedAfterDays) {
        check.status = CheckStatus::ok;
        check.summary = localized("%1 — allumé depuis %2.").arg(hardware->osVersion, hardware->uptime);
    } else {
        check.status = CheckStatus::attention;
        check.summary = localized("%1 — allumé depuis %2 jours, un redémarrage est conseillé.")
                            .arg(hardware->osVersion, QString::number(days));
    }
    return check;
}

} // namespace DiagnosticsService
