#include "common/test_main.h"
#include "machine_fakes.h"

#include "collectors/battery_service.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace {

// A battery on battery power whose capacities give a computed health of 91 %; a change
// holding an invalid value removes that key.
PropertyDictionary smartBattery(const PropertyDictionary &changes = {})
{
    PropertyDictionary dict{{u"BatteryInstalled"_s, true},
                            {u"CurrentCapacity"_s, qint64(64)},
                            {u"IsCharging"_s, false},
                            {u"ExternalConnected"_s, false},
                            {u"FullyCharged"_s, false},
                            {u"DesignCapacity"_s, qint64(4790)},
                            {u"NominalChargeCapacity"_s, qint64(4382)}};
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        if (it->isValid())
            dict.insert(it.key(), *it);
        else
            dict.remove(it.key());
    }
    return dict;
}

struct FakeBattery : FakeMac
{
    explicit FakeBattery(const PropertyDictionary &battery = smartBattery())
    {
        registry->byClass[u"AppleSmartBattery"_s] = {battery};
    }
    void reportPower(const QList<QVariantMap> &items, int exitStatus = 0)
    {
        const QJsonObject answer{{u"SPPowerDataType"_s, QJsonArray::fromVariantList({items.cbegin(), items.cend()})}};
        profiler->answer(u"SPPowerDataType"_s, QJsonDocument(answer).toJson(), exitStatus);
    }
    void reportHealth(const QVariantMap &health)
    {
        reportPower({{{u"_name"_s, u"spbattery_information"_s}, {u"sppower_battery_health_info"_s, health}}});
    }
    BatteryInfo load() const { return BatteryService::load(platform()).value(); }
    QStringList rows() const { return rowTexts(load().rows); }
};

// Each word preceded by its length, among other bytes, as the manufacturer data holds them.
QByteArray lengthPrefixed(const QList<QByteArray> &words)
{
    QByteArray blob("\x00\x0b\x01", 3);
    for (const QByteArray &word : words)
        blob += char(word.size()) + word;
    return blob + QByteArray("\x00\x09\x00", 3);
}

} // namespace

