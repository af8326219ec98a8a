#include "check_test_support.h"
#include "common/test_main.h"

#include "diagnostics/diagnostics_report.h"

using namespace Qt::StringLiterals;
using namespace CheckTest;

// Builds a report from one letter per check: o ok, w attention, f alerte, i info,
// n nonApplicable.
static DiagnosticsReport reportOf(const QString &levels)
{
    DiagnosticsReport report;
    for (const QChar letter : levels) {
        HardwareCheck check;
        switch (letter.unicode()) {
        case u'o':
            check.status = CheckStatus::ok;
            break;
        case u'w':
            check.status = CheckStatus::attention;
            break;
        case u'f':
            check.status = CheckStatus::alerte;
            break;
        case u'i':
            check.status = CheckStatus::info;
            break;
        default:
            check.status = CheckStatus::nonApplicable;
            break;
        }
        report.checks.append(check);
    }
    return report;
}

class DiagnosticsReportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void summary_data();
    void summary();
    void countsPerLevel();
    void levelPresentation_data();
    void levelPresentation();
};

void DiagnosticsReportTest::summary_data()
{
    QTest::addColumn<QString>("levels");
    QTest::addColumn<CheckStatus>("worst");
    QTest::addColumn<int>("applicable");
    QTest::addColumn<QString>("headline");

    QTest::newRow("empty report") << u""_s << CheckStatus::info << 0 << u"Aucun problème détecté"_s;
    QTest::newRow("info then ok") << u"io"_s << CheckStatus::ok << 2 << u"Aucun problème détecté"_s;
    QTest::newRow("ok then info") << u"oi"_s << CheckStatus::ok << 2 << u"Aucun problème détecté"_s;
    QTest::newRow("not applicable, info, ok") << u"nio"_s << CheckStatus::ok << 2 << u"Aucun problème détecté"_s;
    QTest::newRow("not applicable then info") << u"nin"_s << CheckStatus::info << 1 << u"Aucun problème détecté"_s;
    QTest::newRow("ten not applicable")
        << u"nnnnnnnnnn"_s << CheckStatus::nonApplicable << 0 << u"Aucun problème détecté"_s;
    QTest::newRow("one warning") << u"owi"_s << CheckStatus::attention << 3 << u"1 point à surveiller"_s;
    QTest::newRow("three warnings") << u"wnww"_s << CheckStatus::attention << 3 << u"3 points à surveiller"_s;
    QTest::newRow("one fault") << u"ifo"_s << CheckStatus::alerte << 3 << u"1 anomalie détectée"_s;
    QTest::newRow("two faults") << u"fnf"_s << CheckStatus::alerte << 2 << u"2 anomalies détectées"_s;
    QTest::newRow("warning, fault, warning")
        << u"wfw"_s << CheckStatus::alerte << 3 << u"1 anomalie · 2 points à surveiller"_s;
    QTest::newRow("two faults and a warning")
        << u"fwf"_s << CheckStatus::alerte << 3 << u"2 anomalies · 1 point à surveiller"_s;
    QTest::newRow("one fault and one warning")
        << u"wf"_s << CheckStatus::alerte << 2 << u"1 anomalie · 1 point à surveiller"_s;
    QTest::newRow("counts without grouping")
        << QString(1234, u'w') << CheckStatus::attention << 1234 << u"1234 points à surveiller"_s;
}

void DiagnosticsReportTest::summary()
{
    QFETCH(QString, levels);
    QFETCH(CheckStatus, worst);
    QFETCH(int, applicable);
    QFETCH(QString, headline);

    const DiagnosticsReport report = reportOf(levels);
    QCOMPARE(shown(report.worst()), shown(worst));
    QCOMPARE(report.applicableCount(), applicable);
    QCOMPARE(report.headline(), headline);
}

void DiagnosticsReportTest::countsPerLevel()
{
    const DiagnosticsReport report = reportOf(u"oowfiinnnw"_s);
    QCOMPARE(report.count(CheckStatus::ok), 2);
    QCOMPARE(report.count(CheckStatus::attention), 2);
    QCOMPARE(report.count(CheckStatus::alerte), 1);
    QCOMPARE(report.count(CheckStatus::info), 2);
    QCOMPARE(report.count(CheckStatus::nonApplicable), 3);
    QCOMPARE(DiagnosticsReport().count(CheckStatus::ok), 0);
}

void DiagnosticsReportTest::levelPresentation_data()
{
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<int>("storedIndex");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<int>("colourRole");

    QTest::newRow("ok") << CheckStatus::ok << 0 << u"Correct"_s << u"checkmark.circle.fill"_s
                        << int(CheckColourRole::green);
    QTest::newRow("attention") << CheckStatus::attention << 1 << u"À surveiller"_s
                               << u"exclamationmark.triangle.fill"_s << int(CheckColourRole::orange);
    QTest::newRow("alerte") << CheckStatus::alerte << 2 << u"Anomalie"_s << u"xmark.octagon.fill"_s
                            << int(CheckColourRole::red);
    QTest::newRow("info") << CheckStatus::info << 3 << u"Info"_s << u"info.circle.fill"_s
                          << int(CheckColourRole::accent);
    QTest::newRow("nonApplicable") << CheckStatus::nonApplicable << 4 << u"Sans objet"_s << u"minus.circle"_s
                                   << int(CheckColourRole::secondary);
}

void DiagnosticsReportTest::levelPresentation()
{
    QFETCH(CheckStatus, status);
    QFETCH(int, storedIndex);
    QFETCH(QString, label);
    QFETCH(QString, symbol);
    QFETCH(int, colourRole);

    QCOMPARE(int(status), storedIndex);
    QCOMPARE(CheckStatuses::allCases().indexOf(status), storedIndex);
    QCOMPARE(CheckStatuses::label(status), label);
    QCOMPARE(CheckStatuses::symbol(status), symbol);
    QCOMPARE(int(CheckStatuses::colourRole(status)), colourRole);
}

QUILLON_TEST_MAIN(DiagnosticsReportTest)
#include "tst_diagnostics_report.moc"
