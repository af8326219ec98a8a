#include "collectors/inventory_service.h"

#include "collectors/inventory_support.h"
#include "core/texts.h"
#include "sources/property_access.h"

#include <utility>

using namespace Qt::StringLiterals;
using Property::text;

namespace {

QString symbolForNetwork(const std::optional<QString> &type, const std::optional<QString> &hardware)
{
    const QString words = (type.value_or(QString()) + u' ' + hardware.value_or(QString())).toLower();
    static const std::pair<QString, QString> symbols[] = {
        {u"wi-fi"_s, u"wifi"_s},
        {u"airport"_s, u"wifi"_s},
        {u"ethernet"_s, u"cable.connector"_s},
        {u"bluetooth"_s, u"dot.radiowaves.right"_s},
        {u"modem"_s, u"antenna.radiowaves.left.and.right"_s},
        {u"ppp"_s, u"antenna.radiowaves.left.and.right"_s},
    };
    for (const auto &[word, symbol] : symbols) {
        if (words.contains(word))
            return symbol;
    }
    return u"network"_s;
}

// The profiler still calls the Wi-Fi interface by its old name.
std::optional<QString> withWifiName(std::optional<QString> value)
{
    if (value)
        value->replace(u"AirPort"_s, localized("Wi-Fi"));
    return value;
}

// A sub-dictionary of the service; any other kind of value counts as empty.
PropertyDictionary section(const PropertyDictionary &service, const QString &key)
{
    return PropertyValues::dictionary(service, key).value_or(PropertyDictionary());
}

QList<InfoRow> networkRows(const PropertyDictionary &service, const std::optional<QString> &ipv4Address)
{
    const PropertyDictionary ipv4 = section(service, u"IPv4"_s);
    QList<InfoRow> rows;
    appendRow(rows, localized("Type"), withWifiName(text(service, u"type"_s)));
    appendRow(rows, localized("Interface"), text(service, u"interface"_s));
    appendRow(rows, localized("Matériel"), withWifiName(text(service, u"hardware"_s)));
    appendRow(rows, localized("Adresse IPv4"), ipv4Address);
    appendRow(rows, localized("Masque de sous-réseau"), text(ipv4, u"SubnetMasks"_s));
    appendRow(rows, localized("Routeur"), text(ipv4, u"Router"_s));
    appendRow(rows, localized("Configuration"), text(ipv4, u"ConfigMethod"_s));
    appendRow(rows, localized("Adresse IPv6"), text(section(service, u"IPv6"_s), u"Addresses"_s));
    appendRow(rows, localized("Adresse MAC"), text(section(service, u"Ethernet"_s), u"MAC Address"_s));
    appendRow(rows, localized("Serveurs DNS"), text(section(service, u"DNS"_s), u"ServerAddresses"_s));
    appendRow(rows, localized("Ordre du service"), text(service, u"spnetwork_service_order"_s));
    return rows;
}

DeviceNode serviceNode(const PropertyDictionary &service)
{
    const std::optional<QString> ipv4Address = text(section(service, u"IPv4"_s), u"Addresses"_s);
    const std::optional<QString> type = text(service, u"type"_s);
    DeviceNode node;
    node.name = InventorySupport::nameOrUnnamed(service);
    // The subtitle keeps the type as reported, unlike the "Type" row.
    node.subtitle = ipv4Address ? ipv4Address : type;
    node.symbol = symbolForNetwork(type, text(service, u"hardware"_s));
    node.status = ipv4Address ? DeviceStatus::connected : DeviceStatus::disconnected;
    node.rows = networkRows(service, ipv4Address);
    return node;
}

QList<DeviceNode> serviceNodes(const QList<PropertyDictionary> &items)
{
    QList<DeviceNode> nodes;
    for (const PropertyDictionary &service : items)
        nodes.append(serviceNode(service));
    return nodes;
}

} // namespace

namespace InventoryService {

Result<QList<DeviceNode>> network(const Platform &platform)
{
    return InventorySupport::collect<DeviceNode>(platform, u"SPNetworkDataType"_s, serviceNodes);
}

} // namespace InventoryService
