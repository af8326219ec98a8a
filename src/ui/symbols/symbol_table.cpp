#include "ui/symbols/symbol_table.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

struct Mapping
{
    const char *name;
    const char *file; // under symbols/
};

// Symbol name → drawing. "adwaita/…" files are GNOME's; "quillon-…" files are our own.
constexpr Mapping mappings[] = {
    // Sections of the sidebar.
    { "square.grid.2x2", "adwaita/view-grid-symbolic.svg" },
    { "checklist", "quillon-checklist.svg" },
    { "clock.arrow.circlepath", "adwaita/document-open-recent-symbolic.svg" },
    { "cpu", "quillon-cpu.svg" },
    { "battery.100", "adwaita/battery-level-100-symbolic.svg" },
    { "internaldrive", "adwaita/drive-harddisk-symbolic.svg" },
    { "display", "adwaita/video-display-symbolic.svg" },
    { "cable.connector", "quillon-cable-connector.svg" },
    { "bolt.horizontal", "quillon-bolt-horizontal.svg" },
    { "dot.radiowaves.right", "adwaita/bluetooth-symbolic.svg" },
    { "network", "adwaita/network-wired-symbolic.svg" },
    { "speaker.wave.2", "adwaita/audio-volume-high-symbolic.svg" },
    { "camera", "adwaita/camera-web-symbolic.svg" },
    // Battery levels.
    { "battery.100.bolt", "adwaita/battery-level-100-charged-symbolic.svg" },
    { "battery.75", "adwaita/battery-level-70-symbolic.svg" },
    { "battery.50", "adwaita/battery-level-50-symbolic.svg" },
    { "battery.25", "adwaita/battery-level-20-symbolic.svg" },
    { "battery.0", "adwaita/battery-level-0-symbolic.svg" },
    { "powerplug", "quillon-powerplug.svg" },
    // Devices.
    { "externaldrive", "adwaita/drive-removable-media-symbolic.svg" },
    { "display.2", "adwaita/video-joined-displays-symbolic.svg" },
    { "cable.connector.horizontal", "quillon-cable-connector-horizontal.svg" },
    { "bolt.horizontal.circle", "adwaita/thunderbolt-symbolic.svg" },
    { "dot.radiowaves.left.and.right", "adwaita/bluetooth-active-symbolic.svg" },
    { "antenna.radiowaves.left.and.right", "adwaita/network-cellular-symbolic.svg" },
    { "headphones", "adwaita/audio-headphones-symbolic.svg" },
    { "keyboard", "adwaita/input-keyboard-symbolic.svg" },
    { "computermouse", "adwaita/input-mouse-symbolic.svg" },
    { "hifispeaker", "adwaita/audio-speakers-symbolic.svg" },
    { "iphone", "adwaita/phone-apple-iphone-symbolic.svg" },
    { "mic", "adwaita/audio-input-microphone-symbolic.svg" },
    { "wifi", "adwaita/network-wireless-symbolic.svg" },
    { "wifi.slash", "adwaita/network-wireless-disabled-symbolic.svg" },
    { "laptopcomputer", "quillon-laptopcomputer.svg" },
    { "desktopcomputer", "adwaita/computer-symbolic.svg" },
    // Built-in components and checks.
    { "touchid", "adwaita/auth-fingerprint-symbolic.svg" },
    { "light.max", "adwaita/display-brightness-symbolic.svg" },
    { "rectangle.and.hand.point.up.left", "adwaita/input-touchpad-symbolic.svg" },
    { "hand.tap", "adwaita/preferences-system-privacy-symbolic.svg" },
    { "laptopcomputer.and.arrow.down", "quillon-laptopcomputer-and-arrow-down.svg" },
    { "memorychip", "quillon-memorychip.svg" },
    { "thermometer.medium", "quillon-thermometer-medium.svg" },
    { "gearshape", "adwaita/emblem-system-symbolic.svg" },
    { "sensor", "adwaita/power-profile-performance-symbolic.svg" },
    // Levels.
    { "checkmark.circle.fill", "adwaita/emblem-default-symbolic.svg" },
    { "checkmark.circle", "adwaita/selection-mode-symbolic.svg" },
    { "exclamationmark.triangle.fill", "adwaita/dialog-warning-symbolic.svg" },
    { "exclamationmark.triangle", "quillon-exclamationmark-triangle.svg" },
    { "xmark.octagon.fill", "quillon-xmark-octagon-fill.svg" },
    { "xmark", "quillon-xmark.svg" },
    { "info.circle.fill", "quillon-info-circle-fill.svg" },
    { "info.circle", "quillon-info-circle-fill.svg" },
    { "minus.circle", "quillon-minus-circle.svg" },
    // Commands and decorations.
    { "square.and.arrow.up", "adwaita/send-to-symbolic.svg" },
    { "arrow.clockwise", "adwaita/view-refresh-symbolic.svg" },
    { "chevron.right", "adwaita/go-next-symbolic.svg" },
    { "tablecells", "adwaita/x-office-spreadsheet-symbolic.svg" },
    { "trash", "adwaita/user-trash-symbolic.svg" },
    { "lock.shield", "adwaita/security-high-symbolic.svg" },
};

const QHash<QString, QString> &table()
{
    static const QHash<QString, QString> paths = [] {
        QHash<QString, QString> built;
        for (const Mapping &mapping : mappings)
            built.insert(
                QString::fromLatin1(mapping.name), u":/Quillon/symbols/"_s + QString::fromLatin1(mapping.file));
        return built;
    }();
    return paths;
}

} // namespace

namespace SymbolTable {

std::optional<QString> resourcePath(const QString &name)
{
    const auto found = table().constFind(name);
    if (found == table().cend())
        return std::nullopt;
    return *found;
}

QStringList names()
{
    QStringList all;
    for (const Mapping &mapping : mappings)
        all.append(QString::fromLatin1(mapping.name));
    return all;
}

} // namespace SymbolTable
