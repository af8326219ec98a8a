#include "collectors/inventory_service.h"
#include "common/test_main.h"
#include "inventory_fakes.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString displaysType = u"SPDisplaysDataType"_s;
const QString usbType = u"SPUSBDataType"_s;
const QString thunderboltType = u"SPThunderboltDataType"_s;

using Operation = Result<QList<DeviceNode>> (*)(const Platform &);

QList<DeviceNode> nodesOf(Operation operation, const QString &dataType, const QByteArray &itemsJson)
{
    const Result<QList<DeviceNode>> result = operation(platformAnswering(dataType, itemsJson));
    if (!result.ok()) {
        qWarning("%s", qPrintable(result.failure().description()));
        return {};
    }
    return result.value();
}

// The only display of a processor written around `displayJson`.
DeviceNode onlyDisplay(const QByteArray &displayJson)
{
    const QList<DeviceNode> processors =
        nodesOf(InventoryService::displays, displaysType, R"json({"_name": "GPU", "spdisplays_ndrvs": [)json" + displayJson + "]}");
    if (processors.size() != 1 || processors.first().children.size() != 1)
        return {};
    return processors.first().children.first();
}

DeviceNode onlyNode(Operation operation, const QString &dataType, const QByteArray &itemJson)
{
    const QList<DeviceNode> nodes = nodesOf(operation, dataType, itemJson);
    return nodes.size() == 1 ? nodes.first() : DeviceNode();
}

} // namespace

class TestDisplayUsbThunderbolt : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void displayCount_data();
    void displayCount();
    void displayNode_data();
    void displayNode();
    void onlyTheNativeDefinitionIsKeyed();
    void processorRows_data();
    void processorRows();
    void usbSpeed_data();
    void usbSpeed();
    void usbNodeKind_data();
    void usbNodeKind();
    void usbRowsInOrder();
    void usbBusPower_data();
    void usbBusPower();
    void thunderboltName_data();
    void thunderboltName();
    void thunderboltPortOrder();
    void thunderboltPort_data();
    void thunderboltPort();
    void thunderboltRows_data();
    void thunderboltRows();
    void sampleDisplays();
    void sampleUsb();
    void sampleThunderbolt();
    void failingCapture();
    void dispatchBySection_data();
    void dispatchBySection();
};

void TestDisplayUsbThunderbolt::displayCount_data()
{
    QTest::addColumn<QByteArray>("processor");
    QTest::addColumn<QString>("subtitle");
    QTest::addColumn<QStringList>("displayNames");

    QTest::newRow("no display list") << QByteArray(R"json({"_name": "Intel Iris Plus"})json") << u"0 écrans"_s
                                     << QStringList();
    QTest::newRow("empty display list") << QByteArray(R"json({"_name": "GPU", "spdisplays_ndrvs": []})json")
                                        << u"0 écrans"_s << QStringList();
    QTest::newRow("one display") << QByteArray(R"json({"_name": "GPU", "spdisplays_ndrvs": [{"_name": "Color LCD"}]})json")
                                 << u"1 écran"_s << QStringList{u"Color LCD"_s};
    QTest::newRow("two displays in report order") << QByteArray(R"json({"_name": "GPU", "spdisplays_ndrvs": [
        {"_name": "LG HDR 4K"}, {"_name": "DELL U2723QE"}]})json") << u"2 écrans"_s
                                                  << QStringList{u"LG HDR 4K"_s, u"DELL U2723QE"_s};
    QTest::newRow("twelve displays") << QByteArray(R"json({"_name": "GPU", "spdisplays_ndrvs": [{}, {}, {}, {}, {}, {},
        {}, {}, {}, {}, {}, {}]})json") << u"12 écrans"_s << QStringList(12, u"Sans nom"_s);
    QTest::newRow("display list holding a text") << QByteArray(R"json({"_name": "GPU", "spdisplays_ndrvs": [
        {"_name": "Color LCD"}, "spdisplays_none"]})json") << u"0 écrans"_s << QStringList();
    QTest::newRow("display list that is a dictionary") << QByteArray(R"json({"_name": "GPU",
        "spdisplays_ndrvs": {"_name": "Color LCD"}})json") << u"0 écrans"_s << QStringList();
}

void TestDisplayUsbThunderbolt::displayCount()
{
    QFETCH(QByteArray, processor);
    const DeviceNode node = onlyNode(InventoryService::displays, displaysType, processor);
    QTEST(node.subtitle.value_or(QString()), "subtitle");
    QTEST(names(node.children), "displayNames");
    QCOMPARE(node.symbol, u"cpu"_s);
    QCOMPARE(node.status, DeviceStatus::neutral);
}

