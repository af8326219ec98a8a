#pragma once

#include "sources/property_values.h"

#include <CoreFoundation/CoreFoundation.h>

#include <QVariant>

#include <optional>

// Converts Core Foundation property-list values (what the I/O registry and the power-source
// list hand out) into property values with their kinds kept apart:
//   CFBoolean → bool            CFNumber → qint64, quint64 or double
//   CFString  → QString         CFData   → QByteArray
//   CFDate    → QDateTime (UTC) CFArray  → QVariantList
//   CFDictionary → QVariantMap, string keys only (an entry under any other key is skipped)
// Anything else (a null, a set, an unknown type) gives an invalid QVariant, read as absent.
// The value is only read: its ownership does not change.
namespace CFConversion {

// Containers nested deeper than this are not followed: such a value reads as absent.
inline constexpr int maximumDepth = 128;

QVariant toVariant(CFTypeRef value);

// The dictionary converted, or nothing when `value` is not a CFDictionary.
std::optional<PropertyDictionary> toDictionary(CFTypeRef value);

} // namespace CFConversion
