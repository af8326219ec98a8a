#include "common/test_main.h"
#include "records/history.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThreadPool>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(std::optional<QString>)

namespace {

const QDateTime morning(QDate(2026, 11, 16), QTime(8, 5, 7), Qt::UTC);

// One refresh: the serial number of the Mac and the minutes after `morning`.
using Check = std::pair<std::optional<QString>, int>;
using Checks = QList<Check>;

class SettableClock : public Clock
{
public:
    QDateTime now() const override { return moment; }
    QDateTime moment = morning;
};

HardwareInfo machine(const std::optional<QString> &serial)
{
    return HardwareInfo{.modelName = u"MacBook Pro"_s, .modelIdentifier = u"MacBookPro18,3"_s,
                        .chip = u"Apple M1 Pro"_s, .memory = u"16 GB"_s, .serialNumber = serial};
}

DiagnosticsReport reportOf(const QList<CheckStatus> &statuses)
{
    DiagnosticsReport report;
    for (CheckStatus status : statuses)
        report.checks.append(HardwareCheck{.title = u"Batterie"_s, .status = status});
    return report;
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(absent)");
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// The journal newest first, one "serial@minutes after morning" per line; "-" for no serial.
QStringList lines(const History &history)
{
    QStringList out;
    for (const HistoryEntry &entry : history.entries())
        out << entry.serialNumber.value_or(u"-"_s) + u'@' + QString::number(morning.secsTo(entry.date) / 60);
    return out;
}

} // namespace

// The journal of checked machines: when a check replaces an older line, the journal's
// file, the former journal taken over, and the spreadsheet export.
class TestHistory : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<SettableClock> m_clock;

    QString path(const QString &name) const { return m_folder->filePath(name); }
    std::unique_ptr<History> open() { return std::make_unique<History>(m_clock, m_folder->path()); }
    bool record(History &history, const Check &check)
    {
        m_clock->moment = morning.addSecs(60 * check.second);
        return history.record(machine(check.first), std::nullopt, {}, reportOf({CheckStatus::ok}));
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_clock = std::make_shared<SettableClock>();
    }

    void recordReplacesOrAdds_data()
    {
        QTest::addColumn<Checks>("checks");
        QTest::addColumn<QStringList>("journal");
        const std::optional<QString> none;
        QTest::newRow("59 min apart: replaced") << Checks{{u"A"_s, 0}, {u"A"_s, 59}} << QStringList{u"A@59"_s};
        QTest::newRow("60 min apart: added") << Checks{{u"A"_s, 0}, {u"A"_s, 60}} << QStringList{u"A@60"_s, u"A@0"_s};
        QTest::newRow("clock set back: replaced") << Checks{{u"A"_s, 0}, {u"A"_s, -10}} << QStringList{u"A@-10"_s};
        QTest::newRow("serial then none: added") << Checks{{u"A"_s, 0}, {none, 5}} << QStringList{u"-@5"_s, u"A@0"_s};
        QTest::newRow("other serial: added") << Checks{{u"A"_s, 0}, {u"B"_s, 5}} << QStringList{u"B@5"_s, u"A@0"_s};
        QTest::newRow("A, B, A: A replaced where it stands")
            << Checks{{u"A"_s, 0}, {u"B"_s, 1}, {u"A"_s, 2}} << QStringList{u"B@1"_s, u"A@2"_s};
    }

