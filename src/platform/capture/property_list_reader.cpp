#include "platform/capture/property_list_reader.h"

#include "sources/data_files.h"

#include <QDateTime>
#include <QList>
#include <QVariantList>
#include <QVariantMap>
#include <QXmlStreamReader>

#include <plist/plist.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <memory>
#include <variant>

using namespace Qt::StringLiterals;

namespace PropertyListReader {

namespace {

struct PlistDeleter
{
    void operator()(plist_t node) const { plist_free(node); }
};
using PlistHolder = std::unique_ptr<void, PlistDeleter>;

struct MallocDeleter
{
    void operator()(void *memory) const { std::free(memory); }
};
template <typename T>
using MallocHolder = std::unique_ptr<T, MallocDeleter>;

class Converter
{
public:
    QString error;

    QVariant convert(plist_t node, int depth)
    {
        if (depth > maximumDepth) {
            error = u"imbrication trop profonde"_s;
            return {};
        }
        switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN: {
            uint8_t value = 0;
            plist_get_bool_val(node, &value);
            return bool(value);
        }
        case PLIST_UINT:
            return integer(node);
        case PLIST_REAL: {
            double value = 0;
            plist_get_real_val(node, &value);
            return value;
        }
        case PLIST_STRING: {
            char *raw = nullptr;
            plist_get_string_val(node, &raw);
            MallocHolder<char> text(raw);
            return raw ? QString::fromUtf8(raw) : QString();
        }
        case PLIST_DATA: {
            char *raw = nullptr;
            uint64_t length = 0;
            plist_get_data_val(node, &raw, &length);
            MallocHolder<char> bytes(raw);
            if (!raw || length > uint64_t(std::numeric_limits<int>::max()))
                return QByteArray();
            return QByteArray(raw, qsizetype(length));
        }
        case PLIST_DATE:
            return date(node);
        case PLIST_ARRAY:
            return array(node, depth);
        case PLIST_DICT:
            return dictionary(node, depth);
        default:
            return {};
        }
    }

private:
    static QVariant integer(plist_t node)
    {
        uint64_t raw = 0;
        plist_get_uint_val(node, &raw);
        if (raw <= uint64_t(std::numeric_limits<qint64>::max()))
            return qint64(raw);
        if (isNegative(node))
            return qint64(raw);
        return quint64(raw);
    }

    // libplist's date getter gives 32-bit seconds from 2001, which wrap outside the years
    // 1933 to 2069; its XML writer keeps the whole date, so the date is read back from there.
    static QVariant date(plist_t node)
    {
        char *xml = nullptr;
        uint32_t length = 0;
        plist_to_xml(node, &xml, &length);
        MallocHolder<char> text(xml);
        const QByteArray written(xml ? xml : "", xml ? qsizetype(length) : 0);
        const qsizetype start = written.indexOf("<date>") + 6;
        const qsizetype end = written.indexOf("</date>");
        if (start < 6 || end < start)
            return {};
        const QDateTime moment = QDateTime::fromString(QString::fromLatin1(written.mid(start, end - start)), Qt::ISODate);
        return moment.isValid() ? QVariant(moment.toUTC()) : QVariant();
    }

    // A value with its top bit set is either a negative integer or a large unsigned one.
    static bool isNegative(plist_t node)
    {
#ifdef QUILLON_PLIST_HAS_SIGNED_INTEGERS
        return plist_int_val_is_negative(node);
#else
        // Older libplist keeps no sign flag: its XML writer prints the value as it was read.
        char *xml = nullptr;
        uint32_t length = 0;
        plist_to_xml(node, &xml, &length);
        MallocHolder<char> text(xml);
        return xml && QByteArray(xml, qsizetype(length)).contains("<integer>-");
#endif
    }

    QVariant array(plist_t node, int depth)
    {
        QVariantList list;
        const uint32_t size = plist_array_get_size(node);
        list.reserve(qsizetype(size));
        for (uint32_t i = 0; i < size && error.isEmpty(); ++i)
            list.append(convert(plist_array_get_item(node, i), depth + 1));
        return list;
    }

    QVariant dictionary(plist_t node, int depth)
    {
        QVariantMap map;
        plist_dict_iter iterator = nullptr;
        plist_dict_new_iter(node, &iterator);
        MallocHolder<void> iteratorHolder(iterator);
        while (iterator && error.isEmpty()) {
            char *rawKey = nullptr;
            plist_t value = nullptr;
            plist_dict_next_item(node, iterator, &rawKey, &value);
            MallocHolder<char> key(rawKey);
            if (!rawKey || !value)
                break;
            map.insert(QString::fromUtf8(rawKey), convert(value, depth + 1));
        }
        return map;
    }
};

bool looksLikePropertyList(const QByteArray &bytes)
{
    return bytes.startsWith("bplist00") || bytes.contains("<plist") || bytes.trimmed().startsWith("<?xml");
}

// libplist follows nested containers by recursion and reads malformed scalars as
// arbitrary values (an overflowing integer as 2^64 - 1, bad base64 as nothing). Both forms
// are therefore checked first, without recursion: nesting is bounded and every scalar
// must be well formed.

// Binary form: a header, the objects, an offset table and a 32-byte trailer.
class BinaryCheck
{
public:
    explicit BinaryCheck(const QByteArray &bytes) : m_bytes(bytes) {}

