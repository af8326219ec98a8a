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

const QString csvHeader = u"Date;Modèle;Identifiant;Numéro de série;Puce;Mémoire;Stockage;Capacité maximale;Cycles;Verdict;À surveiller;Anomalies"_s;

HardwareInfo machine(const std::optional<QString> &serial, const QString &modelName = u"MacBook Pro"_s)
{
    HardwareInfo hardware;
    hardware.modelName = modelName;
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

StorageVolume volume(const QString &name, double totalBytes, bool isInternal)
{
    StorageVolume result;
    result.name = name;
    result.totalBytes = totalBytes;
    result.isInternal = isInternal;
    return result;
}

BatteryInfo battery(qint64 health, qint64 cycles)
{
    BatteryInfo result;
    result.healthPercent = health;
    result.cycleCount = cycles;
    return result;
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

// One well-formed journal entry as a file would hold it, keys in an unusual order.
QByteArray storedEntry(const QString &serial)
{
    return R"({"faultCount":0,"warningCount":0,"headline":"Aucun problème détecté","memory":"8 GB",)"
           R"("chip":"Apple M2","modelIdentifier":"Mac14,2","modelName":"MacBook Air",)"
           R"("date":816509107,"serialNumber":")"
        + serial.toUtf8() + R"(","id":")" + QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toUtf8()
        + R"("})";
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

        const std::optional<QString> serialA = u"C02AAAAAAAAA"_s;
        const std::optional<QString> serialB = u"C02BBBBBBBBB"_s;
        const std::optional<QString> none;
        const qint64 minute = 60 * 1000;
        QTest::newRow("same Mac 59 min apart") << serialA << serialA << 59 * minute << true;
        QTest::newRow("same Mac 61 min apart") << serialA << serialA << 61 * minute << false;
        QTest::newRow("same Mac exactly one hour apart") << serialA << serialA << 60 * minute << false;
        QTest::newRow("same Mac one millisecond short of an hour") << serialA << serialA << 60 * minute - 1 << true;
        QTest::newRow("clock set back ten minutes") << serialA << serialA << -10 * minute << true;
        QTest::newRow("two Macs without serial within the hour") << none << none << 5 * minute << true;
        QTest::newRow("serial then no serial") << serialA << none << 5 * minute << false;
        QTest::newRow("no serial then serial") << none << serialA << 5 * minute << false;
        QTest::newRow("different serials within the hour") << serialA << serialB << 5 * minute << false;
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
        recordAt(*history, 60 * 1000, u"B"_s);
        QSignalSpy inserted(history.get(), &QAbstractItemModel::rowsInserted);
        QSignalSpy changed(history.get(), &QAbstractItemModel::dataChanged);
        QSignalSpy countChanged(history.get(), &History::countChanged);
        QSignalSpy entriesChanged(history.get(), &History::entriesChanged);

        recordAt(*history, 2 * 60 * 1000, u"A"_s, {CheckStatus::attention, CheckStatus::attention});

        QCOMPARE(serials(*history), (QStringList{u"B"_s, u"A"_s}));
        QCOMPARE(history->entries().at(1).headline, u"2 points à surveiller"_s);
        QCOMPARE(history->entries().at(1).warningCount, 2);
        QCOMPARE(inserted.count(), 0);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(0).toModelIndex().row(), 1);
        QCOMPARE(countChanged.count(), 0);
        QCOMPARE(entriesChanged.count(), 1);
        QCOMPARE(history->data(history->index(1), History::HeadlineRole).toString(), u"2 points à surveiller"_s);
    }

    // Only the first line of that machine in list order is looked at: an older line of
    // the same machine stays.
    void onlyTheNewestLineOfAMachineIsReplaced()
    {
        auto history = openHistory();
        const qint64 minute = 60 * 1000;
        recordAt(*history, 0, u"A"_s);
        recordAt(*history, 61 * minute, u"A"_s);
        recordAt(*history, 70 * minute, u"A"_s, {CheckStatus::alerte, CheckStatus::alerte});
        QCOMPARE(history->count(), 2);
        QCOMPARE(history->entries().at(0).date, morning.addMSecs(70 * minute));
        QCOMPARE(history->entries().at(0).faultCount, 2);
        QCOMPARE(history->entries().at(1).date, morning);
    }

    void entryTakesTheRecords_data()
    {
        QTest::addColumn<QList<StorageVolume>>("volumes");
        QTest::addColumn<std::optional<double>>("storageBytes");

        const StorageVolume external = volume(u"Sauvegarde"_s, 2000398934016, false);
        const StorageVolume internal = volume(u"Macintosh HD"_s, 494384795648, true);
        const StorageVolume secondInternal = volume(u"Données"_s, 1000000000000, true);
        QTest::newRow("internal volume after an external one")
            << QList<StorageVolume>{external, internal, secondInternal} << std::optional<double>(494384795648);
        QTest::newRow("only external volumes: the first")
            << QList<StorageVolume>{external, volume(u"Clé"_s, 64000000000, false)}
            << std::optional<double>(2000398934016);
        QTest::newRow("no volume") << QList<StorageVolume>{} << std::optional<double>();
    }

    void entryTakesTheRecords()
    {
        QFETCH(QList<StorageVolume>, volumes);
        QFETCH(std::optional<double>, storageBytes);

        auto history = openHistory();
        history->record(machine(u"C02XK1ABCD"_s), battery(91, 123), volumes,
                        reportOf({CheckStatus::attention, CheckStatus::alerte, CheckStatus::info, CheckStatus::alerte}));
        QCOMPARE(history->count(), 1);
        const HistoryEntry entry = history->entries().first();
        QCOMPARE(entry.date, morning);
        QCOMPARE(entry.modelName, u"MacBook Pro"_s);
        QCOMPARE(entry.modelIdentifier, u"MacBookPro18,3"_s);
        QCOMPARE(entry.serialNumber, u"C02XK1ABCD"_s);
        QCOMPARE(entry.chip, u"Apple M1 Pro"_s);
        QCOMPARE(entry.memory, u"16 GB"_s);
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
        history->record(std::nullopt, battery(91, 123), {}, reportOf({CheckStatus::ok}));
        history->record(machine(u"A"_s), battery(91, 123), {}, std::nullopt);
        QCOMPARE(history->count(), 0);
        QVERIFY(!QFile::exists(journalPath()));
    }

    // The 501st distinct machine pushes the oldest line out.
    void journalKeepsAtMost500Lines()
    {
        QByteArray stored = "[";
        for (int i = 500; i >= 1; --i)
            stored += (i < 500 ? "," : "") + storedEntry(u"S%1"_s.arg(i));
        writeFile(journalPath(), stored + ']');

        auto history = openHistory();
        QCOMPARE(history->count(), 500);
        QAbstractItemModelTester tester(history.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy removed(history.get(), &QAbstractItemModel::rowsRemoved);

        recordAt(*history, 0, u"S501"_s);

        QCOMPARE(history->count(), 500);
        QCOMPARE(history->entries().first().serialNumber, u"S501"_s);
        QCOMPARE(history->entries().at(1).serialNumber, u"S500"_s);
        QCOMPARE(history->entries().last().serialNumber, u"S2"_s);
        QCOMPARE(removed.count(), 1);
        QCOMPARE(removed.first().at(1).toInt(), 500);
        QCOMPARE(openHistory()->count(), 500);
    }

    void journalIsReadBackAtStart()
    {
        {
            auto history = openHistory();
            recordAt(*history, 250, u"A"_s, {CheckStatus::attention});
            m_clock->moment = morning.addSecs(2 * 3600);
            history->record(machine(std::nullopt, u"Mac \"Studio\"\n2023"_s), battery(88, 1001),
                            {volume(u"Macintosh HD"_s, 994662584320, true)}, reportOf({}));
        }
        auto first = openHistory();
        auto second = openHistory();
        QCOMPARE(second->count(), 2);
        QCOMPARE(second->entries(), first->entries());
        const HistoryEntry newest = second->entries().at(0);
        QCOMPARE(newest.modelName, u"Mac \"Studio\"\n2023"_s);
        QCOMPARE(newest.serialNumber, std::nullopt);
        QCOMPARE(newest.storageBytes, 994662584320.0);
        QCOMPARE(newest.batteryCycles, 1001);
        QCOMPARE(second->entries().at(1).date, morning.addMSecs(250));
        QVERIFY(!second->hadUnreadableFile());
    }

    // The file holds the fields in their order, the identifier in upper case, the date in
    // seconds since 2001, and no key for an absent value.
    void journalFileFormat()
    {
        auto history = openHistory();
        m_clock->moment = morning.addMSecs(250);
        history->record(machine(u"C02XK1ABCD"_s), battery(91, 123), {volume(u"Macintosh HD"_s, 494384795648, true)},
                        reportOf({CheckStatus::attention}));
        m_clock->moment = morning.addSecs(2 * 3600);
        history->record(machine(std::nullopt), std::nullopt, {}, reportOf({}));

        const QByteArray newestId = history->entries().at(0).id.toString(QUuid::WithoutBraces).toUpper().toUtf8();
        const QByteArray oldestId = history->entries().at(1).id.toString(QUuid::WithoutBraces).toUpper().toUtf8();
        // 2026-11-16 is 9450 days after 2001-01-01: 816480000 s, plus 08:05:07.25.
        // Written with single quotes for readability; each stands for a double quote.
        const QByteArray expected =
            QByteArray("[{'id':'" + newestId
                       + "','date':816516307,'modelName':'MacBook Pro','modelIdentifier':'MacBookPro18,3',"
                         "'chip':'Apple M1 Pro','memory':'16 GB','headline':'Aucun problème détecté',"
                         "'warningCount':0,'faultCount':0},"
                         "{'id':'"
                       + oldestId
                       + "','date':816509107.25,'modelName':'MacBook Pro','modelIdentifier':'MacBookPro18,3',"
                         "'serialNumber':'C02XK1ABCD','chip':'Apple M1 Pro','memory':'16 GB','storageBytes':494384795648,"
                         "'batteryHealth':91,'batteryCycles':123,'headline':'1 point à surveiller',"
                         "'warningCount':1,'faultCount':0}]")
                .replace('\'', '"');
        QCOMPARE(fileBytes(journalPath()), expected);
    }

    void journalFileIsPrivate()
    {
        auto history = openHistory();
        recordAt(*history, 0, u"A"_s);
        const QFileDevice::Permissions permissions = QFile::permissions(journalPath());
        QVERIFY(permissions.testFlags(QFileDevice::ReadOwner | QFileDevice::WriteOwner));
        const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup
            | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
        QCOMPARE(permissions & others, QFileDevice::Permissions());
    }

    void fileReading_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<int>("count"); // -1: unreadable

        const QByteArray id = QUuid::createUuid().toString(QUuid::WithoutBraces).toUtf8();
        const QByteArray required = R"("modelName":"iMac","modelIdentifier":"iMac21,1","chip":"Apple M1",)"
                                    R"("memory":"8 GB","headline":"Aucun problème détecté","warningCount":0,)"
                                    R"("faultCount":0,"date":816509107.5)";
        auto entry = [&](const QByteArray &members) -> QByteArray { return "[{\"id\":\"" + id + "\"," + members + "}]"; };

        QTest::newRow("empty array") << QByteArray("[]") << 0;
        QTest::newRow("lower-case identifier, optional keys missing") << entry(required) << 1;
        QTest::newRow("optional keys written as null")
            << entry(required + R"(,"serialNumber":null,"storageBytes":null,"batteryHealth":null)") << 1;
        QTest::newRow("unknown keys ignored") << entry(required + R"(,"note":"ajouté à la main")") << 1;
        QTest::newRow("whole counts written with a fraction") << entry(required + R"(,"batteryCycles":12.0)") << 1;
        QTest::newRow("empty file") << QByteArray() << -1;
        QTest::newRow("cut short") << entry(required).chopped(3) << -1;
        QTest::newRow("object instead of array") << QByteArray("{}") << -1;
        QTest::newRow("required key missing") << entry(R"("modelName":"iMac","date":0)") << -1;
        QTest::newRow("date as text") << entry(QByteArray(required).replace("816509107.5", "\"hier\"")) << -1;
        QTest::newRow("count with a fraction") << entry(required + R"(,"batteryHealth":91.5)") << -1;
        QTest::newRow("serial number as a number") << entry(required + R"(,"serialNumber":12)") << -1;
        QTest::newRow("identifier that is no UUID")
            << QByteArray("[{\"id\":\"journal\"," + required + "}]") << -1;
        QTest::newRow("one bad entry among good ones")
            << QByteArray("[" + entry(required).mid(1).chopped(1) + ",{\"id\":\"x\"}]") << -1;
    }

    void fileReading()
    {
        QFETCH(QByteArray, stored);
        QFETCH(int, count);

        writeFile(journalPath(), stored);
        auto history = openHistory();
        QCOMPARE(history->count(), std::max(count, 0));
        QCOMPARE(history->hadUnreadableFile(), count < 0);
        // Starting never touches the file.
        QCOMPARE(fileBytes(journalPath()), stored);
        if (count > 0) {
            QCOMPARE(history->entries().first().modelName, u"iMac"_s);
            QCOMPARE(history->entries().first().date, QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7, 500), Qt::UTC));
        }
    }

    // A damaged journal is renamed before the first save, never overwritten.
    void unreadableFileIsSetAside()
    {
        const QByteArray damaged = "[{\"id\":\"1F0C2A4E-";
        writeFile(journalPath(), damaged);
        auto history = openHistory();
        QCOMPARE(history->count(), 0);

        recordAt(*history, 0, u"A"_s);
        recordAt(*history, 2 * 3600 * 1000, u"B"_s);

        const QString aside = m_folder->filePath(u"journal-illisible-2026-11-16.json"_s);
        QCOMPARE(fileBytes(aside), damaged);
        QCOMPARE(openHistory()->count(), 2);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 2);

        // A second damaged journal on the same day keeps the first one aside too.
        writeFile(journalPath(), "[1]");
        recordAt(*openHistory(), 0, u"C"_s);
        QCOMPARE(fileBytes(aside), damaged);
        QCOMPARE(fileBytes(m_folder->filePath(u"journal-illisible-2026-11-16-2.json"_s)), QByteArray("[1]"));
        QCOMPARE(serials(*openHistory()), QStringList{u"C"_s});
    }

    // A journal that cannot be written still works in memory.
    void saveErrorsAreIgnored()
    {
        writeFile(m_folder->filePath(u"fichier"_s), "x");
        History history(m_clock, m_folder->filePath(u"fichier/Quillon"_s));
        recordAt(history, 0, u"A"_s);
        recordAt(history, 2 * 3600 * 1000, u"B"_s);
        QCOMPARE(serials(history), (QStringList{u"B"_s, u"A"_s}));
        history.remove(history.entries().first());
        QCOMPARE(serials(history), QStringList{u"A"_s});
    }

    void removeAndClear()
    {
        auto history = openHistory();
        QAbstractItemModelTester tester(history.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        const qint64 hours = 2 * 3600 * 1000;
        recordAt(*history, 0, u"A"_s);
        recordAt(*history, hours, u"B"_s);
        recordAt(*history, 2 * hours, u"C"_s);
        QSignalSpy countChanged(history.get(), &History::countChanged);

        history->remove(history->entries().at(1));
        QCOMPARE(serials(*history), (QStringList{u"C"_s, u"A"_s}));
        QCOMPARE(serials(*openHistory()), (QStringList{u"C"_s, u"A"_s}));
        QCOMPARE(countChanged.count(), 1);

        history->removeById(QUuid::createUuid().toString());
        QCOMPARE(history->count(), 2);

        history->removeById(history->data(history->index(0), History::IdRole).toString());
        QCOMPARE(serials(*history), QStringList{u"A"_s});

        history->clear();
        QCOMPARE(history->count(), 0);
        QCOMPARE(countChanged.count(), 3);
        QCOMPARE(fileBytes(journalPath()), QByteArray("[]"));
    }

    void csvCellEscaping_data()
    {
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("written");

        QTest::newRow("plain text with a comma") << u"MacBookPro18,3"_s << u"MacBookPro18,3"_s;
        QTest::newRow("semicolon") << u"Mac mini; M2"_s << u"\"Mac mini; M2\""_s;
        QTest::newRow("double quotes doubled") << u"Écran \"Studio\""_s << u"\"Écran \"\"Studio\"\"\""_s;
        QTest::newRow("line feed") << u"ligne 1\nligne 2"_s << u"\"ligne 1\nligne 2\""_s;
        QTest::newRow("carriage return alone") << u"ligne 1\rligne 2"_s << u"ligne 1\rligne 2"_s;
        QTest::newRow("lone quote") << u"\""_s << u"\"\"\"\""_s;
        QTest::newRow("empty") << QString() << QString();
    }

    void csvCellEscaping()
    {
        QFETCH(QString, cell);
        QFETCH(QString, written);
        QCOMPARE(HistoryCsv::escapedCell(cell), written);
    }

    void csvOfAnEmptyJournal()
    {
        QCOMPARE(openHistory()->csv(), csvHeader + u'\n');
    }

    void csvText()
    {
        HistoryEntry desktop;
        desktop.date = QDateTime(QDate(2026, 11, 16), QTime(10, 30), Qt::OffsetFromUTC, 3600);
        desktop.modelName = u"Mac mini; M2"_s;
        desktop.modelIdentifier = u"Mac14,3"_s;
        desktop.chip = u"Apple M2"_s;
        desktop.memory = u"8 GB"_s;
        desktop.headline = u"Le \"Studio\" a 2 anomalies"_s;
        desktop.warningCount = 1;
        desktop.faultCount = 2;

        HistoryEntry laptop;
        laptop.date = morning.addMSecs(999);
        laptop.modelName = u"MacBook Pro"_s;
        laptop.modelIdentifier = u"MacBookPro18,3"_s;
        laptop.serialNumber = u"C02XK1ABCD"_s;
        laptop.chip = u"Apple M1 Pro"_s;
        laptop.memory = u"16 GB"_s;
        laptop.storageBytes = 494384795648;
        laptop.batteryHealth = 91;
        laptop.batteryCycles = 123;
        laptop.headline = u"1 point à surveiller"_s;
        laptop.warningCount = 1;

        const QString expected = csvHeader + u'\n'
            + u"2026-11-16T09:30:00Z;\"Mac mini; M2\";Mac14,3;;Apple M2;8 GB;;;;\"Le \"\"Studio\"\" a 2 anomalies\";1;2\n"_s
            + u"2026-11-16T08:05:07Z;MacBook Pro;MacBookPro18,3;C02XK1ABCD;Apple M1 Pro;16 GB;494,38\u00A0Go;91;123;"_s
            + u"1 point à surveiller;1;0\n"_s;
        QCOMPARE(HistoryCsv::text({desktop, laptop}), expected);
    }

    void csvExport()
    {
        auto history = openHistory();
        recordAt(*history, 0, u"A"_s);
        const QString target = m_folder->filePath(u"Quillon-journal.csv"_s);
        writeFile(target, "ancien contenu plus long que le nouveau, qui doit disparaître entièrement");

        QCOMPARE(history->exportCsv(target), QString());
        const QByteArray bytes = fileBytes(target);
        QVERIFY(bytes.startsWith("\xEF\xBB\xBF" "Date;Mod\xC3\xA8le;"));
        QCOMPARE(bytes.mid(3), history->csv().toUtf8());

        QVERIFY(!history->exportCsv(m_folder->filePath(u"absent/Quillon-journal.csv"_s)).isEmpty());
    }
};

QUILLON_TEST_MAIN(TestHistory)
#include "tst_history.moc"
