#pragma once

#include <QList>
#include <QString>
#include <QVariant>
#include <QVariantMap>

// A property dictionary: text keys (exact, case-sensitive) to property-list values, as an
// I/O-registry entry, a power-source description or a system profiler item gives it.
// Every value keeps its kind, in one of these Qt types:
//   boolean   bool          integer  qint64 (quint64 above the signed range)
//   real      double        text     QString
//   data      QByteArray    date     QDateTime (UTC)
//   array     QVariantList  dict     QVariantMap
// A JSON null is an invalid QVariant. Converters build only these types.
using PropertyDictionary = QVariantMap;

namespace PropertyValues {

enum class Kind { absent, boolean, integer, real, text, data, date, array, dictionary };

Kind kindOf(const QVariant &value);

bool isNumber(const QVariant &value); // integer, real or boolean

// Converts a JSON value with its kinds kept apart: an integral JSON number is an integer,
// any other number a real.
QVariant fromJson(const class QJsonValue &value);
PropertyDictionary dictionaryFromJson(const class QJsonObject &object);

// The sub-dictionary at `key`, when the value there is a dictionary.
std::optional<PropertyDictionary> dictionary(const PropertyDictionary &dict, const QString &key);
// The array at `key` when every element is a dictionary; elements of other kinds are skipped.
QList<PropertyDictionary> dictionaries(const PropertyDictionary &dict, const QString &key);

} // namespace PropertyValues
