#include "fuzz_inputs.h"

#include "cli/bilan_options.h"
#include "cli/bilan_run.h"
#include "collectors/battery_service.h"
#include "collectors/hardware_service.h"
#include "collectors/inventory_service.h"
#include "diagnostics/diagnostics_service.h"
#include "platform/capture/capture_platform.h"
#include "platform/capture/property_list_reader.h"
#include "records/history_entry.h"
#include "records/report_builder.h"
#include "sources/mac_models.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>

#include <memory>

using namespace Qt::StringLiterals;

namespace FuzzInputs {

namespace {

// The same answer, whatever the data type asked for.
class OneAnswerProfiler final : public ProfilerSource
{
public:
    explicit OneAnswerProfiler(QByteArray answer) : m_answer(std::move(answer)) {}
    ProcessOutput run(const QStringList &) const override { return ProcessOutput{true, {}, 0, m_answer}; }

private:
    QByteArray m_answer;
};

// The same services, whatever the class or name asked for.
class OneListRegistry final : public RegistrySource
{
public:
    explicit OneListRegistry(QList<PropertyDictionary> services) : m_services(std::move(services)) {}
    QList<PropertyDictionary> servicesOfClass(const QString &) const override { return m_services; }
    QList<PropertyDictionary> servicesNamed(const QString &) const override { return m_services; }

private:
    QList<PropertyDictionary> m_services;
};

class OneListPowerSources final : public PowerSourceList
{
public:
    explicit OneListPowerSources(QList<PropertyDictionary> list) : m_list(std::move(list)) {}
    QList<PropertyDictionary> descriptions() const override { return m_list; }

private:
    QList<PropertyDictionary> m_list;
};

// Every kernel value the collectors and rules read, as a 16 GB Apple-silicon Mac gives them.
class FixedKernel final : public KernelSource
{
public:
    std::optional<QByteArray> value(const QByteArray &name) const override
    {
        static const QJsonObject values = QJsonDocument::fromJson(R"({
            "kern.osproductversion": "15.1", "kern.osversion": "24B83", "kern.osrelease": "24.1.0",
            "hw.memsize": 17179869184, "hw.physicalcpu": 10, "hw.logicalcpu": 10,
            "kern.boottime": 1794482395,
            "vm.swapusage": {"total": 1073741824, "used": 318767104, "available": 754974720}})")
                                                  .object();
        const QString key = QString::fromLatin1(name);
        return values.contains(key) ? kernelBytes(name, values.value(key)) : std::nullopt;
    }
};

class FixedProcess final : public ProcessInformation
{
public:
    QString hostName() const override { return u"Mac-de-test.local"_s; }
    QString operatingSystemVersion() const override { return u"Version 15.1 (Build 24B83)"_s; }
    ThermalState thermalState() const override { return ThermalState::fair; }
};

class FixedClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime(QDate(2026, 11, 16), QTime(9, 5), Qt::UTC); }
};

Platform platformWith(std::shared_ptr<const ProfilerSource> profiler, QList<PropertyDictionary> services)
{
    Platform platform;
    platform.profiler = std::move(profiler);
    platform.kernel = std::make_shared<FixedKernel>();
    platform.registry = std::make_shared<OneListRegistry>(services);
    platform.powerSources = std::make_shared<OneListPowerSources>(services);
    platform.process = std::make_shared<FixedProcess>();
    platform.clock = std::make_shared<FixedClock>();
    return platform;
}

// Every collector of the application state, the verdicts on what they found, the report.
void collectJudgeAndReport(const Platform &platform)
{
    ReportContents contents;
    if (Result<HardwareInfo> hardware = HardwareService::load(platform); hardware.ok())
        contents.hardware = hardware.value();
    contents.battery = BatteryService::load(platform);
    contents.snapshot = BatteryService::liveSnapshot(platform);
    if (Result<QList<StorageVolume>> volumes = InventoryService::storage(platform); volumes.ok())
        contents.volumes = volumes.value();
    for (AppSection section : AppSections::dataSections()) {
        if (!AppSections::isDeviceSection(section))
            continue;
        if (Result<QList<DeviceNode>> devices = InventoryService::devices(platform, section); devices.ok())
            contents.inventory.insert(section, devices.value());
    }
    contents.report = DiagnosticsService::build(platform, contents.hardware, contents.battery, contents.volumes,
                                                contents.inventory);
    const QString text = ReportBuilder::build(contents, ReportStamp{platform.clock->now(), u"Quillon"_s, u"0"_s});
    if (text.isEmpty())
        qFatal("the report is empty");
}

