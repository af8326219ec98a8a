#include "common/test_main.h"
#include "fakes.h"

#include <QSet>

using enum AppSection;

namespace {

// A volume with only what decides whether it is kept and where: its size, its drive's device
// name (no drive when empty), whether that drive is internal, whether it is mounted at "/".
struct VolumeFixture
{
    QString name;
    double bytes = 0;
    QString device;
    bool internal = false;
    bool root = false;
};

// The volumes of a storage report holding `items`, or the profiler's failure.
Result<QList<StorageVolume>> storage(const QByteArray &items, int exitStatus = 0, const QByteArray &output = {})
{
    FakeMac mac;
    mac.profiler->answerItems(u"SPStorageDataType"_s, items);
    if (!output.isEmpty())
        mac.profiler->answer(u"SPStorageDataType"_s, output, exitStatus);
    return InventoryService::storage(mac.platform());
}

// The names of the volumes kept, in order.
QString kept(const QList<VolumeFixture> &volumes)
{
    QByteArrayList items;
    for (const VolumeFixture &volume : volumes) {
        QJsonObject item{{u"_name"_s, volume.name}, {u"size_in_bytes"_s, volume.bytes},
                         {u"mount_point"_s, volume.root ? u"/"_s : u"/Volumes/"_s + volume.name}};
        if (!volume.device.isEmpty())
            item.insert(u"physical_drive"_s,
                        QJsonObject{{u"device_name"_s, volume.device}, {u"is_internal_disk"_s, volume.internal ? u"yes"_s : u"no"_s}});
        items.append(QJsonDocument(item).toJson(QJsonDocument::Compact));
    }
    QStringList names;
    const Result<QList<StorageVolume>> result = storage(items.join(','));
    for (const StorageVolume &volume : result.value())
        names.append(volume.name);
    return names.join(u", "_s);
}

// Each volume kept: "name | total / free | file system | mount point | internal or external |
// S.M.A.R.T. wording | verified, not verified or - | device", "-" for what is absent.
QString fields(const QByteArray &items)
{
    QStringList lines;
    const Result<QList<StorageVolume>> result = storage(items);
    for (const StorageVolume &volume : result.value()) {
        const QString verdict = !volume.smartIsVerified ? u"-"_s : *volume.smartIsVerified ? u"verified"_s : u"not verified"_s;
        const QString sizes = QString::number(volume.totalBytes, 'f', 0) + u" / "_s + QString::number(volume.freeBytes, 'f', 0);
        lines.append(QStringList{volume.name, sizes, volume.fileSystem.value_or(u"-"_s), volume.mountPoint.value_or(u"-"_s),
                                 volume.isInternal ? u"internal"_s : u"external"_s, volume.smartStatus.value_or(u"-"_s), verdict,
                                 volume.deviceName.value_or(u"-"_s)}
                         .join(u" | "_s));
    }
    return lines.join(u'\n');
}

QString failure(const QByteArray &output, int exitStatus = 0)
{
    const Result<QList<StorageVolume>> result = storage({}, exitStatus, output);
    return result.ok() ? u"no failure"_s : result.failure().description();
}

// The name a Thunderbolt bus named `name` is shown with.
QStringList busName(const QByteArray &name)
{
    return {nodesIn(thunderbolt, "{\"_name\": \"" + name + "\"}").value(0).name};
}

// One connected Bluetooth device with these properties.
QByteArray bluetoothDevice(const QByteArray &properties)
{
    return R"({"device_connected": [{"Appareil": )" + properties + "}]}";
}

// The names of the Bluetooth nodes, in order, read under the C locale of a bare shell
// (LC_ALL=C.UTF-8): the French order must not depend on the process locale.
QStringList order(const QByteArray &items)
{
    const QLocale pinned;
    QLocale::setDefault(QLocale::c());
    QStringList names;
    for (const DeviceNode &node : nodesIn(AppSection::bluetooth, items))
        names.append(node.name);
    QLocale::setDefault(pinned);
    return {names.join(u", "_s)};
}

} // namespace

