#include "isolated_home.h"

#include "sources/mac_models.h"

#include <QFile>

using namespace Qt::StringLiterals;

class TestMacModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(!QFile::exists(MacModels::overridesPath())); }

    void commercialName_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("name"); // null: unknown
        QTest::newRow("Mac16,7") << u"Mac16,7"_s << u"MacBook Pro 16″ M4 Pro/Max, 2024"_s;
        QTest::newRow("Intel, generic name") << u"MacBookPro15,3"_s << u"MacBook Pro 15″, 2019"_s;
        QTest::newRow("Mac mini without chip") << u"Macmini8,1"_s << u"Mac mini, 2018"_s;
        QTest::newRow("last of the list") << u"Mac15,14"_s << u"Mac Studio M3 Ultra, 2025"_s;
        QTest::newRow("unknown") << u"Mac99,1"_s << QString();
        QTest::newRow("lower case") << u"mac16,7"_s << QString();
        QTest::newRow("trailing space") << u"Mac16,7 "_s << QString();
    }

    void commercialName()
    {
        QFETCH(QString, identifier);
        QFETCH(QString, name);
        const std::optional<QString> actual = MacModels::commercialName(identifier);
        QCOMPARE(actual.has_value(), !name.isNull());
        if (actual)
            QCOMPARE(*actual, name);
    }

    void modelYear()
    {
        QCOMPARE(MacModels::model(u"Mac14,7"_s), (MacModels::Model{u"MacBook Pro 13″ M2"_s, 2022}));
        QVERIFY(!MacModels::model(u"Mac99,1"_s));
    }

    void seventyFiveModelsWithDoublePrimes()
    {
        QCOMPARE(MacModels::table().size(), 75);
        // The inch mark is the double prime, never a straight or curly quotation mark.
        for (const MacModels::Model &model : MacModels::table()) {
            QVERIFY2(!model.name.contains(u'"') && !model.name.contains(u'\u201D'), qPrintable(model.name));
            QVERIFY2(model.year >= 2015 && model.year <= 2025, qPrintable(model.name));
        }
    }

    void decodeOverrides_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("year");
        QTest::newRow("one entry") << QByteArray(R"({"Mac16,7": {"name": "Prototype", "year": 2030}})") << true
                                   << u"Mac16,7"_s << u"Prototype"_s << 2030;
        QTest::newRow("further members ignored")
            << QByteArray(R"({"Mac99,1": {"name": "Nouveau", "year": 2031, "chip": "M9"}})") << true << u"Mac99,1"_s
            << u"Nouveau"_s << 2031;
        QTest::newRow("empty object") << QByteArray("{}") << true << QString() << QString() << 0;
        QTest::newRow("entry lacking year")
            << QByteArray(R"({"Mac16,7": {"name": "A", "year": 2024}, "Mac99,1": {"name": "B"}})") << false
            << QString() << QString() << 0;
        QTest::newRow("fractional year") << QByteArray(R"({"Mac99,1": {"name": "B", "year": 2024.5}})") << false
                                         << QString() << QString() << 0;
        QTest::newRow("year as text") << QByteArray(R"({"Mac99,1": {"name": "B", "year": "2024"}})") << false
                                      << QString() << QString() << 0;
        QTest::newRow("name as number") << QByteArray(R"({"Mac99,1": {"name": 42, "year": 2024}})") << false
                                        << QString() << QString() << 0;
        QTest::newRow("entry not an object") << QByteArray(R"({"Mac99,1": "B"})") << false << QString() << QString()
                                             << 0;
        QTest::newRow("top level array") << QByteArray(R"([{"name": "B", "year": 2024}])") << false << QString()
                                         << QString() << 0;
        QTest::newRow("not JSON") << QByteArray("Mac99,1 = B") << false << QString() << QString() << 0;
    }

    void decodeOverrides()
    {
        QFETCH(QByteArray, json);
        QFETCH(bool, valid);
        QFETCH(QString, identifier);
        const std::optional<QHash<QString, MacModels::Model>> decoded = MacModels::decodeOverrides(json);
        QCOMPARE(decoded.has_value(), valid);
        if (!decoded || identifier.isEmpty())
            return;
        QCOMPARE(decoded->size(), 1);
        QVERIFY(decoded->contains(identifier));
        QTEST(decoded->value(identifier).name, "name");
        QTEST(decoded->value(identifier).year, "year");
    }
};

QUILLON_TEST_MAIN_IN_FRESH_HOME(TestMacModels, [] {})
#include "tst_mac_models.moc"
