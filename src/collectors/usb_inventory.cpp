#include "collectors/inventory_service.h"

#include "collectors/inventory_support.h"
#include "core/texts.h"
#include "sources/property_access.h"
#include "sources/vocabulary.h"

using namespace Qt::StringLiterals;
using InventorySupport::withSuffix;
using Property::text;

namespace {

// The speed token as the generation of USB and its signalling rate.
std::optional<QString> usbSpeed(const std::optional<QString> &token)
{
    if (!token)
        return std::nullopt;
    if (*token == u"low_speed"_s)
        return localized("USB 1.0 — 1,5 Mb/s");
    if (*token == u"full_speed"_s)
        return localized("USB 1.1 — 12 Mb/s");
    if (*token == u"high_speed"_s)
        return localized("USB 2.0 — 480 Mb/s");
    if (*token == u"super_speed"_s)
        return localized("USB 3.0 — 5 Gb/s");
    if (*token == u"super_speed_plus"_s)
        return localized("USB 3.1+ — 10 Gb/s");
    return Vocabulary::humanize(token);
}

QList<InfoRow> usbRows(const PropertyDictionary &dict)
{
    const QString milliamperes = u" mA"_s;
    QList<InfoRow> rows;
    appendRow(rows, localized("Fabricant"), text(dict, u"manufacturer"_s));
    appendRow(rows, localized("Vitesse"), usbSpeed(text(dict, u"device_speed"_s)));
    appendRow(rows, localized("Identifiant produit"), text(dict, u"product_id"_s));
    appendRow(rows, localized("Identifiant fabricant"), text(dict, u"vendor_id"_s));
    appendRow(rows, localized("Numéro de série"), text(dict, u"serial_num"_s));
    appendRow(rows, localized("Version"), text(dict, u"bcd_device"_s));
    appendRow(rows, localized("Alimentation disponible"), withSuffix(text(dict, u"bus_power"_s), milliamperes));
    appendRow(rows, localized("Alimentation utilisée"), withSuffix(text(dict, u"bus_power_used"_s), milliamperes));
    appendRow(rows, localized("Contrôleur"), text(dict, u"host_controller"_s));
    appendRow(rows, localized("Emplacement"), text(dict, u"location_id"_s));
    return rows;
}

DeviceNode usbNode(const PropertyDictionary &dict)
{
    DeviceNode node;
    for (const PropertyDictionary &child : InventorySupport::dictionariesAt(dict, u"_items"_s))
        node.children.append(usbNode(child));
    // A bus names its controller; a hub is known by what hangs on it.
    const bool isHub = text(dict, u"host_controller"_s).has_value() || !node.children.isEmpty();
    node.name = InventorySupport::nameOrUnnamed(dict);
    node.subtitle = text(dict, u"manufacturer"_s);
    node.symbol = isHub ? u"cable.connector.horizontal"_s : u"cable.connector"_s;
    node.status = isHub ? DeviceStatus::neutral : DeviceStatus::connected;
    node.rows = usbRows(dict);
    return node;
}

QList<DeviceNode> busNodes(const QList<PropertyDictionary> &items)
{
    QList<DeviceNode> nodes;
    for (const PropertyDictionary &dict : items)
        nodes.append(usbNode(dict));
    return nodes;
}

} // namespace

namespace InventoryService {

Result<QList<DeviceNode>> usb(const Platform &platform)
{
    return InventorySupport::collect<DeviceNode>(platform, u"SPUSBDataType"_s, busNodes);
}

} // namespace InventoryService