void TestDisplayUsbThunderbolt::displayNode_data()
{
    QTest::addColumn<QByteArray>("display");
    QTest::addColumn<QString>("name");
    QTest::addColumn<std::optional<QString>>("subtitle");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<DeviceStatus>("status");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("main display, online") << QByteArray(R"json({"_name": "Color LCD",
        "_spdisplays_resolution": "1512 x 982 @ 120.00Hz", "_spdisplays_pixels": "3024 x 1964",
        "spdisplays_display_type": "spdisplays_built-in-liquid-retina-xdr", "spdisplays_connection_type": "spdisplays_internal",
        "spdisplays_main": "spdisplays_yes", "spdisplays_mirror": "spdisplays_off", "spdisplays_online": "spdisplays_yes",
        "_spdisplays_display-vendor-id": "610", "_spdisplays_display-product-id": "a04e",
        "_spdisplays_display-serial-number": "fd626d62"})json")
        << u"Color LCD"_s << std::optional(u"1512 x 982 @ 120.00Hz"_s) << u"display"_s << DeviceStatus::connected
        << QStringList{u"Résolution = 1512 x 982 @ 120.00Hz"_s, u"Définition native = 3024 x 1964"_s,
                       u"Type = Liquid Retina XDR intégré"_s, u"Connexion = Interne"_s, u"Écran principal = Oui"_s,
                       u"Recopie vidéo = Désactivée"_s, u"Identifiant fabricant = 610"_s,
                       u"Identifiant produit = a04e"_s, u"Numéro de série = fd626d62"_s};
    QTest::newRow("second display without online key") << QByteArray(R"json({"_name": "DELL U2723QE",
        "_spdisplays_resolution": "1920 x 1080 @ 60.00Hz", "spdisplays_connection_type": "spdisplays_displayport_dongle",
        "spdisplays_mirror": "spdisplays_on"})json")
        << u"DELL U2723QE"_s << std::optional(u"1920 x 1080 @ 60.00Hz"_s) << u"display.2"_s
        << DeviceStatus::disconnected
        << QStringList{u"Résolution = 1920 x 1080 @ 60.00Hz"_s, u"Connexion = Adaptateur DisplayPort"_s,
                       u"Écran principal = Non"_s, u"Recopie vidéo = Activée"_s};
    QTest::newRow("offline main display") << QByteArray(R"json({"_name": "Color LCD", "spdisplays_main": "spdisplays_yes",
        "spdisplays_online": "spdisplays_no"})json")
        << u"Color LCD"_s << std::optional<QString>() << u"display"_s << DeviceStatus::disconnected
        << QStringList{u"Écran principal = Oui"_s};
    QTest::newRow("yes and true are not the display words") << QByteArray(R"json({"_name": "Sidecar",
        "spdisplays_main": "yes", "spdisplays_online": true})json")
        << u"Sidecar"_s << std::optional<QString>() << u"display.2"_s << DeviceStatus::disconnected
        << QStringList{u"Écran principal = Non"_s};
    QTest::newRow("unknown display type goes through the vocabulary") << QByteArray(R"json({
        "spdisplays_display_type": "spdisplays_built-in-mini-led", "spdisplays_online": "spdisplays_yes"})json")
        << u"Sans nom"_s << std::optional<QString>() << u"display.2"_s << DeviceStatus::connected
        << QStringList{u"Type = Built in mini led"_s, u"Écran principal = Non"_s};
}

void TestDisplayUsbThunderbolt::displayNode()
{
    QFETCH(QByteArray, display);
    const DeviceNode node = onlyDisplay(display);
    QTEST(node.name, "name");
    QTEST(node.subtitle, "subtitle");
    QTEST(node.symbol, "symbol");
    QTEST(node.status, "status");
    QTEST(rowTexts(node.rows), "rows");
    QVERIFY(node.children.isEmpty());
    QVERIFY(!node.isBuiltIn);
}

void TestDisplayUsbThunderbolt::onlyTheNativeDefinitionIsKeyed()
{
    const DeviceNode node = onlyDisplay(R"json({"_spdisplays_resolution": "1920 x 1080 @ 60.00Hz",
        "_spdisplays_pixels": "3840 x 2160", "spdisplays_main": "spdisplays_yes"})json");
    QCOMPARE(node.rows.size(), 3);
    QCOMPARE(node.rows.at(0).key, std::nullopt);
    QCOMPARE(node.rows.at(1).label, u"Définition native"_s);
    QCOMPARE(node.rows.at(1).key, InfoRowKey::nativeResolution);
    QCOMPARE(node.rows.at(2).key, std::nullopt);
}

