#include "records/journal_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <atomic>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
// The former journal is read up to this size: far beyond any real one.
constexpr qint64 largestFormerJournal = 256 * 1024 * 1024;

QString uniqueConnectionName()
{
    static std::atomic<int> next = 0;
    return u"quillon-journal-%1"_s.arg(next++);
}

QVariant optional(const auto &value)
{
    return value ? QVariant::fromValue(*value) : QVariant();
}

// A text never binds as NULL, even when it was never set.
QVariant text(const QString &value)
{
    return value.isNull() ? QVariant(QString(u""_s)) : QVariant(value);
}

// The values of an entry bound to the named placeholders of an insert or an update.
void bindEntry(QSqlQuery &query, const HistoryEntry &entry)
{
    query.bindValue(u":id"_s, entry.id.toString(QUuid::WithoutBraces).toUpper());
    query.bindValue(u":date"_s, entry.date.toMSecsSinceEpoch());
    query.bindValue(u":modelName"_s, text(entry.modelName));
    query.bindValue(u":modelIdentifier"_s, text(entry.modelIdentifier));
    query.bindValue(u":serial"_s, optional(entry.serialNumber));
    query.bindValue(u":chip"_s, text(entry.chip));
    query.bindValue(u":memory"_s, text(entry.memory));
    query.bindValue(u":storage"_s, optional(entry.storageBytes));
    query.bindValue(u":health"_s, optional(entry.batteryHealth));
    query.bindValue(u":cycles"_s, optional(entry.batteryCycles));
    query.bindValue(u":headline"_s, text(entry.headline));
    query.bindValue(u":warnings"_s, entry.warningCount);
    query.bindValue(u":faults"_s, entry.faultCount);
    query.bindValue(u":failedReads"_s, entry.failedReadCount);
    query.bindValue(u":free"_s, optional(entry.freeBytes));
    query.bindValue(u":wear"_s, optional(entry.ssdWearPercent));
    query.bindValue(u":written"_s, optional(entry.ssdWrittenBytes));
    query.bindValue(u":levels"_s, text(entry.levels));
}

const QString insertEntry = u"INSERT INTO entries (id, date_ms, model_name, model_identifier, serial, chip, memory, "
                            "storage_bytes, battery_health, battery_cycles, headline, warnings, faults, failed_reads, free_bytes, ssd_wear, "
                            "ssd_written, levels) VALUES (:id, :date, :modelName, :modelIdentifier, :serial, :chip, :memory, "
                            ":storage, :health, :cycles, :headline, :warnings, :faults, :failedReads, :free, :wear, :written, "
                            ":levels)"_s;

template <typename T>
std::optional<T> optionalValue(const QVariant &value)
{
    return value.isNull() ? std::nullopt : std::optional<T>(value.value<T>());
}

HistoryEntry entryFrom(const QSqlQuery &query)
{
    HistoryEntry entry;
    entry.id = QUuid::fromString(query.value(0).toString());
    entry.date = QDateTime::fromMSecsSinceEpoch(query.value(1).toLongLong(), Qt::UTC);
    entry.modelName = query.value(2).toString();
    entry.modelIdentifier = query.value(3).toString();
    entry.serialNumber = optionalValue<QString>(query.value(4));
    entry.chip = query.value(5).toString();
    entry.memory = query.value(6).toString();
    entry.storageBytes = optionalValue<double>(query.value(7));
    entry.batteryHealth = optionalValue<qint64>(query.value(8));
    entry.batteryCycles = optionalValue<qint64>(query.value(9));
    entry.headline = query.value(10).toString();
    entry.warningCount = query.value(11).toLongLong();
    entry.faultCount = query.value(12).toLongLong();
    entry.failedReadCount = query.value(13).toLongLong();
    entry.freeBytes = optionalValue<double>(query.value(14));
    entry.ssdWearPercent = optionalValue<qint64>(query.value(15));
    entry.ssdWrittenBytes = optionalValue<double>(query.value(16));
    entry.levels = query.value(17).toString();
    return entry;
}

