#include "platform/capture/capture_live.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const QString liveFile = u"live.json"_s;

std::optional<quint32> counter(const QJsonValue &value)
{
    if (!value.isDouble())
        return std::nullopt;
    const double number = value.toDouble();
    if (number < 0 || number > 4294967295.0 || number != std::trunc(number))
        return std::nullopt;
    return quint32(number);
}

// [user, system, idle, nice], each a 32-bit kernel counter.
std::optional<ProcessorTickCounters> processorCounters(const QJsonValue &value)
{
    const QJsonArray fields = value.toArray();
    if (!value.isArray() || fields.size() != 4)
        return std::nullopt;
    const auto user = counter(fields.at(0));
    const auto system = counter(fields.at(1));
    const auto idle = counter(fields.at(2));
    const auto nice = counter(fields.at(3));
    if (!user || !system || !idle || !nice)
        return std::nullopt;
    return ProcessorTickCounters{*user, *system, *idle, *nice};
}

std::optional<QList<ProcessorTickCounters>> tickSample(const QJsonValue &value)
{
    if (!value.isArray())
        return std::nullopt;
    QList<ProcessorTickCounters> processors;
    for (const QJsonValue &entry : value.toArray()) {
        const std::optional<ProcessorTickCounters> counters = processorCounters(entry);
        if (!counters)
            return std::nullopt; // one bad processor would shift the others: drop the sample
        processors.append(*counters);
    }
    return processors;
}

std::optional<QList<double>> temperatureSample(const QJsonValue &value)
{
    if (!value.isArray())
        return std::nullopt;
    QList<double> readings;
    for (const QJsonValue &entry : value.toArray()) {
        if (!entry.isDouble())
            return std::nullopt;
        readings.append(entry.toDouble());
    }
    return readings;
}

std::optional<QByteArray> reportSample(const QJsonValue &value)
{
    if (!value.isString())
        return std::nullopt;
    const QByteArray hex = value.toString().toLatin1();
    const QByteArray bytes = QByteArray::fromHex(hex);
    // fromHex skips what it does not understand; only a clean, even run of digits is a report.
    if (bytes.toHex() != hex.toLower())
        return std::nullopt;
    return bytes;
}

// The samples of one member, each converted by `convert`; a sample it refuses is noted and
// left out. None when the member is missing or is not a list.
template <typename Sample, typename Convert>
std::optional<QList<Sample>> samples(const CaptureFolder &folder, const QJsonObject &root, const QString &key,
                                     Convert convert)
{
    const QJsonValue member = root.value(key);
    if (member.isUndefined())
        return std::nullopt;
    if (!member.isArray()) {
        folder.noteProblem(liveFile, u"« %1 » n’est pas une liste"_s.arg(key));
        return std::nullopt;
    }
    QList<Sample> list;
    const QJsonArray entries = member.toArray();
    for (qsizetype index = 0; index < entries.size(); ++index) {
        if (const std::optional<Sample> sample = convert(entries.at(index)))
            list.append(*sample);
        else
            folder.noteProblem(liveFile, u"« %1 » : relevé %2 illisible, ignoré"_s.arg(key).arg(index));
    }
    return list;
}

// Steps through a list of samples, back to the first after the last.
template <typename Sample>
class Replay
{
public:
    explicit Replay(QList<Sample> samples) : m_samples(std::move(samples)) {}

    const Sample &next()
    {
        const Sample &sample = m_samples.at(m_position);
        m_position = (m_position + 1) % m_samples.size();
        return sample;
    }

private:
    QList<Sample> m_samples;
    qsizetype m_position = 0;
};

// The die sensors appear as services "PMU tdie1", "PMU tdie2"…, as many as the widest sample;
// a sensor missing from a shorter sample gives no event.
class ReplayedTemperatureEvents final : public TemperatureEventSource
{
public:
    explicit ReplayedTemperatureEvents(const QList<QList<double>> &samples) : m_replay(samples)
    {
        for (const QList<double> &sample : samples)
            m_serviceCount = std::max(m_serviceCount, sample.size());
    }

    QList<std::optional<QString>> serviceProducts() const override
    {
        QList<std::optional<QString>> products;
        for (qsizetype index = 0; index < m_serviceCount; ++index)
            products.append(u"PMU tdie%1"_s.arg(index + 1));
        return products;
    }

    QList<std::optional<double>> temperatures(const QList<qsizetype> &serviceIndices) override
    {
        const QList<double> &sample = m_replay.next();
        QList<std::optional<double>> readings;
        for (const qsizetype index : serviceIndices) {
            if (index >= 0 && index < sample.size())
                readings.append(sample.at(index));
            else
                readings.append(std::nullopt);
        }
        return readings;
    }

private:
    Replay<QList<double>> m_replay;
    qsizetype m_serviceCount = 0;
};

class ReplayedLidAngleReports final : public LidAngleReportSource
{
public:
    explicit ReplayedLidAngleReports(const QList<QByteArray> &reports) : m_replay(reports) {}

    HidReport featureReport(int, qsizetype capacity) override
    {
        // The device fills at most the caller's buffer.
        return HidReport{0, m_replay.next().left(capacity)};
    }

private:
    Replay<QByteArray> m_replay;
};

class ReplayedProcessorTicks final : public ProcessorTickSource
{
public:
    explicit ReplayedProcessorTicks(const QList<QList<ProcessorTickCounters>> &samples) : m_replay(samples) {}

    QList<ProcessorTickCounters> read() override { return m_replay.next(); }

private:
    Replay<QList<ProcessorTickCounters>> m_replay;
};

// A factory over recorded samples: none when there are none to replay.
template <typename Source, typename Interface, typename Sample>
std::function<std::unique_ptr<Interface>()> replayFactory(const std::optional<QList<Sample>> &samples)
{
    if (!samples || samples->isEmpty())
        return {};
    return [recorded = *samples]() -> std::unique_ptr<Interface> { return std::make_unique<Source>(recorded); };
}

} // namespace

CaptureLiveReadings readCaptureLiveReadings(const CaptureFolder &folder)
{
    CaptureLiveReadings readings;
    const std::optional<QJsonDocument> document = folder.readJson(liveFile);
    if (!document)
        return readings;
    if (!document->isObject()) {
        folder.noteProblem(liveFile, u"la racine n’est pas un objet"_s);
        return readings;
    }
    const QJsonObject root = document->object();
    readings.cpuTicks = samples<QList<ProcessorTickCounters>>(folder, root, u"cpuTicks"_s, tickSample);
    readings.dieTemperatures = samples<QList<double>>(folder, root, u"dieTemperatures"_s, temperatureSample);
    readings.lidAngleReports = samples<QByteArray>(folder, root, u"lidAngleReports"_s, reportSample);
    return readings;
}

TemperatureEventSourceFactory replayedTemperatureEvents(const CaptureLiveReadings &readings)
{
    return replayFactory<ReplayedTemperatureEvents, TemperatureEventSource>(readings.dieTemperatures);
}

LidAngleReportSourceFactory replayedLidAngleReports(const CaptureLiveReadings &readings)
{
    return replayFactory<ReplayedLidAngleReports, LidAngleReportSource>(readings.lidAngleReports);
}

ProcessorTickSourceFactory replayedProcessorTicks(const CaptureLiveReadings &readings)
{
    return replayFactory<ReplayedProcessorTicks, ProcessorTickSource>(readings.cpuTicks);
}
