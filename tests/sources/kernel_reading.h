#pragma once

#include "sources/sysctl.h"

#include <QStringList>

// A kernel that holds the raw bytes of one value; any other name cannot be read.
class OneValueKernel final : public KernelSource
{
public:
    OneValueKernel(QByteArray name, std::optional<QByteArray> bytes)
        : m_name(std::move(name)), m_bytes(std::move(bytes))
    {
    }
    std::optional<QByteArray> value(const QByteArray &name) const override
    {
        return name == m_name ? m_bytes : std::nullopt;
    }

private:
    QByteArray m_name;
    std::optional<QByteArray> m_bytes;
};

inline const QString nothingRead = QStringLiteral("(rien)");

// What the collectors read of one kernel value, in words, or nothingRead: the boot time,
// the swap as "total used available", "hw.*" values as integers, any other value as text.
inline QString kernelReading(const KernelSource &kernel, const QByteArray &name)
{
    if (name == "kern.boottime") {
        const std::optional<QDateTime> boot = Sysctl::bootTime(kernel);
        return boot ? boot->toString(Qt::ISODate) : nothingRead;
    }
    if (name == "vm.swapusage") {
        const std::optional<Sysctl::SwapUsage> swap = Sysctl::swapUsage(kernel);
        return swap ? QStringLiteral("%1 %2 %3").arg(swap->total).arg(swap->used).arg(swap->available) : nothingRead;
    }
    if (name.startsWith("hw.")) {
        const std::optional<qint64> number = Sysctl::integer(kernel, name);
        return number ? QString::number(*number) : nothingRead;
    }
    return Sysctl::string(kernel, name).value_or(nothingRead);
}
