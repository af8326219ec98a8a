#include "ui/presentation/battery_presentation.h"

#include "core/texts.h"

using namespace Qt::StringLiterals;

namespace Presentation {

int chargePercent(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot)
{
    return snapshot ? snapshot->chargePercent : battery.chargePercent;
}

bool isPluggedIn(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot)
{
    return snapshot ? snapshot->isPluggedIn : battery.isPluggedIn;
}

QString batterySymbol(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot)
{
    if (snapshot ? snapshot->isCharging : battery.isCharging)
        return u"battery.100.bolt"_s;
    const int percent = chargePercent(battery, snapshot);
    if (percent > 94)
        return u"battery.100"_s;
    if (percent > 69)
        return u"battery.75"_s;
    if (percent > 39)
        return u"battery.50"_s;
    if (percent > 14)
        return u"battery.25"_s;
    return u"battery.0"_s;
}

std::optional<QString> remainingTime(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot)
{
    if (snapshot && snapshot->timeRemaining)
        return snapshot->timeRemaining;
    return battery.timeRemaining;
}

QString healthColourRole(std::optional<qint64> healthPercent, const QString &whenUnknown)
{
    if (!healthPercent)
        return whenUnknown;
    if (*healthPercent < 70)
        return u"red"_s;
    if (*healthPercent < 80)
        return u"orange"_s;
    return u"green"_s;
}

QString powerColourRole(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot)
{
    if (battery.healthPercent && *battery.healthPercent <= 79)
        return u"orange"_s;
    if (!battery.isConditionHealthy)
        return u"orange"_s;
    if (chargePercent(battery, snapshot) <= 19 && !isPluggedIn(battery, snapshot))
        return u"red"_s;
    return u"green"_s;
}

double healthFraction(const BatteryInfo &battery)
{
    return battery.healthPercent ? qBound(0.0, double(*battery.healthPercent) / 100, 1.0) : 0;
}

QString healthText(const BatteryInfo &battery)
{
    return battery.healthPercent ? QString::number(*battery.healthPercent) : missingValueMark();
}

QString conditionText(const BatteryInfo &battery)
{
    return battery.condition.value_or(missingValueMark());
}

QString cycleCountText(const BatteryInfo &battery)
{
    return battery.cycleCount ? QString::number(*battery.cycleCount) : missingValueMark();
}

QString chargeText(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot)
{
    return QString::number(chargePercent(battery, snapshot)) + u" %"_s;
}

QString powerStateText(const std::optional<BatterySnapshot> &snapshot)
{
    return snapshot ? snapshot->stateLabel() : missingValueMark();
}

QString batterySubtitle(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot)
{
    QStringList parts;
    if (battery.cycleCount)
        parts.append(QString::number(*battery.cycleCount) + localized(" cycles"));
    parts.append(localized("charge ") + chargeText(battery, snapshot));
    parts.append(powerStateText(snapshot));
    if (std::optional<QString> remaining = remainingTime(battery, snapshot))
        parts.append(*remaining);
    return parts.join(u" · "_s);
}

bool showsReplacementWarning(const BatteryInfo &battery)
{
    return (battery.healthPercent && *battery.healthPercent < 80) || !battery.isConditionHealthy;
}

QList<InfoRow> liveBatteryRows(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot)
{
    QList<InfoRow> rows = battery.rows;
    if (!snapshot)
        return rows;
    for (InfoRow &row : rows) {
        if (row.key == InfoRowKey::chargeLevel)
            row.value = chargeText(battery, snapshot);
        else if (row.key == InfoRowKey::powerState)
            row.value = snapshot->stateLabel();
    }
    return rows;
}

} // namespace Presentation