void TestDisplayUsbThunderbolt::processorRows_data()
{
    QTest::addColumn<QByteArray>("processor");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("Apple silicon") << QByteArray(R"json({"_name": "Apple M1 Pro", "sppci_model": "Apple M1 Pro",
        "spdisplays_vendor": "sppci_vendor_Apple", "sppci_cores": "16", "sppci_bus": "spdisplays_builtin",
        "spdisplays_mtlgpufamilysupport": "spdisplays_metal3"})json")
        << QStringList{u"Modèle = Apple M1 Pro"_s, u"Fabricant = Apple"_s, u"Cœurs graphiques = 16"_s,
                       u"Bus = Intégré"_s, u"Metal = Metal 3"_s};
    QTest::newRow("shared memory stands in for missing video memory") << QByteArray(R"json({"sppci_model": "Intel Iris",
        "spdisplays_vram_shared": "1536 MB", "sppci_bus": "spdisplays_builtin"})json")
        << QStringList{u"Modèle = Intel Iris"_s, u"Bus = Intégré"_s, u"VRAM = 1536 MB"_s};
    QTest::newRow("dedicated video memory comes before shared") << QByteArray(R"json({"spdisplays_vram": "8 GB",
        "spdisplays_vram_shared": "1536 MB", "sppci_bus": "spdisplays_pcie_device",
        "spdisplays_vendor": "Advanced Micro Devices, Inc. (0x1002)"})json")
        << QStringList{u"Fabricant = Advanced Micro Devices, Inc. (0x1002)"_s, u"Bus = Device"_s, u"VRAM = 8 GB"_s};
    QTest::newRow("number of cores reported as a number") << QByteArray(R"json({"sppci_cores": 10,
        "spdisplays_mtlgpufamilysupport": "spdisplays_metal4"})json")
        << QStringList{u"Cœurs graphiques = 10"_s, u"Metal = Metal 4"_s};
    QTest::newRow("nothing known") << QByteArray(R"json({"_name": "GPU"})json") << QStringList();
}

void TestDisplayUsbThunderbolt::processorRows()
{
    QFETCH(QByteArray, processor);
    QTEST(rowTexts(onlyNode(InventoryService::displays, displaysType, processor).rows), "rows");
}

void TestDisplayUsbThunderbolt::usbSpeed_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("low speed") << QByteArray(R"json({"device_speed": "low_speed"})json")
                               << QStringList{u"Vitesse = USB 1.0 — 1,5 Mb/s"_s};
    QTest::newRow("full speed") << QByteArray(R"json({"device_speed": "full_speed"})json")
                                << QStringList{u"Vitesse = USB 1.1 — 12 Mb/s"_s};
    QTest::newRow("high speed") << QByteArray(R"json({"device_speed": "high_speed"})json")
                                << QStringList{u"Vitesse = USB 2.0 — 480 Mb/s"_s};
    QTest::newRow("super speed") << QByteArray(R"json({"device_speed": "super_speed"})json")
                                 << QStringList{u"Vitesse = USB 3.0 — 5 Gb/s"_s};
    QTest::newRow("super speed plus") << QByteArray(R"json({"device_speed": "super_speed_plus"})json")
                                      << QStringList{u"Vitesse = USB 3.1+ — 10 Gb/s"_s};
    QTest::newRow("unknown token of the profiler") << QByteArray(R"json({"device_speed": "spusb_twenty-gbps"})json")
                                                   << QStringList{u"Vitesse = Twenty gbps"_s};
    QTest::newRow("unknown token without the profiler prefix") << QByteArray(R"json({"device_speed": "super_speed_plus_by_2"})json")
                                                               << QStringList{u"Vitesse = super_speed_plus_by_2"_s};
    QTest::newRow("token in capitals is not a known token") << QByteArray(R"json({"device_speed": "HIGH_SPEED"})json")
                                                            << QStringList{u"Vitesse = HIGH_SPEED"_s};
    QTest::newRow("no speed") << QByteArray(R"json({"manufacturer": "Apple Inc."})json")
                              << QStringList{u"Fabricant = Apple Inc."_s};
}

void TestDisplayUsbThunderbolt::usbSpeed()
{
    QFETCH(QByteArray, device);
    QTEST(rowTexts(onlyNode(InventoryService::usb, usbType, device).rows), "rows");
}

