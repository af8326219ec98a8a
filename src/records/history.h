#pragma once

#include "core/battery_info.h"
#include "core/hardware_info.h"
#include "core/storage_volume.h"
#include "diagnostics/diagnostics_report.h"
#include "records/history_entry.h"
#include "sources/platform.h"

#include <QAbstractListModel>
#include <QList>
#include <QString>

#include <QSet>
#include <QUuid>

#include <memory>
#include <optional>
#include <variant>

// The journal of the machines checked on this computer, newest first, at most 500. It is
// a list model for the journal screen (one card per entry) and keeps its entries in the
// file "journal.json" of the folder "Quillon" in the user's data folder (on macOS
// ~/Library/Application Support/Quillon/journal.json), rewritten whole and atomically after
// every change, readable by its owner only.
//
// A journal file that cannot be read gives an empty journal; before the first save it is
// renamed "journal-illisible-YYYY-MM-DD.json" (the local date) beside it, so that a damaged
// journal is never overwritten.
//
// Other processes (quillon-bilan --record, a second application) may write the same file.
// Every save holds the lock file "journal.json.lock" beside it, reads the file again and
// replays on it the changes made here since the last save (entries recorded, entries
// removed), by the same rules as in memory: an entry written meanwhile by another process
// is kept, one removed here does not come back, and the entries shown become the merged
// list. A save that fails keeps its changes for the next one.
//
// Main thread only.
class History : public QAbstractListModel
{
    Q_OBJECT

    // Number of entries.
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    // Location of the journal file.
    Q_PROPERTY(QString filePath READ filePath CONSTANT)

public:
    enum Role {
        IdRole = Qt::UserRole + 1,
        DateRole,
        // The date as the journal cards show it: "16 nov. 2026 à 9:05".
        DateTextRole,
        ModelNameRole,
        ModelIdentifierRole,
        SerialNumberRole,
        ChipRole,
        MemoryRole,
        StorageBytesRole,
        BatteryHealthRole,
        BatteryCyclesRole,
        HeadlineRole,
        WarningCountRole,
        FaultCountRole,
    };
    Q_ENUM(Role)

    static constexpr int maximumEntries = 500;
    // A machine checked again within this time replaces its own entry.
    static constexpr qint64 sameCheckMSecs = 3600 * 1000;
    // A lock older than this is taken to be left by a process that stopped while saving (a
    // save takes milliseconds); a save waits at most twice as long for the lock.
    static constexpr int staleLockMSecs = 5 * 1000;

    // `clock` gives the date of new entries. An empty `directory` means the default folder.
    explicit History(std::shared_ptr<const Clock> clock, const QString &directory = QString(),
                     QObject *parent = nullptr);

    // The default journal folder: "Quillon" in the user's data folder.
    static QString defaultDirectory();

    const QList<HistoryEntry> &entries() const { return m_entries; }
    int count() const { return int(m_entries.size()); }
    QString filePath() const { return m_filePath; }
    // Set when the file found at start could not be read; it is set aside at the first save,
    // as is any file found unreadable when saving.
    bool hadUnreadableFile() const { return m_unreadableFileFound; }

    // Adds the machine, or replaces the entry of the same machine made less than an hour
    // ago, then saves. Nothing happens without hardware or report.
    void record(const std::optional<HardwareInfo> &hardware, const std::optional<BatteryInfo> &battery,
                const QList<StorageVolume> &volumes, const std::optional<DiagnosticsReport> &report);
    // Removes every entry with this entry's identifier, then saves.
    void remove(const HistoryEntry &entry);
    // The same by the identifier's text, for the journal screen.
    Q_INVOKABLE void removeById(const QString &id);
    // Removes every entry, then saves.
    Q_INVOKABLE void clear();

    // The semicolon-separated spreadsheet text of the journal, after the byte-order mark.
    Q_INVOKABLE QString csv() const;
    // Writes the exported spreadsheet (byte-order mark and text) to `filePath`, replacing
    // any file there. Returns the platform's error description, or an empty text.
    Q_INVOKABLE QString exportCsv(const QString &filePath) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();
    // Emitted after every change of the entries, once the model signals are out.
    void entriesChanged();

private:
    // A change made here and not yet saved: an entry recorded, or the identifiers removed.
    using Change = std::variant<HistoryEntry, QSet<QUuid>>;

    void load();
    void save();
    void removeUnfinishedSaves();
    std::optional<QList<HistoryEntry>> mergedWithFile();
    bool setAsideUnreadableFile();
    bool writeFile(const QList<HistoryEntry> &entries);
    void showMerged(QList<HistoryEntry> merged);
    void publishChange(int previousCount);
    HistoryEntry makeEntry(const HardwareInfo &hardware, const std::optional<BatteryInfo> &battery,
                           const QList<StorageVolume> &volumes, const DiagnosticsReport &report) const;
    void removeIds(const QSet<QUuid> &ids);

    std::shared_ptr<const Clock> m_clock;
    QString m_filePath;
    QList<HistoryEntry> m_entries;
    QList<Change> m_unsaved;
    bool m_unreadableFileFound = false;
};
