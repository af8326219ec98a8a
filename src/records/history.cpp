#include "records/history.h"

#include <QFutureWatcher>
#include <QtConcurrent/QtConcurrentRun>

#include "core/formatting.h"
#include "records/visit_changes.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

QVariant optionalVariant(const auto &value)
{
    return value ? QVariant::fromValue(*value) : QVariant();
}

// The volume the journal keeps: the first internal one, else the first.
const StorageVolume *journalVolume(const QList<StorageVolume> &volumes)
{
    for (const StorageVolume &volume : volumes) {
        if (volume.isInternal)
            return &volume;
    }
    return volumes.isEmpty() ? nullptr : &volumes.first();
}

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

} // namespace

History::History(std::shared_ptr<const Clock> clock, const QString &directory, QObject *parent, Reading reading)
    : QAbstractListModel(parent),
      m_clock(std::move(clock)),
      m_store(std::make_unique<JournalStore>(directory.isEmpty() ? defaultDirectory() : directory,
                                             m_clock->now().toLocalTime().date()))
{
    m_problem = m_store->problem();
    if (reading == Reading::inBackground && m_problem.isEmpty())
        startReading();
    else
        m_entries = m_store->entries();
}

void History::startReading()
{
    m_reading = true;
    auto *watcher = new QFutureWatcher<QList<HistoryEntry>>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher] {
        finishReading(watcher->result());
        watcher->deleteLater();
    });
    watcher->setFuture(QtConcurrent::run([path = m_store->filePath()] { return JournalStore::readEntries(path); }));
}

// The entries read take their places in the journal's order, each replaced by its new
// check where the machine was checked again meanwhile; removed ones are left out; the
// machines checked for the first time meanwhile come first. The list is then the one a new
// reading of the file would give.
void History::finishReading(const QList<HistoryEntry> &read)
{
    QHash<QUuid, HistoryEntry> recordedMeanwhile;
    for (const HistoryEntry &entry : std::as_const(m_entries))
        recordedMeanwhile.insert(entry.id, entry);
    QSet<QUuid> placed;
    QList<HistoryEntry> merged;
    for (const HistoryEntry &entry : read) {
        QUuid id = entry.id;
        while (m_replacedWhileReading.contains(id))
            id = m_replacedWhileReading.value(id);
        if (m_removedWhileReading.contains(id) || placed.contains(id))
            continue;
        placed.insert(id);
        merged.append(recordedMeanwhile.value(id, entry));
    }
    QList<HistoryEntry> firstChecks;
    for (const HistoryEntry &entry : std::as_const(m_entries)) {
        if (!placed.contains(entry.id))
            firstChecks.append(entry);
    }
    const int previousCount = count();
    m_bySerial.reset();
    beginResetModel();
    m_entries = firstChecks + merged;
    reselect();
    endResetModel();
    m_reading = false;
    m_removedWhileReading.clear();
    m_replacedWhileReading.clear();
    Q_EMIT readingChanged();
    if (!m_undoTexts.isEmpty())
        Q_EMIT undoTextChanged();
    publishChange(previousCount);
}

History::~History() = default;

// "Quillon" in the user's data folder; nothing without a home folder, where the journal
// would land under the root of the disk.
QString History::defaultDirectory()
{
    const QString home = qEnvironmentVariable("HOME");
    if (home.isEmpty() || home == u"/"_s)
        return {};
    QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty())
        base = QDir::homePath();
    return base + u"/Quillon"_s;
}

QString History::filePath() const
{
    return m_store->filePath();
}

QStringList History::notes() const
{
    return m_store->notes();
}

void History::setFilter(const JournalFilter &filter)
{
    if (filter == m_filter)
        return;
    beginResetModel();
    m_filter = filter;
    reselect();
    endResetModel();
    Q_EMIT selectionChanged();
}

void History::search(const QString &text, const QString &level, const QString &from, const QString &to)
{
    JournalFilter filter;
    filter.text = text;
    filter.level = JournalFilter::levelFromWord(level).value_or(JournalFilter::Level::any);
    const QDate first = QDate::fromString(from.trimmed(), Qt::ISODate);
    const QDate last = QDate::fromString(to.trimmed(), Qt::ISODate);
    if (first.isValid())
        filter.from = first;
    if (last.isValid())
        filter.to = last;
    setFilter(filter);
}

