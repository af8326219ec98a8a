#include "collectors/inventory_service.h"
#include "common/test_main.h"
#include "inventory_fakes.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString bluetoothType = u"SPBluetoothDataType"_s;
const QString networkType = u"SPNetworkDataType"_s;
const QString audioType = u"SPAudioDataType"_s;
const QString cameraType = u"SPCameraDataType"_s;

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

DeviceNode onlyNode(Operation operation, const QString &dataType, const QByteArray &itemJson)
{
    const QList<DeviceNode> nodes = nodesOf(operation, dataType, itemJson);
    return nodes.size() == 1 ? nodes.first() : DeviceNode();
}

// Each node as "name (status)", the way a technician reads the list.
QStringList namesAndStatus(const QList<DeviceNode> &nodes)
{
    static const char *const statusNames[] = {"connected", "disconnected", "warning", "neutral"};
    QStringList out;
    for (const DeviceNode &node : nodes)
        out.append(node.name + u" ("_s + QLatin1StringView(statusNames[int(node.status)]) + u')');
    return out;
}

// One Bluetooth device, connected, with these properties.
DeviceNode onlyBluetoothDevice(const QByteArray &properties)
{
    return onlyNode(InventoryService::bluetooth, bluetoothType,
                    R"json({"device_connected": [{"Appareil": )json" + properties + "}]}");
}

// One audio device in the usual single entry.
DeviceNode onlyAudioDevice(const QByteArray &device)
{
    return onlyNode(InventoryService::audio, audioType, R"json({"_name": "coreaudio_device", "_items": [)json" + device + "]}");
}

} // namespace

class TestBluetoothNetworkAudioCamera : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bluetoothList_data();
    void bluetoothList();
    void bluetoothSort_data();
    void bluetoothSort();
    void bluetoothBattery_data();
    void bluetoothBattery();
    void bluetoothDeviceType_data();
    void bluetoothDeviceType();
    void bluetoothDeviceRows();
    void networkService_data();
    void networkService();
    void networkRowsInOrder();
    void audioDevice_data();
    void audioDevice();
    void audioEntries_data();
    void audioEntries();
    void camera_data();
    void camera();
    void sampleBluetooth();
    void sampleNetwork();
    void sampleAudio();
    void sampleCamera();
    void failingCapture();
};

void TestBluetoothNetworkAudioCamera::bluetoothList_data()
{
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QStringList>("nodes");

    QTest::newRow("controller, then connected, then the others") << QByteArray(R"json({
        "device_not_connected": [{"Clavier": {}}],
        "device_title": [{"Ancien": {}}],
        "device_connected": [{"Souris": {}}],
        "controller_properties": {"controller_chipset": "BCM_4387"}})json")
        << QStringList{u"Contrôleur Bluetooth (neutral)"_s, u"Souris (connected)"_s, u"Clavier (disconnected)"_s,
                       u"Ancien (disconnected)"_s};
    QTest::newRow("devices without controller") << QByteArray(R"json({"device_connected": [{"AirPods": {}}]})json")
                                                << QStringList{u"AirPods (connected)"_s};
    QTest::newRow("controller alone") << QByteArray(R"json({"controller_properties": {}})json")
                                      << QStringList{u"Contrôleur Bluetooth (neutral)"_s};
    QTest::newRow("controller that is not a dictionary") << QByteArray(R"json({"controller_properties": "BCM_4387",
        "device_connected": [{"AirPods": {}}]})json") << QStringList{u"AirPods (connected)"_s};
    QTest::newRow("second entry ignored") << QByteArray(R"json({"device_connected": [{"Souris": {}}]},
        {"controller_properties": {}, "device_connected": [{"Casque": {}}]})json")
        << QStringList{u"Souris (connected)"_s};
    QTest::newRow("several devices in one dictionary") << QByteArray(R"json({"device_not_connected": [
        {"Clavier": {}, "Trackpad": {}}, {"Enceinte": {}}]})json")
        << QStringList{u"Clavier (disconnected)"_s, u"Enceinte (disconnected)"_s, u"Trackpad (disconnected)"_s};
    QTest::newRow("device whose properties are not a dictionary") << QByteArray(R"json({"device_connected": [
        {"Souris": "connectée", "Clavier": {}}]})json") << QStringList{u"Clavier (connected)"_s};
    QTest::newRow("group that is a dictionary") << QByteArray(R"json({"device_connected": {"Souris": {}}})json")
                                                << QStringList();
    QTest::newRow("group holding a text") << QByteArray(R"json({"device_connected": [{"Souris": {}}, "Clavier"]})json")
                                          << QStringList();
    QTest::newRow("empty report") << QByteArray() << QStringList();
}

