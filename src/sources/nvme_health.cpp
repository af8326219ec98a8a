#include "sources/nvme_health.h"

#include "core/texts.h"

#include <QtEndian>

namespace {

// A 128-bit little-endian counter, as a double: exact up to 2^53, close beyond.
double counter(const QByteArray &log, int offset)
{
    const auto *bytes = reinterpret_cast<const uchar *>(log.constData()) + offset;
    const double low = double(qFromLittleEndian<quint64>(bytes));
    const double high = double(qFromLittleEndian<quint64>(bytes + 8));
    return high * 18446744073709551616.0 + low;
}

int byteAt(const QByteArray &log, int offset)
{
    return static_cast<uchar>(log.at(offset));
}

} // namespace

namespace NvmeHealth {

DriveWear decode(const DriveHealthLog &entry)
{
    DriveWear wear;
    if (!entry.failure.isEmpty()) {
        wear.unreadable = entry.failure;
        return wear;
    }
    if (entry.log.size() != logSize) {
        wear.unreadable = localized("journal de santé de %1 octets au lieu de 512").arg(entry.log.size());
        return wear;
    }
    const QByteArray &log = entry.log;
    wear.criticalWarning = byteAt(log, 0);
    wear.availableSpare = byteAt(log, 3);
    wear.availableSpareThreshold = byteAt(log, 4);
    wear.percentageUsed = byteAt(log, 5);
    wear.bytesRead = counter(log, 32) * bytesPerDataUnit;
    wear.bytesWritten = counter(log, 48) * bytesPerDataUnit;
    wear.powerCycles = counter(log, 112);
    wear.powerOnHours = counter(log, 128);
    wear.unsafeShutdowns = counter(log, 144);
    wear.mediaErrors = counter(log, 160);
    return wear;
}

} // namespace NvmeHealth