    void recordReplacesOrAdds()
    {
        QFETCH(Checks, checks);
        QFETCH(QStringList, journal);
        auto history = open();
        QAbstractItemModelTester tester(history.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy inserted(history.get(), &QAbstractItemModel::rowsInserted);
        QSignalSpy changed(history.get(), &QAbstractItemModel::dataChanged);
        QSet<QUuid> ids;
        for (const Check &check : checks) {
            record(*history, check);
            for (const HistoryEntry &entry : history->entries())
                ids.insert(entry.id);
        }
        QCOMPARE(lines(*history), journal);
        QCOMPARE(ids.size(), checks.size()); // a replacing entry has its own identifier
        QCOMPARE(inserted.size(), journal.size());
        QCOMPARE(changed.size(), checks.size() - journal.size());
    }

    // Read on a thread while the window opens: what changed meanwhile (a machine checked
    // again, one removed, a new one) ends as a new reading of the file gives it.
    void readInBackground()
    {
        auto first = open();
        for (const Check &check : Checks{{u"A"_s, 0}, {u"B"_s, 1}, {u"C"_s, 2}})
            record(*first, check);
        const QString b = first->entries().at(1).id.toString();
        History reading(m_clock, m_folder->path(), nullptr, History::Reading::inBackground);
        QSignalSpy done(&reading, &History::readingChanged);
        QVERIFY(reading.isReading());
        // The file is read before the changes below; the result waits for the event loop.
        QThreadPool::globalInstance()->waitForDone();
        record(reading, {u"A"_s, 30});
        record(reading, {u"D"_s, 31});
        reading.removeById(b);
        QVERIFY(done.wait(10000));
        QVERIFY(!reading.isReading());
        QCOMPARE(lines(reading), (QStringList{u"D@31"_s, u"C@2"_s, u"A@30"_s}));
        QCOMPARE(lines(*open()), lines(reading));
    }

    // Nothing is dropped: the list holds every entry, the newest first.
    void journalKeepsEveryEntry()
    {
        QList<HistoryEntry> former;
        for (int i = 599; i >= 1; --i)
            former.append(HistoryEntry{.date = morning, .serialNumber = u"S%1"_s.arg(i)});
        QVERIFY(writeFile(path(u"journal.json"_s), HistoryFile::encode(former)));
        auto history = open();
        QVERIFY(record(*history, {u"S600"_s, 0}));
        QCOMPARE(history->rowCount(), 600);
        QCOMPARE(lines(*open()).mid(0, 2), (QStringList{u"S600@0"_s, u"S599@0"_s}));
    }

    // What is recorded reads back whole from the file, private to its owner; nothing is
    // recorded without hardware, without report, or with a date outside 2001–2200, and
    // each time the journal says why.
    void recordedEntriesReadBack()
    {
        auto history = open();
        const BatteryInfo battery{.cycleCount = 123, .healthPercent = 91};
        const QList<StorageVolume> volumes{{.totalBytes = 2e12}, {.totalBytes = 494384795648, .isInternal = true},
                                           {.totalBytes = 1e12, .isInternal = true}};
        const DiagnosticsReport report = reportOf({CheckStatus::attention, CheckStatus::alerte, CheckStatus::alerte});
        QVERIFY(!history->record(std::nullopt, battery, volumes, report));
        QVERIFY(!history->record(machine(u"C02XK1ABCD"_s), battery, volumes, std::nullopt));
        m_clock->moment = QDateTime(QDate(9999, 12, 31), QTime(12, 0), Qt::UTC);
        QVERIFY(!history->record(machine(u"C02XK1ABCD"_s), battery, volumes, report));
        QVERIFY(history->problem().contains(u"2001 à 2200"_s));
        QCOMPARE(history->count(), 0);
        m_clock->moment = morning.addMSecs(250);
        QVERIFY(history->record(machine(u"C02XK1ABCD"_s), battery, volumes, report));
        QVERIFY(history->problem().isEmpty());
        m_clock->moment = morning.addSecs(7200);
        QVERIFY(history->record(machine(std::nullopt), std::nullopt, {{.totalBytes = 6e10}, {.totalBytes = 2e12}}, reportOf({})));
        const QList<HistoryEntry> reread = open()->entries();
        QCOMPARE(reread, history->entries());
        // The first internal volume, though not first; without one, the first volume.
        QCOMPARE(reread.at(1).storageBytes, std::optional<double>(494384795648));
        QCOMPARE(reread.at(0).storageBytes, std::optional<double>(6e10));
        QCOMPARE(reread.at(1).headline, u"2 anomalies · 1 point à surveiller"_s);
        QCOMPARE(reread.at(1).date, morning.addMSecs(250));
        QCOMPARE(QFile::permissions(history->filePath()) & 0x00FF, QFileDevice::Permissions()); // group, others
    }

    // The former journal is taken over once, entry by entry: one wrong entry is left out
    // and said, the others kept; the file stays as it was.
    void formerJournalTakenOver_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<int>("kept");
        QTest::addColumn<QString>("said");
        const QByteArray required = "\"faultCount\":0,\"warningCount\":0,\"headline\":\"Aucun\",\"memory\":\"8 GB\","
                                    "\"chip\":\"M1\",\"modelIdentifier\":\"iMac21,1\",\"modelName\":\"iMac\","
                                    "\"date\":0.5";
        const auto entry = [](const QByteArray &members) -> QByteArray {
            return "{\"id\":\"" + QUuid::createUuid().toString(QUuid::WithoutBraces).toUtf8() + "\"," + members + "}";
        };
        const auto array = [](const QByteArrayList &entries) -> QByteArray { return '[' + entries.join(',') + ']'; };
        QTest::newRow("keys in any order, optionals as null")
            << array({entry(required), entry(required + ",\"serialNumber\":null,\"batteryHealth\":null")}) << 2
            << u"2 entrée(s) reprise(s)"_s;
        QTest::newRow("one entry with a wrong field among three")
            << array({entry(required), entry(required + ",\"batteryHealth\":91.5"), entry(required)}) << 2
            << u"Entrée n° 2 de"_s;
        QTest::newRow("storage of 2^63 bytes") << array({entry(required + ",\"storageBytes\":9223372036854775808")})
                                                << 0 << u"Entrée n° 1 de"_s;
        QTest::newRow("no array at all") << QByteArray("{}") << 0 << u"est illisible"_s;
    }