// SQLite's result codes for a full disk, a busy database and a damaged file.
QString reasonOf(const QSqlError &error)
{
    const int code = error.nativeErrorCode().toInt() & 0xFF;
    if (code == 13)
        return u"le disque est plein"_s;
    if (code == 5 || code == 6)
        return u"le journal est occupé par un autre programme"_s;
    if (code == 11 || code == 26)
        return u"le fichier du journal est endommagé"_s;
    if (code == 8)
        return u"le fichier du journal est en lecture seule"_s;
    if (code == 10)
        return u"erreur d’écriture sur le disque"_s;
    return u"erreur SQLite %1"_s.arg(error.nativeErrorCode());
}

// Runs `steps` in one write transaction on `query`'s connection: all of them or, when one
// fails, none. Gives the French reason of a failure, or an empty text.
QString inOneTransaction(QSqlQuery &query, const std::function<bool(QSqlQuery &)> &steps)
{
    if (!query.exec(u"BEGIN IMMEDIATE"_s))
        return reasonOf(query.lastError());
    if (steps(query) && query.exec(u"COMMIT"_s))
        return {};
    const QString reason = reasonOf(query.lastError());
    query.exec(u"ROLLBACK"_s);
    return reason;
}

} // namespace

JournalStore::JournalStore(const QString &directory, const QDate &today)
    : m_path(QDir(directory).filePath(u"journal.sqlite"_s)), m_connection(uniqueConnectionName())
{
    if (directory.isEmpty()) {
        m_problem = u"aucun dossier personnel : le journal ne peut pas être enregistré."_s;
        return;
    }
    QDir().mkpath(directory);
    const QFileInfo file(m_path);
    // A pipe, a device or a folder in its place is never opened: it could block or be
    // written over.
    if (file.exists() && !file.isFile()) {
        m_problem = u"« %1 » n’est pas un fichier ordinaire : le journal n’est pas ouvert."_s.arg(m_path);
        return;
    }
    if (!open())
        return;
    State state = check();
    if (state == State::damaged) {
        setAsideUnreadable(today);
        state = open() ? check() : State::unavailable;
    }
    if (state != State::usable) {
        m_problem = u"le journal « %1 » ne peut pas être ouvert : il est occupé ou illisible."_s.arg(m_path);
        return;
    }
    importFormerJournal();
}

JournalStore::~JournalStore()
{
    {
        QSqlDatabase database = QSqlDatabase::database(m_connection, false);
        if (database.isValid())
            database.close();
    }
    if (QSqlDatabase::contains(m_connection))
        QSqlDatabase::removeDatabase(m_connection);
}

bool JournalStore::open()
{
    QSqlDatabase database = QSqlDatabase::contains(m_connection) ? QSqlDatabase::database(m_connection, false)
                                                                  : QSqlDatabase::addDatabase(u"QSQLITE"_s, m_connection);
    if (!database.isValid()) {
        m_problem = u"le pilote SQLite de Qt manque : le journal n’est pas ouvert."_s;
        return false;
    }
    database.setDatabaseName(m_path);
    // Another process writing waits here rather than failing.
    database.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT=10000"_s);
    if (!database.open()) {
        m_problem = u"le journal « %1 » ne peut pas être ouvert : %2."_s.arg(m_path, reasonOf(database.lastError()));
        return false;
    }
    QFile::setPermissions(m_path, ownerOnly);
    QSqlQuery query(database);
    query.exec(u"PRAGMA journal_mode=WAL"_s);
    query.exec(u"PRAGMA synchronous=NORMAL"_s);
    return true;
}

