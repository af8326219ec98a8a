#include "check_test_support.h"
#include "common/test_main.h"

#include "diagnostics/diagnostics_rules.h"

using namespace Qt::StringLiterals;
using namespace CheckTest;

namespace {

constexpr auto connected = DeviceStatus::connected;
constexpr auto disconnected = DeviceStatus::disconnected;
constexpr auto neutral = DeviceStatus::neutral;

DeviceNode withSymbol(DeviceNode made, const QString &symbol)
{
    made.symbol = symbol;
    return made;
}

DeviceNode builtIn(DeviceNode made)
{
    made.isBuiltIn = true;
    return made;
}

DeviceNode port(const QString &name, DeviceStatus status)
{
    return withSymbol(node(name, status), u"bolt.horizontal.circle"_s);
}

DeviceNode bus(const QString &name, QList<DeviceNode> children)
{
    return withSymbol(node(name, neutral, std::nullopt, std::move(children)), u"bolt.horizontal"_s);
}

BuiltInComponents wifiChip(std::optional<BuiltInComponents::Component> chip)
{
    BuiltInComponents components;
    if (chip)
        components.wifi = *chip;
    return components;
}

// The fields every rule of a device section is judged on.
void compareCheck(const HardwareCheck &check, CheckStatus status, const QString &summary, const QString &measurement)
{
    QCOMPARE(shown(check.status), shown(status));
    QCOMPARE(check.summary, summary);
    QCOMPARE(shown(check.measurement), measurement);
    QVERIFY(!check.progress && !check.caption && !check.live && !check.isHighlighted);
}

} // namespace

class PeripheralChecksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void displays_data();
    void displays();
    void wifi_data();
    void wifi();
    void bluetooth_data();
    void bluetooth();
    void audio_data();
    void audio();
    void camera_data();
    void camera();
    void usb_data();
    void usb();
    void thunderbolt_data();
    void thunderbolt();
};

void PeripheralChecksTest::displays_data()
{
    QTest::addColumn<DeviceSection>("section");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    QTest::newRow("no section") << nodes() << CheckStatus::info << u"Aucun écran détecté."_s << u"0"_s;
    QTest::newRow("graphics processor without screens")
        << nodes({node(u"Apple M1 Pro"_s, neutral)}) << CheckStatus::info << u"Aucun écran détecté."_s << u"0"_s;
    QTest::newRow("graphics processor itself connected")
        << nodes({node(u"Apple M1 Pro"_s, connected)}) << CheckStatus::info << u"Aucun écran détecté."_s << u"0"_s;
    QTest::newRow("only a disconnected screen")
        << nodes({node(u"Apple M1 Pro"_s, neutral, std::nullopt, {node(u"LG HDR 4K"_s, disconnected)})})
        << CheckStatus::info << u"Aucun écran détecté."_s << u"0"_s;
    QTest::newRow("one screen") << nodes({node(u"Apple M1 Pro"_s, neutral, std::nullopt,
                                              {node(u"Écran Liquid Retina XDR intégré"_s, connected)})})
                                << CheckStatus::ok << u"Écran Liquid Retina XDR intégré — 1 écran détecté."_s
                                << u"1"_s;
    QTest::newRow("two connected, one disconnected")
        << nodes({node(u"Apple M1 Pro"_s, neutral, std::nullopt,
                      {node(u"Écran intégré"_s, connected), node(u"Projecteur"_s, disconnected),
                       node(u"LG HDR 4K"_s, connected)})})
        << CheckStatus::ok << u"Écran intégré, LG HDR 4K — 2 écrans détectés."_s << u"2"_s;
    QTest::newRow("screens of two processors")
        << nodes({node(u"Intel Iris Plus"_s, neutral, std::nullopt, {node(u"Écran intégré"_s, connected)}),
                 node(u"AMD Radeon Pro 5500M"_s, neutral, std::nullopt, {node(u"DELL U2720Q"_s, connected)})})
        << CheckStatus::ok << u"Écran intégré, DELL U2720Q — 2 écrans détectés."_s << u"2"_s;
}

