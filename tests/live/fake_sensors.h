#pragma once

#include "sources/platform.h"

#include <QCoreApplication>
#include <QDebug>
#include <QList>

#include <atomic>
#include <memory>
#include <optional>

#if QT_VERSION < QT_VERSION_CHECK(6, 7, 0)
// Lets QCOMPARE print optional values when they differ.
template <typename T>
    requires requires(QDebug debug, const T &value) { debug << value; }
QDebug operator<<(QDebug debug, const std::optional<T> &value)
{
    return value ? (debug << *value) : (debug << "none");
}
#endif

// Readings written by the test in advance and handed out in turn, the last one repeating.
// The monitors read them on their own threads; the test looks at the counters once it has
// waited for the monitor's queue.
template <typename Reading>
struct Script
{
    QList<Reading> readings;
    std::atomic<int> reads = 0;
    std::atomic<int> sourcesMade = 0;
    int lastReportId = -1;
    qsizetype lastCapacity = -1;

    Reading next()
    {
        const int read = reads++;
        return readings.isEmpty() ? Reading() : readings.at(std::min<qsizetype>(read, readings.size() - 1));
    }
};

using TemperatureScript = Script<QList<std::optional<double>>>;
using LidScript = Script<HidReport>;
using TickScript = Script<QList<ProcessorTickCounters>>;

// A temperature source whose services are named `products`.
class FakeTemperatureEvents final : public TemperatureEventSource
{
public:
    FakeTemperatureEvents(std::shared_ptr<TemperatureScript> script, QList<std::optional<QString>> products)
        : m_script(std::move(script)), m_products(std::move(products))
    {
    }

    QList<std::optional<QString>> serviceProducts() const override { return m_products; }

    QList<std::optional<double>> temperatures(const QList<qsizetype> &serviceIndices) override
    {
        const QList<std::optional<double>> row = m_script->next();
        QList<std::optional<double>> readings;
        for (const qsizetype index : serviceIndices)
            readings.append(index < row.size() ? row.at(index) : std::nullopt);
        return readings;
    }

private:
    std::shared_ptr<TemperatureScript> m_script;
    QList<std::optional<QString>> m_products;
};

class FakeLidReports final : public LidAngleReportSource
{
public:
    explicit FakeLidReports(std::shared_ptr<LidScript> script) : m_script(std::move(script)) {}

    HidReport featureReport(int reportId, qsizetype capacity) override
    {
        m_script->lastReportId = reportId;
        m_script->lastCapacity = capacity;
        return m_script->next();
    }

private:
    std::shared_ptr<LidScript> m_script;
};

class FakeTicks final : public ProcessorTickSource
{
public:
    explicit FakeTicks(std::shared_ptr<TickScript> script) : m_script(std::move(script)) {}
    QList<ProcessorTickCounters> read() override { return m_script->next(); }

private:
    std::shared_ptr<TickScript> m_script;
};

inline TemperatureEventSourceFactory fakeFactory(const std::shared_ptr<TemperatureScript> &script,
                                                 const QList<std::optional<QString>> &products)
{
    return [script, products]() -> std::unique_ptr<TemperatureEventSource> {
        ++script->sourcesMade;
        return std::make_unique<FakeTemperatureEvents>(script, products);
    };
}

inline LidAngleReportSourceFactory fakeFactory(const std::shared_ptr<LidScript> &script)
{
    return [script]() -> std::unique_ptr<LidAngleReportSource> {
        ++script->sourcesMade;
        return std::make_unique<FakeLidReports>(script);
    };
}

inline ProcessorTickSourceFactory fakeFactory(const std::shared_ptr<TickScript> &script)
{
    return [script]() -> std::unique_ptr<ProcessorTickSource> { return std::make_unique<FakeTicks>(script); };
}

// A lid report carrying `angle` as the sensor sends it: report ID 1, then the angle.
inline HidReport lidReport(int angle)
{
    const char bytes[] = {1, char(angle & 0xFF), char(angle >> 8)};
    return HidReport{0, QByteArray(bytes, 3)};
}

// Waits until the monitor's thread has done what it was asked, then delivers what it
// published to this thread; twice, for a give-up that stops the timer from here.
template <typename Monitor>
void settle(Monitor &monitor)
{
    for (int round = 0; round < 2; ++round) {
        monitor.waitForQueue();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    }
}
