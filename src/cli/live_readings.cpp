#include "cli/live_readings.h"

#include "sources/lid_angle_sensor.h"
#include "sources/thermal_sensors.h"

#include <QThread>

#include <numeric>

LiveReadings::LiveReadings(const Platform &platform) : m_waitForOneSecond(!platform.isReplay)
{
    if (platform.processorTicks)
        m_ticks = platform.processorTicks();
    m_firstSample = ProcessorLoad::sample(m_ticks.get());
    m_sinceFirstSample.start();
    if (auto lid = LidAngleSensor::create(platform.lidAngleReports))
        m_lidAngle = lid->read();
    if (auto thermal = ThermalSensors::create(platform.temperatureEvents))
        m_temperature = thermal->processorTemperature();
}

LiveReadings::~LiveReadings() = default;

LiveValues LiveReadings::finish()
{
    // A recorded machine replays its next tick sample at once; a real one needs the time to pass.
    const qint64 remaining = 1000 - m_sinceFirstSample.elapsed();
    if (m_waitForOneSecond && remaining > 0)
        QThread::msleep(static_cast<unsigned long>(remaining));
    const QList<double> usage = ProcessorLoad::usage(m_firstSample, ProcessorLoad::sample(m_ticks.get()));
    std::optional<double> load;
    if (!usage.isEmpty())
        load = std::accumulate(usage.begin(), usage.end(), 0.0) / double(usage.size());
    return liveValues(m_lidAngle, load, m_temperature);
}
