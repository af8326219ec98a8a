#include "check_test_support.h"
#include "collectors/fakes.h"
#include "common/test_main.h"

#include "collectors/battery_service.h"
#include "collectors/hardware_service.h"
#include "collectors/inventory_service.h"
#include "diagnostics/diagnostics_service.h"

#include <QSet>

using namespace CheckTest;

Q_DECLARE_METATYPE(ThermalState)

namespace {

// A portable with a battery and one volume, 16 GiB of memory, up for `upDays` at the
// clock's moment with `swapUsed` bytes of swap.
DiagnosticsReport laptopReport(qint64 swapUsed = 318767104, qint64 upDays = 3, ThermalState state = ThermalState::nominal)
{
    FakeMac mac;
    mac.kernel->values = {{u"hw.memsize"_s, qint64(17179869184)}, {u"kern.boottime"_s, 1'800'000'000 - upDays * 86400},
                          {u"vm.swapusage"_s, QJsonObject{{u"total"_s, swapUsed}, {u"used"_s, swapUsed}, {u"available"_s, 0}}}};
    mac.process->state = state;
    HardwareInfo hardware{.memory = u"16 GB"_s, .osVersion = u"macOS 15.1 (24B83)"_s, .uptime = u"3 j 0 h"_s};
    hardware.components = {.trackpad = present(), .keyboard = present(), .smc = present(), .isPortable = true};
    const StorageVolume volume{.name = u"HD"_s, .totalBytes = 1e12, .isInternal = true};
    return DiagnosticsService::build(mac.platform(), hardware, BatteryInfo{.healthPercent = 91}, {volume}, {});
}

// Everything a refresh collects from one capture shipped with the project, judged.
DiagnosticsReport captureReport(const QString &name)
{
    const Platform platform = capturePlatform(name);
    const Result<HardwareInfo> hardware = HardwareService::load(platform);
    const Result<QList<StorageVolume>> volumes = InventoryService::storage(platform);
    Inventory inventory;
    QHash<AppSection, QString> failures;
    for (const AppSection section : AppSections::allCases()) {
        if (Result<QList<DeviceNode>> nodes = InventoryService::devices(platform, section); nodes.ok())
            inventory.insert(section, nodes.value());
        else
            failures.insert(section, nodes.failure().description());
    }
    return DiagnosticsService::build(platform, hardware.ok() ? std::optional(hardware.value()) : std::nullopt,
                                     BatteryService::load(platform), volumes.ok() ? volumes.value() : QList<StorageVolume>(), inventory,
                                     failures);
}

HardwareCheck titled(const DiagnosticsReport &report, const QString &title)
{
    const auto found = std::find_if(report.checks.cbegin(), report.checks.cend(),
                                    [&title](const HardwareCheck &check) { return check.title == title; });
    return found != report.checks.cend() ? *found : HardwareCheck();
}

} // namespace

class DiagnosticsServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The order of the checks, each with the section it opens and its live reading.
    void checkOrder()
    {
        const DiagnosticsReport report = laptopReport();
        QStringList frames;
        for (const HardwareCheck &check : report.checks)
            frames.append(frame(check));
        QCOMPARE(frames, (QStringList{
            u"Gestion à distance | lock.shield | hardware"_s, u"Verrouillage d'activation | lock.shield | hardware"_s,
            u"Localiser mon Mac | lock.shield | hardware"_s, u"FileVault | lock.shield | hardware"_s,
            u"Protection de l'intégrité du système | lock.shield | hardware"_s,
            u"Batterie | battery.100 | battery | highlighted"_s, u"HD | internaldrive | storage"_s, u"Écrans | display | displays"_s,
            u"Wi-Fi | wifi.slash | network"_s, u"Bluetooth | dot.radiowaves.right | bluetooth"_s, u"Audio | speaker.wave.2 | audio"_s,
            u"Caméra | camera | camera"_s, u"Clavier | keyboard | hardware"_s, u"Rétroéclairage clavier | light.max | hardware"_s,
            u"Trackpad | rectangle.and.hand.point.up.left | hardware"_s, u"Retour haptique | hand.tap | hardware"_s,
            u"Touch ID | touchid | hardware"_s, u"Angle d'écran | laptopcomputer.and.arrow.down | hardware lidAngle"_s,
            u"Autres capteurs | sensor | hardware"_s, u"USB | cable.connector | usb"_s, u"Thunderbolt | bolt.horizontal | thunderbolt"_s,
            u"Mémoire | memorychip | hardware"_s, u"Processeur | cpu | hardware processorLoad"_s,
            u"Température | thermometer.medium | hardware processorTemperature"_s, u"Système | gearshape | hardware"_s}));
        QCOMPARE(report.generatedAt, QDateTime::fromSecsSinceEpoch(1'800'000'000, Qt::UTC));
        // Every check of every build has an identifier of its own.
        QSet<QUuid> ids;
        for (const DiagnosticsReport &built : {report, laptopReport()})
            for (const HardwareCheck &check : built.checks)
                ids.insert(check.id);
        QCOMPARE(ids.size(), 2 * report.checks.size());
    }

    // Without a hardware record the machine is no portable: the battery and the six built-in
    // parts do not apply, the five ownership facts cannot be told, and the only point to
    // watch is the missing storage.
    void nothingCollected()
    {
        const DiagnosticsReport report = DiagnosticsService::build(FakeMac().platform(), std::nullopt, std::nullopt, {}, {});
        QCOMPARE(report.checks.size(), 25);
        QCOMPARE(report.count(CheckStatus::nonApplicable), 7);
        QCOMPARE(report.checks.first().summary, u"Non vérifiable — informations matérielles non lues."_s);
        QCOMPARE(report.headline(), u"1 point à surveiller"_s);
    }

    // The kernel values and the thermal state that the build reads for its rules.
    void readings_data()
    {
        QTest::addColumn<DiagnosticsReport>("report");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("expected");
        QTest::newRow("swap over half the memory") << laptopReport(8589934593) << u"Mémoire"_s
            << u"attention | 16 GB de RAM mais 8,59\u00A0Go d'échange sur disque — la machine manque de mémoire. | 16 GB"_s;
        QTest::newRow("serious thermal state") << laptopReport(0, 3, ThermalState::serious) << u"Température"_s
            << u"attention | Température élevée : macOS réduit les performances. | Élevée"_s;
        QTest::newRow("up exactly 30 days") << laptopReport(0, 30) << u"Système"_s
            << u"attention | macOS 15.1 (24B83) — allumé depuis 30 jours, un redémarrage est conseillé. | 3 j 0 h"_s;
    }

    void readings()
    {
        QFETCH(DiagnosticsReport, report);
        QFETCH(QString, title);
        QTEST(verdict(titled(report, title)), "expected");
    }

    // The sample is a MacBook Pro 14" charging at 87 % with 91 % of its capacity, an LG screen,
    // a dock holding a receiver and an SSD, AirPods and a mouse connected.
    void sampleCapture()
    {
        const DiagnosticsReport report = captureReport(u"sample"_s);
        QStringList checks;
        for (const HardwareCheck &check : report.checks)
            checks.append(check.title + u": "_s + statusName(check.status) + u' ' + check.measurement.value_or(u"-"_s));
        QCOMPARE(checks, (QStringList{
            u"Gestion à distance: ok Non géré"_s, u"Verrouillage d'activation: ok Désactivé"_s,
            u"Localiser mon Mac: ok Désactivé"_s, u"FileVault: info Activé"_s,
            u"Protection de l'intégrité du système: ok Activée"_s,
            u"Batterie: ok 91 %"_s, u"Macintosh HD: ok 494,38\u00A0Go"_s, u"Sauvegarde: ok 1\u00A0To"_s, u"Écrans: ok 2"_s,
            u"Wi-Fi: ok BCM4387"_s, u"Bluetooth: ok BCM_4387"_s, u"Audio: ok 2 intégré(s)"_s, u"Caméra: ok 1"_s,
            u"Clavier: ok Français"_s, u"Rétroéclairage clavier: ok Présent"_s, u"Trackpad: ok 0 erreur"_s,
            u"Retour haptique: ok Actif"_s, u"Touch ID: ok Détecté"_s, u"Angle d'écran: ok Détecté"_s, u"Autres capteurs: ok 8"_s,
            u"USB: info 2"_s, u"Thunderbolt: info 1/3"_s, u"Mémoire: ok 16 GB"_s, u"Processeur: info -"_s,
            u"Température: ok Normale"_s, u"Système: ok 3 j 20 h"_s}));
        QCOMPARE(report.headline(), u"Aucun problème détecté"_s);
        // Three buses; the dock's upstream port and the port it hangs on are in use.
        // The dock's own link to the Mac is not a port: three bus ports, one of them in use.
        QCOMPARE(titled(report, u"Thunderbolt"_s).summary, u"3 port(s) sur 3 bus — 1 occupé(s)."_s);
    }

    void otherCaptures_data()
    {
        QTest::addColumn<QString>("capture");
        QTest::addColumn<QString>("headline");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("expected");
        // 1180 cycles of 1000 and a health to service: the capacity verdict wins.
        QTest::newRow("worn battery") << u"worn-battery"_s << u"2 points à surveiller"_s << u"Batterie"_s
            << u"attention | Capacité maximale à 71 %, sous le seuil de 80 % (1180 cycles, charge 42 %). | 71 % | 0.71 | 1180 cycles"_s;
        // Booted 3 550 625 s (41.1 days) before the capture.
        QTest::newRow("desktop up 41 days") << u"desktop-mac-studio"_s << u"2 points à surveiller"_s << u"Système"_s
            << u"attention | macOS 15.1 (24B83) — allumé depuis 41 jours, un redémarrage est conseillé. | 41 j 2 h"_s;
        // 227 256 819 712 of 245 107 195 904 bytes used (92.7 %), but the drive's log says 96 % of
        // its endurance used and 3 media errors: the worn drive wins over the full volume.
        QTest::newRow("worn SSD") << u"storage-mix"_s << u"1 anomalie détectée"_s << u"Macintosh HD"_s
            << u"alerte | SSD usé : 96 % de son endurance consommée, 3 erreurs de support — sauvegarde et remplacement à prévoir. | 245,11\u00A0Go | 0.927173 | -"_s;
        // macOS 26: seven devices under the host type, in a dock's two hubs and on a bus of
        // their own; the display's and the dock's upstream links are no ports.
        QTest::newRow("M5 Max, USB under the host type") << u"m5-max-tahoe"_s << u"Aucun problème détecté"_s << u"USB"_s
            << u"info | USB Receiver, Studio Display Camera Dock, USB Billboard Device, Extreme SSD, "
               "USB 10/100/1G/2.5G LAN, Magic Keyboard with Touch ID, Unnamed Device. | 7"_s;
        QTest::newRow("M5 Max, USB4 ports") << u"m5-max-tahoe"_s << u"Aucun problème détecté"_s << u"Thunderbolt"_s
            << u"info | 4 port(s) sur 3 bus — 2 occupé(s). | 2/4"_s;
        // macOS 27: the capacities from BatteryData and the pack, 4602 of 4563 mAh.
        QTest::newRow("macOS 27 battery") << u"air-m5-macos27"_s << u"1 anomalie · 2 points à surveiller"_s << u"Batterie"_s
            << u"ok | Capacité maximale à 100 % de l'origine (41 cycles, charge 42 %). | 100 % | 1 | 41 cycles"_s;
        // USB, Thunderbolt, Bluetooth and camera answers fail: none of them is judged.
        QTest::newRow("camera report unreadable") << u"profiler-failures"_s << u"1 point à surveiller · 4 lectures impossibles"_s << u"Caméra"_s
            << u"info | Lecture impossible — Réponse de system_profiler illisible. | Lecture impossible"_s;
        QTest::newRow("USB tool failed") << u"profiler-failures"_s << u"1 point à surveiller · 4 lectures impossibles"_s << u"USB"_s
            << u"info | Lecture impossible — system_profiler a échoué : code 1 pour SPUSBDataType | Lecture impossible"_s;
        // Who else controls the Mac: enrolled through DEP, Find My left on, a command that failed.
        QTest::newRow("managed Mac") << u"air-m5-macos27"_s << u"1 anomalie · 2 points à surveiller"_s << u"Gestion à distance"_s
            << u"alerte | Inscrit via DEP et géré par un MDM — géré par une organisation : à faire libérer avant la vente, car il se réinscrit après effacement. | Géré"_s;
        QTest::newRow("Find My on") << u"intel-macbook-pro"_s << u"2 points à surveiller"_s << u"Localiser mon Mac"_s
            << u"attention | Activé : le propriétaire doit le désactiver avant la vente. | Activé"_s;
        QTest::newRow("enrolment command failed") << u"profiler-failures"_s << u"1 point à surveiller · 4 lectures impossibles"_s
            << u"Gestion à distance"_s << u"info | Non vérifiable — profiles status -type enrollment a échoué (code 1). | Non vérifiable"_s;
    }

    void otherCaptures()
    {
        QFETCH(QString, capture);
        QFETCH(QString, title);
        const DiagnosticsReport report = captureReport(capture);
        QTEST(report.headline(), "headline");
        QTEST(verdict(titled(report, title)), "expected");
    }
};

QUILLON_TEST_MAIN(DiagnosticsServiceTest)
#include "tst_diagnostics_service.moc"