    QString problem()
    {
        if (!readTrailer())
            return u"liste de propriétés binaire tronquée"_s;
        if (m_objectCount > maximumObjects)
            return u"trop d’objets"_s;
        m_heights.fill(unvisited, qsizetype(m_objectCount));
        m_sizes.fill(0, qsizetype(m_objectCount));
        return walk(m_top);
    }

private:
    static constexpr quint8 unvisited = 0;
    static constexpr quint8 inProgress = 255;
    static constexpr quint64 maximumObjects = 4'000'000;

    struct Frame
    {
        quint64 object;
        QList<quint64> children;
        qsizetype next = 0;
        int tallest = 0;
        quint64 unfolded = 1; // the nodes this object becomes once every reference is copied
    };

    quint64 size() const { return quint64(m_bytes.size()); }

    quint64 unsignedAt(quint64 offset, int width) const
    {
        quint64 value = 0;
        for (int i = 0; i < width; ++i)
            value = (value << 8) | quint8(m_bytes[qsizetype(offset) + i]);
        return value;
    }

    bool readTrailer()
    {
        if (size() < 8 + 32)
            return false;
        const quint64 trailer = size() - 32;
        m_offsetSize = quint8(m_bytes[qsizetype(trailer) + 6]);
        m_referenceSize = quint8(m_bytes[qsizetype(trailer) + 7]);
        m_objectCount = unsignedAt(trailer + 8, 8);
        m_top = unsignedAt(trailer + 16, 8);
        m_tableOffset = unsignedAt(trailer + 24, 8);
        return m_offsetSize >= 1 && m_offsetSize <= 8 && m_referenceSize >= 1 && m_referenceSize <= 8
            && m_objectCount >= 1 && m_top < m_objectCount && m_tableOffset >= 8 && m_tableOffset <= trailer
            && m_objectCount <= (trailer - m_tableOffset) / m_offsetSize;
    }

    // The objects a container refers to, or a problem; nothing for a scalar.
    std::variant<QList<quint64>, QString> children(quint64 object) const
    {
        const quint64 offset = unsignedAt(m_tableOffset + object * m_offsetSize, m_offsetSize);
        if (offset < 8 || offset >= m_tableOffset)
            return u"objet hors du fichier"_s;
        const quint8 marker = quint8(m_bytes[qsizetype(offset)]);
        const int type = marker >> 4;
        if (type == 0x1) {
            const int width = 1 << (marker & 0xF);
            if ((marker & 0xF) > 4 || width > qint64(m_tableOffset - offset - 1))
                return u"entier illisible"_s;
            // Sixteen bytes hold an unsigned value: anything above 64 bits is refused.
            if (width == 16 && unsignedAt(offset + 1, 8) != 0)
                return u"entier de plus de 64 bits"_s;
            return QList<quint64>();
        }
        if (type != 0xA && type != 0xC && type != 0xD)
            return QList<quint64>();
        quint64 count = marker & 0xF;
        quint64 position = offset + 1;
        if (count == 0xF) {
            const quint8 countMarker = position < m_tableOffset ? quint8(m_bytes[qsizetype(position)]) : 0;
            const int width = 1 << (countMarker & 0xF);
            if ((countMarker >> 4) != 0x1 || (countMarker & 0xF) > 3 || position + 1 + width > m_tableOffset)
                return u"taille de conteneur illisible"_s;
            count = unsignedAt(position + 1, width);
            position += 1 + quint64(width);
        }
        const quint64 references = type == 0xD ? 2 * count : count;
        if (count > m_tableOffset || references > (m_tableOffset - position) / m_referenceSize)
            return u"conteneur hors du fichier"_s;
        QList<quint64> list;
        list.reserve(qsizetype(references));
        for (quint64 i = 0; i < references; ++i) {
            const quint64 reference = unsignedAt(position + i * m_referenceSize, m_referenceSize);
            if (reference >= m_objectCount)
                return u"référence hors du fichier"_s;
            list.append(reference);
        }
        return list;
    }

