#include "collectors/inventory_support.h"

#include "core/texts.h"
#include "sources/property_access.h"

#include <QtGlobal>

#include <cmath>

using namespace Qt::StringLiterals;

namespace InventorySupport {

QString nameOrUnnamed(const PropertyDictionary &dict)
{
    return Property::text(dict, u"_name"_s).value_or(localized("Sans nom"));
}

std::optional<QList<PropertyDictionary>> arrayOfDictionaries(const QVariant &value)
{
    if (PropertyValues::kindOf(value) != PropertyValues::Kind::array)
        return std::nullopt;
    QList<PropertyDictionary> out;
    for (const QVariant &element : value.toList()) {
        if (PropertyValues::kindOf(element) != PropertyValues::Kind::dictionary)
            return std::nullopt;
        out.append(element.toMap());
    }
    return out;
}

QList<PropertyDictionary> dictionariesAt(const PropertyDictionary &dict, const QString &key)
{
    return arrayOfDictionaries(dict.value(key)).value_or(QList<PropertyDictionary>());
}

std::optional<QString> withSuffix(const std::optional<QString> &value, const QString &suffix)
{
    if (!value)
        return std::nullopt;
    return *value + suffix;
}

std::optional<qint64> wholeNumber(double value)
{
    const double truncated = std::trunc(value);
    if (!std::isfinite(truncated) || truncated >= 9223372036854775808.0 || truncated < -9223372036854775808.0)
        return std::nullopt;
    return qint64(truncated);
}

} // namespace InventorySupport
