#include "platform/capture/capture_writer.h"

#include "platform/capture/property_list_reader.h"
#include "sources/lid_angle_sensor.h"
#include "sources/property_values.h"
#include "sources/security_commands.h"
#include "sources/thermal_sensors.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStringDecoder>
#include <QThread>
#include <QtEndian>

#include <plist/plist.h>

#include <cstdlib>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace CaptureWriter {

namespace {

// ---- Property lists -------------------------------------------------------------------

struct PlistDeleter
{
    void operator()(plist_t node) const { plist_free(node); }
};
using PlistHolder = std::unique_ptr<void, PlistDeleter>;

// Property-list dates count seconds from 1 January 2001, UTC.
constexpr qint64 secondsFrom1970To2001 = 978307200;

PlistHolder plistNode(const QVariant &value, int depth);

// An integer outside 0 … 2^63 − 1 is made by reading its own XML: libplist before 2.3 writes
// every plist_new_uint value as signed, later versions write every value above 2^63 − 1 as
// unsigned, and both read a written "-1" or "18446744073709551615" back as it stands.
PlistHolder integerFromXml(const QByteArray &digits)
{
    const QByteArray xml = "<plist version=\"1.0\"><integer>" + digits + "</integer></plist>";
    plist_t node = nullptr;
    plist_from_xml(xml.constData(), uint32_t(xml.size()), &node);
    return PlistHolder(node);
}

PlistHolder integerNode(const QVariant &value)
{
    if (value.typeId() == QMetaType::ULongLong || value.typeId() == QMetaType::ULong) {
        const quint64 unsignedValue = value.toULongLong();
        if (unsignedValue > quint64(std::numeric_limits<qint64>::max()))
            return integerFromXml(QByteArray::number(unsignedValue));
    }
    const qint64 signedValue = value.toLongLong();
    if (signedValue < 0)
        return integerFromXml(QByteArray::number(signedValue));
    return PlistHolder(plist_new_uint(uint64_t(signedValue)));
}

PlistHolder dateNode(const QDateTime &date)
{
    if (!date.isValid())
        return {};
    const qint64 seconds = date.toSecsSinceEpoch() - secondsFrom1970To2001;
    if (seconds < std::numeric_limits<int32_t>::min() || seconds > std::numeric_limits<int32_t>::max())
        return {};
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
    return PlistHolder(plist_new_date(int32_t(seconds), 0));
QT_WARNING_POP
}

// XML 1.0 cannot hold the other control characters, nor U+FFFE and U+FFFF: each becomes U+FFFD,
// as an undecodable byte does, so that the file stays readable.
QByteArray xmlText(const QString &text)
{
    QString clean = text;
    for (QChar &c : clean) {
        const char16_t code = c.unicode();
        if ((code < 0x20 && code != u'\t' && code != u'\n' && code != u'\r') || code == 0xFFFE || code == 0xFFFF)
            c = QChar::ReplacementCharacter;
    }
    return clean.toUtf8();
}

PlistHolder arrayNode(const QVariantList &list, int depth)
{
    PlistHolder array(plist_new_array());
    for (const QVariant &element : list) {
        if (PlistHolder node = plistNode(element, depth + 1))
            plist_array_append_item(array.get(), node.release());
    }
    return array;
}

PlistHolder dictionaryNode(const QVariantMap &map, int depth)
{
    PlistHolder dictionary(plist_new_dict());
    for (auto it = map.constBegin(); it != map.constEnd(); ++it) {
        if (PlistHolder node = plistNode(it.value(), depth + 1))
            plist_dict_set_item(dictionary.get(), xmlText(it.key()).constData(), node.release());
    }
    return dictionary;
}

PlistHolder plistNode(const QVariant &value, int depth)
{
    if (depth > PropertyListReader::maximumDepth)
        return {};
    switch (PropertyValues::kindOf(value)) {
    case PropertyValues::Kind::boolean:
        return PlistHolder(plist_new_bool(value.toBool() ? 1 : 0));
    case PropertyValues::Kind::integer:
        return integerNode(value);
    case PropertyValues::Kind::real:
        return PlistHolder(plist_new_real(value.toDouble()));
    case PropertyValues::Kind::text:
        return PlistHolder(plist_new_string(xmlText(value.toString()).constData()));
    case PropertyValues::Kind::data: {
        const QByteArray bytes = value.toByteArray();
        return PlistHolder(plist_new_data(bytes.constData(), uint64_t(bytes.size())));
    }
    case PropertyValues::Kind::date:
        return dateNode(value.toDateTime());
    case PropertyValues::Kind::array:
        return arrayNode(value.toList(), depth);
    case PropertyValues::Kind::dictionary:
        return dictionaryNode(value.toMap(), depth);
    case PropertyValues::Kind::absent:
        break;
    }
    return {};
}

// ---- Kernel values --------------------------------------------------------------------

enum class KernelKind { text, integer, bootTime, swapUsage };

const QList<std::pair<QByteArray, KernelKind>> &kernelValues()
{
    static const QList<std::pair<QByteArray, KernelKind>> values{
        {"kern.osproductversion", KernelKind::text}, {"kern.osversion", KernelKind::text},
        {"kern.osrelease", KernelKind::text},        {"hw.memsize", KernelKind::integer},
        {"hw.physicalcpu", KernelKind::integer},     {"hw.logicalcpu", KernelKind::integer},
        {"kern.boottime", KernelKind::bootTime},     {"vm.swapusage", KernelKind::swapUsage},
        // The processor's core tiers, best first (absent on Intel Macs).
        {"hw.nperflevels", KernelKind::integer},     {"hw.perflevel0.name", KernelKind::text},
        {"hw.perflevel0.physicalcpu", KernelKind::integer}, {"hw.perflevel1.name", KernelKind::text},
        {"hw.perflevel1.physicalcpu", KernelKind::integer}, {"hw.perflevel2.name", KernelKind::text},
        {"hw.perflevel2.physicalcpu", KernelKind::integer}};
    return values;
}

QJsonValue hexValue(const QByteArray &bytes)
{
    return QJsonObject{{u"hex"_s, QString::fromLatin1(bytes.toHex())}};
}

// A text is kept as text when its bytes are clean UTF-8 ended by zero bytes only.
std::optional<QString> kernelText(const QByteArray &bytes)
{
    const qsizetype end = bytes.indexOf('\0');
    const QByteArray text = end < 0 ? bytes : bytes.left(end);
    if (text.isEmpty() || bytes.mid(text.size()).count('\0') != bytes.size() - text.size())
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(text);
    if (decoder.hasError())
        return std::nullopt;
    return decoded;
}

std::optional<qint64> kernelInteger(const QByteArray &bytes)
{
    if (bytes.size() == 4)
        return qint64(qFromLittleEndian<qint32>(bytes.constData()));
    if (bytes.size() == 8)
        return qFromLittleEndian<qint64>(bytes.constData());
    return std::nullopt;
}

// total, available, used: three unsigned 64-bit counts, then the page size and a flag.
std::optional<QJsonObject> kernelSwap(const QByteArray &bytes)
{
    if (bytes.size() != 32)
        return std::nullopt;
    QJsonObject swap;
    const char *names[] = {"total", "available", "used"};
    for (int field = 0; field < 3; ++field) {
        const quint64 count = qFromLittleEndian<quint64>(bytes.constData() + 8 * field);
        if (count > quint64(std::numeric_limits<qint64>::max()))
            return std::nullopt;
        swap.insert(QString::fromLatin1(names[field]), qint64(count));
    }
    return swap;
}

// ---- Files ----------------------------------------------------------------------------

class FolderWriter
{
public:
    explicit FolderWriter(QString root) : m_root(std::move(root)) {}

