#include "journal_bench.h"

#include "bench_load.h"

#include "records/history.h"

#include <QFile>
#include <QFileInfo>
#include <QElapsedTimer>
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

} // namespace

void writeJournal(const QString &directory, const Platform &platform, int count)
{
    writeFullJournal(directory, fullLoad(platform), platform.clock->now(), count);
    const History takenOver(platform.clock, directory);
    if (takenOver.count() != count)
        qFatal("journal de %d entrées au lieu de %d", takenOver.count(), count);
}

void benchJournal(BenchTable &table, const Platform &platform, int runs)
{
    // The former journal file is taken over once, into the database, when it first opens.
    constexpr int entries = 100000;
    const Loaded loaded = fullLoad(platform);
    QTemporaryDir directory;
    const QDateTime newest = platform.clock->now();
    writeFullJournal(directory.path(), loaded, newest, entries);

    table.heading(u"5. Journal à %1 entrées (journal.sqlite)"_s.arg(entries));
    QElapsedTimer takingOver;
    takingOver.start();
    {
        History first(platform.clock, directory.path());
        if (first.count() != entries)
            qFatal("journal de %d entrées au lieu de %d", first.count(), entries);
    }
    table.add({ u"reprise de journal.json (une fois)"_s, Samples{QList<double>{double(takingOver.nsecsElapsed()) / 1e6}}, u"ms"_s });
    Samples opening = timeRuns(1, std::max(3, runs / 10), [&] {
        History history(platform.clock, directory.path());
        if (history.count() != entries)
            qFatal("journal de %d entrées au lieu de %d", history.count(), entries);
    });
    table.add({ u"lecture au démarrage (History créé sur la base)"_s, opening, u"ms"_s });

    // A new check, over an hour after the newest: one transaction.
    History adding(std::make_shared<SteppingClock>(newest.addSecs(7200), 7200), directory.path());
    Samples added = timeRuns(
        runs / 10, runs, [&] { adding.record(loaded.hardware, loaded.battery, loaded.volumes, loaded.report); });
    if (adding.count() <= entries)
        qFatal("le journal compte %d entrées", adding.count());
    table.add({ u"record d’une nouvelle machine"_s, added, u"ms"_s, 20.0 });

    // The same machine within the hour: its line is replaced where it stands.
    History replacing(
        std::make_shared<SteppingClock>(newest.addSecs(7200 * qint64(2 * runs + 10)), 0), directory.path());
    Samples replaced = timeRuns(
        runs / 10, runs, [&] { replacing.record(loaded.hardware, loaded.battery, loaded.volumes, loaded.report); });
    table.add({ u"record de la même machine dans l’heure"_s, replaced, u"ms"_s, 20.0 });

    Samples csv = timeRuns(1, std::max(3, runs / 10), [&] { (void)replacing.csv(); });
    table.add({ u"csv() de tout le journal"_s, csv, u"ms"_s });

    // The journal screen's search for one serial number, then back to the whole list.
    Samples searching = timeRuns(2, runs, [&] {
        replacing.search(u"C02BENCH54321"_s, QString(), QString(), QString());
        if (replacing.selectedCount() != 1)
            qFatal("la recherche trouve %d entrées", replacing.selectedCount());
        replacing.search(QString(), QString(), QString(), QString());
    });
    table.add({ u"recherche d’un numéro de série (et retour à tout le journal)"_s, searching, u"ms"_s });

    // The same search in a journal of 10 000 entries.
    QTemporaryDir smaller;
    writeJournal(smaller.path(), platform, 10000);
    History tenThousand(platform.clock, smaller.path());
    Samples searchingTen = timeRuns(2, runs, [&] {
        tenThousand.search(u"C02BENCH4321"_s, QString(), QString(), QString());
        if (tenThousand.selectedCount() != 1)
            qFatal("la recherche trouve %d entrées", tenThousand.selectedCount());
        tenThousand.search(QString(), QString(), QString(), QString());
    });
    table.add({ u"la même recherche parmi 10 000 entrées"_s, searchingTen, u"ms"_s, 50.0 });

    // "Tout effacer" of 10 000 entries, then ⌘Z, which puts them back and reads the journal again.
    Samples clearing;
    Samples undoing;
    for (int i = 0; i < std::max(3, runs / 10); ++i) {
        clearing.values += timeRuns(0, 1, [&] { tenThousand.clear(); }).values;
        undoing.values += timeRuns(0, 1, [&] { tenThousand.undoRemoval(); }).values;
        if (tenThousand.count() != 10000)
            qFatal("l’annulation remet %d entrées", tenThousand.count());
    }
    table.add({ u"« Tout effacer » de 10 000 entrées"_s, clearing, u"ms"_s, 100.0 });
    table.add({ u"⌘Z : les 10 000 entrées remises et le journal relu"_s, undoing, u"ms"_s, 100.0 });
}
