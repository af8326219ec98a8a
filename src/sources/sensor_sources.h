#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

// The raw readings behind the live monitors. Each reader is made by its monitor, on the
// monitor's own thread, and used only there: none of them is thread-safe.

// The HID event system's services matched on the vendor page 0xFF00, usage 5. A source
// exists only when the event system could be reached and listed its services; a platform
// that cannot do so gives no source at all.
class TemperatureEventSource
{
public:
    virtual ~TemperatureEventSource() = default;
    // The "Product" property of every listed service, in the event system's order; none for
    // a service whose "Product" is missing or is not a string.
    virtual QList<std::optional<QString>> serviceProducts() const = 0;
    // The temperature level (°C) of a fresh temperature event from each of these services, in
    // the order given; none for a service that gave no event. Indices refer to serviceProducts().
    virtual QList<std::optional<double>> temperatures(const QList<qsizetype> &serviceIndices) = 0;
};

// What one feature-report request gave: the platform's status (0 is success) and the bytes
// that came back.
struct HidReport
{
    int status = 0;
    QByteArray bytes;
};

// The HID sensor device on page 0x20, usage 0x8A (the hinge angle), already open. A source
// exists only when the device could be matched and opened; it closes the device, then its
// manager, when destroyed.
class LidAngleReportSource
{
public:
    virtual ~LidAngleReportSource() = default;
    // Reads the feature report `reportId` into a zeroed buffer of `capacity` bytes.
    virtual HidReport featureReport(int reportId, qsizetype capacity) = 0;
};

// The kernel's cumulative tick counters of one logical processor.
struct ProcessorTickCounters
{
    quint32 user = 0;
    quint32 system = 0;
    quint32 idle = 0;
    quint32 nice = 0;

    friend bool operator==(const ProcessorTickCounters &, const ProcessorTickCounters &) = default;
};

class ProcessorTickSource
{
public:
    virtual ~ProcessorTickSource() = default;
    // One counter set per logical processor, in kernel order; empty when the kernel call fails.
    virtual QList<ProcessorTickCounters> read() = 0;
};

// Factories for the readers: each gives a fresh reader, or null when the platform has no such
// sensor. An empty factory means the same.
using TemperatureEventSourceFactory = std::function<std::unique_ptr<TemperatureEventSource>()>;
using LidAngleReportSourceFactory = std::function<std::unique_ptr<LidAngleReportSource>()>;
using ProcessorTickSourceFactory = std::function<std::unique_ptr<ProcessorTickSource>()>;
