#pragma once

#include "sources/desktop_look.h"

// The look of the macOS desktop, through AppKit: the accent colour (NSColor's
// controlAccentColor), "Increase contrast" (NSWorkspace), SF Symbols (NSImage system symbol
// images) and a window whose content runs under a transparent title bar. Main thread only.
class MacDesktopLook : public DesktopLook
{
public:
    std::optional<std::uint32_t> accentColour() const override;
    bool increasesContrast() const override;
    std::optional<Drawing> drawSymbol(const QString &name, int pixels, std::uint32_t argb) const override;
    bool mergeTitleBar(std::uintptr_t windowId) const override;
    void titleBarDoubleClicked(std::uintptr_t windowId) const override;
    void watch(std::function<void()> changed) override;
};
