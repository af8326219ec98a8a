#include "common/test_main.h"
#include "collectors/battery_service.h"
#include "collectors/hardware_service.h"
#include "collectors/inventory_service.h"
#include "platform/capture/capture_live.h"
#include "platform/capture/capture_platform.h"
#include "platform/capture/capture_writer.h"
#include "platform/capture/property_list_reader.h"
#include "sources/property_values.h"
#include "sources/sysctl.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTemporaryDir>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

using Kind = PropertyValues::Kind;

// Same kind and same value, all the way down: QVariant's own == would call true equal to 1.
bool sameProperty(const QVariant &a, const QVariant &b)
{
    const Kind kind = PropertyValues::kindOf(a);
    if (kind != PropertyValues::kindOf(b))
        return false;
    switch (kind) {
    case Kind::integer:
        if (a.typeId() == QMetaType::ULongLong || b.typeId() == QMetaType::ULongLong)
            return a.typeId() == b.typeId() && a.toULongLong() == b.toULongLong();
        return a.toLongLong() == b.toLongLong();
    case Kind::array: {
        const QVariantList left = a.toList();
        const QVariantList right = b.toList();
        if (left.size() != right.size())
            return false;
        for (qsizetype i = 0; i < left.size(); ++i) {
            if (!sameProperty(left.at(i), right.at(i)))
                return false;
        }
        return true;
    }
    case Kind::dictionary: {
        const QVariantMap left = a.toMap();
        const QVariantMap right = b.toMap();
        if (left.keys() != right.keys())
            return false;
        for (auto it = left.constBegin(); it != left.constEnd(); ++it) {
            if (!sameProperty(it.value(), right.value(it.key())))
                return false;
        }
        return true;
    }
    default:
        return a == b;
    }
}

bool sameDictionaries(const QList<PropertyDictionary> &a, const QList<PropertyDictionary> &b)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (!sameProperty(a.at(i), b.at(i)))
            return false;
    }
    return true;
}

QVariant readBack(const QVariant &value)
{
    const std::optional<QByteArray> xml = CaptureWriter::propertyListXml(value);
    if (!xml)
        return u"(writer gave nothing)"_s;
    const PropertyListReader::Outcome outcome = PropertyListReader::read(*xml);
    if (!outcome.error.isEmpty())
        return u"(reader failed: %1)"_s.arg(outcome.error);
    return outcome.root;
}

// A kernel that holds one value.
class OneValueKernel final : public KernelSource
{
public:
    OneValueKernel(QByteArray name, std::optional<QByteArray> bytes) : m_name(std::move(name)), m_bytes(std::move(bytes)) {}
    std::optional<QByteArray> value(const QByteArray &name) const override
    {
        return name == m_name ? m_bytes : std::nullopt;
    }

private:
    QByteArray m_name;
    std::optional<QByteArray> m_bytes;
};

// The reading the collectors take of one kernel value, as text, to compare two kernels; the
// raw bytes for a value no collector reads.
QString sysctlReading(const KernelSource &kernel, const QByteArray &name)
{
    if (name == "kern.osproductversion" || name == "kern.osversion" || name == "kern.osrelease")
        return Sysctl::string(kernel, name).value_or(u"-"_s);
    if (name == "hw.memsize" || name == "hw.physicalcpu" || name == "hw.logicalcpu") {
        const std::optional<qint64> number = Sysctl::integer(kernel, name);
        return number ? QString::number(*number) : u"-"_s;
    }
    if (name == "kern.boottime") {
        const std::optional<QDateTime> boot = Sysctl::bootTime(kernel);
        return boot ? boot->toString(Qt::ISODate) : u"-"_s;
    }
    if (name == "vm.swapusage") {
        const std::optional<Sysctl::SwapUsage> swap = Sysctl::swapUsage(kernel);
        return swap ? u"%1/%2/%3"_s.arg(swap->total).arg(swap->used).arg(swap->available) : u"-"_s;
    }
    return QString::fromLatin1(kernel.value(name).value_or("-").toHex());
}

std::shared_ptr<CaptureFolder> openFolder(const QString &path)
{
    auto opened = CaptureFolder::open(path);
    if (const QString *error = std::get_if<QString>(&opened)) {
        qWarning().noquote() << *error;
        return {};
    }
    return std::get<std::shared_ptr<CaptureFolder>>(opened);
}

