#include "records/history_entry.h"

#include "core/byte_format.h"
#include "core/formatting.h"
#include "core/texts.h"

#include <QHashFunctions>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QRegularExpression>
#include <QLocale>
#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

size_t qHash(const HistoryEntry &entry, size_t seed)
{
    // Equal entries share their identifier, so it alone spreads them well enough.
    return qHash(entry.id, seed);
}

namespace HistoryFile {

namespace {

// 2001-01-01 00:00:00 UTC in milliseconds since 1970.
constexpr qint64 referenceDateMSecs = 978307200000;
// Dates further than this from 2001 are not dates a journal could hold (about 3000 years).
constexpr double largestReferenceSeconds = 1e11;
// Integers beyond this are not exact in a JSON number read as a double.
constexpr double largestExactInteger = 9007199254740992.0;

// The journal is written member by member, in a fixed key order, as Qt's compact JSON writer
// would write it: a save of 500 entries through one QJsonDocument per value took tens of
// milliseconds on the main thread.

// A JSON string: quotes, backslashes and control characters escaped, the rest in UTF-8.
void appendString(QByteArray &out, const QString &text)
{
    out += '"';
    for (const char c : text.toUtf8()) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\b': out += "\\b"; break;
        case '\f': out += "\\f"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (static_cast<unsigned char>(c) < 0x20)
                out += "\\u00" + QByteArray::number(static_cast<unsigned char>(c), 16).rightJustified(2, '0');
            else
                out += c;
        }
    }
    out += '"';
}

// A number: whole values up to 2^53 as integers, others in their shortest exact form.
void appendNumber(QByteArray &out, double value)
{
    if (!std::isfinite(value))
        out += "null";
    else if (std::trunc(value) == value && std::fabs(value) <= largestExactInteger)
        out += QByteArray::number(static_cast<qint64>(value));
    else
        out += QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
}

void appendKey(QByteArray &out, const char *key)
{
    if (out.size() > 1)
        out += ',';
    out += '"';
    out += key;
    out += "\":";
}

void appendMember(QByteArray &out, const char *key, const QString &value)
{
    appendKey(out, key);
    appendString(out, value);
}

void appendMember(QByteArray &out, const char *key, double value)
{
    appendKey(out, key);
    appendNumber(out, value);
}

void appendMember(QByteArray &out, const char *key, qint64 value)
{
    appendKey(out, key);
    out += QByteArray::number(value);
}

QByteArray encodeEntry(const HistoryEntry &entry)
{
    QByteArray out = "{";
    appendMember(out, "id", entry.id.toString(QUuid::WithoutBraces).toUpper());
    appendMember(out, "date", secondsSinceReferenceDate(entry.date));
    appendMember(out, "modelName", entry.modelName);
    appendMember(out, "modelIdentifier", entry.modelIdentifier);
    if (entry.serialNumber)
        appendMember(out, "serialNumber", *entry.serialNumber);
    appendMember(out, "chip", entry.chip);
    appendMember(out, "memory", entry.memory);
    if (entry.storageBytes)
        appendMember(out, "storageBytes", *entry.storageBytes);
    if (entry.batteryHealth)
        appendMember(out, "batteryHealth", *entry.batteryHealth);
    if (entry.batteryCycles)
        appendMember(out, "batteryCycles", *entry.batteryCycles);
    appendMember(out, "headline", entry.headline);
    appendMember(out, "warningCount", entry.warningCount);
    appendMember(out, "faultCount", entry.faultCount);
    return out + '}';
}

// Reading one entry: every required key must be there with the right kind, an optional
// key may be missing or null. The first wrong key makes the whole entry unreadable.
class EntryReader
{
public:
    explicit EntryReader(const QJsonObject &object) : m_object(object) { }

    bool failed() const { return m_failed; }

    QString text(const QString &key)
    {
        const QJsonValue value = m_object.value(key);
        if (!value.isString())
            m_failed = true;
        return value.toString();
    }

    std::optional<QString> optionalText(const QString &key)
    {
        const QJsonValue value = m_object.value(key);
        if (isAbsent(value))
            return std::nullopt;
        return text(key);
    }

    double number(const QString &key)
    {
        const QJsonValue value = m_object.value(key);
        if (!value.isDouble() || !std::isfinite(value.toDouble()))
            m_failed = true;
        return value.toDouble();
    }

    std::optional<double> optionalNumber(const QString &key)
    {
        if (isAbsent(m_object.value(key)))
            return std::nullopt;
        return number(key);
    }

    // A byte count as a number that a 64-bit integer holds, as byte texts are written from.
    std::optional<double> optionalByteCount(const QString &key)
    {
        const std::optional<double> count = optionalNumber(key);
        if (count && (*count >= 9223372036854775808.0 || *count < -9223372036854775808.0))
            m_failed = true;
        return count;
    }

    qint64 integer(const QString &key)
    {
        const QJsonValue value = m_object.value(key);
        if (value.isDouble() && value.toVariant().typeId() == QMetaType::LongLong)
            return value.toInteger();
        const double number = value.toDouble();
        if (!value.isDouble() || std::trunc(number) != number || std::fabs(number) > largestExactInteger) {
            m_failed = true;
            return 0;
        }
        return qint64(number);
    }

    std::optional<qint64> optionalInteger(const QString &key)
    {
        if (isAbsent(m_object.value(key)))
            return std::nullopt;
        return integer(key);
    }

    QUuid uuid(const QString &key)
    {
        const QUuid id = QUuid::fromString(text(key));
        if (id.isNull())
            m_failed = true;
        return id;
    }