// The dictionaries of a registry answer: the root array's, or the root dictionary itself.
QList<PropertyDictionary> dictionariesOf(const QVariant &root)
{
    if (root.typeId() == QMetaType::QVariantMap)
        return {root.toMap()};
    QList<PropertyDictionary> dictionaries;
    for (const QVariant &entry : root.toList()) {
        if (entry.typeId() == QMetaType::QVariantMap)
            dictionaries.append(entry.toMap());
    }
    return dictionaries;
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

QList<QByteArray> splitParts(const QByteArray &bytes)
{
    const QByteArray separator(captureFileSeparator);
    QList<QByteArray> parts;
    qsizetype start = 0;
    for (qsizetype end; (end = bytes.indexOf(separator, start)) >= 0; start = end + separator.size())
        parts.append(bytes.mid(start, end - start));
    parts.append(bytes.mid(start));
    return parts;
}

QTemporaryDir &scratchFolder()
{
    static QTemporaryDir folder;
    if (!folder.isValid())
        qFatal("no temporary folder");
    return folder;
}

} // namespace

void initialize(int *argc, char ***argv)
{
    // The user's preferences and data folders are redirected, so that nothing of the person
    // running the fuzzer is read (the model overrides, the workshop) or written.
    const QByteArray home = scratchFolder().filePath(u"home"_s).toLocal8Bit();
    QDir().mkpath(QString::fromLocal8Bit(home));
    qputenv("HOME", home);
    qputenv("XDG_CONFIG_HOME", home + "/.config");
    qputenv("XDG_DATA_HOME", home + "/.local/share");
    qputenv("TZ", "Europe/Paris");
    QStandardPaths::setTestModeEnabled(true);
    if (!QCoreApplication::instance())
        new QCoreApplication(*argc, *argv);
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
}

void profilerAnswer(const QByteArray &bytes)
{
    collectJudgeAndReport(platformWith(std::make_shared<OneAnswerProfiler>(bytes), {}));
}

void registryPropertyList(const QByteArray &bytes)
{
    const PropertyListReader::Outcome outcome = PropertyListReader::read(bytes);
    if (!outcome.error.isEmpty())
        return;
    // A Mac whose profiler knows its model, so that the built-in components are judged.
    static const QByteArray machine = R"({"SPHardwareDataType": [{"_name": "hardware_overview",
        "machine_model": "MacBookPro18,3", "machine_name": "MacBook Pro", "chip_type": "Apple M1 Pro",
        "physical_memory": "16 GB", "serial_number": "FVFXC2XXQ6L4"}],
        "SPSoftwareDataType": [{"_name": "os_overview"}], "SPPowerDataType": []})";
    collectJudgeAndReport(platformWith(std::make_shared<OneAnswerProfiler>(machine), dictionariesOf(outcome.root)));
}

// The former journal file as the journal's database takes it over: every element is either
// an entry kept or a position said, and what is kept writes as a whole spreadsheet text.
void journalFile(const QByteArray &bytes)
{
    const HistoryFile::Import found = HistoryFile::importEntries(bytes);
    if (!found.readable && (!found.entries.isEmpty() || !found.rejected.isEmpty()))
        qFatal("an unreadable journal gave entries");
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (found.readable && document.array().size() != found.entries.size() + found.rejected.size())
        qFatal("an element of the journal was neither kept nor said");
    for (qsizetype i = 1; i < found.rejected.size(); ++i) {
        if (found.rejected.at(i) <= found.rejected.at(i - 1))
            qFatal("the positions said are not in order");
    }
    if (!HistoryCsv::text(found.entries).endsWith(u'\n'))
        qFatal("the journal's CSV does not end with a line feed");
}

void modelOverrides(const QByteArray &bytes)
{
    MacModels::decodeOverrides(bytes);
}

const QStringList &captureFilePaths()
{
    static const QStringList paths = {
        u"capture.json"_s,
        u"kernel.json"_s,
        u"process.json"_s,
        u"power-sources.json"_s,
        u"live.json"_s,
        u"profiler/SPHardwareDataType.json"_s,
        u"profiler/SPPowerDataType.json"_s,
        u"profiler/SPStorageDataType.json"_s,
        u"profiler/SPUSBDataType.status"_s,
        u"registry/class/AppleSmartBattery.plist"_s,
        u"registry/class/IOHIDInterface.plist"_s,
    };
    return paths;
}

void captureFolder(const QByteArray &bytes)
{
    const QString folder = scratchFolder().filePath(u"capture"_s);
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    const QList<QByteArray> parts = splitParts(bytes);
    for (qsizetype i = 0; i < parts.size() && i < captureFilePaths().size(); ++i) {
        if (!parts.at(i).isEmpty())
            writeFile(folder + u'/' + captureFilePaths().at(i), parts.at(i));
    }

    BilanOptions options;
    options.capture = folder;
    QString report;
    QString errors;
    QTextStream reportStream(&report);
    QTextStream errorStream(&errors);
    const int status = runBilan(options, reportStream, errorStream);
    errorStream.flush();
    // 3: a section could not be read, which the report says.
    if (status != 0 && status != 2 && status != 3)
        qFatal("quillon-bilan ended with status %d: %s", status, qPrintable(errors));
    if ((status == 0 || status == 3) && report.isEmpty())
        qFatal("quillon-bilan gave no report");
}

} // namespace FuzzInputs