    bool write(const QString &relativePath, const QByteArray &bytes)
    {
        const QString path = m_root + u'/' + relativePath;
        if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
            m_error = u"dossier impossible à créer pour « %1 »"_s.arg(QDir::toNativeSeparators(path));
            return false;
        }
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
            m_error = u"écriture impossible de « %1 » : %2"_s.arg(QDir::toNativeSeparators(path), file.errorString());
            return false;
        }
        return true;
    }

    bool writeJson(const QString &relativePath, const QJsonDocument &document)
    {
        return write(relativePath, document.toJson(QJsonDocument::Indented));
    }

    QString error() const { return m_error; }

private:
    QString m_root;
    QString m_error;
};

std::optional<QString> prepareFolder(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isDir())
        return u"« %1 » existe déjà et n’est pas un dossier"_s.arg(QDir::toNativeSeparators(path));
    if (info.exists() && !QDir(path).isEmpty())
        return u"« %1 » existe déjà et n’est pas vide"_s.arg(QDir::toNativeSeparators(path));
    if (!QDir().mkpath(path))
        return u"dossier « %1 » impossible à créer"_s.arg(QDir::toNativeSeparators(path));
    return std::nullopt;
}

// ---- What is recorded -----------------------------------------------------------------

struct Recording
{
    FolderWriter files;
    QStringList notes;
    std::optional<QString> modelIdentifier;
};