void PeripheralChecksTest::displays()
{
    QFETCH(DeviceSection, section);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    const HardwareCheck check = DiagnosticsService::displaysCheck(section.nodes);
    QCOMPARE(check.title, u"Écrans"_s);
    QCOMPARE(check.symbol, u"display"_s);
    QCOMPARE(shown(check.section), u"displays"_s);
    compareCheck(check, status, summary, measurement);
}

void PeripheralChecksTest::wifi_data()
{
    QTest::addColumn<BuiltInComponents>("components");
    QTest::addColumn<DeviceSection>("network");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    const DeviceNode ethernet = node(u"Ethernet"_s, connected, u"192.168.1.20"_s);
    QTest::newRow("no chip, no service")
        << wifiChip(std::nullopt) << nodes({ethernet}) << CheckStatus::info << u"wifi.slash"_s
        << u"Aucune puce Wi-Fi détectée sur cette machine."_s << u"Non détecté"_s;
    QTest::newRow("service without hyphen is not Wi-Fi")
        << wifiChip(std::nullopt) << nodes({node(u"WiFi USB"_s, connected, u"Atelier"_s)}) << CheckStatus::info
        << u"wifi.slash"_s << u"Aucune puce Wi-Fi détectée sur cette machine."_s << u"Non détecté"_s;
    QTest::newRow("connected service, no chip")
        << wifiChip(std::nullopt) << nodes({ethernet, node(u"Wi-Fi"_s, connected, u"Atelier-5G"_s)})
        << CheckStatus::ok << u"wifi"_s << u"Matériel Wi-Fi opérationnel — connecté à Atelier-5G."_s
        << u"Présent"_s;
    QTest::newRow("service name in capitals")
        << wifiChip(std::nullopt) << nodes({node(u"CARTE WI-FI"_s, connected)}) << CheckStatus::ok << u"wifi"_s
        << u"Matériel Wi-Fi opérationnel — connecté."_s << u"Présent"_s;
    QTest::newRow("chip with detail, service not associated")
        << wifiChip(present(u"BCM4387"_s)) << nodes({node(u"Wi-Fi"_s, disconnected, u"Wi-Fi"_s)}) << CheckStatus::ok
        << u"wifi"_s << u"Matériel Wi-Fi opérationnel — puce BCM4387, aucun réseau associé pour l'instant."_s
        << u"BCM4387"_s;
    QTest::newRow("chip with detail, connected service")
        << wifiChip(present(u"BCM4387"_s)) << nodes({node(u"Wi-Fi"_s, connected, u"10.0.0.4"_s)}) << CheckStatus::ok
        << u"wifi"_s << u"Matériel Wi-Fi opérationnel — puce BCM4387, connecté à 10.0.0.4."_s << u"BCM4387"_s;
    QTest::newRow("chip without detail, no service")
        << wifiChip(present()) << nodes() << CheckStatus::ok << u"wifi"_s
        << u"Matériel Wi-Fi opérationnel — aucun réseau associé pour l'instant."_s << u"Présent"_s;
    QTest::newRow("only the first Wi-Fi service counts")
        << wifiChip(std::nullopt)
        << nodes({node(u"Wi-Fi"_s, disconnected), node(u"Wi-Fi 2"_s, connected, u"Atelier"_s)}) << CheckStatus::ok
        << u"wifi"_s << u"Matériel Wi-Fi opérationnel — aucun réseau associé pour l'instant."_s << u"Présent"_s;
}

void PeripheralChecksTest::wifi()
{
    QFETCH(BuiltInComponents, components);
    QFETCH(DeviceSection, network);
    QFETCH(CheckStatus, status);
    QFETCH(QString, symbol);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    const HardwareCheck check = DiagnosticsService::wifiCheck(components, network.nodes);
    QCOMPARE(check.title, u"Wi-Fi"_s);
    QCOMPARE(check.symbol, symbol);
    QCOMPARE(shown(check.section), u"network"_s);
    compareCheck(check, status, summary, measurement);
}