void History::reselect()
{
    m_selected.clear();
    if (m_filter.isEmpty())
        return;
    for (const HistoryEntry &entry : std::as_const(m_entries)) {
        if (m_filter.matches(entry))
            m_selected.append(entry);
    }
}

void History::setProblem(const QString &problem)
{
    if (problem == m_problem)
        return;
    m_problem = problem;
    Q_EMIT problemChanged();
}

void History::publishChange(int previousCount)
{
    if (count() != previousCount)
        Q_EMIT countChanged();
    Q_EMIT entriesChanged();
    Q_EMIT selectionChanged();
}

HistoryEntry History::makeEntry(const HardwareInfo &hardware, const std::optional<BatteryInfo> &battery,
                                const QList<StorageVolume> &volumes, const DiagnosticsReport &report) const
{
    return entryFor(hardware, battery, volumes, report, m_clock->now());
}

HistoryEntry History::entryFor(const HardwareInfo &hardware, const std::optional<BatteryInfo> &battery,
                               const QList<StorageVolume> &volumes, const DiagnosticsReport &report, const QDateTime &date)
{
    HistoryEntry entry;
    entry.date = date;
    entry.modelName = hardware.modelName;
    entry.modelIdentifier = hardware.modelIdentifier;
    entry.serialNumber = hardware.serialNumber;
    entry.chip = hardware.chip;
    entry.memory = hardware.memory;
    entry.storageBytes = journalStorageBytes(volumes);
    if (const StorageVolume *volume = journalVolume(volumes)) {
        entry.freeBytes = volume->freeBytes;
        if (volume->wear && !volume->wear->unreadable) {
            entry.ssdWearPercent = volume->wear->percentageUsed;
            entry.ssdWrittenBytes = volume->wear->bytesWritten;
        }
    }
    if (battery) {
        entry.batteryHealth = battery->healthPercent;
        entry.batteryCycles = battery->cycleCount;
    }
    entry.headline = report.headline();
    entry.warningCount = report.count(CheckStatus::attention);
    entry.faultCount = report.count(CheckStatus::alerte);
    entry.failedReadCount = report.failedReads.size();
    QJsonObject levels;
    for (const HardwareCheck &check : report.checks)
        levels.insert(check.title, VisitChanges::levelWord(check.status));
    entry.levels = QString::fromUtf8(QJsonDocument(levels).toJson(QJsonDocument::Compact));
    return entry;
}

std::optional<QString> History::changesSincePreviousVisit(const HistoryEntry &entry) const
{
    if (!entry.serialNumber || entry.serialNumber->isEmpty())
        return std::nullopt;
    if (!m_bySerial) {
        m_bySerial.emplace();
        for (qsizetype i = 0; i < m_entries.size(); ++i) {
            if (m_entries.at(i).serialNumber)
                (*m_bySerial)[*m_entries.at(i).serialNumber].append(i);
        }
    }
    QList<HistoryEntry> sameMachine;
    for (const qsizetype position : m_bySerial->value(*entry.serialNumber))
        sameMachine.append(m_entries.at(position));
    const std::optional<HistoryEntry> previous = VisitChanges::previousVisit(sameMachine, entry);
    return previous ? std::optional(VisitChanges::since(*previous, entry)) : std::nullopt;
}