std::optional<QString> modelIdentifierIn(const QByteArray &hardwareAnswer)
{
    const QJsonArray items = QJsonDocument::fromJson(hardwareAnswer).object().value(u"SPHardwareDataType"_s).toArray();
    const QString model = items.at(0).toObject().value(u"machine_model"_s).toString();
    return model.isEmpty() ? std::nullopt : std::optional<QString>(model);
}

bool recordProfiler(const Platform &platform, Recording &recording)
{
    for (const QString &dataType : profilerDataTypes()) {
        const ProcessOutput output = platform.profiler->run({u"-json"_s, dataType});
        if (!output.started) {
            recording.notes.append(
                u"%1 : system_profiler n’a pas démarré (%2), rien d’enregistré"_s.arg(dataType, output.startError));
            continue;
        }
        const QString stem = u"profiler/"_s + dataType;
        if (!output.standardOutput.isEmpty() && !recording.files.write(stem + u".json"_s, output.standardOutput))
            return false;
        if (output.exitStatus != 0
            && !recording.files.write(stem + u".status"_s, QByteArray::number(output.exitStatus) + '\n'))
            return false;
        if (dataType == u"SPHardwareDataType"_s && output.exitStatus == 0)
            recording.modelIdentifier = modelIdentifierIn(output.standardOutput);
    }
    return true;
}

bool recordServices(Recording &recording, const QString &relativePath, const QList<PropertyDictionary> &services)
{
    if (services.isEmpty())
        return true; // an absent file means no such service
    QVariantList root;
    for (const PropertyDictionary &service : services)
        root.append(service);
    const std::optional<QByteArray> xml = propertyListXml(root);
    if (!xml) {
        recording.notes.append(u"%1 : liste de propriétés impossible à écrire, rien d’enregistré"_s.arg(relativePath));
        return true;
    }
    return recording.files.write(relativePath, *xml);
}

bool recordRegistry(const Platform &platform, Recording &recording)
{
    for (const QString &className : registryClasses()) {
        if (!recordServices(recording, u"registry/class/%1.plist"_s.arg(className),
                            platform.registry->servicesOfClass(className)))
            return false;
    }
    for (const QString &name : registryNames()) {
        if (!recordServices(recording, u"registry/name/%1.plist"_s.arg(name), platform.registry->servicesNamed(name)))
            return false;
    }
    return true;
}

bool recordKernel(const Platform &platform, Recording &recording)
{
    QJsonObject values;
    for (const QByteArray &name : kernelValueNames()) {
        if (const std::optional<QByteArray> bytes = platform.kernel->value(name))
            values.insert(QString::fromLatin1(name), kernelJson(name, *bytes));
    }
    return recording.files.writeJson(u"kernel.json"_s, QJsonDocument(values));
}

