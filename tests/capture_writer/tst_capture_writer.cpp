#include "capture/capture_helpers.h"
#include "common/test_main.h"
#include "sources/readings.h"

#include "collectors/battery_service.h"
#include "collectors/hardware_service.h"
#include "collectors/inventory_service.h"
#include "platform/capture/capture_platform.h"
#include "platform/capture/capture_writer.h"
#include "platform/capture/property_list_reader.h"
#include "sources/security_commands.h"

#include <QJsonArray>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

// Every answer a platform gives the collectors, in words, to compare two platforms.
QStringList answers(const Platform &platform)
{
    QStringList all { platform.clock->now().toString(Qt::ISODate), propertyText(platform.powerSources->descriptions()),
        platform.process->hostName(), platform.process->operatingSystemVersion(),
        QString::number(int(platform.process->thermalState())) };
    for (const QString &dataType : CaptureWriter::profilerDataTypes()) {
        const ProcessOutput run = platform.profiler->run({ u"-json"_s, dataType });
        all << u"%1 %2 "_s.arg(dataType).arg(run.started ? run.exitStatus : -1) + QString::fromUtf8(run.standardOutput);
    }
    for (const QString &name : CaptureWriter::registryClasses() + CaptureWriter::registryNames())
        all << propertyText(platform.registry->servicesOfClass(name))
                + propertyText(platform.registry->servicesNamed(name));
    for (const QByteArray &name : CaptureWriter::kernelValueNames())
        all << kernelReading(*platform.kernel, name);
    for (const SystemCommand &command : SecurityCommands::all()) {
        const ProcessOutput run = platform.commands->run(command);
        all << u"%1 %2 %3 "_s.arg(command.key, run.startError).arg(run.started ? run.exitStatus : -1)
                + QString::fromUtf8(run.standardOutput);
    }
    for (const DriveHealthLog &log : platform.driveHealth->logs())
        all << log.model + u' ' + log.failure + u' ' + QString::fromLatin1(log.log.toHex());
    return all;
}

// Notes every question the collectors ask that a capture does not record, and answers
// nothing but the model of the Mac.
struct NotingSources final : ProfilerSource, RegistrySource, KernelSource
{
    using Services = QList<PropertyDictionary>;
    mutable QStringList asked, unrecorded;
    template <typename Answer> Answer noted(const QString &question, bool recorded, Answer answer) const
    {
        asked << question;
        if (!recorded)
            unrecorded << question;
        return answer;
    }
    ProcessOutput run(const QStringList &arguments) const override
    {
        const QString type = arguments.value(1);
        const QByteArray item = type == u"SPHardwareDataType"_s ? R"({"machine_model": "Mac16,7"})" : "";
        return noted(type, CaptureWriter::profilerDataTypes().contains(type),
            ProcessOutput { true, {}, 0, "{\"" + type.toLatin1() + "\": [" + item + "]}" });
    }
    Services servicesOfClass(const QString &name) const override
    {
        return noted(name, CaptureWriter::registryClasses().contains(name), Services());
    }
    Services servicesNamed(const QString &name) const override
    {
        return noted(name, CaptureWriter::registryNames().contains(name), Services());
    }
    std::optional<QByteArray> value(const QByteArray &name) const override
    {
        return noted(
            QString::fromLatin1(name), CaptureWriter::kernelValueNames().contains(name), std::optional<QByteArray>());
    }
};

// Two processors whose counters grow; a die sensor that answers, a battery sensor and a die
// sensor with no event; a lid sensor whose third request of every five fails.
struct FakeSensors final : ProcessorTickSource, TemperatureEventSource, LidAngleReportSource
{
    static inline QList<std::pair<int, qsizetype>> lidRequests;
    quint32 count = 0;
    QList<ProcessorTickCounters> read() override
    {
        return { { 100 * ++count, 50, 1000, 0 }, { 200, 60 * count, 900, 4294967295u } }; // evaluated in order
    }
    QList<std::optional<QString>> serviceProducts() const override
    {
        return { u"PMU tdie1"_s, u"gas gauge battery"_s, u"PMU tdie2"_s };
    }
    QList<std::optional<double>> temperatures(const QList<qsizetype> &indices) override
    {
        return indices == QList<qsizetype> { 0, 2 } ? QList<std::optional<double>> { 41.5, std::nullopt }
                                                    : QList<std::optional<double>> {};
    }
    HidReport featureReport(int reportId, qsizetype capacity) override
    {
        lidRequests.append({ reportId, capacity });
        return ++count % 5 == 3 ? HidReport { -536870212, {} } : HidReport { 0, QByteArray::fromHex("017a00") };
    }
};

