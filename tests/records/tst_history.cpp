#include "common/test_main.h"
#include "records/history.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

// A clock that shows whatever moment the test sets.
class SettableClock : public Clock
{
public:
    QDateTime now() const override { return moment; }
    QDateTime moment;
};

const QDateTime morning(QDate(2026, 11, 16), QTime(8, 5, 7), Qt::UTC);
const qint64 minute = 60 * 1000;

const QString csvHeader = u"Date;Modèle;Identifiant;Numéro de série;Puce;Mémoire;Stockage;Capacité maximale;Cycles;Verdict;À surveiller;Anomalies"_s;

HardwareInfo machine(const std::optional<QString> &serial)
{
    HardwareInfo hardware;
    hardware.modelName = u"MacBook Pro"_s;
    hardware.modelIdentifier = u"MacBookPro18,3"_s;
    hardware.serialNumber = serial;
    hardware.chip = u"Apple M1 Pro"_s;
    hardware.memory = u"16 GB"_s;
    return hardware;
}

DiagnosticsReport reportOf(const QList<CheckStatus> &statuses)
{
    DiagnosticsReport report;
    for (CheckStatus status : statuses)
        report.checks.append(HardwareCheck{.title = u"Batterie"_s, .status = status});
    return report;
}

StorageVolume volume(double totalBytes, bool isInternal)
{
    StorageVolume result;
    result.totalBytes = totalBytes;
    result.isInternal = isInternal;
    return result;
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

QStringList serials(const History &history)
{
    QStringList out;
    for (const HistoryEntry &entry : history.entries())
        out.append(entry.serialNumber.value_or(u"(aucun)"_s));
    return out;
}

} // namespace

