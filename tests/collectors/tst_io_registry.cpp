#include "common/test_main.h"

#include "platform/capture/capture_folder.h"
#include "platform/capture/capture_platform.h"
#include "sources/io_registry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

// A registry holding services by class and by registry name; each service is marked
// with a "Marker" so that a test can tell which one came back.
class FakeRegistry final : public RegistrySource
{
public:
    QHash<QString, QList<PropertyDictionary>> byClass;
    QHash<QString, QList<PropertyDictionary>> byName;

    QList<PropertyDictionary> servicesOfClass(const QString &name) const override { return byClass.value(name); }
    QList<PropertyDictionary> servicesNamed(const QString &name) const override { return byName.value(name); }
};

PropertyDictionary service(const QString &marker)
{
    return {{u"Marker"_s, marker}, {u"IOClass"_s, u"SomeDriverClass"_s}};
}

// "Class:Name:marker" adds a service of that class, "Name:Name:marker" one with that name.
FakeRegistry registryWith(const QStringList &services)
{
    FakeRegistry registry;
    for (const QString &entry : services) {
        const QStringList parts = entry.split(u':');
        auto &table = parts[0] == u"Class"_s ? registry.byClass : registry.byName;
        table[parts[1]].append(service(parts[2]));
    }
    return registry;
}

} // namespace

class TestIORegistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstAvailable_data()
    {
        QTest::addColumn<QStringList>("services");
        QTest::addColumn<QStringList>("candidates");
        QTest::addColumn<QString>("expectedName");   // empty: nothing found
        QTest::addColumn<QString>("expectedMarker");

        QTest::newRow("name match of an earlier candidate beats a class match of a later one")
            << QStringList{u"Name:A:a-by-name"_s, u"Class:B:b-by-class"_s} << QStringList{u"A"_s, u"B"_s} << u"A"_s
            << u"a-by-name"_s;
        QTest::newRow("class match beats name match of the same candidate")
            << QStringList{u"Name:A:a-by-name"_s, u"Class:A:a-by-class"_s} << QStringList{u"A"_s} << u"A"_s
            << u"a-by-class"_s;
        QTest::newRow("a later candidate when the earlier ones match nothing")
            << QStringList{u"Name:C:c-by-name"_s} << QStringList{u"A"_s, u"B"_s, u"C"_s} << u"C"_s << u"c-by-name"_s;
        QTest::newRow("first of several services of the class")
            << QStringList{u"Class:A:first"_s, u"Class:A:second"_s} << QStringList{u"A"_s} << u"A"_s << u"first"_s;
        QTest::newRow("empty candidate list") << QStringList{u"Class:A:a"_s} << QStringList{} << QString() << QString();
        QTest::newRow("nothing matches") << QStringList{u"Class:A:a"_s} << QStringList{u"B"_s} << QString()
                                         << QString();
    }

    void firstAvailable()
    {
        QFETCH(QStringList, services);
        QFETCH(QStringList, candidates);
        QFETCH(QString, expectedName);
        QFETCH(QString, expectedMarker);

        const std::optional<IORegistry::ClassMatch> match
            = IORegistry::firstAvailable(registryWith(services), candidates);
        QCOMPARE(match.has_value(), !expectedName.isEmpty());
        if (!match)
            return;
        // The caller's candidate comes back, not the service's own class.
        QCOMPARE(match->className, expectedName);
        QCOMPARE(match->properties.value(u"Marker"_s).toString(), expectedMarker);
    }

    void firstOfClassIgnoresNameMatches()
    {
        const FakeRegistry registry = registryWith({u"Name:A:by-name"_s, u"Class:B:one"_s, u"Class:B:two"_s});
        QVERIFY(!IORegistry::first(registry, u"A"_s));
        QCOMPARE(IORegistry::first(registry, u"B"_s)->value(u"Marker"_s).toString(), u"one"_s);
    }

    // A service that cannot be read leaves no gap: here the registry answer of a capture
    // holds an entry that is not a dictionary between two readable services.
    void unreadableServiceIsSkipped()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        QVERIFY(QDir(dir.path()).mkpath(u"registry/class"_s));
        QFile header(dir.filePath(u"capture.json"_s));
        QVERIFY(header.open(QIODevice::WriteOnly));
        header.write(R"({"format": 1, "capturedAt": "2026-11-16T10:05:00Z"})");
        header.close();
        QFile answer(dir.filePath(u"registry/class/AppleSMC.plist"_s));
        QVERIFY(answer.open(QIODevice::WriteOnly));
        answer.write(R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><array>)"
                     "<dict><key>Marker</key><string>one</string></dict>"
                     "<string>not a service</string>"
                     "<dict><key>Marker</key><string>two</string></dict>"
                     "</array></plist>");
        answer.close();

        const auto opened = CaptureFolder::open(dir.path());
        QVERIFY(std::holds_alternative<std::shared_ptr<CaptureFolder>>(opened));
        const Platform platform = makeCapturePlatform(std::get<std::shared_ptr<CaptureFolder>>(opened));
        const QList<PropertyDictionary> entries = IORegistry::entriesOfClass(*platform.registry, u"AppleSMC"_s);
        QCOMPARE(entries.size(), 2);
        QCOMPARE(entries[0].value(u"Marker"_s).toString(), u"one"_s);
        QCOMPARE(entries[1].value(u"Marker"_s).toString(), u"two"_s);
    }
};

QUILLON_TEST_MAIN(TestIORegistry)
#include "tst_io_registry.moc"
