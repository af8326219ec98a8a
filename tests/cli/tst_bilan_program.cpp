#include "common/test_main.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

struct Run
{
    int exitCode = -1;
    QString standardOutput;
    QString standardError;
    QByteArray outputBytes;
};

const QString capturesDir = QStringLiteral(QUILLON_CAPTURES_DIR);

} // namespace

// quillon-bilan as a separate process, with its journal and preferences in a scratch folder.
class TestBilanProgram : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

    Run bilan(const QStringList &arguments)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, m_home.path());
        environment.insert(u"XDG_DATA_HOME"_s, m_home.path() + u"/data"_s);
        environment.insert(u"XDG_CONFIG_HOME"_s, m_home.path() + u"/config"_s);
        environment.insert(u"TZ"_s, u"Europe/Paris"_s);
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(QUILLON_BILAN), arguments);
        if (!process.waitForFinished(60000))
            return {};
        const QByteArray output = process.readAllStandardOutput();
        return {process.exitCode(), QString::fromUtf8(output), QString::fromUtf8(process.readAllStandardError()), output};
    }

private Q_SLOTS:
    void everyCaptureGivesAWholeReport_data()
    {
        QTest::addColumn<QString>("capture");
        QTest::addColumn<int>("failedReads");
        const QStringList captures = QDir(capturesDir).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        QVERIFY(captures.contains(u"sample"_s));
        for (const QString &capture : captures) {
            // That Mac's USB, Thunderbolt, Bluetooth and camera answers are unusable.
            if (QFile::exists(capturesDir + u'/' + capture + u"/capture.json"_s))
                QTest::newRow(qPrintable(capture)) << capture << (capture == u"profiler-failures" ? 4 : 0);
        }
    }

    void everyCaptureGivesAWholeReport()
    {
        QFETCH(QString, capture);
        QFETCH(int, failedReads);
        const Run run = bilan({u"--capture"_s, capturesDir + u'/' + capture});
        // Each failed read is said once on standard error and in the report, and makes the
        // run incomplete.
        QCOMPARE(run.exitCode, failedReads > 0 ? 3 : 0);
        QCOMPARE(run.standardError.count(u"quillon-bilan : Lecture impossible : "_s), failedReads);
        QCOMPARE(run.standardOutput.count(u"\nLecture impossible : "_s), failedReads);
        QVERIFY(!run.standardOutput.contains(u"AUCUN PROBLÈME DÉTECTÉ"_s) || failedReads == 0);
        const QString heavyRule(72, QChar(0x2550));
        QVERIFY(run.standardOutput.startsWith(heavyRule + u'\n'));
        QVERIFY(run.standardOutput.contains(u"  Établi le "_s));
        QVERIFY(run.standardOutput.endsWith(u"outil gratuit pour réparateurs — https://quillon.app\n"_s));
    }

    // The same report as an A4 PDF, read back with a PDF text extractor: its verdict, its
    // last line, a number on every page, private to its owner.
    void everyCaptureGivesAPdf_data() { everyCaptureGivesAWholeReport_data(); }

    void everyCaptureGivesAPdf()
    {
        QFETCH(QString, capture);
        const QString extractor = QStandardPaths::findExecutable(u"pdftotext"_s);
        if (extractor.isEmpty())
            QSKIP("pdftotext (poppler-utils, installed by scripts/setup) is missing");
        QTemporaryDir folder;
        const QString pdf = folder.filePath(u"bilan.pdf"_s);
        const Run text = bilan({u"--capture"_s, capturesDir + u'/' + capture});
        QCOMPARE(bilan({u"--capture"_s, capturesDir + u'/' + capture, u"--output"_s, pdf}).exitCode, text.exitCode);
        QCOMPARE(QFile::permissions(pdf) & 0x00FF, QFileDevice::Permissions());
        QProcess extract;
        extract.start(extractor, {pdf, u"-"_s});
        QVERIFY(extract.waitForFinished(60000));
        const QString words = QString::fromUtf8(extract.readAllStandardOutput()).simplified();
        const QString verdict = text.standardOutput.section(u"VERDICT : "_s, 1).section(u'\n', 0, 0);
        QVERIFY2(words.toUpper().contains(verdict), qPrintable(verdict));
        QVERIFY(words.contains(u"outil gratuit pour réparateurs — https://quillon.app"_s));
        const qsizetype pages = words.count(u"Page "_s);
        QVERIFY(pages >= 1);
        QVERIFY(words.contains(u"Page %1 sur %1"_s.arg(pages)));
    }

    void sampleReportIsTheSameEveryTime()
    {
        const Run first = bilan({u"--capture"_s, capturesDir + u"/sample"_s});
        const Run second = bilan({u"--capture"_s, capturesDir + u"/sample"_s});
        QCOMPARE(first.exitCode, 0);
        QCOMPARE(first.standardOutput, second.standardOutput);
        // The capture's own moment, in Paris time: 08:05:07 UTC is 09:05.
        QVERIFY(first.standardOutput.contains(u"  Établi le 16 novembre 2026 à 09:05 par Quillon "_s));
        QVERIFY(first.standardOutput.contains(u"  MacBook Pro — bilan matériel\n"_s));
        QVERIFY(first.standardOutput.contains(u"  Macintosh HD — 494,38\u00a0Go (187,36\u00a0Go libres, 62 % utilisés)\n"_s));
        // The live readings of the capture: the first lid report is 0x6E, 110°.
        QVERIFY(first.standardOutput.contains(u"] Angle d'écran (110°)\n"_s));
    }

    void badInputExitsWithTwoAndOneFrenchLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");
        QTest::newRow("unknown option") << QStringList{u"--bogus"_s} << u"--bogus"_s;
        QTest::newRow("missing capture folder") << QStringList{u"--capture"_s, u"/nonexistent/capture"_s}
                                                << u"/nonexistent/capture"_s;
        QTest::newRow("folder without capture.json") << QStringList{u"--capture"_s, capturesDir} << capturesDir;
    }

    void badInputExitsWithTwoAndOneFrenchLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const Run run = bilan(arguments);
        QCOMPARE(run.exitCode, 2);
        QVERIFY(run.standardOutput.isEmpty());
        QCOMPARE(run.standardError.count(u'\n'), 1);
        QVERIFY2(run.standardError.contains(named), qPrintable(run.standardError));
    }

    void unwritableOutputLeavesNothingAndFails()
    {
        const Run run = bilan({u"--capture"_s, capturesDir + u"/sample"_s, u"--output"_s, u"/nonexistent/dir/b.txt"_s});
        QVERIFY(run.exitCode != 0);
        QVERIFY(run.standardError.contains(u"/nonexistent/dir/b.txt"_s));
    }

    // A Mac whose hardware answer failed is not recorded, and the program says why.
    void recordWithoutTheHardwareReadRecordsNothing()
    {
        QTemporaryDir capture;
        QDir(capture.path()).mkpath(u"profiler"_s);
        QFile description(capture.filePath(u"capture.json"_s));
        QVERIFY(description.open(QIODevice::WriteOnly));
        description.write(R"({"format": 1, "capturedAt": "2026-11-16T10:00:00Z", "description": "x"})");
        description.close();
        QFile status(capture.filePath(u"profiler/SPHardwareDataType.status"_s));
        QVERIFY(status.open(QIODevice::WriteOnly));
        status.write("1");
        status.close();
        const Run run = bilan({u"--capture"_s, capture.path(), u"--record"_s});
        QCOMPARE(run.exitCode, 3);
        QVERIFY(run.standardError.contains(u"Lecture impossible : Matériel — system_profiler a échoué : code 1 pour SPHardwareDataType"_s));
        QVERIFY(run.standardError.contains(u"rien n’est noté au journal"_s));
        QVERIFY(run.standardOutput.contains(u"VERDICT : BILAN INCOMPLET — "_s));
        // Keyboard, trackpad and Touch ID are not read, never declared absent.
        QVERIFY(!run.standardOutput.contains(u"Composant absent de ce modèle"_s));
        QCOMPARE(bilan({u"--journal-csv"_s}).standardOutput.count(u'\n'), 1);
    }

    // Without a home folder the journal would land under the root of the disk: nothing is
    // recorded, and the program says so.
    void recordWithoutAHomeFolderIsRefused()
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString &name : {u"HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s})
            environment.remove(name);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_home.path());
        process.start(QStringLiteral(QUILLON_BILAN), {u"--capture"_s, capturesDir + u"/sample"_s, u"--record"_s});
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitCode(), 3);
        QVERIFY(QString::fromUtf8(process.readAllStandardError()).contains(u"aucun dossier personnel"_s));
    }

    // The same Mac a week later: its report says what changed since, from the journal.
    void aMacCheckedAgainSaysWhatChanged()
    {
        QCOMPARE(bilan({u"--capture"_s, capturesDir + u"/sample"_s, u"--record"_s}).exitCode, 0);
        QTemporaryDir later;
        for (QDirIterator files(capturesDir + u"/sample"_s, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
            const QString path = files.next();
            const QString target = later.path() + path.mid(capturesDir.size() + 7);
            QDir().mkpath(QFileInfo(target).path());
            QFile::copy(path, target);
        }
        QFile header(later.filePath(u"capture.json"_s));
        QVERIFY(header.open(QIODevice::WriteOnly));
        header.write(R"({"format": 1, "capturedAt": "2026-11-23T08:05:07Z", "description": "Une semaine plus tard"})");
        header.close();
        QVERIFY(bilan({u"--capture"_s, later.path()}).standardOutput.contains(u"\nDepuis le 16 novembre 2026 : rien n’a changé.\n"_s));
    }

    void recordThenJournalCsv()
    {
        QTemporaryDir home;
        // Two runs within the hour on the same machine make one journal line.
        QCOMPARE(bilan({u"--capture"_s, capturesDir + u"/sample"_s, u"--record"_s}).exitCode, 0);
        QCOMPARE(bilan({u"--capture"_s, capturesDir + u"/sample"_s, u"--record"_s}).exitCode, 0);
        QCOMPARE(bilan({u"--capture"_s, capturesDir + u"/worn-battery"_s, u"--record"_s}).exitCode, 0);
        const Run csv = bilan({u"--journal-csv"_s});
        QCOMPARE(csv.exitCode, 0);
        // Redirected to a file, it opens in a spreadsheet with its accents.
        QVERIFY(csv.outputBytes.startsWith("\xEF\xBB\xBF" "Date;Mod\xC3\xA8le;"));
        const QStringList lines = csv.standardOutput.split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 3); // header and two machines
        QVERIFY(lines.at(1).contains(u"MacBookAir10,1"_s) || lines.at(1).contains(u"MacBook Air"_s));
        QVERIFY(lines.at(2).contains(u"K7Q2XW9J4F"_s));
        // Only the machines searched for.
        const QStringList found = bilan({u"--journal-csv"_s, u"--search"_s, u"k7q2"_s}).standardOutput.split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(found.size(), 2);
        QVERIFY(found.at(1).contains(u"K7Q2XW9J4F"_s));
    }
};

QUILLON_TEST_MAIN(TestBilanProgram)
#include "tst_bilan_program.moc"