// The journal of checked machines: when a check replaces an older line, the 500-line
// limit, the journal file and the spreadsheet export.
class TestHistory : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<SettableClock> m_clock;

    QString journalPath() const { return m_folder->filePath(u"journal.json"_s); }
    std::unique_ptr<History> openHistory() { return std::make_unique<History>(m_clock, m_folder->path()); }

    void recordAt(History &history, qint64 msecsAfterMorning, const std::optional<QString> &serial,
                  const QList<CheckStatus> &statuses = {CheckStatus::ok})
    {
        m_clock->moment = morning.addMSecs(msecsAfterMorning);
        history.record(machine(serial), std::nullopt, {}, reportOf(statuses));
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_clock = std::make_shared<SettableClock>();
        m_clock->moment = morning;
    }

    void secondCheckReplacesOrAdds_data()
    {
        QTest::addColumn<std::optional<QString>>("firstSerial");
        QTest::addColumn<std::optional<QString>>("secondSerial");
        QTest::addColumn<qint64>("msecsBetween");
        QTest::addColumn<bool>("replaced");

        const std::optional<QString> a = u"C02AAAAAAAAA"_s;
        const std::optional<QString> none;
        QTest::newRow("same Mac 59 min apart") << a << a << 59 * minute << true;
        QTest::newRow("same Mac 61 min apart") << a << a << 61 * minute << false;
        QTest::newRow("same Mac exactly one hour apart") << a << a << 60 * minute << false;
        QTest::newRow("clock set back ten minutes") << a << a << -10 * minute << true;
        QTest::newRow("two Macs without serial within the hour") << none << none << 5 * minute << true;
        QTest::newRow("serial then no serial") << a << none << 5 * minute << false;
        QTest::newRow("different serials within the hour") << a << std::optional(u"C02B"_s) << 5 * minute << false;
    }

    void secondCheckReplacesOrAdds()
    {
        QFETCH(std::optional<QString>, firstSerial);
        QFETCH(std::optional<QString>, secondSerial);
        QFETCH(qint64, msecsBetween);
        QFETCH(bool, replaced);

        auto history = openHistory();
        recordAt(*history, 0, firstSerial, {CheckStatus::ok});
        const HistoryEntry first = history->entries().first();
        recordAt(*history, msecsBetween, secondSerial, {CheckStatus::alerte});

        QCOMPARE(history->count(), replaced ? 1 : 2);
        const HistoryEntry newest = history->entries().first();
        QCOMPARE(newest.serialNumber, secondSerial);
        QCOMPARE(newest.date, morning.addMSecs(msecsBetween));
        QCOMPARE(newest.headline, u"1 anomalie détectée"_s);
        QVERIFY(newest.id != first.id);
        if (!replaced)
            QCOMPARE(history->entries().at(1), first);
    }

    // A, then B, then A again within the hour: A's line is updated where it stands.
    void replacementKeepsThePosition()
    {
        auto history = openHistory();
        QAbstractItemModelTester tester(history.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        recordAt(*history, 0, u"A"_s);
        recordAt(*history, minute, u"B"_s);
        QSignalSpy inserted(history.get(), &QAbstractItemModel::rowsInserted);
        QSignalSpy changed(history.get(), &QAbstractItemModel::dataChanged);
        QSignalSpy countChanged(history.get(), &History::countChanged);

        recordAt(*history, 2 * minute, u"A"_s, {CheckStatus::attention, CheckStatus::attention});

        QCOMPARE(serials(*history), (QStringList{u"B"_s, u"A"_s}));
        QCOMPARE(history->data(history->index(1), History::HeadlineRole).toString(), u"2 points à surveiller"_s);
        QCOMPARE(inserted.count(), 0);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(0).toModelIndex().row(), 1);
        QCOMPARE(countChanged.count(), 0);
    }

    void entryTakesTheRecords_data()
    {
        QTest::addColumn<QList<StorageVolume>>("volumes");
        QTest::addColumn<std::optional<double>>("storageBytes");

        QTest::newRow("the internal volume, though not first")
            << QList<StorageVolume>{volume(2e12, false), volume(494384795648, true), volume(1e12, true)}
            << std::optional<double>(494384795648);
        QTest::newRow("only external volumes: the first")
            << QList<StorageVolume>{volume(2e12, false), volume(64e9, false)} << std::optional<double>(2e12);
        QTest::newRow("no volume") << QList<StorageVolume>{} << std::optional<double>();
    }

    void entryTakesTheRecords()
    {
        QFETCH(QList<StorageVolume>, volumes);
        QFETCH(std::optional<double>, storageBytes);

        BatteryInfo battery;
        battery.healthPercent = 91;
        battery.cycleCount = 123;
        auto history = openHistory();
        history->record(machine(u"C02XK1ABCD"_s), battery, volumes,
                        reportOf({CheckStatus::attention, CheckStatus::alerte, CheckStatus::info, CheckStatus::alerte}));
        const HistoryEntry entry = history->entries().first();
        QCOMPARE(entry.date, morning);
        QCOMPARE(entry.storageBytes, storageBytes);
        QCOMPARE(entry.batteryHealth, 91);
        QCOMPARE(entry.batteryCycles, 123);
        QCOMPARE(entry.headline, u"2 anomalies \u00B7 1 point à surveiller"_s);
        QCOMPARE(entry.warningCount, 1);
        QCOMPARE(entry.faultCount, 2);
    }

    void recordNeedsHardwareAndReport()
    {
        auto history = openHistory();
        history->record(std::nullopt, std::nullopt, {}, reportOf({CheckStatus::ok}));
        history->record(machine(u"A"_s), std::nullopt, {}, std::nullopt);
        QCOMPARE(history->count(), 0);
        QVERIFY(!QFile::exists(journalPath()));
    }

    // The 501st distinct machine pushes the oldest line out.
    void journalKeepsAtMost500Lines()
    {
        QList<HistoryEntry> stored;
        for (int i = 500; i >= 1; --i)
            stored.append(HistoryEntry{.date = morning, .serialNumber = u"S%1"_s.arg(i)});
        writeFile(journalPath(), HistoryFile::encode(stored));

        auto history = openHistory();
        QCOMPARE(history->count(), 500);
        QAbstractItemModelTester tester(history.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        recordAt(*history, 0, u"S501"_s);

        QCOMPARE(history->count(), 500);
        QCOMPARE(serials(*history).mid(0, 2), (QStringList{u"S501"_s, u"S500"_s}));
        QCOMPARE(serials(*history).last(), u"S2"_s);
        QCOMPARE(openHistory()->count(), 500);
    }

    // The file holds the fields in their order, the identifier in upper case, the date in
    // seconds since 2001 and no key for an absent value; it is private and read back whole.
    void journalFile()
    {
        auto history = openHistory();
        m_clock->moment = morning.addMSecs(250);
        BatteryInfo battery;
        battery.healthPercent = 91;
        battery.cycleCount = 123;
        history->record(machine(u"C02XK1ABCD"_s), battery, {volume(494384795648, true)},
                        reportOf({CheckStatus::attention}));
        recordAt(*history, 2 * 60 * minute, std::nullopt, {});

        const QByteArray newestId = history->entries().at(0).id.toString(QUuid::WithoutBraces).toUpper().toUtf8();
        const QByteArray oldestId = history->entries().at(1).id.toString(QUuid::WithoutBraces).toUpper().toUtf8();
        // 2026-11-16 is 9450 days after 2001-01-01, 816480000 s; 08:05:07 adds 29107 s.
        // Single quotes stand for double quotes.
        const QByteArray expected =
            QByteArray("[{'id':'" + newestId
                       + "','date':816516307,'modelName':'MacBook Pro','modelIdentifier':'MacBookPro18,3',"
                         "'chip':'Apple M1 Pro','memory':'16 GB','headline':'Aucun problème détecté',"
                         "'warningCount':0,'faultCount':0},{'id':'"
                       + oldestId
                       + "','date':816509107.25,'modelName':'MacBook Pro','modelIdentifier':'MacBookPro18,3',"
                         "'serialNumber':'C02XK1ABCD','chip':'Apple M1 Pro','memory':'16 GB',"
                         "'storageBytes':494384795648,'batteryHealth':91,'batteryCycles':123,"
                         "'headline':'1 point à surveiller','warningCount':1,'faultCount':0}]")
                .replace('\'', '"');
        QCOMPARE(fileBytes(journalPath()), expected);

        const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup
            | QFileDevice::ReadOther | QFileDevice::WriteOther;
        QCOMPARE(QFile::permissions(journalPath()) & others, QFileDevice::Permissions());
        QCOMPARE(openHistory()->entries(), history->entries());
    }

    void fileReading_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<int>("count"); // -1: unreadable

        const QByteArray id = "\"id\":\"" + QUuid::createUuid().toString(QUuid::WithoutBraces).toUtf8() + "\",";
        const QByteArray required = "\"faultCount\":0,\"warningCount\":0,\"headline\":\"Aucun problème détecté\","
                                    "\"memory\":\"8 GB\",\"chip\":\"Apple M1\",\"modelIdentifier\":\"iMac21,1\","
                                    "\"modelName\":\"iMac\",\"date\":816509107.5";
        auto journal = [&](const QByteArray &members) -> QByteArray { return "[{" + id + members + "}]"; };

        QTest::newRow("keys in any order, lower-case identifier, optionals missing") << journal(required) << 1;
        QTest::newRow("optionals written as null")
            << journal(required + ",\"serialNumber\":null,\"batteryHealth\":null") << 1;
        QTest::newRow("unknown keys ignored") << journal(required + ",\"note\":\"à revoir\"") << 1;
        QTest::newRow("empty file") << QByteArray() << -1;
        QTest::newRow("cut short") << journal(required).chopped(3) << -1;
        QTest::newRow("object instead of array") << QByteArray("{}") << -1;
        QTest::newRow("required key missing") << journal("\"modelName\":\"iMac\",\"date\":0") << -1;
        QTest::newRow("count with a fraction") << journal(required + ",\"batteryHealth\":91.5") << -1;
        QTest::newRow("identifier that is no UUID") << QByteArray("[{\"id\":\"x\"," + required + "}]") << -1;
    }

    void fileReading()
    {
        QFETCH(QByteArray, stored);
        QFETCH(int, count);

        writeFile(journalPath(), stored);
        auto history = openHistory();
        QCOMPARE(history->count(), std::max(count, 0));
        QCOMPARE(history->hadUnreadableFile(), count < 0);
        QCOMPARE(fileBytes(journalPath()), stored); // starting never touches the file
        if (count > 0)
            QCOMPARE(history->entries().first().date, QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7, 500), Qt::UTC));
    }

    // A damaged journal is renamed before the first save, never overwritten.
    void unreadableFileIsSetAside()
    {
        const QByteArray damaged = "[{\"id\":\"1F0C2A4E-";
        writeFile(journalPath(), damaged);
        auto history = openHistory();
        recordAt(*history, 0, u"A"_s);
        recordAt(*history, 2 * 60 * minute, u"B"_s);

        const QString aside = m_folder->filePath(u"journal-illisible-2026-11-16.json"_s);
        QCOMPARE(fileBytes(aside), damaged);
        QCOMPARE(serials(*openHistory()), (QStringList{u"B"_s, u"A"_s}));

        // A second damaged journal on the same day does not replace the first one.
        writeFile(journalPath(), "[1]");
        recordAt(*openHistory(), 0, u"C"_s);
        QCOMPARE(fileBytes(aside), damaged);
        QCOMPARE(fileBytes(m_folder->filePath(u"journal-illisible-2026-11-16-2.json"_s)), QByteArray("[1]"));
        QCOMPARE(serials(*openHistory()), QStringList{u"C"_s});
    }

    void removeAndClear()
    {
        auto history = openHistory();
        QAbstractItemModelTester tester(history.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        for (int i = 0; i < 3; ++i)
            recordAt(*history, i * 2 * 60 * minute, QString(QChar(u'A' + i)));

        history->remove(history->entries().at(1));
        QCOMPARE(serials(*openHistory()), (QStringList{u"C"_s, u"A"_s}));
        history->removeById(history->data(history->index(0), History::IdRole).toString());
        QCOMPARE(serials(*history), QStringList{u"A"_s});

        history->clear();
        QCOMPARE(history->count(), 0);
        QCOMPARE(fileBytes(journalPath()), QByteArray("[]"));
    }

    void csvCellEscaping_data()
    {
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("written");

        QTest::newRow("comma left alone") << u"MacBookPro18,3"_s << u"MacBookPro18,3"_s;
        QTest::newRow("semicolon") << u"Mac mini; M2"_s << u"\"Mac mini; M2\""_s;
        QTest::newRow("double quotes doubled") << u"Écran \"Studio\""_s << u"\"Écran \"\"Studio\"\"\""_s;
        QTest::newRow("line feed") << u"ligne 1\nligne 2"_s << u"\"ligne 1\nligne 2\""_s;
        QTest::newRow("carriage return alone") << u"ligne 1\rligne 2"_s << u"ligne 1\rligne 2"_s;
    }

    void csvCellEscaping()
    {
        QFETCH(QString, cell);
        QFETCH(QString, written);
        QCOMPARE(HistoryCsv::escapedCell(cell), written);
    }

    void csvText()
    {
        QCOMPARE(HistoryCsv::text({}), csvHeader + u'\n');

        const HistoryEntry desktop{.date = QDateTime(QDate(2026, 11, 16), QTime(10, 30), Qt::OffsetFromUTC, 3600),
                                   .modelName = u"Mac mini; M2"_s,
                                   .modelIdentifier = u"Mac14,3"_s,
                                   .chip = u"Apple M2"_s,
                                   .memory = u"8 GB"_s,
                                   .headline = u"Le \"Studio\" a 2 anomalies"_s,
                                   .warningCount = 1,
                                   .faultCount = 2};
        const HistoryEntry laptop{.date = morning.addMSecs(999),
                                  .modelName = u"MacBook Pro"_s,
                                  .modelIdentifier = u"MacBookPro18,3"_s,
                                  .serialNumber = u"C02XK1ABCD"_s,
                                  .chip = u"Apple M1 Pro"_s,
                                  .memory = u"16 GB"_s,
                                  .storageBytes = 494384795648,
                                  .batteryHealth = 91,
                                  .batteryCycles = 123,
                                  .headline = u"1 point à surveiller"_s,
                                  .warningCount = 1};
        const QString expected = csvHeader + u'\n'
            + u"2026-11-16T09:30:00Z;\"Mac mini; M2\";Mac14,3;;Apple M2;8 GB;;;;\"Le \"\"Studio\"\" a 2 anomalies\";1;2\n"_s
            + u"2026-11-16T08:05:07Z;MacBook Pro;MacBookPro18,3;C02XK1ABCD;Apple M1 Pro;16 GB;494,38\u00A0Go;91;123;"_s
            + u"1 point à surveiller;1;0\n"_s;
        QCOMPARE(HistoryCsv::text({desktop, laptop}), expected);
        QCOMPARE(HistoryCsv::exportBytes({desktop, laptop}), QByteArray("\xEF\xBB\xBF" + expected.toUtf8()));
    }

    void csvExportReplacesTheFile()
    {
        auto history = openHistory();
        recordAt(*history, 0, u"A"_s);
        const QString target = m_folder->filePath(u"Quillon-journal.csv"_s);
        writeFile(target, "un ancien fichier plus long que le nouveau, qui doit disparaître en entier");

        QCOMPARE(history->exportCsv(target), QString());
        QCOMPARE(fileBytes(target), HistoryCsv::exportBytes(history->entries()));
        QVERIFY(!history->exportCsv(m_folder->filePath(u"absent/Quillon-journal.csv"_s)).isEmpty());
    }
};

QUILLON_TEST_MAIN(TestHistory)
#include "tst_history.moc"
