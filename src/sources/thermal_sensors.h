#pragma once

#include "sources/sensor_sources.h"

#include <QList>

#include <memory>
#include <optional>

// The processor die temperature, read from the HID event system's "PMU tdie…" services.
// Made once by the processor monitor and used only on its thread.
class ThermalSensors
{
public:
    // A reader over the die sensors of `source`, or null when there is no source or none of
    // its services is a die sensor.
    static std::unique_ptr<ThermalSensors> create(std::unique_ptr<TemperatureEventSource> source);
    // The same, with the reader that `factory` makes (none when the factory is empty).
    static std::unique_ptr<ThermalSensors> create(const TemperatureEventSourceFactory &factory);

    // Degrees Celsius: the mean of the die sensors' readings above zero, or none.
    std::optional<double> processorTemperature();

    // The positions, in the source's service list, of the die sensors kept.
    QList<qsizetype> dieSensors() const { return m_dieSensors; }

private:
    ThermalSensors(std::unique_ptr<TemperatureEventSource> source, QList<qsizetype> dieSensors);

    std::unique_ptr<TemperatureEventSource> m_source;
    QList<qsizetype> m_dieSensors;
};