    void formerJournalTakenOver()
    {
        QFETCH(QByteArray, stored);
        QFETCH(int, kept);
        QFETCH(QString, said);
        QVERIFY(writeFile(path(u"journal.json"_s), stored));
        auto history = open();
        QCOMPARE(history->count(), kept);
        QVERIFY2(history->notes().join(u'\n').contains(said), qPrintable(history->notes().join(u'\n')));
        QCOMPARE(fileBytes(path(u"journal.json"_s)), stored);
        QCOMPARE(open()->count(), kept); // taken over once only
        QVERIFY(open()->notes().isEmpty());
    }

    // A damaged journal is set aside and said, never written over, not even by a second
    // damaged journal on the same day; a pipe in its place is not opened.
    void unreadableJournalIsSetAside()
    {
        QVERIFY(writeFile(path(u"journal.sqlite"_s), QByteArray(4096, 'x')));
        auto history = open();
        QVERIFY(history->notes().join(u'\n').contains(u"journal-illisible-2026-11-16.sqlite"_s));
        QVERIFY(record(*history, {u"A"_s, 0}));
        history.reset();
        QVERIFY(writeFile(path(u"journal.sqlite"_s), "SQLite format 3"));
        QVERIFY(record(*open(), {u"B"_s, 0}));
        QCOMPARE(fileBytes(path(u"journal-illisible-2026-11-16.sqlite"_s)), QByteArray(4096, 'x'));
        QCOMPARE(fileBytes(path(u"journal-illisible-2026-11-16-2.sqlite"_s)), QByteArray("SQLite format 3"));
        QCOMPARE(lines(*open()), QStringList{u"B@0"_s});

        QTemporaryDir piped;
        QVERIFY(::mkfifo(QFile::encodeName(piped.filePath(u"journal.sqlite"_s)).constData(), 0600) == 0);
        History onPipe(m_clock, piped.path());
        QVERIFY(onPipe.problem().contains(u"n’est pas un fichier ordinaire"_s));
        QVERIFY(!record(onPipe, {u"C"_s, 0}));
    }

