#include "platform/capture/capture_platform.h"

#include "platform/capture/capture_live.h"
#include "platform/capture/property_list_reader.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QtEndian>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

template <typename T>
void appendLittleEndian(QByteArray &bytes, T value)
{
    char buffer[sizeof(T)];
    qToLittleEndian(value, buffer);
    bytes.append(buffer, sizeof(T));
}

std::optional<qint64> wholeNumber(const QJsonValue &value)
{
    if (!value.isDouble())
        return std::nullopt;
    const QVariant number = value.toVariant();
    if (number.typeId() == QMetaType::LongLong)
        return number.toLongLong();
    const double real = value.toDouble();
    if (real != std::trunc(real) || std::fabs(real) > 9e18)
        return std::nullopt;
    return qint64(real);
}

class CaptureProfiler final : public ProfilerSource
{
public:
    explicit CaptureProfiler(std::shared_ptr<const CaptureFolder> folder) : m_folder(std::move(folder)) {}

    ProcessOutput run(const QStringList &arguments) const override
    {
        ProcessOutput output;
        output.started = true;
        const std::optional<QString> stem = arguments.size() >= 2 ? safeFileStem(arguments.at(1)) : std::nullopt;
        if (!stem)
            return output; // the tool prints nothing for a data type it does not know
        const QString statusPath = u"profiler/"_s + *stem + u".status"_s;
        if (const std::optional<QByteArray> status = m_folder->read(statusPath)) {
            bool ok = false;
            output.exitStatus = QString::fromLatin1(status->trimmed()).toInt(&ok);
            if (!ok) {
                m_folder->noteProblem(statusPath, u"statut de sortie illisible"_s);
                output.started = false;
                output.startError = u"statut illisible dans %1"_s.arg(statusPath);
                return output;
            }
        }
        output.standardOutput = m_folder->read(u"profiler/"_s + *stem + u".json"_s).value_or(QByteArray());
        return output;
    }

private:
    std::shared_ptr<const CaptureFolder> m_folder;
};

class CaptureKernel final : public KernelSource
{
public:
    explicit CaptureKernel(std::shared_ptr<const CaptureFolder> folder) : m_folder(std::move(folder))
    {
        const std::optional<QJsonDocument> document = m_folder->readJson(u"kernel.json"_s);
        if (!document)
            return;
        if (!document->isObject()) {
            m_folder->noteProblem(u"kernel.json"_s, u"la racine n’est pas un objet"_s);
            return;
        }
        m_values = document->object();
    }

    std::optional<QByteArray> value(const QByteArray &name) const override
    {
        const auto it = m_values.constFind(QString::fromLatin1(name));
        if (it == m_values.constEnd())
            return std::nullopt;
        return kernelBytes(name, *it);
    }

private:
    std::shared_ptr<const CaptureFolder> m_folder;
    QJsonObject m_values;
};

class CaptureRegistry final : public RegistrySource
{
public:
    explicit CaptureRegistry(std::shared_ptr<const CaptureFolder> folder) : m_folder(std::move(folder)) {}

    QList<PropertyDictionary> servicesOfClass(const QString &className) const override
    {
        return services(u"registry/class/"_s, className);
    }

    QList<PropertyDictionary> servicesNamed(const QString &name) const override
    {
        return services(u"registry/name/"_s, name);
    }

private:
    // The root array's dictionaries, in order; anything else in the array is skipped.
    QList<PropertyDictionary> services(const QString &folder, const QString &name) const
    {
        const std::optional<QString> stem = safeFileStem(name);
        if (!stem)
            return {};
        const QString path = folder + *stem + u".plist"_s;
        const std::optional<QByteArray> bytes = m_folder->read(path);
        if (!bytes || bytes->trimmed().isEmpty())
            return {};
        const PropertyListReader::Outcome outcome = PropertyListReader::read(*bytes);
        if (!outcome.error.isEmpty()) {
            m_folder->noteProblem(path, outcome.error);
            return {};
        }
        if (outcome.root.typeId() != QMetaType::QVariantList) {
            m_folder->noteProblem(path, u"la racine n’est pas un tableau"_s);
            return {};
        }
        QList<PropertyDictionary> dictionaries;
        for (const QVariant &entry : outcome.root.toList()) {
            if (entry.typeId() == QMetaType::QVariantMap)
                dictionaries.append(entry.toMap());
        }
        return dictionaries;
    }