void TestDisplayUsbThunderbolt::usbNodeKind_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<DeviceStatus>("status");
    QTest::addColumn<QStringList>("outline");

    QTest::newRow("bus with its controller, nothing plugged") << QByteArray(R"json({"_name": "USB31Bus",
        "host_controller": "AppleT6000USBXHCI"})json")
        << u"cable.connector.horizontal"_s << DeviceStatus::neutral << QStringList{u"USB31Bus"_s};
    QTest::newRow("hub without controller but with a device") << QByteArray(R"json({"_name": "USB2.1 Hub",
        "_items": [{"_name": "USB Receiver"}]})json")
        << u"cable.connector.horizontal"_s << DeviceStatus::neutral << QStringList{u"USB2.1 Hub"_s, u"  USB Receiver"_s};
    QTest::newRow("leaf device") << QByteArray(R"json({"_name": "Magic Keyboard"})json")
                                 << u"cable.connector"_s << DeviceStatus::connected << QStringList{u"Magic Keyboard"_s};
    QTest::newRow("empty item list is a leaf") << QByteArray(R"json({"_name": "Clé", "_items": []})json")
                                               << u"cable.connector"_s << DeviceStatus::connected << QStringList{u"Clé"_s};
    QTest::newRow("item list holding a text is a leaf") << QByteArray(R"json({"_name": "Clé",
        "_items": [{"_name": "Partie"}, "texte"]})json")
        << u"cable.connector"_s << DeviceStatus::connected << QStringList{u"Clé"_s};
    QTest::newRow("empty controller name does not make a bus") << QByteArray(R"json({"_name": "Lecteur",
        "host_controller": ""})json") << u"cable.connector"_s << DeviceStatus::connected << QStringList{u"Lecteur"_s};
    QTest::newRow("three levels keep report order") << QByteArray(R"json({"_name": "Bus", "_items": [
        {"_name": "Hub", "_items": [{"_name": "Souris"}, {"_name": "Clavier"}]}, {"_name": "Disque"}]})json")
        << u"cable.connector.horizontal"_s << DeviceStatus::neutral
        << QStringList{u"Bus"_s, u"  Hub"_s, u"    Souris"_s, u"    Clavier"_s, u"  Disque"_s};
}

void TestDisplayUsbThunderbolt::usbNodeKind()
{
    QFETCH(QByteArray, entry);
    const QList<DeviceNode> nodes = nodesOf(InventoryService::usb, usbType, entry);
    QCOMPARE(nodes.size(), 1);
    QTEST(nodes.first().symbol, "symbol");
    QTEST(nodes.first().status, "status");
    QTEST(treeOutline(nodes), "outline");
}

void TestDisplayUsbThunderbolt::usbRowsInOrder()
{
    const DeviceNode node = onlyNode(InventoryService::usb, usbType, R"json({"location_id": "0x03110000 / 4",
        "host_controller": "AppleUSBXHCI", "bus_power_used": "98", "bus_power": "500", "bcd_device": "12.11",
        "serial_num": "S6XB", "vendor_id": "0x046d  (Logitech Inc.)", "product_id": "0xc52b",
        "device_speed": "full_speed", "manufacturer": "Logitech"})json");
    QCOMPARE(node.name, u"Sans nom"_s);
    QCOMPARE(node.subtitle, u"Logitech"_s);
    QCOMPARE(rowTexts(node.rows),
             (QStringList{u"Fabricant = Logitech"_s, u"Vitesse = USB 1.1 — 12 Mb/s"_s, u"Identifiant produit = 0xc52b"_s,
                          u"Identifiant fabricant = 0x046d  (Logitech Inc.)"_s, u"Numéro de série = S6XB"_s,
                          u"Version = 12.11"_s, u"Alimentation disponible = 500 mA"_s,
                          u"Alimentation utilisée = 98 mA"_s, u"Contrôleur = AppleUSBXHCI"_s,
                          u"Emplacement = 0x03110000 / 4"_s}));
}

void TestDisplayUsbThunderbolt::usbBusPower_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("500 available") << QByteArray(R"json({"bus_power": "500"})json")
                                   << QStringList{u"Alimentation disponible = 500 mA"_s};
    QTest::newRow("reported as a number") << QByteArray(R"json({"bus_power": 900, "bus_power_used": 0})json")
                                          << QStringList{u"Alimentation disponible = 900 mA"_s,
                                                         u"Alimentation utilisée = 0 mA"_s};
    QTest::newRow("empty text gives no row") << QByteArray(R"json({"bus_power": "", "bus_power_used": "4"})json")
                                             << QStringList{u"Alimentation utilisée = 4 mA"_s};
    QTest::newRow("absent") << QByteArray(R"json({"_name": "Clé"})json") << QStringList();
}

void TestDisplayUsbThunderbolt::usbBusPower()
{
    QFETCH(QByteArray, device);
    QTEST(rowTexts(onlyNode(InventoryService::usb, usbType, device).rows), "rows");
}

void TestDisplayUsbThunderbolt::thunderboltName_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QString>("name");

    QTest::newRow("first bus") << QByteArray(R"json({"_name": "thunderbolt_bus_0"})json") << u"Bus Thunderbolt 1"_s;
    QTest::newRow("USB4 bus") << QByteArray(R"json({"_name": "thunderboltusb4_bus_1"})json") << u"Bus Thunderbolt / USB4 2"_s;
    QTest::newRow("two-digit bus") << QByteArray(R"json({"_name": "thunderbolt_bus_10"})json") << u"Bus Thunderbolt 11"_s;
    QTest::newRow("capitals") << QByteArray(R"json({"_name": "ThunderboltUSB4_Bus_3"})json") << u"Bus Thunderbolt / USB4 4"_s;
    QTest::newRow("trailing underscore") << QByteArray(R"json({"_name": "thunderbolt_bus_0_"})json") << u"Bus Thunderbolt 1"_s;
    QTest::newRow("no bus number") << QByteArray(R"json({"_name": "thunderbolt_bus"})json") << u"Bus Thunderbolt"_s;
    QTest::newRow("number with letters") << QByteArray(R"json({"_name": "thunderbolt_bus_2b"})json") << u"Bus Thunderbolt"_s;
    QTest::newRow("no underscore") << QByteArray(R"json({"_name": "thunderbolt"})json") << u"Bus Thunderbolt"_s;
    QTest::newRow("device name") << QByteArray(R"json({"_name": "TS3 Plus"})json") << u"TS3 Plus"_s;
    QTest::newRow("word further in") << QByteArray(R"json({"_name": "OWC thunderbolt_dock_1"})json")
                                     << u"OWC thunderbolt_dock_1"_s;
    QTest::newRow("no name") << QByteArray(R"json({"device_name_key": "MacBook Pro"})json") << u"Sans nom"_s;
}

