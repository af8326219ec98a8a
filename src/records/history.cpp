#include "records/history.h"

#include "core/formatting.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

constexpr QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

QVariant optionalVariant(const auto &value)
{
    return value ? QVariant::fromValue(*value) : QVariant();
}

// The volume whose capacity the journal keeps: the first internal one, else the first.
std::optional<double> journalStorageBytes(const QList<StorageVolume> &volumes)
{
    for (const StorageVolume &volume : volumes) {
        if (volume.isInternal)
            return volume.totalBytes;
    }
    if (volumes.isEmpty())
        return std::nullopt;
    return volumes.first().totalBytes;
}

// The first entry of the same machine made less than an hour before the new one. Two
// absent serial numbers count as the same machine; an entry dated after the new one
// (a clock set back) counts as recent.
qsizetype recentIndexOfSameMachine(const QList<HistoryEntry> &entries, const HistoryEntry &entry)
{
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const HistoryEntry &existing = entries.at(i);
        if (existing.serialNumber == entry.serialNumber && existing.date.msecsTo(entry.date) < History::sameCheckMSecs)
            return i;
    }
    return -1;
}

// A recorded entry replaces the recent one of the same machine where it stands, or goes
// first; the oldest entries beyond the limit go.
void addOrReplace(QList<HistoryEntry> &entries, const HistoryEntry &entry)
{
    const qsizetype same = recentIndexOfSameMachine(entries, entry);
    if (same >= 0) {
        entries[same] = entry;
        return;
    }
    entries.prepend(entry);
    if (entries.size() > History::maximumEntries)
        entries.resize(History::maximumEntries);
}

} // namespace

History::History(std::shared_ptr<const Clock> clock, const QString &directory, QObject *parent)
    : QAbstractListModel(parent),
      m_clock(std::move(clock)),
      m_filePath(QDir(directory.isEmpty() ? defaultDirectory() : directory).filePath(u"journal.json"_s))
{
    load();
}

QString History::defaultDirectory()
{
    QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty())
        base = QDir::homePath();
    return base + u"/Quillon"_s;
}

void History::load()
{
    QFile file(m_filePath);
    if (!file.exists())
        return;
    std::optional<QList<HistoryEntry>> entries;
    if (file.open(QIODevice::ReadOnly))
        entries = HistoryFile::decode(file.readAll());
    if (entries)
        m_entries = std::move(*entries);
    else
        m_unreadableFileFound = true;
}

// Renames the unreadable journal file so that the next save cannot overwrite it:
// "journal-illisible-2026-11-16.json", then "-2", "-3"… on the same day.
bool History::setAsideUnreadableFile()
{
    const QFileInfo journal(m_filePath);
    const QString stem = u"journal-illisible-"_s + m_clock->now().toLocalTime().date().toString(u"yyyy-MM-dd"_s);
    QString target = journal.dir().filePath(stem + u".json"_s);
    for (int suffix = 2; QFileInfo::exists(target); ++suffix)
        target = journal.dir().filePath(stem + u'-' + QString::number(suffix) + u".json"_s);
    if (!QFile::rename(m_filePath, target))
        return false;
    QFile::setPermissions(target, ownerOnly);
    return true;
}

// Errors are ignored on purpose: the list in memory stays as it is, the changes stay
// unsaved, and the next successful save writes them.
void History::save()
{
    QDir().mkpath(QFileInfo(m_filePath).absolutePath());
    QLockFile lock(m_filePath + u".lock"_s);
    lock.setStaleLockTime(staleLockMSecs);
    if (!lock.tryLock(2 * staleLockMSecs))
        return;
    removeUnfinishedSaves();
    std::optional<QList<HistoryEntry>> merged = mergedWithFile();
    if (!merged || !writeFile(*merged))
        return;
    m_unsaved.clear();
    showMerged(std::move(*merged));
}

// The journal file as it is now, with the changes made here since the last save replayed
// on it in their order. A file that cannot be read is set aside and the list in memory
// replaces it; nothing when it cannot be set aside.
std::optional<QList<HistoryEntry>> History::mergedWithFile()
{
    QFile file(m_filePath);
    std::optional<QList<HistoryEntry>> stored = QList<HistoryEntry>();
    if (file.exists())
        stored = file.open(QIODevice::ReadOnly) ? HistoryFile::decode(file.readAll()) : std::nullopt;
    file.close();
    if (!stored)
        return setAsideUnreadableFile() ? std::optional(m_entries) : std::nullopt;
    for (const Change &change : std::as_const(m_unsaved)) {
        if (const auto *recorded = std::get_if<HistoryEntry>(&change))
            addOrReplace(*stored, *recorded);
        else
            stored->removeIf([&](const HistoryEntry &entry) { return std::get<QSet<QUuid>>(change).contains(entry.id); });
    }
    return stored;
}

// A process stopped while saving leaves its temporary file, "journal.json.XXXXXX", with
// serial numbers in it. Saves are made under the lock: the ones found under it are such.
void History::removeUnfinishedSaves()
{
    const QFileInfo journal(m_filePath);
    const QString prefix = journal.fileName() + u'.'; // the lock's suffix has four letters
    const QStringList found = journal.dir().entryList({prefix + u"??????"_s}, QDir::Files | QDir::Hidden);
    for (const QString &name : found)
        QFile::remove(journal.dir().filePath(name));
}

bool History::writeFile(const QList<HistoryEntry> &entries)
{
    QSaveFile file(m_filePath);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // The temporary file gets the owner-only rights before any byte is written to it.
    file.setPermissions(ownerOnly);
    file.write(HistoryFile::encode(entries));
    if (!file.commit())
        return false;
    QFile::setPermissions(m_filePath, ownerOnly);
    return true;
}

