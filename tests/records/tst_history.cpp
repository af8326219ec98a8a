#include "common/test_main.h"
#include "records/history.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

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

// The journal of checked machines: when a check replaces an older line, the 500-line
// limit, the journal file and the spreadsheet export.
class TestHistory : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<SettableClock> m_clock;

    QString path(const QString &name) const { return m_folder->filePath(name); }
    std::unique_ptr<History> open() { return std::make_unique<History>(m_clock, m_folder->path()); }
    void record(History &history, const Check &check)
    {
        m_clock->moment = morning.addSecs(60 * check.second);
        history.record(machine(check.first), std::nullopt, {}, reportOf({CheckStatus::ok}));
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
        QTest::newRow("61 min apart: added") << Checks{{u"A"_s, 0}, {u"A"_s, 61}} << QStringList{u"A@61"_s, u"A@0"_s};
        QTest::newRow("clock set back: replaced") << Checks{{u"A"_s, 0}, {u"A"_s, -10}} << QStringList{u"A@-10"_s};
        QTest::newRow("two Macs without serial: replaced") << Checks{{none, 0}, {none, 5}} << QStringList{u"-@5"_s};
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

    void journalKeepsAtMost500Lines()
    {
        QList<HistoryEntry> stored;
        for (int i = 500; i >= 1; --i)
            stored.append(HistoryEntry{.date = morning, .serialNumber = u"S%1"_s.arg(i)});
        QVERIFY(writeFile(path(u"journal.json"_s), HistoryFile::encode(stored)));
        auto history = open();
        QAbstractItemModelTester tester(history.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        record(*history, {u"S501"_s, 0});
        QCOMPARE(open()->count(), 500);
        QCOMPARE(lines(*history).mid(0, 2), (QStringList{u"S501@0"_s, u"S500@0"_s}));
        QCOMPARE(lines(*history).last(), u"S2@0"_s);
    }

    // Fields in their order, the identifier in upper case, the date in seconds since 2001,
    // no key for an absent value; private to its owner and read back whole. A save removes
    // the temporary file of a save cut short.
    void journalFile()
    {
        auto history = open();
        const BatteryInfo battery{.cycleCount = 123, .healthPercent = 91};
        const QList<StorageVolume> volumes{{.totalBytes = 2e12}, {.totalBytes = 494384795648, .isInternal = true},
                                           {.totalBytes = 1e12, .isInternal = true}};
        const DiagnosticsReport report = reportOf({CheckStatus::attention, CheckStatus::alerte, CheckStatus::alerte});
        history->record(std::nullopt, battery, volumes, report);
        history->record(machine(u"C02XK1ABCD"_s), battery, volumes, std::nullopt);
        QVERIFY(!QFile::exists(path(u"journal.json"_s))); // neither without hardware nor without report
        QVERIFY(writeFile(path(u"journal.json.x7Qp2k"_s), "[{\"serialNumber\""));
        m_clock->moment = morning.addMSecs(250); // the first internal volume, though not first
        history->record(machine(u"C02XK1ABCD"_s), battery, volumes, report);
        // No internal volume: the first one.
        m_clock->moment = morning.addSecs(7200);
        history->record(machine(std::nullopt), std::nullopt, {{.totalBytes = 6e10}, {.totalBytes = 2e12}},
                        reportOf({}));

        const auto id = [&](int row) {
            return history->entries().at(row).id.toString(QUuid::WithoutBraces).toUpper().toUtf8();
        };
        // 2026-11-16 is 9450 days after 2001-01-01, 816480000 s; 08:05:07 adds 29107 s.
        // Single quotes stand for double quotes.
        const QByteArray expected =
            QByteArray("[{'id':'" + id(0)
                       + "','date':816516307,'modelName':'MacBook Pro','modelIdentifier':'MacBookPro18,3',"
                         "'chip':'Apple M1 Pro','memory':'16 GB','storageBytes':60000000000,"
                         "'headline':'Aucun problème détecté','warningCount':0,'faultCount':0},{'id':'" + id(1)
                       + "','date':816509107.25,'modelName':'MacBook Pro','modelIdentifier':'MacBookPro18,3',"
                         "'serialNumber':'C02XK1ABCD','chip':'Apple M1 Pro','memory':'16 GB',"
                         "'storageBytes':494384795648,'batteryHealth':91,'batteryCycles':123,"
                         "'headline':'2 anomalies \u00B7 1 point à surveiller','warningCount':1,'faultCount':2}]")
                .replace('\'', '"');
        QCOMPARE(fileBytes(path(u"journal.json"_s)), expected);
        QCOMPARE(QFile::permissions(path(u"journal.json"_s)) & 0x00FF, QFileDevice::Permissions()); // group, others
        QCOMPARE(open()->entries(), history->entries());
        QVERIFY(!QFile::exists(path(u"journal.json.x7Qp2k"_s))); // left by a save that was cut short
    }

    void fileReading_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<bool>("readable");
        const QByteArray id = "\"id\":\"" + QUuid::createUuid().toString(QUuid::WithoutBraces).toUtf8() + "\",";
        const QByteArray required = "\"faultCount\":0,\"warningCount\":0,\"headline\":\"Aucun\",\"memory\":\"8 GB\","
                                    "\"chip\":\"M1\",\"modelIdentifier\":\"iMac21,1\",\"modelName\":\"iMac\","
                                    "\"date\":0.5";
        const auto journal = [&](const QByteArray &members) -> QByteArray { return "[{" + id + members + "}]"; };
        QTest::newRow("keys in any order, lower-case identifier, no optional") << journal(required) << true;
        QTest::newRow("optionals written as null")
            << journal(required + ",\"serialNumber\":null,\"batteryHealth\":null") << true;
        QTest::newRow("object instead of array") << QByteArray("{}") << false;
        QTest::newRow("required key missing") << journal("\"modelName\":\"iMac\",\"date\":0") << false;
        QTest::newRow("count with a fraction") << journal(required + ",\"batteryHealth\":91.5") << false;
        // A capacity no 64-bit byte count holds cannot be written as a byte text.
        QTest::newRow("storage of 2^63 bytes") << journal(required + ",\"storageBytes\":9223372036854775808") << false;
        QTest::newRow("storage just below 2^63 bytes")
            << journal(required + ",\"storageBytes\":9223372036854774784") << true;
        QTest::newRow("identifier that is no UUID") << QByteArray("[{\"id\":\"x\"," + required + "}]") << false;
    }

    void fileReading()
    {
        QFETCH(QByteArray, stored);
        QFETCH(bool, readable);
        QVERIFY(writeFile(path(u"journal.json"_s), stored));
        auto history = open();
        QCOMPARE(history->count(), readable ? 1 : 0);
        QCOMPARE(history->hadUnreadableFile(), !readable);
        QCOMPARE(fileBytes(path(u"journal.json"_s)), stored); // starting never touches the file
    }

    // A damaged journal is renamed at the first save, never overwritten, not even by a
    // second damaged journal on the same day.
    void unreadableFileIsSetAside()
    {
        QVERIFY(writeFile(path(u"journal.json"_s), "[{\"id\":\"1F0C2A4E-"));
        auto history = open();
        record(*history, {u"A"_s, 0});
        record(*history, {u"B"_s, 120});
        QCOMPARE(lines(*open()), (QStringList{u"B@120"_s, u"A@0"_s}));

        QVERIFY(writeFile(path(u"journal.json"_s), "[1]"));
        record(*open(), {u"C"_s, 0});
        QCOMPARE(fileBytes(path(u"journal-illisible-2026-11-16.json"_s)), QByteArray("[{\"id\":\"1F0C2A4E-"));
        QCOMPARE(fileBytes(path(u"journal-illisible-2026-11-16-2.json"_s)), QByteArray("[1]"));
        QCOMPARE(lines(*open()), QStringList{u"C@0"_s});
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
        QCOMPARE(fileBytes(path(u"journal.json"_s)), QByteArray("[]"));
    }

    // Two journals on one file stand for two processes: each save keeps what the other wrote
    // meanwhile and replays its own changes on it. Steps: "<journal> opens", "<journal>
    // records <serial> <minutes>", "<journal> removes <serial>", "<journal> clears".
    void journalsSharingTheFileMerge_data()
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
        QTest::newRow("removed there stays removed")
            << QStringList{u"1 opens"_s, u"1 records A 0"_s, u"1 records B 1"_s, u"2 opens"_s, u"2 removes A"_s,
                           u"1 records C 2"_s}
            << QStringList{u"C@2"_s, u"B@1"_s};
        QTest::newRow("cleared here keeps what only the other saw")
            << QStringList{u"1 opens"_s, u"1 records A 0"_s, u"2 opens"_s, u"2 records B 1"_s, u"1 clears"_s}
            << QStringList{u"B@1"_s};
    }

    void journalsSharingTheFileMerge()
    {
        QFETCH(QStringList, steps);
        QFETCH(QStringList, journal);
        std::array<std::unique_ptr<History>, 2> journals;
        qsizetype last = 0;
        for (const QString &step : std::as_const(steps)) {
            const QStringList words = step.split(u' ');
            last = words.at(0).toInt() - 1;
            History *history = journals.at(last).get();
            if (words.at(1) == u"opens"_s)
                journals.at(last) = open();
            else if (words.at(1) == u"records"_s)
                record(*history, {words.at(2), words.at(3).toInt()});
            else if (words.at(1) == u"removes"_s)
                history->remove(*std::find_if(history->entries().cbegin(), history->entries().cend(),
                                              [&](const HistoryEntry &entry) { return entry.serialNumber == words.at(2); }));
            else
                history->clear();
        }
        QCOMPARE(lines(*open()), journal);
        QCOMPARE(lines(*journals.at(last)), journal); // the journal that saved last shows the merged list
    }

    // No cell runs as a formula in a spreadsheet, and a lone carriage return is quoted.
    void spreadsheetSafeCells_data()
    {
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("written");
        QTest::newRow("formula") << u"=HYPERLINK(\"x\")"_s << u"\"'=HYPERLINK(\"\"x\"\")\""_s;
        QTest::newRow("plus") << u"+33 1 23"_s << u"'+33 1 23"_s;
        QTest::newRow("minus word") << u"-cmd"_s << u"'-cmd"_s;
        QTest::newRow("at sign") << u"@SUM(A1)"_s << u"'@SUM(A1)"_s;
        QTest::newRow("tab first") << u"\tx"_s << u"'\tx"_s;
        QTest::newRow("carriage return first") << u"\rx"_s << u"\"'\rx\""_s;
        QTest::newRow("negative number") << u"-12"_s << u"-12"_s;
        QTest::newRow("signed decimal") << u"+3,5"_s << u"+3,5"_s;
        QTest::newRow("equals inside") << u"a=b"_s << u"a=b"_s;
        QTest::newRow("lone carriage return") << u"8\rGB"_s << u"\"8\rGB\""_s;
        QTest::newRow("plain") << u"MacBook Pro"_s << u"MacBook Pro"_s;
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
                               "Cycles;Verdict;À surveiller;Anomalies\n"_s;
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
                          "\"Le \"\"Studio\"\"\";1;2\n"
                          "2026-11-16T08:05:07Z;MacBook Pro;MacBookPro18,3;C02XK1ABCD;Apple M1 Pro;16 GB;"
                          "494,38\u00A0Go;91;123;1 point;1;0\n"_s);

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