    QDateTime date(const QString &key)
    {
        const double seconds = number(key);
        if (std::fabs(seconds) > largestReferenceSeconds) {
            m_failed = true;
            return {};
        }
        return dateFromReferenceSeconds(seconds);
    }

private:
    static bool isAbsent(const QJsonValue &value) { return value.isUndefined() || value.isNull(); }

    const QJsonObject &m_object;
    bool m_failed = false;
};

std::optional<HistoryEntry> decodeEntry(const QJsonValue &value)
{
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject object = value.toObject();
    EntryReader read(object);
    HistoryEntry entry;
    entry.id = read.uuid(u"id"_s);
    entry.date = read.date(u"date"_s);
    entry.modelName = read.text(u"modelName"_s);
    entry.modelIdentifier = read.text(u"modelIdentifier"_s);
    entry.serialNumber = read.optionalText(u"serialNumber"_s);
    entry.chip = read.text(u"chip"_s);
    entry.memory = read.text(u"memory"_s);
    entry.storageBytes = read.optionalByteCount(u"storageBytes"_s);
    entry.batteryHealth = read.optionalInteger(u"batteryHealth"_s);
    entry.batteryCycles = read.optionalInteger(u"batteryCycles"_s);
    entry.headline = read.text(u"headline"_s);
    entry.warningCount = read.integer(u"warningCount"_s);
    entry.faultCount = read.integer(u"faultCount"_s);
    if (read.failed())
        return std::nullopt;
    return entry;
}

} // namespace

double secondsSinceReferenceDate(const QDateTime &date)
{
    // Subtract in whole milliseconds first, so that the one division gives the double
    // nearest to the decimal value and the file shows "784973107.123", not a long tail.
    return double(date.toMSecsSinceEpoch() - referenceDateMSecs) / 1000.0;
}

QDateTime dateFromReferenceSeconds(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000.0) + referenceDateMSecs, Qt::UTC);
}

QByteArray encode(const QList<HistoryEntry> &entries)
{
    QByteArray out = "[";
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (i > 0)
            out += ',';
        out += encodeEntry(entries.at(i));
    }
    return out + ']';
}

std::optional<QList<HistoryEntry>> decode(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isArray())
        return std::nullopt;
    QList<HistoryEntry> entries;
    const QJsonArray array = document.array();
    entries.reserve(array.size());
    for (const QJsonValue &value : array) {
        std::optional<HistoryEntry> entry = decodeEntry(value);
        if (!entry)
            return std::nullopt;
        entries.append(std::move(*entry));
    }
    return entries;
}

Import importEntries(const QByteArray &bytes)
{
    Import found;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isArray())
        return found;
    found.readable = true;
    const QJsonArray array = document.array();
    for (qsizetype i = 0; i < array.size(); ++i) {
        std::optional<HistoryEntry> entry = decodeEntry(array.at(i));
        if (entry)
            found.entries.append(std::move(*entry));
        else
            found.rejected.append(i);
    }
    return found;
}

} // namespace HistoryFile

namespace HistoryCsv {

namespace {

QStringList headerCells()
{
    return {
        localized("Date"),
        localized("Modèle"),
        localized("Identifiant"),
        localized("Numéro de série"),
        localized("Puce"),
        localized("Mémoire"),
        localized("Stockage"),
        localized("Capacité maximale"),
        localized("Cycles"),
        localized("Verdict"),
        localized("À surveiller"),
        localized("Anomalies"),
        localized("Évolution"),
    };
}

QString optionalInteger(const std::optional<qint64> &value)
{
    return value ? QString::number(*value) : QString();
}

QStringList entryCells(const HistoryEntry &entry)
{
    return {
        Format::iso8601Utc(entry.date),
        entry.modelName,
        entry.modelIdentifier,
        entry.serialNumber.value_or(QString()),
        entry.chip,
        entry.memory,
        entry.storageBytes ? ByteFormat::string(*entry.storageBytes) : QString(),
        optionalInteger(entry.batteryHealth),
        optionalInteger(entry.batteryCycles),
        entry.headline,
        QString::number(entry.warningCount),
        QString::number(entry.faultCount),
    };
}

QString row(const QStringList &cells)
{
    QStringList escaped;
    escaped.reserve(cells.size());
    for (const QString &cell : cells)
        escaped.append(escapedCell(cell));
    return escaped.join(u';') + u'\n';
}

} // namespace

namespace {

// A whole number or a decimal, with its sign: a spreadsheet reads it as a number, never as
// a formula.
bool isNumber(const QString &cell)
{
    static const QRegularExpression number(u"^[+-]?[0-9]+([.,][0-9]+)?$"_s);
    return number.match(cell).hasMatch();
}

} // namespace

QString escapedCell(const QString &cell)
{
    QString safe = cell;
    // A cell that a spreadsheet would run as a formula starts with an apostrophe instead.
    static const QString formulaStarts = u"=+-@\t\r"_s;
    if (!safe.isEmpty() && formulaStarts.contains(safe.at(0)) && !isNumber(safe))
        safe.prepend(u'\'');
    if (!safe.contains(u';') && !safe.contains(u'"') && !safe.contains(u'\n') && !safe.contains(u'\r'))
        return safe;
    safe.replace(u"\""_s, u"\"\""_s);
    return u'"' + safe + u'"';
}

QString text(const QList<HistoryEntry> &entries, const std::function<QString(const HistoryEntry &)> &changes)
{
    QString out = row(headerCells());
    for (const HistoryEntry &entry : entries)
        out += row(entryCells(entry) << (changes ? changes(entry) : QString()));
    return out;
}

QByteArray exportBytes(const QList<HistoryEntry> &entries)
{
    return QByteArray("\xEF\xBB\xBF") + text(entries).toUtf8();
}

} // namespace HistoryCsv
