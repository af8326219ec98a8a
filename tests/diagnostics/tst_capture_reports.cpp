#include "check_test_support.h"
#include "common/test_main.h"

#include "collectors/battery_service.h"
#include "collectors/hardware_service.h"
#include "collectors/inventory_service.h"
#include "diagnostics/diagnostics_service.h"
#include "platform/capture/capture_folder.h"
#include "platform/capture/capture_platform.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace CheckTest;

namespace {

const QString nbsp = QString(QChar(0x00A0));

// Everything a refresh collects from one capture shipped with the project, judged.
std::optional<DiagnosticsReport> reportOfCapture(const QString &name)
{
    auto opened = CaptureFolder::open(QStringLiteral(QUILLON_CAPTURES_DIR) + u'/' + name);
    if (!std::holds_alternative<std::shared_ptr<CaptureFolder>>(opened))
        return std::nullopt;
    const Platform platform = makeCapturePlatform(std::get<std::shared_ptr<CaptureFolder>>(opened));

    std::optional<HardwareInfo> hardware;
    if (Result<HardwareInfo> loaded = HardwareService::load(platform); loaded.ok())
        hardware = loaded.value();
    QList<StorageVolume> volumes;
    if (Result<QList<StorageVolume>> loaded = InventoryService::storage(platform); loaded.ok())
        volumes = loaded.value();
    Inventory inventory;
    for (const AppSection section : AppSections::dataSections()) {
        if (!AppSections::isDeviceSection(section))
            continue;
        if (Result<QList<DeviceNode>> loaded = InventoryService::devices(platform, section); loaded.ok())
            inventory.insert(section, loaded.value());
    }
    return DiagnosticsService::build(platform, hardware, BatteryService::load(platform), volumes, inventory);
}

} // namespace

class CaptureReportsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void sampleChecks_data();
    void sampleChecks();
    void sampleBattery();
    void sampleSummary();
    void captureVerdicts_data();
    void captureVerdicts();
    void captureHeadlines_data();
    void captureHeadlines();

private:
    std::optional<DiagnosticsReport> m_sample;
};

void CaptureReportsTest::initTestCase()
{
    m_sample = reportOfCapture(u"sample"_s);
    QVERIFY2(m_sample, "the sample capture could not be opened");
}

