#include "journal_bench.h"

#include "bench_load.h"

#include "records/history.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

// A clock that moves on by `step` seconds at every reading, so that each record of the
// same machine is a new check (step over an hour) or replaces the last one (step zero).
class SteppingClock final : public Clock
{
public:
    SteppingClock(QDateTime start, qint64 stepSecs) : m_next(std::move(start)), m_stepSecs(stepSecs) { }

    QDateTime now() const override
    {
        const QDateTime now = m_next;
        m_next = m_next.addSecs(m_stepSecs);
        return now;
    }

private:
    mutable QDateTime m_next;
    qint64 m_stepSecs;
};

// A journal file of `count` checks of the loaded machine, two hours apart, newest first.
void writeFullJournal(const QString &directory, const Loaded &loaded, const QDateTime &newest, int count)
{
    QTemporaryDir scratch;
    History one(std::make_shared<SteppingClock>(newest, 0), scratch.path());
    one.record(loaded.hardware, loaded.battery, loaded.volumes, loaded.report);
    const HistoryEntry model = one.entries().constFirst();
    QList<HistoryEntry> entries;
    for (int i = 0; i < count; ++i) {
        HistoryEntry entry = model;
        entry.id = QUuid::createUuid();
        entry.date = newest.addSecs(-7200 * qint64(i));
        entry.serialNumber = u"C02BENCH%1"_s.arg(i, 4, 10, QChar(u'0'));
        entries.append(entry);
    }
    QFile file(directory + u"/journal.json"_s);
    if (file.open(QIODevice::WriteOnly))
        file.write(HistoryFile::encode(entries));
}

// The same write as the journal's save: a temporary file renamed over the old one.
void writeAtomically(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(bytes);
        file.commit();
    }
}

} // namespace

void benchJournal(BenchTable &table, const Platform &platform, int runs)
{
    constexpr int entries = History::maximumEntries;
    const Loaded loaded = fullLoad(platform);
    QTemporaryDir directory;
    const QDateTime newest = platform.clock->now();
    writeFullJournal(directory.path(), loaded, newest, entries);
    const qint64 fileBytes = QFileInfo(directory.path() + u"/journal.json"_s).size();

    table.heading(u"5. Journal à %1 entrées (journal.json de %2 Ko)"_s.arg(entries).arg(fileBytes / 1024));
    Samples opening = timeRuns(runs / 10, runs, [&] {
        History history(platform.clock, directory.path());
        if (history.count() != entries)
            qFatal("journal de %d entrées au lieu de %d", history.count(), entries);
    });
    table.add({ u"lecture au démarrage (History créé sur le fichier)"_s, opening, u"ms"_s, 10.0 });

    // A new check, over an hour after the newest: inserted first, the oldest pushed out.
    History adding(std::make_shared<SteppingClock>(newest.addSecs(7200), 7200), directory.path());
    Samples added = timeRuns(
        runs / 10, runs, [&] { adding.record(loaded.hardware, loaded.battery, loaded.volumes, loaded.report); });
    if (adding.count() != entries)
        qFatal("le journal compte %d entrées", adding.count());
    table.add({ u"record d’une nouvelle machine + enregistrement"_s, added, u"ms"_s, 10.0 });

    // The same machine within the hour: its line is replaced where it stands.
    // Dated after every entry the previous step added.
    History replacing(
        std::make_shared<SteppingClock>(newest.addSecs(7200 * qint64(2 * runs + 10)), 0), directory.path());
    Samples replaced = timeRuns(
        runs / 10, runs, [&] { replacing.record(loaded.hardware, loaded.battery, loaded.volumes, loaded.report); });
    table.add({ u"record de la même machine dans l’heure + enregistrement"_s, replaced, u"ms"_s, 10.0 });

    Samples csv = timeRuns(runs / 10, runs, [&] { (void)replacing.csv(); });
    table.add({ u"csv()"_s, csv, u"ms"_s, 10.0 });

    // Where a record's time goes: the JSON text of the list, and its atomic write.
    const QList<HistoryEntry> full = replacing.entries();
    Samples encoding = timeRuns(runs / 10, runs, [&] { (void)HistoryFile::encode(full); });
    table.add({ u"  dont HistoryFile::encode des 500 entrées"_s, encoding, u"ms"_s });
    const QByteArray bytes = HistoryFile::encode(full);
    const QString scratch = directory.filePath(u"scratch.json"_s);
    Samples writing = timeRuns(runs / 10, runs, [&] { writeAtomically(scratch, bytes); });
    table.add({ u"  dont écriture atomique de ces octets (QSaveFile)"_s, writing, u"ms"_s });
    Samples decoding = timeRuns(runs / 10, runs, [&] { (void)HistoryFile::decode(bytes); });
    table.add({ u"  dont HistoryFile::decode (part de la lecture)"_s, decoding, u"ms"_s });
}
