#pragma once

#include "sources/platform.h"

// Kernel values of this Mac read by name (sysctlbyname), as the raw bytes the kernel gives.
class MacKernelSource final : public KernelSource
{
public:
    std::optional<QByteArray> value(const QByteArray &name) const override;
};
