#include "collectors/inventory_service.h"
#include "common/test_main.h"
#include "inventory_fakes.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString displaysType = u"SPDisplaysDataType"_s;
const QString usbType = u"SPUSBDataType"_s;
const QString thunderboltType = u"SPThunderboltDataType"_s;

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
    void usbBusPower_data();
    void usbBusPower();
    void thunderboltName_data();
    void thunderboltName();
    void thunderboltPortOrder();
    void thunderboltPort_data();
    void thunderboltPort();
    void thunderboltVendor_data();
    void thunderboltVendor();
    void sampleDisplays();
    void sampleUsb();
    void sampleThunderbolt();
    void failingCapture();
    void dispatchBySection_data();
    void dispatchBySection();
};

void TestDisplayUsbThunderbolt::displayCount_data()
{
    QTest::addColumn<QByteArray>("displayList");
    QTest::addColumn<QString>("subtitle");
    QTest::addColumn<QStringList>("displayNames");

    QTest::newRow("no display list") << QByteArray() << u"0 écrans"_s << QStringList();
    QTest::newRow("one display") << QByteArray(R"json(, "spdisplays_ndrvs": [{"_name": "Color LCD"}])json")
                                 << u"1 écran"_s << QStringList{u"Color LCD"_s};
    QTest::newRow("two displays in report order") << QByteArray(R"json(, "spdisplays_ndrvs": [{"_name": "LG HDR 4K"},
        {"_name": "DELL U2723QE"}])json") << u"2 écrans"_s << QStringList{u"LG HDR 4K"_s, u"DELL U2723QE"_s};
    QTest::newRow("display list holding a text") << QByteArray(R"json(, "spdisplays_ndrvs": [{"_name": "Color LCD"},
        "spdisplays_none"])json") << u"0 écrans"_s << QStringList();
    QTest::newRow("display list that is a dictionary")
        << QByteArray(R"json(, "spdisplays_ndrvs": {"_name": "Color LCD"})json") << u"0 écrans"_s << QStringList();
}

void TestDisplayUsbThunderbolt::displayCount()
{
    QFETCH(QByteArray, displayList);
    const DeviceNode node = onlyNode(InventoryService::displays, displaysType, R"json({"_name": "GPU")json" + displayList + "}");
    QTEST(node.subtitle.value_or(QString()), "subtitle");
    QTEST(names(node.children), "displayNames");
    QCOMPARE(node.symbol, u"cpu"_s);
    QCOMPARE(node.status, DeviceStatus::neutral);
}

void TestDisplayUsbThunderbolt::displayNode_data()
{
    QTest::addColumn<QByteArray>("display");
    QTest::addColumn<QStringList>("description");

    QTest::newRow("second display without online key") << QByteArray(R"json({"_name": "DELL U2723QE",
        "_spdisplays_resolution": "1920 x 1080 @ 60.00Hz", "spdisplays_connection_type": "spdisplays_displayport_dongle",
        "spdisplays_mirror": "spdisplays_on"})json")
        << QStringList{u"DELL U2723QE | 1920 x 1080 @ 60.00Hz | display.2 | disconnected"_s,
                       u"  Résolution = 1920 x 1080 @ 60.00Hz"_s, u"  Connexion = Adaptateur DisplayPort"_s,
                       u"  Écran principal = Non"_s, u"  Recopie vidéo = Activée"_s};
    QTest::newRow("offline main display") << QByteArray(R"json({"_name": "Color LCD",
        "spdisplays_main": "spdisplays_yes", "spdisplays_online": "spdisplays_no"})json")
        << QStringList{u"Color LCD | - | display | disconnected"_s, u"  Écran principal = Oui"_s};
    QTest::newRow("yes and true are not the display words") << QByteArray(R"json({"_name": "Sidecar",
        "spdisplays_main": "yes", "spdisplays_online": true})json")
        << QStringList{u"Sidecar | - | display.2 | disconnected"_s, u"  Écran principal = Non"_s};
    QTest::newRow("unknown display type goes through the vocabulary") << QByteArray(R"json({
        "spdisplays_display_type": "spdisplays_built-in-mini-led", "spdisplays_online": "spdisplays_yes"})json")
        << QStringList{u"Sans nom | - | display.2 | connected"_s, u"  Type = Built in mini led"_s,
                       u"  Écran principal = Non"_s};
}

