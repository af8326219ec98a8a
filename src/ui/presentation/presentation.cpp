#include "ui/presentation/presentation.h"

#include "core/texts.h"
#include "ui/presentation/verdict_presentation.h"

#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace Presentation {

ScaffoldState scaffoldState(bool isLoading, const std::optional<QString> &failure, bool isEmpty)
{
    if (failure)
        return ScaffoldState::failure;
    if (isLoading && isEmpty)
        return ScaffoldState::loading;
    if (isEmpty)
        return ScaffoldState::empty;
    return ScaffoldState::content;
}

MonitorPlan monitorsFor(AppSection section)
{
    switch (section) {
    case AppSection::overview:
    case AppSection::hardware:
        return { .lidAngle = true, .processor = true, .battery = true };
    case AppSection::diagnostics:
    case AppSection::battery:
        return { .lidAngle = false, .processor = true, .battery = true };
    default:
        return {};
    }
}

std::optional<QString> badgeLabel(DeviceStatus status)
{
    return deviceStatusLabel(status);
}

QString badgeColourRole(DeviceStatus status)
{
    switch (status) {
    case DeviceStatus::connected:
        return u"green"_s;
    case DeviceStatus::warning:
        return u"orange"_s;
    default:
        return u"secondary"_s;
    }
}

QString statusRawValue(DeviceStatus status)
{
    switch (status) {
    case DeviceStatus::connected:
        return u"connected"_s;
    case DeviceStatus::disconnected:
        return u"disconnected"_s;
    case DeviceStatus::warning:
        return u"warning"_s;
    case DeviceStatus::neutral:
        break;
    }
    return u"neutral"_s;
}

std::optional<DeviceStatus> statusFromRawValue(const QString &rawValue)
{
    for (DeviceStatus status :
        { DeviceStatus::connected, DeviceStatus::disconnected, DeviceStatus::warning, DeviceStatus::neutral }) {
        if (statusRawValue(status) == rawValue)
            return status;
    }
    return std::nullopt;
}

double deviceIndent(int depth)
{
    return deviceIndentPerLevel * qMax(0, depth);
}

QVariantList rowsForQml(const QList<InfoRow> &rows)
{
    QVariantList list;
    list.reserve(rows.size());
    for (const InfoRow &row : rows)
        list.append(QVariantMap { { u"label"_s, row.label }, { u"value"_s, row.value } });
    return list;
}

QString applicationName(const BundleLookup &lookup)
{
    if (std::optional<QString> displayName = lookup(u"CFBundleDisplayName"_s))
        return *displayName;
    if (std::optional<QString> bundleName = lookup(u"CFBundleName"_s))
        return *bundleName;
    return u"Quillon"_s;
}

QString versionText(const QString &versionLabel)
{
    return localized("Version ") + versionLabel;
}

} // namespace Presentation

PresentationHelpers::PresentationHelpers(QObject *parent) : QObject(parent)
{
}

int PresentationHelpers::scaffoldState(bool isLoading, const QString &failure, bool isEmpty) const
{
    const std::optional<QString> failureText = failure.isEmpty() ? std::nullopt : std::optional<QString>(failure);
    switch (Presentation::scaffoldState(isLoading, failureText, isEmpty)) {
    case Presentation::ScaffoldState::failure:
        return Failure;
    case Presentation::ScaffoldState::loading:
        return Loading;
    case Presentation::ScaffoldState::empty:
        return Empty;
    case Presentation::ScaffoldState::content:
        break;
    }
    return Content;
}

QString PresentationHelpers::badgeLabel(const QString &status) const
{
    const std::optional<DeviceStatus> parsed = Presentation::statusFromRawValue(status);
    return parsed ? Presentation::badgeLabel(*parsed).value_or(QString()) : QString();
}

QString PresentationHelpers::badgeColourRole(const QString &status) const
{
    const std::optional<DeviceStatus> parsed = Presentation::statusFromRawValue(status);
    return Presentation::badgeColourRole(parsed.value_or(DeviceStatus::neutral));
}

QString PresentationHelpers::upperCased(const QString &text) const
{
    return text.toUpper();
}

QString PresentationHelpers::sectionTitle(const QString &section) const
{
    const std::optional<AppSection> parsed = AppSections::fromRawValue(section);
    return parsed ? AppSections::title(*parsed) : QString();
}

QString PresentationHelpers::sectionSymbol(const QString &section) const
{
    const std::optional<AppSection> parsed = AppSections::fromRawValue(section);
    return parsed ? AppSections::symbol(*parsed) : QString();
}

QString PresentationHelpers::sectionEmptyMessage(const QString &section) const
{
    const std::optional<AppSection> parsed = AppSections::fromRawValue(section);
    return parsed ? AppSections::emptyMessage(*parsed) : QString();
}

QString PresentationHelpers::levelLabel(const QString &status) const
{
    const std::optional<CheckStatus> parsed = Presentation::checkStatusFromRawValue(status);
    return parsed ? CheckStatuses::label(*parsed) : QString();
}

QString PresentationHelpers::spokenCheck(const QString &title, const QString &status, const QString &value) const
{
    QStringList parts { title };
    const QString label = levelLabel(status);
    if (!label.isEmpty()) {
        // The level reads as part of the sentence, not as a heading.
        QString level = label;
        level[0] = level.at(0).toLower();
        parts << level;
    }
    // A tile without a measurement shows its level as its value: it is read once.
    if (!value.trimmed().isEmpty() && value.compare(label, Qt::CaseInsensitive) != 0)
        parts << value;
    return parts.join(u", "_s);
}

QString PresentationHelpers::levelSymbol(const QString &status) const
{
    const std::optional<CheckStatus> parsed = Presentation::checkStatusFromRawValue(status);
    return parsed ? CheckStatuses::symbol(*parsed) : QString();
}

QString PresentationHelpers::levelColourRole(const QString &status) const
{
    const std::optional<CheckStatus> parsed = Presentation::checkStatusFromRawValue(status);
    return parsed ? Presentation::levelColourRole(*parsed) : QString();
}
