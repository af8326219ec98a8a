#include "common/test_main.h"
#include "fake_sensors.h"
#include "live/battery_monitor.h"
#include "live/cpu_monitor.h"
#include "live/lid_angle_monitor.h"
#include "live/live_values.h"
#include "live/processor_load.h"
#include "sources/lid_angle_sensor.h"
#include "sources/thermal_sensors.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using TickList = QList<ProcessorLoad::Ticks>;
using Snapshots = QList<std::optional<BatterySnapshot>>;

namespace {

// Long enough that the timer never fires during a test: after its immediate first firing,
// every further reading is asked for with readNow().
constexpr auto quiet = 1h;

std::optional<int> chargePercent(const BatteryMonitor &monitor)
{
    return monitor.snapshot() ? std::optional(monitor.snapshot()->chargePercent) : std::nullopt;
}

} // namespace

// The live readings: what the sensors' readings mean, and the monitors that take them in
// turn, publish them and give up, over captures of live.json.
class TestLive : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Only the services named "PMU tdie…" are die sensors, case and all: here "PMU tdie3" and
    // "PMU tdie1", 40 and 46. Zero and negative readings are not temperatures.
    void processorTemperature()
    {
        const auto sensors = ThermalSensors::create(
            std::make_unique<Services>(Products { u"PMU tdev1"_s, u"PMU tdie3"_s, u"pmu tdie1"_s, u"PMU tdie1"_s,
                                           std::nullopt, u" PMU tdie2"_s, u"PMU tdie4"_s, u"PMU tdie5"_s },
                Readings { 90.0, 40.0, 10.0, 46.0, 80.0, 70.0, 0.0, -5.0 }));
        QVERIFY(sensors);
        QCOMPARE(text(sensors->processorTemperature()), u"43"_s);
        QVERIFY(!ThermalSensors::create(std::make_unique<Services>(Products { u"PMU tdev1"_s }, Readings { 40.0 })));
    }

    void lidAngle_data()
    {
        QTest::addColumn<QByteArray>("report");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("angle");
        QTest::newRow("122 degrees") << QByteArray("017a00") << 0 << u"122"_s;
        QTest::newRow("180 is the limit") << QByteArray("01b400") << 0 << u"180"_s;
        QTest::newRow("181 is past the hinge") << QByteArray("01b500") << 0 << u"-"_s;
    }

    void lidAngle()
    {
        QFETCH(QByteArray, report);
        QFETCH(int, status);
        QFETCH(QString, angle);
        QCOMPARE(text(LidAngleSensor::angleFromReport(HidReport { status, QByteArray::fromHex(report) })), angle);
    }

    void ticksWidenBeforeAdding()
    {
        // Counters are {user, system, idle, nice}. 4 294 967 295 × 2 + 2 = 8 589 934 592.
        LiveCapture capture(R"({"cpuTicks": [[[100, 20, 900, 3], [4294967295, 4294967295, 7, 2]]]})");
        QCOMPARE(ProcessorLoad::sample(capture.platform.processorTicks().get()),
            (TickList { { 123, 900 }, { 8589934592ull, 7 } }));
    }

    void usage_data()
    {
        QTest::addColumn<TickList>("from");
        QTest::addColumn<TickList>("to");
        QTest::addColumn<QList<double>>("fractions");
        QTest::newRow("a quarter busy") << TickList { { 100, 300 } } << TickList { { 200, 600 } }
                                        << QList<double> { 0.25 };
        QTest::newRow("counters did not move")
            << TickList { { 500, 500 }, { 1, 1 } } << TickList { { 500, 500 }, { 2, 3 } }
            << QList<double> { 0.0, 1.0 / 3.0 };
        // 5 − 10 wraps to 2⁶⁴ − 5; beside it 100 idle ticks vanish in a double.
        QTest::newRow("busy counter went back")
            << TickList { { 10, 0 } } << TickList { { 5, 100 } } << QList<double> { 1.0 };
        // 2⁶⁴ − 5 idle ticks beside 50 busy ones: 50 / 2⁶⁴ in doubles.
        QTest::newRow("idle counter went back")
            << TickList { { 0, 10 } } << TickList { { 50, 5 } } << QList<double> { 50.0 / 18446744073709551616.0 };
    }

    void usage()
    {
        QFETCH(TickList, from);
        QFETCH(TickList, to);
        QFETCH(QList<double>, fractions);
        QCOMPARE(ProcessorLoad::usage(from, to), fractions);
    }

    void cpuLoadAndTemperature()
    {
        // Ticks {user, system, idle, nice}: four processors busy 10, 20, 30 and 40 %, then two
        // processors busy 30 and 10 of 40, then 10 of 20 each, then no tick. Temperatures: 52.5
        // (a tie, written as the even 52) twice, none twice, 41.5 twice.
        LiveCapture capture(R"({"cpuTicks": [
            [[1000, 500, 8000, 0], [2000, 0, 9000, 0], [0, 0, 0, 0], [300, 200, 100, 0]],
            [[1006, 503, 8090, 1], [2020, 0, 9080, 0], [20, 10, 70, 0], [320, 210, 160, 10]],
            [[0, 0, 0, 0], [0, 0, 0, 0]], [[30, 0, 10, 0], [10, 0, 30, 0]],
            [[40, 0, 20, 0], [20, 0, 40, 0]], [[40, 0, 20, 0], [20, 0, 40, 0]]],
            "dieTemperatures": [[52.0, 53.0], [53.0, 52.0], [0.0, 0.0], [0.0, -2.0], [41.5], [41.5]]})");
        CPUMonitor monitor(capture.platform, quiet);
        LidAngleMonitor lid(capture.platform, quiet);
        const auto loads = logOf(monitor, &CPUMonitor::loadChanged, &CPUMonitor::loadText);
        const auto temperatures = logOf(monitor, &CPUMonitor::temperatureChanged, &CPUMonitor::temperatureText);
        QList<QList<double>> perCore;
        connect(&monitor, &CPUMonitor::perCoreLoadChanged, [&] { perCore << monitor.perCoreLoad(); });
        monitor.start(); // one reading says nothing
        monitor.start(); // nor does a second timer start: it would read at once
        monitor.readNow();
        monitor.readNow(); // four processors, then two: nothing to compare
        monitor.readNow();
        monitor.stop();
        monitor.start(); // the first reading after a restart is not compared with the last one
        monitor.readNow(); // the same reading again: counters that did not move read 0
        settle(monitor);
        QCOMPARE(*loads, (QStringList { u"25 %"_s, u"50 %"_s, u"0 %"_s }));
        QCOMPARE(perCore, (QList<QList<double>> { { 0.1, 0.2, 0.3, 0.4 }, { 0.75, 0.25 }, { 0.0, 0.0 } }));
        QCOMPARE(*temperatures, (QStringList { u"52 °C"_s, u"-"_s, u"42 °C"_s }));
        QCOMPARE(liveValues(lid.angle(), monitor.load(), monitor.temperature()),
            (LiveValues { std::nullopt, u"0 %"_s, 0.0, u"42 °C"_s }));
    }

    void lidPublishesOnlyChanges()
    {
        LiveCapture capture(R"({"lidAngleReports": ["017600", "017600", "", "017600", "01b500", "010000"]})");
        std::atomic<int> made = 0;
        capture.platform.lidAngleReports = counted(capture.platform.lidAngleReports, made);
        LidAngleMonitor monitor(capture.platform, quiet);
        const auto log = logOf(monitor, &LidAngleMonitor::angleChanged, &LidAngleMonitor::formatted);
        monitor.start();
        monitor.start();
        for (int tick = 1; tick < 6; ++tick)
            monitor.readNow();
        monitor.stop();
        monitor.start(); // the seventh reading is the first report again
        settle(monitor);
        QCOMPARE(*log, (QStringList { u"118°"_s, u"-"_s, u"118°"_s, u"-"_s, u"0°"_s, u"118°"_s }));
        QCOMPARE(made.load(), 1); // looked for once, not after the restart
    }

    // The first reading is published even when there is none; a later none means no battery.
    void battery_data()
    {
        QTest::addColumn<Snapshots>("readings");
        QTest::addColumn<QStringList>("published"); // charge levels
        QTest::addColumn<bool>("available");
        const auto charging = [](int percent) { return std::optional(BatterySnapshot { percent, true, true }); };
        QTest::newRow("desktop: gives up at the second reading") << Snapshots {} << QStringList { u"-"_s } << false;
        QTest::newRow("every reading published, even unchanged")
            << Snapshots { charging(80), charging(80), charging(81) } << QStringList { u"80"_s, u"80"_s, u"81"_s }
            << true;
        QTest::newRow("battery lost: the last reading stays")
            << Snapshots { charging(64) } << QStringList { u"64"_s } << false;
    }

    void battery()
    {
        QFETCH(Snapshots, readings);
        QFETCH(QStringList, published);
        QFETCH(bool, available);
        std::atomic<int> reads = 0; // on the monitor's thread
        BatteryMonitor monitor([&] { return readings.value(reads++); }, quiet);
        const auto log = logOf(monitor, &BatteryMonitor::snapshotChanged, chargePercent);
        monitor.start();
        monitor.start();
        const int ticks = std::max<int>(readings.size(), 2);
        for (int tick = 1; tick < ticks; ++tick)
            monitor.readNow();
        settle(monitor);
        QCOMPARE(*log, published);
        QCOMPARE(text(chargePercent(monitor)), published.last());
        QCOMPARE(monitor.isRunning(), available);
        monitor.stop();
        monitor.start(); // reads again unless it gave up
        settle(monitor);
        QCOMPARE(reads.load(), ticks + (available ? 1 : 0));
    }

};

QUILLON_TEST_MAIN(TestLive)
#include "tst_live.moc"