// The sample is a MacBook Pro 14" (M1 Pro, 16 GB) up 3 days 20 hours, charging at 87 %
// with 91 % of its capacity after 212 cycles, an LG screen, a CalDigit dock holding a
// Logitech receiver and a Samsung T7, AirPods and a Magic Mouse connected.
void CaptureReportsTest::sampleChecks_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("title");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    QTest::newRow("battery") << 0 << u"Batterie"_s << CheckStatus::ok
                    << u"Capacité maximale à 91 % de l'origine (212 cycles, charge 87 %)."_s << u"91 %"_s;
    QTest::newRow("system volume") << 1 << u"Macintosh HD"_s << CheckStatus::ok
                          << u"187,36"_s + nbsp + u"Go disponibles (62 % utilisés), S.M.A.R.T. vérifié."_s
                          << u"494,38"_s + nbsp + u"Go"_s;
    QTest::newRow("external SSD") << 2 << u"Sauvegarde"_s << CheckStatus::ok
                         << u"412,87"_s + nbsp + u"Go disponibles (59 % utilisés)."_s << u"1"_s + nbsp + u"To"_s;
    QTest::newRow("displays") << 3 << u"Écrans"_s << CheckStatus::ok << u"Color LCD, LG HDR 4K — 2 écrans détectés."_s << u"2"_s;
    QTest::newRow("Wi-Fi") << 4 << u"Wi-Fi"_s << CheckStatus::ok
                  << u"Matériel Wi-Fi opérationnel — puce BCM4387, connecté à 192.168.1.34."_s << u"BCM4387"_s;
    QTest::newRow("Bluetooth") << 5 << u"Bluetooth"_s << CheckStatus::ok
                      << u"Contrôleur BCM_4387 opérationnel — 5 appareil(s) appairé(s), 2 connecté(s)."_s
                      << u"BCM_4387"_s;
    QTest::newRow("audio") << 6 << u"Audio"_s << CheckStatus::ok
                  << u"Micro MacBook Pro, Haut-parleurs MacBook Pro — 4 périphérique(s) audio au total."_s
                  << u"2 intégré(s)"_s;
    QTest::newRow("camera") << 7 << u"Caméra"_s << CheckStatus::ok << u"Caméra FaceTime HD opérationnelle."_s << u"1"_s;
    QTest::newRow("keyboard") << 8 << u"Clavier"_s << CheckStatus::ok
                     << u"Clavier intégré reconnu par le pilote (disposition Français)."_s << u"Français"_s;
    QTest::newRow("keyboard backlight") << 9 << u"Rétroéclairage clavier"_s << CheckStatus::ok
                               << u"Interface de rétroéclairage présente."_s << u"Présent"_s;
    QTest::newRow("trackpad") << 10 << u"Trackpad"_s << CheckStatus::ok
                     << u"Trackpad intégré sain, aucune erreur critique rapportée par le pilote."_s << u"0 erreur"_s;
    QTest::newRow("haptics") << 11 << u"Retour haptique"_s << CheckStatus::ok << u"Actionneur haptique (Taptic Engine) présent."_s
                    << u"Actif"_s;
    QTest::newRow("Touch ID") << 12
        << u"Touch ID"_s << CheckStatus::ok
        << u"Capteur biométrique présent et reconnu par le système. L'enrôlement d'empreintes ne change pas cet état."_s
        << u"Détecté"_s;
    QTest::newRow("lid angle") << 13 << u"Angle d'écran"_s << CheckStatus::ok
                      << u"Angle d'ouverture mesuré en direct par le capteur HID."_s << u"Détecté"_s;
    // Eight HID interfaces on the pages 0x20, 0xFF00 and 0xFF0C; the keyboard's and the
    // Logitech receiver's keyboard and mouse pages do not count.
    QTest::newRow("other sensors") << 14 << u"Autres capteurs"_s << CheckStatus::ok
                          << u"8 interface(s) HID de capteurs internes actives (luminosité, couvercle, alimentation…)."_s
                          << u"8"_s;
    QTest::newRow("USB") << 15 << u"USB"_s << CheckStatus::info << u"USB Receiver, PSSD T7."_s << u"2"_s;
    // Three buses; the dock's upstream port and the port it hangs on are occupied.
    QTest::newRow("Thunderbolt") << 16 << u"Thunderbolt"_s << CheckStatus::info << u"4 port(s) sur 3 bus — 2 occupé(s)."_s
                        << u"2/4"_s;
    QTest::newRow("memory") << 17 << u"Mémoire"_s << CheckStatus::ok
                   << u"16 GB de RAM, 318,8"_s + nbsp + u"Mo d'échange sur disque."_s << u"16 GB"_s;
    QTest::newRow("processor") << 18 << u"Processeur"_s << CheckStatus::info
                      << u"Apple M1 Pro — 10 cœurs — 8 performance + 2 efficacité · charge mesurée en continu."_s
                      << none();
    QTest::newRow("temperature") << 19 << u"Température"_s << CheckStatus::ok
                        << u"Température de fonctionnement normale, contrôleur SMC actif."_s << u"Normale"_s;
    QTest::newRow("system") << 20 << u"Système"_s << CheckStatus::ok << u"macOS 15.1 (24B83) — allumé depuis 3 j 20 h."_s
                   << u"3 j 20 h"_s;
}

void CaptureReportsTest::sampleChecks()
{
    QFETCH(int, position);
    QFETCH(QString, title);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    QCOMPARE(m_sample->checks.size(), 21);
    const HardwareCheck &check = m_sample->checks.at(position);
    QCOMPARE(check.title, title);
    QCOMPARE(shown(check.status), shown(status));
    QCOMPARE(check.summary, summary);
    QCOMPARE(shown(check.measurement), measurement);
}

void CaptureReportsTest::sampleBattery()
{
    const HardwareCheck &battery = m_sample->checks.first();
    QCOMPARE(battery.symbol, u"battery.100.bolt"_s);
    QVERIFY(battery.progress);
    QCOMPARE(*battery.progress, 0.91);
    QCOMPARE(shown(battery.caption), u"212 cycles"_s);
    QVERIFY(battery.isHighlighted);
}

void CaptureReportsTest::sampleSummary()
{
    QCOMPARE(shown(m_sample->worst()), shown(CheckStatus::ok));
    QCOMPARE(m_sample->count(CheckStatus::ok), 18);
    QCOMPARE(m_sample->count(CheckStatus::info), 3);
    QCOMPARE(m_sample->applicableCount(), 21);
    QCOMPARE(m_sample->headline(), u"Aucun problème détecté"_s);
    // In replay the clock stands at the moment of the capture.
    QCOMPARE(m_sample->generatedAt, QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7), Qt::UTC));
}

