#include "collectors/battery_service.h"
#include "collectors/hardware_service.h"
#include "collectors/inventory_service.h"
#include "common/test_main.h"
#include "diagnostics/diagnostics_service.h"
#include "platform/capture/capture_platform.h"
#include "records/report_builder.h"

using namespace Qt::StringLiterals;

namespace {

const QString heavyRule(72, QChar(0x2550));
const QString lightRule(72, QChar(0x2500));

// 09:05 in Paris.
const QDateTime morning(QDate(2026, 11, 16), QTime(8, 5, 7), Qt::UTC);
const ReportStamp stamp{morning, u"Quillon"_s, u"1.2 (45)"_s};

QStringList footer()
{
    return {QString(),
            heavyRule,
            u"  Ces contrôles comparent l'état rapporté par macOS à des seuils fixes."_s,
            u"  Ce ne sont pas des tests de charge : le matériel n'est pas sollicité."_s,
            heavyRule,
            u"  Établi avec Quillon, outil gratuit pour réparateurs — "_s + ReportBuilder::webAddress()};
}

QString document(const QStringList &lines)
{
    return lines.join(u'\n') + u'\n';
}

// The lines between the heading of a block (its title and rule) and the next empty line.
QStringList blockLines(const QString &text, const QString &title)
{
    const QStringList lines = text.split(u'\n');
    const qsizetype start = lines.indexOf(title);
    if (start < 0 || lines.value(start + 1) != lightRule)
        return {u"(pas de bloc " + title + u')'};
    QStringList block;
    for (qsizetype i = start + 2; i < lines.size() && !lines.at(i).isEmpty(); ++i)
        block.append(lines.at(i));
    return block;
}

HardwareCheck check(CheckStatus status, const QString &title, const std::optional<QString> &measurement,
                    const std::optional<LiveMetric> &live, const QString &summary = u"Résumé."_s)
{
    return HardwareCheck{.title = title, .status = status, .summary = summary, .measurement = measurement, .live = live};
}

DeviceNode device(const QString &name, DeviceStatus status, const QList<InfoRow> &rows = {},
                  const QList<DeviceNode> &children = {})
{
    DeviceNode node;
    node.name = name;
    node.status = status;
    node.rows = rows;
    node.children = children;
    return node;
}

StorageVolume volume(const QString &name, double total, double free, const std::optional<QString> &deviceName = {},
                     const std::optional<QString> &smartStatus = {})
{
    StorageVolume result;
    result.name = name;
    result.totalBytes = total;
    result.freeBytes = free;
    result.deviceName = deviceName;
    result.smartStatus = smartStatus;
    return result;
}

HardwareInfo hardwareWithRows(const QList<InfoRow> &rows)
{
    HardwareInfo hardware;
    hardware.modelName = u"MacBook Air"_s;
    hardware.rows = rows;
    return hardware;
}

std::shared_ptr<CaptureFolder> openCapture(const QString &name)
{
    const auto opened = CaptureFolder::open(QStringLiteral(QUILLON_CAPTURES_DIR) + u'/' + name);
    if (!std::holds_alternative<std::shared_ptr<CaptureFolder>>(opened))
        return nullptr;
    return std::get<std::shared_ptr<CaptureFolder>>(opened);
}

} // namespace