    std::shared_ptr<const CaptureFolder> m_folder;
};

class CapturePowerSources final : public PowerSourceList
{
public:
    explicit CapturePowerSources(std::shared_ptr<const CaptureFolder> folder)
    {
        const std::optional<QJsonDocument> document = folder->readJson(u"power-sources.json"_s);
        if (!document)
            return;
        if (!document->isArray()) {
            folder->noteProblem(u"power-sources.json"_s, u"la racine n’est pas un tableau"_s);
            return;
        }
        for (const QJsonValue &entry : document->array()) {
            if (entry.isObject())
                m_descriptions.append(PropertyValues::dictionaryFromJson(entry.toObject()));
        }
    }

    QList<PropertyDictionary> descriptions() const override { return m_descriptions; }

private:
    QList<PropertyDictionary> m_descriptions;
};

class CaptureProcess final : public ProcessInformation
{
public:
    explicit CaptureProcess(const std::shared_ptr<const CaptureFolder> &folder)
    {
        const std::optional<QJsonDocument> document = folder->readJson(u"process.json"_s);
        if (!document)
            return;
        if (!document->isObject()) {
            folder->noteProblem(u"process.json"_s, u"la racine n’est pas un objet"_s);
            return;
        }
        const QJsonObject info = document->object();
        m_hostName = info.value(u"hostName"_s).toString();
        m_version = info.value(u"operatingSystemVersion"_s).toString();
        const std::optional<qint64> state = wholeNumber(info.value(u"thermalState"_s));
        if (state && *state >= 0 && *state <= 3)
            m_thermalState = ThermalState(*state);
    }

    QString hostName() const override { return m_hostName; }
    QString operatingSystemVersion() const override { return m_version; }
    ThermalState thermalState() const override { return m_thermalState; }

private:
    QString m_hostName;
    QString m_version;
    ThermalState m_thermalState = ThermalState::unknown;
};

// The commands' answers: commands/<key>.txt holds what the command printed, and
// commands/<key>.status its exit status when it failed. A command the capture did not record
// reads as one that could not start; commands/<key>.error says why it could not, when known.
class CaptureCommands final : public CommandSource
{
public:
    explicit CaptureCommands(std::shared_ptr<const CaptureFolder> folder) : m_folder(std::move(folder)) {}

    ProcessOutput run(const SystemCommand &command) const override
    {
        ProcessOutput output;
        const std::optional<QString> stem = safeFileStem(command.key);
        const QString base = u"commands/"_s + stem.value_or(QString());
        const std::optional<QByteArray> printed = stem ? m_folder->read(base + u".txt"_s) : std::nullopt;
        const std::optional<QByteArray> status = stem ? m_folder->read(base + u".status"_s) : std::nullopt;
        if (!printed && !status) {
            const std::optional<QByteArray> error = stem ? m_folder->read(base + u".error"_s) : std::nullopt;
            output.startError = error ? QString::fromUtf8(error->left(200)).trimmed() : u"réponse absente de la capture"_s;
            return output;
        }
        output.started = true;
        output.standardOutput = printed.value_or(QByteArray());
        if (status) {
            bool ok = false;
            output.exitStatus = QString::fromLatin1(status->trimmed()).toInt(&ok);
            if (!ok) {
                m_folder->noteProblem(base + u".status"_s, u"statut de sortie illisible"_s);
                output.started = false;
                output.startError = u"statut illisible dans la capture"_s;
            }
        }
        return output;
    }

private:
    std::shared_ptr<const CaptureFolder> m_folder;
};