void TestBluetoothNetworkAudioCamera::bluetoothList()
{
    QFETCH(QByteArray, items);
    QTEST(namesAndStatus(nodesOf(InventoryService::bluetooth, bluetoothType, items)), "nodes");
}

void TestBluetoothNetworkAudioCamera::bluetoothSort_data()
{
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QStringList>("names");

    QTest::newRow("case does not count") << QByteArray(R"json({"device_connected": [{"zèbre": {}}, {"Alpha": {}},
        {"beta": {}}, {"Gamma": {}}]})json") << QStringList{u"Alpha"_s, u"beta"_s, u"Gamma"_s, u"zèbre"_s};
    QTest::newRow("accents sort with their letter") << QByteArray(R"json({"device_connected": [{"Enceinte": {}},
        {"Écouteurs": {}}, {"Casque": {}}, {"Ecran": {}}]})json")
        << QStringList{u"Casque"_s, u"Écouteurs"_s, u"Ecran"_s, u"Enceinte"_s};
    QTest::newRow("connected devices stay ahead") << QByteArray(R"json({"device_connected": [{"Zed": {}}, {"mouse": {}}],
        "device_not_connected": [{"Aaron": {}}, {"keyboard": {}}]})json")
        << QStringList{u"mouse"_s, u"Zed"_s, u"Aaron"_s, u"keyboard"_s};
    QTest::newRow("each group sorted by itself") << QByteArray(R"json({"device_title": [{"b": {}}, {"A": {}}],
        "device_not_connected": [{"D": {}}, {"c": {}}]})json") << QStringList{u"c"_s, u"D"_s, u"A"_s, u"b"_s};
}

void TestBluetoothNetworkAudioCamera::bluetoothSort()
{
    QFETCH(QByteArray, items);
    QTEST(names(nodesOf(InventoryService::bluetooth, bluetoothType, items)), "names");
}

void TestBluetoothNetworkAudioCamera::bluetoothBattery_data()
{
    QTest::addColumn<QByteArray>("properties");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("earbuds with their case") << QByteArray(R"json({"device_batteryLevelCase": "95 %",
        "device_batteryLevelRight": "75 %", "device_batteryLevelLeft": "80 %", "device_batteryLevelMain": "100 %"})json")
        << QStringList{u"Batterie = 100 % · G 80 % · D 75 % · Boîtier 95 %"_s};
    QTest::newRow("one level") << QByteArray(R"json({"device_batteryLevelMain": "64 %"})json")
                               << QStringList{u"Batterie = 64 %"_s};
    QTest::newRow("buds without case") << QByteArray(R"json({"device_batteryLevelLeft": "10 %",
        "device_batteryLevelRight": "20 %"})json") << QStringList{u"Batterie = G 10 % · D 20 %"_s};
    QTest::newRow("case alone") << QByteArray(R"json({"device_batteryLevelCase": "50 %"})json")
                                << QStringList{u"Batterie = Boîtier 50 %"_s};
    QTest::newRow("level as a number") << QByteArray(R"json({"device_batteryLevelMain": 64})json")
                                       << QStringList{u"Batterie = 64"_s};
    QTest::newRow("empty levels") << QByteArray(R"json({"device_batteryLevelMain": "",
        "device_batteryLevelLeft": ""})json") << QStringList();
}

void TestBluetoothNetworkAudioCamera::bluetoothBattery()
{
    QFETCH(QByteArray, properties);
    QTEST(rowTexts(onlyBluetoothDevice(properties).rows), "rows");
}

