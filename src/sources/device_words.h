#pragma once

#include <QString>

#include <optional>

// Words for the raw names and codes the profiler gives devices, so that none reaches a
// screen or a report as it came.
namespace DeviceWords {

// "USB31Bus" or "USB 3.1 Bus", with its controller: "Bus USB 3.1 (contrôleur AppleT8103USBXHCI)".
// A name of another shape is kept, with the controller after it.
QString usbBusName(const QString &rawName, const std::optional<QString> &controller);

// A Bluetooth device type in French ("Headphones" → "Casque"); an unknown type as it is.
std::optional<QString> bluetoothType(const std::optional<QString> &type);

// The services of a Bluetooth controller, "0x392039 < HFP AVRCP A2DP >": their names in
// French words; nothing when only the hexadecimal mask is given.
std::optional<QString> bluetoothServices(const std::optional<QString> &services);

// A Bluetooth company identifier: "Apple" for 0x004C, nothing for another (shown apart as
// an identifier).
std::optional<QString> bluetoothVendor(const std::optional<QString> &identifier);

} // namespace DeviceWords
