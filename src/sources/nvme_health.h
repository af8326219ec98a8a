#pragma once

#include "core/drive_wear.h"
#include "sources/platform.h"

// Reads the NVMe "SMART / Health Information" log page (512 bytes, little-endian counters).
namespace NvmeHealth {

constexpr int logSize = 512;
// One data unit of the read and written counters is a thousand 512-byte blocks.
constexpr double bytesPerDataUnit = 512000.0;

// The wear a drive's log gives; a log that is not 512 bytes long, or a failure, reads as
// unreadable with its reason.
DriveWear decode(const DriveHealthLog &entry);

} // namespace NvmeHealth
