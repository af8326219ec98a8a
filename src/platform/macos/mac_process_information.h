#pragma once

#include "sources/platform.h"

// What the operating system tells this process about the machine: its host name, the
// system's version text and the current thermal state.
class MacProcessInformation final : public ProcessInformation
{
public:
    QString hostName() const override;
    QString operatingSystemVersion() const override;
    ThermalState thermalState() const override;
};