// A Mac with a host name, a thermal state and a clock, whose other sources answer nothing.
struct QuietMac : Capture
{
    std::shared_ptr<NotingSources> noting = std::make_shared<NotingSources>();
    Platform platform;
    QList<int> waits;
    QuietMac() : Capture(R"({"format": 1, "capturedAt": "2026-11-16T23:30:07.250Z"})")
    {
        write(u"process.json"_s, R"({"hostName": "mac", "operatingSystemVersion": "Version 15.1", "thermalState": 1})");
        platform = makeCapturePlatform(open());
        platform.profiler = noting;
        platform.registry = noting;
        platform.kernel = noting;
    }
    QString save(const QString &folder, int liveSeconds = 0)
    {
        const CaptureWriter::Options options { liveSeconds, [this](int milliseconds) { waits << milliseconds; } };
        return CaptureWriter::save(platform, dir.filePath(folder), options).error;
    }
    // A JSON file written, compact, its keys in alphabetical order.
    QByteArray saved(const QString &relativePath) const
    {
        QFile file(dir.filePath(relativePath));
        return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).toJson(QJsonDocument::Compact)
                                              : "";
    }
};

} // namespace

class TestCaptureWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void propertyListRoundTrip_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("expected"); // null: the value itself
        const QDateTime moment(QDate(2026, 11, 16), QTime(8, 5, 7), Qt::UTC);
        const auto row = [](const char *name, const QVariant &value, const QString &expected = {}) {
            QTest::newRow(name) << value << expected;
        };
        row("booleans and integers of every sign and width",
            QVariantList { true, false, qint64(0), qint64(-1), std::numeric_limits<qint64>::min(),
                std::numeric_limits<qint64>::max(), quint64(1) << 63, std::numeric_limits<quint64>::max() });
        row("data and dates on both sides of 2001",
            QVariantList { QByteArray::fromHex("00ff10"), QByteArray(), moment, moment.addYears(-27) });
        row("values of no property-list kind left out",
            QVariantMap { { u"kept"_s, u"oui"_s }, { u"null"_s, QVariant() },
                { u"date in 2100"_s, moment.addYears(74) }, { u"list"_s, QVariantList { QVariant(), qint64(7) } } },
            u"{kept: \"oui\", list: [7]}"_s);
        row("characters XML cannot hold", QVariantMap { { u"P\u0001"_s, u"a\u0000b\u001F\uFFFF"_s } },
            u"{P\uFFFD: \"a\uFFFDb\uFFFD\uFFFD\"}"_s);
    }

    void propertyListRoundTrip()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, expected);
        const std::optional<QByteArray> xml = CaptureWriter::propertyListXml(value);
        QVERIFY(xml && xml->startsWith("<?xml"));
        QCOMPARE(propertyText(PropertyListReader::read(*xml).root), expected.isNull() ? propertyText(value) : expected);
    }

    // Kernel values as a Mac hands them over, which the shipped captures do not hold.
    void kernelJson_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("bytesHex");
        QTest::addColumn<QByteArray>("json"); // compact, in an array to hold any value
        const auto row = [](const char *name, const char *kernelName, const char *bytesHex, const char *json) {
            QTest::newRow(name) << QByteArray(kernelName) << QByteArray(bytesHex) << QByteArray(json);
        };
        row("not UTF-8", "kern.osversion", "ff00", R"([{"hex":"ff00"}])");
        // 1794482395 = 0x6AF5A0DB, then 999999 µs (0x0F423F), dropped, and padding.
        row("boot time", "kern.boottime", "dba0f56a000000003f420f0000000000", "[1794482395]");
        row("swap above the signed range", "vm.swapusage",
            "ffffffffffffffff000000000000000000000000000000000040000000000000",
            R"([{"hex":"ffffffffffffffff000000000000000000000000000000000040000000000000"}])");
    }

    void kernelJson()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, bytesHex);
        const QJsonValue member = CaptureWriter::kernelJson(name, QByteArray::fromHex(bytesHex));
        QTEST(QJsonDocument(QJsonArray { member }).toJson(QJsonDocument::Compact), "json");
    }

    void savesWhatEachCaptureAnswers_data()
    {
        QTest::addColumn<QString>("path");
        const QDir captures(QStringLiteral(QUILLON_CAPTURES_DIR));
        for (const QString &name : captures.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            if (QFile::exists(captures.filePath(name + u"/capture.json"_s)))
                QTest::newRow(qPrintable(name)) << captures.filePath(name);
        }
    }

    void savesWhatEachCaptureAnswers()
    {
        QFETCH(QString, path);
        QTemporaryDir temporary;
        const auto original = openCapture(path);
        const CaptureWriter::Outcome outcome
            = CaptureWriter::save(makeCapturePlatform(original), temporary.path(), { 2, [](int) {} });
        QCOMPARE(outcome.error + outcome.notes.join(u'\n'), QString());
        const auto copy = openCapture(temporary.path());
        QCOMPARE(answers(makeCapturePlatform(copy)), answers(makeCapturePlatform(original)));
        QCOMPARE(original->problems() + copy->problems(), QStringList());
    }

    // The collectors ask only for what a capture records, and a Mac is saved whole.
    void recordsWhatTheCollectorsAskFor()
    {
        QuietMac mac;
        const Platform &platform = mac.platform;
        (void)HardwareService::load(platform), (void)BatteryService::load(platform);
        (void)BatteryService::liveSnapshot(platform), (void)InventoryService::storage(platform);
        for (const auto collect : { &InventoryService::displays, &InventoryService::usb, &InventoryService::thunderbolt,
                 &InventoryService::bluetooth, &InventoryService::network, &InventoryService::audio,
                 &InventoryService::cameras })
            (void)collect(platform);
        QVERIFY(mac.noting->asked.contains(u"AppleSMC"_s));
        QCOMPARE(mac.noting->unrecorded, QStringList());
        QVERIFY(mac.save(QString()).contains(u"n’est pas vide"_s));
        QCOMPARE(mac.save(u"sans capteurs"_s, 2), QString());
        QVERIFY(!QFile::exists(mac.dir.filePath(u"sans capteurs/live.json"_s)));
        QVERIFY(!QFile::exists(mac.dir.filePath(u"sans capteurs/registry"_s)));

        mac.platform.processorTicks = [] { return std::make_unique<FakeSensors>(); };
        mac.platform.temperatureEvents = [] { return std::make_unique<FakeSensors>(); };
        mac.platform.lidAngleReports = [] { return std::make_unique<FakeSensors>(); };
        QCOMPARE(mac.save(u"copie"_s, 2), QString());
        // 23:30 UTC is already the 17th in Paris: the date written is the UTC one.
        QCOMPARE(mac.saved(u"copie/capture.json"_s),
            R"({"capturedAt":"2026-11-16T23:30:07Z","description":"Capture de ce Mac (Mac16,7) du 2026-11-16, faite par quillon-bilan --save-capture.","format":1})"_ba);
        QCOMPARE(mac.saved(u"copie/process.json"_s),
            R"({"hostName":"mac","operatingSystemVersion":"Version 15.1","thermalState":1})"_ba);
        QCOMPARE(mac.saved(u"copie/live.json"_s),
            R"({"cpuTicks":[[[100,50,1000,0],[200,60,900,4294967295]],[[200,50,1000,0],[200,120,900,4294967295]]],)"
            R"("dieTemperatures":[[41.5,0],[41.5,0]],)"
            R"("lidAngleReports":["017a00","017a00","","017a00","017a00","017a00","017a00","","017a00","017a00"]})"_ba);
        // Ten lid reports 200 ms apart: nine waits, none after the last.
        QCOMPARE(mac.waits, QList<int>(9, 200));
        QCOMPARE(FakeSensors::lidRequests, (QList<std::pair<int, qsizetype>>(10, { 1, 8 })));
    }
};

QUILLON_TEST_MAIN(TestCaptureWriter)
#include "tst_capture_writer.moc"
