#pragma once

#include "core/info_row.h"

#include <QDate>
#include <QList>
#include <QString>

#include <optional>

// The internal battery; a machine without a battery has none at all.
struct BatteryInfo
{
    int chargePercent = 0;
    bool isCharging = false;
    bool isFullyCharged = false;
    bool isPluggedIn = false;
    std::optional<qint64> cycleCount;
    std::optional<qint64> designCycleCount;
    std::optional<qint64> healthPercent;
    std::optional<QString> condition;
    bool isConditionHealthy = true;
    std::optional<double> temperatureCelsius;
    std::optional<QString> timeRemaining;
    std::optional<QDate> manufactureDate;
    QList<InfoRow> rows;

    friend bool operator==(const BatteryInfo &, const BatteryInfo &) = default;
};

// One live battery reading.
struct BatterySnapshot
{
    int chargePercent = 0;
    bool isCharging = false;
    bool isPluggedIn = false;
    bool isFullyCharged = false;
    std::optional<QString> timeRemaining;
    std::optional<double> temperatureCelsius;

    QString stateLabel() const;

    friend bool operator==(const BatterySnapshot &, const BatterySnapshot &) = default;
};

// The power state in words. Full and plugged in is tested first on purpose: a full
// battery that still reports charging reads as full.
QString chargingLabel(bool isCharging, bool isPluggedIn, bool isFullyCharged);