    void removeAndClear()
    {
        auto history = open();
        QAbstractItemModelTester tester(history.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        for (const QString &serial : {u"A"_s, u"B"_s, u"C"_s})
            record(*history, {serial, 0});
        history->remove(history->entries().at(1));
        QCOMPARE(lines(*open()), (QStringList{u"C@0"_s, u"A@0"_s}));
        history->removeById(history->data(history->index(0), History::IdRole).toString());
        QCOMPARE(lines(*history), QStringList{u"A@0"_s});
        history->clear();
        QCOMPARE(history->count(), 0);
        QCOMPARE(open()->count(), 0);
        // ⌘Z puts back the last removal first, each entry in its place.
        QCOMPARE(history->undoText(), u"Annuler l’effacement"_s);
        history->undoRemoval();
        QCOMPARE(lines(*history), QStringList{u"A@0"_s});
        QCOMPARE(history->undoText(), u"Annuler le retrait"_s);
        history->undoRemoval();
        history->undoRemoval();
        QCOMPARE(lines(*history), (QStringList{u"C@0"_s, u"B@0"_s, u"A@0"_s}));
        QCOMPARE(history->undoText(), QString());
    }

    // Two journals on one folder stand for two processes: each change goes to the file at
    // once, a journal clears only what it showed and undoes its own removals while it is open.
    // Steps: "<journal> opens", "<journal> records <serial> <minutes>", "<journal> removes
    // <serial>", "<journal> clears", "<journal> undoes".
    void journalsSharingTheFile_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QStringList>("journal");
        QTest::newRow("recorded by both: both kept")
            << QStringList{u"1 opens"_s, u"2 opens"_s, u"1 records A 0"_s, u"2 records B 5"_s}
            << QStringList{u"B@5"_s, u"A@0"_s};
        QTest::newRow("same Mac by both within the hour: replaced where it stands")
            << QStringList{u"1 opens"_s, u"2 opens"_s, u"1 records A 0"_s, u"1 records B 1"_s, u"2 records A 5"_s}
            << QStringList{u"B@1"_s, u"A@5"_s};
        QTest::newRow("removed here after a record there")
            << QStringList{u"1 opens"_s, u"1 records A 0"_s, u"1 records B 1"_s, u"2 opens"_s,
                           u"2 records C 2"_s, u"1 removes A"_s}
            << QStringList{u"C@2"_s, u"B@1"_s};
        QTest::newRow("cleared here keeps what only the other saw")
            << QStringList{u"1 opens"_s, u"1 records A 0"_s, u"2 opens"_s, u"2 records B 1"_s, u"1 clears"_s}
            << QStringList{u"B@1"_s};
        QTest::newRow("undone after a record there: back in its place")
            << QStringList{u"1 opens"_s, u"1 records A 0"_s, u"1 records B 1"_s, u"1 records C 2"_s, u"1 removes B"_s,
                           u"2 opens"_s, u"2 records D 3"_s, u"1 undoes"_s}
            << QStringList{u"D@3"_s, u"C@2"_s, u"B@1"_s, u"A@0"_s};
        QTest::newRow("undo gone once the journal is closed")
            << QStringList{u"1 opens"_s, u"1 records A 0"_s, u"1 clears"_s, u"1 opens"_s, u"1 undoes"_s}
            << QStringList{};
        QTest::newRow("undone here only, not by the other")
            << QStringList{u"1 opens"_s, u"2 opens"_s, u"1 records A 0"_s, u"1 clears"_s, u"2 undoes"_s}
            << QStringList{};
    }

    void journalsSharingTheFile()
    {
        QFETCH(QStringList, steps);
        QFETCH(QStringList, journal);
        std::array<std::unique_ptr<History>, 2> journals;
        for (const QString &step : std::as_const(steps)) {
            const QStringList words = step.split(u' ');
            const qsizetype which = words.at(0).toInt() - 1;
            History *history = journals.at(which).get();
            if (words.at(1) == u"opens"_s)
                journals.at(which) = open();
            else if (words.at(1) == u"records"_s)
                record(*history, {words.at(2), words.at(3).toInt()});
            else if (words.at(1) == u"removes"_s)
                history->remove(*std::find_if(history->entries().cbegin(), history->entries().cend(),
                                              [&](const HistoryEntry &entry) { return entry.serialNumber == words.at(2); }));
            else if (words.at(1) == u"undoes"_s)
                history->undoRemoval();
            else
                history->clear();
        }
        QCOMPARE(lines(*open()), journal);
    }

