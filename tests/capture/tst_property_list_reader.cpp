#include "common/test_main.h"

#include "platform/capture/property_list_reader.h"

#include <QDateTime>
#include <QTimeZone>
#include <QtEndian>

#include <plist/plist.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

QByteArray xml(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n"
        + body + "\n</plist>\n";
}

// The same property list in the binary form, as libplist writes it.
QByteArray binary(const QByteArray &xmlText)
{
    plist_t root = nullptr;
    plist_from_xml(xmlText.constData(), uint32_t(xmlText.size()), &root);
    if (!root)
        qFatal("a test property list does not parse");
    char *bytes = nullptr;
    uint32_t length = 0;
    plist_to_bin(root, &bytes, &length);
    plist_free(root);
    QByteArray result(bytes, qsizetype(length));
    free(bytes);
    return result;
}

void appendBigEndian(QByteArray &bytes, quint64 value, int size)
{
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes.append(char((value >> shift) & 0xff));
}

// A binary property list written by hand: `objects` are the encoded objects, whose
// references are 4 bytes wide; object 0 is the root.
QByteArray handMadeBinary(const QList<QByteArray> &objects)
{
    QByteArray bytes("bplist00");
    QList<quint64> offsets;
    for (const QByteArray &object : objects) {
        offsets.append(quint64(bytes.size()));
        bytes += object;
    }
    const quint64 offsetTable = quint64(bytes.size());
    for (quint64 offset : offsets)
        appendBigEndian(bytes, offset, 4);
    bytes += QByteArray(6, '\0');
    bytes += char(4); // offset size
    bytes += char(4); // reference size
    appendBigEndian(bytes, quint64(objects.size()), 8);
    appendBigEndian(bytes, 0, 8);
    appendBigEndian(bytes, offsetTable, 8);
    return bytes;
}

// An array of one element: the object `reference`.
QByteArray arrayOf(quint64 reference)
{
    QByteArray object(1, char(0xA1));
    appendBigEndian(object, reference, 4);
    return object;
}

// `depth` arrays, each holding the next; the innermost is empty.
QByteArray nestedBinary(int depth)
{
    QList<QByteArray> objects;
    for (int i = 0; i < depth - 1; ++i)
        objects.append(arrayOf(quint64(i + 1)));
    objects.append(QByteArray(1, char(0xA0)));
    return handMadeBinary(objects);
}

QByteArray nestedXml(int depth)
{
    return xml(QByteArray("<array>").repeated(depth) + QByteArray("</array>").repeated(depth));
}

// Compares kinds as well as values: 1 and 1.0 and true are three different values here.
QString difference(const QVariant &actual, const QVariant &expected, const QString &where = u"root"_s)
{
    if (actual.typeId() != expected.typeId())
        return u"%1: type %2 instead of %3"_s.arg(where, QString::fromLatin1(actual.typeName()),
                                                  QString::fromLatin1(expected.typeName()));
    if (expected.typeId() == QMetaType::QVariantList) {
        const QVariantList a = actual.toList(), e = expected.toList();
        if (a.size() != e.size())
            return where + u": size differs"_s;
        for (qsizetype i = 0; i < e.size(); ++i) {
            if (const QString d = difference(a[i], e[i], where + u'[' + QString::number(i) + u']'); !d.isEmpty())
                return d;
        }
        return {};
    }
    if (expected.typeId() == QMetaType::QVariantMap) {
        const QVariantMap a = actual.toMap(), e = expected.toMap();
        if (a.keys() != e.keys())
            return where + u": keys differ"_s;
        for (auto it = e.begin(); it != e.end(); ++it) {
            if (const QString d = difference(a.value(it.key()), *it, where + u'.' + it.key()); !d.isEmpty())
                return d;
        }
        return {};
    }
    if (expected.typeId() == QMetaType::QDateTime && actual.toDateTime().timeSpec() != Qt::UTC)
        return where + u": date not in UTC"_s;
    return actual == expected ? QString() : where + u": value differs"_s;
}

