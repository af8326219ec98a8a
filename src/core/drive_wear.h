#pragma once

#include <QString>

#include <optional>

// What an NVMe drive's own health log says of its wear, or why it could not be read.
struct DriveWear
{
    // Why the log could not be read; every figure below is then absent.
    std::optional<QString> unreadable;
    int percentageUsed = 0; // of the rated endurance; may exceed 100
    int availableSpare = 100;
    int availableSpareThreshold = 0;
    int criticalWarning = 0; // bit field; any bit set is a fault
    double bytesRead = 0;
    double bytesWritten = 0;
    double powerOnHours = 0;
    double powerCycles = 0;
    double unsafeShutdowns = 0;
    double mediaErrors = 0;

    friend bool operator==(const DriveWear &, const DriveWear &) = default;
};
