#include "ui_test_support.h"

#include "core/byte_format.h"
#include "ui/models/check_list_model.h"
#include "ui/presentation/battery_presentation.h"
#include "ui/presentation/overview_presentation.h"
#include "ui/presentation/presentation.h"
#include "ui/presentation/verdict_presentation.h"

#include <QAbstractItemModelTester>

using namespace Qt::StringLiterals;
using namespace UiTest;
using Presentation::TileFace;

Q_DECLARE_METATYPE(HardwareCheck)
Q_DECLARE_METATYPE(LiveValues)
Q_DECLARE_METATYPE(TileFace)
Q_DECLARE_METATYPE(BatteryInfo)
Q_DECLARE_METATYPE(std::optional<BatterySnapshot>)
Q_DECLARE_METATYPE(std::optional<QString>)
Q_DECLARE_METATYPE(std::optional<double>)

namespace {

HardwareCheck check(const QString &title, CheckStatus status, std::optional<QString> measurement = std::nullopt,
    std::optional<LiveMetric> live = std::nullopt)
{
    return { .title = title, .symbol = u"cpu"_s, .status = status, .measurement = measurement, .live = live };
}

DiagnosticsReport report(QList<HardwareCheck> checks)
{
    return DiagnosticsReport { std::move(checks), QDateTime(QDate(2026, 11, 16), QTime(9, 5, 7)) };
}

const LiveValues someLive { u"118°"_s, u"37 %"_s, 0.37, u"52 °C"_s };

BatteryInfo battery(std::optional<qint64> health, bool healthy, int charge, bool pluggedIn)
{
    return { .chargePercent = charge, .isPluggedIn = pluggedIn, .healthPercent = health, .isConditionHealthy = healthy };
}

BatterySnapshot snapshot(int charge, bool charging, bool pluggedIn)
{
    return { .chargePercent = charge, .isCharging = charging, .isPluggedIn = pluggedIn };
}

HardwareInfo machine()
{
    return { .modelName = u"Mac Studio"_s, .modelIdentifier = u"Mac13,1"_s, .chip = u"Apple M1 Max"_s,
        .coresShort = u"10 (8P + 2E)"_s, .memory = u"32 Go"_s, .osVersion = u"macOS 15.1 (24B83)"_s };
}

StorageVolume volume(const QString &name, double totalBytes, bool internal)
{
    return { .name = name, .totalBytes = totalBytes, .isInternal = internal };
}

DeviceNode display(QList<InfoRow> rows)
{
    return { .name = u"Apple M1 Max"_s, .children = { DeviceNode { .name = u"Studio Display"_s, .rows = std::move(rows) } } };
}

// The figures of the configuration card as "label=value" texts.
QStringList figureTexts(const QList<Presentation::StatFigure> &figures)
{
    QStringList texts;
    for (const Presentation::StatFigure &figure : figures)
        texts.append(figure.label + u'=' + figure.value);
    return texts;
}

} // namespace

