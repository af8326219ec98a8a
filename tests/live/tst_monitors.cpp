#include "common/test_main.h"
#include "fake_sensors.h"
#include "live/battery_monitor.h"
#include "live/cpu_monitor.h"
#include "live/lid_angle_monitor.h"
#include "live/live_values.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using Text = std::optional<QString>;

namespace {

// Long enough that the timer never fires during a test: after its immediate first firing,
// every further reading is asked for with readNow().
constexpr auto quiet = 1h;

// Four processors, {user, system, idle, nice}: busy 10, 20, 30 and 40 % between the first
// and second readings, 50 % each between the second and third.
const QList<QList<ProcessorTickCounters>> fourCores{
    {{1000, 500, 8000, 0}, {2000, 0, 9000, 0}, {0, 0, 0, 0}, {300, 200, 100, 0}},
    {{1006, 503, 8090, 1}, {2020, 0, 9080, 0}, {20, 10, 70, 0}, {320, 210, 160, 10}},
    {{1056, 503, 8140, 1}, {2070, 0, 9130, 0}, {70, 10, 120, 0}, {370, 210, 210, 10}},
};

struct Fakes
{
    std::shared_ptr<TickScript> ticks = std::make_shared<TickScript>();
    std::shared_ptr<TemperatureScript> temperatures = std::make_shared<TemperatureScript>();
    std::shared_ptr<LidScript> lid = std::make_shared<LidScript>();
    Platform platform;

    explicit Fakes(QList<std::optional<QString>> products = {u"PMU tdie1"_s, u"PMU tdie2"_s})
    {
        ticks->readings = fourCores;
        temperatures->readings = {{50.0, 54.0}};
        lid->readings = {lidReport(118)};
        platform.processorTicks = fakeFactory(ticks);
        platform.temperatureEvents = fakeFactory(temperatures, products);
        platform.lidAngleReports = fakeFactory(lid);
    }
};

// Battery readings handed out in turn, then none.
struct Battery
{
    QList<std::optional<BatterySnapshot>> readings;
    std::atomic<int> reads = 0;

    BatteryMonitor::SnapshotReader reader()
    {
        return [this] { const int read = reads++; return read < readings.size() ? readings.at(read) : std::nullopt; };
    }
};

BatterySnapshot charging(int percent)
{
    return BatterySnapshot{percent, true, true, false, std::nullopt, 30.5};
}

} // namespace

class TestMonitors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cpuLoadNeedsTwoReadings();
    void cpuRestartForgetsTheLastTicks();
    void cpuProcessorCountChange();
    void cpuTemperaturePublishedOnlyWhenChanged();
    void cpuWithoutTemperatureService();
    void startTwiceMakesOneTimer();
    void timerKeepsReading();
    void batteryDesktopGivesUpAtSecondTick();
    void batteryPublishedEveryTick();
    void batteryLostAfterFirstReading();
    void lidWithoutSensorGivesUpAtOnce();
    void lidPublishesOnlyChanges();
    void liveValuesFromMonitors();
};

void TestMonitors::cpuLoadNeedsTwoReadings()
{
    Fakes fakes;
    CPUMonitor monitor(fakes.platform, quiet);
    QSignalSpy loadSpy(&monitor, &CPUMonitor::loadChanged);
    monitor.start();
    settle(monitor);
    QCOMPARE(monitor.temperatureText(), Text(u"52 °C"_s));
    QCOMPARE(monitor.load(), std::nullopt);
    QCOMPARE(loadSpy.count(), 0);

    monitor.readNow();
    settle(monitor);
    QCOMPARE(monitor.perCoreLoad(), (QList<double>{0.1, 0.2, 0.3, 0.4}));
    QCOMPARE(monitor.load(), std::optional(0.25));
    QCOMPARE(monitor.property("loadText").toString(), u"25 %"_s);

    monitor.readNow();
    settle(monitor);
    QCOMPARE(monitor.loadText(), Text(u"50 %"_s));
    // The fake repeats its last reading: counters that did not move read 0, and the load is
    // published again even though it does not change any more.
    monitor.readNow();
    monitor.readNow();
    settle(monitor);
    QCOMPARE(monitor.perCoreLoad(), (QList<double>{0.0, 0.0, 0.0, 0.0}));
    QCOMPARE(loadSpy.count(), 4);
}

