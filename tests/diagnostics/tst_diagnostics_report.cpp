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
        QTest::newRow("ok then info") << u"oi"_s << u"ok"_s << 2 << fine;
        QTest::newRow("not applicable, info, ok") << u"nio"_s << u"ok"_s << 2 << fine;
        QTest::newRow("info beats not applicable") << u"nin"_s << u"info"_s << 1 << fine;
        QTest::newRow("ten not applicable") << u"nnnnnnnnnn"_s << u"nonApplicable"_s << 0 << fine;
        QTest::newRow("one warning") << u"owi"_s << u"attention"_s << 3 << u"1 point à surveiller"_s;
        QTest::newRow("three warnings") << u"wnww"_s << u"attention"_s << 3 << u"3 points à surveiller"_s;
        QTest::newRow("one fault") << u"ifo"_s << u"alerte"_s << 3 << u"1 anomalie détectée"_s;
        QTest::newRow("two faults") << u"fnf"_s << u"alerte"_s << 2 << u"2 anomalies détectées"_s;
        QTest::newRow("one fault, two warnings") << u"wfw"_s << u"alerte"_s << 3 << u"1 anomalie · 2 points à surveiller"_s;
        QTest::newRow("two faults, one warning") << u"fwf"_s << u"alerte"_s << 3 << u"2 anomalies · 1 point à surveiller"_s;
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

    void countsPerLevel()
    {
        const DiagnosticsReport report = reportOf(u"oowfiinnnw"_s);
        QCOMPARE((QList<int>{report.count(CheckStatus::ok), report.count(CheckStatus::attention),
                             report.count(CheckStatus::alerte), report.count(CheckStatus::info),
                             report.count(CheckStatus::nonApplicable)}),
                 (QList<int>{2, 2, 1, 2, 3}));
    }

    void levels_data()
    {
        QTest::addColumn<CheckStatus>("status");
        QTest::addColumn<QString>("expected"); // stored index | label | symbol | colour role
        QTest::newRow("ok") << CheckStatus::ok << u"0 | Correct | checkmark.circle.fill | 0"_s;
        QTest::newRow("attention") << CheckStatus::attention << u"1 | À surveiller | exclamationmark.triangle.fill | 1"_s;
        QTest::newRow("alerte") << CheckStatus::alerte << u"2 | Anomalie | xmark.octagon.fill | 2"_s;
        QTest::newRow("info") << CheckStatus::info << u"3 | Info | info.circle.fill | 3"_s;
        QTest::newRow("nonApplicable") << CheckStatus::nonApplicable << u"4 | Sans objet | minus.circle | 4"_s;
    }

    void levels()
    {
        QFETCH(CheckStatus, status);
        // Colour roles in order: green, orange, red, accent, secondary.
        QTEST(QStringList({QString::number(CheckStatuses::allCases().indexOf(status)), CheckStatuses::label(status),
                           CheckStatuses::symbol(status), QString::number(int(CheckStatuses::colourRole(status)))})
                  .join(u" | "_s),
              "expected");
        QCOMPARE(int(status), CheckStatuses::allCases().indexOf(status));
    }
};

QUILLON_TEST_MAIN(DiagnosticsReportTest)
#include "tst_diagnostics_report.moc"
