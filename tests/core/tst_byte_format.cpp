#include "common/test_main.h"

#include "core/byte_format.h"

using namespace Qt::StringLiterals;

// French byte counts put a no-break space before the unit and group digits with a
// narrow no-break space.
static const QString nbsp = QString(QChar(0x00A0));
static const QString nnbsp = QString(QChar(0x202F));

class TestByteFormat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void string_data()
    {
        QTest::addColumn<double>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0.0 << u"Zéro"_s + nbsp + u"Ko"_s;
        QTest::newRow("one byte") << 1.0 << u"0"_s + nbsp + u"Mo"_s;
        QTest::newRow("just under 0,05 Mo") << 49999.0 << u"0"_s + nbsp + u"Mo"_s;
        QTest::newRow("0,05 Mo rounds up") << 50000.0 << u"0,1"_s + nbsp + u"Mo"_s;
        QTest::newRow("half a megabyte") << 500000.0 << u"0,5"_s + nbsp + u"Mo"_s;
        QTest::newRow("just under the gigabyte") << 999949999.0 << u"999,9"_s + nbsp + u"Mo"_s;
        QTest::newRow("truncated before rounding") << 999949999.9 << u"999,9"_s + nbsp + u"Mo"_s;
        QTest::newRow("rounds into gigabytes") << 999950000.0 << u"1"_s + nbsp + u"Go"_s;
        QTest::newRow("half up on the decimal form") << 1135000000.0 << u"1,14"_s + nbsp + u"Go"_s;
        QTest::newRow("17,18 Go") << 17179869184.0 << u"17,18"_s + nbsp + u"Go"_s;
        QTest::newRow("one decimal left") << 500100000000.0 << u"500,1"_s + nbsp + u"Go"_s;
        QTest::newRow("500,11 Go") << 500107862016.0 << u"500,11"_s + nbsp + u"Go"_s;
        QTest::newRow("just under the terabyte") << 999994999999.0 << u"999,99"_s + nbsp + u"Go"_s;
        QTest::newRow("rounds into terabytes") << 999995000000.0 << u"1"_s + nbsp + u"To"_s;
        QTest::newRow("one terabyte") << 1e12 << u"1"_s + nbsp + u"To"_s;
        QTest::newRow("trailing zeros dropped") << 2000398934016.0 << u"2"_s + nbsp + u"To"_s;
        QTest::newRow("grouped thousands") << 4e15 << u"4"_s + nnbsp + u"000"_s + nbsp + u"To"_s;
        QTest::newRow("grouped with decimals") << 1234567890123456.0
                                               << u"1"_s + nnbsp + u"234,57"_s + nbsp + u"To"_s;
        QTest::newRow("a million terabytes") << 1e18
                                             << u"1"_s + nnbsp + u"000"_s + nnbsp + u"000"_s + nbsp + u"To"_s;
    }

    void string()
    {
        QFETCH(double, bytes);
        QTEST(ByteFormat::string(bytes), "text");
    }

    void parts_data()
    {
        QTest::addColumn<double>("bytes");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("unit");
        QTest::newRow("500,1 Go") << 500100000000.0 << u"500,1"_s << u"Go"_s;
        QTest::newRow("grouped digits split only at the last space") << 4e15 << u"4"_s + nnbsp + u"000"_s << u"To"_s;
        QTest::newRow("zero") << 0.0 << u"Zéro"_s << u"Ko"_s;
    }

    void parts()
    {
        QFETCH(double, bytes);
        const auto [value, unit] = ByteFormat::parts(bytes);
        QTEST(value, "value");
        QTEST(unit, "unit");
    }

    void splitAtLastSpace_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("unit");
        QTest::newRow("ordinary space") << u"12 Go"_s << u"12"_s << u"Go"_s;
        QTest::newRow("several kinds, last wins") << u"1 2"_s + nnbsp + u"3"_s + nbsp + u"To"_s
                                                  << u"1 2"_s + nnbsp + u"3"_s << u"To"_s;
        QTest::newRow("thin space") << u"7\u2009Mo"_s << u"7"_s << u"Mo"_s;
        QTest::newRow("no whitespace") << u"12Go"_s << u"12Go"_s << QString();
    }

    void splitAtLastSpace()
    {
        QFETCH(QString, text);
        const auto [value, unit] = ByteFormat::splitAtLastSpace(text);
        QTEST(value, "value");
        QTEST(unit, "unit");
    }
};

QUILLON_TEST_MAIN(TestByteFormat)
#include "tst_byte_format.moc"
