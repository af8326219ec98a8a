#include "collectors/inventory_service.h"

#include "collectors/inventory_support.h"
#include "core/texts.h"
#include "sources/device_words.h"
#include "sources/property_access.h"
#include "sources/sysctl.h"
#include "sources/vocabulary.h"

#include <QHash>
#include <QRegularExpression>

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
    const std::optional<QString> controller = text(dict, u"host_controller"_s);
    const bool isHub = controller.has_value() || !node.children.isEmpty();
    node.name = controller ? DeviceWords::usbBusName(InventorySupport::nameOrUnnamed(dict), controller)
                           : InventorySupport::nameOrUnnamed(dict);
    node.subtitle = text(dict, u"manufacturer"_s);
    node.symbol = isHub ? u"cable.connector.horizontal"_s : u"cable.connector"_s;
    node.status = isHub ? DeviceStatus::neutral : DeviceStatus::connected;
    node.rows = usbRows(dict);
    return node;
}


// ---- The host data type of macOS 26 and later ------------------------------------------

// "480 Mb/s" reads like the older type's speed token; any other rate as macOS writes it.
std::optional<QString> linkSpeed(const std::optional<QString> &rate)
{
    if (!rate)
        return std::nullopt;
    static const QHash<QString, QString> tokens{{u"1.5 Mb/s"_s, u"low_speed"_s},
                                                {u"12 Mb/s"_s, u"full_speed"_s},
                                                {u"480 Mb/s"_s, u"high_speed"_s},
                                                {u"5 Gb/s"_s, u"super_speed"_s},
                                                {u"10 Gb/s"_s, u"super_speed_plus"_s}};
    const auto token = tokens.constFind(rate->trimmed());
    return token == tokens.constEnd() ? rate : usbSpeed(*token);
}

// "Not Provided" or a serial of zeros only means there is none.
std::optional<QString> serialNumber(const std::optional<QString> &serial)
{
    if (!serial || *serial == u"Not Provided"_s || serial->count(u'0') == serial->size())
        return std::nullopt;
    return serial;
}

// A binary-coded version, "0x0410", as the older type writes it: "4.10".
std::optional<QString> deviceVersion(const std::optional<QString> &bcd)
{
    if (!bcd || !bcd->startsWith(u"0x"_s) || bcd->size() < 5)
        return bcd;
    const QString digits = bcd->mid(2);
    QString major = digits.left(digits.size() - 2);
    while (major.size() > 1 && major.startsWith(u'0'))
        major.remove(0, 1);
    return major + u'.' + digits.right(2);
}

// The current of a power allocation, "2.5 W (500 mA)" → "500 mA".
std::optional<QString> milliamperes(const std::optional<QString> &allocation)
{
    if (!allocation)
        return std::nullopt;
    static const QRegularExpression current(u"\\(([0-9]+) mA\\)"_s);
    const QRegularExpressionMatch match = current.match(*allocation);
    return match.hasMatch() ? std::optional<QString>(match.captured(1) + u" mA"_s) : allocation;
}

QList<InfoRow> hostRows(const PropertyDictionary &dict)
{
    QList<InfoRow> rows;
    appendRow(rows, localized("Fabricant"), text(dict, u"USBDeviceKeyVendorName"_s));
    appendRow(rows, localized("Vitesse"), linkSpeed(text(dict, u"USBDeviceKeyLinkSpeed"_s)));
    appendRow(rows, localized("Identifiant produit"), text(dict, u"USBDeviceKeyProductID"_s));
    appendRow(rows, localized("Identifiant fabricant"), text(dict, u"USBDeviceKeyVendorID"_s));
    appendRow(rows, localized("Numéro de série"), serialNumber(text(dict, u"USBDeviceKeySerialNumber"_s)));
    appendRow(rows, localized("Version"), deviceVersion(text(dict, u"USBDeviceKeyProductVersion"_s)));
    appendRow(rows, localized("Alimentation utilisée"), milliamperes(text(dict, u"USBDeviceKeyPowerAllocation"_s)));
    appendRow(rows, localized("Contrôleur"), text(dict, u"Driver"_s));
    appendRow(rows, localized("Emplacement"), text(dict, u"USBKeyLocationID"_s));
    return rows;
}

DeviceNode hostNode(const PropertyDictionary &dict)
{
    DeviceNode node;
    for (const PropertyDictionary &child : InventorySupport::dictionariesAt(dict, u"_items"_s))
        node.children.append(hostNode(child));
    node.name = InventorySupport::nameOrUnnamed(dict);
    // A bus names its driver, with or without devices; a hub carries devices, or says so
    // in its name when nothing hangs on it.
    const std::optional<QString> driver = text(dict, u"Driver"_s);
    const bool isBus = driver.has_value();
    if (isBus)
        node.name = DeviceWords::usbBusName(node.name, driver);
    const bool isHub = isBus || !node.children.isEmpty() || node.name.contains(u"hub"_s, Qt::CaseInsensitive);
    node.subtitle = text(dict, u"USBDeviceKeyVendorName"_s);
    node.symbol = isHub ? u"cable.connector.horizontal"_s : u"cable.connector"_s;
    node.status = isHub ? DeviceStatus::neutral : DeviceStatus::connected;
    node.rows = hostRows(dict);
    return node;
}

// The buses of an answer, each with what hangs on it, built by `node`.
template <DeviceNode (*node)(const PropertyDictionary &)>
QList<DeviceNode> busNodes(const QList<PropertyDictionary> &items)
{
    QList<DeviceNode> nodes;
    for (const PropertyDictionary &dict : items)
        nodes.append(node(dict));
    return nodes;
}

// macOS 26 lists USB devices under its host data type only.
bool listsUsbUnderTheHostType(const Platform &platform)
{
    const std::optional<QString> version
        = platform.kernel ? Sysctl::string(*platform.kernel, "kern.osproductversion") : std::nullopt;
    bool ok = false;
    const int major = version ? version->section(u'.', 0, 0).toInt(&ok) : 0;
    return ok && major >= 26;
}

} // namespace

namespace InventoryService {

Result<QList<DeviceNode>> usb(const Platform &platform)
{
    const QString hostType = u"SPUSBHostDataType"_s;
    if (listsUsbUnderTheHostType(platform))
        return InventorySupport::collect<DeviceNode>(platform, hostType, busNodes<hostNode>);
    Result<QList<DeviceNode>> older = InventorySupport::collect<DeviceNode>(platform, u"SPUSBDataType"_s, busNodes<usbNode>);
    if (!older.ok() || !older.value().isEmpty())
        return older;
    // An empty answer where the host type lists devices: the system moved them there.
    Result<QList<DeviceNode>> host = InventorySupport::collect<DeviceNode>(platform, hostType, busNodes<hostNode>);
    return host.ok() && !host.value().isEmpty() ? host : older;
}

} // namespace InventoryService
