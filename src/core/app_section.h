#pragma once

#include <QList>
#include <QString>

#include <optional>

// The thirteen sections of the main window, in sidebar order.
enum class AppSection {
    overview,
    diagnostics,
    history,
    hardware,
    battery,
    storage,
    displays,
    usb,
    thunderbolt,
    bluetooth,
    network,
    audio,
    camera,
};

namespace AppSections {
QList<AppSection> allCases();
// The ten sections whose data is collected, in load order.
QList<AppSection> dataSections();
// The seven sections that show a device list.
bool isDeviceSection(AppSection section);

QString rawValue(AppSection section);
std::optional<AppSection> fromRawValue(const QString &rawValue);
QString title(AppSection section);
QString symbol(AppSection section);
QString emptyMessage(AppSection section);
} // namespace AppSections

size_t qHash(AppSection section, size_t seed = 0);
