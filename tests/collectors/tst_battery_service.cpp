#include "common/test_main.h"
#include "fakes.h"

#include "collectors/battery_service.h"

namespace {

// A battery on battery power, charged at 64 %, whose capacities give a computed health of
// 91 %; `changes` replace its values, a null removes one. `powerItems` are the profiler's
// items, `sourceWord` the health word of the internal power source after another source's.
FakeMac batteryMac(const PropertyDictionary &changes = {}, const QByteArray &powerItems = {}, const QString &sourceWord = {})
{
    PropertyDictionary battery = properties(R"({"BatteryInstalled": true, "CurrentCapacity": 64, "IsCharging": false,
        "ExternalConnected": false, "FullyCharged": false, "DesignCapacity": 4790, "NominalChargeCapacity": 4382})");
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        if (it->isNull())
            battery.remove(it.key());
        else
            battery.insert(it.key(), *it);
    }
    FakeMac mac;
    mac.registry->byClass[u"AppleSmartBattery"_s] = {battery};
    mac.profiler->answerItems(u"SPPowerDataType"_s, powerItems);
    mac.powerSources->list = {{{u"Type"_s, u"UPS"_s}, {u"BatteryHealth"_s, u"Poor"_s}}};
    if (!sourceWord.isEmpty())
        mac.powerSources->list.append({{u"Type"_s, u"InternalBattery"_s}, {u"BatteryHealth"_s, sourceWord}});
    return mac;
}

// The battery's lines that begin with `label`.
QStringList linesOf(const QString &label, const QByteArray &changes, const QByteArray &powerItems = {}, const QString &sourceWord = {})
{
    return rowTexts(BatteryService::load(batteryMac(properties(changes), powerItems, sourceWord).platform()).value().rows).filter(
        QRegularExpression(u'^' + label));
}

// The profiler's health figures of the battery.
QByteArray health(const QByteArray &values)
{
    return R"({"_name": "spbattery_information", "sppower_battery_health_info": {)" + values + "}}";
}

// Whether a battery with these changes is read, by the full load and by the live reading;
// nothing stands for no smart-battery service at all.
QStringList presence(const std::optional<QByteArray> &changes)
{
    const Platform platform = changes ? batteryMac(properties(*changes)).platform() : FakeMac().platform();
    return {BatteryService::load(platform) ? u"read"_s : u"none"_s, BatteryService::liveSnapshot(platform) ? u"read"_s : u"none"_s};
}

// "condition | healthy or not", "-" for no condition, from the system's word and the power source's.
QStringList condition(const QByteArray &systemWord, const QString &sourceWord = {})
{
    const QByteArray items = systemWord.isEmpty() ? QByteArray() : health("\"sppower_battery_health\": \"" + systemWord + '"');
    const BatteryInfo info = BatteryService::load(batteryMac({}, items, sourceWord).platform()).value();
    return {info.condition.value_or(u"-"_s) + (info.isConditionHealthy ? u" | healthy"_s : u" | unhealthy"_s)};
}

