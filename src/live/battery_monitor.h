#pragma once

#include "core/battery_info.h"
#include "live/sampling_loop.h"
#include "sources/platform.h"

#include <QObject>
#include <QVariant>

#include <chrono>
#include <functional>
#include <optional>

// Re-reads the battery every five seconds while it runs, without the system profiler, so that
// the battery card and screen follow charging. A machine without a battery is given two
// readings, then the monitor stays off for good.
class BatteryMonitor : public QObject
{
    Q_OBJECT
    // The last reading (a BatterySnapshot); undefined before the first one or without a battery.
    Q_PROPERTY(QVariant snapshot READ snapshotVariant NOTIFY snapshotChanged)

public:
    using SnapshotReader = std::function<std::optional<BatterySnapshot>()>;

    static constexpr std::chrono::milliseconds defaultInterval{5000};

    // Reads the battery of `platform`.
    explicit BatteryMonitor(const Platform &platform, QObject *parent = nullptr);
    // Reads with `reader`, called on the monitor's thread only.
    BatteryMonitor(SnapshotReader reader, std::chrono::milliseconds interval, QObject *parent = nullptr);
    ~BatteryMonitor() override;

    std::optional<BatterySnapshot> snapshot() const { return m_snapshot; }
    // False once the machine is known to have no battery.
    bool isAvailable() const { return m_isAvailable; }

    // Starts the timer unless it already runs or the machine is known to have no battery.
    Q_INVOKABLE void start();
    // Stops the timer; the last snapshot stays.
    Q_INVOKABLE void stop();
    bool isRunning() const { return m_loop.isRunning(); }

    // Takes one reading on the monitor's thread now, as a timer tick would.
    void readNow() { m_loop.tickNow(); }
    // Blocks until the monitor's thread has finished the readings asked for so far; their
    // publications then wait in this thread's event queue.
    void waitForQueue() { m_loop.waitForQueue(); }

Q_SIGNALS:
    void snapshotChanged();

private:
    void sample();
    void publish(const std::optional<BatterySnapshot> &snapshot);
    void giveUp();

    QVariant snapshotVariant() const;

    const SnapshotReader m_reader;
    std::optional<BatterySnapshot> m_snapshot;
    bool m_isAvailable = true;
    bool m_hasProbed = false; // touched only on the monitor's thread
    SamplingLoop m_loop;      // last: its thread ends before the state above goes away
};
