#pragma once

#include "sources/platform.h"

// The power sources of this Mac (internal battery, UPS, …) as the power-source list
// describes them, in the list's order.
class MacPowerSources final : public PowerSourceList
{
public:
    QList<PropertyDictionary> descriptions() const override;
};
