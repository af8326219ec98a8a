#pragma once

#include "core/battery_info.h"
#include "core/hardware_info.h"
#include "core/storage_volume.h"
#include "diagnostics/diagnostics_report.h"
#include "records/history_entry.h"
#include "records/journal_filter.h"
#include "records/journal_store.h"
#include "sources/platform.h"

#include <QAbstractListModel>
#include <QHash>
#include <QList>
#include <QString>

#include <QSet>
#include <QUuid>

#include <memory>
#include <optional>
#include <variant>

// The journal of the machines checked on this computer, newest first, as a list model for
// the journal screen (one card per entry, the newest 500 unless every entry is asked for).
// Its entries live in the database "journal.sqlite" of the folder "Quillon" in the user's
// data folder (on macOS ~/Library/Application Support/Quillon/), shared with every other
// process that records (quillon-bilan --record, a second application): see JournalStore.
// Nothing is ever dropped. A change that cannot be written leaves the entries as they were
// and says why in `problem`.
//
// Main thread only.
class History : public QAbstractListModel
{
    Q_OBJECT

    // Number of entries.
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    // Location of the journal file.
    Q_PROPERTY(QString filePath READ filePath CONSTANT)
    // Why the last change could not be written, or why the journal cannot be used, in
    // French; empty when all is well.
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    // Every entry is listed, not only the newest 500.
    // Number of entries the search selects (all of them without one).
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectionChanged)
    // The entries already recorded are still being read from the journal's file.
    Q_PROPERTY(bool isReading READ isReading NOTIFY readingChanged)
    // The menu command that undoes the last removal; empty when there is none.
    Q_PROPERTY(QString undoText READ undoText NOTIFY undoTextChanged)

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
        FailedReadCountRole,
    };
    Q_ENUM(Role)

    // A machine checked again within this time replaces its own entry.
    static constexpr qint64 sameCheckMSecs = 3600 * 1000;

    // When the entries already recorded are read: before the constructor returns, or on a
    // thread of the pool, so that a window shows its first frame without waiting for them.
    enum class Reading { atOnce, inBackground };

    // `clock` gives the date of new entries. An empty `directory` means the default folder.
    explicit History(std::shared_ptr<const Clock> clock, const QString &directory = QString(),
                     QObject *parent = nullptr, Reading reading = Reading::atOnce);
    ~History() override;

    // The default journal folder: "Quillon" in the user's data folder; empty without a
    // home folder.
    static QString defaultDirectory();

    const QList<HistoryEntry> &entries() const { return m_entries; }
    // The entries the search selects, newest first: the list, its spreadsheet and its count.
    const QList<HistoryEntry> &selected() const { return m_filter.isEmpty() ? m_entries : m_selected; }
    int selectedCount() const { return int(selected().size()); }
    const JournalFilter &filter() const { return m_filter; }
    void setFilter(const JournalFilter &filter);
    // The journal screen's search: text, level word ("tout", "correct", "attention",
    // "anomalie"), dates "AAAA-MM-JJ" (empty for none).
    Q_INVOKABLE void search(const QString &text, const QString &level, const QString &from, const QString &to);
    int count() const { return int(m_entries.size()); }
    QString filePath() const;
    QString problem() const { return m_problem; }
    // What opening the journal did that the user must know (a file set aside, entries
    // taken over from the former journal).
    QStringList notes() const;
    bool isReading() const { return m_reading; }

    // The journal entry this machine would have if recorded at `date`.
    static HistoryEntry entryFor(const HardwareInfo &hardware, const std::optional<BatteryInfo> &battery,
                                 const QList<StorageVolume> &volumes, const DiagnosticsReport &report, const QDateTime &date);
    // What changed since the same machine's previous visit ("Depuis le …"), or nothing for a
    // first visit or a Mac without a serial number.
    std::optional<QString> changesSincePreviousVisit(const HistoryEntry &entry) const;

    // Adds the machine, or replaces the entry of the same machine made less than an hour
    // ago where it stands, in one write. False, with `problem` saying why, when nothing was
    // recorded: no hardware or report, a date outside 2001–2200, or a write that failed.
    bool record(const std::optional<HardwareInfo> &hardware, const std::optional<BatteryInfo> &battery,
                const QList<StorageVolume> &volumes, const std::optional<DiagnosticsReport> &report);
    // Removes every entry with this entry's identifier.
    void remove(const HistoryEntry &entry);
    // The same by the identifier's text, for the journal screen.
    Q_INVOKABLE void removeById(const QString &id);
    // Removes every entry the search selects.
    Q_INVOKABLE void clear();
    // The menu command that puts back the last entries removed ("Annuler l’effacement",
    // "Annuler le retrait"), or empty when there is none. Removals can be undone, the last
    // first, as long as this journal is open, once its recorded entries are read.
    QString undoText() const { return m_reading || m_undoTexts.isEmpty() ? QString() : m_undoTexts.last(); }
    Q_INVOKABLE void undoRemoval();

    // The semicolon-separated spreadsheet text of the selected entries, after the byte-order mark.
    Q_INVOKABLE QString csv() const;
    // Writes the exported spreadsheet (byte-order mark and text) to `filePath`, replacing
    // any file there. Returns the platform's error description, or an empty text.
    Q_INVOKABLE QString exportCsv(const QString &filePath) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();
    void problemChanged();
    void selectionChanged();
    // Emitted after every change of the entries, once the model signals are out.
    void entriesChanged();
    void readingChanged();
    void undoTextChanged();

private:
    void startReading();
    void finishReading(const QList<HistoryEntry> &read);
    void publishChange(int previousCount);
    void setProblem(const QString &problem);
    void removeIds(const QSet<QUuid> &ids, const QString &undoText);
    void reselect();
    // Shows `entries` in place of the list, with the selection and the signals that follow.
    void replaceEntries(QList<HistoryEntry> entries);
    HistoryEntry makeEntry(const HardwareInfo &hardware, const std::optional<BatteryInfo> &battery,
                           const QList<StorageVolume> &volumes, const DiagnosticsReport &report) const;

    std::shared_ptr<const Clock> m_clock;
    std::unique_ptr<JournalStore> m_store;
    // While the recorded entries are read: the entries removed meanwhile, and those replaced
    // by a new check of the same machine (old identifier to new).
    bool m_reading = false;
    // The entries' positions by serial number, newest first, made again after each change.
    mutable std::optional<QHash<QString, QList<qsizetype>>> m_bySerial;
    QSet<QUuid> m_removedWhileReading;
    QHash<QUuid, QUuid> m_replacedWhileReading;
    QList<HistoryEntry> m_entries;
    QString m_problem;
    // One per removal that can be undone, the last at the end.
    QStringList m_undoTexts;
    JournalFilter m_filter;
    QList<HistoryEntry> m_selected;
};
