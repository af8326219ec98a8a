#pragma once

#include "platform/capture/capture_folder.h"
#include "sources/sensor_sources.h"

#include <QByteArray>
#include <QList>

#include <memory>
#include <optional>

// The monitors' readings recorded in a capture's live.json. A member that is missing (or
// unusable) means the recorded Mac had no such sensor; a malformed sample is noted against
// live.json and left out, the others keep their order.
struct CaptureLiveReadings
{
    // One reading per second: the counters of every processor.
    std::optional<QList<QList<ProcessorTickCounters>>> cpuTicks;
    // One reading per second: every die sensor's temperature in °C (0.0 for a sensor that
    // had nothing to report).
    std::optional<QList<QList<double>>> dieTemperatures;
    // Five feature reports per second, as the lid sensor returned them.
    std::optional<QList<QByteArray>> lidAngleReports;
};

CaptureLiveReadings readCaptureLiveReadings(const CaptureFolder &folder);

// Readers that replay the recorded readings in order, one recorded sample per read, starting
// again from the first after the last. Each reader made has its own position. A factory
// gives null when the capture has no readings for that sensor.
TemperatureEventSourceFactory replayedTemperatureEvents(const CaptureLiveReadings &readings);
LidAngleReportSourceFactory replayedLidAngleReports(const CaptureLiveReadings &readings);
ProcessorTickSourceFactory replayedProcessorTicks(const CaptureLiveReadings &readings);