void TestBluetoothNetworkAudioCamera::bluetoothDeviceType_data()
{
    QTest::addColumn<QByteArray>("properties");
    QTest::addColumn<std::optional<QString>>("subtitle");
    QTest::addColumn<QString>("symbol");

    QTest::newRow("headphones") << QByteArray(R"json({"device_minorType": "Headphones"})json")
                                << std::optional(u"Headphones"_s) << u"headphones"_s;
    QTest::newRow("headset") << QByteArray(R"json({"device_minorType": "Headset"})json")
                             << std::optional(u"Headset"_s) << u"headphones"_s;
    QTest::newRow("keyboard") << QByteArray(R"json({"device_minorType": "Keyboard"})json")
                              << std::optional(u"Keyboard"_s) << u"keyboard"_s;
    QTest::newRow("mouse") << QByteArray(R"json({"device_minorType": "Mouse"})json") << std::optional(u"Mouse"_s)
                           << u"computermouse"_s;
    QTest::newRow("loudspeaker") << QByteArray(R"json({"device_minorType": "Loudspeaker"})json")
                                 << std::optional(u"Loudspeaker"_s) << u"hifispeaker"_s;
    QTest::newRow("smartphone") << QByteArray(R"json({"device_minorType": "Smartphone"})json")
                                << std::optional(u"Smartphone"_s) << u"iphone"_s;
    QTest::newRow("phone in capitals") << QByteArray(R"json({"device_minorType": "PHONE"})json")
                                       << std::optional(u"PHONE"_s) << u"iphone"_s;
    QTest::newRow("keyboard and mouse combo") << QByteArray(R"json({"device_minorType": "Keyboard/Mouse Combo"})json")
                                              << std::optional(u"Keyboard/Mouse Combo"_s) << u"keyboard"_s;
    QTest::newRow("gamepad") << QByteArray(R"json({"device_minorType": "Gamepad"})json") << std::optional(u"Gamepad"_s)
                             << u"dot.radiowaves.right"_s;
    QTest::newRow("major type names but does not pick the icon") << QByteArray(R"json({
        "device_majorType": "Headphones"})json") << std::optional(u"Headphones"_s) << u"dot.radiowaves.right"_s;
    QTest::newRow("minor type comes before major") << QByteArray(R"json({"device_majorType": "Peripheral",
        "device_minorType": "Mouse"})json") << std::optional(u"Mouse"_s) << u"computermouse"_s;
    QTest::newRow("no type") << QByteArray(R"json({})json") << std::optional<QString>() << u"dot.radiowaves.right"_s;
}

void TestBluetoothNetworkAudioCamera::bluetoothDeviceType()
{
    QFETCH(QByteArray, properties);
    const DeviceNode node = onlyBluetoothDevice(properties);
    QTEST(node.subtitle, "subtitle");
    QTEST(node.symbol, "symbol");
}

void TestBluetoothNetworkAudioCamera::bluetoothDeviceRows()
{
    const DeviceNode node = onlyBluetoothDevice(R"json({"device_RSSI": -52, "device_productID": "0x0269",
        "device_vendorID": "0x004C", "device_firmwareVersion": "0x0400", "device_batteryLevelMain": "64 %",
        "device_address": "D0:C0:50:2B:94:E7", "device_minorType": "Mouse", "device_services": "0x400020 < HID ACL >"})json");
    QCOMPARE(node.name, u"Appareil"_s);
    QCOMPARE(rowTexts(node.rows),
             (QStringList{u"Type = Mouse"_s, u"Adresse = D0:C0:50:2B:94:E7"_s, u"Batterie = 64 %"_s,
                          u"Firmware = 0x0400"_s, u"Identifiant fabricant = 0x004C"_s,
                          u"Identifiant produit = 0x0269"_s, u"Puissance du signal = -52 dBm"_s}));
}

