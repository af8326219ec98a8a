#pragma once

#include "core/drive_wear.h"

#include <QString>
#include <QUuid>

#include <optional>

// One storage volume as the storage report describes it.
struct StorageVolume
{
    QUuid id = QUuid::createUuid();
    QString name;
    double totalBytes = 0;
    double freeBytes = 0;
    std::optional<QString> fileSystem;
    std::optional<QString> mountPoint;
    bool isInternal = false;
    std::optional<QString> smartStatus;
    std::optional<bool> smartIsVerified;
    std::optional<QString> deviceName;
    // The health log of the drive the volume lives on, for internal NVMe drives.
    std::optional<DriveWear> wear;

    // Free space larger than the capacity counts as nothing used, never as negative.
    double usedBytes() const { return totalBytes - freeBytes > 0 ? totalBytes - freeBytes : 0; }
    // Not clamped above 1.
    double usedFraction() const { return totalBytes > 0 ? usedBytes() / totalBytes : 0; }

    friend bool operator==(const StorageVolume &, const StorageVolume &) = default;
};
