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

// Each node as "name (status)", the order and state a technician reads first.
QStringList namesAndStatus(const QList<DeviceNode> &nodes)
{
    QStringList out;
    for (const DeviceNode &node : nodes)
        out.append(node.name + u" ("_s + QLatin1StringView(statusName(node.status)) + u')');
    return out;
}

// One Bluetooth device, connected, with these properties.
DeviceNode onlyBluetoothDevice(const QByteArray &properties)
{
    return onlyNode(InventoryService::bluetooth, bluetoothType,
                    R"json({"device_connected": [{"Appareil": )json" + properties + "}]}");
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
    void bluetoothDeviceRows_data();
    void bluetoothDeviceRows();
    void bluetoothDeviceType_data();
    void bluetoothDeviceType();
    void networkService_data();
    void networkService();
    void audioDevice_data();
    void audioDevice();
    void audioEntries_data();
    void audioEntries();
    void cameraWithoutName();
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
    QTest::newRow("names differing only in case keep report order") << QByteArray(R"json({"device_connected": [
        {"Souris": {}}, {"souris": {}}, {"SOURIS": {}}]})json") << QStringList{u"Souris"_s, u"souris"_s, u"SOURIS"_s};
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

void TestBluetoothNetworkAudioCamera::bluetoothDeviceRows_data()
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
    QTest::newRow("signal strength") << QByteArray(R"json({"device_RSSI": -52})json")
                                     << QStringList{u"Puissance du signal = -52 dBm"_s};
    QTest::newRow("signal strength under a lower-case key is not read")
        << QByteArray(R"json({"device_rssi": "-52"})json") << QStringList();
}

void TestBluetoothNetworkAudioCamera::bluetoothDeviceRows()
{
    QFETCH(QByteArray, properties);
    QTEST(rowTexts(onlyBluetoothDevice(properties).rows), "rows");
}

void TestBluetoothNetworkAudioCamera::bluetoothDeviceType_data()
{
    QTest::addColumn<QByteArray>("properties");
    QTest::addColumn<std::optional<QString>>("subtitle");
    QTest::addColumn<QString>("symbol");

    QTest::newRow("headset") << QByteArray(R"json({"device_minorType": "Headset"})json")
                             << std::optional(u"Headset"_s) << u"headphones"_s;
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

void TestBluetoothNetworkAudioCamera::networkService_data()
{
    QTest::addColumn<QByteArray>("service");
    QTest::addColumn<std::optional<QString>>("subtitle");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<DeviceStatus>("status");
    QTest::addColumn<QString>("typeRow");

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

void TestBluetoothNetworkAudioCamera::audioDevice_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<QStringList>("description");

    QTest::newRow("headset, default output and input") << QByteArray(R"json({"_name": "Casque",
        "coreaudio_default_audio_input_device": "spaudio_yes", "coreaudio_default_audio_output_device": "spaudio_yes",
        "coreaudio_device_input": 1, "coreaudio_device_output": 2,
        "coreaudio_device_transport": "coreaudio_device_type_usb"})json")
        << QStringList{u"Casque | sortie par défaut · entrée par défaut | speaker.wave.2 | connected"_s,
                       u"  Connexion = USB"_s, u"  Canaux d'entrée = 1"_s, u"  Canaux de sortie = 2"_s};
    QTest::newRow("default flag written yes is not a role") << QByteArray(R"json({"_name": "Casque",
        "coreaudio_default_audio_output_device": "yes", "coreaudio_device_transport": "coreaudio_device_type_virtual"})json")
        << QStringList{u"Casque | Virtuel | mic | neutral"_s, u"  Connexion = Virtuel"_s};
    QTest::newRow("channels and rate written as text, fractional rate") << QByteArray(R"json({"_name": "Interface",
        "coreaudio_device_output": "8", "coreaudio_device_input": "2.5", "coreaudio_device_srate": 44100.9})json")
        << QStringList{u"Interface | - | speaker.wave.2 | neutral"_s, u"  Fréquence d'échantillonnage = 44100 Hz"_s,
                       u"  Canaux d'entrée = 2"_s, u"  Canaux de sortie = 8"_s};
    QTest::newRow("no channels") << QByteArray(R"json({"_name": "Micro", "coreaudio_device_output": 0,
        "coreaudio_device_input": 0})json") << QStringList{u"Micro | - | mic | neutral"_s};
    QTest::newRow("unknown transport") << QByteArray(R"json({"coreaudio_device_transport":
        "coreaudio_device_type_thunderbolt"})json")
        << QStringList{u"Sans nom | Thunderbolt | mic | neutral"_s, u"  Connexion = Thunderbolt"_s};
}