    // Walks the objects below `root` depth first with an explicit stack, each object once;
    // its height (1 for a scalar or an empty container) and unfolded size are kept for later
    // references. The root is at depth 0, and nothing may lie deeper than the bound. An
    // object referred to many times is copied each time, so the unfolded tree is bounded too.
    QString walk(quint64 root)
    {
        const quint64 maximumUnfolded = std::max<quint64>(1'000'000, 2 * m_objectCount);
        QList<Frame> stack;
        const auto enter = [&](quint64 object) -> QString {
            auto listed = children(object);
            if (auto *problem = std::get_if<QString>(&listed))
                return *problem;
            m_heights[qsizetype(object)] = inProgress;
            stack.append(Frame{object, std::get<QList<quint64>>(std::move(listed))});
            return {};
        };
        if (const QString problem = enter(root); !problem.isEmpty())
            return problem;
        while (!stack.isEmpty()) {
            Frame &frame = stack.last();
            if (frame.unfolded > maximumUnfolded)
                return u"objets partagés trop de fois"_s;
            if (frame.next == frame.children.size()) {
                const int finished = frame.tallest + 1;
                const quint64 unfolded = frame.unfolded;
                m_heights[qsizetype(frame.object)] = quint8(finished);
                m_sizes[qsizetype(frame.object)] = quint32(unfolded);
                stack.removeLast();
                if (!stack.isEmpty()) {
                    stack.last().tallest = std::max(stack.last().tallest, finished);
                    stack.last().unfolded += unfolded;
                }
                continue;
            }
            const quint64 child = frame.children[frame.next++];
            const quint8 known = m_heights[qsizetype(child)];
            if (known == inProgress)
                return u"référence circulaire"_s;
            if (known != unvisited) {
                // Already walked from elsewhere: its height decides whether it fits here too.
                if (stack.size() + known > maximumDepth + 1)
                    return u"imbrication trop profonde"_s;
                frame.tallest = std::max(frame.tallest, int(known));
                frame.unfolded += m_sizes[qsizetype(child)];
                continue;
            }
            if (stack.size() > maximumDepth)
                return u"imbrication trop profonde"_s;
            if (const QString problem = enter(child); !problem.isEmpty())
                return problem;
        }
        return {};
    }

    const QByteArray &m_bytes;
    int m_offsetSize = 0;
    int m_referenceSize = 0;
    quint64 m_objectCount = 0;
    quint64 m_top = 0;
    quint64 m_tableOffset = 0;
    QList<quint8> m_heights;
    QList<quint32> m_sizes;
};

bool isXmlInteger(QStringView text)
{
    text = text.trimmed();
    const bool negative = text.startsWith(u'-');
    const QStringView digits = negative || text.startsWith(u'+') ? text.mid(1) : text;
    if (digits.isEmpty() || !std::all_of(digits.begin(), digits.end(), [](QChar c) { return c >= u'0' && c <= u'9'; }))
        return false;
    bool inRange = false;
    if (negative)
        (void)text.toLongLong(&inRange);
    else
        (void)digits.toULongLong(&inRange);
    return inRange;
}

bool isXmlReal(QStringView text)
{
    QByteArray latin = text.trimmed().toLatin1();
    if (latin.startsWith('+'))
        latin.remove(0, 1);
    double value = 0;
    const auto result = std::from_chars(latin.constData(), latin.constData() + latin.size(), value);
    return !latin.isEmpty() && result.ec == std::errc() && result.ptr == latin.constData() + latin.size();
}

bool isXmlData(QStringView text)
{
    QByteArray base64 = text.toLatin1();
    base64.removeIf([](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
    return QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors).decodingStatus
        == QByteArray::Base64DecodingStatus::Ok;
}

// XML form: well formed, nested no deeper than the bound, scalars readable.
QString xmlProblem(const QByteArray &bytes)
{
    QXmlStreamReader xml(bytes);
    int depth = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::EndElement) {
            --depth;
            continue;
        }
        if (!xml.isStartElement())
            continue;
        // <plist> holds the root value, which is at depth 0.
        if (++depth > maximumDepth + 2)
            return u"imbrication trop profonde"_s;
        const QString name = xml.name().toString(); // the view would not outlive the reads below
        bool (*valid)(QStringView) = name == u"integer"_s ? isXmlInteger
            : name == u"real"_s                           ? isXmlReal
            : name == u"data"_s                           ? isXmlData
                                                          : nullptr;
        if (name == u"date"_s) {
            if (!QDateTime::fromString(xml.readElementText().trimmed(), Qt::ISODate).isValid())
                return u"date illisible"_s;
            --depth;
        } else if (valid) {
            if (!valid(xml.readElementText()))
                return u"valeur <%1> illisible"_s.arg(name);
            --depth;
        }
    }
    return xml.hasError() ? DataFiles::xmlError(xml) : QString();
}

} // namespace

Outcome read(const QByteArray &bytes)
{
    if (bytes.size() > std::numeric_limits<int32_t>::max() / 2)
        return {{}, u"fichier trop volumineux"_s};
    if (!looksLikePropertyList(bytes))
        return {{}, u"ce n’est pas une liste de propriétés"_s};
    const bool isBinary = bytes.startsWith("bplist00");
    // Invalid UTF-8 in an XML text becomes the replacement character, as everywhere else.
    const QByteArray input = isBinary || QByteArrayView(bytes).isValidUtf8() ? bytes : QString::fromUtf8(bytes).toUtf8();
    if (const QString problem = isBinary ? BinaryCheck(input).problem() : xmlProblem(input); !problem.isEmpty())
        return {{}, problem};
    plist_t raw = nullptr;
    plist_from_memory(input.constData(), uint32_t(input.size()), &raw);
    PlistHolder root(raw);
    if (!root)
        return {{}, u"liste de propriétés illisible"_s};
    Converter converter;
    QVariant value = converter.convert(root.get(), 0);
    if (!converter.error.isEmpty())
        return {{}, converter.error};
    return {value, {}};
}

} // namespace PropertyListReader
