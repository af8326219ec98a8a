#include "diagnostics/diagnostics_service.h"

#include "core/texts.h"
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

// The checks of a report with the data sections each one was judged from.
class ReportBuilder
{
public:
    void add(const HardwareCheck &check, QList<AppSection> sources) { add(QList { check }, sources); }
    void add(const QList<HardwareCheck> &checks, const QList<AppSection> &sources)
    {
        for (const HardwareCheck &check : checks) {
            m_report.checks.append(check);
            m_sources.append(sources);
        }
    }

    // A verdict whose section could not be read is not judged: it says the read failed.
    DiagnosticsReport finish(const QHash<AppSection, QString> &failures, const QDateTime &now)
    {
        for (AppSection section : AppSections::dataSections()) {
            if (failures.contains(section))
                m_report.failedReads.append({ section, failures.value(section) });
        }
        for (qsizetype i = 0; i < m_report.checks.size(); ++i) {
            for (AppSection section : std::as_const(m_sources.at(i))) {
                if (!failures.contains(section))
                    continue;
                HardwareCheck &check = m_report.checks[i];
                check.status = CheckStatus::info;
                check.measurement = localized("Lecture impossible");
                check.summary = localized("Lecture impossible — ") + failures.value(section);
                check.progress.reset();
                check.caption.reset();
                check.live.reset();
                break;
            }
        }
        m_report.generatedAt = now;
        return m_report;
    }

private:
    DiagnosticsReport m_report;
    QList<QList<AppSection>> m_sources;
};

} // namespace

namespace DiagnosticsService {

DiagnosticsReport build(const Platform &platform, const std::optional<HardwareInfo> &hardware,
                        const std::optional<BatteryInfo> &battery, const QList<StorageVolume> &volumes,
                        const Inventory &inventory, const QHash<AppSection, QString> &failures)
{
    const SystemReadings system = readSystem(platform);
    // Without a hardware record every built-in component counts as absent.
    const BuiltInComponents components = hardware ? hardware->components : BuiltInComponents();

    ReportBuilder report;
    report.add(ownershipChecks(hardware), { AppSection::hardware });
    report.add(batteryCheck(battery), { AppSection::battery });
    report.add(storageChecks(volumes), { AppSection::storage });
    report.add(displaysCheck(section(inventory, AppSection::displays)), { AppSection::displays });
    report.add(wifiCheck(components, section(inventory, AppSection::network)), { AppSection::hardware, AppSection::network });
    report.add(bluetoothCheck(section(inventory, AppSection::bluetooth)), { AppSection::bluetooth });
    report.add(audioCheck(section(inventory, AppSection::audio)), { AppSection::audio });
    report.add(cameraCheck(section(inventory, AppSection::camera)), { AppSection::camera });
    report.add(keyboardCheck(components), { AppSection::hardware });
    report.add(keyboardBacklightCheck(components), { AppSection::hardware });
    report.add(trackpadCheck(components), { AppSection::hardware });
    report.add(hapticsCheck(components), { AppSection::hardware });
    report.add(touchIDCheck(components), { AppSection::hardware });
    report.add(lidAngleCheck(components), { AppSection::hardware });
    report.add(sensorsCheck(components), { AppSection::hardware });
    report.add(usbCheck(section(inventory, AppSection::usb)), { AppSection::usb });
    report.add(thunderboltCheck(section(inventory, AppSection::thunderbolt)), { AppSection::thunderbolt });
    report.add(memoryCheck(hardware, system.swap, system.installedMemoryBytes), { AppSection::hardware });
    report.add(processorCheck(hardware), { AppSection::hardware });
    report.add(thermalCheck(system.thermalState, components), { AppSection::hardware });
    report.add(systemCheck(hardware, system.bootTime, now(platform)), { AppSection::hardware });
    return report.finish(failures, now(platform));
}

} // namespace DiagnosticsService