// The database reads, and holds the journal's tables (made on first use). Only a file that
// SQLite finds damaged or not a database counts as unreadable: a busy one is not.
JournalStore::State JournalStore::check()
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    if (!query.exec(u"PRAGMA quick_check"_s)) {
        const int code = query.lastError().nativeErrorCode().toInt() & 0xFF;
        return code == 11 || code == 26 ? State::damaged : State::unavailable;
    }
    if (!query.next() || query.value(0).toString() != u"ok"_s)
        return State::damaged;
    query.finish();
    return createSchema() ? State::usable : State::unavailable;
}

bool JournalStore::createSchema()
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    return query.exec(u"CREATE TABLE IF NOT EXISTS entries (seq INTEGER PRIMARY KEY AUTOINCREMENT, id TEXT NOT NULL, "
                      "date_ms INTEGER NOT NULL, model_name TEXT NOT NULL, model_identifier TEXT NOT NULL, serial TEXT, "
                      "chip TEXT NOT NULL, memory TEXT NOT NULL, storage_bytes REAL, battery_health INTEGER, "
                      "battery_cycles INTEGER, headline TEXT NOT NULL, warnings INTEGER NOT NULL, faults INTEGER NOT NULL, "
                      "failed_reads INTEGER NOT NULL DEFAULT 0)"_s)
        && query.exec(u"CREATE INDEX IF NOT EXISTS entries_by_serial ON entries (serial)"_s)
        && query.exec(u"CREATE INDEX IF NOT EXISTS entries_by_date ON entries (date_ms)"_s)
        && query.exec(u"CREATE TABLE IF NOT EXISTS facts (name TEXT PRIMARY KEY, value TEXT)"_s)
        && addColumns(query);
}

// The figures kept since the journal tells what changed between two visits; a journal
// made before gains them, empty for its older entries.
bool JournalStore::addColumns(QSqlQuery &query)
{
    QSet<QString> present;
    if (!query.exec(u"PRAGMA table_info(entries)"_s))
        return false;
    while (query.next())
        present.insert(query.value(1).toString());
    const std::pair<const char *, const char *> columns[] = {
        {"free_bytes", "REAL"}, {"ssd_wear", "INTEGER"}, {"ssd_written", "REAL"}, {"levels", "TEXT NOT NULL DEFAULT ''"}};
    for (const auto &[name, type] : columns) {
        if (!present.contains(QString::fromLatin1(name))
            && !query.exec(u"ALTER TABLE entries ADD COLUMN %1 %2"_s.arg(QString::fromLatin1(name), QString::fromLatin1(type))))
            return false;
    }
    return true;
}

// "journal-illisible-2026-11-16.sqlite", then "-2", "-3"… on the same day.
void JournalStore::setAsideUnreadable(const QDate &today)
{
    QSqlDatabase::database(m_connection, false).close();
    const QFileInfo journal(m_path);
    const QString stem = u"journal-illisible-"_s + today.toString(u"yyyy-MM-dd"_s);
    QString target = journal.dir().filePath(stem + u".sqlite"_s);
    for (int suffix = 2; QFileInfo::exists(target); ++suffix)
        target = journal.dir().filePath(stem + u'-' + QString::number(suffix) + u".sqlite"_s);
    QFile::rename(m_path, target);
    for (const QString &side : {u"-wal"_s, u"-shm"_s})
        QFile::rename(m_path + side, target + side);
    m_notes << u"Le journal était illisible : il a été mis de côté sous « %1 » et un journal neuf le remplace."_s.arg(target);
}