void TestBluetoothNetworkAudioCamera::networkService_data()
{
    QTest::addColumn<QByteArray>("service");
    QTest::addColumn<std::optional<QString>>("subtitle");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<DeviceStatus>("status");
    QTest::addColumn<QString>("typeRow");

    QTest::newRow("Wi-Fi with an address") << QByteArray(R"json({"_name": "Wi-Fi", "type": "AirPort",
        "hardware": "AirPort", "IPv4": {"Addresses": ["192.168.1.34"]}})json")
        << std::optional(u"192.168.1.34"_s) << u"wifi"_s << DeviceStatus::connected << u"Wi-Fi"_s;
    QTest::newRow("Wi-Fi without an address shows the raw type") << QByteArray(R"json({"_name": "Wi-Fi",
        "type": "AirPort", "hardware": "AirPort", "IPv4": {"ConfigMethod": "DHCP"}})json")
        << std::optional(u"AirPort"_s) << u"wifi"_s << DeviceStatus::disconnected << u"Wi-Fi"_s;
    QTest::newRow("type already called Wi-Fi") << QByteArray(R"json({"type": "WI-FI"})json")
        << std::optional(u"WI-FI"_s) << u"wifi"_s << DeviceStatus::disconnected << u"WI-FI"_s;
    QTest::newRow("Ethernet with two addresses") << QByteArray(R"json({"type": "Ethernet", "hardware": "Ethernet",
        "IPv4": {"Addresses": ["10.0.0.2", "10.0.0.3"]}})json")
        << std::optional(u"10.0.0.2, 10.0.0.3"_s) << u"cable.connector"_s << DeviceStatus::connected << u"Ethernet"_s;
    QTest::newRow("USB adapter known by its hardware") << QByteArray(R"json({"type": "USB 10/100/1000 LAN",
        "hardware": "Ethernet"})json")
        << std::optional(u"USB 10/100/1000 LAN"_s) << u"cable.connector"_s << DeviceStatus::disconnected
        << u"USB 10/100/1000 LAN"_s;
    QTest::newRow("Bluetooth modem") << QByteArray(R"json({"type": "Bluetooth DUN", "hardware": "Modem"})json")
        << std::optional(u"Bluetooth DUN"_s) << u"dot.radiowaves.right"_s << DeviceStatus::disconnected
        << u"Bluetooth DUN"_s;
    QTest::newRow("PPP link") << QByteArray(R"json({"type": "PPP", "hardware": "Serial"})json")
        << std::optional(u"PPP"_s) << u"antenna.radiowaves.left.and.right"_s << DeviceStatus::disconnected << u"PPP"_s;
    QTest::newRow("VPN") << QByteArray(R"json({"type": "VPN (IKEv2)", "IPv4": {"Addresses": "10.8.0.6"}})json")
        << std::optional(u"10.8.0.6"_s) << u"network"_s << DeviceStatus::connected << u"VPN (IKEv2)"_s;
    QTest::newRow("empty address list") << QByteArray(R"json({"type": "Ethernet", "IPv4": {"Addresses": []}})json")
        << std::optional(u"Ethernet"_s) << u"cable.connector"_s << DeviceStatus::disconnected << u"Ethernet"_s;
    QTest::newRow("IPv4 that is not a dictionary") << QByteArray(R"json({"type": "Ethernet",
        "IPv4": ["192.168.1.2"]})json")
        << std::optional(u"Ethernet"_s) << u"cable.connector"_s << DeviceStatus::disconnected << u"Ethernet"_s;
    QTest::newRow("nothing known") << QByteArray(R"json({})json") << std::optional<QString>() << u"network"_s
                                   << DeviceStatus::disconnected << QString();
}

void TestBluetoothNetworkAudioCamera::networkService()
{
    QFETCH(QByteArray, service);
    const DeviceNode node = onlyNode(InventoryService::network, networkType, service);
    QTEST(node.subtitle, "subtitle");
    QTEST(node.symbol, "symbol");
    QTEST(node.status, "status");
    QString typeRow;
    for (const InfoRow &row : node.rows) {
        if (row.label == u"Type"_s)
            typeRow = row.value;
    }
    QTEST(typeRow, "typeRow");
}

void TestBluetoothNetworkAudioCamera::networkRowsInOrder()
{
    const DeviceNode node = onlyNode(InventoryService::network, networkType, R"json({
        "spnetwork_service_order": 0, "DNS": {"ServerAddresses": ["192.168.1.254", "2a01:e0a::1"]},
        "Ethernet": {"MAC Address": "4a:1e:c7:35:92:d0"}, "IPv6": {"Addresses": ["2a01:e0a:2c4::4d60"]},
        "IPv4": {"ConfigMethod": "DHCP", "Router": "192.168.1.254", "SubnetMasks": ["255.255.255.0"],
                 "Addresses": ["192.168.1.34"]},
        "hardware": "AirPort", "interface": "en0", "type": "AirPort"})json");
    QCOMPARE(node.name, u"Sans nom"_s);
    QCOMPARE(rowTexts(node.rows),
             (QStringList{u"Type = Wi-Fi"_s, u"Interface = en0"_s, u"Matériel = Wi-Fi"_s,
                          u"Adresse IPv4 = 192.168.1.34"_s, u"Masque de sous-réseau = 255.255.255.0"_s,
                          u"Routeur = 192.168.1.254"_s, u"Configuration = DHCP"_s,
                          u"Adresse IPv6 = 2a01:e0a:2c4::4d60"_s, u"Adresse MAC = 4a:1e:c7:35:92:d0"_s,
                          u"Serveurs DNS = 192.168.1.254, 2a01:e0a::1"_s, u"Ordre du service = 0"_s}));
}

