#include "sources/property_access.h"

#include "core/formatting.h"
#include "core/texts.h"

#include <QJsonDocument>

#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;
using PropertyValues::Kind;

namespace Property {

namespace {

const QVariant *find(const PropertyDictionary &dict, const QString &key)
{
    const auto it = dict.constFind(key);
    return it == dict.constEnd() ? nullptr : &*it;
}

// How an array element reads when the array is not made only of texts.
QString describe(const QVariant &value)
{
    switch (PropertyValues::kindOf(value)) {
    case Kind::text:
        return value.toString();
    case Kind::boolean:
    case Kind::integer:
    case Kind::real:
        return numberText(value);
    case Kind::data:
        return u'<' + QString::fromLatin1(value.toByteArray().toHex()) + u'>';
    case Kind::date:
        return value.toDateTime().toUTC().toString(Qt::ISODate);
    case Kind::array:
    case Kind::dictionary:
        return QString::fromUtf8(QJsonDocument::fromVariant(value).toJson(QJsonDocument::Compact));
    case Kind::absent:
        break;
    }
    return u"null"_s;
}

std::optional<double> parseDouble(const QString &text)
{
    if (text.isEmpty() || text.size() > 400)
        return std::nullopt;
    QByteArray latin = text.toLatin1();
    // One leading plus sign is allowed, but not in front of another sign ("+-1").
    if (latin.startsWith('+')) {
        latin.remove(0, 1);
        if (latin.startsWith('-') || latin.startsWith('+'))
            return std::nullopt;
    }
    if (latin.isEmpty() || latin.front() == ' ' || (latin.front() == '-' && latin.size() == 1))
        return std::nullopt;
    double value = 0;
    const auto result = std::from_chars(latin.constData(), latin.constData() + latin.size(), value);
    if (result.ec != std::errc() || result.ptr != latin.constData() + latin.size())
        return std::nullopt;
    // A text holding characters outside Latin-1 cannot be a number.
    if (QString::fromLatin1(text.toLatin1()) != text)
        return std::nullopt;
    return value;
}

} // namespace

QString numberText(const QVariant &number)
{
    switch (number.typeId()) {
    case QMetaType::Bool:
        return number.toBool() ? u"1"_s : u"0"_s;
    case QMetaType::ULongLong:
    case QMetaType::ULong:
    case QMetaType::UInt:
        return QString::number(number.toULongLong());
    case QMetaType::Double:
    case QMetaType::Float: {
        const double value = number.toDouble();
        if (std::isfinite(value) && value == std::trunc(value) && std::fabs(value) < 1e15)
            return QString::number(qint64(value));
        return Format::shortestNumber(value);
    }
    default:
        return QString::number(number.toLongLong());
    }
}

std::optional<qint64> integerValue(const QVariant &value)
{
    switch (PropertyValues::kindOf(value)) {
    case Kind::boolean:
        return value.toBool() ? 1 : 0;
    case Kind::integer:
        if (value.typeId() == QMetaType::ULongLong || value.typeId() == QMetaType::ULong) {
            const quint64 unsignedValue = value.toULongLong();
            if (unsignedValue > quint64(std::numeric_limits<qint64>::max()))
                return std::nullopt;
            return qint64(unsignedValue);
        }
        return value.toLongLong();
    case Kind::real: {
        const double truncated = std::trunc(value.toDouble());
        if (!std::isfinite(truncated) || truncated >= 9223372036854775808.0 || truncated < -9223372036854775808.0)
            return std::nullopt;
        return qint64(truncated);
    }
    default:
        return std::nullopt;
    }
}

std::optional<QString> text(const PropertyDictionary &dict, const QString &key)
{
    const QVariant *value = find(dict, key);
    if (!value)
        return std::nullopt;
    switch (PropertyValues::kindOf(*value)) {
    case Kind::text: {
        QString string = value->toString();
        return string.isEmpty() ? std::nullopt : std::optional<QString>(string);
    }
    case Kind::boolean:
    case Kind::integer:
    case Kind::real:
        return numberText(*value);
    case Kind::array: {
        const QVariantList list = value->toList();
        if (list.isEmpty())
            return std::nullopt;
        QStringList pieces;
        for (const QVariant &element : list)
            pieces.append(describe(element));
        return pieces.join(u", "_s);
    }
    default:
        return std::nullopt;
    }
}

std::optional<double> number(const PropertyDictionary &dict, const QString &key)
{
    const QVariant *value = find(dict, key);
    if (!value)
        return std::nullopt;
    switch (PropertyValues::kindOf(*value)) {
    case Kind::boolean:
        return value->toBool() ? 1.0 : 0.0;
    case Kind::integer:
        if (value->typeId() == QMetaType::ULongLong || value->typeId() == QMetaType::ULong)
            return double(value->toULongLong());
        return double(value->toLongLong());
    case Kind::real:
        return value->toDouble();
    case Kind::text:
        return parseDouble(value->toString());
    default:
        return std::nullopt;
    }
}

std::optional<qint64> integer(const PropertyDictionary &dict, const QString &key)
{
    const QVariant *value = find(dict, key);
    return value ? integerValue(*value) : std::nullopt;
}

std::optional<QString> yesNo(const PropertyDictionary &dict, const QString &key)
{
    const QVariant *value = find(dict, key);
    if (!value || !PropertyValues::isNumber(*value))
        return std::nullopt;
    bool truth = false;
    switch (PropertyValues::kindOf(*value)) {
    case Kind::boolean:
        truth = value->toBool();
        break;
    case Kind::real:
        truth = value->toDouble() != 0.0;
        break;
    default:
        truth = value->toULongLong() != 0;
        break;
    }
    return truth ? localized("Oui") : localized("Non");
}

std::optional<QString> string(const PropertyDictionary &dict, const QString &key)
{
    const QVariant *value = find(dict, key);
    if (!value || value->typeId() != QMetaType::QString)
        return std::nullopt;
    return value->toString();
}

std::optional<bool> boolean(const PropertyDictionary &dict, const QString &key)
{
    const QVariant *value = find(dict, key);
    if (!value || value->typeId() != QMetaType::Bool)
        return std::nullopt;
    return value->toBool();
}

std::optional<QByteArray> data(const PropertyDictionary &dict, const QString &key)
{
    const QVariant *value = find(dict, key);
    if (!value || value->typeId() != QMetaType::QByteArray)
        return std::nullopt;
    return value->toByteArray();
}

} // namespace Property