void JournalStore::importFormerJournal()
{
    QSqlDatabase database = QSqlDatabase::database(m_connection, false);
    QSqlQuery query(database);
    if (!query.exec(u"SELECT value FROM facts WHERE name = 'former journal taken over'"_s) || query.next())
        return;
    const QString former = QFileInfo(m_path).dir().filePath(u"journal.json"_s);
    QFile file(former);
    const QFileInfo info(former);
    if (info.exists() && info.isFile() && file.open(QIODevice::ReadOnly)) {
        const HistoryFile::Import found = HistoryFile::importEntries(file.read(largestFormerJournal + 1));
        if (!query.exec(u"BEGIN IMMEDIATE"_s))
            return;
        // Oldest first, so that the newest gets the latest place.
        for (qsizetype i = found.entries.size() - 1; i >= 0; --i) {
            query.prepare(insertEntry);
            bindEntry(query, found.entries.at(i));
            if (!query.exec()) {
                query.exec(u"ROLLBACK"_s);
                m_notes << u"Les entrées de « %1 » n’ont pas pu être reprises : %2."_s.arg(former, reasonOf(query.lastError()));
                return;
            }
        }
        query.exec(u"INSERT INTO facts (name, value) VALUES ('former journal taken over', '1')"_s);
        if (!query.exec(u"COMMIT"_s)) {
            query.exec(u"ROLLBACK"_s);
            return;
        }
        if (!found.readable)
            m_notes << u"« %1 » est illisible : aucune entrée n’a été reprise ; le fichier est gardé tel quel."_s.arg(former);
        else
            m_notes << u"%1 entrée(s) reprise(s) de « %2 », gardé en copie."_s.arg(found.entries.size()).arg(former);
        for (qsizetype position : found.rejected)
            m_notes << u"Entrée n° %1 de « %2 » illisible : elle n’a pas été reprise."_s.arg(position + 1).arg(former);
        return;
    }
    query.exec(u"INSERT OR IGNORE INTO facts (name, value) VALUES ('former journal taken over', '0')"_s);
}

namespace {

QList<HistoryEntry> selectEntries(const QSqlDatabase &database)
{
    QList<HistoryEntry> found;
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(u"SELECT id, date_ms, model_name, model_identifier, serial, chip, memory, storage_bytes, "
                    "battery_health, battery_cycles, headline, warnings, faults, failed_reads, free_bytes, ssd_wear, ssd_written, "
                    "levels FROM entries ORDER BY seq DESC"_s))
        return found;
    while (query.next())
        found.append(entryFrom(query));
    return found;
}

} // namespace

QList<HistoryEntry> JournalStore::entries() const
{
    if (!m_problem.isEmpty())
        return {};
    return selectEntries(QSqlDatabase::database(m_connection, false));
}

QList<HistoryEntry> JournalStore::readEntries(const QString &path)
{
    static std::atomic<int> readers = 0;
    const QString connection = u"journal-reader-%1"_s.arg(readers++);
    QList<HistoryEntry> found;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, connection);
        database.setDatabaseName(path);
        database.setConnectOptions(u"QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=10000"_s);
        if (database.open())
            found = selectEntries(database);
        database.close();
    }
    QSqlDatabase::removeDatabase(connection);
    return found;
}

JournalStore::Recorded JournalStore::record(const HistoryEntry &entry, qint64 windowMSecs)
{
    if (!m_problem.isEmpty())
        return {std::nullopt, m_problem};
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    const auto failed = [&query](const QSqlQuery &at) {
        const QString reason = reasonOf(at.lastError());
        query.exec(u"ROLLBACK"_s);
        return Recorded{std::nullopt, reason};
    };
    // The recent entry is looked for and replaced in one transaction: two processes
    // recording the same Mac make one entry.
    if (!query.exec(u"BEGIN IMMEDIATE"_s))
        return {std::nullopt, reasonOf(query.lastError())};
    QSqlQuery recent(QSqlDatabase::database(m_connection, false));
    recent.prepare(u"SELECT seq, id FROM entries WHERE serial IS :serial AND :date - date_ms < :window "
                   "ORDER BY seq DESC LIMIT 1"_s);
    recent.bindValue(u":serial"_s, optional(entry.serialNumber));
    recent.bindValue(u":date"_s, entry.date.toMSecsSinceEpoch());
    recent.bindValue(u":window"_s, windowMSecs);
    if (!recent.exec())
        return failed(recent);
    Recorded recorded;
    QSqlQuery change(QSqlDatabase::database(m_connection, false));
    if (recent.next()) {
        recorded.replaced = QUuid::fromString(recent.value(1).toString());
        change.prepare(u"UPDATE entries SET id = :id, date_ms = :date, model_name = :modelName, model_identifier = "
                       ":modelIdentifier, serial = :serial, chip = :chip, memory = :memory, storage_bytes = :storage, "
                       "battery_health = :health, battery_cycles = :cycles, headline = :headline, warnings = :warnings, "
                       "faults = :faults, failed_reads = :failedReads, free_bytes = :free, ssd_wear = :wear, ssd_written = :written, "
                       "levels = :levels WHERE seq = :seq"_s);
        change.bindValue(u":seq"_s, recent.value(0));
    } else {
        change.prepare(insertEntry);
    }
    recent.finish();
    bindEntry(change, entry);
    if (!change.exec())
        return failed(change);
    if (!query.exec(u"COMMIT"_s))
        return failed(query);
    return recorded;
}