void TestMonitors::cpuRestartForgetsTheLastTicks()
{
    Fakes fakes;
    CPUMonitor monitor(fakes.platform, quiet);
    monitor.start();
    monitor.readNow();
    monitor.stop();
    QVERIFY(!monitor.isRunning());
    settle(monitor);
    QCOMPARE(monitor.load(), std::optional(0.25)); // stopping keeps what is shown

    // The third reading would give 50 %, but it is the first after the restart.
    QSignalSpy loadSpy(&monitor, &CPUMonitor::loadChanged);
    monitor.start();
    settle(monitor);
    QCOMPARE(fakes.ticks->reads.load(), 3);
    QCOMPARE(loadSpy.count(), 0);
    QCOMPARE(monitor.load(), std::optional(0.25));
}

void TestMonitors::cpuProcessorCountChange()
{
    Fakes fakes;
    fakes.ticks->readings = {fourCores.at(0), fourCores.at(1), {{0, 0, 0, 0}, {0, 0, 0, 0}},
                             {{30, 0, 10, 0}, {10, 0, 30, 0}}};
    CPUMonitor monitor(fakes.platform, quiet);
    monitor.start();
    monitor.readNow();
    settle(monitor);
    QSignalSpy loadSpy(&monitor, &CPUMonitor::loadChanged);
    monitor.readNow(); // four processors, then two: nothing to compare
    settle(monitor);
    QCOMPARE(loadSpy.count(), 0);
    QCOMPARE(monitor.load(), std::optional(0.25));

    monitor.readNow();
    settle(monitor);
    QCOMPARE(monitor.perCoreLoad(), (QList<double>{0.75, 0.25}));
    QCOMPARE(monitor.load(), std::optional(0.5));
}

void TestMonitors::cpuTemperaturePublishedOnlyWhenChanged()
{
    Fakes fakes;
    // Means: 52, 52, none, none, 41.5.
    fakes.temperatures->readings = {{50.0, 54.0}, {53.0, 51.0}, {0.0, 0.0}, {std::nullopt, -2.0}, {41.5, std::nullopt}};
    CPUMonitor monitor(fakes.platform, quiet);
    QSignalSpy spy(&monitor, &CPUMonitor::temperatureChanged);
    monitor.start();
    for (int tick = 0; tick < 4; ++tick)
        monitor.readNow();
    settle(monitor);
    QCOMPARE(monitor.temperatureText(), Text(u"42 °C"_s));
    QCOMPARE(spy.count(), 3); // none → 52, 52 → none, none → 41.5
}

void TestMonitors::cpuWithoutTemperatureService()
{
    Fakes fakes({u"PMU tdev1"_s, u"pmu tdie1"_s});
    CPUMonitor monitor(fakes.platform, quiet);
    QSignalSpy spy(&monitor, &CPUMonitor::temperatureChanged);
    monitor.start();
    monitor.stop();
    monitor.start();
    monitor.readNow();
    settle(monitor);
    QCOMPARE(fakes.ticks->reads.load(), 3);
    QCOMPARE(monitor.temperatureText(), std::nullopt);
    QVERIFY(!monitor.property("temperatureText").isValid());
    QCOMPARE(spy.count(), 0);
    QCOMPARE(fakes.temperatures->sourcesMade.load(), 1); // looked for once, not after the restart
}

void TestMonitors::startTwiceMakesOneTimer()
{
    // Every timer fires once at once: two timers would mean two readings.
    Fakes fakes;
    CPUMonitor cpu(fakes.platform, quiet);
    LidAngleMonitor lid(fakes.platform, quiet);
    Battery battery{{charging(50)}};
    BatteryMonitor batteryMonitor(battery.reader(), quiet);
    for (int twice = 0; twice < 2; ++twice) {
        cpu.start();
        lid.start();
        batteryMonitor.start();
    }
    settle(cpu);
    settle(lid);
    settle(batteryMonitor);
    QCOMPARE(fakes.ticks->reads.load(), 1);
    QCOMPARE(fakes.lid->reads.load(), 1);
    QCOMPARE(battery.reads.load(), 1);
}

void TestMonitors::timerKeepsReading()
{
    Fakes fakes;
    LidAngleMonitor monitor(fakes.platform, 5ms);
    monitor.start();
    QTRY_VERIFY_WITH_TIMEOUT(fakes.lid->reads.load() >= 3, 5000);
    monitor.stop();
    QTRY_COMPARE(monitor.formatted(), Text(u"118°"_s));
}

