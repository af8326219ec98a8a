#pragma once

#include "live/processor_load.h"
#include "live/sampling_loop.h"
#include "sources/platform.h"
#include "sources/thermal_sensors.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QVariant>

#include <chrono>
#include <memory>
#include <optional>

// Publishes, once a second while it runs, the processor load (overall and per processor) and
// the die temperature. Readings are taken on the monitor's own thread and published on the
// thread that owns the monitor (the main thread); stopping keeps the values shown.
class CPUMonitor : public QObject
{
    Q_OBJECT
    // The mean of the per-processor loads, from 0 to 1; undefined until two readings were compared.
    Q_PROPERTY(QVariant load READ loadVariant NOTIFY loadChanged)
    // One load fraction per logical processor, in kernel order.
    Q_PROPERTY(QList<double> perCoreLoad READ perCoreLoad NOTIFY perCoreLoadChanged)
    // The die temperature in °C; undefined on a machine without the temperature service.
    Q_PROPERTY(QVariant temperature READ temperatureVariant NOTIFY temperatureChanged)
    // "37 %"; undefined while the load is unknown.
    Q_PROPERTY(QVariant loadText READ loadTextVariant NOTIFY loadChanged)
    // "52 °C"; undefined while the temperature is unknown.
    Q_PROPERTY(QVariant temperatureText READ temperatureTextVariant NOTIFY temperatureChanged)

public:
    static constexpr std::chrono::milliseconds defaultInterval{1000};

    explicit CPUMonitor(const Platform &platform, QObject *parent = nullptr);
    CPUMonitor(const Platform &platform, std::chrono::milliseconds interval, QObject *parent = nullptr);
    ~CPUMonitor() override;

    std::optional<double> load() const { return m_load; }
    QList<double> perCoreLoad() const { return m_perCoreLoad; }
    std::optional<double> temperature() const { return m_temperature; }
    std::optional<QString> loadText() const;
    std::optional<QString> temperatureText() const;

    // Starts the timer unless it already runs; the first reading is taken at once.
    Q_INVOKABLE void start();
    // Stops the timer and forgets the last tick reading; the published values stay.
    Q_INVOKABLE void stop();
    bool isRunning() const { return m_loop.isRunning(); }

    // Takes one reading on the monitor's thread now, as a timer tick would.
    void readNow() { m_loop.tickNow(); }
    // Blocks until the monitor's thread has finished the readings asked for so far; their
    // publications then wait in this thread's event queue.
    void waitForQueue() { m_loop.waitForQueue(); }

Q_SIGNALS:
    void loadChanged();
    void perCoreLoadChanged();
    void temperatureChanged();

private:
    // Touched only on the monitor's thread.
    struct QueueState
    {
        std::unique_ptr<ProcessorTickSource> tickSource;
        bool hasTickSource = false;
        QList<ProcessorLoad::Ticks> previousTicks;
        std::unique_ptr<ThermalSensors> sensors;
        bool hasProbedSensors = false;
    };

    void sample();
    void publish(const std::optional<QList<double>> &fractions, std::optional<double> temperature);

    QVariant loadVariant() const;
    QVariant temperatureVariant() const;
    QVariant loadTextVariant() const;
    QVariant temperatureTextVariant() const;

    const Platform m_platform;
    std::optional<double> m_load;
    QList<double> m_perCoreLoad;
    std::optional<double> m_temperature;
    QueueState m_queue;
    SamplingLoop m_loop; // last: its thread ends before the state above goes away
};
