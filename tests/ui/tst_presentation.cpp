#include "ui_test_support.h"

#include "ui/models/device_list_model.h"
#include "ui/presentation/presentation.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using Presentation::MonitorPlan;
using Presentation::ScaffoldState;

Q_DECLARE_METATYPE(ScaffoldState)
Q_DECLARE_METATYPE(MonitorPlan)
Q_DECLARE_METATYPE(AppSection)
Q_DECLARE_METATYPE(DeviceStatus)

namespace {

DeviceNode node(const QString &name, QList<DeviceNode> children = {}, QList<InfoRow> rows = {})
{
    return { .name = name, .symbol = u"cable.connector"_s, .rows = std::move(rows), .children = std::move(children) };
}

} // namespace

class TestPresentation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scaffoldState_data()
    {
        QTest::addColumn<bool>("isLoading");
        QTest::addColumn<bool>("hasFailure");
        QTest::addColumn<bool>("isEmpty");
        QTest::addColumn<ScaffoldState>("expected");
        QTest::addColumn<int>("forQml");

        using H = PresentationHelpers;
        QTest::newRow("failure over stale content") << false << true << false << ScaffoldState::failure << +H::Failure;
        QTest::newRow("failure while a retry loads") << true << true << true << ScaffoldState::failure << +H::Failure;
        QTest::newRow("first load") << true << false << true << ScaffoldState::loading << +H::Loading;
        QTest::newRow("refresh keeps the content") << true << false << false << ScaffoldState::content << +H::Content;
        QTest::newRow("nothing to show") << false << false << true << ScaffoldState::empty << +H::Empty;
    }

    void scaffoldState()
    {
        QFETCH(bool, isLoading);
        QFETCH(bool, hasFailure);
        QFETCH(bool, isEmpty);
        QFETCH(ScaffoldState, expected);
        const std::optional<QString> failure
            = hasFailure ? std::optional<QString>(u"La commande system_profiler a échoué."_s) : std::nullopt;
        QCOMPARE(Presentation::scaffoldState(isLoading, failure, isEmpty), expected);
        // QML gives an empty text for no failure.
        QTEST(PresentationHelpers().scaffoldState(isLoading, failure.value_or(QString()), isEmpty), "forQml");
    }

    void monitorsFor_data()
    {
        QTest::addColumn<AppSection>("section");
        QTest::addColumn<MonitorPlan>("expected");

        const MonitorPlan all { true, true, true };
        const MonitorPlan withoutLid { false, true, true };
        const MonitorPlan none { false, false, false };
        QTest::newRow("overview") << AppSection::overview << all;
        QTest::newRow("hardware") << AppSection::hardware << all;
        QTest::newRow("diagnostics") << AppSection::diagnostics << withoutLid;
        QTest::newRow("battery") << AppSection::battery << withoutLid;
        QTest::newRow("history") << AppSection::history << none;
        QTest::newRow("usb") << AppSection::usb << none;
    }

    void monitorsFor()
    {
        QFETCH(AppSection, section);
        QTEST(Presentation::monitorsFor(section), "expected");
    }

    void deviceListKeepsItsCardsForTheSameNodes()
    {
        const QList<DeviceNode> roots { node(u"Clavier"_s) };
        DeviceListModel model;
        model.setRoots(roots);
        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        model.setRoots(roots);
        QCOMPARE(resets.count(), 0);
        // The same device with a changed value: its row changes, no card is rebuilt.
        QList<DeviceNode> changed = roots;
        changed[0].subtitle = u"Apple"_s;
        QSignalSpy rowChanges(&model, &QAbstractItemModel::dataChanged);
        model.setRoots(changed);
        QCOMPARE(resets.count(), 0);
        QCOMPARE(rowChanges.count(), 1);
        QCOMPARE(model.data(model.index(0), DeviceListModel::NodeRole).toMap().value(u"subtitle"_s).toString(), u"Apple"_s);
        // Another device: the list is built again.
        model.setRoots({ node(u"Clavier"_s) });
        QCOMPARE(resets.count(), 1);
    }

};

QUILLON_UI_TEST_MAIN(TestPresentation)
#include "tst_presentation.moc"
