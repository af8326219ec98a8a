#include "live/live_values.h"

#include "core/formatting.h"

using namespace Qt::StringLiterals;

namespace LiveText {

std::optional<QString> angle(std::optional<int> degrees)
{
    if (!degrees)
        return std::nullopt;
    return QString::number(*degrees) + u"°"_s;
}

std::optional<QString> load(std::optional<double> fraction)
{
    if (!fraction)
        return std::nullopt;
    return QString::number(Format::roundedPercent(*fraction * 100)) + u" %"_s;
}

std::optional<QString> temperature(std::optional<double> celsius)
{
    if (!celsius)
        return std::nullopt;
    return Format::fixed(*celsius, 0) + u" °C"_s;
}

} // namespace LiveText

LiveValues liveValues(std::optional<int> lidAngle, std::optional<double> processorLoad,
                      std::optional<double> processorTemperature)
{
    return LiveValues{LiveText::angle(lidAngle), LiveText::load(processorLoad), processorLoad,
                      LiveText::temperature(processorTemperature)};
}
