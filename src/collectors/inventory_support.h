#pragma once

#include "sources/platform.h"
#include "sources/property_values.h"
#include "sources/system_profiler.h"

#include <QList>
#include <QString>
#include <QVariant>

#include <optional>
#include <variant>

// Conventions shared by every operation of InventoryService.
namespace InventorySupport {

// "_name" as text, or the localised "Sans nom" when the report gives none.
QString nameOrUnnamed(const PropertyDictionary &dict);

// The elements of an array value when every one of them is a dictionary; nothing for any
// other value, and nothing for an array holding anything but dictionaries.
std::optional<QList<PropertyDictionary>> arrayOfDictionaries(const QVariant &value);
// The same for the value at `key`, with an empty list standing for nothing.
QList<PropertyDictionary> dictionariesAt(const PropertyDictionary &dict, const QString &key);

// The value followed by a unit ("500" and " mA" give "500 mA"); nothing stays nothing.
std::optional<QString> withSuffix(const std::optional<QString> &value, const QString &suffix);

// A count or size reported as a floating-point number, truncated toward zero; nothing when
// it is not finite or lies outside the signed 64-bit range. The profiler writes these as
// whole numbers of bytes, channels or hertz, so such a value cannot be its own: the answer
// holding it is unreadable (a capture is untrusted input and must never stop the program).
std::optional<qint64> wholeNumber(double value);

// Runs the profiler for one data type and maps its items with `build`; a profiler failure
// comes back unchanged.
template <typename Record, typename Build>
Result<QList<Record>> collect(const Platform &platform, const QString &dataType, Build build)
{
    auto answer = SystemProfiler::items(*platform.profiler, dataType);
    if (const auto *failure = std::get_if<SystemProfiler::Failure>(&answer))
        return *failure;
    return build(std::get<QList<PropertyDictionary>>(answer));
}

} // namespace InventorySupport
