#include "collectors/inventory_service.h"

#include "collectors/inventory_support.h"
#include "core/texts.h"
#include "sources/device_words.h"
#include "sources/property_access.h"
#include "sources/vocabulary.h"

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using Property::text;

namespace {

DeviceNode controllerNode(const PropertyDictionary &controller)
{
    DeviceNode node;
    node.name = localized("Contrôleur Bluetooth");
    node.subtitle = text(controller, u"controller_chipset"_s);
    node.symbol = u"dot.radiowaves.left.and.right"_s;
    node.status = DeviceStatus::neutral;
    QList<InfoRow> &rows = node.rows;
    appendRow(rows, localized("Adresse"), text(controller, u"controller_address"_s));
    appendRow(rows, localized("Chipset"), text(controller, u"controller_chipset"_s));
    appendRow(rows, localized("État"), Vocabulary::humanize(text(controller, u"controller_state"_s)));
    appendRow(rows, localized("Détectable"), Vocabulary::humanize(text(controller, u"controller_discoverable"_s)));
    appendRow(rows, localized("Firmware"), text(controller, u"controller_firmwareVersion"_s));
    const std::optional<QString> vendorID = text(controller, u"controller_vendorID"_s);
    if (const std::optional<QString> vendor = DeviceWords::bluetoothVendor(vendorID))
        appendRow(rows, localized("Fabricant"), vendor);
    else
        appendRow(rows, localized("Identifiant fabricant"), vendorID);
    appendRow(rows, localized("Services pris en charge"),
              DeviceWords::bluetoothServices(text(controller, u"controller_supportedServices"_s)));
    return node;
}

// The headphone words come before "phone": a headphone type also contains that word.
QString symbolForBluetooth(const std::optional<QString> &minorType)
{
    if (!minorType)
        return u"dot.radiowaves.right"_s;
    const QString lowered = minorType->toLower();
    static const std::pair<QString, QString> symbols[] = {
        {u"headphone"_s, u"headphones"_s}, {u"headset"_s, u"headphones"_s}, {u"keyboard"_s, u"keyboard"_s},
        {u"mouse"_s, u"computermouse"_s},  {u"speaker"_s, u"hifispeaker"_s}, {u"phone"_s, u"iphone"_s},
    };
    for (const auto &[word, symbol] : symbols) {
        if (lowered.contains(word))
            return symbol;
    }
    return u"dot.radiowaves.right"_s;
}

// Earbuds report a level for each bud and for their case; other devices one level.
std::optional<QString> batteryText(const PropertyDictionary &device)
{
    QStringList parts;
    if (const std::optional<QString> main = text(device, u"device_batteryLevelMain"_s))
        parts.append(*main);
    if (const std::optional<QString> left = text(device, u"device_batteryLevelLeft"_s))
        parts.append(u"G "_s + *left);
    if (const std::optional<QString> right = text(device, u"device_batteryLevelRight"_s))
        parts.append(u"D "_s + *right);
    if (const std::optional<QString> boxed = text(device, u"device_batteryLevelCase"_s))
        parts.append(localized("Boîtier ") + *boxed);
    if (parts.isEmpty())
        return std::nullopt;
    return parts.join(u" · "_s);
}

std::optional<QString> deviceType(const PropertyDictionary &device)
{
    if (std::optional<QString> minor = text(device, u"device_minorType"_s))
        return minor;
    return text(device, u"device_majorType"_s);
}

DeviceNode deviceNode(const QString &name, const PropertyDictionary &device, bool connected)
{
    const std::optional<QString> type = DeviceWords::bluetoothType(deviceType(device));
    DeviceNode node;
    node.name = name;
    node.subtitle = type;
    node.symbol = symbolForBluetooth(text(device, u"device_minorType"_s));
    node.status = connected ? DeviceStatus::connected : DeviceStatus::disconnected;
    QList<InfoRow> &rows = node.rows;
    appendRow(rows, localized("Type"), type);
    appendRow(rows, localized("Adresse"), text(device, u"device_address"_s));
    appendRow(rows, localized("Batterie"), batteryText(device));
    appendRow(rows, localized("Firmware"), text(device, u"device_firmwareVersion"_s));
    appendRow(rows, localized("Identifiant fabricant"), text(device, u"device_vendorID"_s));
    appendRow(rows, localized("Identifiant produit"), text(device, u"device_productID"_s));
    appendRow(rows, localized("Puissance du signal"), InventorySupport::withSuffix(text(device, u"device_RSSI"_s), u" dBm"_s));
    return node;
}

// Each group is sorted by name on its own, so connected devices stay ahead of the others.
// The order is French whatever the process locale: under a bare shell's C locale the default
// collator would put "Écouteurs" after "magic Keyboard".
void sortByName(QList<DeviceNode> &nodes)
{
    QCollator collator{QLocale(QLocale::French, QLocale::France)};
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(nodes.begin(), nodes.end(), [&collator](const DeviceNode &a, const DeviceNode &b) {
        return collator.compare(a.name, b.name) < 0;
    });
}

// A group is an array of dictionaries, each mapping device names to their properties.
QList<DeviceNode> bluetoothDevices(const QVariant &value, bool connected)
{
    QList<DeviceNode> nodes;
    for (const PropertyDictionary &entry : InventorySupport::arrayOfDictionaries(value).value_or(QList<PropertyDictionary>())) {
        for (auto it = entry.constBegin(); it != entry.constEnd(); ++it) {
            if (PropertyValues::kindOf(it.value()) == PropertyValues::Kind::dictionary)
                nodes.append(deviceNode(it.key(), it.value().toMap(), connected));
        }
    }
    sortByName(nodes);
    return nodes;
}

// Only the first entry describes this Mac's controller and its devices.
QList<DeviceNode> bluetoothNodes(const QList<PropertyDictionary> &items)
{
    if (items.isEmpty())
        return {};
    const PropertyDictionary &entry = items.first();
    QList<DeviceNode> nodes;
    if (const std::optional<PropertyDictionary> controller = PropertyValues::dictionary(entry, u"controller_properties"_s))
        nodes.append(controllerNode(*controller));
    nodes.append(bluetoothDevices(entry.value(u"device_connected"_s), true));
    nodes.append(bluetoothDevices(entry.value(u"device_not_connected"_s), false));
    nodes.append(bluetoothDevices(entry.value(u"device_title"_s), false));
    return nodes;
}

} // namespace

namespace InventoryService {

Result<QList<DeviceNode>> bluetooth(const Platform &platform)
{
    return InventorySupport::collect<DeviceNode>(platform, u"SPBluetoothDataType"_s, bluetoothNodes);
}

} // namespace InventoryService