bool History::record(const std::optional<HardwareInfo> &hardware, const std::optional<BatteryInfo> &battery,
                     const QList<StorageVolume> &volumes, const std::optional<DiagnosticsReport> &report)
{
    if (!hardware || !report) {
        setProblem(u"rien à noter : la fiche matérielle ou le bilan manque."_s);
        return false;
    }
    HistoryEntry entry = makeEntry(*hardware, battery, volumes, *report);
    const int year = entry.date.toUTC().date().year();
    if (year < 2001 || year > 2200) {
        setProblem(u"la date de ce Mac (%1) est hors des années 2001 à 2200 : la machine n’est pas notée au journal."_s
                       .arg(entry.date.toUTC().toString(Qt::ISODate)));
        return false;
    }
    const JournalStore::Recorded recorded = m_store->record(entry, sameCheckMSecs);
    m_bySerial.reset();
    if (!recorded.failure.isEmpty()) {
        setProblem(u"la machine n’a pas été notée au journal : %1."_s.arg(recorded.failure));
        return false;
    }
    setProblem(QString());
    if (m_reading && recorded.replaced)
        m_replacedWhileReading.insert(*recorded.replaced, entry.id);
    const int previousCount = count();
    if (!m_filter.isEmpty()) {
        // A search is on: the list is selected again around the new entry.
        beginResetModel();
        if (recorded.replaced)
            m_entries.removeIf([&](const HistoryEntry &e) { return e.id == *recorded.replaced; });
        m_entries.prepend(std::move(entry));
        reselect();
        endResetModel();
        publishChange(previousCount);
        return true;
    }
    const qsizetype same = recorded.replaced
        ? std::find_if(m_entries.cbegin(), m_entries.cend(), [&](const HistoryEntry &e) { return e.id == *recorded.replaced; })
              - m_entries.cbegin()
        : -1;
    if (same >= 0 && same < m_entries.size()) {
        m_entries[same] = std::move(entry);
        const QModelIndex changed = index(int(same));
        if (changed.isValid())
            Q_EMIT dataChanged(changed, changed);
    } else {
        beginInsertRows(QModelIndex(), 0, 0);
        m_entries.prepend(std::move(entry));
        endInsertRows();
    }
    publishChange(previousCount);
    return true;
}

void History::remove(const HistoryEntry &entry)
{
    removeIds({entry.id}, u"Annuler le retrait"_s);
}

void History::removeById(const QString &id)
{
    removeIds({QUuid::fromString(id)}, u"Annuler le retrait"_s);
}

// Only what this journal shows goes (what the search selects): an entry written meanwhile by
// another process stays.
void History::clear()
{
    QSet<QUuid> ids;
    for (const HistoryEntry &entry : selected())
        ids.insert(entry.id);
    removeIds(ids, u"Annuler l’effacement"_s);
}

void History::removeIds(const QSet<QUuid> &ids, const QString &undoText)
{
    if (const QString failure = m_store->remove(ids); !failure.isEmpty()) {
        setProblem(u"l’entrée n’a pas pu être retirée : %1."_s.arg(failure));
        return;
    }
    setProblem(QString());
    m_undoTexts.append(undoText);
    Q_EMIT undoTextChanged();
    if (m_reading)
        m_removedWhileReading.unite(ids);
    QList<HistoryEntry> kept = m_entries;
    kept.removeIf([&ids](const HistoryEntry &entry) { return ids.contains(entry.id); });
    replaceEntries(std::move(kept));
}

void History::undoRemoval()
{
    if (undoText().isEmpty())
        return;
    if (const QString failure = m_store->restoreLastRemoval(); !failure.isEmpty()) {
        setProblem(u"les entrées retirées n’ont pas pu être remises : %1."_s.arg(failure));
        return;
    }
    setProblem(QString());
    m_undoTexts.removeLast();
    Q_EMIT undoTextChanged();
    // The journal as its file has it now, with what other processes recorded meanwhile.
    replaceEntries(m_store->entries());
}

void History::replaceEntries(QList<HistoryEntry> entries)
{
    const int previousCount = count();
    m_bySerial.reset();
    beginResetModel();
    m_entries = std::move(entries);
    reselect();
    endResetModel();
    publishChange(previousCount);
}

QString History::csv() const
{
    // The byte-order mark tells spreadsheets the text is UTF-8, wherever it is written.
    return QChar(0xFEFF) + HistoryCsv::text(selected(), [this](const HistoryEntry &entry) {
               return changesSincePreviousVisit(entry).value_or(QString());
           });
}

QString History::exportCsv(const QString &filePath) const
{
    QSaveFile file(filePath);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    // Serial numbers: readable by the owner only, from the first byte on.
    file.setPermissions(ownerOnly);
    if (file.write(csv().toUtf8()) < 0 || !file.commit())
        return file.errorString();
    QFile::setPermissions(filePath, ownerOnly);
    return QString();
}

int History::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : selectedCount();
}

QVariant History::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const HistoryEntry &entry = selected().at(index.row());
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
    case FailedReadCountRole:
        return entry.failedReadCount;
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
        {FailedReadCountRole, "failedReadCount"},
    };
}
