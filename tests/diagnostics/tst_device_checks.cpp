#include "check_test_support.h"
#include "common/test_main.h"

#include "diagnostics/diagnostics_rules.h"

using namespace CheckTest;
using namespace DiagnosticsService;

namespace {

BuiltInComponents parts(bool portable, std::optional<qint64> trackpadErrors = {}, std::optional<BuiltInComponents::Component> wifi = {})
{
    return {.wifi = wifi.value_or(BuiltInComponents::Component()), .trackpadCriticalErrors = trackpadErrors, .isPortable = portable};
}

// Every component present, with a detail but for the backlight and Touch ID.
BuiltInComponents allParts(std::optional<qint64> trackpadErrors = {})
{
    return {.touchID = present(), .trackpad = present(u"Détecté"_s), .haptics = present(u"Actif"_s), .keyboard = present(u"Français"_s),
            .keyboardBacklight = present(), .lidAngle = present(u"Détecté"_s), .trackpadCriticalErrors = trackpadErrors,
            .isPortable = true};
}

HardwareCheck wifi(QStringView network, std::optional<BuiltInComponents::Component> chip = {})
{
    return wifiCheck(parts(true, {}, chip), section(network));
}

} // namespace

class DeviceChecksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void verdicts_data()
    {
        QTest::addColumn<HardwareCheck>("check");
        QTest::addColumn<QString>("expected");

        const QString noScreen = u"info | Aucun écran détecté. | 0"_s;
        QTest::newRow("displays: processor without screens") << displaysCheck(section(u"GPU")) << noScreen;
        QTest::newRow("displays: one screen") << displaysCheck(section(u"GPU[Color LCD+]")) << u"ok | Color LCD — 1 écran détecté. | 1"_s;
        QTest::newRow("displays: two of three, on two processors") << displaysCheck(section(u"GPU[Color LCD+, Projecteur-], GPU[LG+]"))
            << u"ok | Color LCD, LG — 2 écrans détectés. | 2"_s;

        const QString working = u"ok | Matériel Wi-Fi opérationnel — "_s;
        QTest::newRow("Wi-Fi: no chip, no service with a hyphen") << wifi(u"Ethernet~10.0.0.2+, WiFi USB~Atelier+")
            << u"info | Aucune puce Wi-Fi détectée sur cette machine. | Non détecté"_s;
        QTest::newRow("Wi-Fi: connected service, no chip") << wifi(u"Ethernet+, Wi-Fi~Atelier+")
            << working + u"connecté à Atelier. | Présent"_s;
        QTest::newRow("Wi-Fi: chip, service not associated") << wifi(u"Wi-Fi~Wi-Fi-", present(u"BCM4387"_s))
            << working + u"puce BCM4387, aucun réseau associé pour l'instant. | BCM4387"_s;
        QTest::newRow("Wi-Fi: chip, connected service") << wifi(u"Wi-Fi~10.0.0.4+", present(u"BCM4387"_s))
            << working + u"puce BCM4387, connecté à 10.0.0.4. | BCM4387"_s;
        QTest::newRow("Wi-Fi: only the first service counts") << wifi(u"Wi-Fi-, Wi-Fi 2~Atelier+")
            << working + u"aucun réseau associé pour l'instant. | Présent"_s;

        QTest::newRow("Bluetooth: devices without controller") << bluetoothCheck(section(u"AirPods+"))
            << u"info | Aucun contrôleur Bluetooth détecté. | Non détecté"_s;
        QTest::newRow("Bluetooth: controller and three devices")
            << bluetoothCheck(section(u"Contrôleur~BCM_4387, AirPods+, Souris+, Enceinte-"))
            << u"ok | Contrôleur BCM_4387 opérationnel — 3 appareil(s) appairé(s), 2 connecté(s). | BCM_4387"_s;
        QTest::newRow("Bluetooth: controller after a device to check") << bluetoothCheck(section(u"Clavier!, Contrôleur~BCM_4378"))
            << u"ok | Contrôleur BCM_4378 opérationnel — 1 appareil(s) appairé(s), 0 connecté(s). | BCM_4378"_s;

        QTest::newRow("audio: only external devices") << audioCheck(section(u"AirPods+, Interface"))
            << u"info | Aucun périphérique audio intégré détecté (2 périphérique(s) au total). | Non détecté"_s;
        QTest::newRow("audio: built-in and external") << audioCheck(section(u"Micro+*, AirPods+, Haut-parleurs*"))
            << u"ok | Micro, Haut-parleurs — 3 périphérique(s) audio au total. | 2 intégré(s)"_s;

        QTest::newRow("camera: one") << cameraCheck(section(u"FaceTime HD+")) << u"ok | FaceTime HD opérationnelle. | 1"_s;

        QTest::newRow("USB: controllers and hubs only") << usbCheck(section(u"Bus[Hub]"))
            << u"info | Aucun appareil branché — l'état des ports ne peut se vérifier qu'en y connectant un périphérique. | 0"_s;
        QTest::newRow("USB: devices at every depth, in walk order")
            << usbCheck(section(u"Bus[Hub[Récepteur+, Clavier+], Clé+], Bus[iPhone+]")) << u"info | Récepteur, Clavier, Clé, iPhone. | 4"_s;

        QTest::newRow("Thunderbolt: ports all free") << thunderboltCheck(section(u"Bus[Port#-, Port#-]"))
            << u"info | 2 port(s) sur 1 bus — aucun appareil connecté. | 0/2"_s;
        // A connected device is no port; the ports at every depth count.
        QTest::newRow("Thunderbolt: two buses, four ports, one in use")
            << thunderboltCheck(section(u"Bus[Port#-, Port#+], Bus[Dock+[Port#-], Port#-]"))
            << u"info | 4 port(s) sur 2 bus — 1 occupé(s). | 1/4"_s;

        const QString desktop = u"nonApplicable | Composant absent de ce modèle. | -"_s;
        QTest::newRow("keyboard with its layout") << keyboardCheck(allParts())
            << u"ok | Clavier intégré reconnu par le pilote (disposition Français). | Français"_s;
        QTest::newRow("backlight") << keyboardBacklightCheck(allParts()) << u"ok | Interface de rétroéclairage présente. | -"_s;
        const QString healthy = u"ok | Trackpad intégré sain, aucune erreur critique rapportée par le pilote. | Détecté"_s;
        QTest::newRow("trackpad without error count") << trackpadCheck(allParts()) << healthy;
        QTest::newRow("trackpad with critical errors") << trackpadCheck(allParts(3))
            << u"attention | Le pilote rapporte 3 erreur(s) critique(s). | Détecté"_s;
        QTest::newRow("trackpad missing, whatever the error count") << trackpadCheck(parts(true, 5))
            << u"info | Aucun trackpad intégré détecté. | Non détecté"_s;
        QTest::newRow("lid angle") << lidAngleCheck(allParts())
            << u"ok | Angle d'ouverture mesuré en direct par le capteur HID. | Détecté"_s;
        const QString noSensor = u"info | Aucune interface HID de capteur interne détectée. | "_s;
        QTest::newRow("sensors: one") << sensorsCheck({.sensorInterfaces = 1})
            << u"ok | 1 interface(s) HID de capteurs internes actives (luminosité, couvercle, alimentation…). | 1"_s;
    }

    void verdicts()
    {
        QFETCH(HardwareCheck, check);
        QTEST(verdict(check), "expected");
    }

};

QUILLON_TEST_MAIN(DeviceChecksTest)
#include "tst_device_checks.moc"