void TestDisplayUsbThunderbolt::thunderboltName()
{
    QFETCH(QByteArray, entry);
    QTEST(onlyNode(InventoryService::thunderbolt, thunderboltType, entry).name, "name");
}

void TestDisplayUsbThunderbolt::thunderboltPortOrder()
{
    const QList<DeviceNode> buses = nodesOf(InventoryService::thunderbolt, thunderboltType, R"json({
        "_name": "thunderbolt_bus_0",
        "receptacle_2_tag": {"receptacle_id_key": "2"},
        "receptacle_10_tag": {"receptacle_id_key": "10"},
        "receptacle_1_tag": {"receptacle_id_key": "1"},
        "receptacle_upstream_ambiguous_tag": {"receptacle_id_key": "amont"},
        "receptacle_3_tag": "receptacle_no_devices_connected",
        "receptacle_4_status": {"receptacle_id_key": "4"},
        "port_5_tag": {"receptacle_id_key": "5"},
        "_items": [{"_name": "TS3 Plus"}]})json");
    QCOMPARE(buses.size(), 1);
    // Devices first, then ports in plain text order of their keys: "receptacle_10_tag" comes
    // before "receptacle_1_tag" because the digit 0 comes before the underscore.
    QCOMPARE(names(buses.first().children),
             (QStringList{u"TS3 Plus"_s, u"Port 10"_s, u"Port 1"_s, u"Port 2"_s, u"Port amont"_s}));
}

void TestDisplayUsbThunderbolt::thunderboltPort_data()
{
    QTest::addColumn<QByteArray>("port");
    QTest::addColumn<QString>("name");
    QTest::addColumn<std::optional<QString>>("subtitle");
    QTest::addColumn<DeviceStatus>("status");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("free port") << QByteArray(R"json({"current_speed_key": "Up to 40 Gb/s", "link_status_key": "0x100",
        "receptacle_id_key": "1", "receptacle_status_key": "receptacle_no_devices_connected"})json")
        << u"Port 1"_s << std::optional(u"Jusqu'à 40 Gb/s"_s) << DeviceStatus::disconnected
        << QStringList{u"Débit maximal = Jusqu'à 40 Gb/s"_s, u"État = Aucun appareil connecté"_s,
                       u"État du lien = 0x100"_s};
    QTest::newRow("port in use") << QByteArray(R"json({"current_speed_key": "40 Gb/s", "link_status_key": "0x2",
        "receptacle_id_key": "2", "receptacle_status_key": "receptacle_device_connected"})json")
        << u"Port 2"_s << std::optional(u"40 Gb/s"_s) << DeviceStatus::connected
        << QStringList{u"Débit maximal = 40 Gb/s"_s, u"État = Appareil connecté"_s, u"État du lien = 0x2"_s};
    QTest::newRow("port without state or number") << QByteArray(R"json({"current_speed_key": "up to 10 Gb/s"})json")
        << u"Port "_s << std::optional(u"up to 10 Gb/s"_s) << DeviceStatus::disconnected
        << QStringList{u"Débit maximal = up to 10 Gb/s"_s};
    QTest::newRow("any state naming no devices is free") << QByteArray(R"json({"receptacle_id_key": "3",
        "receptacle_status_key": "spthunderbolt_no_devices"})json")
        << u"Port 3"_s << std::optional<QString>() << DeviceStatus::disconnected
        << QStringList{u"État = Devices"_s};
    QTest::newRow("every occurrence of the speed wording") << QByteArray(R"json({"receptacle_id_key": "4",
        "current_speed_key": "Up to 40 Gb/s, Up to 80 Gb/s", "receptacle_status_key": "receptacle_connected"})json")
        << u"Port 4"_s << std::optional(u"Jusqu'à 40 Gb/s, Jusqu'à 80 Gb/s"_s) << DeviceStatus::connected
        << QStringList{u"Débit maximal = Jusqu'à 40 Gb/s, Jusqu'à 80 Gb/s"_s, u"État = receptacle_connected"_s};
}