void TestDisplayUsbThunderbolt::displayNode()
{
    QFETCH(QByteArray, display);
    const QList<DeviceNode> processors =
        nodesOf(InventoryService::displays, displaysType, R"json({"spdisplays_ndrvs": [)json" + display + "]}");
    QCOMPARE(processors.size(), 1);
    QTEST(describeTree(processors.first().children), "description");
}

void TestDisplayUsbThunderbolt::onlyTheNativeDefinitionIsKeyed()
{
    const QList<DeviceNode> processors = nodesOf(InventoryService::displays, displaysType, R"json({"spdisplays_ndrvs": [{
        "_spdisplays_resolution": "1920 x 1080 @ 60.00Hz", "_spdisplays_pixels": "3840 x 2160"}]})json");
    QCOMPARE(processors.size(), 1);
    const QList<InfoRow> rows = processors.first().children.value(0).rows;
    QCOMPARE(rows.size(), 3);
    QCOMPARE(rows.at(0).key, std::nullopt);
    QCOMPARE(rows.at(1).label, u"Définition native"_s);
    QCOMPARE(rows.at(1).key, InfoRowKey::nativeResolution);
    QCOMPARE(rows.at(2).key, std::nullopt);
}

void TestDisplayUsbThunderbolt::processorRows_data()
{
    QTest::addColumn<QByteArray>("processor");
    QTest::addColumn<QStringList>("rows");

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
}

void TestDisplayUsbThunderbolt::processorRows()
{
    QFETCH(QByteArray, processor);
    QTEST(rowTexts(onlyNode(InventoryService::displays, displaysType, processor).rows), "rows");
}

void TestDisplayUsbThunderbolt::usbSpeed_data()
{
    QTest::addColumn<QByteArray>("speed");
    QTest::addColumn<QString>("text");

    QTest::newRow("low speed") << QByteArray("low_speed") << u"USB 1.0 — 1,5 Mb/s"_s;
    QTest::newRow("full speed") << QByteArray("full_speed") << u"USB 1.1 — 12 Mb/s"_s;
    QTest::newRow("high speed") << QByteArray("high_speed") << u"USB 2.0 — 480 Mb/s"_s;
    QTest::newRow("super speed") << QByteArray("super_speed") << u"USB 3.0 — 5 Gb/s"_s;
    QTest::newRow("super speed plus") << QByteArray("super_speed_plus") << u"USB 3.1+ — 10 Gb/s"_s;
    QTest::newRow("unknown token of the profiler") << QByteArray("spusb_twenty-gbps") << u"Twenty gbps"_s;
    QTest::newRow("unknown token without the profiler prefix") << QByteArray("super_speed_plus_by_2")
                                                               << u"super_speed_plus_by_2"_s;
    QTest::newRow("token in capitals is not a known token") << QByteArray("HIGH_SPEED") << u"HIGH_SPEED"_s;
}

void TestDisplayUsbThunderbolt::usbSpeed()
{
    QFETCH(QByteArray, speed);
    QFETCH(QString, text);
    const DeviceNode node = onlyNode(InventoryService::usb, usbType, R"json({"device_speed": ")json" + speed + "\"}");
    QCOMPARE(rowTexts(node.rows), QStringList{u"Vitesse = "_s + text});
}

void TestDisplayUsbThunderbolt::usbNodeKind_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QStringList>("description");

    QTest::newRow("bus with its controller, nothing plugged") << QByteArray(R"json({"_name": "USB31Bus",
        "host_controller": "AppleT6000USBXHCI"})json")
        << QStringList{u"USB31Bus | - | cable.connector.horizontal | neutral"_s, u"  Contrôleur = AppleT6000USBXHCI"_s};
    QTest::newRow("hub without controller but with a device") << QByteArray(R"json({"_name": "Hub",
        "manufacturer": "Generic", "_items": [{"_name": "USB Receiver"}]})json")
        << QStringList{u"Hub | Generic | cable.connector.horizontal | neutral"_s, u"  Fabricant = Generic"_s,
                       u"    USB Receiver | - | cable.connector | connected"_s};
    QTest::newRow("empty item list is a leaf") << QByteArray(R"json({"_name": "Clé", "_items": []})json")
                                               << QStringList{u"Clé | - | cable.connector | connected"_s};
    QTest::newRow("item list holding a text is a leaf") << QByteArray(R"json({"_name": "Clé",
        "_items": [{"_name": "Partie"}, "texte"]})json") << QStringList{u"Clé | - | cable.connector | connected"_s};
    QTest::newRow("empty controller name does not make a bus") << QByteArray(R"json({"_name": "Lecteur",
        "host_controller": ""})json") << QStringList{u"Lecteur | - | cable.connector | connected"_s};
    QTest::newRow("three levels keep report order") << QByteArray(R"json({"_name": "Bus", "_items": [
        {"_name": "Hub", "_items": [{"_name": "Souris"}, {"_name": "Clavier"}]}, {"_name": "Disque"}]})json")
        << QStringList{u"Bus | - | cable.connector.horizontal | neutral"_s,
                       u"    Hub | - | cable.connector.horizontal | neutral"_s,
                       u"        Souris | - | cable.connector | connected"_s,
                       u"        Clavier | - | cable.connector | connected"_s,
                       u"    Disque | - | cable.connector | connected"_s};
}

