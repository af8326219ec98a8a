#include "ui_test_support.h"

#include "live/cpu_monitor.h"
#include "live/lid_angle_monitor.h"
#include "records/history.h"
#include "ui/export/journal_export.h"
#include "ui/presentation/detail_presentation.h"
#include "ui/theme/theme.h"

#include <QFile>

Q_DECLARE_METATYPE(StorageVolume)
Q_DECLARE_METATYPE(HistoryEntry)

using namespace Qt::StringLiterals;
using namespace DetailPresentation;
using namespace UiTest;
using ComponentID = BuiltInComponents::ComponentID;

namespace {

// Rows as "label: value" lines, the order kept.
QStringList lines(const QList<InfoRow> &rows)
{
    QStringList out;
    for (const InfoRow &row : rows)
        out << row.label + u": "_s + row.value;
    return out;
}

QList<InfoRow> rowsOf(const QStringList &lines)
{
    QList<InfoRow> rows;
    for (const QString &line : lines) {
        const qsizetype colon = line.indexOf(u": "_s);
        rows.append(InfoRow(line.left(colon), line.mid(colon + 2)));
    }
    return rows;
}

// A null text stands for an absent value in the tables.
std::optional<QString> optional(const QString &text)
{
    return text.isNull() ? std::nullopt : std::optional<QString>(text);
}

} // namespace

