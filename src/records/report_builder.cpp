#include "records/report_builder.h"

#include "collectors/app_info.h"
#include "core/app_section.h"
#include "core/byte_format.h"
#include "core/device_node.h"
#include "core/formatting.h"
#include "core/texts.h"
#include "diagnostics/diagnostics_rules.h"

#include <QStringList>
#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int ruleWidth = 72;
// The status label column between the brackets of a check line.
constexpr int statusWidth = 14;
// The summary line of a check starts two characters left of the check's title.
constexpr int summaryIndent = 17;

const QString margin = u"  "_s;

QString heavyRule()
{
    return QString(ruleWidth, QChar(0x2550));
}

QString lightRule()
{
    return QString(ruleWidth, QChar(0x2500));
}

// The number of user-perceived characters: an "é" written as "e" and a combining accent
// counts once, as it takes one column.
qsizetype characterCount(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() > 0)
        ++count;
    return count;
}

// The first `count` user-perceived characters.
QString leftCharacters(const QString &text, qsizetype count)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype position = 0;
    for (qsizetype i = 0; i < count; ++i) {
        const qsizetype next = finder.toNextBoundary();
        if (next < 0)
            break;
        position = next;
    }
    return text.left(position);
}

QString paddedRight(const QString &text, qsizetype width)
{
    return text + QString(std::max<qsizetype>(width - characterCount(text), 0), u' ');
}

// One block of label/value rows under its title, the labels padded to the longest one.
void appendSection(QStringList &lines, const QString &title, const QList<InfoRow> &rows)
{
    lines << QString() << title << lightRule();
    qsizetype width = 0;
    for (const InfoRow &row : rows)
        width = std::max(width, characterCount(row.label));
    for (const InfoRow &row : rows)
        lines << margin + paddedRight(row.label, width) + margin + row.value;
}

void appendWorkshop(QStringList &lines, const std::optional<WorkshopHeader> &workshop)
{
    if (!workshop)
        return;
    lines << heavyRule() << margin + workshop->name.toUpper();
    if (workshop->details)
        lines << margin + *workshop->details;
}

void appendTitle(QStringList &lines, const std::optional<HardwareInfo> &hardware, const ReportStamp &stamp)
{
    const QString model = hardware ? hardware->modelName : u"Mac"_s;
    lines << heavyRule();
    lines << margin + localized("%1 — bilan matériel").arg(model);
    lines << margin + localized("Établi le %1 par %2 %3").arg(Format::longDateShortTime(stamp.madeAt), stamp.application, stamp.version);
    lines << heavyRule();
}

void appendVerdict(QStringList &lines, const DiagnosticsReport &report)
{
    lines << QString();
    lines << localized("VERDICT : ") + report.headline().toUpper();
    lines << localized("%1 contrôles · %2 corrects · %3 à surveiller · %4 anomalies")
                 .arg(QString::number(report.applicableCount()), QString::number(report.count(CheckStatus::ok)),
                      QString::number(report.count(CheckStatus::attention)),
                      QString::number(report.count(CheckStatus::alerte)));
    for (const FailedRead &read : report.failedReads)
        lines << localized("Lecture impossible : %1 — %2").arg(AppSections::title(read.section), read.failure);
}

// The battery rows, with the charge level and power state of the latest live reading.
QList<InfoRow> batteryRows(const BatteryInfo &battery, const std::optional<BatterySnapshot> &snapshot)
{
    QList<InfoRow> rows = battery.rows;
    if (!snapshot)
        return rows;
    for (InfoRow &row : rows) {
        if (row.key == InfoRowKey::chargeLevel)
            row.value = u"%1 %"_s.arg(snapshot->chargePercent);
        else if (row.key == InfoRowKey::powerState)
            row.value = snapshot->stateLabel();
    }
    return rows;
}

void appendVolumes(QStringList &lines, const QList<StorageVolume> &volumes)
{
    if (volumes.isEmpty())
        return;
    lines << QString() << localized("STOCKAGE") << lightRule();
    for (const StorageVolume &volume : volumes) {
        const qint64 usedPercent = Format::roundedPercent(volume.usedFraction() * 100);
        lines << margin
                + localized("%1 — %2 (%3 libres, %4 % utilisés)").arg(volume.name, ByteFormat::string(volume.totalBytes),
                                          ByteFormat::string(volume.freeBytes), QString::number(usedPercent));
        if (volume.deviceName)
            lines << margin + margin + localized("Disque : %1").arg(*volume.deviceName);
        if (volume.smartStatus)
            lines << margin + margin + localized("S.M.A.R.T. : %1").arg(*volume.smartStatus);
        if (volume.wear)
            lines << margin + margin + localized("Usure : %1").arg(DiagnosticsService::wearSummary(*volume.wear));
    }
}

