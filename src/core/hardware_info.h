#pragma once

#include "core/built_in_components.h"
#include "core/info_row.h"
#include "core/ownership_facts.h"

#include <QList>
#include <QString>

#include <optional>

// The machine identity; every text is a final display text.
struct HardwareInfo
{
    QString modelName;
    QString modelIdentifier;
    std::optional<QString> commercialName;
    std::optional<int> modelYear;
    QString chip;
    QString cores;
    QString coresShort;
    QString memory;
    QString osVersion;
    QString uptime;
    QString architecture;
    std::optional<QString> serialNumber;
    QList<InfoRow> rows;
    BuiltInComponents components;
    OwnershipFacts ownership;

    friend bool operator==(const HardwareInfo &, const HardwareInfo &) = default;
};