void PeripheralChecksTest::bluetooth_data()
{
    QTest::addColumn<DeviceSection>("section");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    const QString noController = u"Aucun contrôleur Bluetooth détecté."_s;
    QTest::newRow("empty section") << nodes() << CheckStatus::info << noController << u"Non détecté"_s;
    QTest::newRow("devices without controller")
        << nodes({node(u"AirPods Pro"_s, connected), node(u"Magic Mouse"_s, disconnected)}) << CheckStatus::info
        << noController << u"Non détecté"_s;
    QTest::newRow("controller and three devices")
        << nodes({node(u"Contrôleur Bluetooth"_s, neutral, u"BCM_4387"_s), node(u"AirPods Pro"_s, connected),
                 node(u"Magic Mouse"_s, connected), node(u"Enceinte"_s, disconnected)})
        << CheckStatus::ok << u"Contrôleur BCM_4387 opérationnel — 3 appareil(s) appairé(s), 2 connecté(s)."_s
        << u"BCM_4387"_s;
    QTest::newRow("controller after the devices, device to check")
        << nodes({node(u"Clavier"_s, DeviceStatus::warning), node(u"Contrôleur Bluetooth"_s, neutral, u"BCM_4378"_s)})
        << CheckStatus::ok << u"Contrôleur BCM_4378 opérationnel — 1 appareil(s) appairé(s), 0 connecté(s)."_s
        << u"BCM_4378"_s;
    QTest::newRow("controller without chipset")
        << nodes({node(u"Contrôleur Bluetooth"_s, neutral)}) << CheckStatus::ok
        << u"Contrôleur )intégréString(localized:  opérationnel — 0 appareil(s) appairé(s), 0 connecté(s)."_s
        << u"Présent"_s;
    QTest::newRow("controller with empty chipset")
        << nodes({node(u"Contrôleur Bluetooth"_s, neutral, u""_s)}) << CheckStatus::ok
        << u"Contrôleur  opérationnel — 0 appareil(s) appairé(s), 0 connecté(s)."_s << u""_s;
}

void PeripheralChecksTest::bluetooth()
{
    QFETCH(DeviceSection, section);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    const HardwareCheck check = DiagnosticsService::bluetoothCheck(section.nodes);
    QCOMPARE(check.title, u"Bluetooth"_s);
    QCOMPARE(check.symbol, u"dot.radiowaves.right"_s);
    QCOMPARE(shown(check.section), u"bluetooth"_s);
    compareCheck(check, status, summary, measurement);
}

void PeripheralChecksTest::audio_data()
{
    QTest::addColumn<DeviceSection>("section");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    QTest::newRow("no device") << nodes() << CheckStatus::info << u"Aucun périphérique audio détecté."_s
                               << u"Non détecté"_s;
    QTest::newRow("only external devices")
        << nodes({node(u"AirPods Pro"_s, connected), node(u"Interface USB"_s, neutral)}) << CheckStatus::info
        << u"Aucun périphérique audio intégré détecté (2 périphérique(s) au total)."_s << u"Non détecté"_s;
    QTest::newRow("built-in and external devices")
        << nodes({builtIn(node(u"Microphone MacBook Pro"_s, connected)), node(u"AirPods Pro"_s, connected),
                 builtIn(node(u"Haut-parleurs MacBook Pro"_s, neutral))})
        << CheckStatus::ok << u"Microphone MacBook Pro, Haut-parleurs MacBook Pro — 3 périphérique(s) audio au total."_s
        << u"2 intégré(s)"_s;
}

void PeripheralChecksTest::audio()
{
    QFETCH(DeviceSection, section);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    const HardwareCheck check = DiagnosticsService::audioCheck(section.nodes);
    QCOMPARE(check.title, u"Audio"_s);
    QCOMPARE(check.symbol, u"speaker.wave.2"_s);
    QCOMPARE(shown(check.section), u"audio"_s);
    compareCheck(check, status, summary, measurement);
}

void PeripheralChecksTest::camera_data()
{
    QTest::addColumn<DeviceSection>("section");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    QTest::newRow("no camera") << nodes() << CheckStatus::info << u"Aucune caméra détectée."_s
                               << u"Non détectée"_s;
    QTest::newRow("one camera") << nodes({node(u"Caméra FaceTime HD"_s, connected)}) << CheckStatus::ok
                                << u"Caméra FaceTime HD opérationnelle."_s << u"1"_s;
    QTest::newRow("three cameras")
        << nodes({node(u"Caméra FaceTime HD"_s, connected), node(u"OBS Virtual Camera"_s, connected),
                 node(u"iPhone de Claire"_s, connected)})
        << CheckStatus::ok << u"Caméra FaceTime HD opérationnelle, 3 au total (virtuelles comprises)."_s << u"3"_s;
}