// Shows what other processes wrote meanwhile; nothing changes when none did.
void History::showMerged(QList<HistoryEntry> merged)
{
    if (merged == m_entries)
        return;
    const int previousCount = count();
    beginResetModel();
    m_entries = std::move(merged);
    endResetModel();
    publishChange(previousCount);
}

void History::publishChange(int previousCount)
{
    if (count() != previousCount)
        Q_EMIT countChanged();
    Q_EMIT entriesChanged();
}

HistoryEntry History::makeEntry(const HardwareInfo &hardware, const std::optional<BatteryInfo> &battery,
                                const QList<StorageVolume> &volumes, const DiagnosticsReport &report) const
{
    HistoryEntry entry;
    entry.date = m_clock->now();
    entry.modelName = hardware.modelName;
    entry.modelIdentifier = hardware.modelIdentifier;
    entry.serialNumber = hardware.serialNumber;
    entry.chip = hardware.chip;
    entry.memory = hardware.memory;
    entry.storageBytes = journalStorageBytes(volumes);
    if (battery) {
        entry.batteryHealth = battery->healthPercent;
        entry.batteryCycles = battery->cycleCount;
    }
    entry.headline = report.headline();
    entry.warningCount = report.count(CheckStatus::attention);
    entry.faultCount = report.count(CheckStatus::alerte);
    return entry;
}

void History::record(const std::optional<HardwareInfo> &hardware, const std::optional<BatteryInfo> &battery,
                     const QList<StorageVolume> &volumes, const std::optional<DiagnosticsReport> &report)
{
    if (!hardware || !report)
        return;
    const int previousCount = count();
    HistoryEntry entry = makeEntry(*hardware, battery, volumes, *report);
    m_unsaved.append(entry);
    const qsizetype same = recentIndexOfSameMachine(m_entries, entry);
    if (same >= 0) {
        m_entries[same] = std::move(entry);
        const QModelIndex changed = index(int(same));
        Q_EMIT dataChanged(changed, changed);
    } else {
        beginInsertRows(QModelIndex(), 0, 0);
        m_entries.prepend(std::move(entry));
        endInsertRows();
        if (m_entries.size() > maximumEntries) {
            beginRemoveRows(QModelIndex(), maximumEntries, count() - 1);
            m_entries.resize(maximumEntries);
            endRemoveRows();
        }
    }
    publishChange(previousCount);
    save();
}

void History::remove(const HistoryEntry &entry)
{
    removeIds({entry.id});
}

void History::removeById(const QString &id)
{
    removeIds({QUuid::fromString(id)});
}

void History::clear()
{
    QSet<QUuid> ids;
    for (const HistoryEntry &entry : std::as_const(m_entries))
        ids.insert(entry.id);
    const int previousCount = count();
    beginResetModel();
    m_entries.clear();
    endResetModel();
    publishChange(previousCount);
    m_unsaved.append(ids);
    save();
}

// Entries written by another process and not yet seen here are not removed: the user
// never saw them.
void History::removeIds(const QSet<QUuid> &ids)
{
    const int previousCount = count();
    for (qsizetype i = m_entries.size() - 1; i >= 0; --i) {
        if (!ids.contains(m_entries.at(i).id))
            continue;
        beginRemoveRows(QModelIndex(), int(i), int(i));
        m_entries.removeAt(i);
        endRemoveRows();
    }
    if (count() != previousCount)
        publishChange(previousCount);
    m_unsaved.append(ids);
    save();
}

QString History::csv() const
{
    // The byte-order mark tells spreadsheets the text is UTF-8, wherever it is written.
    return QChar(0xFEFF) + HistoryCsv::text(m_entries);
}

QString History::exportCsv(const QString &filePath) const
{
    QSaveFile file(filePath);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    // Serial numbers: readable by the owner only, from the first byte on.
    file.setPermissions(ownerOnly);
    if (file.write(HistoryCsv::exportBytes(m_entries)) < 0 || !file.commit())
        return file.errorString();
    QFile::setPermissions(filePath, ownerOnly);
    return QString();
}

int History::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant History::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const HistoryEntry &entry = m_entries.at(index.row());
    switch (role) {
    case IdRole:
        return entry.id.toString(QUuid::WithoutBraces).toUpper();
    case DateRole:
        return entry.date;
    case DateTextRole:
        return Format::abbreviatedDateShortTime(entry.date);
    case Qt::DisplayRole:
    case ModelNameRole:
        return entry.modelName;
    case ModelIdentifierRole:
        return entry.modelIdentifier;
    case SerialNumberRole:
        return optionalVariant(entry.serialNumber);
    case ChipRole:
        return entry.chip;
    case MemoryRole:
        return entry.memory;
    case StorageBytesRole:
        return optionalVariant(entry.storageBytes);
    case BatteryHealthRole:
        return optionalVariant(entry.batteryHealth);
    case BatteryCyclesRole:
        return optionalVariant(entry.batteryCycles);
    case HeadlineRole:
        return entry.headline;
    case WarningCountRole:
        return entry.warningCount;
    case FaultCountRole:
        return entry.faultCount;
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> History::roleNames() const
{
    return {
        {IdRole, "entryId"},
        {DateRole, "date"},
        {DateTextRole, "dateText"},
        {ModelNameRole, "modelName"},
        {ModelIdentifierRole, "modelIdentifier"},
        {SerialNumberRole, "serialNumber"},
        {ChipRole, "chip"},
        {MemoryRole, "memory"},
        {StorageBytesRole, "storageBytes"},
        {BatteryHealthRole, "batteryHealth"},
        {BatteryCyclesRole, "batteryCycles"},
        {HeadlineRole, "headline"},
        {WarningCountRole, "warningCount"},
        {FaultCountRole, "faultCount"},
    };
}
