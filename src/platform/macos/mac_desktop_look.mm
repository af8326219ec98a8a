#include "platform/macos/mac_desktop_look.h"

#import <AppKit/AppKit.h>

#include <algorithm>
#include <cmath>

// Every call drains its own autorelease pool. This file is compiled without automatic
// reference counting: what is allocated here is released here.

namespace {

std::uint8_t channel(std::uint32_t argb, int shift)
{
    return std::uint8_t((argb >> shift) & 0xFF);
}

// The AppKit window of a Qt window: its identifier is the NSView Qt draws in.
NSWindow *windowOf(std::uintptr_t windowId)
{
    NSView *view = reinterpret_cast<NSView *>(windowId);
    return view ? view.window : nil;
}

} // namespace

std::optional<std::uint32_t> MacDesktopLook::accentColour() const
{
    @autoreleasepool {
        NSColor *accent = [NSColor.controlAccentColor colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
        if (!accent)
            return std::nullopt;
        const auto byte = [](CGFloat value) { return std::uint32_t(std::lround(std::clamp(value, 0.0, 1.0) * 255)); };
        return byte(accent.redComponent) << 16 | byte(accent.greenComponent) << 8 | byte(accent.blueComponent);
    }
}

bool MacDesktopLook::increasesContrast() const
{
    @autoreleasepool {
        return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldIncreaseContrast;
    }
}

std::optional<DesktopLook::Drawing> MacDesktopLook::drawSymbol(const QString &name, int pixels, std::uint32_t argb) const
{
    if (pixels <= 0 || pixels > 1024)
        return std::nullopt;
    @autoreleasepool {
        NSImage *symbol = [NSImage imageWithSystemSymbolName:name.toNSString() accessibilityDescription:nil];
        if (!symbol)
            return std::nullopt;
        NSImageSymbolConfiguration *configuration = [NSImageSymbolConfiguration configurationWithPointSize:pixels
                                                                                                    weight:NSFontWeightRegular];
        NSImage *configured = [symbol imageWithSymbolConfiguration:configuration];
        NSImage *sized = configured ? configured : symbol;
        const NSSize natural = sized.size;
        if (natural.width <= 0 || natural.height <= 0)
            return std::nullopt;
        // The symbol's own proportions, fitted in the square.
        const CGFloat scale = std::min(pixels / natural.width, pixels / natural.height);
        const NSRect box = NSMakeRect((pixels - natural.width * scale) / 2, (pixels - natural.height * scale) / 2,
                                      natural.width * scale, natural.height * scale);
        NSBitmapImageRep *bitmap = [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                                           pixelsWide:pixels
                                                                           pixelsHigh:pixels
                                                                        bitsPerSample:8
                                                                      samplesPerPixel:4
                                                                             hasAlpha:YES
                                                                             isPlanar:NO
                                                                       colorSpaceName:NSDeviceRGBColorSpace
                                                                          bytesPerRow:pixels * 4
                                                                         bitsPerPixel:32];
        if (!bitmap)
            return std::nullopt;
        [NSGraphicsContext saveGraphicsState];
        NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap];
        [sized drawInRect:box fromRect:NSZeroRect operation:NSCompositingOperationSourceOver fraction:1.0];
        // The symbol's coverage, in the one colour asked for.
        [[NSColor colorWithSRGBRed:channel(argb, 16) / 255.0
                             green:channel(argb, 8) / 255.0
                              blue:channel(argb, 0) / 255.0
                             alpha:channel(argb, 24) / 255.0] set];
        NSRectFillUsingOperation(NSMakeRect(0, 0, pixels, pixels), NSCompositingOperationSourceIn);
        [NSGraphicsContext restoreGraphicsState];
        // Rows top first, premultiplied RGBA: the bitmap's own layout.
        const unsigned char *bytes = bitmap.bitmapData;
        Drawing drawing { pixels, pixels, std::vector<std::uint8_t>(bytes, bytes + std::size_t(pixels) * std::size_t(pixels) * 4) };
        [bitmap release];
        return drawing;
    }
}

bool MacDesktopLook::mergeTitleBar(std::uintptr_t windowId) const
{
    @autoreleasepool {
        NSWindow *window = windowOf(windowId);
        if (!window)
            return false;
        window.titlebarAppearsTransparent = YES;
        window.titleVisibility = NSWindowTitleHidden;
        window.styleMask |= NSWindowStyleMaskFullSizeContentView;
        return true;
    }
}

void MacDesktopLook::titleBarDoubleClicked(std::uintptr_t windowId) const
{
    @autoreleasepool {
        NSWindow *window = windowOf(windowId);
        if (!window)
            return;
        // System Settings › Desktop & Dock › "Double-click a window's title bar to".
        NSString *action = [NSUserDefaults.standardUserDefaults stringForKey:@"AppleActionOnDoubleClick"];
        if ([action isEqualToString:@"Minimize"])
            [window performMiniaturize:nil];
        else if (![action isEqualToString:@"None"])
            [window performZoom:nil];
    }
}

void MacDesktopLook::watch(std::function<void()> changed)
{
    @autoreleasepool {
        auto tell = ^(NSNotification *) {
            changed();
        };
        NSOperationQueue *mainQueue = NSOperationQueue.mainQueue;
        // The observers last as long as the application; the centres keep them.
        [NSNotificationCenter.defaultCenter addObserverForName:NSSystemColorsDidChangeNotification
                                                        object:nil
                                                         queue:mainQueue
                                                    usingBlock:tell];
        [NSWorkspace.sharedWorkspace.notificationCenter addObserverForName:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                                                                    object:nil
                                                                     queue:mainQueue
                                                                usingBlock:tell];
    }
}
