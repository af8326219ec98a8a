#include "common/test_main.h"
#include "fake_sensors.h"
#include "live/battery_monitor.h"
#include "live/cpu_monitor.h"
#include "live/lid_angle_monitor.h"
#include "platform/capture/capture_platform.h"
#include "sources/lid_angle_sensor.h"
#include "sources/thermal_sensors.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using Angles = QList<std::optional<int>>;
using Temperatures = QList<std::optional<double>>;
using Text = std::optional<QString>;

namespace {

constexpr auto quiet = 1h;

// A capture folder holding its header and, when given, live.json.
struct LiveCapture
{
    QTemporaryDir dir;
    std::shared_ptr<CaptureFolder> folder;
    Platform platform;

    explicit LiveCapture(const std::optional<QByteArray> &liveJson)
    {
        QFile header(dir.filePath(u"capture.json"_s));
        if (header.open(QIODevice::WriteOnly))
            header.write(R"({"format": 1, "capturedAt": "2026-11-16T08:05:07Z"})");
        header.close();
        QFile live(dir.filePath(u"live.json"_s));
        if (liveJson && live.open(QIODevice::WriteOnly))
            live.write(*liveJson);
        live.close();
        folder = std::get<std::shared_ptr<CaptureFolder>>(CaptureFolder::open(dir.path()));
        platform = makeCapturePlatform(folder);
    }

    bool problemNoted() const { return !folder->problems().isEmpty(); }
};

// `count` readings from a new reader of the factory.
template <typename Factory, typename Read>
auto readings(const Factory &factory, int count, Read read)
{
    QList<decltype(read(*factory()))> values;
    for (auto source = factory(); values.size() < count;)
        values.append(read(*source));
    return values;
}

} // namespace

class TestCaptureLive : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lidReports_data();
    void lidReports();
    void tickSamples_data();
    void tickSamples();
    void temperatureSamples_data();
    void temperatureSamples();
    void missingSensors_data();
    void missingSensors();
    void sampleCaptureMonitorsPublishChangingValues();
};

void TestCaptureLive::lidReports_data()
{
    QTest::addColumn<QByteArray>("reports");
    QTest::addColumn<Angles>("angles");
    QTest::addColumn<bool>("problemNoted");

    QTest::newRow("in order, then again") << QByteArray(R"(["017a00", "01B400", "010000"])")
                                          << Angles{122, 180, 0, 122, 180} << false;
    QTest::newRow("odd, spaced or non-hex text left out")
        << QByteArray(R"(["017a0", "017600", "zz7a00", "01 7a 00", "015a00"])") << Angles{118, 90, 118} << true;
    QTest::newRow("non-text entries left out") << QByteArray(R"([122, null, ["017a00"], "017a00"])")
                                               << Angles{122, 122} << true;
    QTest::newRow("recorded bad readings stay bad") << QByteArray(R"(["01b500", "017a", "", "0176000000000000ff"])")
                                                    << Angles{std::nullopt, std::nullopt, std::nullopt, 118} << false;
}

void TestCaptureLive::lidReports()
{
    QFETCH(QByteArray, reports);
    QFETCH(Angles, angles);
    QFETCH(bool, problemNoted);

    LiveCapture capture(R"({"lidAngleReports": )" + reports + "}");
    const auto angle = [](LidAngleReportSource &source) { return LidAngleSensor::angleFromReport(source.featureReport(1, 8)); };
    QCOMPARE(readings(capture.platform.lidAngleReports, int(angles.size()), angle), angles);
    // A second reader starts from the first report again.
    QCOMPARE(readings(capture.platform.lidAngleReports, 1, angle), angles.mid(0, 1));
    QCOMPARE(capture.problemNoted(), problemNoted);
}