void TestMonitors::batteryDesktopGivesUpAtSecondTick()
{
    Battery battery; // no battery: every reading is none
    BatteryMonitor monitor(battery.reader(), quiet);
    QSignalSpy spy(&monitor, &BatteryMonitor::snapshotChanged);
    monitor.start();
    settle(monitor);
    QCOMPARE(spy.count(), 1); // the first reading is published, none as it is
    QVERIFY(monitor.isRunning());

    monitor.readNow();
    settle(monitor);
    QCOMPARE(spy.count(), 1);
    QVERIFY(!monitor.isAvailable());
    QVERIFY(!monitor.isRunning());

    monitor.start();
    settle(monitor);
    QVERIFY(!monitor.isRunning());
    QCOMPARE(battery.reads.load(), 2);
}

void TestMonitors::batteryPublishedEveryTick()
{
    Battery battery{{charging(80), charging(80), charging(81)}};
    BatteryMonitor monitor(battery.reader(), quiet);
    QSignalSpy spy(&monitor, &BatteryMonitor::snapshotChanged);
    monitor.start();
    monitor.readNow();
    monitor.readNow();
    monitor.stop();
    settle(monitor);
    QCOMPARE(spy.count(), 3);
    QCOMPARE(monitor.snapshot(), std::optional(charging(81)));
    QCOMPARE(monitor.property("snapshot").value<BatterySnapshot>().chargePercent, 81);
    monitor.start();
    QVERIFY(monitor.isRunning());
}

void TestMonitors::batteryLostAfterFirstReading()
{
    Battery battery{{charging(64)}};
    BatteryMonitor monitor(battery.reader(), quiet);
    monitor.start();
    monitor.readNow();
    settle(monitor);
    QVERIFY(!monitor.isAvailable());
    QCOMPARE(monitor.snapshot(), std::optional(charging(64)));
}

void TestMonitors::lidWithoutSensorGivesUpAtOnce()
{
    LidAngleMonitor monitor(Platform(), quiet);
    QSignalSpy spy(&monitor, &LidAngleMonitor::isAvailableChanged);
    monitor.start();
    settle(monitor);
    QVERIFY(!monitor.isAvailable());
    QVERIFY(!monitor.isRunning());
    QCOMPARE(spy.count(), 1);
    QCOMPARE(monitor.formatted(), std::nullopt);
    monitor.start();
    QVERIFY(!monitor.isRunning());
}

void TestMonitors::lidPublishesOnlyChanges()
{
    Fakes fakes;
    QList<HidReport> reports(10, lidReport(118));
    reports << HidReport{int(0xE00002D8u), {}} << lidReport(181) << lidReport(0);
    fakes.lid->readings = reports;
    LidAngleMonitor monitor(fakes.platform, quiet);
    QSignalSpy spy(&monitor, &LidAngleMonitor::angleChanged);
    monitor.start();
    for (int tick = 1; tick < 10; ++tick)
        monitor.readNow();
    settle(monitor);
    QCOMPARE(spy.count(), 1); // 118 ten times
    QCOMPARE(monitor.formatted(), Text(u"118°"_s));

    monitor.readNow(); // a failed read blanks the angle
    settle(monitor);
    QCOMPARE(monitor.angle(), std::nullopt);
    monitor.readNow(); // out of range: none again, nothing new
    monitor.readNow();
    monitor.stop();
    settle(monitor);
    QCOMPARE(monitor.formatted(), Text(u"0°"_s));
    QCOMPARE(spy.count(), 3);
    QVERIFY(monitor.isAvailable());
    QCOMPARE(fakes.lid->sourcesMade.load(), 1);
}

void TestMonitors::liveValuesFromMonitors()
{
    Fakes fakes;
    CPUMonitor cpu(fakes.platform, quiet);
    LidAngleMonitor lid(fakes.platform, quiet);
    QCOMPARE(liveValues(lid, cpu), LiveValues());
    cpu.start();
    cpu.readNow();
    lid.start();
    settle(cpu);
    settle(lid);
    QCOMPARE(liveValues(lid, cpu), (LiveValues{u"118°"_s, u"25 %"_s, 0.25, u"52 °C"_s}));
}

QUILLON_TEST_MAIN(TestMonitors)
#include "tst_monitors.moc"