class TestDetailScreens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void volumeUsage_data()
    {
        QTest::addColumn<double>("total");
        QTest::addColumn<double>("free");
        QTest::addColumn<double>("used");
        QTest::addColumn<double>("fraction");
        QTest::addColumn<qint64>("percent");
        QTest::addColumn<QString>("tint");

        QTest::newRow("no capacity") << 0.0 << 0.0 << 0.0 << 0.0 << qint64(0) << u"accent"_s;
        QTest::newRow("two thirds: truncated, not rounded")
            << 3.0 << 1.0 << 2.0 << 2.0 / 3 << qint64(66) << u"accent"_s;
        QTest::newRow("74.9 % stays accent") << 1000.0 << 251.0 << 749.0 << 0.749 << qint64(74) << u"accent"_s;
        QTest::newRow("75 % turns orange") << 1000.0 << 250.0 << 750.0 << 0.75 << qint64(75) << u"orange"_s;
        QTest::newRow("89.99 % stays orange") << 10000.0 << 1001.0 << 8999.0 << 0.8999 << qint64(89) << u"orange"_s;
        QTest::newRow("90 % turns red") << 1000.0 << 100.0 << 900.0 << 0.9 << qint64(90) << u"red"_s;
    }

    void volumeUsage()
    {
        QFETCH(double, total);
        QFETCH(double, free);
        const VolumeUsage usage = DetailPresentation::volumeUsage(total, free);
        QTEST(usage.usedBytes, "used");
        QTEST(usage.usedFraction, "fraction");
        QTEST(usage.percent, "percent");
        QTEST(tintRole(usage.tint), "tint");
    }

    void builtInComponent_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<bool>("present");
        QTest::addColumn<QString>("detail");
        QTest::addColumn<QStringList>("ownRows");
        QTest::addColumn<QString>("angle");
        QTest::addColumn<QString>("state");
        QTest::addColumn<QStringList>("rows");

        const QStringList lidRows { u"Page d'usage HID: 0x20 (capteurs)"_s, u"Usage HID: 0x8A"_s };
        const QString waiting = u"Angle mesuré: lecture en cours…"_s;
        QTest::newRow("absent component") << int(ComponentID::touchID) << false << QString() << QStringList()
                                          << QString() << u"Non détecté"_s << QStringList();
        QTest::newRow("lid sensor without a reading") << int(ComponentID::lidAngle) << true << u"Détecté"_s << lidRows
                                                      << QString() << u"Détecté"_s << lidRows + QStringList { waiting };
        QTest::newRow("lid sensor at 0°") << int(ComponentID::lidAngle) << true << u"Détecté"_s << lidRows << u"0°"_s
                                          << u"0°"_s << lidRows + QStringList { u"Angle mesuré: 0°"_s };
    }

    void builtInComponent()
    {
        QFETCH(int, id);
        QFETCH(bool, present);
        QFETCH(QString, detail);
        QFETCH(QStringList, ownRows);
        QFETCH(QString, angle);
        const BuiltInComponents::Listed entry { ComponentID(id), u"Titre"_s, u"cpu"_s,
            { .present = present, .detail = optional(detail), .rows = rowsOf(ownRows) } };
        QTEST(componentStateText(entry, optional(angle)), "state");
        QTEST(lines(componentRows(entry, optional(angle))), "rows");
    }

    void journalEntry_data()
    {
        QTest::addColumn<HistoryEntry>("entry");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("headlineRole");

        HistoryEntry bare;
        bare.chip = u"Apple M2"_s;
        bare.memory = u"8 Go"_s;
        QTest::newRow("only the configuration, no warning")
            << bare << QStringList { u"Configuration: Apple M2 · 8 Go"_s } << u"checkmark.circle"_s << u"green"_s;

        HistoryEntry full = bare;
        full.serialNumber = u"C02XK1ZZJGH5"_s;
        full.storageBytes = 500100000000.0;
        full.batteryHealth = 87;
        full.batteryCycles = 412;
        full.warningCount = 1;
        QTest::newRow("every row, one warning")
            << full
            << QStringList { u"Numéro de série: C02XK1ZZJGH5"_s, u"Configuration: Apple M2 · 8 Go"_s,
                   u"Stockage: 500,1\u00A0Go"_s, u"Capacité maximale: 87 %"_s, u"Cycles: 412"_s }
            << u"exclamationmark.triangle"_s << u"orange"_s;

        HistoryEntry zeros = bare;
        zeros.serialNumber = QString(u""_s);
        zeros.batteryHealth = 0;
        zeros.batteryCycles = 0;
        zeros.faultCount = 2;

        HistoryEntry incomplete = bare;
        incomplete.failedReadCount = 2;
        QTest::newRow("failed reads and nothing else: never the all-clear")
            << incomplete << QStringList { u"Configuration: Apple M2 · 8 Go"_s } << u"info.circle"_s << u"accent"_s;
    }

    void journalEntry()
    {
        QFETCH(HistoryEntry, entry);
        QTEST(lines(journalEntryRows(entry)), "rows");
        QTEST(journalEntrySymbol(entry.warningCount, entry.faultCount, entry.failedReadCount), "symbol");
        QTEST(journalHeadlineRole(entry.warningCount, entry.faultCount, entry.failedReadCount), "headlineRole");
    }

    void journalScreenExportsAndRemoves()
    {
        Window shown(u"sample"_s);
        QVERIFY(shown.open(AppSection::history));
        History &history = shown.app.app->history();
        HardwareInfo other;
        other.modelName = u"MacBook Air"_s;
        other.serialNumber = u"FVFXC2ABQ6L4"_s;
        history.record(other, std::nullopt, {}, DiagnosticsReport());
        render(shown.window);
        QCOMPARE(history.count(), 2);
        QVERIFY(shown.texts().contains(u"2 machine(s) contrôlée(s)"_s));

        auto *journalExport = shown.window->findChild<JournalExport *>(u"journalExport"_s);
        QObject *dialog = shown.window->findChild<QObject *>(u"journalSaveDialog"_s);
        QObject *alert = shown.window->findChild<QObject *>(u"journalFailureAlert"_s);
        QVERIFY(journalExport && dialog && alert);
        QStringList revealed;
        journalExport->setFileRevealer([&revealed](const QString &path) { revealed << path; });
        const QString path = shown.app.folder.filePath(u"Quillon-journal.csv"_s);
        journalExport->setProposedFolder(shown.app.folder.path());

        // Accepting replaces a file already there by the byte-order mark and the text, for
        // its owner only, and shows it.
        QFile stale(path);
        QVERIFY(stale.open(QIODevice::WriteOnly) && stale.write(QByteArray(4000, 'x')) == 4000);
        stale.close();
        QVERIFY(shown.click(u"exportJournalButton"_s));
        QTRY_VERIFY(dialog->property("visible").toBool());
        QMetaObject::invokeMethod(dialog, "accept");
        QTRY_COMPARE(revealed, QStringList { path });
        QFile written(path);
        QVERIFY(written.open(QIODevice::ReadOnly));
        const QByteArray bytes = written.readAll();
        QVERIFY(bytes.startsWith("\xEF\xBB\xBF"
                                 "Date;"));
        QCOMPARE(bytes.mid(3), HistoryCsv::text(history.entries()).toUtf8());
        QCOMPARE(bytes.count('\n'), 3);
        QCOMPARE(written.permissions() & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser),
            QFile::ReadOwner | QFile::WriteOwner);
        QVERIFY(!alert->property("visible").toBool());

        // A folder that does not exist: the alert with the system's explanation.
        journalExport->setProposedFolder(shown.app.folder.filePath(u"absent"_s));
        QVERIFY(shown.click(u"exportJournalButton"_s));
        QTRY_VERIFY(dialog->property("visible").toBool());
        QMetaObject::invokeMethod(dialog, "accept");
        QTRY_VERIFY(alert->property("visible").toBool());
        QCOMPARE(alert->property("text").toString(), u"Export impossible"_s);
        QVERIFY(!alert->property("informativeText").toString().isEmpty());
        QCOMPARE(revealed.size(), 1);
        QCOMPARE(history.count(), 2);
        QMetaObject::invokeMethod(alert, "close");

        // "Retirer" removes one entry, "Tout effacer" the others: the empty message follows.
        QVERIFY(shown.click(u"removeEntryButton"_s));
        QCOMPARE(history.count(), 1);
        QVERIFY(shown.texts().contains(u"1 machine(s) contrôlée(s)"_s));
        QVERIFY(shown.items(u"emptyJournal"_s).isEmpty());
        // "Tout effacer" asks first: Esc, nothing goes; its red button, every entry goes.
        QObject *confirmation = shown.window->findChild<QObject *>(u"clearConfirmation"_s);
        QVERIFY(confirmation);
        QVERIFY(shown.click(u"clearJournalButton"_s));
        QTRY_VERIFY(confirmation->property("opened").toBool());
        QTest::keyClick(shown.window, Qt::Key_Escape);
        QTRY_VERIFY(!confirmation->property("visible").toBool());
        QCOMPARE(history.count(), 1);
        QVERIFY(shown.click(u"clearJournalButton"_s));
        QTRY_VERIFY(confirmation->property("opened").toBool());
        QVERIFY(shown.click(u"confirmClearButton"_s));
        QCOMPARE(history.count(), 0);
        QCOMPARE(shown.items(u"emptyJournal"_s).size(), 1);
        QVERIFY(shown.items(u"journalToolbar"_s).isEmpty());
        // ⌘Z puts the entry back.
        QTest::keySequence(shown.window, QKeySequence::Undo);
        QCOMPARE(history.count(), 1);
    }
};

QUILLON_UI_TEST_MAIN(TestDetailScreens)
#include "tst_detail_screens.moc"
