#include "platform/macos/cf_to_qvariant.h"

#include "platform/macos/apple_handles.h"

#include <QDateTime>
#include <QVariantList>

#include <cmath>
#include <vector>

namespace CFConversion {

namespace {

QVariant convert(CFTypeRef value, int depth);

// Integers come back as signed 64-bit values: the I/O registry turns every kernel number
// into a signed CFNumber of 32 or 64 bits, so a counter the driver keeps unsigned (a
// battery's current, say) arrives already reinterpreted, -500 mA as -500, and stays signed
// here. Only Core Foundation itself keeps integers above the signed range (a property list
// holding 18446744073709551615): read as 64 bits they give their low bits, which look
// negative while the number is positive. The number's approximate value as a double tells
// the two apart, and such a number becomes a quint64.
QVariant fromNumber(CFNumberRef number)
{
    if (CFNumberIsFloatType(number)) {
        double real = 0;
        if (!CFNumberGetValue(number, kCFNumberFloat64Type, &real))
            return {};
        return real;
    }
    SInt64 integer = 0;
    if (!CFNumberGetValue(number, kCFNumberSInt64Type, &integer))
        return {}; // an integer that does not fit 64 bits
    if (integer >= 0)
        return qint64(integer);
    double approximate = 0;
    CFNumberGetValue(number, kCFNumberFloat64Type, &approximate); // inexact by design
    if (approximate > 0)
        return quint64(integer);
    return qint64(integer);
}

QVariant fromDate(CFDateRef date)
{
    const double seconds = CFDateGetAbsoluteTime(date) + kCFAbsoluteTimeIntervalSince1970;
    if (!std::isfinite(seconds) || std::fabs(seconds) > 9.0e15)
        return {}; // beyond the range of a count of milliseconds
    // Through local time and back: the one form that Qt 6.4 has and later versions keep.
    return QDateTime::fromMSecsSinceEpoch(qint64(std::llround(seconds * 1000))).toUTC();
}

QVariant fromArray(CFArrayRef array, int depth)
{
    const CFIndex count = CFArrayGetCount(array);
    QVariantList list;
    list.reserve(qsizetype(count));
    for (CFIndex index = 0; index < count; ++index)
        list.append(convert(CFArrayGetValueAtIndex(array, index), depth + 1)); // borrowed
    return list;
}

PropertyDictionary fromDictionary(CFDictionaryRef dictionary, int depth)
{
    PropertyDictionary map;
    const CFIndex count = CFDictionaryGetCount(dictionary);
    if (count <= 0)
        return map;
    std::vector<const void *> keys(static_cast<size_t>(count));
    std::vector<const void *> values(static_cast<size_t>(count));
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data()); // borrowed
    for (size_t index = 0; index < keys.size(); ++index) {
        const auto key = cfCast<CFStringRef>(keys[index], CFStringGetTypeID());
        if (!key)
            continue;
        map.insert(QString::fromCFString(key), convert(values[index], depth + 1));
    }
    return map;
}

QVariant convert(CFTypeRef value, int depth)
{
    if (!value || depth > maximumDepth)
        return {};
    const CFTypeID type = CFGetTypeID(value);
    // A boolean has a type of its own: true stays a boolean, never the integer 1.
    if (type == CFBooleanGetTypeID())
        return bool(CFBooleanGetValue(static_cast<CFBooleanRef>(value)));
    if (type == CFNumberGetTypeID())
        return fromNumber(static_cast<CFNumberRef>(value));
    if (type == CFStringGetTypeID())
        return QString::fromCFString(static_cast<CFStringRef>(value));
    if (type == CFDataGetTypeID())
        return QByteArray::fromCFData(static_cast<CFDataRef>(value));
    if (type == CFDateGetTypeID())
        return fromDate(static_cast<CFDateRef>(value));
    if (type == CFArrayGetTypeID())
        return fromArray(static_cast<CFArrayRef>(value), depth);
    if (type == CFDictionaryGetTypeID())
        return fromDictionary(static_cast<CFDictionaryRef>(value), depth);
    return {};
}

} // namespace

QVariant toVariant(CFTypeRef value)
{
    return convert(value, 0);
}

std::optional<PropertyDictionary> toDictionary(CFTypeRef value)
{
    const auto dictionary = cfCast<CFDictionaryRef>(value, CFDictionaryGetTypeID());
    if (!dictionary)
        return std::nullopt;
    return fromDictionary(dictionary, 0);
}

} // namespace CFConversion
