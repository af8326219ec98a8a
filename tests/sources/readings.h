#pragma once

#include "sources/sysctl.h"
#include "sources/system_profiler.h"

#include <QStringList>

// A kernel that holds the raw bytes of one value; any other name cannot be read.
struct OneValueKernel final : KernelSource
{
    QByteArray name;
    std::optional<QByteArray> bytes;
    OneValueKernel(QByteArray n, std::optional<QByteArray> b) : name(std::move(n)), bytes(std::move(b)) { }
    std::optional<QByteArray> value(const QByteArray &asked) const override
    {
        return asked == name ? bytes : std::nullopt;
    }
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

// A profiler answer in words: the failure text, or the item names in brackets ("[hub, clé]").
inline QString answerText(const std::variant<QList<PropertyDictionary>, SystemProfiler::Failure> &answer)
{
    if (const auto *failure = std::get_if<SystemProfiler::Failure>(&answer))
        return failure->description();
    QStringList names;
    for (const PropertyDictionary &item : std::get<QList<PropertyDictionary>>(answer))
        names << item.value(QStringLiteral("_name")).toString();
    return u'[' + names.join(QStringLiteral(", ")) + u']';
}
