#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

// What the desktop the application runs on asks of its look: the accent colour and the
// contrast the user chose in the system settings, the system's own symbol drawings, and a
// title bar that merges with the window's toolbar. This is about the computer in front of
// the technician, not about the Mac being checked: a capture replayed on a Mac still follows
// that Mac's settings. Answered on macOS; elsewhere there is no desktop look and the
// application keeps its own.
class DesktopLook
{
public:
    // A symbol drawn by the system: rows of premultiplied RGBA pixels, top row first.
    struct Drawing
    {
        int width = 0;
        int height = 0;
        std::vector<std::uint8_t> rgba;
    };

    virtual ~DesktopLook() = default;

    // The accent colour chosen by the user, as 0xRRGGBB; nothing when the system gives none.
    virtual std::optional<std::uint32_t> accentColour() const = 0;
    // Whether the user asked for more contrast (Accessibility › Display › Increase contrast).
    virtual bool increasesContrast() const = 0;
    // The system symbol `name` ("battery.100.bolt") drawn in the colour `argb` to fit a
    // square of `pixels` pixels; nothing for a name this system does not know.
    virtual std::optional<Drawing> drawSymbol(const QString &name, int pixels, std::uint32_t argb) const = 0;
    // Lets the content of the native window `windowId` run under its title bar, whose buttons
    // then sit over the content's top-left corner; false when it could not.
    virtual bool mergeTitleBar(std::uintptr_t windowId) const = 0;
    // What a double click on the merged title bar does, as the user set it: zoom, minimise or
    // nothing.
    virtual void titleBarDoubleClicked(std::uintptr_t windowId) const = 0;
    // Calls `changed`, on the main thread, whenever the accent colour or the contrast setting
    // changes.
    virtual void watch(std::function<void()> changed) = 0;
};
