#pragma once

#include <QString>

#include <optional>

// The application's own identity: its name and version as its bundle information gives them.
namespace AppInfo {

// The value of one bundle information key ("CFBundleName", "CFBundleShortVersionString",
// "CFBundleVersion"...), or nothing when the application does not define it.
std::optional<QString> string(const QString &key);

// The short version alone when it equals the build number, else "short (build)"; a missing
// value reads as the missing-value mark.
QString versionLabel(const std::optional<QString> &shortVersion, const std::optional<QString> &build);

// The label of this application's own version.
QString versionLabel();

} // namespace AppInfo