// Removed rows go to tables of this connection's temporary schema, which no other process
// sees and which disappear with the connection: whole, with their sequence numbers, so that
// they come back where they stood.
bool JournalStore::keepRemovalsAside(QSqlQuery &query)
{
    return query.exec(u"CREATE TEMP TABLE IF NOT EXISTS removed AS SELECT * FROM entries WHERE 0"_s)
        && query.exec(u"CREATE TEMP TABLE IF NOT EXISTS removal (seq INTEGER PRIMARY KEY, number INTEGER NOT NULL)"_s)
        && query.exec(u"CREATE TEMP TABLE IF NOT EXISTS removing (id TEXT PRIMARY KEY)"_s);
}

// The identifiers go to a temporary table first, so that each statement below reads the
// entries once, whatever their number.
QString JournalStore::remove(const QSet<QUuid> &ids)
{
    if (!m_problem.isEmpty())
        return m_problem;
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    if (!keepRemovalsAside(query))
        return reasonOf(query.lastError());
    const int number = m_removals + 1;
    const QString failure = inOneTransaction(query, [&ids, number](QSqlQuery &step) {
        step.prepare(u"INSERT OR IGNORE INTO temp.removing (id) VALUES (:id)"_s);
        for (const QUuid &id : ids) {
            step.bindValue(u":id"_s, id.toString(QUuid::WithoutBraces).toUpper());
            if (!step.exec())
                return false;
        }
        const QString ofRemoving = u" WHERE id IN (SELECT id FROM temp.removing)"_s;
        step.prepare(u"INSERT INTO temp.removal (seq, number) SELECT seq, :number FROM entries"_s + ofRemoving);
        step.bindValue(u":number"_s, number);
        return step.exec() && step.exec(u"INSERT INTO temp.removed SELECT * FROM entries"_s + ofRemoving)
            && step.exec(u"DELETE FROM entries"_s + ofRemoving) && step.exec(u"DELETE FROM temp.removing"_s);
    });
    if (failure.isEmpty())
        m_removals = number;
    return failure;
}

QString JournalStore::restoreLastRemoval()
{
    if (!m_problem.isEmpty() || m_removals == 0)
        return m_problem;
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    const QString ofLast = u" WHERE seq IN (SELECT seq FROM temp.removal WHERE number = :number)"_s;
    const QString failure = inOneTransaction(query, [this, &ofLast](QSqlQuery &step) {
        return std::ranges::all_of(
            std::initializer_list<QString> { u"INSERT OR IGNORE INTO main.entries SELECT * FROM temp.removed"_s + ofLast,
              u"DELETE FROM temp.removed"_s + ofLast, u"DELETE FROM temp.removal WHERE number = :number"_s },
            [&step, this](const QString &statement) {
                step.prepare(statement);
                step.bindValue(u":number"_s, m_removals);
                return step.exec();
            });
    });
    if (failure.isEmpty())
        --m_removals;
    return failure;
}