void TestBluetoothNetworkAudioCamera::audioDevice_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<std::optional<QString>>("subtitle");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<DeviceStatus>("status");
    QTest::addColumn<bool>("isBuiltIn");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("monitor speakers without a role") << QByteArray(R"json({"_name": "LG HDR 4K",
        "coreaudio_device_manufacturer": "LG Electronics", "coreaudio_device_output": 2, "coreaudio_device_srate": 48000,
        "coreaudio_device_transport": "coreaudio_device_type_hdmi", "coreaudio_output_source": "spaudio_default"})json")
        << std::optional(u"HDMI"_s) << u"speaker.wave.2"_s << DeviceStatus::neutral << false
        << QStringList{u"Fabricant = LG Electronics"_s, u"Connexion = HDMI"_s,
                       u"Fréquence d'échantillonnage = 48000 Hz"_s, u"Canaux de sortie = 2"_s,
                       u"Source de sortie = Par défaut"_s};
    QTest::newRow("built-in microphone, default input") << QByteArray(R"json({"_name": "Micro MacBook Pro",
        "coreaudio_default_audio_input_device": "spaudio_yes", "coreaudio_device_input": 1,
        "coreaudio_device_transport": "coreaudio_device_type_builtin", "coreaudio_input_source": "Micro MacBook Pro"})json")
        << std::optional(u"entrée par défaut"_s) << u"mic"_s << DeviceStatus::connected << true
        << QStringList{u"Connexion = Intégré"_s, u"Canaux d'entrée = 1"_s, u"Source d'entrée = Micro MacBook Pro"_s};
    QTest::newRow("headset, default output and input") << QByteArray(R"json({"_name": "Casque",
        "coreaudio_default_audio_input_device": "spaudio_yes", "coreaudio_default_audio_output_device": "spaudio_yes",
        "coreaudio_device_input": 1, "coreaudio_device_output": 2,
        "coreaudio_device_transport": "coreaudio_device_type_usb"})json")
        << std::optional(u"sortie par défaut · entrée par défaut"_s) << u"speaker.wave.2"_s << DeviceStatus::connected
        << false << QStringList{u"Connexion = USB"_s, u"Canaux d'entrée = 1"_s, u"Canaux de sortie = 2"_s};
    QTest::newRow("system sound device is not a role") << QByteArray(R"json({"_name": "Haut-parleurs",
        "coreaudio_default_audio_system_device": "spaudio_yes", "coreaudio_device_output": 2,
        "coreaudio_device_transport": "coreaudio_device_type_builtin"})json")
        << std::optional(u"Intégré"_s) << u"speaker.wave.2"_s << DeviceStatus::neutral << true
        << QStringList{u"Connexion = Intégré"_s, u"Canaux de sortie = 2"_s};
    QTest::newRow("default flag written yes is not a role") << QByteArray(R"json({"_name": "Casque",
        "coreaudio_default_audio_output_device": "yes", "coreaudio_device_transport": "coreaudio_device_type_virtual"})json")
        << std::optional(u"Virtuel"_s) << u"mic"_s << DeviceStatus::neutral << false
        << QStringList{u"Connexion = Virtuel"_s};
    QTest::newRow("channels and rate written as text, fractional rate") << QByteArray(R"json({"_name": "Interface",
        "coreaudio_device_output": "8", "coreaudio_device_input": "2.5", "coreaudio_device_srate": 44100.9})json")
        << std::optional<QString>() << u"speaker.wave.2"_s << DeviceStatus::neutral << false
        << QStringList{u"Fréquence d'échantillonnage = 44100 Hz"_s, u"Canaux d'entrée = 2"_s, u"Canaux de sortie = 8"_s};
    QTest::newRow("no output channels") << QByteArray(R"json({"_name": "Micro", "coreaudio_device_output": 0,
        "coreaudio_device_input": 0})json")
        << std::optional<QString>() << u"mic"_s << DeviceStatus::neutral << false << QStringList();
    QTest::newRow("unknown transport") << QByteArray(R"json({"_name": "Dock",
        "coreaudio_device_transport": "coreaudio_device_type_thunderbolt"})json")
        << std::optional(u"Thunderbolt"_s) << u"mic"_s << DeviceStatus::neutral << false
        << QStringList{u"Connexion = Thunderbolt"_s};
    QTest::newRow("no name") << QByteArray(R"json({})json") << std::optional<QString>() << u"mic"_s
                             << DeviceStatus::neutral << false << QStringList();
}

