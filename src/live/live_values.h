#pragma once

#include <QString>

#include <optional>

// The current live readings as the screens and the text report show them. The main view
// builds a fresh one from the lid-angle and processor monitors every time it redraws.
struct LiveValues
{
    // The hinge angle, "118°"; none when unknown.
    std::optional<QString> lidAngle;
    // The processor load, "37 %"; none before two tick readings were compared.
    std::optional<QString> processorLoad;
    // The same load as a fraction from 0 to 1.
    std::optional<double> processorLoadFraction;
    // The die temperature, "52 °C"; none on a machine without the temperature service.
    std::optional<QString> processorTemperature;

    friend bool operator==(const LiveValues &, const LiveValues &) = default;
};

// The texts of the live readings.
namespace LiveText {

// Whole degrees followed by "°", no space: "118°".
std::optional<QString> angle(std::optional<int> degrees);
// The fraction as a whole percentage, halves away from zero: 0.125 gives "13 %".
std::optional<QString> load(std::optional<double> fraction);
// Whole degrees Celsius as printf's "%.0f" writes them: "52 °C".
std::optional<QString> temperature(std::optional<double> celsius);

} // namespace LiveText

// The live values of these readings.
LiveValues liveValues(std::optional<int> lidAngle, std::optional<double> processorLoad,
                      std::optional<double> processorTemperature);
