#pragma once

#include "sources/platform.h"

// Reads the NVMe health log of each internal drive through I/O Kit's NVMe SMART plug-in,
// which needs no administrator rights.
class MacDriveHealth final : public DriveHealthSource
{
public:
    QList<DriveHealthLog> logs() const override;
};