void TestBluetoothNetworkAudioCamera::audioDevice()
{
    QFETCH(QByteArray, device);
    const DeviceNode node = onlyAudioDevice(device);
    QTEST(node.subtitle, "subtitle");
    QTEST(node.symbol, "symbol");
    QTEST(node.status, "status");
    QTEST(node.isBuiltIn, "isBuiltIn");
    QTEST(rowTexts(node.rows), "rows");
    QVERIFY(node.children.isEmpty());
}

void TestBluetoothNetworkAudioCamera::audioEntries_data()
{
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QStringList>("names");

    QTest::newRow("devices of every entry in report order") << QByteArray(R"json(
        {"_name": "coreaudio_device", "_items": [{"_name": "Micro"}, {"_name": "Haut-parleurs"}]},
        {"_name": "coreaudio_device", "_items": [{"_name": "AirPods"}]})json")
        << QStringList{u"Micro"_s, u"Haut-parleurs"_s, u"AirPods"_s};
    QTest::newRow("entry without devices") << QByteArray(R"json({"_name": "coreaudio_device"},
        {"_items": [{"_name": "Micro"}]})json") << QStringList{u"Micro"_s};
    QTest::newRow("devices that are not a list") << QByteArray(R"json({"_items": {"_name": "Micro"}})json")
                                                 << QStringList();
    QTest::newRow("empty report") << QByteArray() << QStringList();
}

void TestBluetoothNetworkAudioCamera::audioEntries()
{
    QFETCH(QByteArray, items);
    QTEST(names(nodesOf(InventoryService::audio, audioType, items)), "names");
}

void TestBluetoothNetworkAudioCamera::camera_data()
{
    QTest::addColumn<QByteArray>("camera");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("built-in camera") << QByteArray(R"json({"_name": "FaceTime HD Camera",
        "spcamera_unique-id": "3F8A1C6E", "spcamera_model-id": "UVC Camera VendorID_1452 ProductID_34068"})json")
        << u"FaceTime HD Camera"_s
        << QStringList{u"Identifiant du modèle = UVC Camera VendorID_1452 ProductID_34068"_s,
                       u"Identifiant unique = 3F8A1C6E"_s};
    QTest::newRow("camera without name") << QByteArray(R"json({"spcamera_unique-id": "3F8A1C6E"})json")
                                         << u"Sans nom"_s << QStringList{u"Identifiant unique = 3F8A1C6E"_s};
}

void TestBluetoothNetworkAudioCamera::camera()
{
    QFETCH(QByteArray, camera);
    const DeviceNode node = onlyNode(InventoryService::cameras, cameraType, camera);
    QTEST(node.name, "name");
    QTEST(rowTexts(node.rows), "rows");
    QCOMPARE(node.subtitle, std::nullopt);
    QCOMPARE(node.symbol, u"camera"_s);
    QCOMPARE(node.status, DeviceStatus::connected);
}

// The sample Mac: AirPods Pro and a Magic Mouse connected, three devices paired earlier.
void TestBluetoothNetworkAudioCamera::sampleBluetooth()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::bluetooth(*platform);
    QVERIFY(result.ok());
    const QList<DeviceNode> &nodes = result.value();
    QCOMPARE(namesAndStatus(nodes),
             (QStringList{u"Contrôleur Bluetooth (neutral)"_s, u"AirPods Pro de Claire (connected)"_s,
                          u"Magic Mouse (connected)"_s, u"iPhone de Claire (disconnected)"_s,
                          u"JBL Flip 5 (disconnected)"_s, u"Magic Keyboard (disconnected)"_s}));

    const DeviceNode &controller = nodes.at(0);
    QCOMPARE(controller.subtitle, u"BCM_4387"_s);
    QCOMPARE(controller.symbol, u"dot.radiowaves.left.and.right"_s);
    QCOMPARE(rowTexts(controller.rows),
             (QStringList{u"Adresse = F4:D4:88:6A:3C:15"_s, u"Chipset = BCM_4387"_s, u"État = Activé"_s,
                          u"Détectable = Désactivé"_s, u"Firmware = 22.5.541.3200"_s,
                          u"Fabricant = 0x004C (Apple)"_s,
                          u"Services pris en charge = 0x392039 < HFP AVRCP A2DP HID Braille LEA AACP GATT SerialPort >"_s}));

    const DeviceNode &airPods = nodes.at(1);
    QCOMPARE(airPods.subtitle, u"Headphones"_s);
    QCOMPARE(airPods.symbol, u"headphones"_s);
    QCOMPARE(rowTexts(airPods.rows),
             (QStringList{u"Type = Headphones"_s, u"Adresse = 9C:3E:53:A1:7F:08"_s,
                          u"Batterie = G 80\u202F% · D 75\u202F% · Boîtier 95\u202F%"_s, u"Firmware = 7A305"_s,
                          u"Identifiant fabricant = 0x004C"_s, u"Identifiant produit = 0x2014"_s}));

    // The mouse writes its signal strength under "device_rssi", a key the list does not read.
    const DeviceNode &mouse = nodes.at(2);
    QCOMPARE(mouse.symbol, u"computermouse"_s);
    QCOMPARE(rowTexts(mouse.rows),
             (QStringList{u"Type = Mouse"_s, u"Adresse = D0:C0:50:2B:94:E7"_s, u"Batterie = 64\u202F%"_s,
                          u"Firmware = 0x0400"_s, u"Identifiant fabricant = 0x004C"_s,
                          u"Identifiant produit = 0x0269"_s}));

    QCOMPARE(nodes.at(3).symbol, u"iphone"_s);
    QCOMPARE(rowTexts(nodes.at(3).rows), (QStringList{u"Type = Smartphone"_s, u"Adresse = A8:4A:63:19:D5:B2"_s}));
    QCOMPARE(nodes.at(4).symbol, u"hifispeaker"_s);
    QCOMPARE(nodes.at(5).symbol, u"keyboard"_s);
    QCOMPARE(rowTexts(nodes.at(5).rows),
             (QStringList{u"Type = Keyboard"_s, u"Adresse = F0:18:98:C4:2E:61"_s, u"Identifiant fabricant = 0x004C"_s,
                          u"Identifiant produit = 0x029C"_s}));
}

