#include "common/test_main.h"
#include "fake_sensors.h"
#include "sources/lid_angle_sensor.h"
#include "sources/thermal_sensors.h"

using namespace Qt::StringLiterals;

using Products = QList<std::optional<QString>>;
using Readings = QList<std::optional<double>>;

namespace {

Products dieSensors(qsizetype count)
{
    Products products;
    for (qsizetype index = 1; index <= count; ++index)
        products.append(u"PMU tdie%1"_s.arg(index));
    return products;
}

} // namespace

class TestSensors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void processorTemperature_data();
    void processorTemperature();
    void noDieSensorMeansNoReader();
    void lidAngle_data();
    void lidAngle();
};

void TestSensors::processorTemperature_data()
{
    QTest::addColumn<Products>("products");
    QTest::addColumn<Readings>("readings");
    QTest::addColumn<std::optional<double>>("expected");

    QTest::newRow("zero reading ignored") << dieSensors(3) << Readings{41.5, 0.0, 43.5} << std::optional(42.5);
    QTest::newRow("mean, not maximum") << dieSensors(4) << Readings{40.0, 50.0, 60.0, 70.0} << std::optional(55.0);
    QTest::newRow("service without event") << dieSensors(3) << Readings{std::nullopt, 38.0, 39.0}
                                           << std::optional(38.5);
    QTest::newRow("negative reading ignored") << dieSensors(2) << Readings{-3.0, 44.0} << std::optional(44.0);
    QTest::newRow("only zero and negative") << dieSensors(3) << Readings{0.0, -1.0, 0.0} << std::optional<double>();
    QTest::newRow("no event at all") << dieSensors(2) << Readings{std::nullopt, std::nullopt}
                                     << std::optional<double>();
    // Kept: "PMU tdie3" and "PMU tdie1" (40 and 46); the others would move the mean.
    QTest::newRow("only die sensors count")
        << Products{u"PMU tdev1"_s, u"PMU tdie3"_s, u"pmu tdie1"_s, u"PMU tdie1"_s, std::nullopt, u" PMU tdie2"_s}
        << Readings{90.0, 40.0, 10.0, 46.0, 80.0, 70.0} << std::optional(43.0);
}

void TestSensors::processorTemperature()
{
    QFETCH(Products, products);
    QFETCH(Readings, readings);
    QFETCH(std::optional<double>, expected);

    auto script = std::make_shared<TemperatureScript>();
    script->readings = {readings};
    const auto sensors = ThermalSensors::create(fakeFactory(script, products));
    QVERIFY(sensors);
    QCOMPARE(sensors->processorTemperature(), expected);
}

void TestSensors::noDieSensorMeansNoReader()
{
    auto script = std::make_shared<TemperatureScript>();
    QVERIFY(!ThermalSensors::create(fakeFactory(script, {u"PMU tdev1"_s, u"pmu tdie1"_s, std::nullopt})));
    QVERIFY(!ThermalSensors::create(fakeFactory(script, {})));
    QVERIFY(!ThermalSensors::create(TemperatureEventSourceFactory()));
    QVERIFY(!LidAngleSensor::create(LidAngleReportSourceFactory()));
}

void TestSensors::lidAngle_data()
{
    QTest::addColumn<HidReport>("report");
    QTest::addColumn<std::optional<int>>("angle");

    const auto report = [](const char *hex) { return HidReport{0, QByteArray::fromHex(hex)}; };
    QTest::newRow("122 degrees") << report("017a00") << std::optional(122);
    QTest::newRow("181 is past the hinge") << report("01b500") << std::optional<int>();
    QTest::newRow("180 is the limit") << report("01b400") << std::optional(180);
    QTest::newRow("closed lid") << report("010000") << std::optional(0);
    QTest::newRow("little-endian") << report("010001") << std::optional<int>(); // 256
    QTest::newRow("two bytes only") << report("017a") << std::optional<int>();
    QTest::newRow("full buffer") << report("0176000000000000") << std::optional(118);
    QTest::newRow("failed request") << HidReport{int(0xE00002C0u), QByteArray::fromHex("017a00")}
                                    << std::optional<int>();
}

void TestSensors::lidAngle()
{
    QFETCH(HidReport, report);
    QFETCH(std::optional<int>, angle);

    auto script = std::make_shared<LidScript>();
    script->readings = {report};
    const auto sensor = LidAngleSensor::create(fakeFactory(script));
    QVERIFY(sensor);
    QCOMPARE(sensor->read(), angle);
    QCOMPARE(script->lastReportId, 1);
    QCOMPARE(script->lastCapacity, 8);
}

QUILLON_TEST_MAIN(TestSensors)
#include "tst_sensors.moc"
