#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <functional>
#include <optional>

// One machine checked on this computer: what the journal keeps of one refresh.
struct HistoryEntry
{
    QUuid id = QUuid::createUuid();
    // When the entry was made.
    QDateTime date;
    QString modelName;
    QString modelIdentifier;
    std::optional<QString> serialNumber;
    QString chip;
    // The installed-memory text of the hardware record.
    QString memory;
    // Total capacity of the internal volume (or of the first volume), in bytes.
    std::optional<double> storageBytes;
    std::optional<qint64> batteryHealth;
    std::optional<qint64> batteryCycles;
    // The report's one-line summary at the time of the entry.
    QString headline;
    qint64 warningCount = 0;
    qint64 faultCount = 0;
    // The sections that could not be read: such a bilan never reads as all clear.
    qint64 failedReadCount = 0;
    // Free space of the same volume, and the wear of its SSD when its log was read.
    std::optional<double> freeBytes;
    std::optional<qint64> ssdWearPercent;
    std::optional<double> ssdWrittenBytes;
    // Each verdict's level by its title, as JSON ({"Batterie": "ok"…}), to tell what changed
    // at the next visit.
    QString levels;

    friend bool operator==(const HistoryEntry &, const HistoryEntry &) = default;
};

size_t qHash(const HistoryEntry &entry, size_t seed = 0);

// The journal file: a compact JSON array of entry objects, in list order. Each object
// holds the fields under their own names, in field order; an absent optional is left out.
// The identifier is the UUID's canonical text in upper case; the date is a number of
// seconds (with fraction) since 2001-01-01 00:00:00 UTC.
namespace HistoryFile {

QByteArray encode(const QList<HistoryEntry> &entries);

// The entries of a journal file, or nothing when the bytes are not a journal: not a JSON
// array, or one element with a required key missing or of the wrong kind. Keys may come
// in any order; unknown keys are ignored.
std::optional<QList<HistoryEntry>> decode(const QByteArray &bytes);

// What the former journal file gives when it is taken over: every entry that reads, and
// the positions (from 0) of those that do not; `readable` is false when the bytes are not
// a JSON array at all.
struct Import
{
    QList<HistoryEntry> entries;
    QList<qsizetype> rejected;
    bool readable = false;
};
Import importEntries(const QByteArray &bytes);

// The date as stored in the file, and back.
double secondsSinceReferenceDate(const QDateTime &date);
QDateTime dateFromReferenceSeconds(double seconds);

} // namespace HistoryFile

// The journal as a semicolon-separated spreadsheet text for spreadsheet programs set up
// for French.
namespace HistoryCsv {

// The header row, then one row per entry in list order; every row ends with a line feed.
// The last column, "Évolution", holds what `changes` says of each entry.
QString text(const QList<HistoryEntry> &entries, const std::function<QString(const HistoryEntry &)> &changes = {});

// The bytes of an exported file: the UTF-8 byte-order mark, then the text in UTF-8.
QByteArray exportBytes(const QList<HistoryEntry> &entries);

// A cell as written in the text: after an apostrophe when it starts with =, +, -, @, a tab
// or a carriage return and is not a number (so no spreadsheet runs it as a formula); then
// quoted, with its quotes doubled, when it holds a semicolon, a double quote, a line feed
// or a carriage return; as it is otherwise.
QString escapedCell(const QString &cell);

} // namespace HistoryCsv