// The sample Mac: Wi-Fi connected, Thunderbolt Bridge and Bluetooth PAN idle.
void TestBluetoothNetworkAudioCamera::sampleNetwork()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::network(*platform);
    QVERIFY(result.ok());
    const QList<DeviceNode> &services = result.value();
    QCOMPARE(namesAndStatus(services), (QStringList{u"Wi-Fi (connected)"_s, u"Thunderbolt Bridge (disconnected)"_s,
                                                    u"Bluetooth PAN (disconnected)"_s}));

    QCOMPARE(services.at(0).subtitle, u"192.168.1.34"_s);
    QCOMPARE(services.at(0).symbol, u"wifi"_s);
    QCOMPARE(rowTexts(services.at(0).rows),
             (QStringList{u"Type = Wi-Fi"_s, u"Interface = en0"_s, u"Matériel = Wi-Fi"_s,
                          u"Adresse IPv4 = 192.168.1.34"_s, u"Masque de sous-réseau = 255.255.255.0"_s,
                          u"Routeur = 192.168.1.254"_s, u"Configuration = DHCP"_s,
                          u"Adresse IPv6 = 2a01:e0a:2c4:9f80:1c3b:7e2f:a915:4d60"_s,
                          u"Adresse MAC = 4a:1e:c7:35:92:d0"_s,
                          u"Serveurs DNS = 192.168.1.254, 2a01:e0a:2c4:9f80::1"_s, u"Ordre du service = 0"_s}));

    QCOMPARE(services.at(1).subtitle, u"Ethernet"_s);
    QCOMPARE(services.at(1).symbol, u"cable.connector"_s);
    QCOMPARE(rowTexts(services.at(1).rows),
             (QStringList{u"Type = Ethernet"_s, u"Interface = bridge0"_s, u"Matériel = Ethernet"_s,
                          u"Configuration = DHCP"_s, u"Ordre du service = 1"_s}));
    // The service's name says Bluetooth but its type and hardware say Ethernet.
    QCOMPARE(services.at(2).symbol, u"cable.connector"_s);
    QCOMPARE(rowTexts(services.at(2).rows),
             (QStringList{u"Type = Ethernet"_s, u"Interface = en7"_s, u"Matériel = Ethernet"_s,
                          u"Configuration = DHCP"_s, u"Ordre du service = 2"_s}));
}