// The live reading a check names when it is known, else the check's own measurement.
std::optional<QString> checkValue(const HardwareCheck &check, const LiveValues &live)
{
    std::optional<QString> value;
    if (check.live) {
        switch (*check.live) {
        case LiveMetric::lidAngle:
            value = live.lidAngle;
            break;
        case LiveMetric::processorLoad:
            value = live.processorLoad;
            break;
        case LiveMetric::processorTemperature:
            value = live.processorTemperature;
            break;
        }
    }
    return value ? value : check.measurement;
}

// The checks of one group under its title; a group without checks has no block.
void appendChecks(QStringList &lines, const QString &title, CheckGroup group, const DiagnosticsReport &report,
                  const LiveValues &live)
{
    const bool any = std::any_of(report.checks.cbegin(), report.checks.cend(),
                                 [group](const HardwareCheck &check) { return check.group == group; });
    if (!any)
        return;
    lines << QString() << title << lightRule();
    for (const HardwareCheck &check : report.checks) {
        if (check.group != group)
            continue;
        const QString label = leftCharacters(CheckStatuses::label(check.status), statusWidth);
        const std::optional<QString> value = checkValue(check, live);
        lines << margin + u'[' + paddedRight(label, statusWidth) + u"] "_s + check.title
                + (value ? u" ("_s + *value + u')' : QString());
        lines << QString(summaryIndent, u' ') + check.summary;
    }
}

void appendDeviceNode(QStringList &lines, const DeviceNode &node, int depth)
{
    const QString indent = margin.repeated(depth + 1);
    const std::optional<QString> status = deviceStatusLabel(node.status);
    lines << indent + u"• "_s + node.name + (status ? u" — "_s + *status : QString());
    for (const InfoRow &row : node.rows)
        lines << indent + margin + margin + row.label + u" : "_s + row.value;
}

void appendDevices(QStringList &lines, const Inventory &inventory)
{
    const AppSection sections[] = {AppSection::displays, AppSection::usb,     AppSection::thunderbolt,
                                   AppSection::bluetooth, AppSection::network, AppSection::audio,
                                   AppSection::camera};
    for (AppSection section : sections) {
        const QList<DeviceNode> nodes = inventory.value(section);
        if (nodes.isEmpty())
            continue;
        lines << QString() << AppSections::title(section).toUpper() << lightRule();
        for (const auto &[node, depth] : flattenedAll(nodes))
            appendDeviceNode(lines, node, depth);
    }
}

void appendFooter(QStringList &lines)
{
    lines << QString() << heavyRule();
    lines << margin + localized("Ces contrôles comparent l'état rapporté par macOS à des seuils fixes.");
    lines << margin + localized("Ce ne sont pas des tests de charge : le matériel n'est pas sollicité.");
    lines << heavyRule();
    lines << margin + localized("Établi avec Quillon, outil gratuit pour réparateurs — ") + ReportBuilder::webAddress();
}

} // namespace

ReportStamp ReportStamp::ofThisApplication(const QDateTime &madeAt)
{
    const QString application = AppInfo::string(u"CFBundleDisplayName"_s)
                                    .value_or(AppInfo::string(u"CFBundleName"_s).value_or(u"Quillon"_s));
    return ReportStamp{madeAt, application, AppInfo::versionLabel()};
}

namespace ReportBuilder {

QString webAddress()
{
    return u"https://quillon.app"_s;
}

QString build(const ReportContents &contents, const ReportStamp &stamp)
{
    QStringList lines;
    appendWorkshop(lines, contents.workshop);
    appendTitle(lines, contents.hardware, stamp);
    if (contents.report)
        appendVerdict(lines, *contents.report);
    if (contents.hardware)
        appendSection(lines, localized("CONFIGURATION"), contents.hardware->rows);
    if (contents.report)
        appendChecks(lines, localized("PROPRIÉTÉ ET VERROUS"), CheckGroup::ownership, *contents.report, contents.live);
    if (contents.battery)
        appendSection(lines, localized("BATTERIE"), batteryRows(*contents.battery, contents.snapshot));
    appendVolumes(lines, contents.volumes);
    if (contents.report)
        appendChecks(lines, localized("ÉTAT DES COMPOSANTS"), CheckGroup::components, *contents.report, contents.live);
    appendDevices(lines, contents.inventory);
    appendFooter(lines);
    return lines.join(u'\n') + u'\n';
}

QString suggestedFileName(const std::optional<HardwareInfo> &hardware, const QDateTime &now)
{
    QString model = hardware ? hardware->modelName : u"Mac"_s;
    model.replace(u' ', u'-');
    return localized("Bilan-%1-%2.txt").arg(model, Format::utcCalendarDate(now));
}

} // namespace ReportBuilder