CaptureWriter::Options quickOptions(int seconds, QList<int> *waits = nullptr)
{
    CaptureWriter::Options options;
    options.liveSeconds = seconds;
    options.wait = [waits](int milliseconds) {
        if (waits)
            waits->append(milliseconds);
    };
    return options;
}

// ---- A platform that notes what the collectors ask for and answers with nothing ----------

struct Queries
{
    QSet<QString> dataTypes;
    QSet<QString> classes;
    QSet<QString> names;
    QSet<QByteArray> kernelValues;
};

class NotingProfiler final : public ProfilerSource
{
public:
    explicit NotingProfiler(Queries &queries) : m_queries(queries) {}
    ProcessOutput run(const QStringList &arguments) const override
    {
        const QString dataType = arguments.value(1);
        m_queries.dataTypes.insert(dataType);
        return ProcessOutput{true, {}, 0, "{\"" + dataType.toLatin1() + "\": []}"};
    }

private:
    Queries &m_queries;
};

class NotingRegistry final : public RegistrySource
{
public:
    explicit NotingRegistry(Queries &queries) : m_queries(queries) {}
    QList<PropertyDictionary> servicesOfClass(const QString &className) const override
    {
        m_queries.classes.insert(className);
        return {};
    }
    QList<PropertyDictionary> servicesNamed(const QString &name) const override
    {
        m_queries.names.insert(name);
        return {};
    }

private:
    Queries &m_queries;
};

class NotingKernel final : public KernelSource
{
public:
    explicit NotingKernel(Queries &queries) : m_queries(queries) {}
    std::optional<QByteArray> value(const QByteArray &name) const override
    {
        m_queries.kernelValues.insert(name);
        return std::nullopt;
    }

private:
    Queries &m_queries;
};

class NoPowerSources final : public PowerSourceList
{
public:
    QList<PropertyDictionary> descriptions() const override { return {}; }
};

class FixedProcess final : public ProcessInformation
{
public:
    QString hostName() const override { return u"atelier.local"_s; }
    QString operatingSystemVersion() const override { return u"Version 15.1 (Build 24B83)"_s; }
    ThermalState thermalState() const override { return ThermalState::fair; }
};

class FixedClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7, 250), Qt::UTC); }
};

Platform quietPlatform(Queries &queries)
{
    Platform platform;
    platform.profiler = std::make_shared<NotingProfiler>(queries);
    platform.registry = std::make_shared<NotingRegistry>(queries);
    platform.kernel = std::make_shared<NotingKernel>(queries);
    platform.powerSources = std::make_shared<NoPowerSources>();
    platform.process = std::make_shared<FixedProcess>();
    platform.clock = std::make_shared<FixedClock>();
    return platform;
}

// ---- Sensors with known readings ----------------------------------------------------------

class TwoProcessorTicks final : public ProcessorTickSource
{
public:
    QList<ProcessorTickCounters> read() override
    {
        ++m_reads;
        return {{100u * m_reads, 50, 1000, 0}, {200, 60u * m_reads, 900, 4294967295u}};
    }

private:
    quint32 m_reads = 0;
};

// Three services: a die sensor that answers, a battery sensor, a die sensor that gives no event.
class MixedTemperatures final : public TemperatureEventSource
{
public:
    QList<std::optional<QString>> serviceProducts() const override
    {
        return {u"PMU tdie1"_s, u"gas gauge battery"_s, u"PMU tdie2"_s};
    }
    QList<std::optional<double>> temperatures(const QList<qsizetype> &serviceIndices) override
    {
        QList<std::optional<double>> readings;
        for (const qsizetype index : serviceIndices)
            readings.append(index == 0 ? std::optional<double>(41.5) : index == 1 ? 30.0 : std::optional<double>());
        return readings;
    }
};

// Reports 01 7A 00 (122°), except the third request of every five, which fails.
class FlakyLid final : public LidAngleReportSource
{
public:
    HidReport featureReport(int reportId, qsizetype capacity) override
    {
        ++m_requests;
        requests.append({reportId, capacity});
        if (m_requests % 5 == 3)
            return HidReport{-536870212, {}};
        return HidReport{0, QByteArray::fromHex("017a00")};
    }
    static inline QList<std::pair<int, qsizetype>> requests;

private:
    int m_requests = 0;
};

} // namespace

class TestCaptureWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void propertyListRoundTrip_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<int>("kind");
        const auto row = [](const char *name, const QVariant &value, Kind kind) {
            QTest::newRow(name) << value << int(kind);
        };
        row("true", true, Kind::boolean);
        row("false", false, Kind::boolean);
        row("zero", qint64(0), Kind::integer);
        row("minus one", qint64(-1), Kind::integer);
        row("smallest 64-bit", std::numeric_limits<qint64>::min(), Kind::integer);
        row("largest signed 64-bit", std::numeric_limits<qint64>::max(), Kind::integer);
        row("largest unsigned 64-bit", std::numeric_limits<quint64>::max(), Kind::integer);
        row("2^63 unsigned", quint64(9223372036854775808ULL), Kind::integer);
        row("real 12.5", 12.5, Kind::real);
        row("real 0.1", 0.1, Kind::real);
        row("real -2.5e-7", -2.5e-7, Kind::real);
        row("real 1e21", 1e21, Kind::real);
        row("real with no fraction", 3.0, Kind::real);
        row("text with accents and quotes", u"Clavier français — « é » ’"_s, Kind::text);
        row("text with XML characters", u"a < b && c > \"d\""_s, Kind::text);
        row("text with tab and line ends", u"ligne\tun\r\nligne deux\n"_s, Kind::text);
        row("empty text", QString(u""_s), Kind::text);
        row("data with zero and 0xFF", QByteArray::fromHex("00ff10"), Kind::data);
        row("empty data", QByteArray(), Kind::data);
        row("date", QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7), Qt::UTC), Kind::date);
        row("date before 2001", QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59), Qt::UTC), Kind::date);
        row("empty array", QVariantList(), Kind::array);
        row("empty dictionary", QVariantMap(), Kind::dictionary);
        row("registry answer",
            QVariantList{QVariantMap{{u"IOClass"_s, u"AppleSMC"_s},
                                     {u"Generation"_s, qint64(3)},
                                     {u"ForceSupported"_s, true},
                                     {u"Manufacturer Data"_s, QByteArray::fromHex("4154")},
                                     {u"Nested"_s, QVariantMap{{u"List"_s, QVariantList{qint64(-5), 1.5, u""_s}}}}},
                         QVariantMap{{u"IOClass"_s, u"AppleSMCKeysEndpoint"_s}}},
            Kind::array);
    }

    void propertyListRoundTrip()
    {
        QFETCH(QVariant, value);
        QFETCH(int, kind);
        const QVariant back = readBack(value);
        QCOMPARE(int(PropertyValues::kindOf(back)), kind);
        QVERIFY2(sameProperty(back, value), qPrintable(back.toString()));
    }

    void propertyListIsXml()
    {
        const std::optional<QByteArray> xml = CaptureWriter::propertyListXml(QVariantList{qint64(1)});
        QVERIFY(xml);
        QVERIFY(xml->startsWith("<?xml"));
        QVERIFY(xml->contains("<plist version=\"1.0\">"));
        QVERIFY(xml->contains("<integer>1</integer>"));
    }

    void valuesWithNoPropertyListKindAreLeftOut()
    {
        const QVariantMap written{{u"kept"_s, u"oui"_s},
                                  {u"null"_s, QVariant()},
                                  {u"date in 2100"_s, QDateTime(QDate(2100, 1, 1), QTime(0, 0), Qt::UTC)},
                                  {u"list"_s, QVariantList{QVariant(), qint64(7)}}};
        const QVariantMap expected{{u"kept"_s, u"oui"_s}, {u"list"_s, QVariantList{qint64(7)}}};
        QVERIFY(sameProperty(readBack(written), expected));
    }

    void charactersXmlCannotHoldAreReplaced()
    {
        const QVariantMap written{{u"Product\u0001"_s, u"pavé\u0000tactile\u001F\uFFFF"_s}};
        const QVariantMap expected{{u"Product\uFFFD"_s, u"pavé\uFFFDtactile\uFFFD\uFFFD"_s}};
        QVERIFY(sameProperty(readBack(written), expected));
    }

    void kernelJson_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("bytesHex");
        QTest::addColumn<QByteArray>("expectedJson"); // wrapped in an array to hold any value
        QTest::newRow("system version") << QByteArray("kern.osproductversion") << QByteArray("31352e3100")
                                        << QByteArray(R"(["15.1"])");
        QTest::newRow("build with two trailing zeros") << QByteArray("kern.osversion") << QByteArray("3234423833000000")
                                                       << QByteArray(R"(["24B83"])");
        QTest::newRow("text without its zero") << QByteArray("kern.osrelease") << QByteArray("32342e312e30")
                                               << QByteArray(R"(["24.1.0"])");
        QTest::newRow("text that is not UTF-8") << QByteArray("kern.osversion") << QByteArray("ff00")
                                                << QByteArray(R"([{"hex": "ff00"}])");
        QTest::newRow("bytes after the zero") << QByteArray("kern.osrelease") << QByteArray("41004200")
                                              << QByteArray(R"([{"hex": "41004200"}])");
        QTest::newRow("4-byte count") << QByteArray("hw.physicalcpu") << QByteArray("0a000000") << QByteArray("[10]");
        QTest::newRow("4-byte minus one") << QByteArray("hw.logicalcpu") << QByteArray("ffffffff") << QByteArray("[-1]");
        QTest::newRow("16 GiB of memory") << QByteArray("hw.memsize") << QByteArray("0000000004000000")
                                          << QByteArray("[17179869184]");
        QTest::newRow("3-byte integer") << QByteArray("hw.memsize") << QByteArray("010203")
                                        << QByteArray(R"([{"hex": "010203"}])");
        // 1794482395 = 0x6AF5_A0DB; 123456 µs = 0x0001_E240.
        QTest::newRow("boot time") << QByteArray("kern.boottime") << QByteArray("dba0f56a0000000040e2010000000000")
                                   << QByteArray("[1794482395]");
        QTest::newRow("boot time of 8 bytes") << QByteArray("kern.boottime") << QByteArray("dba0f56a00000000")
                                              << QByteArray(R"([{"hex": "dba0f56a00000000"}])");
        // total 1 GiB (0x4000_0000), available 720 MiB (0x2D00_0000), used 304 MiB (0x1300_0000),
        // page size 16384, encrypted.
        QTest::newRow("swap")
            << QByteArray("vm.swapusage")
            << QByteArray("0000004000000000" "0000002d00000000" "0000001300000000" "00400000" "01000000")
            << QByteArray(R"([{"total": 1073741824, "available": 754974720, "used": 318767104}])");
        QTest::newRow("swap above the signed range")
            << QByteArray("vm.swapusage")
            << QByteArray("ffffffffffffffff" "0000000000000000" "0000000000000000" "00400000" "00000000")
            << QByteArray(R"([{"hex": "ffffffffffffffff000000000000000000000000000000000040000000000000"}])");
        QTest::newRow("a value no collector reads") << QByteArray("hw.ncpu") << QByteArray("08000000")
                                                    << QByteArray(R"([{"hex": "08000000"}])");
    }

    void kernelJson()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, bytesHex);
        QFETCH(QByteArray, expectedJson);
        const QByteArray bytes = QByteArray::fromHex(bytesHex);
        const QJsonValue json = CaptureWriter::kernelJson(name, bytes);
        QCOMPARE(QJsonArray{json}, QJsonDocument::fromJson(expectedJson).array());

        // Replayed, the member gives the collectors what the raw bytes gave them.
        const OneValueKernel original(name, bytes);
        const OneValueKernel replayed(name, kernelBytes(name, json));
        QCOMPARE(sysctlReading(replayed, name), sysctlReading(original, name));
    }

    void description_data()
    {
        QTest::addColumn<QString>("model"); // empty: unknown
        QTest::addColumn<QString>("expected");
        QTest::newRow("with the model") << u"MacBookPro18,3"_s
                                        << u"Capture de ce Mac (MacBookPro18,3) du 2026-11-16, faite par l’outil."_s;
        QTest::newRow("without the model") << QString()
                                           << u"Capture de ce Mac du 2026-11-16, faite par l’outil."_s;
    }

    void description()
    {
        QFETCH(QString, model);
        QFETCH(QString, expected);
        // 23:30 UTC is already the 17th in Paris: the date written is the UTC one.
        const QDateTime moment(QDate(2026, 11, 16), QTime(23, 30), Qt::UTC);
        const std::optional<QString> identifier = model.isEmpty() ? std::nullopt : std::optional<QString>(model);
        QCOMPARE(CaptureWriter::description(identifier, moment, u"l’outil"_s), expected);
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
        const std::shared_ptr<CaptureFolder> originalFolder = openFolder(path);
        QVERIFY(originalFolder);
        const Platform original = makeCapturePlatform(originalFolder);

        QTemporaryDir temporary;
        const QString copyPath = temporary.filePath(u"copie"_s);
        const CaptureWriter::Outcome outcome = CaptureWriter::save(original, copyPath, quickOptions(2));
        QVERIFY2(outcome.error.isEmpty(), qPrintable(outcome.error));
        QVERIFY2(outcome.notes.isEmpty(), qPrintable(outcome.notes.join(u'\n')));
        const std::shared_ptr<CaptureFolder> copyFolder = openFolder(copyPath);
        QVERIFY(copyFolder);
        const Platform copy = makeCapturePlatform(copyFolder);

        QCOMPARE(copyFolder->capturedAt(), originalFolder->capturedAt());
        for (const QString &dataType : CaptureWriter::profilerDataTypes()) {
            const ProcessOutput before = original.profiler->run({u"-json"_s, dataType});
            const ProcessOutput after = copy.profiler->run({u"-json"_s, dataType});
            QCOMPARE(after.started, before.started);
            QCOMPARE(after.exitStatus, before.exitStatus);
            QCOMPARE(after.standardOutput, before.standardOutput);
        }
        for (const QString &className : CaptureWriter::registryClasses())
            QVERIFY2(sameDictionaries(copy.registry->servicesOfClass(className), original.registry->servicesOfClass(className)),
                     qPrintable(className));
        for (const QString &name : CaptureWriter::registryNames())
            QVERIFY2(sameDictionaries(copy.registry->servicesNamed(name), original.registry->servicesNamed(name)),
                     qPrintable(name));
        for (const QByteArray &name : CaptureWriter::kernelValueNames())
            QCOMPARE(sysctlReading(*copy.kernel, name), sysctlReading(*original.kernel, name));
        QVERIFY(sameDictionaries(copy.powerSources->descriptions(), original.powerSources->descriptions()));
        QCOMPARE(copy.process->hostName(), original.process->hostName());
        QCOMPARE(copy.process->operatingSystemVersion(), original.process->operatingSystemVersion());
        QCOMPARE(copy.process->thermalState(), original.process->thermalState());
        QCOMPARE(copyFolder->problems(), QStringList());

        // Two seconds of live readings: the first two samples, the first ten lid reports.
        const CaptureLiveReadings before = readCaptureLiveReadings(*originalFolder);
        const CaptureLiveReadings after = readCaptureLiveReadings(*copyFolder);
        QCOMPARE(after.cpuTicks.has_value(), before.cpuTicks.has_value() && !before.cpuTicks->isEmpty());
        if (after.cpuTicks) {
            QCOMPARE(after.cpuTicks->size(), 2);
            QCOMPARE(after.cpuTicks->at(0), before.cpuTicks->at(0));
            QCOMPARE(after.cpuTicks->at(1), before.cpuTicks->value(1, before.cpuTicks->at(0)));
        }
        QCOMPARE(after.dieTemperatures.has_value(), before.dieTemperatures.has_value() && !before.dieTemperatures->isEmpty());
        if (after.dieTemperatures) {
            QCOMPARE(after.dieTemperatures->size(), 2);
            QCOMPARE(after.dieTemperatures->at(0), before.dieTemperatures->at(0));
        }
        QCOMPARE(after.lidAngleReports.has_value(), before.lidAngleReports.has_value() && !before.lidAngleReports->isEmpty());
        if (after.lidAngleReports) {
            QCOMPARE(after.lidAngleReports->size(), 10);
            for (qsizetype i = 0; i < 10; ++i)
                QCOMPARE(after.lidAngleReports->at(i), before.lidAngleReports->at(i % before.lidAngleReports->size()));
        }
    }

    void writesTheHeaderAndProcessFiles()
    {
        Queries queries;
        const Platform platform = quietPlatform(queries);
        QTemporaryDir temporary;
        const QString path = temporary.filePath(u"mac"_s);
        QVERIFY(CaptureWriter::save(platform, path, quickOptions(0)).error.isEmpty());

        QFile header(path + u"/capture.json"_s);
        QVERIFY(header.open(QIODevice::ReadOnly));
        const QJsonObject capture = QJsonDocument::fromJson(header.readAll()).object();
        QCOMPARE(capture.value(u"format"_s).toInt(), 1);
        QCOMPARE(capture.value(u"capturedAt"_s).toString(), u"2026-11-16T08:05:07Z"_s);
        QCOMPARE(capture.value(u"description"_s).toString(),
                 u"Capture de ce Mac du 2026-11-16, faite par quillon-bilan --save-capture."_s);

        QFile process(path + u"/process.json"_s);
        QVERIFY(process.open(QIODevice::ReadOnly));
        const QJsonObject expected{{u"hostName"_s, u"atelier.local"_s},
                                   {u"operatingSystemVersion"_s, u"Version 15.1 (Build 24B83)"_s},
                                   {u"thermalState"_s, 1}};
        QCOMPARE(QJsonDocument::fromJson(process.readAll()).object(), expected);
        // No sensor, no live.json; no service, no registry file.
        QVERIFY(!QFile::exists(path + u"/live.json"_s));
        QVERIFY(!QDir(path + u"/registry"_s).exists());
    }

    void recordsLiveReadingsSecondBySecond()
    {
        Queries queries;
        Platform platform = quietPlatform(queries);
        platform.processorTicks = [] { return std::make_unique<TwoProcessorTicks>(); };
        platform.temperatureEvents = [] { return std::make_unique<MixedTemperatures>(); };
        platform.lidAngleReports = [] { return std::make_unique<FlakyLid>(); };
        FlakyLid::requests.clear();

        QTemporaryDir temporary;
        const QString path = temporary.filePath(u"mac"_s);
        QList<int> waits;
        QVERIFY(CaptureWriter::save(platform, path, quickOptions(2, &waits)).error.isEmpty());

        // Ten lid reports 200 ms apart: nine waits, none after the last.
        QCOMPARE(waits, QList<int>(9, 200));
        QCOMPARE(FlakyLid::requests, (QList<std::pair<int, qsizetype>>(10, {1, 8})));
        QFile live(path + u"/live.json"_s);
        QVERIFY(live.open(QIODevice::ReadOnly));
        const QJsonObject expected = QJsonDocument::fromJson(R"({
            "cpuTicks": [[[100, 50, 1000, 0], [200, 60, 900, 4294967295]],
                         [[200, 50, 1000, 0], [200, 120, 900, 4294967295]]],
            "dieTemperatures": [[41.5, 0.0], [41.5, 0.0]],
            "lidAngleReports": ["017a00", "017a00", "", "017a00", "017a00",
                                "017a00", "017a00", "", "017a00", "017a00"]
        })").object();
        QCOMPARE(QJsonDocument::fromJson(live.readAll()).object(), expected);
    }

    void refusesAFolderThatIsNotEmpty()
    {
        Queries queries;
        QTemporaryDir temporary;
        QFile existing(temporary.filePath(u"notes.txt"_s));
        QVERIFY(existing.open(QIODevice::WriteOnly));
        existing.close();
        const CaptureWriter::Outcome outcome = CaptureWriter::save(quietPlatform(queries), temporary.path(), quickOptions(0));
        QVERIFY(outcome.error.contains(u"n’est pas vide"_s));
        QVERIFY(queries.dataTypes.isEmpty());
        QCOMPARE(QDir(temporary.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList{u"notes.txt"_s});
    }

    // A capture must hold every answer the collectors ask for, or a replay would miss some.
    void recordsEverythingTheCollectorsAskFor()
    {
        Queries queries;
        const Platform platform = quietPlatform(queries);
        (void)HardwareService::load(platform);
        (void)BatteryService::load(platform);
        (void)BatteryService::liveSnapshot(platform);
        (void)InventoryService::storage(platform);
        for (const auto collect : {&InventoryService::displays, &InventoryService::usb, &InventoryService::thunderbolt,
                                   &InventoryService::bluetooth, &InventoryService::network, &InventoryService::audio,
                                   &InventoryService::cameras})
            (void)collect(platform);

        const auto missing = [](const auto &asked, const auto &recorded) {
            QStringList list;
            for (const auto &name : asked) {
                if (!recorded.contains(name))
                    list.append(QVariant(name).toString());
            }
            return list.join(u", "_s);
        };
        QVERIFY(!queries.classes.isEmpty());
        QCOMPARE(missing(queries.dataTypes, CaptureWriter::profilerDataTypes()), QString());
        QCOMPARE(missing(queries.classes, CaptureWriter::registryClasses()), QString());
        QCOMPARE(missing(queries.names, CaptureWriter::registryNames()), QString());
        QCOMPARE(missing(queries.kernelValues, CaptureWriter::kernelValueNames()), QString());
    }
};

QUILLON_TEST_MAIN(TestCaptureWriter)
#include "tst_capture_writer.moc"
