#pragma once

#include "sources/property_values.h"

#include <optional>

// Typed reads of a property dictionary. Each gives nothing for a missing key or a value
// of a kind it does not read; none of them fails.
namespace Property {

// A text as it stands (an empty text is nothing), a number in its plain text form, or the
// elements of a non-empty array joined with ", ".
std::optional<QString> text(const PropertyDictionary &dict, const QString &key);

// A number (booleans give 1 and 0), or a text that is wholly a floating-point literal.
std::optional<double> number(const PropertyDictionary &dict, const QString &key);

// A number, truncated toward zero; a text never reads as an integer.
std::optional<qint64> integer(const PropertyDictionary &dict, const QString &key);

// "Oui" or "Non" for a boolean or a number (non-zero is true); texts give nothing.
std::optional<QString> yesNo(const PropertyDictionary &dict, const QString &key);

// A value that must be a text: any other kind is nothing. Unlike `text`, an empty text is kept.
std::optional<QString> string(const PropertyDictionary &dict, const QString &key);
// A value that must be a boolean.
std::optional<bool> boolean(const PropertyDictionary &dict, const QString &key);
// A value that must be a data blob.
std::optional<QByteArray> data(const PropertyDictionary &dict, const QString &key);

// The plain text form of a number value ("12", "12.5", "1e+21"; booleans "1" and "0").
QString numberText(const QVariant &number);
// The integer of a number value, truncated toward zero; nothing outside the signed 64-bit range.
std::optional<qint64> integerValue(const QVariant &value);

} // namespace Property
