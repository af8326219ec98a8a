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