    // The search selects by serial number or model, level and dates; the spreadsheet and
    // "Tout effacer" follow the selection.
    void searchSelects_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("level");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QStringList>("selected");
        // A: correct on day 0; C02B: a warning on day 1; C: a fault on day 2 (Paris time).
        QTest::newRow("everything") << QString() << u"tout"_s << QString() << QString()
                                    << QStringList{u"C@2880"_s, u"C02B@1440"_s, u"A@0"_s};
        QTest::newRow("part of a serial, any case") << u"c02b"_s << QString() << QString() << QString()
                                                    << QStringList{u"C02B@1440"_s};
        QTest::newRow("model identifier") << u"Mac14"_s << QString() << QString() << QString()
                                          << QStringList{u"C@2880"_s};
        QTest::newRow("anomalies") << QString() << u"anomalie"_s << QString() << QString() << QStringList{u"C@2880"_s};
        QTest::newRow("from the second day") << QString() << QString() << u"2026-11-17"_s << QString()
                                             << QStringList{u"C@2880"_s, u"C02B@1440"_s};
        QTest::newRow("up to the second day") << QString() << QString() << QString() << u"2026-11-17"_s
                                              << QStringList{u"C02B@1440"_s, u"A@0"_s};
    }

    void searchSelects()
    {
        QFETCH(QString, text);
        QFETCH(QString, level);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QStringList, selected);
        auto history = open();
        QAbstractItemModelTester tester(history.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        m_clock->moment = morning;
        history->record(machine(u"A"_s), std::nullopt, {}, reportOf({CheckStatus::ok}));
        m_clock->moment = morning.addDays(1);
        history->record(machine(u"C02B"_s), std::nullopt, {}, reportOf({CheckStatus::attention}));
        m_clock->moment = morning.addDays(2);
        HardwareInfo studio = machine(u"C"_s);
        studio.modelIdentifier = u"Mac14,13"_s;
        history->record(studio, std::nullopt, {}, reportOf({CheckStatus::alerte}));
        history->search(text, level, from, to);
        const auto shown = [&] {
            QStringList out;
            for (int row = 0; row < history->rowCount(); ++row) {
                const QModelIndex index = history->index(row);
                out << history->data(index, History::SerialNumberRole).toString() + u'@'
                        + QString::number(morning.secsTo(history->data(index, History::DateRole).toDateTime()) / 60);
            }
            return out;
        };
        QCOMPARE(shown(), selected);
        QCOMPARE(history->selectedCount(), selected.size());
        QCOMPARE(history->csv().count(u'\n'), selected.size() + 1);
        history->clear();
        QCOMPARE(history->count(), 3 - int(selected.size()));
    }

    // A Mac checked again a week later: what changed since, in its journal entry and its
    // spreadsheet row; never for a check within the hour or a Mac without a serial number.
    void changesSincePreviousVisit_data()
    {
        QTest::addColumn<int>("days");
        QTest::addColumn<std::optional<QString>>("serial");
        QTest::addColumn<QString>("changes"); // empty: none
        QTest::newRow("a week later") << 7 << std::optional(u"C02X"_s)
            << u"Depuis le 16 novembre 2026 : +120 cycles, santé \u22124 points, usure du SSD +2 points, +1,2\u00A0To écrits, "
               "20\u00A0Go libres de moins ; Batterie : Correct → À surveiller."_s;
        QTest::newRow("within the hour: the same visit") << 0 << std::optional(u"C02X"_s) << QString();
        QTest::newRow("no serial number") << 7 << std::optional<QString>() << QString();
    }

    void changesSincePreviousVisit()
    {
        QFETCH(int, days);
        QFETCH(std::optional<QString>, serial);
        const auto visit = [&](qint64 cycles, qint64 health, double free, int wear, double written, CheckStatus level) {
            StorageVolume disk{.totalBytes = 1e12, .freeBytes = free, .isInternal = true};
            disk.wear = DriveWear{.percentageUsed = wear, .bytesWritten = written};
            DiagnosticsReport report;
            report.checks = {HardwareCheck{.title = u"Batterie"_s, .status = level}};
            HardwareInfo hardware = machine(serial);
            return open()->record(hardware, BatteryInfo{.cycleCount = cycles, .healthPercent = health}, {disk}, report);
        };
        QVERIFY(visit(100, 90, 200e9, 3, 12.4e12, CheckStatus::ok));
        m_clock->moment = morning.addDays(days).addSecs(60);
        QVERIFY(visit(220, 86, 180e9, 5, 13.6e12, CheckStatus::attention));
        auto history = open();
        QFETCH(QString, changes);
        QCOMPARE(history->changesSincePreviousVisit(history->entries().first()).value_or(QString()), changes);
        QVERIFY(history->csv().contains(u";"_s + HistoryCsv::escapedCell(changes) + u"\n"_s));
    }

    // No cell runs as a formula in a spreadsheet, and a lone carriage return is quoted.
    void spreadsheetSafeCells_data()
    {
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("written");
        QTest::newRow("formula") << u"=HYPERLINK(\"x\")"_s << u"\"'=HYPERLINK(\"\"x\"\")\""_s;
        QTest::newRow("plus") << u"+33 1 23"_s << u"'+33 1 23"_s;
        QTest::newRow("carriage return first") << u"\rx"_s << u"\"'\rx\""_s;
        QTest::newRow("negative number") << u"-12"_s << u"-12"_s;
        QTest::newRow("equals inside") << u"a=b"_s << u"a=b"_s;
        QTest::newRow("lone carriage return") << u"8\rGB"_s << u"\"8\rGB\""_s;
    }

    void spreadsheetSafeCells()
    {
        QFETCH(QString, cell);
        QTEST(HistoryCsv::escapedCell(cell), "written");
    }

    // The twelve columns in their order, a UTC date, empty cells for absent values; a cell with
    // a semicolon, a double quote or a line feed is quoted, its quotes doubled. The exported
    // file is private to its owner.
    void csvExport()
    {
        const QString header = u"Date;Modèle;Identifiant;Numéro de série;Puce;Mémoire;Stockage;Capacité maximale;"
                               "Cycles;Verdict;À surveiller;Anomalies;Évolution\n"_s;
        QCOMPARE(HistoryCsv::text({}), header);
        const QList<HistoryEntry> entries{
            {.date = QDateTime(QDate(2026, 11, 16), QTime(10, 30), Qt::OffsetFromUTC, 3600),
             .modelName = u"Mac mini; M2"_s, .modelIdentifier = u"Mac14,3"_s, .chip = u"Apple\nM2"_s,
             .memory = u"8\rGB"_s, .headline = u"Le \"Studio\""_s, .warningCount = 1, .faultCount = 2},
            {.date = morning.addMSecs(999), .modelName = u"MacBook Pro"_s, .modelIdentifier = u"MacBookPro18,3"_s,
             .serialNumber = u"C02XK1ABCD"_s, .chip = u"Apple M1 Pro"_s, .memory = u"16 GB"_s,
             .storageBytes = 494384795648, .batteryHealth = 91, .batteryCycles = 123, .headline = u"1 point"_s,
             .warningCount = 1}};
        QCOMPARE(HistoryCsv::text(entries),
                 header + u"2026-11-16T09:30:00Z;\"Mac mini; M2\";Mac14,3;;\"Apple\nM2\";\"8\rGB\";;;;"
                          "\"Le \"\"Studio\"\"\";1;2;\n"
                          "2026-11-16T08:05:07Z;MacBook Pro;MacBookPro18,3;C02XK1ABCD;Apple M1 Pro;16 GB;"
                          "494,38\u00A0Go;91;123;1 point;1;0;\n"_s);

        // The exported file: byte-order mark, then the text.
        auto history = open();
        record(*history, {u"A"_s, 0});
        QCOMPARE(history->exportCsv(path(u"Quillon-journal.csv"_s)), QString());
        QCOMPARE(fileBytes(path(u"Quillon-journal.csv"_s)), history->csv().toUtf8());
        QVERIFY(history->csv().toUtf8().startsWith("\xEF\xBB\xBF" "Date;"));
        QCOMPARE(QFile::permissions(path(u"Quillon-journal.csv"_s)) & 0x00FF, QFileDevice::Permissions());
        QVERIFY(!history->exportCsv(path(u"absent/Quillon-journal.csv"_s)).isEmpty());
    }
};

QUILLON_TEST_MAIN(TestHistory)
#include "tst_history.moc"
