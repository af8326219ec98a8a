#include "collectors/app_info.h"

#include "core/texts.h"

using namespace Qt::StringLiterals;

namespace AppInfo {

std::optional<QString> string(const QString &key)
{
    // The build has one version number, the project's; it serves as both the marketing
    // version and the build number.
    if (key == u"CFBundleShortVersionString"_s || key == u"CFBundleVersion"_s)
        return QStringLiteral(QUILLON_VERSION);
    if (key == u"CFBundleName"_s)
        return u"Quillon"_s;
    return std::nullopt;
}

QString versionLabel(const std::optional<QString> &shortVersion, const std::optional<QString> &build)
{
    const QString shortText = shortVersion.value_or(missingValueMark());
    const QString buildText = build.value_or(missingValueMark());
    if (shortText == buildText)
        return shortText;
    return shortText + u" ("_s + buildText + u')';
}

QString versionLabel()
{
    return versionLabel(string(u"CFBundleShortVersionString"_s), string(u"CFBundleVersion"_s));
}

} // namespace AppInfo