void TestCaptureLive::tickSamples_data()
{
    QTest::addColumn<QByteArray>("samples");
    QTest::addColumn<QList<quint32>>("users"); // the first processor's user ticks, read after read
    QTest::addColumn<bool>("problemNoted");

    QTest::newRow("in order, then again") << QByteArray(R"([[[1, 2, 3, 4]], [[5, 6, 7, 8]]])")
                                          << QList<quint32>{1, 5, 1} << false;
    QTest::newRow("wrong counter count") << QByteArray(R"([[[1, 0, 0, 0]], [[2, 0, 0]], [[3, 0, 0, 0, 0]]])")
                                         << QList<quint32>{1, 1} << true;
    QTest::newRow("negative, fractional or text counter")
        << QByteArray(R"([[[1, 0, 0, 0]], [[2, 0, -1, 0]], [[3, 0.5, 0, 0]], [["4", 0, 0, 0]]])")
        << QList<quint32>{1, 1} << true;
    QTest::newRow("beyond 32 bits") << QByteArray(R"([[[4294967296, 0, 0, 0]], [[4294967295, 0, 0, 0]]])")
                                    << QList<quint32>{4294967295u} << true;
    QTest::newRow("one bad processor drops its sample")
        << QByteArray(R"([[[1, 0, 0, 0], "x"], {"user": 1}, [[2, 0, 0, 0], [2, 0, 0, 0]]])")
        << QList<quint32>{2, 2} << true;
}

void TestCaptureLive::tickSamples()
{
    QFETCH(QByteArray, samples);
    QFETCH(QList<quint32>, users);
    QFETCH(bool, problemNoted);

    LiveCapture capture(R"({"cpuTicks": )" + samples + "}");
    const auto firstUser = [](ProcessorTickSource &source) { return source.read().value(0).user; };
    QCOMPARE(readings(capture.platform.processorTicks, int(users.size()), firstUser), users);
    QCOMPARE(capture.problemNoted(), problemNoted);
}

void TestCaptureLive::temperatureSamples_data()
{
    QTest::addColumn<QByteArray>("samples");
    QTest::addColumn<Temperatures>("temperatures");
    QTest::addColumn<bool>("problemNoted");

    // A sensor missing from a shorter sample gave no event; 0.0 is a reading to ignore.
    QTest::newRow("in order, then again") << QByteArray("[[40.0, 42.0], [41.5, 0.0], [39.0]]")
                                          << Temperatures{41.0, 41.5, 39.0, 41.0} << false;
    QTest::newRow("only zeros") << QByteArray("[[0.0, 0.0], [50.0, 52.0]]") << Temperatures{std::nullopt, 51.0}
                                << false;
    QTest::newRow("bad samples left out") << QByteArray(R"([[40.0, "hot"], 45, [44.0, 46.0], [null], {}])")
                                          << Temperatures{45.0, 45.0} << true;
}

void TestCaptureLive::temperatureSamples()
{
    QFETCH(QByteArray, samples);
    QFETCH(Temperatures, temperatures);
    QFETCH(bool, problemNoted);

    LiveCapture capture(R"({"dieTemperatures": )" + samples + "}");
    const auto sensors = ThermalSensors::create(capture.platform.temperatureEvents);
    QVERIFY(sensors);
    Temperatures read;
    while (read.size() < temperatures.size())
        read.append(sensors->processorTemperature());
    QCOMPARE(read, temperatures);
    QCOMPARE(capture.problemNoted(), problemNoted);
}

void TestCaptureLive::missingSensors_data()
{
    QTest::addColumn<std::optional<QByteArray>>("liveJson");
    QTest::addColumn<bool>("hasTicksAndTemperatures");
    QTest::addColumn<bool>("problemNoted");

    QTest::newRow("no live.json") << std::optional<QByteArray>() << false << false;
    QTest::newRow("desktop: no lid member")
        << std::optional<QByteArray>(R"({"cpuTicks": [[[1, 2, 3, 4]]], "dieTemperatures": [[40.0]]})") << true
        << false;
    QTest::newRow("members of the wrong kind")
        << std::optional<QByteArray>(R"({"cpuTicks": {}, "dieTemperatures": 41.5, "lidAngleReports": "017a00"})")
        << false << true;
    QTest::newRow("empty lists") << std::optional<QByteArray>(R"({"cpuTicks": [], "dieTemperatures": [[]], "lidAngleReports": []})")
                                 << false << false;
    QTest::newRow("root is a list") << std::optional<QByteArray>(R"([{"lidAngleReports": ["017a00"]}])") << false
                                    << true;
    QTest::newRow("truncated file") << std::optional<QByteArray>(R"({"lidAngleReports": ["017a00", )") << false
                                    << true;
}

