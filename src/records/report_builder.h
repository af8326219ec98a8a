#pragma once

#include "core/battery_info.h"
#include "core/hardware_info.h"
#include "core/inventory.h"
#include "core/storage_volume.h"
#include "diagnostics/diagnostics_report.h"
#include "live/live_values.h"
#include "records/workshop_header.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

// Everything the report tells about the machine.
struct ReportContents
{
    std::optional<HardwareInfo> hardware;
    std::optional<BatteryInfo> battery;
    // The latest live battery reading; it overrides the charge level and power state rows.
    std::optional<BatterySnapshot> snapshot;
    QList<StorageVolume> volumes;
    Inventory inventory;
    std::optional<DiagnosticsReport> report;
    LiveValues live;
    std::optional<WorkshopHeader> workshop;
    // What changed since this Mac's previous visit ("Depuis le …").
    std::optional<QString> sinceLastVisit;
};

// Who made the report and when: "Établi le {date} par {application} {version}".
struct ReportStamp
{
    QDateTime madeAt;
    // The application's display name, else its name, else "Quillon".
    QString application;
    // The application's version label.
    QString version;

    // This application's name and version, made at `madeAt`.
    static ReportStamp ofThisApplication(const QDateTime &madeAt);
};

// One verdict as the report writes it: its level, "Titre (valeur)", its sentence.
struct ReportCheckLine
{
    CheckStatus status = CheckStatus::info;
    QString heading;
    QString summary;
};

// One block of the report under its title: label/value rows, verdicts, or lines each with
// its depth (how many margins stand before it).
struct ReportPart
{
    QString title;
    QList<InfoRow> rows;
    QList<ReportCheckLine> checks;
    QList<std::pair<QString, int>> lines;
};

// What the report says, in order, before any layout: the text and the PDF are both drawn
// from it, so they never say different things.
struct ReportOutline
{
    std::optional<WorkshopHeader> workshop;
    QString title;
    QString stamp;
    // The verdict block, when there is a report: the headline, its level, the tally, the
    // failed reads.
    std::optional<CheckStatus> worst;
    QString verdict;
    QString tally;
    std::optional<QString> sinceLastVisit;
    QStringList failedReads;
    QList<ReportPart> parts;
    QStringList footer;
};

// The plain-text hardware check ("bilan") handed to a customer: fixed-width text for a
// monospaced font, lines joined by line feeds, one line feed at the end.
namespace ReportBuilder {

ReportOutline outline(const ReportContents &contents, const ReportStamp &stamp);
// The text form of an outline, and of contents.
QString build(const ReportOutline &outline);
QString build(const ReportContents &contents, const ReportStamp &stamp);

// "Bilan-{model}-{date}.pdf": the model name (or "Mac") with its spaces replaced by
// dashes, and the UTC calendar date of `now`.
QString suggestedFileName(const std::optional<HardwareInfo> &hardware, const QDateTime &now);

// The product's home page, printed at the end of the report.
QString webAddress();

} // namespace ReportBuilder
