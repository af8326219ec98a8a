#pragma once

#include "core/built_in_components.h"
#include "sources/platform.h"
#include "sources/property_values.h"

#include <QList>
#include <QString>

#include <optional>
#include <utility>

// Finds the machine's built-in parts in the I/O registry: fingerprint sensor, keyboard and
// its backlight, lid-angle sensor, haptic actuator, Wi-Fi chip, system management
// controller and trackpad; counts the sensor HID interfaces and tells whether the machine
// is portable. Nothing fails: a component that is not found is absent.
namespace BuiltInDeviceService {

using Component = BuiltInComponents::Component;

BuiltInComponents load(const Platform &platform);

// Each component on its own. The HID interface list is every "IOHIDInterface" service, in
// registry order, read once per load.
Component touchID(const RegistrySource &registry);
Component keyboard(const RegistrySource &registry);
Component keyboardBacklight(const QList<PropertyDictionary> &hidInterfaces);
Component lidAngle(const QList<PropertyDictionary> &hidInterfaces);
Component haptics(const RegistrySource &registry);
Component wifi(const RegistrySource &registry);
Component smc(const RegistrySource &registry);
// The trackpad and its critical-error count.
std::pair<Component, std::optional<qint64>> trackpad(const RegistrySource &registry);

// The HID interfaces that belong to sensors (usage pages 0x20, 0xFF00 and 0xFF0C).
qint64 sensorInterfaceCount(const QList<PropertyDictionary> &hidInterfaces);

// "160.2 × 99.4 mm" from the trackpad's surface in hundredths of a millimetre.
std::optional<QString> surfaceSize(const PropertyDictionary &trackpadProperties);

// The keyboard language in French ("French" gives "Français"); other names unchanged.
std::optional<QString> localizedLayout(const std::optional<QString> &keyboardLanguage);

// The version number inside a Wi-Fi firmware description ("… version 20.10.1038 FWID …"
// gives "20.10.1038"); a description without the word "version " stays whole.
std::optional<QString> shortFirmwareVersion(const std::optional<QString> &firmwareVersion);

} // namespace BuiltInDeviceService
