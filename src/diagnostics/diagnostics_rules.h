#pragma once

#include "core/battery_info.h"
#include "core/built_in_components.h"
#include "core/device_node.h"
#include "core/hardware_info.h"
#include "core/storage_volume.h"
#include "diagnostics/diagnostics_report.h"
#include "sources/platform.h"
#include "sources/sysctl.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

// The individual rules behind DiagnosticsService::build, one per verdict. Each returns a
// complete check with a fresh identifier. They read only their arguments: build reads the
// kernel values, the thermal state and the clock once and hands them in, so every rule can
// be judged on hand-made values.
namespace DiagnosticsService {

// Power and storage.
HardwareCheck batteryCheck(const std::optional<BatteryInfo> &battery);
QList<HardwareCheck> storageChecks(const QList<StorageVolume> &volumes);

// Memory, processor, temperature and system.
HardwareCheck memoryCheck(const std::optional<HardwareInfo> &hardware,
                          const std::optional<Sysctl::SwapUsage> &swap,
                          std::optional<qint64> installedMemoryBytes);
HardwareCheck processorCheck(const std::optional<HardwareInfo> &hardware);
QString labelForThermal(ThermalState state);
HardwareCheck thermalCheck(ThermalState state, const BuiltInComponents &components);
HardwareCheck systemCheck(const std::optional<HardwareInfo> &hardware, const std::optional<QDateTime> &bootTime,
                          const QDateTime &now);

// Device sections.
HardwareCheck displaysCheck(const QList<DeviceNode> &displays);
HardwareCheck wifiCheck(const BuiltInComponents &components, const QList<DeviceNode> &network);
HardwareCheck bluetoothCheck(const QList<DeviceNode> &bluetooth);
HardwareCheck audioCheck(const QList<DeviceNode> &audio);
HardwareCheck cameraCheck(const QList<DeviceNode> &cameras);
HardwareCheck usbCheck(const QList<DeviceNode> &usb);
HardwareCheck thunderboltCheck(const QList<DeviceNode> &thunderbolt);

// Who else may control the Mac, in the order of the report.
QList<HardwareCheck> ownershipChecks(const std::optional<HardwareInfo> &hardware);

// The wear verdict of an NVMe drive's health log, when it calls for one: the level and its
// sentence; nothing for a drive in good shape or a log that could not be read.
std::optional<std::pair<CheckStatus, QString>> wearVerdict(const DriveWear &wear);
// "3 % · 12,4 To écrits · 1 402 h de fonctionnement", or "illisible — reason".
QString wearSummary(const DriveWear &wear);

// Built-in components.
HardwareCheck keyboardCheck(const BuiltInComponents &components);
HardwareCheck keyboardBacklightCheck(const BuiltInComponents &components);
HardwareCheck trackpadCheck(const BuiltInComponents &components);
HardwareCheck hapticsCheck(const BuiltInComponents &components);
HardwareCheck touchIDCheck(const BuiltInComponents &components);
HardwareCheck lidAngleCheck(const BuiltInComponents &components);
HardwareCheck sensorsCheck(const BuiltInComponents &components);

} // namespace DiagnosticsService
