#include "common/test_main.h"
#include "machine_fakes.h"

#include "collectors/built_in_device_service.h"

using namespace Qt::StringLiterals;
using Component = BuiltInComponents::Component;

namespace {

// The detail first, then one "label = value" per row; nothing for an absent component.
QStringList describe(const Component &component)
{
    const QStringList detail = component.present ? QStringList{component.detail.value_or(u"(no detail)"_s)} : QStringList();
    return detail + rowTexts(component.rows);
}

PropertyDictionary hidInterface(const QVariant &page, const QVariant &usage = {})
{
    PropertyDictionary dict{{u"Transport"_s, u"SPU"_s}};
    if (page.isValid())
        dict.insert(u"PrimaryUsagePage"_s, page);
    if (usage.isValid())
        dict.insert(u"PrimaryUsage"_s, usage);
    return dict;
}

BuiltInComponents captureComponents(const QString &name)
{
    return BuiltInDeviceService::load(capturePlatform(name));
}

} // namespace

class TestBuiltInDeviceService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sensorInterfaces()
    {
        const QList<PropertyDictionary> interfaces{hidInterface(qint64(0x20)),   hidInterface(qint64(0xFF00)),
                                                   hidInterface(qint64(0xFF0C)), hidInterface(qint64(0x01)),
                                                   hidInterface(QVariant()),     hidInterface(u"32"_s)};
        QCOMPARE(BuiltInDeviceService::sensorInterfaceCount(interfaces), 3);
    }

    void lidAngle_data()
    {
        QTest::addColumn<QVariant>("page");
        QTest::addColumn<QVariant>("usage");
        QTest::addColumn<bool>("present");
        QTest::newRow("sensor page, lid angle usage") << QVariant(qint64(0x20)) << QVariant(qint64(0x8A)) << true;
        QTest::newRow("boxed real numbers") << QVariant(32.0) << QVariant(138.0) << true;
        QTest::newRow("neighbouring usage") << QVariant(qint64(0x20)) << QVariant(qint64(0x8B)) << false;
        QTest::newRow("vendor page") << QVariant(qint64(0xFF00)) << QVariant(qint64(0x8A)) << false;
    }

    void lidAngle()
    {
        QFETCH(QVariant, page);
        QFETCH(QVariant, usage);
        QFETCH(bool, present);
        const QList<PropertyDictionary> interfaces{hidInterface(qint64(1), qint64(6)), hidInterface(page, usage)};
        const QStringList expected{u"Détecté"_s, u"Page d'usage HID = 0x20 (capteurs)"_s, u"Usage HID = 0x8A"_s,
                                   u"Liaison = SPU"_s};
        QCOMPARE(describe(BuiltInDeviceService::lidAngle(interfaces)), present ? expected : QStringList());
    }

    void portability_data()
    {
        QTest::addColumn<bool>("trackpad");
        QTest::addColumn<bool>("battery");
        QTest::addColumn<bool>("portable");
        QTest::newRow("desktop") << false << false << false;
        QTest::newRow("trackpad without battery service") << true << false << true;
        QTest::newRow("battery service without trackpad") << false << true << true;
    }

    void portability()
    {
        QFETCH(bool, trackpad);
        QFETCH(bool, battery);
        FakeMac mac;
        if (trackpad)
            mac.registry->byClass[u"AppleMultitouchDevice"_s] = {{{u"Product"_s, u"Trackpad"_s}}};
        if (battery)
            mac.registry->byClass[u"AppleSmartBattery"_s] = {{{u"BatteryInstalled"_s, true}}};
        const BuiltInComponents components = BuiltInDeviceService::load(mac.platform());
        QFETCH(bool, portable);
        QCOMPARE(components.isPortable, portable);
        QCOMPARE(components.trackpad.present, trackpad);
        QVERIFY(!components.trackpadCriticalErrors);
    }

    void wifi_data()
    {
        QTest::addColumn<QString>("matching");  // "class" or "name"
        QTest::addColumn<QString>("candidate");
        QTest::addColumn<QVariant>("chipSet");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("found by class with its chip set")
            << u"class"_s << u"AirPortBrcmNIC"_s << QVariant(qint64(4387))
            << QStringList{u"BCM4387"_s, u"Puce = BCM4387"_s, u"Pilote = AirPortBrcmNIC"_s};
        QTest::newRow("no chip set") << u"class"_s << u"AirPortBrcmNIC"_s << QVariant()
                                     << QStringList{u"Détectée"_s, u"Pilote = AirPortBrcmNIC"_s};
        QTest::newRow("found by name") << u"name"_s << u"AirPortBrcm4360"_s << QVariant(qint64(4360))
                                       << QStringList{u"BCM4360"_s, u"Puce = BCM4360"_s, u"Pilote = AirPortBrcm4360"_s};
        QTest::newRow("Intel adapter keeps the BCM prefix")
            << u"class"_s << u"AppleIntelWifiAdapter"_s << QVariant(qint64(9560))
            << QStringList{u"BCM9560"_s, u"Puce = BCM9560"_s, u"Pilote = AppleIntelWifiAdapter"_s};
        QTest::newRow("another class") << u"class"_s << u"IO80211Controller"_s << QVariant(qint64(1)) << QStringList{};
    }

    void wifi()
    {
        QFETCH(QString, matching);
        QFETCH(QString, candidate);
        QFETCH(QVariant, chipSet);
        QFETCH(QStringList, expected);
        PropertyDictionary chip{{u"IOClass"_s, u"SomethingElse"_s}};
        if (chipSet.isValid())
            chip.insert(u"ChipSet"_s, chipSet);
        FakeRegistry registry;
        (matching == u"class"_s ? registry.byClass : registry.byName)[candidate] = {chip};
        QCOMPARE(describe(BuiltInDeviceService::wifi(registry)), expected);
    }

    void firmwareVersion_data()
    {
        QTest::addColumn<QString>("firmware");
        QTest::addColumn<QString>("expected");
        QTest::newRow("Broadcom description") << u"wl0: Sep 1 2023 version 20.10.1038.6.8.7.144 FWID 01-1"_s
                                              << u"20.10.1038.6.8.7.144"_s;
        QTest::newRow("version at the end") << u"fw version 7.1"_s << u"7.1"_s;
        QTest::newRow("ends at a tab") << u"version 1.2\tFWID"_s << u"1.2"_s;
        QTest::newRow("capitalised word does not count") << u"Version 1.2 FWID"_s << u"Version 1.2 FWID"_s;
    }

    void firmwareVersion()
    {
        QFETCH(QString, firmware);
        QFETCH(QString, expected);
        QCOMPARE(BuiltInDeviceService::shortFirmwareVersion(firmware), expected);
    }

    void trackpadErrors_data()
    {
        QTest::addColumn<QVariant>("criticalErrors");
        QTest::addColumn<QString>("detail");
        QTest::addColumn<QString>("row"); // empty: no row
        QTest::newRow("none") << QVariant(qint64(0)) << u"0 erreur"_s << u"Erreurs critiques = 0"_s;
        QTest::newRow("one takes the plural") << QVariant(qint64(1)) << u"1 erreurs"_s << u"Erreurs critiques = 1"_s;
        QTest::newRow("two") << QVariant(qint64(2)) << u"2 erreurs"_s << u"Erreurs critiques = 2"_s;
        QTest::newRow("not reported") << QVariant() << u"Détecté"_s << QString();
    }

    void trackpadErrors()
    {
        QFETCH(QVariant, criticalErrors);
        QFETCH(QString, detail);
        QFETCH(QString, row);
        PropertyDictionary device{{u"Sensor Columns"_s, qint64(30)}};
        if (criticalErrors.isValid())
            device.insert(u"Critical Errors"_s, criticalErrors);
        FakeRegistry registry;
        registry.byClass[u"AppleMultitouchDevice"_s] = {device};
        const auto [trackpad, errors] = BuiltInDeviceService::trackpad(registry);
        // Columns without rows make no sensor grid line.
        QCOMPARE(describe(trackpad), (row.isEmpty() ? QStringList{detail} : QStringList{detail, row}));
        QCOMPARE(errors.has_value(), criticalErrors.isValid());
    }

    void keyboardLayout_data()
    {
        QTest::addColumn<QVariant>("language");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("French") << QVariant(u"French"_s) << QStringList{u"Français"_s, u"Disposition = Français"_s};
        QTest::newRow("unknown language as it is") << QVariant(u"Dutch"_s)
                                                   << QStringList{u"Dutch"_s, u"Disposition = Dutch"_s};
        QTest::newRow("no language") << QVariant() << QStringList{u"Détecté"_s};
        QTest::newRow("empty language is still the detail") << QVariant(QString()) << QStringList{QString()};
        QTest::newRow("language that is not a string") << QVariant(qint64(8)) << QStringList{u"Détecté"_s};
    }

    void keyboardLayout()
    {
        QFETCH(QVariant, language);
        QFETCH(QStringList, expected);
        PropertyDictionary driver;
        if (language.isValid())
            driver.insert(u"KeyboardLanguage"_s, language);
        FakeRegistry registry;
        registry.byClass[u"AppleHIDKeyboardEventDriverV2"_s] = {driver};
        QCOMPARE(describe(BuiltInDeviceService::keyboard(registry)), expected);
    }

    void sampleCapture()
    {
        const BuiltInComponents components = captureComponents(u"sample"_s);
        QCOMPARE(describe(components.touchID),
                 (QStringList{u"Détecté"_s, u"Pilote = AppleSandDollar"_s, u"Identifiant du capteur = 36"_s,
                              u"Version du micrologiciel = 11"_s, u"Pris en charge par le système = Oui"_s}));
        // The first keyboard driver is the built-in one; the USB receiver comes after it.
        QCOMPARE(describe(components.keyboard),
                 (QStringList{u"Français"_s, u"Modèle = Apple Internal Keyboard / Trackpad"_s,
                              u"Disposition = Français"_s, u"Code pays = 8"_s, u"Intégré = Oui"_s, u"Actif = Oui"_s,
                              u"Touche Échap = Oui"_s, u"Touche Globe = Oui"_s, u"Touche Siri = Non"_s,
                              u"Liaison = SPI"_s}));
        QCOMPARE(describe(components.keyboardBacklight),
                 (QStringList{u"Présent"_s, u"Interface = Keyboard Backlight"_s, u"Liaison = SPI"_s}));
        QCOMPARE(describe(components.lidAngle),
                 (QStringList{u"Détecté"_s, u"Page d'usage HID = 0x20 (capteurs)"_s, u"Usage HID = 0x8A"_s,
                              u"Liaison = SPU"_s}));
        QCOMPARE(describe(components.haptics),
                 (QStringList{u"Actif"_s, u"Révision de l'actionneur = 4"_s, u"Liaison = SPI"_s}));
        QCOMPARE(describe(components.wifi),
                 (QStringList{u"BCM4387"_s, u"Puce = BCM4387"_s, u"Pilote = AppleBCMWLANCore"_s,
                              u"Micrologiciel chargé = Oui"_s, u"Version du micrologiciel = 20.10.1038.6.8.7.144"_s}));
        QCOMPARE(describe(components.smc), (QStringList{u"Actif"_s, u"Génération = 3"_s, u"Pilote = AppleSMC"_s}));
        // Surface 13740 × 8640 hundredths of a millimetre.
        QCOMPARE(describe(components.trackpad),
                 (QStringList{u"0 erreur"_s, u"Modèle = Apple Internal Keyboard / Trackpad"_s,
                              u"Fabricant = Apple Inc."_s, u"Intégré = Oui"_s, u"Surface tactile = 137.4 × 86.4 mm"_s,
                              u"Grille de capteurs = 28 × 18"_s, u"Force Touch = Oui"_s, u"Retour haptique = Oui"_s,
                              u"Erreurs critiques = 0"_s, u"Réinitialisations = 2"_s, u"Liaison = SPI"_s}));
        QCOMPARE(components.trackpadCriticalErrors, 0);
        // One interface on page 0xFF0C, six on 0xFF00, one on 0x20.
        QCOMPARE(components.sensorInterfaces, 8);
        QVERIFY(components.isPortable);
    }

    void desktopCapture()
    {
        const BuiltInComponents components = captureComponents(u"desktop-mac-studio"_s);
        QVERIFY(!components.isPortable);
        QCOMPARE(components.trackpad, Component::absent());
        QVERIFY(!components.trackpadCriticalErrors);
        for (const Component &absent : {components.touchID, components.haptics, components.lidAngle,
                                        components.keyboardBacklight})
            QCOMPARE(absent, Component::absent());
        QCOMPARE(describe(components.keyboard).value(1), u"Modèle = Magic Keyboard with Numeric Keypad"_s);
        QCOMPARE(components.wifi.detail, u"BCM4387"_s);
        QCOMPARE(components.sensorInterfaces, 1);
    }

    void intelCapture()
    {
        const BuiltInComponents components = captureComponents(u"intel-macbook-pro"_s);
        QCOMPARE(describe(components.wifi),
                 (QStringList{u"BCM4364"_s, u"Puce = BCM4364"_s, u"Pilote = AirPortBrcmNIC"_s,
                              u"Micrologiciel chargé = Oui"_s, u"Version du micrologiciel = 9.30.514.0.32.5.94"_s}));
        QCOMPARE(describe(components.trackpad).mid(4, 2),
                 (QStringList{u"Surface tactile = 160.2 × 99.4 mm"_s, u"Grille de capteurs = 30 × 22"_s}));
        QVERIFY(components.isPortable);
    }
};

QUILLON_TEST_MAIN(TestBuiltInDeviceService)
#include "tst_built_in_device_service.moc"