class TestVerdictScreens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void measurementPrefersTheLiveReading_data()
    {
        QTest::addColumn<HardwareCheck>("check");
        QTest::addColumn<LiveValues>("live");
        QTest::addColumn<std::optional<QString>>("row");
        QTest::addColumn<std::optional<double>>("progress");

        const LiveValues none;
        const auto lid = check(u"Capteur d'angle"_s, CheckStatus::ok, u"Présent"_s, LiveMetric::lidAngle);
        QTest::newRow("lid angle read live") << lid << someLive << std::optional(u"118°"_s) << std::optional<double>();
        QTest::newRow("lid monitor without reading: stored")
            << lid << none << std::optional(u"Présent"_s) << std::optional<double>();
        QTest::newRow("processor load with its fraction")
            << check(u"Processeur"_s, CheckStatus::ok, u"10 cœurs"_s, LiveMetric::processorLoad) << someLive
            << std::optional(u"37 %"_s) << std::optional(0.37);
        QTest::newRow("not tied to a reading") << check(u"Mémoire"_s, CheckStatus::ok, u"32 Go"_s) << someLive
                                               << std::optional(u"32 Go"_s) << std::optional<double>();
    }

    void measurementPrefersTheLiveReading()
    {
        QFETCH(HardwareCheck, check);
        QFETCH(LiveValues, live);
        QTEST(Presentation::rowMeasurement(check, live), "row");
        QTEST(Presentation::liveProgress(check, live), "progress");
    }

    void tileFace_data()
    {
        QTest::addColumn<HardwareCheck>("check");
        QTest::addColumn<std::optional<QString>>("liveMeasurement");
        QTest::addColumn<std::optional<double>>("liveProgress");
        QTest::addColumn<TileFace>("expected");

        HardwareCheck gauge = check(u"Stockage"_s, CheckStatus::attention, u"82 %"_s);
        gauge.progress = 0.4;
        gauge.caption = u"412 Go libres"_s;
        QTest::newRow("point to watch: orange tile, stored figures")
            << gauge << std::optional<QString>() << std::optional<double>()
            << TileFace { u"82 %"_s, u"primary"_s, 0.4, u"412 Go libres"_s, u"orange"_s };
        QTest::newRow("live fraction wins, 1.3 fills the bar")
            << gauge << std::optional(u"37 %"_s) << std::optional(1.3)
            << TileFace { u"37 %"_s, u"primary"_s, 1.0, u"mesure en direct"_s, u"orange"_s };
        HardwareCheck negative = check(u"Batterie"_s, CheckStatus::alerte, u"61 %"_s);
        negative.progress = -0.2;
        QTest::newRow("fault: red tile, minus 0.2 empties the bar")
            << negative << std::optional<QString>() << std::optional<double>()
            << TileFace { u"61 %"_s, u"primary"_s, 0.0, std::nullopt, u"red"_s };
        QTest::newRow("without object: label in secondary on the surface")
            << check(u"Clavier"_s, CheckStatus::nonApplicable) << std::optional<QString>() << std::optional<double>()
            << TileFace { u"Sans objet"_s, u"secondary"_s, std::nullopt, std::nullopt, QString() };
    }

    void tileFace()
    {
        QFETCH(HardwareCheck, check);
        QFETCH(std::optional<QString>, liveMeasurement);
        QFETCH(std::optional<double>, liveProgress);
        QFETCH(TileFace, expected);
        const TileFace face = Presentation::tileFace(check, liveMeasurement, liveProgress);
        QCOMPARE(face.value, expected.value);
        QCOMPARE(face.valueColourRole, expected.valueColourRole);
        QCOMPARE(face.progress, expected.progress);
        QCOMPARE(face.caption, expected.caption);
        QCOMPARE(face.tone, expected.tone);
    }

    void batteryColours_data()
    {
        QTest::addColumn<BatteryInfo>("battery");
        QTest::addColumn<std::optional<BatterySnapshot>>("live");
        QTest::addColumn<QString>("health");
        QTest::addColumn<QString>("power");
        QTest::addColumn<bool>("warns");

        const std::optional<BatterySnapshot> none;
        QTest::newRow("79 %: orange") << battery(79, true, 60, true) << none << u"orange"_s << u"orange"_s << true;
        QTest::newRow("80 %, 15 % unplugged: red power")
            << battery(80, true, 15, false) << none << u"green"_s << u"red"_s << false;
        QTest::newRow("69 %: red health, orange power")
            << battery(69, true, 90, true) << none << u"red"_s << u"orange"_s << true;
        QTest::newRow("85 % flagged unhealthy: warned")
            << battery(85, false, 90, true) << none << u"green"_s << u"orange"_s << true;
        QTest::newRow("unknown health: the caller's colour; 20 % unplugged")
            << battery(std::nullopt, true, 20, false) << none << u"accent"_s << u"green"_s << false;
    }

    void batteryColours()
    {
        QFETCH(BatteryInfo, battery);
        QFETCH(std::optional<BatterySnapshot>, live);
        QTEST(Presentation::healthColourRole(battery.healthPercent, u"accent"_s), "health");
        QTEST(Presentation::powerColourRole(battery, live), "power");
        QTEST(Presentation::showsReplacementWarning(battery), "warns");
    }

    void batterySymbol_data()
    {
        QTest::addColumn<BatteryInfo>("battery");
        QTest::addColumn<std::optional<BatterySnapshot>>("live");
        QTest::addColumn<QString>("symbol");

        const std::optional<BatterySnapshot> none;
        BatteryInfo charging = battery(90, true, 50, true);
        charging.isCharging = true;
        QTest::newRow("charging") << charging << none << u"battery.100.bolt"_s;
        QTest::newRow("live reading first") << charging << std::optional(snapshot(30, false, false)) << u"battery.25"_s;
        QTest::newRow("95") << battery(90, true, 95, false) << none << u"battery.100"_s;
        QTest::newRow("39") << battery(90, true, 39, false) << none << u"battery.25"_s;
        QTest::newRow("14") << battery(90, true, 14, false) << none << u"battery.0"_s;
    }

    void batterySymbol()
    {
        QFETCH(BatteryInfo, battery);
        QFETCH(std::optional<BatterySnapshot>, live);
        QTEST(Presentation::batterySymbol(battery, live), "symbol");
    }

    void configurationFigures_data()
    {
        QTest::addColumn<HardwareInfo>("hardware");
        QTest::addColumn<QList<StorageVolume>>("volumes");
        QTest::addColumn<QList<InfoRow>>("displayRows");
        QTest::addColumn<QStringList>("figures");

        HardwareInfo known = machine();
        known.modelYear = 2022;
        known.serialNumber = u"H4X9K2LQ7P"_s;
        const QList<StorageVolume> externalFirst { volume(u"Sauvegarde"_s, 2e12, false),
            volume(u"Macintosh HD"_s, 994.66e9, true) };
        QTest::newRow("everything known, internal volume after an external one")
            << known << externalFirst
            << QList { InfoRow(u"Résolution"_s, u"5120 x 2880"_s, InfoRowKey::nativeResolution) }
            << QStringList { u"Puce=Apple M1 Max"_s, u"Cœurs=10 (8P + 2E)"_s, u"Mémoire=32 Go"_s,
                   u"Stockage="_s + ByteFormat::string(994.66e9), u"Écran=5120 x 2880"_s, u"macOS=15.1 (24B83)"_s,
                   u"Année=2022"_s, u"Modèle=Mac13,1"_s, u"Série=H4X9K2LQ7P"_s };
        QTest::newRow("system, chip and model unknown") << HardwareInfo() << QList<StorageVolume>() << QList<InfoRow>()
            << QStringList { u"Puce=—"_s, u"Cœurs=—"_s, u"Mémoire=—"_s, u"Stockage=—"_s, u"macOS=—"_s, u"Année=—"_s,
                   u"Modèle=—"_s };
    }

    void configurationFigures()
    {
        QFETCH(HardwareInfo, hardware);
        QFETCH(QList<StorageVolume>, volumes);
        QFETCH(QList<InfoRow>, displayRows);
        const QList<Presentation::StatFigure> made
            = Presentation::configurationFigures(hardware, volumes, { display(displayRows) });
        QTEST(figureTexts(made), "figures");
        // Only the year is in the accent colour.
        for (const Presentation::StatFigure &figure : made)
            QCOMPARE(figure.tintRole, figure.label == u"Année"_s ? u"accent"_s : u"primary"_s);
    }

    void liveReadingsChangeOnlyTheRowsTiedToThem()
    {
        HardwareCheck highlighted = check(u"Batterie"_s, CheckStatus::ok, u"92 %"_s);
        highlighted.isHighlighted = true;
        CheckListModel tiles(CheckListModel::Scope::tiles);
        QAbstractItemModelTester tester(&tiles);
        tiles.setReport(
            report({ highlighted, check(u"Processeur"_s, CheckStatus::ok, u"10 cœurs"_s, LiveMetric::processorLoad),
                check(u"Mémoire"_s, CheckStatus::ok, u"32 Go"_s) }));
        // The highlighted battery is a card of its own, not a tile.
        QCOMPARE(tiles.count(), 2);
        const QModelIndex processor = tiles.index(0);
        QCOMPARE(processor.data(CheckListModel::ValueRole).toString(), u"10 cœurs"_s);
        QVERIFY(!processor.data(CheckListModel::HasProgressRole).toBool());

        QSignalSpy changed(&tiles, &QAbstractItemModel::dataChanged);
        tiles.setLive(someLive);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.first().at(0).value<QModelIndex>(), processor);
        QCOMPARE(processor.data(CheckListModel::ValueRole).toString(), u"37 %"_s);
        QCOMPARE(processor.data(CheckListModel::ProgressRole).toDouble(), 0.37);
        QCOMPARE(processor.data(CheckListModel::CaptionRole).toString(), u"mesure en direct"_s);
        // A new lid angle concerns no tile here.
        LiveValues turned = someLive;
        turned.lidAngle = u"95°"_s;
        tiles.setLive(turned);
        QCOMPARE(changed.size(), 1);
    }

};

QUILLON_UI_TEST_MAIN(TestVerdictScreens)
#include "tst_verdict_screens.moc"
