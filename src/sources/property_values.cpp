#include "sources/property_values.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

namespace PropertyValues {

Kind kindOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return Kind::boolean;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return Kind::integer;
    case QMetaType::Double:
    case QMetaType::Float:
        return Kind::real;
    case QMetaType::QString:
        return Kind::text;
    case QMetaType::QByteArray:
        return Kind::data;
    case QMetaType::QDateTime:
        return Kind::date;
    case QMetaType::QVariantList:
        return Kind::array;
    case QMetaType::QVariantMap:
        return Kind::dictionary;
    default:
        return Kind::absent;
    }
}

bool isNumber(const QVariant &value)
{
    const Kind kind = kindOf(value);
    return kind == Kind::boolean || kind == Kind::integer || kind == Kind::real;
}

QVariant fromJson(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return value.toBool();
    case QJsonValue::Double: {
        // Qt keeps a JSON number written without fraction or exponent as an integer.
        const QVariant number = value.toVariant();
        if (number.typeId() == QMetaType::LongLong)
            return number.toLongLong();
        return value.toDouble();
    }
    case QJsonValue::String:
        return value.toString();
    case QJsonValue::Array: {
        QVariantList list;
        const QJsonArray array = value.toArray();
        list.reserve(array.size());
        for (const QJsonValue &element : array)
            list.append(fromJson(element));
        return list;
    }
    case QJsonValue::Object:
        return dictionaryFromJson(value.toObject());
    default:
        return {};
    }
}

PropertyDictionary dictionaryFromJson(const QJsonObject &object)
{
    PropertyDictionary dict;
    for (auto it = object.begin(); it != object.end(); ++it)
        dict.insert(it.key(), fromJson(it.value()));
    return dict;
}

std::optional<PropertyDictionary> dictionary(const PropertyDictionary &dict, const QString &key)
{
    const auto it = dict.constFind(key);
    if (it == dict.constEnd() || it->typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return it->toMap();
}

QList<PropertyDictionary> dictionaries(const PropertyDictionary &dict, const QString &key)
{
    QList<PropertyDictionary> out;
    const auto it = dict.constFind(key);
    if (it == dict.constEnd() || it->typeId() != QMetaType::QVariantList)
        return out;
    for (const QVariant &element : it->toList()) {
        if (element.typeId() == QMetaType::QVariantMap)
            out.append(element.toMap());
    }
    return out;
}

} // namespace PropertyValues
