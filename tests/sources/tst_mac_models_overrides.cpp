#include "isolated_home.h"

#include "sources/mac_models.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

// The user's overrides file: one built-in identifier renamed, one new identifier added.
void writeOverrides()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Quillon"_s;
    QFile file(folder + u"/models.json"_s);
    if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly))
        qFatal("cannot write the overrides file");
    file.write(u"{\"Mac16,7\": {\"name\": \"MacBook Pro 16″ révisé\", \"year\": 2026},"
               u" \"Mac99,1\": {\"name\": \"Prototype\", \"year\": 2031}}"_s.toUtf8());
}

} // namespace

class TestMacModelsOverrides : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void overridesFileIsInTheDataFolder()
    {
        QCOMPARE(MacModels::overridesPath(),
                 QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Quillon/models.json"_s);
        QCOMPARE(MacModels::overrides().size(), 2);
    }

    void commercialName_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("name");
        QTest::newRow("override wins") << u"Mac16,7"_s << u"MacBook Pro 16″ révisé, 2026"_s;
        QTest::newRow("new identifier") << u"Mac99,1"_s << u"Prototype, 2031"_s;
        QTest::newRow("built-in entry still there") << u"Mac16,5"_s << u"MacBook Pro 14″ M4 Pro/Max, 2024"_s;
        QTest::newRow("unknown") << u"Mac98,1"_s << QString();
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
};

QUILLON_TEST_MAIN_IN_FRESH_HOME(TestMacModelsOverrides, writeOverrides)
#include "tst_mac_models_overrides.moc"
