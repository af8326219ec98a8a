#include "sources/lid_angle_sensor.h"

namespace {

// The hinge angle comes in feature report 1: the report ID, then the angle in whole degrees
// as an unsigned 16-bit little-endian value.
constexpr int angleReportId = 1;
constexpr qsizetype reportCapacity = 8;
constexpr qsizetype angleReportMinimumLength = 3;
constexpr int largestAngle = 180;

} // namespace

LidAngleSensor::LidAngleSensor(std::unique_ptr<LidAngleReportSource> source) : m_source(std::move(source)) {}

std::unique_ptr<LidAngleSensor> LidAngleSensor::create(std::unique_ptr<LidAngleReportSource> source)
{
    if (!source)
        return nullptr;
    return std::unique_ptr<LidAngleSensor>(new LidAngleSensor(std::move(source)));
}

std::unique_ptr<LidAngleSensor> LidAngleSensor::create(const LidAngleReportSourceFactory &factory)
{
    return factory ? create(factory()) : nullptr;
}

std::optional<int> LidAngleSensor::read()
{
    return angleFromReport(m_source->featureReport(angleReportId, reportCapacity));
}

std::optional<int> LidAngleSensor::angleFromReport(const HidReport &report)
{
    if (report.status != 0 || report.bytes.size() < angleReportMinimumLength)
        return std::nullopt;
    const auto byte = [&report](qsizetype index) { return int(quint8(report.bytes.at(index))); };
    const int angle = byte(1) | (byte(2) << 8);
    // The sensor reports whole degrees; anything past the hinge's travel is a bad reading.
    if (angle > largestAngle)
        return std::nullopt;
    return angle;
}
