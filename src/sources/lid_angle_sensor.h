#pragma once

#include "sources/sensor_sources.h"

#include <memory>
#include <optional>

// The screen hinge angle, read from the HID sensor device that reports it. Made once by the
// lid-angle monitor and used only on its thread.
class LidAngleSensor
{
public:
    // A reader over `source`, or null when there is none.
    static std::unique_ptr<LidAngleSensor> create(std::unique_ptr<LidAngleReportSource> source);
    // The same, with the reader that `factory` makes (none when the factory is empty).
    static std::unique_ptr<LidAngleSensor> create(const LidAngleReportSourceFactory &factory);

    // The angle in whole degrees, 0 to 180, or none when the read fails or is out of range.
    std::optional<int> read();

    // The angle carried by one feature report, as read() decodes it.
    static std::optional<int> angleFromReport(const HidReport &report);

private:
    explicit LidAngleSensor(std::unique_ptr<LidAngleReportSource> source);

    std::unique_ptr<LidAngleReportSource> m_source;
};
