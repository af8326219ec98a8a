#include "collectors/inventory_service.h"

#include "collectors/inventory_support.h"
#include "core/texts.h"
#include "sources/property_access.h"
#include "sources/vocabulary.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;
using Property::text;

namespace {

// A whole decimal number with an optional sign and nothing else around it.
std::optional<qint64> decimalInteger(const QString &piece)
{
    const qsizetype start = piece.startsWith(u'+') || piece.startsWith(u'-') ? 1 : 0;
    if (piece.size() == start)
        return std::nullopt;
    for (qsizetype i = start; i < piece.size(); ++i) {
        if (piece.at(i) < u'0' || piece.at(i) > u'9')
            return std::nullopt;
    }
    bool ok = false;
    const qint64 value = piece.toLongLong(&ok, 10);
    return ok ? std::optional<qint64>(value) : std::nullopt;
}

// "thunderbolt_bus_0" reads "Bus Thunderbolt 1": the profiler counts buses from 0, the
// screen from 1. Names of devices, which do not begin with the word, stand as they are.
QString thunderboltName(const QString &name)
{
    const QString lowered = name.toLower();
    if (!lowered.startsWith(u"thunderbolt"_s))
        return name;
    const QString label = lowered.contains(u"usb4"_s) ? localized("Thunderbolt / USB4") : u"Thunderbolt"_s;
    const QStringList pieces = name.split(u'_', Qt::SkipEmptyParts);
    const std::optional<qint64> index = pieces.isEmpty() ? std::nullopt : decimalInteger(pieces.last());
    if (index && *index < std::numeric_limits<qint64>::max())
        return localized("Bus %1 %2").arg(label, QString::number(*index + 1));
    return localized("Bus %1").arg(label);
}

// Ports are listed in plain code-point order of their keys, so receptacle_10 comes
// before receptacle_2.
bool codePointLess(const QString &a, const QString &b)
{
    const QList<uint> left = a.toUcs4();
    const QList<uint> right = b.toUcs4();
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end());
}

// A device's own link to the Mac, listed among its receptacles on USB4 Macs: not a port.
const QString upstreamLinkKey = u"receptacle_upstream_ambiguous_tag"_s;

QStringList receptacleKeys(const PropertyDictionary &dict)
{
    QStringList keys;
    for (auto it = dict.constBegin(); it != dict.constEnd(); ++it) {
        if (it.key().startsWith(u"receptacle_"_s) && it.key().endsWith(u"_tag"_s) && it.key() != upstreamLinkKey)
            keys.append(it.key());
    }
    std::stable_sort(keys.begin(), keys.end(), codePointLess);
    return keys;
}

std::optional<QString> portSpeed(const PropertyDictionary &port)
{
    std::optional<QString> speed = text(port, u"current_speed_key"_s);
    if (speed)
        speed->replace(u"Up to"_s, localized("Jusqu'à"));
    return speed;
}

// The port's number: its own identifier, else the one in its key ("receptacle_2_tag").
QString portNumber(const PropertyDictionary &port, const QString &key)
{
    if (const std::optional<QString> id = text(port, u"receptacle_id_key"_s))
        return *id;
    return key.section(u'_', 1, 1);
}

DeviceNode portNode(const PropertyDictionary &port, const QString &key)
{
    const std::optional<QString> speed = portSpeed(port);
    const std::optional<QString> state = text(port, u"receptacle_status_key"_s);
    const bool isFree = !state || state->contains(u"no_devices"_s);
    DeviceNode node;
    node.name = localized("Port %1").arg(portNumber(port, key));
    node.subtitle = speed;
    node.symbol = u"bolt.horizontal.circle"_s;
    node.status = isFree ? DeviceStatus::disconnected : DeviceStatus::connected;
    appendRow(node.rows, localized("Débit maximal"), speed);
    appendRow(node.rows, localized("État"), Vocabulary::humanize(state));
    return node;
}

QList<DeviceNode> receptacles(const PropertyDictionary &dict)
{
    QList<DeviceNode> ports;
    for (const QString &key : receptacleKeys(dict)) {
        if (const std::optional<PropertyDictionary> port = PropertyValues::dictionary(dict, key))
            ports.append(portNode(*port, key));
    }
    return ports;
}

// The vendor is a plain text on buses, and sometimes a dictionary with its own name.
std::optional<QString> vendorName(const PropertyDictionary &dict)
{
    if (const std::optional<PropertyDictionary> vendor = PropertyValues::dictionary(dict, u"vendor_name_key"_s)) {
        if (std::optional<QString> name = Property::string(*vendor, u"_name"_s))
            return name;
    }
    return text(dict, u"vendor_name_key"_s);
}

QList<InfoRow> thunderboltRows(const PropertyDictionary &dict)
{
    QList<InfoRow> rows;
    appendRow(rows, localized("Fabricant"), vendorName(dict));
    appendRow(rows, localized("Appareil"), text(dict, u"device_name_key"_s));
    appendRow(rows, localized("Identifiant du contrôleur"), text(dict, u"switch_uid_key"_s));
    appendRow(rows, localized("Firmware"), text(dict, u"device_firmware_version_key"_s));
    appendRow(rows, localized("Numéro de série"), text(dict, u"device_serial_number_key"_s));
    return rows;
}

DeviceNode thunderboltNode(const PropertyDictionary &dict)
{
    DeviceNode node;
    for (const PropertyDictionary &child : InventorySupport::dictionariesAt(dict, u"_items"_s))
        node.children.append(thunderboltNode(child));
    node.children.append(receptacles(dict));
    node.name = thunderboltName(InventorySupport::nameOrUnnamed(dict));
    node.subtitle = text(dict, u"device_name_key"_s);
    node.symbol = u"bolt.horizontal"_s;
    node.status = DeviceStatus::neutral;
    node.rows = thunderboltRows(dict);
    if (const std::optional<PropertyDictionary> link = PropertyValues::dictionary(dict, upstreamLinkKey))
        appendRow(node.rows, localized("Débit du lien"), portSpeed(*link));
    return node;
}

QList<DeviceNode> busNodes(const QList<PropertyDictionary> &items)
{
    QList<DeviceNode> nodes;
    for (const PropertyDictionary &dict : items)
        nodes.append(thunderboltNode(dict));
    return nodes;
}

} // namespace

namespace InventoryService {

Result<QList<DeviceNode>> thunderbolt(const Platform &platform)
{
    return InventorySupport::collect<DeviceNode>(platform, u"SPThunderboltDataType"_s, busNodes);
}

} // namespace InventoryService