// Each command's output as it came, with its exit status when it failed; the NVRAM
// variables keep their names only (see SecurityCommands::variableNamesOnly).
bool recordCommands(const Platform &platform, Recording &recording)
{
    if (!platform.commands)
        return true;
    for (const SystemCommand &command : SecurityCommands::all()) {
        const ProcessOutput output = platform.commands->run(command);
        const QString stem = u"commands/"_s + command.key;
        if (!output.started) {
            // Why it could not start, so that the replay says the same; nothing when the
            // answer is simply missing from the capture being copied.
            if (!output.startError.isEmpty() && !recording.files.write(stem + u".error"_s, output.startError.toUtf8()))
                return false;
            continue;
        }
        const QByteArray printed = command.key == SecurityCommands::nvramVariables().key
            ? SecurityCommands::variableNamesOnly(output.standardOutput)
            : output.standardOutput;
        if (!recording.files.write(stem + u".txt"_s, printed))
            return false;
        if (output.exitStatus != 0
            && !recording.files.write(stem + u".status"_s, QByteArray::number(output.exitStatus) + '\n'))
            return false;
    }
    return true;
}

// The health log of each internal NVMe drive, as the drive gave it, in hexadecimal.
bool recordDriveHealth(const Platform &platform, Recording &recording)
{
    if (!platform.driveHealth)
        return true;
    QJsonArray drives;
    for (const DriveHealthLog &log : platform.driveHealth->logs()) {
        QJsonObject entry{{u"model"_s, log.model}};
        if (log.failure.isEmpty())
            entry.insert(u"log"_s, QString::fromLatin1(log.log.toHex()));
        else
            entry.insert(u"failure"_s, log.failure);
        drives.append(entry);
    }
    return recording.files.writeJson(u"nvme-health.json"_s, QJsonDocument(drives));
}

// JSON has no data blob and no date: such values of a description are left out and noted.
std::optional<QJsonValue> jsonValue(const QVariant &value, const QString &key, QStringList &leftOut)
{
    switch (PropertyValues::kindOf(value)) {
    case PropertyValues::Kind::boolean:
        return value.toBool();
    case PropertyValues::Kind::integer:
        if (value.typeId() == QMetaType::ULongLong && value.toULongLong() > quint64(std::numeric_limits<qint64>::max()))
            return value.toDouble();
        return value.toLongLong();
    case PropertyValues::Kind::real:
        return value.toDouble();
    case PropertyValues::Kind::text:
        return value.toString();
    case PropertyValues::Kind::array: {
        QJsonArray array;
        for (const QVariant &element : value.toList()) {
            if (const std::optional<QJsonValue> json = jsonValue(element, key, leftOut))
                array.append(*json);
        }
        return array;
    }
    case PropertyValues::Kind::dictionary: {
        QJsonObject object;
        const QVariantMap map = value.toMap();
        for (auto it = map.constBegin(); it != map.constEnd(); ++it) {
            if (const std::optional<QJsonValue> json = jsonValue(it.value(), it.key(), leftOut))
                object.insert(it.key(), *json);
        }
        return object;
    }
    default:
        if (!leftOut.contains(key))
            leftOut.append(key);
        return std::nullopt;
    }
}

bool recordPowerSources(const Platform &platform, Recording &recording)
{
    QJsonArray descriptions;
    QStringList leftOut;
    for (const PropertyDictionary &description : platform.powerSources->descriptions())
        descriptions.append(jsonValue(description, QString(), leftOut).value_or(QJsonObject()));
    if (!leftOut.isEmpty())
        recording.notes.append(u"power-sources.json : valeurs sans équivalent JSON laissées de côté (%1)"_s.arg(
            leftOut.join(u", "_s)));
    return recording.files.writeJson(u"power-sources.json"_s, QJsonDocument(descriptions));
}

bool recordProcess(const Platform &platform, Recording &recording)
{
    QJsonObject process{{u"hostName"_s, platform.process->hostName()},
                        {u"operatingSystemVersion"_s, platform.process->operatingSystemVersion()}};
    const ThermalState state = platform.process->thermalState();
    if (state != ThermalState::unknown)
        process.insert(u"thermalState"_s, int(state));
    return recording.files.writeJson(u"process.json"_s, QJsonDocument(process));
}

// ---- Live readings --------------------------------------------------------------------

constexpr int lidReportsPerSecond = 5;
constexpr int lidReportInterval = 200; // milliseconds
constexpr int lidReportId = 1;
constexpr qsizetype lidReportCapacity = 8;

