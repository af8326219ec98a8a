#include "isolated_home.h"

#include "sources/mac_models.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

// The overrides are read once per process, so this program starts with the user's file in place:
// one built-in identifier renamed, one new identifier added.
static void writeOverrides()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Quillon"_s;
    QFile file(folder + u"/models.json"_s);
    if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly))
        qFatal("cannot write the overrides file");
    file.write(u"{\"Mac16,7\": {\"name\": \"MacBook Pro 16″ révisé\", \"year\": 2026},"
               u" \"Mac99,1\": {\"name\": \"Prototype\", \"year\": 2031}}"_s.toUtf8());
}

class TestMacModelsOverrides : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commercialName_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("name");
        QTest::newRow("override wins") << u"Mac16,7"_s << u"MacBook Pro 16″ révisé, 2026"_s;
        QTest::newRow("new identifier") << u"Mac99,1"_s << u"Prototype, 2031"_s;
        QTest::newRow("built-in entry still there") << u"Mac16,5"_s << u"MacBook Pro 16″ M4 Pro/Max, 2024"_s;
    }

    void commercialName()
    {
        QFETCH(QString, identifier);
        QTEST(MacModels::commercialName(identifier).value_or(QString()), "name");
    }
};

QUILLON_TEST_MAIN_IN_FRESH_HOME(TestMacModelsOverrides, writeOverrides)
#include "tst_mac_models_overrides.moc"
