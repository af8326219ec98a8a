#include "common/test_main.h"

#include "core/formatting.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

class TestFormatting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fixed_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QString>("text");
        QTest::newRow("exact tie to even, down") << 52.5 << 0 << u"52"_s;
        QTest::newRow("exact tie to even, up") << 53.5 << 0 << u"54"_s;
        QTest::newRow("negative tie to even") << -2.5 << 0 << u"-2"_s;
        QTest::newRow("0.125 to two places") << 0.125 << 2 << u"0.12"_s;
        QTest::newRow("30.55 stored above the tie") << 30.55 << 1 << u"30.6"_s;
        QTest::newRow("2.675 stored below the tie") << 2.675 << 2 << u"2.67"_s;
        QTest::newRow("zeros kept") << 1.005 << 2 << u"1.00"_s;
        QTest::newRow("negative") << -0.05 << 1 << u"-0.1"_s;
    }

    void fixed()
    {
        QFETCH(double, value);
        QFETCH(int, decimals);
        QTEST(Format::fixed(value, decimals), "text");
    }

    void roundedPercent_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<qint64>("rounded");
        QTest::newRow("half away from zero") << 2.5 << qint64(3);
        QTest::newRow("negative half away from zero") << -2.5 << qint64(-3);
        QTest::newRow("over 100") << 104.5 << qint64(105);
    }

    void roundedPercent()
    {
        QFETCH(double, value);
        QTEST(Format::roundedPercent(value), "rounded");
    }

    void dates_data()
    {
        QTest::addColumn<QDateTime>("moment");
        QTest::addColumn<QString>("longDate");
        QTest::addColumn<QString>("abbreviatedDate");
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("iso");
        QTest::addColumn<QString>("utcDate");
        const QTimeZone paris("Europe/Paris");
        // 09:05:07 in Paris in November is 08:05:07 UTC (winter time, UTC+1).
        QTest::newRow("november, winter time")
            << QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7), QTimeZone::utc()) << u"16 novembre 2026 à 09:05"_s
            << u"16 nov. 2026 à 9:05"_s << u"9:05:07"_s << u"2026-11-16T08:05:07Z"_s << u"2026-11-16"_s;
        // Half past midnight on 14 July in Paris is still 13 July in UTC (summer time, UTC+2).
        QTest::newRow("july, summer time, UTC on the day before")
            << QDateTime(QDate(2026, 7, 14), QTime(0, 30, 0), paris) << u"14 juillet 2026 à 00:30"_s
            << u"14 juil. 2026 à 0:30"_s << u"0:30:00"_s << u"2026-07-13T22:30:00Z"_s << u"2026-07-13"_s;
        QTest::newRow("first of february, evening")
            << QDateTime(QDate(2026, 2, 1), QTime(18, 0, 59), paris) << u"1 février 2026 à 18:00"_s
            << u"1 févr. 2026 à 18:00"_s << u"18:00:59"_s << u"2026-02-01T17:00:59Z"_s << u"2026-02-01"_s;
        QTest::newRow("august, milliseconds dropped")
            << QDateTime(QDate(2025, 8, 31), QTime(23, 59, 59, 999), paris) << u"31 août 2025 à 23:59"_s
            << u"31 août 2025 à 23:59"_s << u"23:59:59"_s << u"2025-08-31T21:59:59Z"_s << u"2025-08-31"_s;
    }

    void dates()
    {
        QFETCH(QDateTime, moment);
        QTEST(Format::longDateShortTime(moment), "longDate");
        QTEST(Format::abbreviatedDateShortTime(moment), "abbreviatedDate");
        QTEST(Format::standardTime(moment), "time");
        QTEST(Format::iso8601Utc(moment), "iso");
        QTEST(Format::utcCalendarDate(moment), "utcDate");
    }
};

QUILLON_TEST_MAIN(TestFormatting)
#include "tst_formatting.moc"
