#include "sources/sysctl.h"

#include <QtEndian>

#include <cstring>

namespace Sysctl {

namespace {

// Kernel structures are read in the byte order of the machine that wrote them; macOS
// runs little-endian on both Apple silicon and Intel.
template <typename T>
T readAt(const QByteArray &bytes, qsizetype offset)
{
    return qFromLittleEndian<T>(bytes.constData() + offset);
}

} // namespace

std::optional<QString> string(const KernelSource &kernel, const QByteArray &name)
{
    const std::optional<QByteArray> bytes = kernel.value(name);
    if (!bytes || bytes->isEmpty())
        return std::nullopt;
    const qsizetype end = bytes->indexOf('\0');
    return QString::fromUtf8(end < 0 ? *bytes : bytes->left(end));
}

std::optional<qint64> integer(const KernelSource &kernel, const QByteArray &name)
{
    const std::optional<QByteArray> bytes = kernel.value(name);
    if (!bytes)
        return std::nullopt;
    if (bytes->size() == 4)
        return qint64(readAt<qint32>(*bytes, 0));
    if (bytes->size() == 8)
        return readAt<qint64>(*bytes, 0);
    return std::nullopt;
}

std::optional<QDateTime> bootTime(const KernelSource &kernel)
{
    const std::optional<QByteArray> bytes = kernel.value("kern.boottime");
    if (!bytes || bytes->size() != 16)
        return std::nullopt;
    return QDateTime::fromSecsSinceEpoch(readAt<qint64>(*bytes, 0), Qt::UTC);
}

std::optional<SwapUsage> swapUsage(const KernelSource &kernel)
{
    const std::optional<QByteArray> bytes = kernel.value("vm.swapusage");
    if (!bytes || bytes->size() != 32)
        return std::nullopt;
    SwapUsage usage;
    usage.total = readAt<quint64>(*bytes, 0);
    usage.available = readAt<quint64>(*bytes, 8);
    usage.used = readAt<quint64>(*bytes, 16);
    return usage;
}

} // namespace Sysctl
