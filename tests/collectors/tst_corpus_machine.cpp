#include "common/test_main.h"

#include "collectors/battery_service.h"
#include "collectors/hardware_service.h"
#include "platform/capture/property_list_reader.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

// Real answers published by others, from many Macs and systems: every file goes through
// the machine and battery collectors, which must give a record or one of the profiler's
// two failures, and never crash or hang.
namespace {

QString corpusPath()
{
    return QFileInfo(QStringLiteral(QUILLON_CORPUS_DIR)).absoluteFilePath();
}

// The profiler printing a given answer for one data type and nothing for the others.
class FakeProfiler final : public ProfilerSource
{
public:
    QHash<QString, QByteArray> answers;
    ProcessOutput run(const QStringList &arguments) const override
    {
        return ProcessOutput{true, {}, 0, answers.value(arguments.value(1))};
    }
};

class OneBattery final : public RegistrySource
{
public:
    PropertyDictionary battery;
    QList<PropertyDictionary> servicesOfClass(const QString &name) const override
    {
        return name == u"AppleSmartBattery"_s ? QList<PropertyDictionary>{battery} : QList<PropertyDictionary>{};
    }
    QList<PropertyDictionary> servicesNamed(const QString &) const override { return {}; }
};

class NoKernel final : public KernelSource
{
public:
    std::optional<QByteArray> value(const QByteArray &) const override { return std::nullopt; }
};

QByteArray contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

void verifyRows(const QList<InfoRow> &rows)
{
    for (const InfoRow &row : rows)
        QVERIFY2(!row.label.isEmpty() && !row.value.isEmpty(), qPrintable(row.label));
}

Platform platformWith(const std::shared_ptr<FakeProfiler> &profiler, const PropertyDictionary &battery = {})
{
    auto registry = std::make_shared<OneBattery>();
    registry->battery = battery;
    Platform platform;
    platform.profiler = profiler;
    platform.registry = registry;
    platform.kernel = std::make_shared<NoKernel>();
    return platform;
}

// A battery present and charging, so that the profiler's answer decides the rest.
const PropertyDictionary someBattery{{u"BatteryInstalled"_s, true}, {u"CurrentCapacity"_s, qint64(50)},
                                     {u"IsCharging"_s, true}, {u"DesignCapacity"_s, qint64(5000)}};

} // namespace

class TestCorpusMachine : public QObject
{
    Q_OBJECT

private:
    int m_filesRead = 0;

    void addFiles(const QString &folder, const QStringList &patterns)
    {
        if (!QFileInfo(corpusPath()).isDir())
            QSKIP("No corpus of real outputs beside the checkout (../shared/corpus): nothing to run.");
        QTest::addColumn<QString>("path");
        QDirIterator files(corpusPath() + u'/' + folder, patterns, QDir::Files, QDirIterator::Subdirectories);
        QStringList paths;
        while (files.hasNext())
            paths.append(files.next());
        paths.sort();
        for (const QString &path : paths)
            QTest::newRow(qPrintable(QDir(corpusPath()).relativeFilePath(path))) << path;
    }

    void verifyProfilerOutcome(const SystemProfiler::Failure &failure)
    {
        QVERIFY(failure.kind == SystemProfiler::Failure::Kind::unreadableOutput
                || failure.kind == SystemProfiler::Failure::Kind::processFailed);
        qInfo("  profiler failure: %s", qPrintable(failure.description()));
    }

private Q_SLOTS:
    void hardwareAnswers_data() { addFiles(u"profiler/SPHardwareDataType"_s, {u"*.json"_s}); }

    void hardwareAnswers()
    {
        QFETCH(QString, path);
        auto profiler = std::make_shared<FakeProfiler>();
        profiler->answers.insert(u"SPHardwareDataType"_s, contents(path));
        const Result<HardwareInfo> result = HardwareService::load(platformWith(profiler));
        ++m_filesRead;
        if (!result.ok())
            return verifyProfilerOutcome(result.failure());
        const HardwareInfo &info = result.value();
        verifyRows(info.rows);
        qInfo("  %s | %s | %s | %s | %s", qPrintable(info.modelIdentifier), qPrintable(info.chip),
              qPrintable(info.cores), qPrintable(info.coresShort), qPrintable(info.memory));
    }

    void softwareAnswers_data() { addFiles(u"profiler/SPSoftwareDataType"_s, {u"*.json"_s}); }

    void softwareAnswers()
    {
        QFETCH(QString, path);
        auto profiler = std::make_shared<FakeProfiler>();
        profiler->answers.insert(u"SPHardwareDataType"_s, R"({"SPHardwareDataType": []})");
        profiler->answers.insert(u"SPSoftwareDataType"_s, contents(path));
        const Result<HardwareInfo> result = HardwareService::load(platformWith(profiler));
        ++m_filesRead;
        QVERIFY(result.ok());
        verifyRows(result.value().rows);
    }

    void powerAnswers_data() { addFiles(u"profiler/SPPowerDataType"_s, {u"*.json"_s}); }

    void powerAnswers()
    {
        QFETCH(QString, path);
        auto profiler = std::make_shared<FakeProfiler>();
        profiler->answers.insert(u"SPPowerDataType"_s, contents(path));
        const std::optional<BatteryInfo> info = BatteryService::load(platformWith(profiler, someBattery));
        ++m_filesRead;
        QVERIFY(info);
        verifyRows(info->rows);
        qInfo("  health %s, condition %s, %d lines", qPrintable(info->healthPercent ? QString::number(*info->healthPercent) : u"-"_s),
              qPrintable(info->condition.value_or(u"-"_s)), int(info->rows.size()));
    }

    void registryDumps_data() { addFiles(u"ioreg"_s, {u"*.plist"_s}); }

    void registryDumps()
    {
        QFETCH(QString, path);
        const PropertyListReader::Outcome outcome = PropertyListReader::read(contents(path));
        ++m_filesRead;
        QVERIFY2(outcome.error.isEmpty(), qPrintable(outcome.error));
        QList<PropertyDictionary> services;
        if (outcome.root.typeId() == QMetaType::QVariantMap)
            services.append(outcome.root.toMap());
        for (const QVariant &entry : outcome.root.toList()) {
            if (entry.typeId() == QMetaType::QVariantMap)
                services.append(entry.toMap());
        }
        QVERIFY(!services.isEmpty());
        for (const PropertyDictionary &service : services) {
            const Platform platform = platformWith(std::make_shared<FakeProfiler>(), service);
            const std::optional<BatteryInfo> info = BatteryService::load(platform);
            QCOMPARE(BatteryService::liveSnapshot(platform).has_value(), info.has_value());
            if (info)
                verifyRows(info->rows);
        }
    }

    void cleanupTestCase()
    {
        if (m_filesRead > 0)
            qInfo("%d corpus files read", m_filesRead);
    }
};

QUILLON_TEST_MAIN(TestCorpusMachine)
#include "tst_corpus_machine.moc"
