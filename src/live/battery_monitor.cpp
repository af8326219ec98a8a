#include "live/battery_monitor.h"

#include "collectors/battery_service.h"
#include "live/optional_variant.h"

using namespace Qt::StringLiterals;

BatteryMonitor::BatteryMonitor(const Platform &platform, QObject *parent)
    : BatteryMonitor([platform] { return BatteryService::liveSnapshot(platform); }, defaultInterval, parent)
{
}

BatteryMonitor::BatteryMonitor(SnapshotReader reader, std::chrono::milliseconds interval, QObject *parent)
    : QObject(parent), m_reader(std::move(reader)),
      m_loop(monitorThreadLabel(u"battery"_s), interval, [this] { sample(); })
{
}

BatteryMonitor::~BatteryMonitor()
{
    m_loop.shutdown();
}

void BatteryMonitor::start()
{
    if (m_isAvailable)
        m_loop.start();
}

void BatteryMonitor::stop()
{
    m_loop.stop();
}

// On the monitor's thread. The very first reading is published even when it is none; a
// later none means the machine has no battery.
void BatteryMonitor::sample()
{
    const std::optional<BatterySnapshot> snapshot = m_reader ? m_reader() : std::nullopt;
    if (snapshot || !m_hasProbed) {
        m_hasProbed = true;
        QMetaObject::invokeMethod(this, [this, snapshot] { publish(snapshot); }, Qt::QueuedConnection);
    } else {
        QMetaObject::invokeMethod(this, [this] { giveUp(); }, Qt::QueuedConnection);
    }
}

// On the main thread: every reading is published, changed or not.
void BatteryMonitor::publish(const std::optional<BatterySnapshot> &snapshot)
{
    m_snapshot = snapshot;
    Q_EMIT snapshotChanged();
}

// On the main thread.
void BatteryMonitor::giveUp()
{
    m_isAvailable = false;
    m_loop.stop();
}

QVariant BatteryMonitor::snapshotVariant() const
{
    return variantOf(m_snapshot);
}
