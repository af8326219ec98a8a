#include "common/test_main.h"

#include "sources/sysctl.h"

#include <QHash>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace {

// A kernel that hands back prepared raw bytes; a name it lacks cannot be read.
class FakeKernel final : public KernelSource
{
public:
    QHash<QByteArray, QByteArray> values;

    std::optional<QByteArray> value(const QByteArray &name) const override
    {
        const auto it = values.constFind(name);
        return it == values.constEnd() ? std::nullopt : std::optional<QByteArray>(*it);
    }
};

FakeKernel kernelWith(const QByteArray &name, const QByteArray &bytes)
{
    FakeKernel kernel;
    kernel.values.insert(name, bytes);
    return kernel;
}

} // namespace

class TestSysctl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void integer_data()
    {
        QTest::addColumn<QByteArray>("bytes"); // little-endian, as on every Mac
        QTest::addColumn<QVariant>("expected");
        QTest::newRow("4 bytes holding -1") << QByteArray::fromHex("ffffffff") << QVariant(qint64(-1));
        QTest::newRow("4 bytes holding 10") << QByteArray::fromHex("0a000000") << QVariant(qint64(10));
        QTest::newRow("4 bytes, smallest") << QByteArray::fromHex("00000080") << QVariant(qint64(-2147483648LL));
        QTest::newRow("8 bytes, 16 GiB") << QByteArray::fromHex("0000000004000000") << QVariant(qint64(17179869184));
        QTest::newRow("8 bytes holding -2") << QByteArray::fromHex("feffffffffffffff") << QVariant(qint64(-2));
        QTest::newRow("2 bytes") << QByteArray::fromHex("0100") << QVariant();
        QTest::newRow("3 bytes") << QByteArray::fromHex("010000") << QVariant();
        QTest::newRow("16 bytes") << QByteArray(16, '\1') << QVariant();
        QTest::newRow("no bytes") << QByteArray() << QVariant();
    }

    void integer()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QVariant, expected);
        const std::optional<qint64> actual = Sysctl::integer(kernelWith("hw.memsize", bytes), "hw.memsize");
        QCOMPARE(actual.has_value(), expected.isValid());
        if (actual)
            QCOMPARE(*actual, expected.toLongLong());
    }

    void string_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QVariant>("expected");
        QTest::newRow("with its zero byte") << QByteArray("15.1", 5) << QVariant(u"15.1"_s);
        QTest::newRow("without a zero byte") << QByteArray("24B83") << QVariant(u"24B83"_s);
        QTest::newRow("stops at the first zero") << QByteArray("abc\0def\0", 8) << QVariant(u"abc"_s);
        QTest::newRow("only a zero byte") << QByteArray(1, '\0') << QVariant(u""_s);
        QTest::newRow("accented") << QByteArray("caf\xc3\xa9\0", 6) << QVariant(u"café"_s);
        QTest::newRow("invalid UTF-8 replaced") << QByteArray("a\xff" "b\0", 4) << QVariant(u"a\uFFFDb"_s);
        QTest::newRow("empty value") << QByteArray() << QVariant();
    }

    void string()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QVariant, expected);
        const std::optional<QString> actual = Sysctl::string(kernelWith("kern.osversion", bytes), "kern.osversion");
        QCOMPARE(actual.has_value(), expected.isValid());
        if (actual)
            QCOMPARE(*actual, expected.toString());
    }

    void bootTime()
    {
        // 1 763 200 000 s = 20 407 days + 35 200 s after 1970: 15 November 2025, 09:46:40 UTC.
        QByteArray timeval = QByteArray::fromHex("004c186900000000"); // seconds, little-endian
        timeval += QByteArray::fromHex("3f420f0000000000");          // 999 999 µs, then padding
        const std::optional<QDateTime> boot = Sysctl::bootTime(kernelWith("kern.boottime", timeval));
        QVERIFY(boot);
        QCOMPARE(*boot, QDateTime(QDate(2025, 11, 15), QTime(9, 46, 40), QTimeZone::utc()));
        QVERIFY(!Sysctl::bootTime(kernelWith("kern.boottime", timeval.left(8))));
        QVERIFY(!Sysctl::bootTime(FakeKernel()));
    }

    void swapUsage()
    {
        // total 3 GiB, available 1 GiB, used 2 GiB, then page size and encryption flag.
        const QByteArray swap = QByteArray::fromHex("000000c000000000" "0000004000000000" "0000008000000000"
                                                    "00400000" "01000000");
        const std::optional<Sysctl::SwapUsage> usage = Sysctl::swapUsage(kernelWith("vm.swapusage", swap));
        QVERIFY(usage);
        QCOMPARE(usage->total, quint64(3221225472));
        QCOMPARE(usage->available, quint64(1073741824));
        QCOMPARE(usage->used, quint64(2147483648));
        QVERIFY(!Sysctl::swapUsage(kernelWith("vm.swapusage", swap.left(24))));
        QVERIFY(!Sysctl::swapUsage(FakeKernel()));
    }
};

QUILLON_TEST_MAIN(TestSysctl)
#include "tst_sysctl.moc"
