#include "sources/thermal_sensors.h"

using namespace Qt::StringLiterals;

namespace {

// Die sensors name themselves "PMU tdie1", "PMU tdie2"…; the test is exact and case-sensitive.
bool isDieSensor(const std::optional<QString> &product)
{
    return product && product->startsWith(u"PMU tdie"_s, Qt::CaseSensitive);
}

} // namespace

ThermalSensors::ThermalSensors(std::unique_ptr<TemperatureEventSource> source, QList<qsizetype> dieSensors)
    : m_source(std::move(source)), m_dieSensors(std::move(dieSensors))
{
}

std::unique_ptr<ThermalSensors> ThermalSensors::create(std::unique_ptr<TemperatureEventSource> source)
{
    if (!source)
        return nullptr;
    QList<qsizetype> dieSensors;
    const QList<std::optional<QString>> products = source->serviceProducts();
    for (qsizetype index = 0; index < products.size(); ++index) {
        if (isDieSensor(products.at(index)))
            dieSensors.append(index);
    }
    if (dieSensors.isEmpty())
        return nullptr;
    return std::unique_ptr<ThermalSensors>(new ThermalSensors(std::move(source), std::move(dieSensors)));
}

std::unique_ptr<ThermalSensors> ThermalSensors::create(const TemperatureEventSourceFactory &factory)
{
    return factory ? create(factory()) : nullptr;
}

std::optional<double> ThermalSensors::processorTemperature()
{
    // Zero and negative readings come from sensors that have nothing to report; they are not
    // temperatures. The mean (not the maximum) is what the die reads as a whole.
    double sum = 0.0;
    int count = 0;
    for (const std::optional<double> &reading : m_source->temperatures(m_dieSensors)) {
        if (reading && *reading > 0.0) {
            sum += *reading;
            ++count;
        }
    }
    if (count == 0)
        return std::nullopt;
    return sum / count;
}