void TestDisplayUsbThunderbolt::usbNodeKind()
{
    QFETCH(QByteArray, entry);
    QTEST(describeTree(nodesOf(InventoryService::usb, usbType, entry)), "description");
}

void TestDisplayUsbThunderbolt::usbBusPower_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("reported as numbers") << QByteArray(R"json({"bus_power": 900, "bus_power_used": 0})json")
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
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("shown");

    QTest::newRow("first bus") << QByteArray("thunderbolt_bus_0") << u"Bus Thunderbolt 1"_s;
    QTest::newRow("USB4 bus") << QByteArray("thunderboltusb4_bus_1") << u"Bus Thunderbolt / USB4 2"_s;
    QTest::newRow("two-digit bus") << QByteArray("thunderbolt_bus_10") << u"Bus Thunderbolt 11"_s;
    QTest::newRow("capitals") << QByteArray("ThunderboltUSB4_Bus_3") << u"Bus Thunderbolt / USB4 4"_s;
    QTest::newRow("trailing underscore") << QByteArray("thunderbolt_bus_0_") << u"Bus Thunderbolt 1"_s;
    QTest::newRow("no bus number") << QByteArray("thunderbolt_bus") << u"Bus Thunderbolt"_s;
    QTest::newRow("number with letters") << QByteArray("thunderbolt_bus_2b") << u"Bus Thunderbolt"_s;
    QTest::newRow("no underscore") << QByteArray("thunderbolt") << u"Bus Thunderbolt"_s;
    QTest::newRow("device name") << QByteArray("TS3 Plus") << u"TS3 Plus"_s;
    QTest::newRow("word further in") << QByteArray("OWC thunderbolt_dock_1") << u"OWC thunderbolt_dock_1"_s;
    QTest::newRow("empty name") << QByteArray() << u"Sans nom"_s;
}

void TestDisplayUsbThunderbolt::thunderboltName()
{
    QFETCH(QByteArray, name);
    const QByteArray entry = R"json({"_name": ")json" + name + "\"}";
    QTEST(onlyNode(InventoryService::thunderbolt, thunderboltType, entry).name, "shown");
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
    QTest::addColumn<QStringList>("description");

    QTest::newRow("port in use") << QByteArray(R"json({"current_speed_key": "40 Gb/s", "link_status_key": "0x2",
        "receptacle_id_key": "2", "receptacle_status_key": "receptacle_device_connected"})json")
        << QStringList{u"Port 2 | 40 Gb/s | bolt.horizontal.circle | connected"_s, u"  Débit maximal = 40 Gb/s"_s,
                       u"  État = Appareil connecté"_s, u"  État du lien = 0x2"_s};
    QTest::newRow("port without state or number") << QByteArray(R"json({"current_speed_key": "up to 10 Gb/s"})json")
        << QStringList{u"Port  | up to 10 Gb/s | bolt.horizontal.circle | disconnected"_s,
                       u"  Débit maximal = up to 10 Gb/s"_s};
    QTest::newRow("any state naming no devices is free") << QByteArray(R"json({"receptacle_id_key": "3",
        "receptacle_status_key": "spthunderbolt_no_devices"})json")
        << QStringList{u"Port 3 | - | bolt.horizontal.circle | disconnected"_s, u"  État = Devices"_s};
    QTest::newRow("every occurrence of the speed wording") << QByteArray(R"json({"receptacle_id_key": "4",
        "current_speed_key": "Up to 40 Gb/s, Up to 80 Gb/s", "receptacle_status_key": "receptacle_connected"})json")
        << QStringList{u"Port 4 | Jusqu'à 40 Gb/s, Jusqu'à 80 Gb/s | bolt.horizontal.circle | connected"_s,
                       u"  Débit maximal = Jusqu'à 40 Gb/s, Jusqu'à 80 Gb/s"_s, u"  État = receptacle_connected"_s};
}

