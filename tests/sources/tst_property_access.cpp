#include "common/test_main.h"

#include "sources/property_access.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

using namespace Qt::StringLiterals;
using Kind = PropertyValues::Kind;

namespace {

// The value of one JSON literal as a profiler answer would carry it.
QVariant json(const char *literal)
{
    const QByteArray document = "{\"v\": " + QByteArray(literal) + '}';
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(document, &error).object();
    if (error.error != QJsonParseError::NoError)
        qFatal("bad JSON in a test table: %s", literal);
    return PropertyValues::dictionaryFromJson(object).value(u"v"_s);
}

PropertyDictionary holding(const QVariant &value)
{
    return {{u"v"_s, value}};
}

const QVariant absent;

} // namespace

class TestPropertyAccess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kindsFromJson_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<Kind>("kind");
        QTest::newRow("integer") << json("12") << Kind::integer;
        QTest::newRow("real") << json("12.5") << Kind::real;
        QTest::newRow("exponent") << json("1e21") << Kind::real;
        QTest::newRow("beyond 64 bits") << json("123456789012345678901234567890") << Kind::real;
        QTest::newRow("true") << json("true") << Kind::boolean;
        QTest::newRow("text") << json(R"("12")") << Kind::text;
        QTest::newRow("null") << json("null") << Kind::absent;
    }

    void kindsFromJson()
    {
        QFETCH(QVariant, value);
        QTEST(PropertyValues::kindOf(value), "kind");
    }

    void nestedValuesKeepTheirKinds()
    {
        const QVariant nested = json(R"({"list": [3, 3.5, false], "inner": {"n": 4}})");
        const QVariantList list = nested.toMap().value(u"list"_s).toList();
        QCOMPARE(PropertyValues::kindOf(list.at(0)), Kind::integer);
        QCOMPARE(PropertyValues::kindOf(list.at(1)), Kind::real);
        QCOMPARE(PropertyValues::kindOf(list.at(2)), Kind::boolean);
        QCOMPARE(Property::integer(nested.toMap().value(u"inner"_s).toMap(), u"n"_s), 4);
    }

    void missingKeyReadsAsAbsent()
    {
        const PropertyDictionary dict{{u"V"_s, 1}, {u"v "_s, 1}};
        QVERIFY(!Property::text(dict, u"v"_s));
        QVERIFY(!Property::number(dict, u"v"_s));
        QVERIFY(!Property::integer(dict, u"v"_s));
        QVERIFY(!Property::yesNo(dict, u"v"_s));
    }

    void text_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("expected");
        QTest::newRow("empty text") << json(R"("")") << absent;
        QTest::newRow("one space") << json(R"(" ")") << QVariant(u" "_s);
        QTest::newRow("true") << json("true") << QVariant(u"1"_s);
        QTest::newRow("false") << json("false") << QVariant(u"0"_s);
        QTest::newRow("integer") << json("16") << QVariant(u"16"_s);
        QTest::newRow("negative integer") << json("-3") << QVariant(u"-3"_s);
        QTest::newRow("largest 64-bit integer") << json("9223372036854775807") << QVariant(u"9223372036854775807"_s);
        QTest::newRow("real") << json("12.5") << QVariant(u"12.5"_s);
        QTest::newRow("integral real") << json("12.0") << QVariant(u"12"_s);
        QTest::newRow("1e21") << json("1e21") << QVariant(u"1e+21"_s);
        QTest::newRow("texts joined") << json(R"(["a", "b"])") << QVariant(u"a, b"_s);
        QTest::newRow("empty text in a list kept") << json(R"(["a", ""])") << QVariant(u"a, "_s);
        QTest::newRow("mixed list") << json(R"([1, "a", true, 2.5])") << QVariant(u"1, a, 1, 2.5"_s);
        QTest::newRow("empty array") << json("[]") << absent;
        QTest::newRow("object") << json(R"({"a": "b"})") << absent;
        QTest::newRow("null") << json("null") << absent;
        QTest::newRow("above 64-bit signed range")
            << QVariant(std::numeric_limits<quint64>::max()) << QVariant(u"18446744073709551615"_s);
    }

    void text()
    {
        QFETCH(QVariant, value);
        QFETCH(QVariant, expected);
        const std::optional<QString> actual = Property::text(holding(value), u"v"_s);
        QCOMPARE(actual.has_value(), expected.isValid());
        if (actual)
            QCOMPARE(*actual, expected.toString());
    }

    void number_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("expected");
        QTest::newRow("real") << json("12.5") << QVariant(12.5);
        QTest::newRow("integer") << json("17179869184") << QVariant(17179869184.0);
        QTest::newRow("true") << json("true") << QVariant(1.0);
        QTest::newRow("false") << json("false") << QVariant(0.0);
        QTest::newRow("text 12.5") << json(R"("12.5")") << QVariant(12.5);
        QTest::newRow("text with exponent") << json(R"("1e3")") << QVariant(1000.0);
        QTest::newRow("text with a unit") << json(R"("12.5 GB")") << absent;
        QTest::newRow("text with a trailing space") << json(R"("12.5 ")") << absent;
        QTest::newRow("decimal comma") << json(R"("12,5")") << absent;
        QTest::newRow("leading plus") << json(R"("+12.5")") << QVariant(12.5);
        QTest::newRow("two signs") << json(R"("+-1")") << absent;
        QTest::newRow("empty text") << json(R"("")") << absent;
        QTest::newRow("array") << json("[1]") << absent;
        QTest::newRow("null") << json("null") << absent;
        QTest::newRow("1e21") << json("1e21") << QVariant(1e21);
    }

    void number()
    {
        QFETCH(QVariant, value);
        QFETCH(QVariant, expected);
        const std::optional<double> actual = Property::number(holding(value), u"v"_s);
        QCOMPARE(actual.has_value(), expected.isValid());
        if (actual)
            QCOMPARE(*actual, expected.toDouble());
    }

    void integer_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("expected");
        QTest::newRow("integer") << json("12") << QVariant(qint64(12));
        QTest::newRow("smallest 64-bit integer") << json("-9223372036854775808")
                                                 << QVariant(std::numeric_limits<qint64>::min());
        QTest::newRow("12.7 truncated") << json("12.7") << QVariant(qint64(12));
        QTest::newRow("integral real") << json("3.0") << QVariant(qint64(3));
        QTest::newRow("true") << json("true") << QVariant(qint64(1));
        QTest::newRow("text 12") << json(R"("12")") << absent;
        QTest::newRow("1e21 out of range") << json("1e21") << absent;
        QTest::newRow("above 64-bit signed range") << QVariant(std::numeric_limits<quint64>::max()) << absent;
        QTest::newRow("array") << json("[12]") << absent;
        QTest::newRow("null") << json("null") << absent;
    }

    void integer()
    {
        QFETCH(QVariant, value);
        QFETCH(QVariant, expected);
        const std::optional<qint64> actual = Property::integer(holding(value), u"v"_s);
        QCOMPARE(actual.has_value(), expected.isValid());
        if (actual)
            QCOMPARE(*actual, expected.toLongLong());
    }

    void yesNo_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("expected");
        QTest::newRow("true") << json("true") << QVariant(u"Oui"_s);
        QTest::newRow("false") << json("false") << QVariant(u"Non"_s);
        QTest::newRow("one") << json("1") << QVariant(u"Oui"_s);
        QTest::newRow("minus one") << json("-1") << QVariant(u"Oui"_s);
        QTest::newRow("a half") << json("0.5") << QVariant(u"Oui"_s);
        QTest::newRow("text yes") << json(R"("yes")") << absent;
        QTest::newRow("null") << json("null") << absent;
    }

    void yesNo()
    {
        QFETCH(QVariant, value);
        QFETCH(QVariant, expected);
        const std::optional<QString> actual = Property::yesNo(holding(value), u"v"_s);
        QCOMPARE(actual.has_value(), expected.isValid());
        if (actual)
            QCOMPARE(*actual, expected.toString());
    }
};

QUILLON_TEST_MAIN(TestPropertyAccess)
#include "tst_property_access.moc"