void TestCaptureLive::missingSensors()
{
    QFETCH(std::optional<QByteArray>, liveJson);
    QFETCH(bool, hasTicksAndTemperatures);
    QFETCH(bool, problemNoted);

    LiveCapture capture(liveJson);
    QCOMPARE(bool(capture.platform.processorTicks), hasTicksAndTemperatures);
    QCOMPARE(bool(ThermalSensors::create(capture.platform.temperatureEvents)), hasTicksAndTemperatures);
    QVERIFY(!capture.platform.lidAngleReports);
    QCOMPARE(capture.problemNoted(), problemNoted);

    // The monitors run over such a capture: the lid monitor gives up at its first tick.
    CPUMonitor cpu(capture.platform, quiet);
    LidAngleMonitor lid(capture.platform, quiet);
    cpu.start();
    lid.start();
    settle(cpu);
    settle(lid);
    QVERIFY(!lid.isAvailable());
    QCOMPARE(cpu.temperature().has_value(), hasTicksAndTemperatures);
}

void TestCaptureLive::sampleCaptureMonitorsPublishChangingValues()
{
    auto opened = CaptureFolder::open(QStringLiteral(QUILLON_CAPTURES_DIR) + u"/sample"_s);
    QVERIFY(std::holds_alternative<std::shared_ptr<CaptureFolder>>(opened));
    const Platform platform = makeCapturePlatform(std::get<std::shared_ptr<CaptureFolder>>(opened));

    CPUMonitor cpu(platform, quiet);
    cpu.start();
    settle(cpu);
    // First recorded temperatures: (42.3 + 43.0 + 40.6 + 44.5) / 4 = 42.6.
    QCOMPARE(cpu.temperatureText(), Text(u"43 °C"_s));
    cpu.readNow();
    settle(cpu);
    // Second: (41.6 + 43.2 + 40.7 + 44.2) / 4 = 42.425. Processor 0 went from
    // {2310004, 1180002, 29870095, 0} to {2310007, 1180003, 29870191, 0}: 4 busy ticks, 96 idle.
    QCOMPARE(cpu.temperatureText(), Text(u"42 °C"_s));
    QCOMPARE(cpu.perCoreLoad().size(), 10);
    QCOMPARE(cpu.perCoreLoad().first(), 0.04);
    const double quietLoad = cpu.load().value_or(1.0);
    QVERIFY(quietLoad < 0.2);
    // The recorded minute has a burst of work around its thirtieth second.
    for (int tick = 2; tick <= 30; ++tick)
        cpu.readNow();
    settle(cpu);
    QVERIFY(cpu.load().value_or(0.0) > quietLoad + 0.2);

    // The first 62 lid reports say 110 degrees, the next ones 118.
    LidAngleMonitor lid(platform, quiet);
    QSignalSpy angleSpy(&lid, &LidAngleMonitor::angleChanged);
    lid.start();
    settle(lid);
    QCOMPARE(lid.formatted(), Text(u"110°"_s));
    for (int tick = 1; tick < 63; ++tick)
        lid.readNow();
    settle(lid);
    QCOMPARE(lid.formatted(), Text(u"118°"_s));
    QCOMPARE(angleSpy.count(), 2);

    // The sample Mac's battery: 87 %, charging on its adapter, 3127 hundredths of a degree.
    BatteryMonitor battery(platform);
    QSignalSpy snapshotSpy(&battery, &BatteryMonitor::snapshotChanged);
    battery.start();
    battery.readNow();
    battery.stop();
    settle(battery);
    QCOMPARE(snapshotSpy.count(), 2);
    QVERIFY(battery.isAvailable());
    const BatterySnapshot snapshot = battery.snapshot().value_or(BatterySnapshot());
    QCOMPARE(snapshot.chargePercent, 87);
    QVERIFY(snapshot.isCharging && snapshot.isPluggedIn && !snapshot.isFullyCharged);
    QCOMPARE(snapshot.temperatureCelsius, std::optional(31.27));
}

QUILLON_TEST_MAIN(TestCaptureLive)
#include "tst_capture_live.moc"