void TestDisplayUsbThunderbolt::thunderboltPort()
{
    QFETCH(QByteArray, port);
    const DeviceNode bus = onlyNode(InventoryService::thunderbolt, thunderboltType, R"json({"receptacle_1_tag": )json" + port + "}");
    QTEST(describeTree(bus.children), "description");
}

void TestDisplayUsbThunderbolt::thunderboltVendor_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("vendor dictionary with a name") << QByteArray(R"json({"_name": "Studio Display",
        "device_serial_number_key": "C02XYZ", "device_firmware_version_key": "1.2",
        "vendor_name_key": {"_name": "Apple Inc.", "vendor_id_key": "0x1"}})json")
        << QStringList{u"Fabricant = Apple Inc."_s, u"Firmware = 1.2"_s, u"Numéro de série = C02XYZ"_s};
    QTest::newRow("vendor dictionary without a name") << QByteArray(R"json({"vendor_name_key": {"vendor_id_key": "0x1"},
        "device_name_key": "Dock"})json") << QStringList{u"Appareil = Dock"_s};
}

void TestDisplayUsbThunderbolt::thunderboltVendor()
{
    QFETCH(QByteArray, entry);
    QTEST(rowTexts(onlyNode(InventoryService::thunderbolt, thunderboltType, entry).rows), "rows");
}

// The sample Mac: the built-in Liquid Retina XDR panel and an LG monitor on HDMI.
void TestDisplayUsbThunderbolt::sampleDisplays()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::displays(*platform);
    QVERIFY(result.ok());
    QCOMPARE(describeTree(result.value()),
             (QStringList{
                 u"Apple M1 Pro | 2 écrans | cpu | neutral"_s,
                 u"  Modèle = Apple M1 Pro"_s,
                 u"  Fabricant = Apple"_s,
                 u"  Cœurs graphiques = 16"_s,
                 u"  Bus = Intégré"_s,
                 u"  Metal = Metal 3"_s,
                 u"    Color LCD | 1512 x 982 @ 120.00Hz | display | connected"_s,
                 u"      Résolution = 1512 x 982 @ 120.00Hz"_s,
                 u"      Définition native = 3024 x 1964"_s,
                 u"      Type = Liquid Retina XDR intégré"_s,
                 u"      Connexion = Interne"_s,
                 u"      Écran principal = Oui"_s,
                 u"      Recopie vidéo = Désactivée"_s,
                 u"      Identifiant fabricant = 610"_s,
                 u"      Identifiant produit = a04e"_s,
                 u"      Numéro de série = fd626d62"_s,
                 u"    LG HDR 4K | 1920 x 1080 @ 60.00Hz | display.2 | connected"_s,
                 u"      Résolution = 1920 x 1080 @ 60.00Hz"_s,
                 u"      Définition native = 3840 x 2160"_s,
                 u"      Écran principal = Non"_s,
                 u"      Recopie vidéo = Désactivée"_s,
                 u"      Identifiant fabricant = 1e6d"_s,
                 u"      Identifiant produit = 7750"_s,
                 u"      Numéro de série = 2f4e1b03"_s,
             }));
}

