#pragma once

#include "sources/platform.h"

#include <QDateTime>
#include <QString>

#include <optional>

// Kernel values read by name, decoded from their raw bytes.
namespace Sysctl {

struct SwapUsage
{
    quint64 total = 0;
    quint64 used = 0;
    quint64 available = 0;

    friend bool operator==(const SwapUsage &, const SwapUsage &) = default;
};

// The bytes up to the first zero byte, as UTF-8 (invalid sequences replaced).
std::optional<QString> string(const KernelSource &kernel, const QByteArray &name);
// A 4-byte value widened with its sign, or an 8-byte value; any other size is nothing.
std::optional<qint64> integer(const KernelSource &kernel, const QByteArray &name);
// "kern.boottime" at whole seconds (the microseconds are ignored).
std::optional<QDateTime> bootTime(const KernelSource &kernel);
// "vm.swapusage": total, available, used, page size, encryption flag.
std::optional<SwapUsage> swapUsage(const KernelSource &kernel);

} // namespace Sysctl
