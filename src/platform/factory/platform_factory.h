#pragma once

#include "sources/desktop_look.h"
#include "sources/platform.h"
#include "sources/preference_store.h"

#include <QString>

#include <memory>
#include <optional>
#include <variant>

namespace PlatformFactory {

// The built-in sample Mac, compiled into the resources.
inline constexpr char16_t sampleCapturePath[] = u":/captures/sample";

// Whether this build reads the Mac it runs on.
bool runsOnMac();

// The platform to check: the capture folder at `capturePath` when one is given; otherwise
// this Mac on macOS, and the built-in sample elsewhere. A capture that cannot be read gives
// a French sentence naming it.
std::variant<Platform, QString> open(const std::optional<QString> &capturePath);

// The user's preferences of the application: the application's defaults domain on macOS,
// Qt's settings elsewhere.
std::unique_ptr<PreferenceStore> preferences();

// The look of the desktop the application runs on (macOS), whatever Mac is being shown;
// null elsewhere.
std::unique_ptr<DesktopLook> desktopLook();

// Problems met so far in the files of the capture being replayed, one French line each.
QStringList captureProblems(const Platform &platform);

} // namespace PlatformFactory
