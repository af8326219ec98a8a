#include "core/battery_info.h"

#include "core/texts.h"

QString chargingLabel(bool isCharging, bool isPluggedIn, bool isFullyCharged)
{
    if (isFullyCharged && isPluggedIn)
        return localized("Chargée — sur secteur");
    if (isCharging)
        return localized("En charge");
    if (isPluggedIn)
        return localized("Sur secteur");
    return localized("Sur batterie");
}

QString BatterySnapshot::stateLabel() const
{
    return chargingLabel(isCharging, isPluggedIn, isFullyCharged);
}