struct Kind
{
    const char *name;
    QByteArray body;
    QVariant expected;
};

QList<Kind> kinds()
{
    const QDateTime capture(QDate(2026, 11, 16), QTime(8, 5, 7), QTimeZone::utc());
    return {
        {"dictionary", "<dict><key>a</key><integer>1</integer><key>b</key><string>x</string></dict>",
         QVariantMap{{u"a"_s, qint64(1)}, {u"b"_s, u"x"_s}}},
        {"array", "<array><string>x</string><true/><real>1.5</real><integer>2</integer></array>",
         QVariantList{u"x"_s, true, 1.5, qint64(2)}},
        {"nested", "<dict><key>ports</key><array><dict><key>id</key><integer>7</integer></dict></array></dict>",
         QVariantMap{{u"ports"_s, QVariantList{QVariantMap{{u"id"_s, qint64(7)}}}}}},
        {"text", "<string>caf\xc3\xa9 \xe2\x80\x94 \xe2\x80\xaf</string>", u"café — \u202F"_s},
        {"empty text", "<string></string>", u""_s},
        {"negative integer", "<integer>-5</integer>", qint64(-5)},
        {"largest signed integer", "<integer>9223372036854775807</integer>", std::numeric_limits<qint64>::max()},
        {"smallest signed integer", "<integer>-9223372036854775808</integer>", std::numeric_limits<qint64>::min()},
        {"just above the signed range", "<integer>9223372036854775808</integer>", quint64(9223372036854775808ULL)},
        {"largest unsigned integer", "<integer>18446744073709551615</integer>", std::numeric_limits<quint64>::max()},
        {"real", "<real>2.5</real>", 2.5},
        {"integral real", "<real>3</real>", 3.0},
        {"negative real", "<real>-0.25</real>", -0.25},
        {"true", "<true/>", true},
        {"false", "<false/>", false},
        {"data", "<data>AAEC/w==</data>", QByteArray::fromHex("000102ff")},
        {"date", "<date>2026-11-16T08:05:07Z</date>", capture},
        {"date before 2001", "<date>1999-12-31T23:59:59Z</date>",
         QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59), QTimeZone::utc())},
        {"date after 2069", "<date>2100-03-01T12:00:00Z</date>",
         QDateTime(QDate(2100, 3, 1), QTime(12, 0, 0), QTimeZone::utc())},
        {"date before 1933", "<date>1904-01-01T00:00:00Z</date>",
         QDateTime(QDate(1904, 1, 1), QTime(0, 0, 0), QTimeZone::utc())},
    };
}

} // namespace

class TestPropertyListReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kindsKeptApart_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QVariant>("expected");
        for (const Kind &kind : kinds()) {
            QTest::addRow("%s, XML", kind.name) << xml(kind.body) << kind.expected;
            QTest::addRow("%s, binary", kind.name) << binary(xml(kind.body)) << kind.expected;
        }
        QTest::newRow("XML without declaration") << QByteArray("<plist><integer>4</integer></plist>")
                                                 << QVariant(qint64(4));
        QTest::newRow("nesting of 50 levels, XML") << nestedXml(50) << QVariant(); // checked below
        QTest::newRow("nesting of 50 levels, binary") << nestedBinary(50) << QVariant();
    }

    void kindsKeptApart()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QVariant, expected);
        const PropertyListReader::Outcome outcome = PropertyListReader::read(bytes);
        QCOMPARE(outcome.error, QString());
        if (!expected.isValid()) {
            QVariant level = outcome.root;
            for (int depth = 1; depth < 50; ++depth)
                level = level.toList().value(0);
            QCOMPARE(level, QVariant(QVariantList()));
            return;
        }
        const QString d = difference(outcome.root, expected);
        QVERIFY2(d.isEmpty(), qPrintable(d));
    }

    void hostileInput_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray dictionary = xml(kinds().first().body);
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("whitespace") << QByteArray(" \n\t");
        QTest::newRow("binary header only") << QByteArray("bplist00");
        QTest::newRow("not a property list") << QByteArray("hello");
        QTest::newRow("JSON") << QByteArray(R"({"a": 1})");
        QTest::newRow("truncated XML") << dictionary.left(dictionary.size() / 2);
        QTest::newRow("unclosed XML") << QByteArray("<plist><array><string>a</string>");
        QTest::newRow("truncated binary") << binary(dictionary).chopped(10);
        QByteArray offsetOutside = binary(dictionary);
        offsetOutside.replace(offsetOutside.size() - 8, 8, QByteArray::fromHex("00000000ffffff00"));
        QTest::newRow("offset table outside the file") << offsetOutside;
        QTest::newRow("binary array holding itself") << handMadeBinary({arrayOf(0)});
        QTest::newRow("binary reference beyond the objects") << handMadeBinary({arrayOf(5)});
        QTest::newRow("integer beyond 64 bits") << xml("<integer>99999999999999999999999</integer>");
        QTest::newRow("negative integer beyond 64 bits") << xml("<integer>-99999999999999999999999</integer>");
        QTest::newRow("integer followed by letters") << xml("<integer>12abc</integer>");
        QTest::newRow("empty integer") << xml("<integer></integer>");
        QTest::newRow("real made of letters") << xml("<real>abc</real>");
        QTest::newRow("invalid base64") << xml("<data>!!!*</data>");
        QTest::newRow("padding inside base64") << xml("<data>AA=E</data>");
        QTest::newRow("unreadable date") << xml("<date>16/11/2026</date>");
        QByteArray hugeInteger(1, char(0x14)); // a 16-byte integer with its high half set
        hugeInteger += QByteArray::fromHex("0000000000000001" "0000000000000000");
        QTest::newRow("binary integer beyond 64 bits") << handMadeBinary({hugeInteger});
        // Forty arrays that each hold the next one twice: 2^40 paths through 41 objects.
        QList<QByteArray> shared;
        for (quint64 i = 0; i < 40; ++i) {
            QByteArray twice(1, char(0xA2));
            appendBigEndian(twice, i + 1, 4);
            appendBigEndian(twice, i + 1, 4);
            shared.append(twice);
        }
        shared.append(QByteArray(1, char(0x08))); // false
        QTest::newRow("binary objects shared 2^40 times") << handMadeBinary(shared);
        QTest::newRow("deep XML nesting") << nestedXml(100000);
        QTest::newRow("deep binary nesting") << nestedBinary(100000);
    }

    void hostileInput()
    {
        QFETCH(QByteArray, bytes);
        const PropertyListReader::Outcome outcome = PropertyListReader::read(bytes);
        QVERIFY2(!outcome.error.isEmpty(), "malformed input must give an error");
        QVERIFY(!outcome.root.isValid());
    }

    void invalidUtf8IsReplaced()
    {
        const PropertyListReader::Outcome outcome =
            PropertyListReader::read(xml("<dict><key>k\xc3</key><string>a\xff" "b</string></dict>"));
        QCOMPARE(outcome.error, QString());
        QCOMPARE(outcome.root, QVariant(QVariantMap{{u"k\uFFFD"_s, u"a\uFFFDb"_s}}));
    }

    void deepestAcceptedNesting()
    {
        // The root counts as depth 0: 129 nested arrays reach depth 128, 130 go beyond.
        for (const bool isBinary : {false, true}) {
            const auto nested = [&](int depth) { return isBinary ? nestedBinary(depth) : nestedXml(depth); };
            QCOMPARE(PropertyListReader::read(nested(PropertyListReader::maximumDepth + 1)).error, QString());
            QVERIFY(!PropertyListReader::read(nested(PropertyListReader::maximumDepth + 2)).error.isEmpty());
        }
    }
};

QUILLON_TEST_MAIN(TestPropertyListReader)
#include "tst_property_list_reader.moc"