void CaptureReportsTest::captureVerdicts_data()
{
    QTest::addColumn<QString>("capture");
    QTest::addColumn<QString>("title");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    // 1180 cycles of 1000 and a "Service Recommended" health: the capacity verdict wins.
    QTest::newRow("worn battery") << u"worn-battery"_s << u"Batterie"_s << CheckStatus::attention
                                  << u"Capacité maximale à 71 %, sous le seuil de 80 % (1180 cycles, charge 42 %)."_s
                                  << u"71 %"_s;
    QTest::newRow("desktop without battery") << u"desktop-mac-studio"_s << u"Batterie"_s
                                             << CheckStatus::nonApplicable
                                             << u"Ce Mac n'a pas de batterie interne."_s << none();
    QTest::newRow("desktop without trackpad") << u"desktop-mac-studio"_s << u"Trackpad"_s
                                              << CheckStatus::nonApplicable << u"Composant absent de ce modèle."_s
                                              << none();
    QTest::newRow("desktop with two external screens")
        << u"desktop-mac-studio"_s << u"Écrans"_s << CheckStatus::ok
        << u"Studio Display, DELL U2723QE — 2 écrans détectés."_s << u"2"_s;
    // Booted 3 550 625 s (41.1 days) before the capture.
    QTest::newRow("desktop up 41 days")
        << u"desktop-mac-studio"_s << u"Système"_s << CheckStatus::attention
        << u"macOS 15.1 (24B83) — allumé depuis 41 jours, un redémarrage est conseillé."_s << u"41 j 2 h"_s;
    // 227 256 819 712 of 245 107 195 904 bytes used: 92.7 %.
    QTest::newRow("internal disk nearly full")
        << u"storage-mix"_s << u"Macintosh HD"_s << CheckStatus::attention
        << u"Rempli à 93 %, il ne reste que 17,85"_s + nbsp + u"Go."_s << u"245,11"_s + nbsp + u"Go"_s;
    QTest::newRow("external USB disk") << u"storage-mix"_s << u"Archives"_s << CheckStatus::ok
                                       << u"845,71"_s + nbsp + u"Go disponibles (58 % utilisés)."_s
                                       << u"2"_s + nbsp + u"To"_s;
    QTest::newRow("USB report failed")
        << u"profiler-failures"_s << u"USB"_s << CheckStatus::info
        << u"Aucun appareil branché — l'état des ports ne peut se vérifier qu'en y connectant un périphérique."_s
        << u"0"_s;
    QTest::newRow("camera report unreadable") << u"profiler-failures"_s << u"Caméra"_s << CheckStatus::info
                                              << u"Aucune caméra détectée."_s << u"Non détectée"_s;
}

void CaptureReportsTest::captureVerdicts()
{
    QFETCH(QString, capture);
    QFETCH(QString, title);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    const std::optional<DiagnosticsReport> report = reportOfCapture(capture);
    QVERIFY(report);
    const auto check = std::find_if(report->checks.cbegin(), report->checks.cend(),
                                    [&](const HardwareCheck &candidate) { return candidate.title == title; });
    QVERIFY(check != report->checks.cend());
    QCOMPARE(shown(check->status), shown(status));
    QCOMPARE(check->summary, summary);
    QCOMPARE(shown(check->measurement), measurement);
}

void CaptureReportsTest::captureHeadlines_data()
{
    QTest::addColumn<QString>("capture");
    QTest::addColumn<CheckStatus>("worst");
    QTest::addColumn<int>("applicable");
    QTest::addColumn<QString>("headline");

    // Worn battery and no storage answer; a portable, so missing parts are notes, not void.
    QTest::newRow("worn battery") << u"worn-battery"_s << CheckStatus::attention << 20 << u"2 points à surveiller"_s;
    // No battery, no storage answer, up 41 days; six built-in parts do not apply to a desktop.
    QTest::newRow("desktop") << u"desktop-mac-studio"_s << CheckStatus::attention << 14 << u"2 points à surveiller"_s;
    // No hardware answer at all: not portable, so no battery and six built-in parts do not apply.
    QTest::newRow("storage only") << u"storage-mix"_s << CheckStatus::attention << 14 << u"1 point à surveiller"_s;
}

void CaptureReportsTest::captureHeadlines()
{
    QFETCH(QString, capture);
    QFETCH(CheckStatus, worst);
    QFETCH(int, applicable);
    QFETCH(QString, headline);

    const std::optional<DiagnosticsReport> report = reportOfCapture(capture);
    QVERIFY(report);
    QCOMPARE(shown(report->worst()), shown(worst));
    QCOMPARE(report->applicableCount(), applicable);
    QCOMPARE(report->headline(), headline);
}

QUILLON_TEST_MAIN(CaptureReportsTest)
#include "tst_capture_reports.moc"
