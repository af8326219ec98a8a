#include "platform/capture/property_list_reader.h"

#include <QDateTime>
#include <QVariantList>
#include <QVariantMap>

#include <plist/plist.h>

#include <cstdlib>
#include <limits>
#include <memory>

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

// Property-list dates count seconds from 1 January 2001, UTC.
constexpr qint64 secondsFrom1970To2001 = 978307200;

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
        case PLIST_DATE: {
            int32_t seconds = 0;
            int32_t microseconds = 0;
            plist_get_date_val(node, &seconds, &microseconds);
            return QDateTime::fromSecsSinceEpoch(secondsFrom1970To2001 + seconds, Qt::UTC);
        }
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

} // namespace

Outcome read(const QByteArray &bytes)
{
    if (bytes.size() > std::numeric_limits<int32_t>::max() / 2)
        return {{}, u"fichier trop volumineux"_s};
    if (!looksLikePropertyList(bytes))
        return {{}, u"ce n’est pas une liste de propriétés"_s};
    plist_t raw = nullptr;
    plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &raw);
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
