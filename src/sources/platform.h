#pragma once

#include "sources/property_values.h"
#include "sources/sensor_sources.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

// The operating-system services the collectors read, each behind a small interface with
// two back ends: the real macOS calls, and the answers recorded in a capture folder.
// The interfaces are low level on purpose: parsing and decisions stay in the code above.

// What one run of the system profiler tool gave.
struct ProcessOutput
{
    bool started = false;
    QString startError; // the platform's description when the program could not start
    int exitStatus = 0;
    QByteArray standardOutput;
    // The run was ended after this many seconds without an answer.
    std::optional<int> stoppedAfterSeconds;
};

class ProfilerSource
{
public:
    virtual ~ProfilerSource() = default;
    // Runs "/usr/sbin/system_profiler" with these arguments and waits for its end.
    virtual ProcessOutput run(const QStringList &arguments) const = 0;
    // Ends every run in flight, each returning at once as a run that failed, and refuses
    // any later run: called when the program ends while runs may still wait for the tool.
    // It cannot be undone. Answers that are already at hand (a capture) have nothing to end.
    virtual void cancelAll() const {}
};

// One of the short system commands that tell who controls the Mac; `key` names its answer
// in a capture.
struct SystemCommand
{
    QString key;
    QString program;
    QStringList arguments;
};

class CommandSource
{
public:
    virtual ~CommandSource() = default;
    // Runs the command directly (no shell) and waits for its end, within a time limit.
    virtual ProcessOutput run(const SystemCommand &command) const = 0;
};

// The health log (NVMe "SMART / Health Information", 512 bytes) of one internal drive, as
// the drive gave it, or why it could not be read.
struct DriveHealthLog
{
    QString model;
    QByteArray log;
    QString failure;
};

class DriveHealthSource
{
public:
    virtual ~DriveHealthSource() = default;
    // One entry per internal NVMe drive, in registry order.
    virtual QList<DriveHealthLog> logs() const = 0;
};

class KernelSource
{
public:
    virtual ~KernelSource() = default;
    // The raw bytes of a kernel value read by name, or nothing when it cannot be read.
    virtual std::optional<QByteArray> value(const QByteArray &name) const = 0;
};

class RegistrySource
{
public:
    virtual ~RegistrySource() = default;
    // The property dictionaries of the services of that class (or a subclass), in registry order.
    virtual QList<PropertyDictionary> servicesOfClass(const QString &className) const = 0;
    // The same for the services whose registry name is `name`.
    virtual QList<PropertyDictionary> servicesNamed(const QString &name) const = 0;
};

class PowerSourceList
{
public:
    virtual ~PowerSourceList() = default;
    // The power-source descriptions, in the platform's order.
    virtual QList<PropertyDictionary> descriptions() const = 0;
};

enum class ThermalState { nominal, fair, serious, critical, unknown };

class ProcessInformation
{
public:
    virtual ~ProcessInformation() = default;
    virtual QString hostName() const = 0;
    // "Version 15.1 (Build 24B83)".
    virtual QString operatingSystemVersion() const = 0;
    virtual ThermalState thermalState() const = 0;
};

class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

// Every service, created once and passed down; collectors keep no other state.
struct Platform
{
    std::shared_ptr<const ProfilerSource> profiler;
    std::shared_ptr<const KernelSource> kernel;
    std::shared_ptr<const RegistrySource> registry;
    std::shared_ptr<const PowerSourceList> powerSources;
    std::shared_ptr<const ProcessInformation> process;
    std::shared_ptr<const Clock> clock;
    std::shared_ptr<const CommandSource> commands;
    std::shared_ptr<const DriveHealthSource> driveHealth;
    // Words that tell the application it shows recorded data rather than this Mac.
    bool isReplay = false;
    QString description;
    // Problems met so far in the recorded answers, one French line each (replay only).
    std::function<QStringList()> sourceProblems;
    // The live sensors' readers, made by each monitor on its own thread.
    TemperatureEventSourceFactory temperatureEvents;
    LidAngleReportSourceFactory lidAngleReports;
    ProcessorTickSourceFactory processorTicks;
};