struct LiveRecorder
{
    std::unique_ptr<ProcessorTickSource> ticks;
    std::unique_ptr<ThermalSensors> thermal;  // owns the source below
    TemperatureEventSource *temperatures = nullptr;
    std::unique_ptr<LidAngleReportSource> lid;
    QJsonArray cpuTicks;
    QJsonArray dieTemperatures;
    QJsonArray lidAngleReports;

    explicit LiveRecorder(const Platform &platform)
    {
        if (platform.processorTicks)
            ticks = platform.processorTicks();
        if (platform.temperatureEvents) {
            // The die sensors are chosen by ThermalSensors, the readings taken from its source.
            std::unique_ptr<TemperatureEventSource> source = platform.temperatureEvents();
            temperatures = source.get();
            thermal = ThermalSensors::create(std::move(source));
            if (!thermal)
                temperatures = nullptr;
        }
        if (platform.lidAngleReports)
            lid = platform.lidAngleReports();
    }

    bool hasSensors() const { return ticks || thermal || lid; }

    void readSecond()
    {
        if (ticks) {
            QJsonArray processors;
            for (const ProcessorTickCounters &counters : ticks->read())
                processors.append(QJsonArray{qint64(counters.user), qint64(counters.system), qint64(counters.idle),
                                             qint64(counters.nice)});
            cpuTicks.append(processors);
        }
        if (thermal) {
            QJsonArray readings;
            for (const std::optional<double> &reading : temperatures->temperatures(thermal->dieSensors()))
                readings.append(reading.value_or(0.0)); // 0.0 is how live.json says "no event"
            dieTemperatures.append(readings);
        }
    }

    void readLid()
    {
        if (!lid)
            return;
        const HidReport report = lid->featureReport(lidReportId, lidReportCapacity);
        // A failed request is kept as an empty report, which reads as no angle.
        lidAngleReports.append(report.status == 0 ? QString::fromLatin1(report.bytes.toHex()) : QString());
    }

    QJsonObject json() const
    {
        QJsonObject live;
        if (ticks)
            live.insert(u"cpuTicks"_s, cpuTicks);
        if (thermal)
            live.insert(u"dieTemperatures"_s, dieTemperatures);
        if (lid)
            live.insert(u"lidAngleReports"_s, lidAngleReports);
        return live;
    }
};

bool recordLive(const Platform &platform, const Options &options, Recording &recording)
{
    if (options.liveSeconds <= 0)
        return true;
    LiveRecorder recorder(platform);
    if (!recorder.hasSensors())
        return true;
    const auto wait = options.wait ? options.wait : [](int milliseconds) { QThread::msleep(ulong(milliseconds)); };
    for (int second = 0; second < options.liveSeconds; ++second) {
        recorder.readSecond();
        for (int report = 0; report < lidReportsPerSecond; ++report) {
            recorder.readLid();
            const bool last = second + 1 == options.liveSeconds && report + 1 == lidReportsPerSecond;
            if (!last)
                wait(lidReportInterval);
        }
    }
    return recording.files.writeJson(u"live.json"_s, QJsonDocument(recorder.json()));
}

bool recordHeader(const QDateTime &capturedAt, const Options &options, Recording &recording)
{
    const QDateTime now = capturedAt.toUTC();
    const QJsonObject header{{u"format"_s, 1},
                             {u"capturedAt"_s, now.toString(Qt::ISODate)},
                             {u"description"_s, description(recording.modelIdentifier, now, options.madeBy)}};
    return recording.files.writeJson(u"capture.json"_s, QJsonDocument(header));
}

} // namespace

const QStringList &profilerDataTypes()
{
    static const QStringList dataTypes{
        u"SPHardwareDataType"_s,    u"SPSoftwareDataType"_s,  u"SPPowerDataType"_s,   u"SPStorageDataType"_s,
        u"SPDisplaysDataType"_s,    u"SPUSBDataType"_s,       u"SPUSBHostDataType"_s,       u"SPThunderboltDataType"_s,
        u"SPBluetoothDataType"_s,   u"SPNetworkDataType"_s,   u"SPAudioDataType"_s,   u"SPCameraDataType"_s};
    return dataTypes;
}