// The sample Mac: three empty buses and a CalDigit dock's controller with two hubs, a
// Logitech receiver and a Samsung T7.
void TestDisplayUsbThunderbolt::sampleUsb()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::usb(*platform);
    QVERIFY(result.ok());
    const QStringList emptyBus{u"USB31Bus | - | cable.connector.horizontal | neutral"_s,
                               u"  Contrôleur = AppleT6000USBXHCI"_s};
    const QStringList expected = emptyBus + emptyBus + emptyBus
                 + QStringList{
                     u"USB30Bus | - | cable.connector.horizontal | neutral"_s,
                     u"  Contrôleur = AppleUSBXHCIFL1100"_s,
                     u"    USB2.1 Hub | Generic | cable.connector.horizontal | neutral"_s,
                     u"      Fabricant = Generic"_s,
                     u"      Vitesse = USB 2.0 — 480 Mb/s"_s,
                     u"      Identifiant produit = 0x5411"_s,
                     u"      Identifiant fabricant = 0x0bda  (Realtek Semiconductor Corp.)"_s,
                     u"      Version = 1.17"_s,
                     u"      Alimentation disponible = 500 mA"_s,
                     u"      Alimentation utilisée = 0 mA"_s,
                     u"      Emplacement = 0x03100000 / 2"_s,
                     u"        USB Receiver | Logitech | cable.connector | connected"_s,
                     u"          Fabricant = Logitech"_s,
                     u"          Vitesse = USB 1.1 — 12 Mb/s"_s,
                     u"          Identifiant produit = 0xc52b"_s,
                     u"          Identifiant fabricant = 0x046d  (Logitech Inc.)"_s,
                     u"          Version = 12.11"_s,
                     u"          Alimentation disponible = 500 mA"_s,
                     u"          Alimentation utilisée = 98 mA"_s,
                     u"          Emplacement = 0x03110000 / 4"_s,
                     u"    USB3.1 Hub | Generic | cable.connector.horizontal | neutral"_s,
                     u"      Fabricant = Generic"_s,
                     u"      Vitesse = USB 3.1+ — 10 Gb/s"_s,
                     u"      Identifiant produit = 0x0411"_s,
                     u"      Identifiant fabricant = 0x0bda  (Realtek Semiconductor Corp.)"_s,
                     u"      Version = 1.17"_s,
                     u"      Alimentation disponible = 900 mA"_s,
                     u"      Alimentation utilisée = 0 mA"_s,
                     u"      Emplacement = 0x03200000 / 3"_s,
                     u"        PSSD T7 | Samsung | cable.connector | connected"_s,
                     u"          Fabricant = Samsung"_s,
                     u"          Vitesse = USB 3.1+ — 10 Gb/s"_s,
                     u"          Identifiant produit = 0x4001"_s,
                     u"          Identifiant fabricant = 0x04e8  (Samsung Electronics Co., Ltd.)"_s,
                     u"          Numéro de série = S6XBNJ0T812447K"_s,
                     u"          Version = 1.00"_s,
                     u"          Alimentation disponible = 900 mA"_s,
                     u"          Alimentation utilisée = 896 mA"_s,
                     u"          Emplacement = 0x03210000 / 5"_s,
                 };
    QCOMPARE(describeTree(result.value()), expected);
}

// The sample Mac: three USB4 buses, the CalDigit dock on the second one. The dock's
// upstream port has no number, and its state word is not one the vocabulary knows.
void TestDisplayUsbThunderbolt::sampleThunderbolt()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::thunderbolt(*platform);
    QVERIFY(result.ok());
    const auto bus = [](const QString &name, const QString &uid) {
        return QStringList{name + u" | MacBook Pro | bolt.horizontal | neutral"_s, u"  Fabricant = Apple Inc."_s,
                           u"  Appareil = MacBook Pro"_s, u"  Identifiant du contrôleur = "_s + uid};
    };
    const auto freePort = [](const QString &name) {
        return QStringList{u"    "_s + name + u" | Jusqu'à 40 Gb/s | bolt.horizontal.circle | disconnected"_s,
                           u"      Débit maximal = Jusqu'à 40 Gb/s"_s, u"      État = Aucun appareil connecté"_s,
                           u"      État du lien = 0x100"_s};
    };
    const QStringList expected =
             bus(u"Bus Thunderbolt / USB4 3"_s, u"0x05AC3F2B6D1E9A42"_s) + freePort(u"Port 3"_s)
                 + bus(u"Bus Thunderbolt / USB4 2"_s, u"0x05AC3F2B6D1E9A41"_s)
                 + QStringList{
                     u"    TS3 Plus | TS3 Plus | bolt.horizontal | neutral"_s,
                     u"      Fabricant = CalDigit, Inc."_s,
                     u"      Appareil = TS3 Plus"_s,
                     u"      Identifiant du contrôleur = 0x003D4E7A19C26F00"_s,
                     u"        Port  | 40 Gb/s | bolt.horizontal.circle | connected"_s,
                     u"          Débit maximal = 40 Gb/s"_s,
                     u"          État = receptacle_connected"_s,
                     u"          État du lien = 0x2"_s,
                     u"    Port 2 | 40 Gb/s | bolt.horizontal.circle | connected"_s,
                     u"      Débit maximal = 40 Gb/s"_s,
                     u"      État = receptacle_connected"_s,
                     u"      État du lien = 0x2"_s,
                 }
                 + bus(u"Bus Thunderbolt / USB4 1"_s, u"0x05AC3F2B6D1E9A40"_s) + freePort(u"Port 1"_s);
    QCOMPARE(describeTree(result.value()), expected);
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