// The cell lines of a manufacturer blob; the same bytes as a text give none.
QStringList cells(const QByteArray &blob)
{
    if (!BatteryService::cellProvenanceRows({{u"ManufacturerData"_s, QString::fromLatin1(blob)}}).isEmpty())
        return {u"lines from a text"_s};
    return rowTexts(BatteryService::cellProvenanceRows({{u"ManufacturerData"_s, blob}}));
}

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
    void lines_data()
    {
        QTest::addColumn<QStringList>("actual");
        QTest::addColumn<QStringList>("expected");
        const QString capacity = u"Capacité maximale"_s;
        QTest::newRow("the system's percentage wins") << linesOf(capacity, "{}",
            health(R"("sppower_battery_health_maximum_capacity": "89%")")) << QStringList{u"Capacité maximale = 89 %"_s};
        // macOS's figure and the mAh ratio (91 %) side by side only beyond 3 points apart.
        const QString gap = u"Capacité mesurée"_s;
        QTest::newRow("4 points apart") << linesOf(gap, "{}", health(R"("sppower_battery_health_maximum_capacity": "95%")"))
            << QStringList{u"Capacité mesurée = 91 % (macOS indique 95 %) : macOS lisse sa capacité maximale sur de nombreuses "
                           "charges, alors que le rapport en mAh suit la dernière mesure de la batterie."_s};
        // The clock reads 15 January 2027. Packed: (year - 1980) << 9 | month << 5 | day.
        const QString age = u"Âge"_s;
        QTest::newRow("packed: a year to the day") << linesOf(age, R"({"ManufactureDate": 23599})")
                                                   << QStringList{u"Âge = Fabriquée en janvier 2026 (1 an)"_s};
        QTest::newRow("packed: one day short of a year") << linesOf(age, R"({"ManufactureDate": 23600})")
                                                         << QStringList{u"Âge = Fabriquée en janvier 2026 (moins d'un an)"_s};
        // "291014" in the bytes, least significant first: 14 October 2021.
        QTest::newRow("digits in BatteryData") << linesOf(age, R"({"BatteryData": {"ManufactureDate": 57385866574130}})")
                                               << QStringList{u"Âge = Fabriquée en octobre 2021 (5 ans)"_s};
        // "29101A": a letter among the digits.
        QTest::newRow("a letter among the digits") << linesOf(age, R"({"BatteryData": {"ManufactureDate": 71679517735218}})")
                                                   << QStringList();
        QTest::newRow("computed: 4382 / 4790 rounded") << linesOf(capacity, "{}") << QStringList{u"Capacité maximale = 91 %"_s};
        QTest::newRow("computed: 32 / 256 is 12.5, rounded up")
            << linesOf(capacity, R"({"NominalChargeCapacity": 32, "DesignCapacity": 256})") << QStringList{u"Capacité maximale = 13 %"_s};
        QTest::newRow("above the design capacity") << linesOf(capacity, R"({"NominalChargeCapacity": 5000})")
            << QStringList{u"Capacité maximale = 104 %"_s};

        const QString state = u"État ="_s;
        QTest::newRow("full and plugged in, though charging")
            << linesOf(state, R"({"FullyCharged": true, "ExternalConnected": true, "IsCharging": true})")
            << QStringList{u"État = Chargée — sur secteur [powerState]"_s};
        QTest::newRow("on battery") << linesOf(state, "{}") << QStringList{u"État = Sur batterie [powerState]"_s};

        // The other estimate always holds a valid value that must not be used.
        const QString time = u"(Autonomie|Charge complète)"_s;
        QTest::newRow("not known yet") << linesOf(time, R"({"AvgTimeToEmpty": 65535, "AvgTimeToFull": 30})") << QStringList();
        QTest::newRow("to full while charging") << linesOf(time, R"({"IsCharging": true, "AvgTimeToFull": 125, "AvgTimeToEmpty": 30})")
            << QStringList{u"Charge complète dans = 2 h 5 min"_s};

        QTest::newRow("temperature to one decimal") << linesOf(u"Temp"_s, R"({"Temperature": 3055})")
            << QStringList{u"Température = 30.6 °C"_s};
        QTest::newRow("discharging") << linesOf(u"Courant"_s, R"({"Amperage": -812})") << QStringList{u"Courant = -812 mA"_s};
        const QString adapter = u"(Adaptateur|Puissance|Fabricant de)"_s;
        const QByteArray charger = R"({"_name": "sppower_ac_charger_information", "sppower_ac_charger_name": "",
            "sppower_ac_charger_watts": 30, "sppower_battery_charger_connected": "FALSE"})";
        QTest::newRow("adapter") << linesOf(adapter, "{}", R"({"_name": "sppower_information"}, )" + charger)
            << QStringList{u"Puissance = 30 W"_s, u"Adaptateur branché = Non"_s};
        QTest::newRow("no smart-battery service") << presence({}) << QStringList{u"none"_s, u"none"_s};

        // The system's health word first, else the internal power source's.
        QTest::newRow("Service Recommended") << condition("Service Recommended") << QStringList{u"Entretien recommandé | unhealthy"_s};
        QTest::newRow("an unknown word as it is") << condition("Unknown") << QStringList{u"Unknown | unhealthy"_s};
        QTest::newRow("the power source as fallback") << condition({}, u"Check Battery"_s)
            << QStringList{u"Vérifier la batterie | unhealthy"_s};

        QTest::newRow("known maker and lot code") << cells(lengthPrefixed({"SWD", "1234"}))
            << QStringList{u"Fabricant des cellules = Sunwoda (SWD)"_s, u"Code de lot des cellules = 1234"_s};
        QTest::newRow("first known code, first long number") << cells(lengthPrefixed({"ABC", "SON", "ATL", "123", "4567", "89012"}))
            << QStringList{u"Fabricant des cellules = Sony"_s, u"Code de lot des cellules = 4567"_s};
        QTest::newRow("unprintable: the scan resumes after the length byte") << cells(QByteArray("\x04\x03SWD"))
            << QStringList{u"Fabricant des cellules = Sunwoda (SWD)"_s};
    }

    void lines()
    {
        QFETCH(QStringList, actual);
        QTEST(actual, "expected");
    }

    // Every line in its order, and the live reading of the same battery. The registry keeps
    // the current unsigned: past the signed range it is a discharge.
    void everyLine()
    {
        PropertyDictionary changes = properties(R"({"IsCharging": true, "ExternalConnected": true, "CurrentCapacity": 87, "CycleCount": 212,
            "AvgTimeToFull": 75, "Temperature": 3127, "Voltage": 12630, "Serial": "F5D2", "DeviceName": "bq40z651"})");
        changes.insert(u"ManufacturerData"_s, lengthPrefixed({"ATL", "2246"}));
        changes.insert(u"Amperage"_s, quint64(18446744073709550804ULL));
        const FakeMac mac = batteryMac(changes,
            health(R"("sppower_battery_health": "Good", "sppower_battery_health_maximum_capacity": "90%")")
                + R"(, {"_name": "sppower_ac_charger_information", "sppower_ac_charger_name": "96W USB-C", "sppower_ac_charger_watts": 96,
                "sppower_ac_charger_manufacturer": "Apple Inc.", "sppower_battery_charger_connected": "TRUE"})");
        QCOMPARE(rowTexts(BatteryService::load(mac.platform()).value().rows), (QStringList{
            u"Niveau de charge = 87 % [chargeLevel]"_s, u"État = En charge [powerState]"_s, u"Charge complète dans = 1 h 15 min"_s,
            u"Capacité maximale = 90 %"_s, u"État de la batterie = Normale"_s, u"Cycles de charge = 212"_s,
            u"Capacité = 4382 mAh sur 4790 mAh d'origine"_s, u"Température = 31.3 °C"_s, u"Tension = 12.63 V"_s, u"Courant = -812 mA"_s,
            u"Numéro de série = F5D2"_s, u"Contrôleur = bq40z651"_s, u"Fabricant des cellules = Amperex (ATL)"_s,
            u"Code de lot des cellules = 2246"_s, u"Adaptateur secteur = 96W USB-C"_s, u"Puissance = 96 W"_s,
            u"Fabricant de l'adaptateur = Apple Inc."_s, u"Adaptateur branché = Oui"_s}));
        QCOMPARE(BatteryService::liveSnapshot(mac.platform()).value_or(BatterySnapshot()),
                 (BatterySnapshot{87, true, true, false, u"1 h 15 min"_s, 31.27}));
        // A failed profiler run costs the profiler's lines and nothing else.
        mac.profiler->answer(u"SPPowerDataType"_s, "{}", 1);
        QCOMPARE(BatteryService::load(mac.platform()).value().rows.size(), 13);
    }
};

QUILLON_TEST_MAIN(TestBatteryService)
#include "tst_battery_service.moc"
