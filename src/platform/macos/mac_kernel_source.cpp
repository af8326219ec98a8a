#include "platform/macos/mac_kernel_source.h"

#include <sys/types.h>
#include <sys/sysctl.h>

std::optional<QByteArray> MacKernelSource::value(const QByteArray &name) const
{
    // First the size of the value, then the value itself into a zero-filled buffer.
    size_t size = 0;
    if (sysctlbyname(name.constData(), nullptr, &size, nullptr, 0) != 0 || size < 1)
        return std::nullopt;
    QByteArray bytes(qsizetype(size), '\0');
    if (sysctlbyname(name.constData(), bytes.data(), &size, nullptr, 0) != 0 || size < 1)
        return std::nullopt;
    // The second call reports how many bytes it wrote, which may be fewer than announced.
    bytes.truncate(qsizetype(size));
    return bytes;
}
