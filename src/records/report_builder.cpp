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

ReportPart volumesPart(const QList<StorageVolume> &volumes)
{
    ReportPart part{localized("STOCKAGE"), {}, {}, {}};
    for (const StorageVolume &volume : volumes) {
        const qint64 usedPercent = Format::roundedPercent(volume.usedFraction() * 100);
        part.lines.append({localized("%1 — %2 (%3 libres, %4 % utilisés)")
                               .arg(volume.name, ByteFormat::string(volume.totalBytes),
                                    ByteFormat::string(volume.freeBytes), QString::number(usedPercent)),
                           1});
        if (volume.deviceName)
            part.lines.append({localized("Disque : %1").arg(*volume.deviceName), 2});
        if (volume.smartStatus)
            part.lines.append({localized("S.M.A.R.T. : %1").arg(*volume.smartStatus), 2});
        if (volume.wear)
            part.lines.append({localized("Usure : %1").arg(DiagnosticsService::wearSummary(*volume.wear)), 2});
    }
    return part;
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

// The checks of one group; nothing when the group has none.
std::optional<ReportPart> checksPart(const QString &title, CheckGroup group, const DiagnosticsReport &report,
                                     const LiveValues &live)
{
    ReportPart part{title, {}, {}, {}};
    for (const HardwareCheck &check : report.checks) {
        if (check.group != group)
            continue;
        const std::optional<QString> value = checkValue(check, live);
        part.checks.append({check.status, check.title + (value ? u" ("_s + *value + u')' : QString()), check.summary});
    }
    return part.checks.isEmpty() ? std::nullopt : std::optional(part);
}

QList<ReportPart> deviceParts(const Inventory &inventory)
{
    const AppSection sections[] = {AppSection::displays, AppSection::usb,     AppSection::thunderbolt,
                                   AppSection::bluetooth, AppSection::network, AppSection::audio,
                                   AppSection::camera};
    QList<ReportPart> parts;
    for (AppSection section : sections) {
        const QList<DeviceNode> nodes = inventory.value(section);
        if (nodes.isEmpty())
            continue;
        ReportPart part{AppSections::title(section).toUpper(), {}, {}, {}};
        for (const auto &[node, depth] : flattenedAll(nodes)) {
            const std::optional<QString> status = deviceStatusLabel(node.status);
            part.lines.append({u"• "_s + node.name + (status ? u" — "_s + *status : QString()), depth + 1});
            for (const InfoRow &row : node.rows)
                part.lines.append({row.label + u" : "_s + row.value, depth + 3});
        }
        parts.append(part);
    }
    return parts;
}

// ---- The text form -----------------------------------------------------------------------

// One block of label/value rows under its title, the labels padded to the longest one.
void appendRows(QStringList &lines, const QList<InfoRow> &rows)
{
    qsizetype width = 0;
    for (const InfoRow &row : rows)
        width = std::max(width, characterCount(row.label));
    for (const InfoRow &row : rows)
        lines << margin + paddedRight(row.label, width) + margin + row.value;
}

void appendChecks(QStringList &lines, const QList<ReportCheckLine> &checks)
{
    for (const ReportCheckLine &check : checks) {
        const QString label = leftCharacters(CheckStatuses::label(check.status), statusWidth);
        lines << margin + u'[' + paddedRight(label, statusWidth) + u"] "_s + check.heading;
        lines << QString(summaryIndent, u' ') + check.summary;
    }
}

QString text(const ReportOutline &outline)
{
    QStringList lines;
    if (outline.workshop) {
        lines << heavyRule() << margin + outline.workshop->name.toUpper();
        if (outline.workshop->details)
            lines << margin + *outline.workshop->details;
    }
    lines << heavyRule() << margin + outline.title << margin + outline.stamp << heavyRule();
    if (outline.worst) {
        lines << QString() << localized("VERDICT : ") + outline.verdict.toUpper() << outline.tally;
        if (outline.sinceLastVisit)
            lines << *outline.sinceLastVisit;
        lines << outline.failedReads;
    }
    for (const ReportPart &part : outline.parts) {
        lines << QString() << part.title << lightRule();
        appendRows(lines, part.rows);
        appendChecks(lines, part.checks);
        for (const auto &[line, depth] : part.lines)
            lines << margin.repeated(depth) + line;
    }
    lines << QString() << heavyRule() << margin + outline.footer.value(0) << margin + outline.footer.value(1)
          << heavyRule() << margin + outline.footer.value(2);
    return lines.join(u'\n') + u'\n';
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

ReportOutline outline(const ReportContents &contents, const ReportStamp &stamp)
{
    ReportOutline made;
    made.workshop = contents.workshop;
    made.title = localized("%1 — bilan matériel").arg(contents.hardware ? contents.hardware->modelName : u"Mac"_s);
    made.stamp = localized("Établi le %1 par %2 %3")
                     .arg(Format::longDateShortTime(stamp.madeAt), stamp.application, stamp.version);
    if (const std::optional<DiagnosticsReport> &report = contents.report) {
        made.worst = report->worst();
        made.verdict = report->headline();
        made.tally = localized("%1 contrôles · %2 corrects · %3 à surveiller · %4 anomalies")
                         .arg(QString::number(report->applicableCount()), QString::number(report->count(CheckStatus::ok)),
                              QString::number(report->count(CheckStatus::attention)),
                              QString::number(report->count(CheckStatus::alerte)));
        made.sinceLastVisit = contents.sinceLastVisit;
        for (const FailedRead &read : report->failedReads)
            made.failedReads << localized("Lecture impossible : %1 — %2").arg(AppSections::title(read.section), read.failure);
    }
    if (contents.hardware)
        made.parts.append({localized("CONFIGURATION"), contents.hardware->rows, {}, {}});
    if (contents.report) {
        if (auto part = checksPart(localized("PROPRIÉTÉ ET VERROUS"), CheckGroup::ownership, *contents.report, contents.live))
            made.parts.append(*part);
    }
    if (contents.battery)
        made.parts.append({localized("BATTERIE"), batteryRows(*contents.battery, contents.snapshot), {}, {}});
    if (!contents.volumes.isEmpty())
        made.parts.append(volumesPart(contents.volumes));
    if (contents.report) {
        if (auto part = checksPart(localized("ÉTAT DES COMPOSANTS"), CheckGroup::components, *contents.report, contents.live))
            made.parts.append(*part);
    }
    made.parts.append(deviceParts(contents.inventory));
    made.footer = {localized("Ces contrôles comparent l'état rapporté par macOS à des seuils fixes."),
                   localized("Ce ne sont pas des tests de charge : le matériel n'est pas sollicité."),
                   localized("Établi avec Quillon, outil gratuit pour réparateurs — ") + webAddress()};
    return made;
}

QString build(const ReportOutline &outline)
{
    return text(outline);
}

QString build(const ReportContents &contents, const ReportStamp &stamp)
{
    return text(outline(contents, stamp));
}

QString suggestedFileName(const std::optional<HardwareInfo> &hardware, const QDateTime &now)
{
    QString model = hardware ? hardware->modelName : u"Mac"_s;
    model.replace(u' ', u'-');
    return localized("Bilan-%1-%2.pdf").arg(model, Format::utcCalendarDate(now));
}

} // namespace ReportBuilder