void TestDisplayUsbThunderbolt::thunderboltPort()
{
    QFETCH(QByteArray, port);
    const DeviceNode bus = onlyNode(InventoryService::thunderbolt, thunderboltType,
                                    R"json({"_name": "thunderbolt_bus_0", "receptacle_1_tag": )json" + port + "}");
    QCOMPARE(bus.children.size(), 1);
    const DeviceNode &node = bus.children.first();
    QTEST(node.name, "name");
    QTEST(node.subtitle, "subtitle");
    QTEST(node.status, "status");
    QTEST(rowTexts(node.rows), "rows");
    QCOMPARE(node.symbol, u"bolt.horizontal.circle"_s);
    QVERIFY(node.children.isEmpty());
}

void TestDisplayUsbThunderbolt::thunderboltRows_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("bus") << QByteArray(R"json({"_name": "thunderboltusb4_bus_0", "device_name_key": "MacBook Pro",
        "switch_uid_key": "0x05AC3F2B6D1E9A40", "vendor_name_key": "Apple Inc."})json")
        << QStringList{u"Fabricant = Apple Inc."_s, u"Appareil = MacBook Pro"_s,
                       u"Identifiant du contrôleur = 0x05AC3F2B6D1E9A40"_s};
    QTest::newRow("device with a vendor dictionary") << QByteArray(R"json({"_name": "Studio Display",
        "device_serial_number_key": "C02XYZ", "device_firmware_version_key": "1.2",
        "vendor_name_key": {"_name": "Apple Inc.", "vendor_id_key": "0x1"}})json")
        << QStringList{u"Fabricant = Apple Inc."_s, u"Firmware = 1.2"_s, u"Numéro de série = C02XYZ"_s};
    QTest::newRow("vendor dictionary without a name") << QByteArray(R"json({"vendor_name_key": {"vendor_id_key": "0x1"},
        "device_name_key": "Dock"})json") << QStringList{u"Appareil = Dock"_s};
}

void TestDisplayUsbThunderbolt::thunderboltRows()
{
    QFETCH(QByteArray, entry);
    const DeviceNode node = onlyNode(InventoryService::thunderbolt, thunderboltType, entry);
    QTEST(rowTexts(node.rows), "rows");
    QCOMPARE(node.symbol, u"bolt.horizontal"_s);
    QCOMPARE(node.status, DeviceStatus::neutral);
}

// The sample Mac: the built-in Liquid Retina XDR panel and an LG monitor on HDMI.
void TestDisplayUsbThunderbolt::sampleDisplays()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::displays(*platform);
    QVERIFY(result.ok());
    const QList<DeviceNode> &processors = result.value();
    QCOMPARE(treeOutline(processors), (QStringList{u"Apple M1 Pro"_s, u"  Color LCD"_s, u"  LG HDR 4K"_s}));

    const DeviceNode &processor = processors.first();
    QCOMPARE(processor.subtitle, u"2 écrans"_s);
    QCOMPARE(rowTexts(processor.rows), (QStringList{u"Modèle = Apple M1 Pro"_s, u"Fabricant = Apple"_s,
                                                    u"Cœurs graphiques = 16"_s, u"Bus = Intégré"_s,
                                                    u"Metal = Metal 3"_s}));

    const DeviceNode &internal = processor.children.at(0);
    QCOMPARE(internal.subtitle, u"1512 x 982 @ 120.00Hz"_s);
    QCOMPARE(internal.symbol, u"display"_s);
    QCOMPARE(internal.status, DeviceStatus::connected);
    QCOMPARE(rowTexts(internal.rows),
             (QStringList{u"Résolution = 1512 x 982 @ 120.00Hz"_s, u"Définition native = 3024 x 1964"_s,
                          u"Type = Liquid Retina XDR intégré"_s, u"Connexion = Interne"_s, u"Écran principal = Oui"_s,
                          u"Recopie vidéo = Désactivée"_s, u"Identifiant fabricant = 610"_s,
                          u"Identifiant produit = a04e"_s, u"Numéro de série = fd626d62"_s}));

    const DeviceNode &external = processor.children.at(1);
    QCOMPARE(external.subtitle, u"1920 x 1080 @ 60.00Hz"_s);
    QCOMPARE(external.symbol, u"display.2"_s);
    QCOMPARE(external.status, DeviceStatus::connected);
    QCOMPARE(rowTexts(external.rows),
             (QStringList{u"Résolution = 1920 x 1080 @ 60.00Hz"_s, u"Définition native = 3840 x 2160"_s,
                          u"Écran principal = Non"_s, u"Recopie vidéo = Désactivée"_s,
                          u"Identifiant fabricant = 1e6d"_s, u"Identifiant produit = 7750"_s,
                          u"Numéro de série = 2f4e1b03"_s}));
}