// The sample Mac: the LG monitor's speakers, AirPods as output, the built-in microphone
// as input and the built-in speakers.
void TestBluetoothNetworkAudioCamera::sampleAudio()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::audio(*platform);
    QVERIFY(result.ok());
    const QList<DeviceNode> &devices = result.value();
    QCOMPARE(namesAndStatus(devices),
             (QStringList{u"LG HDR 4K (neutral)"_s, u"AirPods Pro de Claire (connected)"_s,
                          u"Micro MacBook Pro (connected)"_s, u"Haut-parleurs MacBook Pro (neutral)"_s}));

    QCOMPARE(devices.at(0).subtitle, u"HDMI"_s);
    QCOMPARE(devices.at(0).symbol, u"speaker.wave.2"_s);
    QVERIFY(!devices.at(0).isBuiltIn);
    QCOMPARE(rowTexts(devices.at(0).rows),
             (QStringList{u"Fabricant = LG Electronics"_s, u"Connexion = HDMI"_s,
                          u"Fréquence d'échantillonnage = 48000 Hz"_s, u"Canaux de sortie = 2"_s,
                          u"Source de sortie = Par défaut"_s}));

    QCOMPARE(devices.at(1).subtitle, u"sortie par défaut"_s);
    QCOMPARE(devices.at(1).symbol, u"speaker.wave.2"_s);
    QCOMPARE(rowTexts(devices.at(1).rows),
             (QStringList{u"Fabricant = Apple Inc."_s, u"Connexion = Bluetooth"_s,
                          u"Fréquence d'échantillonnage = 48000 Hz"_s, u"Canaux d'entrée = 1"_s,
                          u"Canaux de sortie = 2"_s, u"Source d'entrée = Par défaut"_s,
                          u"Source de sortie = Par défaut"_s}));

    QCOMPARE(devices.at(2).subtitle, u"entrée par défaut"_s);
    QCOMPARE(devices.at(2).symbol, u"mic"_s);
    QVERIFY(devices.at(2).isBuiltIn);
    QCOMPARE(rowTexts(devices.at(2).rows),
             (QStringList{u"Fabricant = Apple Inc."_s, u"Connexion = Intégré"_s,
                          u"Fréquence d'échantillonnage = 48000 Hz"_s, u"Canaux d'entrée = 1"_s,
                          u"Source d'entrée = Micro MacBook Pro"_s}));

    QCOMPARE(devices.at(3).subtitle, u"Intégré"_s);
    QCOMPARE(devices.at(3).symbol, u"speaker.wave.2"_s);
    QVERIFY(devices.at(3).isBuiltIn);
    QCOMPARE(rowTexts(devices.at(3).rows),
             (QStringList{u"Fabricant = Apple Inc."_s, u"Connexion = Intégré"_s,
                          u"Fréquence d'échantillonnage = 48000 Hz"_s, u"Canaux de sortie = 2"_s,
                          u"Source de sortie = Haut-parleurs MacBook Pro"_s}));
}

void TestBluetoothNetworkAudioCamera::sampleCamera()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::cameras(*platform);
    QVERIFY(result.ok());
    QCOMPARE(result.value().size(), 1);
    const DeviceNode &camera = result.value().first();
    QCOMPARE(camera.name, u"Caméra FaceTime HD"_s);
    QCOMPARE(camera.status, DeviceStatus::connected);
    QCOMPARE(rowTexts(camera.rows), (QStringList{u"Identifiant du modèle = Caméra FaceTime HD"_s,
                                                 u"Identifiant unique = 3F8A1C6E-05AC-4D21-9B7E-2C5D0A41E6F3"_s}));
}

// A MacBook Air whose camera report is not JSON and whose Bluetooth report holds an object
// where a list belongs; its network and audio reports are fine.
void TestBluetoothNetworkAudioCamera::failingCapture()
{
    const std::optional<Platform> platform = capturePlatform(u"profiler-failures"_s);
    QVERIFY(platform);
    const QString unreadable = u"Réponse de system_profiler illisible."_s;
    const Result<QList<DeviceNode>> cameras = InventoryService::cameras(*platform);
    QVERIFY(!cameras.ok());
    QCOMPARE(cameras.failure().description(), unreadable);
    const Result<QList<DeviceNode>> bluetooth = InventoryService::bluetooth(*platform);
    QVERIFY(!bluetooth.ok());
    QCOMPARE(bluetooth.failure().description(), unreadable);
    QVERIFY(InventoryService::network(*platform).ok());
    const Result<QList<DeviceNode>> audio = InventoryService::audio(*platform);
    QVERIFY(audio.ok());
    QCOMPARE(names(audio.value()).first(), u"Micro MacBook Air"_s);
    QCOMPARE(rowTexts(audio.value().first().rows).at(3), u"Canaux d'entrée = 3"_s);
}

QUILLON_TEST_MAIN(TestBluetoothNetworkAudioCamera)
#include "tst_bluetooth_network_audio_camera.moc"