const QStringList &registryClasses()
{
    static const QStringList classes{
        u"AppleSmartBattery"_s,   u"AppleSmartBatteryPack"_s, u"AppleBiometricSensor"_s, u"AppleHIDKeyboardEventDriverV2"_s,
        u"IOHIDInterface"_s,      u"AppleActuatorDevice"_s,  u"AppleBCMWLANCore"_s,
        u"AirPortBrcmNIC"_s,      u"AirPortBrcm4360"_s,      u"AppleIntelWifiAdapter"_s,
        u"AppleSMC"_s,            u"AppleMultitouchDevice"_s};
    return classes;
}

const QStringList &registryNames()
{
    // The Wi-Fi candidates are also looked up by registry name.
    static const QStringList names{u"AppleBCMWLANCore"_s, u"AirPortBrcmNIC"_s, u"AirPortBrcm4360"_s,
                                   u"AppleIntelWifiAdapter"_s};
    return names;
}

const QList<QByteArray> &kernelValueNames()
{
    static const QList<QByteArray> names = [] {
        QList<QByteArray> list;
        for (const auto &[name, kind] : kernelValues())
            list.append(name);
        return list;
    }();
    return names;
}

std::optional<QByteArray> propertyListXml(const QVariant &root)
{
    PlistHolder node = plistNode(root, 0);
    if (!node)
        return std::nullopt;
    char *xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(node.get(), &xml, &length);
    std::unique_ptr<char, decltype(&std::free)> holder(xml, &std::free);
    if (!xml)
        return std::nullopt;
    return QByteArray(xml, qsizetype(length));
}

QJsonValue kernelJson(const QByteArray &name, const QByteArray &bytes)
{
    KernelKind kind = KernelKind::text;
    bool known = false;
    for (const auto &[knownName, knownKind] : kernelValues()) {
        if (knownName == name) {
            kind = knownKind;
            known = true;
        }
    }
    if (!known)
        return hexValue(bytes);
    switch (kind) {
    case KernelKind::text:
        if (const std::optional<QString> text = kernelText(bytes))
            return *text;
        break;
    case KernelKind::integer:
        if (const std::optional<qint64> number = kernelInteger(bytes))
            return *number;
        break;
    case KernelKind::bootTime:
        // The time structure: seconds on 8 bytes, microseconds (dropped: whole seconds are read).
        if (bytes.size() == 16)
            return qFromLittleEndian<qint64>(bytes.constData());
        break;
    case KernelKind::swapUsage:
        if (const std::optional<QJsonObject> swap = kernelSwap(bytes))
            return *swap;
        break;
    }
    return hexValue(bytes);
}

QString description(const std::optional<QString> &modelIdentifier, const QDateTime &capturedAt, const QString &madeBy)
{
    const QString date = capturedAt.toUTC().toString(u"yyyy-MM-dd"_s);
    if (modelIdentifier)
        return u"Capture de ce Mac (%1) du %2, faite par %3."_s.arg(*modelIdentifier, date, madeBy);
    return u"Capture de ce Mac du %1, faite par %2."_s.arg(date, madeBy);
}

Outcome save(const Platform &platform, const QString &folderPath, const Options &options)
{
    if (const std::optional<QString> problem = prepareFolder(folderPath))
        return {*problem, {}};
    // The capture is dated when it starts, as the moment its answers describe.
    const QDateTime capturedAt = platform.clock->now();
    Recording recording{FolderWriter(folderPath), {}, std::nullopt};
    // capture.json comes last: a folder left incomplete by a failure is not taken for a capture.
    const bool written = recordProfiler(platform, recording) && recordRegistry(platform, recording)
        && recordKernel(platform, recording) && recordPowerSources(platform, recording)
        && recordProcess(platform, recording) && recordCommands(platform, recording)
        && recordDriveHealth(platform, recording) && recordLive(platform, options, recording)
        && recordHeader(capturedAt, options, recording);
    if (!written)
        return {recording.files.error(), recording.notes};
    return {{}, recording.notes};
}

} // namespace CaptureWriter
