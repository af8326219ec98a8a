#pragma once

#include "live/live_values.h"
#include "sources/platform.h"
#include "live/processor_load.h"

#include <QElapsedTimer>

#include <memory>

class LidAngleSensor;
class ThermalSensors;

// The live values printed in a headless report: one lid-angle and one temperature reading,
// and the processor load between a first tick reading taken when this object is made and a
// second one taken at `finish`, at least a second later on a real Mac (the full load usually
// takes longer, so nothing more is waited).
class LiveReadings
{
public:
    explicit LiveReadings(const Platform &platform);
    ~LiveReadings();

    LiveValues finish();

private:
    bool m_waitForOneSecond;
    std::unique_ptr<ProcessorTickSource> m_ticks;
    QList<ProcessorLoad::Ticks> m_firstSample;
    QElapsedTimer m_sinceFirstSample;
    std::optional<int> m_lidAngle;
    std::optional<double> m_temperature;
};