// The sample Mac: three empty buses and a CalDigit dock's controller with two hubs, a
// Logitech receiver and a Samsung T7.
void TestDisplayUsbThunderbolt::sampleUsb()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::usb(*platform);
    QVERIFY(result.ok());
    const QList<DeviceNode> &buses = result.value();
    QCOMPARE(treeOutline(buses), (QStringList{u"USB31Bus"_s, u"USB31Bus"_s, u"USB31Bus"_s, u"USB30Bus"_s,
                                              u"  USB2.1 Hub"_s, u"    USB Receiver"_s, u"  USB3.1 Hub"_s,
                                              u"    PSSD T7"_s}));
    for (const DeviceNode &bus : buses) {
        QCOMPARE(bus.symbol, u"cable.connector.horizontal"_s);
        QCOMPARE(bus.status, DeviceStatus::neutral);
        QCOMPARE(bus.subtitle, std::nullopt);
    }
    QCOMPARE(rowTexts(buses.at(0).rows), QStringList{u"Contrôleur = AppleT6000USBXHCI"_s});
    QCOMPARE(rowTexts(buses.at(3).rows), QStringList{u"Contrôleur = AppleUSBXHCIFL1100"_s});

    const DeviceNode *hub = findNode(buses, u"USB2.1 Hub"_s);
    QVERIFY(hub);
    QCOMPARE(hub->symbol, u"cable.connector.horizontal"_s);
    QCOMPARE(hub->status, DeviceStatus::neutral);
    QCOMPARE(hub->subtitle, u"Generic"_s);
    QCOMPARE(rowTexts(hub->rows),
             (QStringList{u"Fabricant = Generic"_s, u"Vitesse = USB 2.0 — 480 Mb/s"_s, u"Identifiant produit = 0x5411"_s,
                          u"Identifiant fabricant = 0x0bda  (Realtek Semiconductor Corp.)"_s, u"Version = 1.17"_s,
                          u"Alimentation disponible = 500 mA"_s, u"Alimentation utilisée = 0 mA"_s,
                          u"Emplacement = 0x03100000 / 2"_s}));

    const DeviceNode *receiver = findNode(buses, u"USB Receiver"_s);
    QVERIFY(receiver);
    QCOMPARE(receiver->symbol, u"cable.connector"_s);
    QCOMPARE(receiver->status, DeviceStatus::connected);
    QCOMPARE(receiver->subtitle, u"Logitech"_s);
    QCOMPARE(rowTexts(receiver->rows),
             (QStringList{u"Fabricant = Logitech"_s, u"Vitesse = USB 1.1 — 12 Mb/s"_s, u"Identifiant produit = 0xc52b"_s,
                          u"Identifiant fabricant = 0x046d  (Logitech Inc.)"_s, u"Version = 12.11"_s,
                          u"Alimentation disponible = 500 mA"_s, u"Alimentation utilisée = 98 mA"_s,
                          u"Emplacement = 0x03110000 / 4"_s}));

    const DeviceNode *disk = findNode(buses, u"PSSD T7"_s);
    QVERIFY(disk);
    QCOMPARE(disk->status, DeviceStatus::connected);
    QCOMPARE(disk->subtitle, u"Samsung"_s);
    QCOMPARE(rowTexts(disk->rows),
             (QStringList{u"Fabricant = Samsung"_s, u"Vitesse = USB 3.1+ — 10 Gb/s"_s, u"Identifiant produit = 0x4001"_s,
                          u"Identifiant fabricant = 0x04e8  (Samsung Electronics Co., Ltd.)"_s,
                          u"Numéro de série = S6XBNJ0T812447K"_s, u"Version = 1.00"_s,
                          u"Alimentation disponible = 900 mA"_s, u"Alimentation utilisée = 896 mA"_s,
                          u"Emplacement = 0x03210000 / 5"_s}));
}

