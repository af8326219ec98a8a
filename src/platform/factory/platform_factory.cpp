#include "platform/factory/platform_factory.h"

#include "platform/capture/capture_platform.h"

#ifdef Q_OS_MACOS
#include "platform/macos/mac_platform.h"
#include "platform/macos/mac_desktop_look.h"
#include "platform/macos/mac_preferences.h"
#endif

namespace PlatformFactory {

namespace {

std::variant<Platform, QString> openCapture(const QString &path)
{
    auto opened = CaptureFolder::open(path);
    if (const QString *error = std::get_if<QString>(&opened))
        return *error;
    auto folder = std::get<std::shared_ptr<CaptureFolder>>(opened);
    Platform platform = makeCapturePlatform(folder);
    platform.sourceProblems = [folder] { return folder->problems(); };
    return platform;
}

} // namespace

bool runsOnMac()
{
#ifdef Q_OS_MACOS
    return true;
#else
    return false;
#endif
}

std::variant<Platform, QString> open(const std::optional<QString> &capturePath)
{
    if (capturePath)
        return openCapture(*capturePath);
#ifdef Q_OS_MACOS
    return makeMacPlatform();
#else
    return openCapture(QString::fromUtf16(sampleCapturePath));
#endif
}

std::unique_ptr<PreferenceStore> preferences()
{
#ifdef Q_OS_MACOS
    return std::make_unique<MacPreferences>();
#else
    return std::make_unique<SettingsPreferences>(std::make_unique<QSettings>());
#endif
}

std::unique_ptr<DesktopLook> desktopLook()
{
#ifdef Q_OS_MACOS
    return std::make_unique<MacDesktopLook>();
#else
    return nullptr;
#endif
}

QStringList captureProblems(const Platform &platform)
{
    return platform.sourceProblems ? platform.sourceProblems() : QStringList();
}

} // namespace PlatformFactory
