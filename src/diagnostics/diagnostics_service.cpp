#include "diagnostics/diagnostics_service.h"

#include "diagnostics/diagnostics_rules.h"

namespace {

// The values a build reads from the running system rather than from the records.
struct SystemReadings
{
    std::optional<Sysctl::SwapUsage> swap;
    std::optional<qint64> installedMemoryBytes;
    std::optional<QDateTime> bootTime;
    ThermalState thermalState = ThermalState::unknown;
};

SystemReadings readSystem(const Platform &platform)
{
    SystemReadings readings;
    if (platform.kernel) {
        readings.swap = Sysctl::swapUsage(*platform.kernel);
        readings.installedMemoryBytes = Sysctl::integer(*platform.kernel, "hw.memsize");
        readings.bootTime = Sysctl::bootTime(*platform.kernel);
    }
    if (platform.process)
        readings.thermalState = platform.process->thermalState();
    return readings;
}

QDateTime now(const Platform &platform)
{
    return platform.clock ? platform.clock->now() : QDateTime::currentDateTime();
}

QList<DeviceNode> section(const Inventory &inventory, AppSection key)
{
    return inventory.value(key);
}

} // namespace

namespace DiagnosticsService {

DiagnosticsReport build(const Platform &platform, const std::optional<HardwareInfo> &hardware,
                        const std::optional<BatteryInfo> &battery, const QList<StorageVolume> &volumes,
                        const Inventory &inventory)
{
    const SystemReadings system = readSystem(platform);
    // Without a hardware record every built-in component counts as absent.
    const BuiltInComponents components = hardware ? hardware->components : BuiltInComponents();

    DiagnosticsReport report;
    report.checks.append(batteryCheck(battery));
    report.checks.append(storageChecks(volumes));
    report.checks.append(displaysCheck(section(inventory, AppSection::displays)));
    report.checks.append(wifiCheck(components, section(inventory, AppSection::network)));
    report.checks.append(bluetoothCheck(section(inventory, AppSection::bluetooth)));
    report.checks.append(audioCheck(section(inventory, AppSection::audio)));
    report.checks.append(cameraCheck(section(inventory, AppSection::camera)));
    report.checks.append(keyboardCheck(components));
    report.checks.append(keyboardBacklightCheck(components));
    report.checks.append(trackpadCheck(components));
    report.checks.append(hapticsCheck(components));
    report.checks.append(touchIDCheck(components));
    report.checks.append(lidAngleCheck(components));
    report.checks.append(sensorsCheck(components));
    report.checks.append(usbCheck(section(inventory, AppSection::usb)));
    report.checks.append(thunderboltCheck(section(inventory, AppSection::thunderbolt)));
    report.checks.append(memoryCheck(hardware, system.swap, system.installedMemoryBytes));
    report.checks.append(processorCheck(hardware));
    report.checks.append(thermalCheck(system.thermalState, components));
    report.checks.append(systemCheck(hardware, system.bootTime, now(platform)));
    report.generatedAt = now(platform);
    return report;
}

} // namespace DiagnosticsService