// The sample Mac: three USB4 buses, the CalDigit dock on the second one.
void TestDisplayUsbThunderbolt::sampleThunderbolt()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::thunderbolt(*platform);
    QVERIFY(result.ok());
    const QList<DeviceNode> &buses = result.value();
    QCOMPARE(treeOutline(buses),
             (QStringList{u"Bus Thunderbolt / USB4 3"_s, u"  Port 3"_s, u"Bus Thunderbolt / USB4 2"_s, u"  TS3 Plus"_s,
                          u"    Port "_s, u"  Port 2"_s, u"Bus Thunderbolt / USB4 1"_s, u"  Port 1"_s}));

    const DeviceNode &firstBus = buses.at(0);
    QCOMPARE(firstBus.subtitle, u"MacBook Pro"_s);
    QCOMPARE(rowTexts(firstBus.rows), (QStringList{u"Fabricant = Apple Inc."_s, u"Appareil = MacBook Pro"_s,
                                                   u"Identifiant du contrôleur = 0x05AC3F2B6D1E9A42"_s}));
    const DeviceNode &freePort = firstBus.children.first();
    QCOMPARE(freePort.subtitle, u"Jusqu'à 40 Gb/s"_s);
    QCOMPARE(freePort.status, DeviceStatus::disconnected);
    QCOMPARE(rowTexts(freePort.rows), (QStringList{u"Débit maximal = Jusqu'à 40 Gb/s"_s,
                                                   u"État = Aucun appareil connecté"_s, u"État du lien = 0x100"_s}));

    const DeviceNode *dock = findNode(buses, u"TS3 Plus"_s);
    QVERIFY(dock);
    QCOMPARE(dock->subtitle, u"TS3 Plus"_s);
    QCOMPARE(dock->symbol, u"bolt.horizontal"_s);
    QCOMPARE(rowTexts(dock->rows), (QStringList{u"Fabricant = CalDigit, Inc."_s, u"Appareil = TS3 Plus"_s,
                                                u"Identifiant du contrôleur = 0x003D4E7A19C26F00"_s}));
    // The dock's upstream port has no number; its state word is not one the vocabulary knows.
    const DeviceNode &upstream = dock->children.first();
    QCOMPARE(upstream.subtitle, u"40 Gb/s"_s);
    QCOMPARE(upstream.status, DeviceStatus::connected);
    QCOMPARE(rowTexts(upstream.rows), (QStringList{u"Débit maximal = 40 Gb/s"_s, u"État = receptacle_connected"_s,
                                                   u"État du lien = 0x2"_s}));
    const DeviceNode *usedPort = findNode(buses, u"Port 2"_s);
    QVERIFY(usedPort);
    QCOMPARE(usedPort->status, DeviceStatus::connected);
    QCOMPARE(usedPort->subtitle, u"40 Gb/s"_s);
}

// A MacBook Air whose USB report fails and whose Thunderbolt report lacks its data type.
void TestDisplayUsbThunderbolt::failingCapture()
{
    const std::optional<Platform> platform = capturePlatform(u"profiler-failures"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> usb = InventoryService::usb(*platform);
    QVERIFY(!usb.ok());
    QCOMPARE(usb.failure().description(), u"system_profiler a échoué : code 1 pour SPUSBDataType"_s);
    const Result<QList<DeviceNode>> thunderbolt = InventoryService::thunderbolt(*platform);
    QVERIFY(!thunderbolt.ok());
    QCOMPARE(thunderbolt.failure().description(), u"Réponse de system_profiler illisible."_s);
    // The other sections of the same machine still load.
    QVERIFY(InventoryService::displays(*platform).ok());
}

void TestDisplayUsbThunderbolt::dispatchBySection_data()
{
    QTest::addColumn<AppSection>("section");
    QTest::addColumn<QString>("dataType");

    QTest::newRow("displays") << AppSection::displays << displaysType;
    QTest::newRow("usb") << AppSection::usb << usbType;
    QTest::newRow("thunderbolt") << AppSection::thunderbolt << thunderboltType;
    QTest::newRow("bluetooth") << AppSection::bluetooth << u"SPBluetoothDataType"_s;
    QTest::newRow("network") << AppSection::network << u"SPNetworkDataType"_s;
    QTest::newRow("audio") << AppSection::audio << u"SPAudioDataType"_s;
    QTest::newRow("camera") << AppSection::camera << u"SPCameraDataType"_s;
    QTest::newRow("overview") << AppSection::overview << QString();
    QTest::newRow("diagnostics") << AppSection::diagnostics << QString();
    QTest::newRow("history") << AppSection::history << QString();
    QTest::newRow("hardware") << AppSection::hardware << QString();
    QTest::newRow("battery") << AppSection::battery << QString();
    QTest::newRow("storage") << AppSection::storage << QString();
}

void TestDisplayUsbThunderbolt::dispatchBySection()
{
    QFETCH(AppSection, section);
    QFETCH(QString, dataType);
    auto profiler = std::make_shared<FakeProfiler>();
    // Every data type answers one unnamed entry, so a device section gives one node.
    for (const QString &type : {displaysType, usbType, thunderboltType, u"SPBluetoothDataType"_s,
                                u"SPNetworkDataType"_s, u"SPAudioDataType"_s, u"SPCameraDataType"_s})
        profiler->answer(type, "{\"" + type.toUtf8() + R"json(": [{"_items": [{}], "device_connected": [{"A": {}}]}]})json");
    const Result<QList<DeviceNode>> result = InventoryService::devices(platformWith(profiler), section);
    QVERIFY(result.ok());
    if (dataType.isEmpty()) {
        QVERIFY(profiler->runs().isEmpty());
        QVERIFY(result.value().isEmpty());
    } else {
        QCOMPARE(profiler->runs(), QList<QStringList>{(QStringList{u"-json"_s, dataType})});
        QCOMPARE(result.value().size(), 1);
    }
}

QUILLON_TEST_MAIN(TestDisplayUsbThunderbolt)
#include "tst_display_usb_thunderbolt.moc"