// nvme-health.json: [{"model": "…", "log": "<1024 hex digits>"} or {"model": "…", "failure": "…"}].
class CaptureDriveHealth final : public DriveHealthSource
{
public:
    explicit CaptureDriveHealth(const std::shared_ptr<const CaptureFolder> &folder)
    {
        const QString path = u"nvme-health.json"_s;
        const std::optional<QJsonDocument> document = folder->readJson(path);
        if (!document)
            return;
        if (!document->isArray()) {
            folder->noteProblem(path, u"la racine n’est pas un tableau"_s);
            return;
        }
        for (const QJsonValue &value : document->array()) {
            const QJsonObject entry = value.toObject();
            DriveHealthLog log;
            log.model = entry.value(u"model"_s).toString();
            log.failure = entry.value(u"failure"_s).toString();
            const QString hex = entry.value(u"log"_s).toString();
            log.log = QByteArray::fromHex(hex.toLatin1());
            if (log.failure.isEmpty() && log.log.toHex() != hex.toLower().toLatin1()) {
                folder->noteProblem(path, u"journal de santé qui n’est pas en hexadécimal"_s);
                log.log.clear();
                log.failure = u"journal illisible dans la capture"_s;
            }
            m_logs.append(log);
        }
    }

    QList<DriveHealthLog> logs() const override { return m_logs; }

private:
    QList<DriveHealthLog> m_logs;
};

class CaptureClock final : public Clock
{
public:
    explicit CaptureClock(QDateTime moment) : m_moment(std::move(moment)) {}
    QDateTime now() const override { return m_moment; }

private:
    QDateTime m_moment;
};

} // namespace

std::optional<QByteArray> kernelBytes(const QByteArray &name, const QJsonValue &value)
{
    QByteArray bytes;
    if (value.isObject() && value.toObject().contains(u"hex"_s)) {
        const QString hex = value.toObject().value(u"hex"_s).toString();
        bytes = QByteArray::fromHex(hex.toLatin1());
        if (bytes.toHex() != hex.toLower().toLatin1())
            return std::nullopt;
        return bytes;
    }
    if (name == "vm.swapusage") {
        if (!value.isObject())
            return std::nullopt;
        const QJsonObject swap = value.toObject();
        const auto total = wholeNumber(swap.value(u"total"_s));
        const auto available = wholeNumber(swap.value(u"available"_s));
        const auto used = wholeNumber(swap.value(u"used"_s));
        if (!total || !available || !used)
            return std::nullopt;
        appendLittleEndian(bytes, quint64(*total));
        appendLittleEndian(bytes, quint64(*available));
        appendLittleEndian(bytes, quint64(*used));
        appendLittleEndian(bytes, quint32(16384)); // page size
        appendLittleEndian(bytes, quint32(0));     // encryption flag
        return bytes;
    }
    if (value.isString()) {
        bytes = value.toString().toUtf8();
        bytes.append('\0');
        return bytes;
    }
    const std::optional<qint64> number = wholeNumber(value);
    if (!number)
        return std::nullopt;
    if (name == "kern.boottime") {
        appendLittleEndian(bytes, *number);   // seconds
        appendLittleEndian(bytes, qint32(0)); // microseconds
        appendLittleEndian(bytes, qint32(0)); // padding
        return bytes;
    }
    appendLittleEndian(bytes, *number);
    return bytes;
}

Platform makeCapturePlatform(const std::shared_ptr<const CaptureFolder> &folder)
{
    Platform platform;
    platform.profiler = std::make_shared<CaptureProfiler>(folder);
    platform.kernel = std::make_shared<CaptureKernel>(folder);
    platform.registry = std::make_shared<CaptureRegistry>(folder);
    platform.powerSources = std::make_shared<CapturePowerSources>(folder);
    platform.process = std::make_shared<CaptureProcess>(folder);
    platform.clock = std::make_shared<CaptureClock>(folder->capturedAt());
    platform.commands = std::make_shared<CaptureCommands>(folder);
    platform.driveHealth = std::make_shared<CaptureDriveHealth>(folder);
    platform.isReplay = true;
    platform.description = folder->description();
    const CaptureLiveReadings live = readCaptureLiveReadings(*folder);
    platform.temperatureEvents = replayedTemperatureEvents(live);
    platform.lidAngleReports = replayedLidAngleReports(live);
    platform.processorTicks = replayedProcessorTicks(live);
    return platform;
}