void TestBluetoothNetworkAudioCamera::audioDevice()
{
    QFETCH(QByteArray, device);
    const QByteArray entry = R"json({"_items": [)json" + device + "]}";
    QTEST(describeTree(nodesOf(InventoryService::audio, audioType, entry)), "description");
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

void TestBluetoothNetworkAudioCamera::cameraWithoutName()
{
    const QByteArray camera = R"json({"spcamera_unique-id": "3F8A1C6E"})json";
    QCOMPARE(describeTree(nodesOf(InventoryService::cameras, cameraType, camera)),
             (QStringList{u"Sans nom | - | camera | connected"_s, u"  Identifiant unique = 3F8A1C6E"_s}));
}

// The sample Mac: AirPods Pro and a Magic Mouse connected, three devices paired earlier.
// The mouse writes its signal strength under "device_rssi", a key the list does not read.
void TestBluetoothNetworkAudioCamera::sampleBluetooth()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::bluetooth(*platform);
    QVERIFY(result.ok());
    QCOMPARE(describeTree(result.value()),
             (QStringList{
                 u"Contrôleur Bluetooth | BCM_4387 | dot.radiowaves.left.and.right | neutral"_s,
                 u"  Adresse = F4:D4:88:6A:3C:15"_s,
                 u"  Chipset = BCM_4387"_s,
                 u"  État = Activé"_s,
                 u"  Détectable = Désactivé"_s,
                 u"  Firmware = 22.5.541.3200"_s,
                 u"  Fabricant = 0x004C (Apple)"_s,
                 u"  Services pris en charge = 0x392039 < HFP AVRCP A2DP HID Braille LEA AACP GATT SerialPort >"_s,
                 u"AirPods Pro de Claire | Headphones | headphones | connected"_s,
                 u"  Type = Headphones"_s,
                 u"  Adresse = 9C:3E:53:A1:7F:08"_s,
                 u"  Batterie = G 80\u202F% · D 75\u202F% · Boîtier 95\u202F%"_s,
                 u"  Firmware = 7A305"_s,
                 u"  Identifiant fabricant = 0x004C"_s,
                 u"  Identifiant produit = 0x2014"_s,
                 u"Magic Mouse | Mouse | computermouse | connected"_s,
                 u"  Type = Mouse"_s,
                 u"  Adresse = D0:C0:50:2B:94:E7"_s,
                 u"  Batterie = 64\u202F%"_s,
                 u"  Firmware = 0x0400"_s,
                 u"  Identifiant fabricant = 0x004C"_s,
                 u"  Identifiant produit = 0x0269"_s,
                 u"iPhone de Claire | Smartphone | iphone | disconnected"_s,
                 u"  Type = Smartphone"_s,
                 u"  Adresse = A8:4A:63:19:D5:B2"_s,
                 u"JBL Flip 5 | Loudspeaker | hifispeaker | disconnected"_s,
                 u"  Type = Loudspeaker"_s,
                 u"  Adresse = F8:5C:7D:30:8E:49"_s,
                 u"Magic Keyboard | Keyboard | keyboard | disconnected"_s,
                 u"  Type = Keyboard"_s,
                 u"  Adresse = F0:18:98:C4:2E:61"_s,
                 u"  Identifiant fabricant = 0x004C"_s,
                 u"  Identifiant produit = 0x029C"_s,
             }));
}