class TestBatteryService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void presence_data()
    {
        QTest::addColumn<QList<PropertyDictionary>>("services");
        QTest::addColumn<bool>("expected");
        QTest::newRow("no smart battery service") << QList<PropertyDictionary>{} << false;
        QTest::newRow("not installed") << QList{smartBattery({{u"BatteryInstalled"_s, false}})} << false;
        QTest::newRow("installed flag missing") << QList{smartBattery({{u"BatteryInstalled"_s, {}}})} << true;
        QTest::newRow("installed flag not a boolean") << QList{smartBattery({{u"BatteryInstalled"_s, qint64(0)}})}
                                                      << true;
    }

    void presence()
    {
        QFETCH(QList<PropertyDictionary>, services);
        QFETCH(bool, expected);
        FakeMac mac;
        mac.registry->byClass[u"AppleSmartBattery"_s] = services;
        QCOMPARE(BatteryService::load(mac.platform()).has_value(), expected);
        QCOMPARE(BatteryService::liveSnapshot(mac.platform()).has_value(), expected);
    }

    void healthPercent_data()
    {
        QTest::addColumn<QVariant>("maximumCapacity"); // the system's own figure; invalid: none
        QTest::addColumn<PropertyDictionary>("changes");
        QTest::addColumn<QString>("expected");         // empty: no health and no row
        QTest::newRow("the system's percentage wins") << QVariant(u"89%"_s) << PropertyDictionary{} << u"89 %"_s;
        QTest::newRow("the system's percentage as a number") << QVariant(qint64(87)) << PropertyDictionary{}
                                                             << u"87 %"_s;
        QTest::newRow("computed: 4382 / 4790 rounded") << QVariant() << PropertyDictionary{} << u"91 %"_s;
        QTest::newRow("no digits in the system's text") << QVariant(u"n/a"_s) << PropertyDictionary{} << u"91 %"_s;
        QTest::newRow("raw maximum without nominal capacity")
            << QVariant()
            << PropertyDictionary{{u"NominalChargeCapacity"_s, {}}, {u"AppleRawMaxCapacity"_s, qint64(3087)}}
            << u"64 %"_s;
        QTest::newRow("above the design capacity")
            << QVariant() << PropertyDictionary{{u"NominalChargeCapacity"_s, qint64(5000)}} << u"104 %"_s;
        QTest::newRow("design capacity of zero") << QVariant() << PropertyDictionary{{u"DesignCapacity"_s, qint64(0)}}
                                                 << QString();
        QTest::newRow("capacity written as text")
            << QVariant() << PropertyDictionary{{u"NominalChargeCapacity"_s, u"4382"_s}} << QString();
    }

    void healthPercent()
    {
        QFETCH(QVariant, maximumCapacity);
        QFETCH(PropertyDictionary, changes);
        QFETCH(QString, expected);
        FakeBattery battery(smartBattery(changes));
        if (maximumCapacity.isValid())
            battery.reportHealth({{u"sppower_battery_health_maximum_capacity"_s, maximumCapacity}});
        QCOMPARE(battery.rows().filter(u"Capacité maximale"_s),
                 expected.isEmpty() ? QStringList() : QStringList{u"Capacité maximale = "_s + expected});
        QCOMPARE(battery.load().healthPercent.has_value(), !expected.isEmpty());
    }

    void condition_data()
    {
        QTest::addColumn<QVariant>("profilerWord");
        QTest::addColumn<QVariant>("powerSourceWord");
        QTest::addColumn<QString>("expected"); // empty: no condition
        QTest::addColumn<bool>("healthy");
        QTest::newRow("Service Recommended") << QVariant(u"Service Recommended"_s) << QVariant()
                                             << u"Entretien recommandé"_s << false;
        QTest::newRow("Normal") << QVariant(u"Normal"_s) << QVariant() << u"Normale"_s << true;
        QTest::newRow("Fair") << QVariant(u"Fair"_s) << QVariant() << u"Correcte"_s << false;
        QTest::newRow("Poor") << QVariant(u"Poor"_s) << QVariant() << u"Vérifier la batterie"_s << false;
        QTest::newRow("unknown word as it is") << QVariant(u"Unknown"_s) << QVariant() << u"Unknown"_s << false;
        QTest::newRow("case matters") << QVariant(u"good"_s) << QVariant() << u"good"_s << false;
        QTest::newRow("no word at all") << QVariant() << QVariant() << QString() << true;
        QTest::newRow("power source as fallback") << QVariant() << QVariant(u"Check Battery"_s)
                                                  << u"Vérifier la batterie"_s << false;
        QTest::newRow("profiler first") << QVariant(u"Good"_s) << QVariant(u"Check Battery"_s) << u"Normale"_s << true;
    }

    void condition()
    {
        QFETCH(QVariant, profilerWord);
        QFETCH(QVariant, powerSourceWord);
        QFETCH(QString, expected);
        QFETCH(bool, healthy);
        FakeBattery battery;
        if (profilerWord.isValid())
            battery.reportHealth({{u"sppower_battery_health"_s, profilerWord}});
        // Only the internal battery's description counts, whatever comes before it.
        battery.powerSources->list = {{{u"Type"_s, u"UPS"_s}, {u"BatteryHealth"_s, u"Poor"_s}}};
        if (powerSourceWord.isValid())
            battery.powerSources->list.append({{u"Type"_s, u"InternalBattery"_s}, {u"BatteryHealth"_s, powerSourceWord}});
        const BatteryInfo info = battery.load();
        QCOMPARE(info.condition.value_or(QString()), expected);
        QCOMPARE(info.isConditionHealthy, healthy);
        QCOMPARE(rowTexts(info.rows).filter(u"État de la batterie"_s).size(), expected.isEmpty() ? 0 : 1);
    }

    void timeRemaining_data()
    {
        QTest::addColumn<bool>("charging");
        QTest::addColumn<qint64>("minutes");
        QTest::addColumn<QString>("expected"); // the third row, which is the health row without a time
        QTest::newRow("not known yet") << false << qint64(65535) << u"Capacité maximale = 91 %"_s;
        QTest::newRow("longest estimate") << false << qint64(59999) << u"Autonomie restante = 999 h 59 min"_s;
        QTest::newRow("one hour") << false << qint64(60) << u"Autonomie restante = 1 h 0 min"_s;
        QTest::newRow("under an hour") << false << qint64(59) << u"Autonomie restante = 59 min"_s;
        QTest::newRow("zero") << false << qint64(0) << u"Capacité maximale = 91 %"_s;
        QTest::newRow("to full while charging") << true << qint64(125) << u"Charge complète dans = 2 h 5 min"_s;
    }

    void timeRemaining()
    {
        QFETCH(bool, charging);
        QFETCH(qint64, minutes);
        QFETCH(QString, expected);
        // The other estimate holds a valid value that must not be used.
        const FakeBattery battery(smartBattery({{u"IsCharging"_s, charging},
                                                {charging ? u"AvgTimeToFull"_s : u"AvgTimeToEmpty"_s, minutes},
                                                {charging ? u"AvgTimeToEmpty"_s : u"AvgTimeToFull"_s, qint64(30)}}));
        QCOMPARE(battery.rows().value(2), expected);
        QCOMPARE(BatteryService::liveSnapshot(battery.platform())->timeRemaining, battery.load().timeRemaining);
    }

    void measurementRows_data()
    {
        QTest::addColumn<PropertyDictionary>("changes");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("expected"); // empty: no row
        QTest::newRow("temperature to one decimal") << PropertyDictionary{{u"Temperature"_s, qint64(3055)}}
                                                    << u"Température"_s << u"30.6 °C"_s;
        QTest::newRow("temperature not an integer") << PropertyDictionary{{u"Temperature"_s, 30.55}}
                                                    << u"Température"_s << QString();
        QTest::newRow("raw voltage first")
            << PropertyDictionary{{u"AppleRawBatteryVoltage"_s, qint64(12340)}, {u"Voltage"_s, qint64(11000)}}
            << u"Tension"_s << u"12.34 V"_s;
        QTest::newRow("voltage as fallback") << PropertyDictionary{{u"Voltage"_s, qint64(11000)}} << u"Tension"_s
                                             << u"11.00 V"_s;
        QTest::newRow("no current") << PropertyDictionary{{u"Amperage"_s, qint64(0)}} << u"Courant"_s << QString();
        QTest::newRow("discharging") << PropertyDictionary{{u"Amperage"_s, qint64(-812)}} << u"Courant"_s
                                     << u"-812 mA"_s;
        QTest::newRow("charging") << PropertyDictionary{{u"Amperage"_s, qint64(1523)}} << u"Courant"_s << u"+1523 mA"_s;
        QTest::newRow("discharging written unsigned")
            << PropertyDictionary{{u"Amperage"_s, quint64(18446744073709550804ULL)}} << u"Courant"_s << u"-812 mA"_s;
        QTest::newRow("serial not a string") << PropertyDictionary{{u"Serial"_s, qint64(42)}} << u"Numéro de série"_s
                                             << QString();
        QTest::newRow("empty controller name") << PropertyDictionary{{u"DeviceName"_s, QString()}}
                                               << u"Contrôleur"_s << QString();
    }

    void measurementRows()
    {
        QFETCH(PropertyDictionary, changes);
        QFETCH(QString, label);
        QFETCH(QString, expected);
        const QStringList rows = FakeBattery(smartBattery(changes)).rows().filter(label + u" = "_s);
        QCOMPARE(rows, expected.isEmpty() ? QStringList() : QStringList{label + u" = "_s + expected});
    }

    void cellProvenance_data()
    {
        QTest::addColumn<QByteArray>("blob");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("known maker and lot code") << lengthPrefixed({"SWD", "1234"})
                                                  << QStringList{u"Fabricant des cellules = Sunwoda (SWD)"_s,
                                                                 u"Code de lot des cellules = 1234"_s};
        QTest::newRow("unknown maker, lot code too short")
            << lengthPrefixed({"567", "XYZ"}) << QStringList{u"Fabricant des cellules = XYZ — inconnu d'Apple"_s};
        QTest::newRow("last word all digits") << lengthPrefixed({"XYZ", "567"}) << QStringList{};
        QTest::newRow("lot code without maker") << lengthPrefixed({"XYZ", "98765"})
                                                << QStringList{u"Code de lot des cellules = 98765"_s};
        QTest::newRow("first known code, first long number")
            << lengthPrefixed({"ABC", "SON", "ATL", "123", "4567", "89012"})
            << QStringList{u"Fabricant des cellules = Sony"_s, u"Code de lot des cellules = 4567"_s};
        QTest::newRow("lengths 2 and 9 start no word") << QByteArray("\x02" "AB" "\x09" "ABCDEFGHI") << QStringList{};
        QTest::newRow("unprintable byte: scan resumes after the length byte")
            << QByteArray("\x04\x03SWD") << QStringList{u"Fabricant des cellules = Sunwoda (SWD)"_s};
        QTest::newRow("0x7F is not printable") << QByteArray("\x03" "LG\x7F") << QStringList{};
        QTest::newRow("word cut short by the end") << QByteArray("\x05LGC") << QStringList{};
    }

    void cellProvenance()
    {
        QFETCH(QByteArray, blob);
        QFETCH(QStringList, expected);
        QCOMPARE(rowTexts(BatteryService::cellProvenanceRows({{u"ManufacturerData"_s, blob}})), expected);
        QVERIFY(BatteryService::cellProvenanceRows({{u"ManufacturerData"_s, QString::fromLatin1(blob)}}).isEmpty());
    }

    void adapterRowsAndProfilerFailure()
    {
        FakeBattery battery;
        const QVariantMap charger{{u"_name"_s, u"sppower_ac_charger_information"_s},
                                  {u"sppower_ac_charger_name"_s, QString()},
                                  {u"sppower_ac_charger_watts"_s, qint64(30)},
                                  {u"sppower_battery_charger_connected"_s, u"FALSE"_s}};
        battery.reportPower({{{u"_name"_s, u"sppower_information"_s}}, charger});
        QCOMPARE(battery.rows().mid(4), (QStringList{u"Puissance = 30 W"_s, u"Adaptateur branché = Non"_s}));
        // A failed profiler run costs the adapter lines and nothing else.
        battery.reportPower({charger}, 1);
        QCOMPARE(battery.rows().size(), 4);
    }

    // Full and plugged in reads as charged even when the battery still reports charging.
    void fullAndPluggedIn()
    {
        const FakeBattery battery(smartBattery(
            {{u"IsCharging"_s, true}, {u"FullyCharged"_s, true}, {u"ExternalConnected"_s, true}}));
        QCOMPARE(battery.rows().value(1), u"État = Chargée — sur secteur"_s);
        QCOMPARE(BatteryService::liveSnapshot(battery.platform())->stateLabel(), u"Chargée — sur secteur"_s);
    }

    void sampleCapture()
    {
        const Platform platform = capturePlatform(u"sample"_s);
        const std::optional<BatteryInfo> info = BatteryService::load(platform);
        QVERIFY(info);
        QCOMPARE(info->chargePercent, 87);
        QVERIFY(info->isCharging && info->isPluggedIn && !info->isFullyCharged && info->isConditionHealthy);
        QCOMPARE(info->cycleCount, 212);
        QCOMPARE(info->designCycleCount, 1000);
        QCOMPARE(info->healthPercent, 91);
        QCOMPARE(info->condition, u"Normale"_s);
        QCOMPARE(info->temperatureCelsius, 31.27);
        QCOMPARE(info->timeRemaining, u"1 h 15 min"_s);
        QCOMPARE(rowTexts(info->rows),
                 (QStringList{u"Niveau de charge = 87 %"_s, u"État = En charge"_s,
                              u"Charge complète dans = 1 h 15 min"_s, u"Capacité maximale = 91 %"_s,
                              u"État de la batterie = Normale"_s, u"Cycles de charge = 212"_s,
                              u"Capacité = 5578 mAh sur 6075 mAh d'origine"_s, u"Température = 31.3 °C"_s,
                              u"Tension = 12.63 V"_s, u"Courant = +1523 mA"_s,
                              u"Numéro de série = F5D2246N3PK1Q7LAT"_s, u"Contrôleur = bq40z651"_s,
                              u"Fabricant des cellules = Amperex (ATL)"_s, u"Code de lot des cellules = 2246"_s,
                              u"Adaptateur secteur = 96W USB-C Power Adapter"_s, u"Puissance = 96 W"_s,
                              u"Fabricant de l'adaptateur = Apple Inc."_s, u"Adaptateur branché = Oui"_s}));
        QCOMPARE(info->rows[0].key, InfoRowKey::chargeLevel);
        QCOMPARE(info->rows[1].key, InfoRowKey::powerState);
        QVERIFY(std::none_of(info->rows.cbegin() + 2, info->rows.cend(), [](const InfoRow &row) { return row.key; }));
        QCOMPARE(BatteryService::liveSnapshot(platform).value_or(BatterySnapshot()),
                 (BatterySnapshot{87, true, true, false, u"1 h 15 min"_s, 31.27}));
    }

    void wornBatteryCapture()
    {
        const std::optional<BatteryInfo> info = BatteryService::load(capturePlatform(u"worn-battery"_s));
        QVERIFY(info && !info->isConditionHealthy && !info->timeRemaining);
        QCOMPARE(rowTexts(info->rows),
                 (QStringList{u"Niveau de charge = 42 %"_s, u"État = Sur batterie"_s, u"Capacité maximale = 71 %"_s,
                              u"État de la batterie = Entretien recommandé"_s, u"Cycles de charge = 1180"_s,
                              u"Capacité = 3112 mAh sur 4380 mAh d'origine"_s, u"Température = 33.4 °C"_s,
                              u"Tension = 11.36 V"_s, u"Courant = -1247 mA"_s,
                              u"Numéro de série = F8Y0453D1KP0HQ7AC"_s, u"Contrôleur = bq40z651"_s,
                              u"Fabricant des cellules = Sunwoda (SWD)"_s, u"Code de lot des cellules = 1947"_s}));
    }

    void desktopCaptureHasNoBattery()
    {
        const Platform platform = capturePlatform(u"desktop-mac-studio"_s);
        QVERIFY(!BatteryService::load(platform) && !BatteryService::liveSnapshot(platform));
    }
};

QUILLON_TEST_MAIN(TestBatteryService)
#include "tst_battery_service.moc"