// The plain-text report: its blocks, their order and layout, and the proposed file name.
class TestReportBuilder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingCollected()
    {
        const QString expected = document(QStringList{
                                              heavyRule,
                                              u"  Mac — bilan matériel"_s,
                                              u"  Établi le 16 novembre 2026 à 09:05 par Quillon 1.2 (45)"_s,
                                              heavyRule,
                                          }
                                          + footer());
        QCOMPARE(ReportBuilder::build(ReportContents{}, stamp), expected);
    }

    void wholeReport()
    {
        ReportContents contents;
        contents.workshop = WorkshopHeader{u"Atelier Léa"_s, u"01 23 45 67 89 \u00B7 3 quai des Brumes"_s};
        contents.hardware = hardwareWithRows({{u"Modèle"_s, u"MacBook Air"_s},
                                              {u"Puce"_s, u"Apple M2"_s},
                                              {u"Numéro de série"_s, u"C02XYZ"_s}});
        BatteryInfo battery;
        battery.rows = {{u"Charge"_s, u"54 %"_s, InfoRowKey::chargeLevel},
                        {u"Alimentation"_s, u"Sur batterie"_s, InfoRowKey::powerState},
                        {u"Cycles"_s, u"87"_s}};
        contents.battery = battery;
        contents.snapshot = BatterySnapshot{.chargePercent = 80, .isCharging = true, .isPluggedIn = true};
        contents.volumes = {volume(u"Macintosh HD"_s, 494384795648, 123456789000, u"APPLE SSD AP0512Z"_s, u"Vérifié"_s),
                            volume(u"Clé USB"_s, 0, 0)};
        DiagnosticsReport report;
        report.checks = {
            check(CheckStatus::ok, u"Batterie"_s, u"91 %"_s, std::nullopt, u"La batterie est en bon état."_s),
            check(CheckStatus::info, u"Processeur"_s, std::nullopt, LiveMetric::processorLoad,
                  u"Charge actuelle du processeur."_s),
            check(CheckStatus::attention, u"Capteur d'angle d'écran"_s, u"Présent"_s, LiveMetric::lidAngle,
                  u"Le capteur ne répond pas."_s),
            check(CheckStatus::nonApplicable, u"Wi-Fi"_s, std::nullopt, std::nullopt, u"Aucune puce Wi-Fi."_s),
        };
        contents.report = report;
        contents.live.processorLoad = u"37 %"_s;
        contents.live.processorTemperature = u"52 °C"_s;
        const DeviceNode keyboard = device(u"Clavier"_s, DeviceStatus::warning, {{u"Vitesse"_s, u"Jusqu'à 480 Mb/s"_s}});
        contents.inventory[AppSection::usb] = {
            device(u"Bus USB 3.1"_s, DeviceStatus::neutral, {}, {device(u"Hub"_s, DeviceStatus::neutral, {}, {keyboard})})};
        contents.inventory[AppSection::bluetooth] = {};
        contents.inventory[AppSection::displays] = {
            device(u"Écran intégré"_s, DeviceStatus::connected, {{u"Résolution"_s, u"3024 × 1964"_s}})};

        const QString expected = document(QStringList{
                                              heavyRule,
                                              u"  ATELIER LÉA"_s,
                                              u"  01 23 45 67 89 \u00B7 3 quai des Brumes"_s,
                                              heavyRule,
                                              u"  MacBook Air — bilan matériel"_s,
                                              u"  Établi le 16 novembre 2026 à 09:05 par Quillon 1.2 (45)"_s,
                                              heavyRule,
                                              QString(),
                                              u"VERDICT : 1 POINT À SURVEILLER"_s,
                                              u"3 contrôles \u00B7 1 corrects \u00B7 1 à surveiller \u00B7 0 anomalies"_s,
                                              QString(),
                                              u"CONFIGURATION"_s,
                                              lightRule,
                                              u"  Modèle           MacBook Air"_s,
                                              u"  Puce             Apple M2"_s,
                                              u"  Numéro de série  C02XYZ"_s,
                                              QString(),
                                              u"BATTERIE"_s,
                                              lightRule,
                                              u"  Charge        80 %"_s,
                                              u"  Alimentation  En charge"_s,
                                              u"  Cycles        87"_s,
                                              QString(),
                                              u"STOCKAGE"_s,
                                              lightRule,
                                              u"  Macintosh HD — 494,38\u00A0Go (123,46\u00A0Go libres, 75 % utilisés)"_s,
                                              u"    Disque : APPLE SSD AP0512Z"_s,
                                              u"    S.M.A.R.T. : Vérifié"_s,
                                              u"  Clé USB — Zéro\u00A0Ko (Zéro\u00A0Ko libres, 0 % utilisés)"_s,
                                              QString(),
                                              u"ÉTAT DES COMPOSANTS"_s,
                                              lightRule,
                                              u"  [Correct       ] Batterie (91 %)"_s,
                                              u"                 La batterie est en bon état."_s,
                                              u"  [Info          ] Processeur (37 %)"_s,
                                              u"                 Charge actuelle du processeur."_s,
                                              u"  [À surveiller  ] Capteur d'angle d'écran (Présent)"_s,
                                              u"                 Le capteur ne répond pas."_s,
                                              u"  [Sans objet    ] Wi-Fi"_s,
                                              u"                 Aucune puce Wi-Fi."_s,
                                              QString(),
                                              u"ÉCRANS"_s,
                                              lightRule,
                                              u"  • Écran intégré — Connecté"_s,
                                              u"      Résolution : 3024 × 1964"_s,
                                              QString(),
                                              u"USB"_s,
                                              lightRule,
                                              u"  • Bus USB 3.1"_s,
                                              u"    • Hub"_s,
                                              u"      • Clavier — À vérifier"_s,
                                              u"          Vitesse : Jusqu'à 480 Mb/s"_s,
                                          }
                                          + footer());
        QCOMPARE(ReportBuilder::build(contents, stamp), expected);
    }

    void rowBlocks_data()
    {
        QTest::addColumn<QList<InfoRow>>("rows");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("no rows: heading only") << QList<InfoRow>{} << QStringList{};
        QTest::newRow("one long label sets the width of the block")
            << QList<InfoRow>{{u"Puce"_s, u"Apple M2"_s}, {u"Verrouillage d'activation"_s, u"Désactivé"_s}}
            << QStringList{u"  Puce                       Apple M2"_s, u"  Verrouillage d'activation  Désactivé"_s};
        QTest::newRow("an accent written as a combining mark counts once")
            << QList<InfoRow>{{u"Me\u0301moire"_s, u"16 GB"_s}, {u"Puce"_s, u"Apple M2"_s}}
            << QStringList{u"  Me\u0301moire  16 GB"_s, u"  Puce     Apple M2"_s};
    }

    void rowBlocks()
    {
        QFETCH(QList<InfoRow>, rows);
        QFETCH(QStringList, expected);
        ReportContents contents;
        contents.hardware = hardwareWithRows(rows);
        BatteryInfo battery;
        battery.rows = {{u"Cycles"_s, u"87"_s}};
        contents.battery = battery;
        const QString text = ReportBuilder::build(contents, stamp);
        QCOMPARE(blockLines(text, u"CONFIGURATION"_s), expected);
        // The width of one block does not reach the next one.
        QCOMPARE(blockLines(text, u"BATTERIE"_s), QStringList{u"  Cycles  87"_s});
    }

    void storageLines_data()
    {
        QTest::addColumn<StorageVolume>("volume");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("a half percent rounds up")
            << volume(u"Données"_s, 1000000000, 125000000)
            << QStringList{u"  Données — 1\u00A0Go (125\u00A0Mo libres, 88 % utilisés)"_s};
        QTest::newRow("terabyte disk with its S.M.A.R.T. state but no device name")
            << volume(u"Sauvegarde"_s, 2000398934016, 1000000000000, std::nullopt, u"Échec"_s)
            << QStringList{u"  Sauvegarde — 2\u00A0To (1\u00A0To libres, 50 % utilisés)"_s,
                           u"    S.M.A.R.T. : Échec"_s};
    }

    void storageLines()
    {
        QFETCH(StorageVolume, volume);
        QFETCH(QStringList, expected);
        ReportContents contents;
        contents.volumes = {volume};
        QCOMPARE(blockLines(ReportBuilder::build(contents, stamp), u"STOCKAGE"_s), expected);
    }

    void checkLine_data()
    {
        QTest::addColumn<HardwareCheck>("check");
        QTest::addColumn<LiveValues>("live");
        QTest::addColumn<QString>("line");

        const LiveValues none;
        const LiveValues all{u"118°"_s, u"37 %"_s, 0.37, u"52 °C"_s};
        LiveValues loadOnly;
        loadOnly.processorLoad = u"12 %"_s;

        QTest::newRow("temperature known")
            << check(CheckStatus::info, u"Température"_s, std::nullopt, LiveMetric::processorTemperature) << all
            << u"  [Info          ] Température (52 °C)"_s;
        QTest::newRow("processor load unknown falls back to the measurement")
            << check(CheckStatus::ok, u"Processeur"_s, u"10 cœurs"_s, LiveMetric::processorLoad) << none
            << u"  [Correct       ] Processeur (10 cœurs)"_s;
        QTest::newRow("lid angle known replaces the measurement")
            << check(CheckStatus::ok, u"Angle d'écran"_s, u"Présent"_s, LiveMetric::lidAngle) << all
            << u"  [Correct       ] Angle d'écran (118°)"_s;
        QTest::newRow("lid angle unknown while the load is known")
            << check(CheckStatus::ok, u"Angle d'écran"_s, u"Présent"_s, LiveMetric::lidAngle) << loadOnly
            << u"  [Correct       ] Angle d'écran (Présent)"_s;
        QTest::newRow("a check without live metric ignores the live values")
            << check(CheckStatus::alerte, u"Mémoire"_s, u"8 Go"_s, std::nullopt) << all
            << u"  [Anomalie      ] Mémoire (8 Go)"_s;
    }

    void checkLine()
    {
        QFETCH(HardwareCheck, check);
        QFETCH(LiveValues, live);
        QFETCH(QString, line);
        check.summary = u"Une phrase."_s;
        DiagnosticsReport report;
        report.checks = {check};
        ReportContents contents;
        contents.report = report;
        contents.live = live;
        QCOMPARE(blockLines(ReportBuilder::build(contents, stamp), u"ÉTAT DES COMPOSANTS"_s),
                 (QStringList{line, u"                 Une phrase."_s}));
    }

    void suggestedFileName_data()
    {
        QTest::addColumn<std::optional<HardwareInfo>>("hardware");
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QString>("fileName");

        QTest::newRow("model with a space") << std::optional(hardwareWithRows({}))
                                            << morning << u"Bilan-MacBook-Air-2026-11-16.txt"_s;
        HardwareInfo studio;
        studio.modelName = u"Mac  Studio (2023)"_s;
        QTest::newRow("every space replaced") << std::optional(studio) << morning
                                              << u"Bilan-Mac--Studio-(2023)-2026-11-16.txt"_s;
        QTest::newRow("no hardware") << std::optional<HardwareInfo>() << morning << u"Bilan-Mac-2026-11-16.txt"_s;
        QTest::newRow("just after midnight in Paris is still the day before in UTC")
            << std::optional<HardwareInfo>() << QDateTime(QDate(2026, 11, 17), QTime(0, 30), Qt::LocalTime)
            << u"Bilan-Mac-2026-11-16.txt"_s;
    }

    void suggestedFileName()
    {
        QFETCH(std::optional<HardwareInfo>, hardware);
        QFETCH(QDateTime, now);
        QFETCH(QString, fileName);
        QCOMPARE(ReportBuilder::suggestedFileName(hardware, now), fileName);
    }

    // The report of the sample Mac, built from its capture through the collectors.
    void sampleCapture()
    {
        const std::shared_ptr<CaptureFolder> folder = openCapture(u"sample"_s);
        QVERIFY(folder);
        const Platform platform = makeCapturePlatform(folder);

        const Result<HardwareInfo> hardware = HardwareService::load(platform);
        QVERIFY(hardware.ok());
        const Result<QList<StorageVolume>> volumes = InventoryService::storage(platform);
        QVERIFY(volumes.ok());
        ReportContents contents;
        contents.hardware = hardware.value();
        contents.battery = BatteryService::load(platform);
        contents.volumes = volumes.value();
        for (AppSection section : AppSections::dataSections()) {
            if (!AppSections::isDeviceSection(section))
                continue;
            const Result<QList<DeviceNode>> nodes = InventoryService::devices(platform, section);
            QVERIFY(nodes.ok());
            contents.inventory.insert(section, nodes.value());
        }
        contents.report = DiagnosticsService::build(platform, contents.hardware, contents.battery, contents.volumes,
                                                    contents.inventory);
        contents.live.processorLoad = u"23 %"_s;

        const QString text = ReportBuilder::build(contents, ReportStamp::ofThisApplication(platform.clock->now()));
        const QStringList lines = text.split(u'\n');
        QCOMPARE(lines.at(1), u"  MacBook Pro — bilan matériel"_s);
        QVERIFY2(lines.at(2).startsWith(u"  Établi le 16 novembre 2026 à 09:05 par Quillon "_s), qPrintable(lines.at(2)));

        const QStringList configuration = blockLines(text, u"CONFIGURATION"_s);
        // "Verrouillage d'activation", 25 characters, is the longest label.
        QVERIFY(configuration.contains(u"  Modèle                     MacBook Pro"_s));
        QVERIFY(configuration.contains(u"  Numéro de série            K7Q2XW9J4F"_s));

        QCOMPARE(blockLines(text, u"STOCKAGE"_s),
                 (QStringList{u"  Macintosh HD — 494,38\u00A0Go (187,36\u00A0Go libres, 62 % utilisés)"_s,
                              u"    Disque : APPLE SSD AP0512R"_s, u"    S.M.A.R.T. : Vérifié"_s,
                              u"  Sauvegarde — 1\u00A0To (412,87\u00A0Go libres, 59 % utilisés)"_s,
                              u"    Disque : PSSD T7"_s}));

        const QStringList checks = blockLines(text, u"ÉTAT DES COMPOSANTS"_s);
        QCOMPARE(checks.size(), 2 * contents.report->checks.size());
        QVERIFY(checks.contains(u"  [Info          ] Processeur (23 %)"_s));

        const QStringList usb = blockLines(text, u"USB"_s);
        const qsizetype receiver = usb.indexOf(u"      • USB Receiver — Connecté"_s);
        QVERIFY2(receiver > 0, qPrintable(usb.join(u'\n')));
        const qsizetype hub = usb.indexOf(u"    • USB2.1 Hub"_s);
        QVERIFY(hub >= 0 && hub < receiver);
        QVERIFY(usb.mid(receiver).contains(u"          Fabricant : Logitech"_s));
        QVERIFY(text.endsWith(footer().join(u'\n') + u'\n'));
    }
};

QUILLON_TEST_MAIN(TestReportBuilder)
#include "tst_report_builder.moc"
