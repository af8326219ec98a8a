#pragma once

#include "live/sampling_loop.h"
#include "sources/lid_angle_sensor.h"
#include "sources/platform.h"

#include <QObject>
#include <QVariant>

#include <chrono>
#include <memory>
#include <optional>

// Publishes the screen hinge angle, read five times a second while it runs. When the machine
// has no lid sensor, the first reading finds out and the monitor stays off for good.
class LidAngleMonitor : public QObject
{
    Q_OBJECT
    // The hinge angle in whole degrees, 0 to 180; undefined when unknown.
    Q_PROPERTY(QVariant angle READ angleVariant NOTIFY angleChanged)
    // "118°"; undefined when the angle is unknown.
    Q_PROPERTY(QVariant formatted READ formattedVariant NOTIFY angleChanged)
    // False once the sensor is known to be missing.
    Q_PROPERTY(bool isAvailable READ isAvailable NOTIFY isAvailableChanged)

public:
    static constexpr std::chrono::milliseconds defaultInterval{200};

    explicit LidAngleMonitor(const Platform &platform, QObject *parent = nullptr);
    LidAngleMonitor(const Platform &platform, std::chrono::milliseconds interval, QObject *parent = nullptr);
    ~LidAngleMonitor() override;

    std::optional<int> angle() const { return m_angle; }
    std::optional<QString> formatted() const;
    bool isAvailable() const { return m_isAvailable; }

    // Starts the timer unless it already runs or the sensor is known to be missing.
    Q_INVOKABLE void start();
    // Stops the timer; the last angle stays.
    Q_INVOKABLE void stop();
    bool isRunning() const { return m_loop.isRunning(); }

    // Takes one reading on the monitor's thread now, as a timer tick would.
    void readNow() { m_loop.tickNow(); }
    // Blocks until the monitor's thread has finished the readings asked for so far; their
    // publications then wait in this thread's event queue.
    void waitForQueue() { m_loop.waitForQueue(); }

Q_SIGNALS:
    void angleChanged();
    void isAvailableChanged();

private:
    // Touched only on the monitor's thread.
    struct QueueState
    {
        std::unique_ptr<LidAngleSensor> sensor;
        bool hasProbed = false;
    };

    void sample();
    void publish(std::optional<int> angle);
    void giveUp();

    QVariant angleVariant() const;
    QVariant formattedVariant() const;

    const Platform m_platform;
    std::optional<int> m_angle;
    bool m_isAvailable = true;
    QueueState m_queue;
    SamplingLoop m_loop; // last: its thread ends before the state above goes away
};
