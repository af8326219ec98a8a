#include "check_test_support.h"
#include "common/test_main.h"

using namespace CheckTest;

// A report with one check per letter: o ok, w attention, f alerte, i info, n nonApplicable.
static DiagnosticsReport reportOf(const QString &levels)
{
    DiagnosticsReport report;
    for (const QChar letter : levels) {
        HardwareCheck check;
        check.status = CheckStatuses::allCases().at(QStringView(u"owfin").indexOf(letter));
        report.checks.append(check);
    }
    return report;
}

class DiagnosticsReportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void summary_data()
    {
        QTest::addColumn<QString>("levels");
        QTest::addColumn<QString>("worst");
        QTest::addColumn<int>("applicable");
        QTest::addColumn<QString>("headline");
        const QString fine = u"Aucun problème détecté"_s;
        QTest::newRow("empty report") << QString() << u"info"_s << 0 << fine;
        QTest::newRow("info then ok") << u"io"_s << u"ok"_s << 2 << fine;
        QTest::newRow("info beats not applicable") << u"nin"_s << u"info"_s << 1 << fine;
        QTest::newRow("ten not applicable") << u"nnnnnnnnnn"_s << u"nonApplicable"_s << 0 << fine;
        QTest::newRow("one warning") << u"owi"_s << u"attention"_s << 3 << u"1 point à surveiller"_s;
        QTest::newRow("one fault") << u"ifo"_s << u"alerte"_s << 3 << u"1 anomalie détectée"_s;
        QTest::newRow("two faults") << u"fnf"_s << u"alerte"_s << 2 << u"2 anomalies détectées"_s;
        QTest::newRow("one fault, two warnings") << u"wfw"_s << u"alerte"_s << 3 << u"1 anomalie · 2 points à surveiller"_s;
        QTest::newRow("counts without grouping") << QString(1234, u'w') << u"attention"_s << 1234 << u"1234 points à surveiller"_s;
    }

    void summary()
    {
        QFETCH(QString, levels);
        const DiagnosticsReport report = reportOf(levels);
        QTEST(statusName(report.worst()), "worst");
        QTEST(report.applicableCount(), "applicable");
        QTEST(report.headline(), "headline");
    }

    // Failed reads are counted in the headline; they never leave it saying all is well.
    void failedReadsInTheHeadline_data()
    {
        QTest::addColumn<QString>("levels");
        QTest::addColumn<int>("reads");
        QTest::addColumn<QString>("headline");
        QTest::newRow("all correct, one read failed") << u"oo"_s << 1 << u"Bilan incomplet — 1 lecture impossible"_s;
        QTest::newRow("nothing judged, three failed") << QString() << 3 << u"Bilan incomplet — 3 lectures impossibles"_s;
        QTest::newRow("a warning and a failed read") << u"ow"_s << 1 << u"1 point à surveiller · 1 lecture impossible"_s;
        QTest::newRow("a fault and two failed reads") << u"fo"_s << 2 << u"1 anomalie détectée · 2 lectures impossibles"_s;
    }

    void failedReadsInTheHeadline()
    {
        QFETCH(QString, levels);
        QFETCH(int, reads);
        DiagnosticsReport report = reportOf(levels);
        for (int i = 0; i < reads; ++i)
            report.failedReads.append({AppSections::dataSections().at(i), u"Réponse de system_profiler illisible."_s});
        QTEST(report.headline(), "headline");
    }

};

QUILLON_TEST_MAIN(DiagnosticsReportTest)
#include "tst_diagnostics_report.moc"
