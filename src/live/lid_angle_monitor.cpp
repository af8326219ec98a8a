#include "live/lid_angle_monitor.h"

#include "live/live_values.h"
#include "live/optional_variant.h"

using namespace Qt::StringLiterals;

LidAngleMonitor::LidAngleMonitor(const Platform &platform, QObject *parent)
    : LidAngleMonitor(platform, defaultInterval, parent)
{
}

LidAngleMonitor::LidAngleMonitor(const Platform &platform, std::chrono::milliseconds interval, QObject *parent)
    : QObject(parent), m_platform(platform),
      m_loop(monitorThreadLabel(u"lid-angle"_s), interval, [this] { sample(); })
{
}

LidAngleMonitor::~LidAngleMonitor()
{
    m_loop.shutdown();
}

std::optional<QString> LidAngleMonitor::formatted() const
{
    return LiveText::angle(m_angle);
}

void LidAngleMonitor::start()
{
    if (m_isAvailable)
        m_loop.start();
}

void LidAngleMonitor::stop()
{
    m_loop.stop();
}

// On the monitor's thread.
void LidAngleMonitor::sample()
{
    // The sensor is looked for once in the monitor's life.
    if (!m_queue.hasProbed) {
        m_queue.sensor = LidAngleSensor::create(m_platform.lidAngleReports);
        m_queue.hasProbed = true;
    }
    if (!m_queue.sensor) {
        QMetaObject::invokeMethod(this, [this] { giveUp(); }, Qt::QueuedConnection);
        return;
    }
    const std::optional<int> angle = m_queue.sensor->read();
    QMetaObject::invokeMethod(this, [this, angle] { publish(angle); }, Qt::QueuedConnection);
}

// On the main thread. At five readings a second, an unchanged angle does not wake the
// observers; a failed reading blanks the angle until the next good one.
void LidAngleMonitor::publish(std::optional<int> angle)
{
    if (angle == m_angle)
        return;
    m_angle = angle;
    Q_EMIT angleChanged();
}

// On the main thread: the machine has no lid sensor, for the rest of the monitor's life.
void LidAngleMonitor::giveUp()
{
    m_loop.stop();
    if (m_isAvailable) {
        m_isAvailable = false;
        Q_EMIT isAvailableChanged();
    }
}

QVariant LidAngleMonitor::angleVariant() const
{
    return variantOf(m_angle);
}

QVariant LidAngleMonitor::formattedVariant() const
{
    return variantOf(formatted());
}
