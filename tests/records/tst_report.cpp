#include "common/test_main.h"
#include "records/report_builder.h"
#include "records/workshop_settings.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

const QString heavyRule(72, QChar(0x2550));
const QString lightRule(72, QChar(0x2500));
// 09:05 in Paris.
const QDateTime morning(QDate(2026, 11, 16), QTime(8, 5, 7), Qt::UTC);
const ReportStamp stamp{morning, u"Quillon"_s, u"1.2 (45)"_s};

// The whole document: the lines given, then the footer.
QString document(const QStringList &lines)
{
    return (lines + QStringList{QString(), heavyRule,
                                u"  Ces contrôles comparent l'état rapporté par macOS à des seuils fixes."_s,
                                u"  Ce ne sont pas des tests de charge : le matériel n'est pas sollicité."_s, heavyRule,
                                u"  Établi avec Quillon, outil gratuit pour réparateurs — https://quillon.app"_s})
               .join(u'\n')
        + u'\n';
}

HardwareCheck check(CheckStatus status, const QString &title, const std::optional<QString> &measurement,
                    const std::optional<LiveMetric> &live, const QString &summary)
{
    return HardwareCheck{
        .title = title, .status = status, .summary = summary, .measurement = measurement, .live = live};
}

} // namespace

// The plain-text report, the workshop header at its head and the proposed file name.
class TestReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingCollected()
    {
        QCOMPARE(ReportBuilder::build(ReportContents{}, stamp),
                 document({heavyRule, u"  Mac — bilan matériel"_s,
                           u"  Établi le 16 novembre 2026 à 09:05 par Quillon 1.2 (45)"_s, heavyRule}));
    }

    void wholeReport()
    {
        ReportContents contents;
        contents.workshop = WorkshopHeader{u"Atelier Léa"_s, u"01 23 45 67 89 \u00B7 3 quai des Brumes"_s};
        // "Numéro de série", 15 characters on screen, sets the width; its "é" are written as "e"
        // and a combining accent, as the one of "Mémoire".
        contents.hardware = HardwareInfo{.modelName = u"MacBook Air"_s,
                                         .rows = {{u"Modèle"_s, u"MacBook Air"_s}, {u"Me\u0301moire"_s, u"16 GB"_s},
                                                  {u"Nume\u0301ro de se\u0301rie"_s, u"C02XYZ"_s}}};
        // The live reading replaces the charge and the power state.
        contents.battery = BatteryInfo{.rows = {{u"Charge"_s, u"54 %"_s, InfoRowKey::chargeLevel},
                                                {u"Alimentation"_s, u"Sur batterie"_s, InfoRowKey::powerState}}};
        contents.snapshot = BatterySnapshot{.chargePercent = 80, .isCharging = true, .isPluggedIn = true};
        // 370928006648 of 494384795648 bytes used is 75.03 %; 875 of 1000 MB is 87.5 %.
        contents.volumes = {{.name = u"Macintosh HD"_s, .totalBytes = 494384795648, .freeBytes = 123456789000,
                             .smartStatus = u"Vérifié"_s, .deviceName = u"APPLE SSD AP0512Z"_s},
                            {.name = u"Données"_s, .totalBytes = 1e9, .freeBytes = 125e6, .smartStatus = u"Échec"_s}};
        // A check shows its live reading when it is known (the angle, the temperature), else its
        // measurement (the processor, whose load is unknown).
        DiagnosticsReport report;
        report.checks = {
            check(CheckStatus::ok, u"Batterie"_s, u"91 %"_s, std::nullopt, u"La batterie est en bon état."_s),
            check(CheckStatus::info, u"Processeur"_s, u"10 cœurs"_s, LiveMetric::processorLoad, u"Charge inconnue."_s),
            check(CheckStatus::attention, u"Angle d'écran"_s, u"Présent"_s, LiveMetric::lidAngle, u"Mesuré."_s),
            check(CheckStatus::info, u"Température"_s, std::nullopt, LiveMetric::processorTemperature, u"Puce."_s),
            check(CheckStatus::nonApplicable, u"Wi-Fi"_s, std::nullopt, std::nullopt, u"Aucune puce Wi-Fi."_s),
        };
        contents.report = report;
        contents.sinceLastVisit = u"Depuis le 9 novembre 2026 : +12 cycles."_s;
        contents.live.lidAngle = u"118°"_s;
        contents.live.processorTemperature = u"52 °C"_s;
        const DeviceNode keyboard{.name = u"Clavier"_s, .status = DeviceStatus::warning,
                                  .rows = {{u"Vitesse"_s, u"Jusqu'à 480 Mb/s"_s}}};
        const DeviceNode hub{.name = u"Hub"_s, .status = DeviceStatus::disconnected, .children = {keyboard}};
        contents.inventory[AppSection::usb] = {DeviceNode{.name = u"Bus USB 3.1"_s, .children = {hub}}};
        contents.inventory[AppSection::bluetooth] = {};
        contents.inventory[AppSection::displays] = {DeviceNode{
            .name = u"Écran intégré"_s, .status = DeviceStatus::connected,
            .rows = {{u"Résolution"_s, u"3024 × 1964"_s}}}};

        QCOMPARE(ReportBuilder::build(contents, stamp),
                 document({heavyRule,
                           u"  ATELIER LÉA"_s,
                           u"  01 23 45 67 89 \u00B7 3 quai des Brumes"_s,
                           heavyRule,
                           u"  MacBook Air — bilan matériel"_s,
                           u"  Établi le 16 novembre 2026 à 09:05 par Quillon 1.2 (45)"_s,
                           heavyRule,
                           QString(), u"VERDICT : 1 POINT À SURVEILLER"_s,
                           u"4 contrôles \u00B7 1 corrects \u00B7 1 à surveiller \u00B7 0 anomalies"_s,
                           u"Depuis le 9 novembre 2026 : +12 cycles."_s,
                           QString(), u"CONFIGURATION"_s, lightRule,
                           u"  Modèle           MacBook Air"_s,
                           u"  Me\u0301moire          16 GB"_s,
                           u"  Nume\u0301ro de se\u0301rie  C02XYZ"_s,
                           QString(), u"BATTERIE"_s, lightRule,
                           u"  Charge        80 %"_s,
                           u"  Alimentation  En charge"_s,
                           QString(), u"STOCKAGE"_s, lightRule,
                           u"  Macintosh HD — 494,38\u00A0Go (123,46\u00A0Go libres, 75 % utilisés)"_s,
                           u"    Disque : APPLE SSD AP0512Z"_s,
                           u"    S.M.A.R.T. : Vérifié"_s,
                           u"  Données — 1\u00A0Go (125\u00A0Mo libres, 88 % utilisés)"_s,
                           u"    S.M.A.R.T. : Échec"_s,
                           QString(), u"ÉTAT DES COMPOSANTS"_s, lightRule,
                           u"  [Correct       ] Batterie (91 %)"_s,
                           u"                 La batterie est en bon état."_s,
                           u"  [Info          ] Processeur (10 cœurs)"_s,
                           u"                 Charge inconnue."_s,
                           u"  [À surveiller  ] Angle d'écran (118°)"_s,
                           u"                 Mesuré."_s,
                           u"  [Info          ] Température (52 °C)"_s,
                           u"                 Puce."_s,
                           u"  [Sans objet    ] Wi-Fi"_s,
                           u"                 Aucune puce Wi-Fi."_s,
                           QString(), u"ÉCRANS"_s, lightRule,
                           u"  • Écran intégré — Connecté"_s,
                           u"      Résolution : 3024 × 1964"_s,
                           QString(), u"USB"_s, lightRule,
                           u"  • Bus USB 3.1"_s,
                           u"    • Hub — Non connecté"_s,
                           u"      • Clavier — À vérifier"_s,
                           u"          Vitesse : Jusqu'à 480 Mb/s"_s}));
    }

    // The header drawn from the fields as typed; the report prints the name in upper case.
    void workshopHeader_data()
    {
        QTest::addColumn<QStringList>("fields"); // name, phone, address
        QTest::addColumn<QStringList>("lines");  // above the title, rules left out
        QTest::newRow("all three empty") << QStringList{QString(), QString(), QString()} << QStringList();
        QTest::newRow("line break, spaces and no-break spaces trimmed")
            << QStringList{u"\n\u00A0Atelier du Port\u202F "_s, u"\u00A001 23 45 67 89"_s, QString()}
            << QStringList{u"  ATELIER DU PORT"_s, u"  01 23 45 67 89"_s};
        QTest::newRow("phone of spaces only: address alone")
            << QStringList{u"Atelier"_s, u"    "_s, u" 3 quai des Brumes  "_s}
            << QStringList{u"  ATELIER"_s, u"  3 quai des Brumes"_s};
    }

    void workshopHeader()
    {
        QFETCH(QStringList, fields);
        QFETCH(QStringList, lines);
        ReportContents contents;
        contents.workshop = ::workshopHeader(fields.at(0), fields.at(1), fields.at(2));
        QStringList top = ReportBuilder::build(contents, stamp).split(u'\n');
        top = top.mid(0, top.indexOf(u"  Mac — bilan matériel"_s));
        top.removeAll(heavyRule);
        QCOMPARE(top, lines);
    }

    // Each change is written at once, under its key, exactly as typed, and read on the next start.
    void workshopFieldsKeptAsTyped()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"preferences.ini"_s);
        WorkshopSettings settings(std::make_unique<QSettings>(path, QSettings::IniFormat));
        QSignalSpy nameSpy(&settings, &WorkshopSettings::workshopNameChanged);
        QSignalSpy phoneSpy(&settings, &WorkshopSettings::workshopPhoneChanged);
        QSignalSpy addressSpy(&settings, &WorkshopSettings::workshopAddressChanged);
        settings.setWorkshopName(u"\nAtelier du Port "_s);
        settings.setWorkshopPhone(u"0123456789"_s);
        settings.setWorkshopAddress(u"3 quai des Brumes"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().contains("workshop.address=3 quai des Brumes"));
        QCOMPARE((QList<qsizetype>{nameSpy.size(), phoneSpy.size(), addressSpy.size()}), (QList<qsizetype>{1, 1, 1}));

        const WorkshopSettings reopened(std::make_unique<QSettings>(path, QSettings::IniFormat));
        QCOMPARE((QStringList{reopened.workshopName(), reopened.workshopPhone(), reopened.workshopAddress()}),
                 (QStringList{u"\nAtelier du Port "_s, u"0123456789"_s, u"3 quai des Brumes"_s}));
        QCOMPARE(QSettings(path, QSettings::IniFormat).allKeys(),
                 (QStringList{u"workshop.address"_s, u"workshop.name"_s, u"workshop.phone"_s}));
        QVERIFY((reopened.header() == WorkshopHeader{u"Atelier du Port"_s, u"0123456789 \u00B7 3 quai des Brumes"_s}));
    }

};

QUILLON_TEST_MAIN(TestReport)
#include "tst_report.moc"
