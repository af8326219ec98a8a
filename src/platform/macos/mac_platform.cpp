#include "platform/macos/mac_platform.h"

#include "platform/macos/mac_commands.h"
#include "platform/macos/mac_drive_health.h"
#include "platform/macos/mac_kernel_source.h"
#include "platform/macos/mac_power_sources.h"
#include "platform/macos/mac_process_information.h"
#include "platform/macos/mac_profiler_source.h"
#include "platform/macos/mac_registry_source.h"
#include "platform/macos/macos_sensors.h"

#include <QCoreApplication>

namespace {

class SystemClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
};

// Quitting must not wait for a profiler run still in flight.
void endProfilerRunsOnQuit()
{
    if (QCoreApplication *application = QCoreApplication::instance())
        QObject::connect(application, &QCoreApplication::aboutToQuit, &MacProfilerSource::terminateAll);
}

} // namespace

Platform makeMacPlatform()
{
    Platform platform;
    platform.profiler = std::make_shared<MacProfilerSource>();
    platform.kernel = std::make_shared<MacKernelSource>();
    platform.registry = std::make_shared<MacRegistrySource>();
    platform.powerSources = std::make_shared<MacPowerSources>();
    platform.process = std::make_shared<MacProcessInformation>();
    platform.clock = std::make_shared<SystemClock>();
    platform.commands = std::make_shared<MacCommands>();
    platform.driveHealth = std::make_shared<MacDriveHealth>();
    platform.isReplay = false;

    // Each monitor makes its own reader, on its own thread, from these factories.
    platform.temperatureEvents = macTemperatureEvents();
    platform.lidAngleReports = macLidAngleReports();
    platform.processorTicks = macProcessorTicks();

    endProfilerRunsOnQuit();
    return platform;
}
