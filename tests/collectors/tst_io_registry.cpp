#include "common/test_main.h"
#include "machine_fakes.h"

#include "sources/io_registry.h"

using namespace Qt::StringLiterals;

class TestIORegistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstAvailable_data()
    {
        // "Class:A:m" is a service of class A, "Name:A:m" one named A; m marks which one came back.
        QTest::addColumn<QStringList>("services");
        QTest::addColumn<QStringList>("candidates");
        QTest::addColumn<QString>("expected"); // "candidate:marker", empty when nothing is found
        QTest::newRow("name match of an earlier candidate beats a class match of a later one")
            << QStringList{u"Name:A:a-name"_s, u"Class:B:b-class"_s} << QStringList{u"A"_s, u"B"_s} << u"A:a-name"_s;
        QTest::newRow("class match beats name match of the same candidate")
            << QStringList{u"Name:A:a-name"_s, u"Class:A:a-class"_s} << QStringList{u"A"_s} << u"A:a-class"_s;
        QTest::newRow("later candidate when the earlier ones match nothing")
            << QStringList{u"Name:C:c-name"_s} << QStringList{u"A"_s, u"B"_s, u"C"_s} << u"C:c-name"_s;
        QTest::newRow("first of several services") << QStringList{u"Class:A:first"_s, u"Class:A:second"_s}
                                                   << QStringList{u"A"_s} << u"A:first"_s;
        QTest::newRow("empty candidate list") << QStringList{u"Class:A:a"_s} << QStringList{} << QString();
        QTest::newRow("nothing matches") << QStringList{u"Class:A:a"_s} << QStringList{u"B"_s} << QString();
    }

    void firstAvailable()
    {
        QFETCH(QStringList, services);
        QFETCH(QStringList, candidates);
        QFETCH(QString, expected);
        FakeRegistry registry;
        for (const QString &service : services) {
            const QStringList parts = service.split(u':');
            // The service's own class differs from every candidate name on purpose.
            (parts[0] == u"Class"_s ? registry.byClass : registry.byName)[parts[1]].append(
                {{u"Marker"_s, parts[2]}, {u"IOClass"_s, u"SomeDriverClass"_s}});
        }
        const std::optional<IORegistry::ClassMatch> match = IORegistry::firstAvailable(registry, candidates);
        QCOMPARE(match ? match->className + u':' + match->properties.value(u"Marker"_s).toString() : QString(),
                 expected);
    }

    void firstOfClassIgnoresNameMatches()
    {
        FakeRegistry registry;
        registry.byName[u"A"_s] = {{{u"Marker"_s, u"by-name"_s}}};
        registry.byClass[u"B"_s] = {{{u"Marker"_s, u"one"_s}}, {{u"Marker"_s, u"two"_s}}};
        QVERIFY(!IORegistry::first(registry, u"A"_s));
        QCOMPARE(IORegistry::first(registry, u"B"_s)->value(u"Marker"_s).toString(), u"one"_s);
    }
};

QUILLON_TEST_MAIN(TestIORegistry)
#include "tst_io_registry.moc"