class TestInventoryService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // A device keeps its identity from one collection to the next; two alike siblings and a
    // device whose serial number changed are told apart.
    void devicesKeepTheirIdentity()
    {
        const QByteArray items = R"({"_name": "Bus", "host_controller": "XHCI", "_items": [
            {"_name": "Clé", "serial_num": "A1"}, {"_name": "Souris"}, {"_name": "Souris"}]})";
        const auto ids = [](const QList<DeviceNode> &nodes) {
            QList<QUuid> found;
            for (const auto &[node, depth] : flattenedAll(nodes))
                found.append(node.id);
            return found;
        };
        const QList<QUuid> first = ids(nodesIn(AppSection::usb, items));
        QCOMPARE(ids(nodesIn(AppSection::usb, items)), first);
        QCOMPARE(QSet<QUuid>(first.cbegin(), first.cend()).size(), 4);
        const QList<QUuid> otherKey = ids(nodesIn(AppSection::usb, QByteArray(items).replace("A1", "B2")));
        QCOMPARE(otherKey.at(0), first.at(0));
        QVERIFY(otherKey.at(1) != first.at(1));
        QCOMPARE(otherKey.mid(2), first.mid(2));
    }

    // The volumes kept and their order, what each holds, and the profiler's failures.
    void volumes_data()
    {
        QTest::addColumn<QString>("actual");
        QTest::addColumn<QString>("expected");
        QTest::newRow("system and data volumes of one container")
            << kept({{u"Data"_s, 494e9, u"SSD"_s, true}, {u"Macintosh HD"_s, 494e9, u"SSD"_s, true, true}}) << u"Macintosh HD"_s;
        QTest::newRow("same drive, other sizes: internal first, larger first")
            << kept({{u"Clé"_s, 2000e9, u"Elements"_s}, {u"Données"_s, 300e9, u"SSD"_s, true}, {u"Macintosh HD"_s, 500e9, u"SSD"_s, true,
            true}}) << u"Macintosh HD, Données, Clé"_s;
        QTest::newRow("the root volume wins its container, not the largest")
            << kept({{u"Données"_s, 100e9, u"SSD"_s, true}, {u"Autre"_s, 900e9, u"SSD"_s, true}, {u"Macintosh HD"_s, 100e9, u"SSD"_s, true,
            true}}) << u"Autre, Macintosh HD"_s;
        QTest::newRow("no root volume: the first reported wins") << kept({{u"Premier"_s, 250e9, u"T7"_s}, {u"Second"_s, 250e9, u"T7"_s}})
            << u"Premier"_s;
        QTest::newRow("volumes without a drive are told apart by name")
            << kept({{u"Réseau"_s, 100e9}, {u"Réseau"_s, 100e9}, {u"Partage"_s, 100e9}}) << u"Réseau, Partage"_s;

        QTest::newRow("disk image by device name") << fields(R"({"_name": "VLC", "physical_drive": {"device_name": "Disk Image"}})")
            << QString();
        QTest::newRow("failing disk") << fields(R"({"_name": "HD", "size_in_bytes": 1000, "file_system": "HFS+",
            "physical_drive": {"device_name": "WDC", "is_internal_disk": "yes", "smart_status": "Failing"}})")
            << u"HD | 1000 / 0 | HFS+ | - | internal | Failing | not verified | WDC"_s;
        QTest::newRow("verified goes through the vocabulary")
            << fields(R"({"_name": "HD", "mount_point": "/", "physical_drive": {"smart_status": "Verified"}})")
            << u"HD | 0 / 0 | - | / | external | Vérifié | verified | -"_s;
        QTest::newRow("verified in lower case is not verified")
            << fields(R"({"_name": "HD", "physical_drive": {"smart_status": "verified"}})")
            << u"HD | 0 / 0 | - | - | external | verified | not verified | -"_s;

        const QString unreadable = u"Réponse de system_profiler illisible."_s;
        QTest::newRow("exit status 2") << failure(R"({"SPStorageDataType": []})", 2)
            << u"system_profiler a échoué : code 2 pour SPStorageDataType"_s;
        QTest::newRow("object instead of a list") << failure(R"({"SPStorageDataType": {}})") << unreadable;
    }

    void volumes()
    {
        QFETCH(QString, actual);
        QTEST(actual, "expected");
    }

    // The trees of the device sections (names, subtitles, symbols, statuses, shape, order) and
    // the rows the reports give.
    void devices_data()
    {
        QTest::addColumn<QStringList>("actual");
        QTest::addColumn<QStringList>("expected");
        const QString noDisplay = u"GPU | 0 écrans | cpu | neutral"_s;
        QTest::newRow("processor without display list") << tree(displays, R"({"_name": "GPU"})") << QStringList{noDisplay};
        QTest::newRow("one main display online") << tree(displays, R"({"spdisplays_ndrvs": [{"_name": "LCD",
            "_spdisplays_resolution": "1512 x 982", "spdisplays_main": "spdisplays_yes", "spdisplays_online": "spdisplays_yes"}]})")
            << QStringList{u"Sans nom | 1 écran | cpu | neutral"_s, u"    LCD | 1512 x 982 | display | connected"_s};
        QTest::newRow("displays in report order, online or not")
            << tree(displays, R"({"_name": "GPU", "spdisplays_ndrvs": [ {"_name": "LG", "spdisplays_online": "spdisplays_yes"},
            {"_name": "DELL"}, {"_name": "LCD", "spdisplays_main": "spdisplays_yes", "spdisplays_online": "spdisplays_no"},
            {"_name": "Sidecar", "spdisplays_main": "yes", "spdisplays_online": true}]})")
            << QStringList{u"GPU | 4 écrans | cpu | neutral"_s, u"    LG | - | display.2 | connected"_s,
            u"    DELL | - | display.2 | disconnected"_s, u"    LCD | - | display | disconnected"_s,
            u"    Sidecar | - | display.2 | disconnected"_s};

        QTest::newRow("USB bus with its controller") << tree(usb, R"({"_name": "Bus", "host_controller": "XHCI"})")
            << QStringList{u"Bus (contrôleur XHCI) | - | cable.connector.horizontal | neutral"_s};
        QTest::newRow("USB levels in report order") << tree(usb, R"({"_name": "Bus", "_items": [{"_name": "Hub", "manufacturer": "Generic",
            "_items": [{"_name": "Souris"}, {"_name": "Clavier"}]}, {"_name": "Disque", "_items": []}]})")
            << QStringList{u"Bus | - | cable.connector.horizontal | neutral"_s,
            u"    Hub | Generic | cable.connector.horizontal | neutral"_s, u"        Souris | - | cable.connector | connected"_s,
            u"        Clavier | - | cable.connector | connected"_s, u"    Disque | - | cable.connector | connected"_s};

        // Devices first, then ports in plain text order of their keys: "receptacle_10_tag" comes
        // before "receptacle_1_tag" because the digit 0 comes before the underscore.
        // A port without an identifier takes its key's number; the device's own upstream link
        // is not a port.
        QTest::newRow("Thunderbolt devices, then ports") << tree(thunderbolt, R"({"_name": "thunderbolt_bus_0",
            "receptacle_2_tag": {"receptacle_id_key": "2", "receptacle_status_key": "receptacle_connected", "current_speed_key": "40 Gb/s"},
            "receptacle_10_tag": {"receptacle_id_key": "10", "receptacle_status_key": "spthunderbolt_no_devices"}, "receptacle_1_tag": {},
            "receptacle_upstream_ambiguous_tag": {"receptacle_id_key": "amont"}, "receptacle_3_tag": "receptacle_no_devices_connected",
            "receptacle_4_status": {"receptacle_id_key": "4"}, "port_5_tag": {"receptacle_id_key": "5"}, "_items": [{"_name": "TS3 Plus",
            "device_name_key": "TS3 Plus"}]})") << QStringList{u"Bus Thunderbolt 1 | - | bolt.horizontal | neutral"_s,
            u"    TS3 Plus | TS3 Plus | bolt.horizontal | neutral"_s, u"    Port 10 | - | bolt.horizontal.circle | disconnected"_s,
            u"    Port 1 | - | bolt.horizontal.circle | disconnected"_s, u"    Port 2 | 40 Gb/s | bolt.horizontal.circle | connected"_s};

        QTest::newRow("processor") << rowsIn(displays, R"({"sppci_model": "M1 Pro", "spdisplays_vendor": "sppci_vendor_apple",
            "sppci_cores": "16", "sppci_bus": "spdisplays_builtin", "spdisplays_vram": "8 GB", "spdisplays_vram_shared": "1536 MB",
            "spdisplays_mtlgpufamilysupport": "spdisplays_metal3"})")
            << QStringList{u"Modèle = M1 Pro"_s, u"Fabricant = Apple"_s, u"Cœurs graphiques = 16"_s, u"Bus = Intégré"_s, u"VRAM = 8 GB"_s,
            u"Metal = Metal 3"_s};
        QTest::newRow("display") << rowsIn(displays, R"({"spdisplays_ndrvs": [{"_spdisplays_resolution": "1512 x 982",
            "_spdisplays_pixels": "3024 x 1964", "spdisplays_display_type": "spdisplays_built-in-liquid-retina-xdr",
            "spdisplays_connection_type": "spdisplays_internal", "spdisplays_main": "spdisplays_yes", "spdisplays_mirror": "spdisplays_off",
            "_spdisplays_display-vendor-id": "610", "_spdisplays_display-product-id": "a04e",
            "_spdisplays_display-serial-number": "fd62"}]})", 1)
            << QStringList{u"Résolution = 1512 x 982"_s, u"Définition native = 3024 x 1964 [nativeResolution]"_s,
            u"Type = Liquid Retina XDR intégré"_s, u"Connexion = Interne"_s, u"Écran principal = Oui"_s, u"Recopie vidéo = Désactivée"_s,
            u"Identifiant fabricant = 610"_s, u"Identifiant produit = a04e"_s, u"Numéro de série = fd62"_s};
        QTest::newRow("USB device") << rowsIn(usb, R"({"manufacturer": "Samsung", "device_speed": "super_speed_plus",
            "product_id": "0x4001", "vendor_id": "0x04e8", "serial_num": "S6X", "bcd_device": "1.00", "bus_power": 900, "bus_power_used": 0,
            "host_controller": "XHCI", "location_id": "0x0321"})")
            << QStringList{u"Fabricant = Samsung"_s, u"Vitesse = USB 3.1+ — 10 Gb/s"_s, u"Identifiant produit = 0x4001"_s,
            u"Identifiant fabricant = 0x04e8"_s, u"Numéro de série = S6X"_s, u"Version = 1.00"_s, u"Alimentation disponible = 900 mA"_s,
            u"Alimentation utilisée = 0 mA"_s, u"Contrôleur = XHCI"_s, u"Emplacement = 0x0321"_s};
        const auto speed = [](const char *token) -> QByteArray { return "{\"device_speed\": \"" + QByteArray(token) + "\"}"; };
        QTest::newRow("high speed") << rowsIn(usb, speed("high_speed")) << QStringList{u"Vitesse = USB 2.0 — 480 Mb/s"_s};
        QTest::newRow("unknown speed of the profiler") << rowsIn(usb, speed("spusb_twenty-gbps"))
            << QStringList{u"Vitesse = Twenty gbps"_s};
        QTest::newRow("Thunderbolt device") << rowsIn(thunderbolt, R"({"vendor_name_key": {"_name": "CalDigit", "vendor_id_key": "0x3D"},
            "device_name_key": "TS3 Plus", "switch_uid_key": "0x003D", "device_firmware_version_key": "44.1",
            "device_serial_number_key": "C02"})") << QStringList{u"Fabricant = CalDigit"_s, u"Appareil = TS3 Plus"_s,
            u"Identifiant du contrôleur = 0x003D"_s, u"Firmware = 44.1"_s, u"Numéro de série = C02"_s};
        QTest::newRow("Thunderbolt port") << rowsIn(thunderbolt,
            R"({"receptacle_1_tag": { "current_speed_key": "Up to 40 Gb/s, Up to 80 Gb/s",
            "receptacle_status_key": "receptacle_no_devices_connected", "link_status_key": "0x100"}})", 1)
            << QStringList{u"Débit maximal = Jusqu'à 40 Gb/s, Jusqu'à 80 Gb/s"_s, u"État = Aucun appareil connecté"_s};

        QTest::newRow("first bus") << busName("thunderbolt_bus_0") << QStringList{u"Bus Thunderbolt 1"_s};
        QTest::newRow("USB4 bus") << busName("thunderboltusb4_bus_1") << QStringList{u"Bus Thunderbolt / USB4 2"_s};
        QTest::newRow("a device name") << busName("TS3 Plus") << QStringList{u"TS3 Plus"_s};

        QTest::newRow("controller, then connected, then the others")
            << tree(bluetooth, R"({"device_not_connected": [{"Clavier": {}}], "device_title": [{"Ancien": {}}],
            "device_connected": [{"Souris": {}}], "controller_properties": {"controller_chipset": "BCM_4387"}})")
            << QStringList{u"Contrôleur Bluetooth | BCM_4387 | dot.radiowaves.left.and.right | neutral"_s,
            u"Souris | - | dot.radiowaves.right | connected"_s, u"Clavier | - | dot.radiowaves.right | disconnected"_s,
            u"Ancien | - | dot.radiowaves.right | disconnected"_s};
        QTest::newRow("device types and their symbols") << tree(bluetooth, R"({"device_connected": [{"1": {"device_minorType": "Headset"},
            "2": {"device_minorType": "PHONE"}, "3": {"device_minorType": "Keyboard/Mouse Combo"}, "4": {"device_minorType": "Gamepad"},
            "5": {"device_majorType": "Headphones"}, "6": {"device_majorType": "Peripheral", "device_minorType": "Mouse"},
            "7": {"device_minorType": "Speaker"}, "8": {"device_minorType": "Headphones"}}]})")
            << QStringList{u"1 | Casque-micro | headphones | connected"_s, u"2 | Téléphone | iphone | connected"_s,
            u"3 | Clavier et souris | keyboard | connected"_s, u"4 | Manette | dot.radiowaves.right | connected"_s,
            u"5 | Casque | dot.radiowaves.right | connected"_s, u"6 | Souris | computermouse | connected"_s,
            u"7 | Enceinte | hifispeaker | connected"_s, u"8 | Casque | headphones | connected"_s};

        QTest::newRow("Wi-Fi without an address shows the raw type")
            << tree(network, R"({"_name": "Wi-Fi", "type": "AirPort", "hardware": "AirPort", "IPv4": {"ConfigMethod": "DHCP"}})")
            << QStringList{u"Wi-Fi | AirPort | wifi | disconnected"_s};
        QTest::newRow("network services and their symbols") << tree(network, R"({"_name": "A", "type": "WI-FI"}, {"_name": "B",
            "type": "Ethernet", "IPv4": {"Addresses": ["10.0.0.2", "10.0.0.3"]}}, {"_name": "C", "type": "USB LAN", "hardware": "Ethernet"},
            {"_name": "D", "type": "Bluetooth DUN", "hardware": "Modem"}, {"_name": "E", "type": "PPP", "hardware": "Serial"},
            {"_name": "F", "type": "VPN", "IPv4": {"Addresses": "10.8.0.6"}}, {"_name": "G", "type": "Ethernet", "IPv4": {"Addresses": []}},
            {"_name": "H", "type": "Ethernet", "IPv4": ["192.168.1.2"]}, {"hardware": "Modem"}, {})")
            << QStringList{u"A | WI-FI | wifi | disconnected"_s, u"B | 10.0.0.2, 10.0.0.3 | cable.connector | connected"_s,
            u"C | USB LAN | cable.connector | disconnected"_s, u"D | Bluetooth DUN | dot.radiowaves.right | disconnected"_s,
            u"E | PPP | antenna.radiowaves.left.and.right | disconnected"_s, u"F | 10.8.0.6 | network | connected"_s,
            u"G | Ethernet | cable.connector | disconnected"_s, u"H | Ethernet | cable.connector | disconnected"_s,
            u"Sans nom | - | antenna.radiowaves.left.and.right | disconnected"_s, u"Sans nom | - | network | disconnected"_s};

        QTest::newRow("audio devices of every entry, in report order")
            << tree(audio, R"({"_items": [{"_name": "Casque", "coreaudio_default_audio_input_device": "spaudio_yes",
            "coreaudio_default_audio_output_device": "spaudio_yes", "coreaudio_device_output": 2,
            "coreaudio_device_transport": "coreaudio_device_type_usb"}, {"_name": "Micro", "coreaudio_device_input": 1,
            "coreaudio_device_transport": "coreaudio_device_type_builtin", "coreaudio_default_audio_input_device": "spaudio_yes"}]},
            {"_name": "coreaudio_device"}, {"_items": [{"_name": "Enceinte", "coreaudio_device_output": "8",
            "coreaudio_default_audio_output_device": "yes"}, {"coreaudio_device_transport": "coreaudio_device_type_thunderbolt"}]},
            {"_items": {"_name": "Ignoré"}})")
            << QStringList{u"Casque | sortie par défaut · entrée par défaut | speaker.wave.2 | connected"_s,
            u"Micro | entrée par défaut | mic | connected | built in"_s, u"Enceinte | - | speaker.wave.2 | neutral"_s,
            u"Sans nom | Thunderbolt | mic | neutral"_s};


        // Bluetooth devices sorted by name, case and accents aside, within their own group.
        QTest::newRow("case does not count") << order(R"({"device_connected": [{"zèbre": {}}, {"Alpha": {}}, {"beta": {}},
            {"Gamma": {}}]})") << QStringList{u"Alpha, beta, Gamma, zèbre"_s};
        QTest::newRow("accents sort with their letter") << order(R"({"device_connected": [{"Enceinte": {}}, {"Écouteurs": {}},
            {"Casque": {}}, {"Ecran": {}}]})") << QStringList{u"Casque, Écouteurs, Ecran, Enceinte"_s};
        QTest::newRow("connected devices stay ahead") << order(R"({"device_connected": [{"Zed": {}}, {"mouse": {}}],
            "device_not_connected": [{"Aaron": {}}, {"keyboard": {}}]})") << QStringList{u"mouse, Zed, Aaron, keyboard"_s};

        QTest::newRow("Bluetooth controller") << rowsIn(bluetooth, R"({"controller_properties": {"controller_address": "F4:D4",
            "controller_chipset": "BCM_4387", "controller_state": "attrib_on", "controller_discoverable": "attrib_off",
            "controller_firmwareVersion": "22.5", "controller_vendorID": "0x004C", "controller_supportedServices": "0x392039"}})")
            << QStringList{u"Adresse = F4:D4"_s, u"Chipset = BCM_4387"_s, u"État = Activé"_s, u"Détectable = Désactivé"_s,
            u"Firmware = 22.5"_s, u"Fabricant = Apple"_s};
        QTest::newRow("Bluetooth earbuds with their case") << rowsIn(bluetooth, bluetoothDevice(R"({"device_minorType": "Headphones",
            "device_address": "9C:3E", "device_batteryLevelCase": "95 %", "device_batteryLevelRight": "75 %",
            "device_batteryLevelLeft": "80 %", "device_batteryLevelMain": "100 %", "device_firmwareVersion": "7A305",
            "device_vendorID": "0x004C", "device_productID": "0x2014", "device_RSSI": -52})"))
            << QStringList{u"Type = Casque"_s, u"Adresse = 9C:3E"_s, u"Batterie = 100 % · G 80 % · D 75 % · Boîtier 95 %"_s,
            u"Firmware = 7A305"_s, u"Identifiant fabricant = 0x004C"_s, u"Identifiant produit = 0x2014"_s,
            u"Puissance du signal = -52 dBm"_s};
        QTest::newRow("network service") << rowsIn(network, R"({"type": "AirPort", "interface": "en0", "hardware": "AirPort",
            "IPv4": {"Addresses": ["192.168.1.34"], "SubnetMasks": ["255.255.255.0"], "Router": "192.168.1.254", "ConfigMethod": "DHCP"},
            "IPv6": {"Addresses": ["2a01::60"]}, "Ethernet": {"MAC Address": "4a:1e"}, "DNS": {"ServerAddresses": ["192.168.1.254",
            "2a01::1"]}, "spnetwork_service_order": 0})") << QStringList{u"Type = Wi-Fi"_s, u"Interface = en0"_s, u"Matériel = Wi-Fi"_s,
            u"Adresse IPv4 = 192.168.1.34"_s, u"Masque de sous-réseau = 255.255.255.0"_s, u"Routeur = 192.168.1.254"_s,
            u"Configuration = DHCP"_s, u"Adresse IPv6 = 2a01::60"_s, u"Adresse MAC = 4a:1e"_s, u"Serveurs DNS = 192.168.1.254, 2a01::1"_s,
            u"Ordre du service = 0"_s};
        QTest::newRow("audio device") << rowsIn(audio, R"({"_items": [{"coreaudio_device_manufacturer": "Apple Inc.",
            "coreaudio_device_transport": "coreaudio_device_type_bluetooth", "coreaudio_device_srate": 44100.9,
            "coreaudio_device_input": "2.5", "coreaudio_device_output": 2, "coreaudio_input_source": "spaudio_default",
            "coreaudio_output_source": "spaudio_default"}]})")
            << QStringList{u"Fabricant = Apple Inc."_s, u"Connexion = Bluetooth"_s, u"Fréquence d'échantillonnage = 44100 Hz"_s,
            u"Canaux d'entrée = 2"_s, u"Canaux de sortie = 2"_s, u"Source d'entrée = Par défaut"_s, u"Source de sortie = Par défaut"_s};
    }

    void devices()
    {
        QFETCH(QStringList, actual);
        QTEST(actual, "expected");
    }

    // Each device section runs its own data type once; the others run nothing.
    void dispatch()
    {
        for (const AppSection section : AppSections::allCases()) {
            FakeMac mac;
            mac.profiler->answerItems(dataTypeOf(section), R"({"_items": [{}], "device_connected": [{"A": {}}]})");
            const Result<QList<DeviceNode>> result = InventoryService::devices(mac.platform(), section);
            const bool device = !dataTypeOf(section).isEmpty();
            QList<QStringList> expected;
            if (device)
                expected.append(QStringList { u"-json"_s, dataTypeOf(section) });
            QCOMPARE(mac.profiler->runs, expected);
            QCOMPARE(result.value().size(), device ? 1 : 0);
        }
    }
};

QUILLON_TEST_MAIN(TestInventoryService)
#include "tst_inventory_service.moc"
