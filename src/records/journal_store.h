#pragma once

#include "records/history_entry.h"

#include <QDateTime>
#include <QSqlQuery>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

// The journal's file: an SQLite database "journal.sqlite" in the journal folder, in
// write-ahead-log mode, readable by its owner only. Every change is one transaction, so a
// process killed at any moment, a full disk or a second process writing at the same time
// leaves every entry already recorded in place. Entries keep their order of recording,
// newest first; an entry replaced within the hour keeps its place.
//
// On first opening, the entries of the former journal file "journal.json" beside it are
// taken over once (each unreadable entry is left out and said); that file is kept as it is.
// A database that cannot be read is set aside as "journal-illisible-YYYY-MM-DD.sqlite" and
// a new one is started, never written over.
class JournalStore
{
public:
    // `today` dates the name of a file set aside.
    JournalStore(const QString &directory, const QDate &today);
    ~JournalStore();
    JournalStore(const JournalStore &) = delete;
    JournalStore &operator=(const JournalStore &) = delete;

    QString filePath() const { return m_path; }
    // Why the journal cannot be used, in French; empty when it can.
    QString problem() const { return m_problem; }
    // What the opening did that the user must know: a file set aside, entries taken over.
    QStringList notes() const { return m_notes; }

    // Every entry, newest first.
    QList<HistoryEntry> entries() const;
    // The same from the database at `path`, through a read-only connection of its own, so
    // that any thread can read while the store writes from its own.
    static QList<HistoryEntry> readEntries(const QString &path);

    // Records `entry`: it replaces the latest entry of the same machine (the same serial
    // number, or none for both) made less than `windowMSecs` before it, where that one
    // stands. Gives the replaced entry's identifier, or the French reason of a failure.
    struct Recorded
    {
        std::optional<QUuid> replaced;
        QString failure;
    };
    Recorded record(const HistoryEntry &entry, qint64 windowMSecs);
    // Removes these entries; gives the French reason of a failure, or an empty text. Each
    // removal is kept aside, for `restoreLastRemoval`, as long as this store is open.
    QString remove(const QSet<QUuid> &ids);
    // Puts the entries of the last removal kept aside back in their places in the order of
    // recording; gives the French reason of a failure, or an empty text.
    QString restoreLastRemoval();

private:
    enum class State { usable, damaged, unavailable };
    bool open();
    bool createSchema();
    bool addColumns(QSqlQuery &query);
    State check();
    void setAsideUnreadable(const QDate &today);
    void importFormerJournal();
    bool keepRemovalsAside(QSqlQuery &query);

    QString m_path;
    QString m_connection;
    QString m_problem;
    QStringList m_notes;
    // The number of the last removal kept aside.
    int m_removals = 0;
};
