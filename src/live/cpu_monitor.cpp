#include "live/cpu_monitor.h"

#include "live/live_values.h"
#include "live/optional_variant.h"

#include <numeric>

using namespace Qt::StringLiterals;

CPUMonitor::CPUMonitor(const Platform &platform, QObject *parent) : CPUMonitor(platform, defaultInterval, parent) {}

CPUMonitor::CPUMonitor(const Platform &platform, std::chrono::milliseconds interval, QObject *parent)
    : QObject(parent), m_platform(platform), m_loop(monitorThreadLabel(u"cpu"_s), interval, [this] { sample(); })
{
}

CPUMonitor::~CPUMonitor()
{
    m_loop.shutdown();
}

std::optional<QString> CPUMonitor::loadText() const
{
    return LiveText::load(m_load);
}

std::optional<QString> CPUMonitor::temperatureText() const
{
    return LiveText::temperature(m_temperature);
}

void CPUMonitor::start()
{
    m_loop.start();
}

void CPUMonitor::stop()
{
    m_loop.stop();
    // Queued behind any reading in flight, so the first tick after a restart shows no load.
    m_loop.post([this] { m_queue.previousTicks.clear(); });
}

// On the monitor's thread.
void CPUMonitor::sample()
{
    if (!m_queue.hasTickSource) {
        m_queue.tickSource = m_platform.processorTicks ? m_platform.processorTicks() : nullptr;
        m_queue.hasTickSource = true;
    }
    const QList<ProcessorLoad::Ticks> current = ProcessorLoad::sample(m_queue.tickSource.get());
    // Nothing to compare on the first tick after a start, nor when the processor count changed.
    std::optional<QList<double>> fractions;
    if (!m_queue.previousTicks.isEmpty() && m_queue.previousTicks.size() == current.size())
        fractions = ProcessorLoad::usage(m_queue.previousTicks, current);
    m_queue.previousTicks = current;

    // The temperature service is looked for once in the monitor's life, even if it is missing.
    if (!m_queue.hasProbedSensors) {
        m_queue.sensors = ThermalSensors::create(m_platform.temperatureEvents);
        m_queue.hasProbedSensors = true;
    }
    const std::optional<double> temperature =
        m_queue.sensors ? m_queue.sensors->processorTemperature() : std::nullopt;

    QMetaObject::invokeMethod(
        this, [this, fractions, temperature] { publish(fractions, temperature); }, Qt::QueuedConnection);
}

// On the main thread.
void CPUMonitor::publish(const std::optional<QList<double>> &fractions, std::optional<double> temperature)
{
    if (fractions) {
        m_perCoreLoad = *fractions;
        m_load = fractions->isEmpty()
            ? std::nullopt
            : std::optional<double>(std::accumulate(fractions->cbegin(), fractions->cend(), 0.0) / fractions->size());
        Q_EMIT perCoreLoadChanged();
        Q_EMIT loadChanged();
    }
    // An unchanged temperature does not wake the observers.
    if (temperature != m_temperature) {
        m_temperature = temperature;
        Q_EMIT temperatureChanged();
    }
}

QVariant CPUMonitor::loadVariant() const
{
    return variantOf(m_load);
}

QVariant CPUMonitor::temperatureVariant() const
{
    return variantOf(m_temperature);
}

QVariant CPUMonitor::loadTextVariant() const
{
    return variantOf(loadText());
}

QVariant CPUMonitor::temperatureTextVariant() const
{
    return variantOf(temperatureText());
}