// The sample Mac: Wi-Fi connected, Thunderbolt Bridge and Bluetooth PAN idle. The PAN's
// name says Bluetooth but its type and hardware say Ethernet.
void TestBluetoothNetworkAudioCamera::sampleNetwork()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::network(*platform);
    QVERIFY(result.ok());
    QCOMPARE(describeTree(result.value()),
             (QStringList{
                 u"Wi-Fi | 192.168.1.34 | wifi | connected"_s,
                 u"  Type = Wi-Fi"_s,
                 u"  Interface = en0"_s,
                 u"  Matériel = Wi-Fi"_s,
                 u"  Adresse IPv4 = 192.168.1.34"_s,
                 u"  Masque de sous-réseau = 255.255.255.0"_s,
                 u"  Routeur = 192.168.1.254"_s,
                 u"  Configuration = DHCP"_s,
                 u"  Adresse IPv6 = 2a01:e0a:2c4:9f80:1c3b:7e2f:a915:4d60"_s,
                 u"  Adresse MAC = 4a:1e:c7:35:92:d0"_s,
                 u"  Serveurs DNS = 192.168.1.254, 2a01:e0a:2c4:9f80::1"_s,
                 u"  Ordre du service = 0"_s,
                 u"Thunderbolt Bridge | Ethernet | cable.connector | disconnected"_s,
                 u"  Type = Ethernet"_s,
                 u"  Interface = bridge0"_s,
                 u"  Matériel = Ethernet"_s,
                 u"  Configuration = DHCP"_s,
                 u"  Ordre du service = 1"_s,
                 u"Bluetooth PAN | Ethernet | cable.connector | disconnected"_s,
                 u"  Type = Ethernet"_s,
                 u"  Interface = en7"_s,
                 u"  Matériel = Ethernet"_s,
                 u"  Configuration = DHCP"_s,
                 u"  Ordre du service = 2"_s,
             }));
}

// The sample Mac: the LG monitor's speakers, AirPods as output, the built-in microphone as
// input and the built-in speakers, which are the system sound device but neither default.
void TestBluetoothNetworkAudioCamera::sampleAudio()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::audio(*platform);
    QVERIFY(result.ok());
    QCOMPARE(describeTree(result.value()),
             (QStringList{
                 u"LG HDR 4K | HDMI | speaker.wave.2 | neutral"_s,
                 u"  Fabricant = LG Electronics"_s,
                 u"  Connexion = HDMI"_s,
                 u"  Fréquence d'échantillonnage = 48000 Hz"_s,
                 u"  Canaux de sortie = 2"_s,
                 u"  Source de sortie = Par défaut"_s,
                 u"AirPods Pro de Claire | sortie par défaut | speaker.wave.2 | connected"_s,
                 u"  Fabricant = Apple Inc."_s,
                 u"  Connexion = Bluetooth"_s,
                 u"  Fréquence d'échantillonnage = 48000 Hz"_s,
                 u"  Canaux d'entrée = 1"_s,
                 u"  Canaux de sortie = 2"_s,
                 u"  Source d'entrée = Par défaut"_s,
                 u"  Source de sortie = Par défaut"_s,
                 u"Micro MacBook Pro | entrée par défaut | mic | connected | built in"_s,
                 u"  Fabricant = Apple Inc."_s,
                 u"  Connexion = Intégré"_s,
                 u"  Fréquence d'échantillonnage = 48000 Hz"_s,
                 u"  Canaux d'entrée = 1"_s,
                 u"  Source d'entrée = Micro MacBook Pro"_s,
                 u"Haut-parleurs MacBook Pro | Intégré | speaker.wave.2 | neutral | built in"_s,
                 u"  Fabricant = Apple Inc."_s,
                 u"  Connexion = Intégré"_s,
                 u"  Fréquence d'échantillonnage = 48000 Hz"_s,
                 u"  Canaux de sortie = 2"_s,
                 u"  Source de sortie = Haut-parleurs MacBook Pro"_s,
             }));
}

void TestBluetoothNetworkAudioCamera::sampleCamera()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<DeviceNode>> result = InventoryService::cameras(*platform);
    QVERIFY(result.ok());
    QCOMPARE(describeTree(result.value()),
             (QStringList{u"Caméra FaceTime HD | - | camera | connected"_s,
                          u"  Identifiant du modèle = Caméra FaceTime HD"_s,
                          u"  Identifiant unique = 3F8A1C6E-05AC-4D21-9B7E-2C5D0A41E6F3"_s}));
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