void PeripheralChecksTest::camera()
{
    QFETCH(DeviceSection, section);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    const HardwareCheck check = DiagnosticsService::cameraCheck(section.nodes);
    QCOMPARE(check.title, u"Caméra"_s);
    QCOMPARE(check.symbol, u"camera"_s);
    QCOMPARE(shown(check.section), u"camera"_s);
    compareCheck(check, status, summary, measurement);
}

void PeripheralChecksTest::usb_data()
{
    QTest::addColumn<DeviceSection>("section");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    const QString nothingPlugged =
        u"Aucun appareil branché — l'état des ports ne peut se vérifier qu'en y connectant un périphérique."_s;
    QTest::newRow("no bus") << nodes() << nothingPlugged << u"0"_s;
    QTest::newRow("controllers only")
        << nodes({node(u"USB31Bus"_s, neutral, std::nullopt, {node(u"Concentrateur"_s, neutral)})}) << nothingPlugged
        << u"0"_s;
    QTest::newRow("devices at every depth, in walk order")
        << nodes({node(u"USB31Bus"_s, neutral, std::nullopt,
                      {node(u"Concentrateur"_s, neutral, std::nullopt,
                            {node(u"Récepteur Logitech"_s, connected), node(u"Clavier"_s, connected)}),
                       node(u"Clé USB"_s, connected)}),
                 node(u"USB20Bus"_s, neutral, std::nullopt, {node(u"iPhone"_s, connected)})})
        << u"Récepteur Logitech, Clavier, Clé USB, iPhone."_s << u"4"_s;
}

void PeripheralChecksTest::usb()
{
    QFETCH(DeviceSection, section);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    const HardwareCheck check = DiagnosticsService::usbCheck(section.nodes);
    QCOMPARE(check.title, u"USB"_s);
    QCOMPARE(check.symbol, u"cable.connector"_s);
    QCOMPARE(shown(check.section), u"usb"_s);
    compareCheck(check, CheckStatus::info, summary, measurement);
}

void PeripheralChecksTest::thunderbolt_data()
{
    QTest::addColumn<DeviceSection>("section");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    const QString noBus = u"Aucun bus Thunderbolt exposé par ce Mac."_s;
    QTest::newRow("no bus") << nodes() << noBus << u"0"_s;
    QTest::newRow("buses without ports") << nodes({bus(u"Bus Thunderbolt 1"_s, {})}) << noBus << u"0"_s;
    QTest::newRow("two buses, four ports, one connected")
        << nodes({bus(u"Bus Thunderbolt 1"_s, {port(u"Port 1"_s, disconnected), port(u"Port 2"_s, connected)}),
                 bus(u"Bus Thunderbolt 2"_s,
                     {withSymbol(node(u"CalDigit TS4"_s, connected, std::nullopt, {port(u"Port 1"_s, disconnected)}),
                                 u"bolt.horizontal"_s),
                      port(u"Port 1"_s, disconnected)})})
        << u"4 port(s) sur 2 bus — 1 occupé(s)."_s << u"1/4"_s;
    QTest::newRow("ports all free")
        << nodes({bus(u"Bus Thunderbolt 1"_s, {port(u"Port 1"_s, disconnected), port(u"Port 2"_s, disconnected)})})
        << u"2 port(s) sur 1 bus — aucun appareil connecté."_s << u"0/2"_s;
}

void PeripheralChecksTest::thunderbolt()
{
    QFETCH(DeviceSection, section);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    const HardwareCheck check = DiagnosticsService::thunderboltCheck(section.nodes);
    QCOMPARE(check.title, u"Thunderbolt"_s);
    QCOMPARE(check.symbol, u"bolt.horizontal"_s);
    QCOMPARE(shown(check.section), u"thunderbolt"_s);
    compareCheck(check, CheckStatus::info, summary, measurement);
}

QUILLON_TEST_MAIN(PeripheralChecksTest)
#include "tst_peripheral_checks.moc"
