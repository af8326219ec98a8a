#include "ui_test_support.h"

#include "ui/models/device_list_model.h"
#include "ui/models/section_list_model.h"
#include "ui/presentation/presentation.h"
#include "ui/theme/theme.h"

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
    DeviceNode made;
    made.name = name;
    made.symbol = u"cable.connector"_s;
    made.children = std::move(children);
    made.rows = std::move(rows);
    return made;
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
        QTest::newRow("content") << false << false << false << ScaffoldState::content << +H::Content;
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
        QTest::newRow("storage") << AppSection::storage << none;
        QTest::newRow("displays") << AppSection::displays << none;
        QTest::newRow("usb") << AppSection::usb << none;
        QTest::newRow("camera") << AppSection::camera << none;
    }

    void monitorsFor()
    {
        QFETCH(AppSection, section);
        QTEST(Presentation::monitorsFor(section), "expected");
    }

    void badge_data()
    {
        // Through the raw value, as a device card gives it.
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("colourRole");

        using Presentation::statusRawValue;
        QTest::newRow("connected") << statusRawValue(DeviceStatus::connected) << u"Connecté"_s << u"green"_s;
        QTest::newRow("disconnected") << statusRawValue(DeviceStatus::disconnected) << u"Non connecté"_s
                                      << u"secondary"_s;
        QTest::newRow("warning") << statusRawValue(DeviceStatus::warning) << u"À vérifier"_s << u"orange"_s;
        QTest::newRow("neutral: no badge") << statusRawValue(DeviceStatus::neutral) << QString() << u"secondary"_s;
        QTest::newRow("unknown raw value: no badge") << u"Connected"_s << QString() << u"secondary"_s;
        QTest::newRow("no raw value: no badge") << QString() << QString() << u"secondary"_s;
    }

    void badge()
    {
        QFETCH(QString, status);
        QTEST(PresentationHelpers().badgeLabel(status), "label");
        QTEST(PresentationHelpers().badgeColourRole(status), "colourRole");
    }

    void applicationName_data()
    {
        QTest::addColumn<QString>("displayName");
        QTest::addColumn<QString>("bundleName");
        QTest::addColumn<QString>("expected");
        QTest::newRow("display name first") << u"Quillon Atelier"_s << u"Quillon"_s << u"Quillon Atelier"_s;
        QTest::newRow("bundle name without display name") << QString() << u"QuillonPro"_s << u"QuillonPro"_s;
        QTest::newRow("neither") << QString() << QString() << u"Quillon"_s;
    }

    void applicationName()
    {
        QFETCH(QString, displayName);
        QFETCH(QString, bundleName);
        const auto lookup = [&](const QString &key) -> std::optional<QString> {
            const QString value = key == u"CFBundleDisplayName"_s ? displayName
                : key == u"CFBundleName"_s                        ? bundleName
                                                                  : QString();
            return value.isNull() ? std::nullopt : std::optional<QString>(value);
        };
        QTEST(Presentation::applicationName(lookup), "expected");
    }

    void versionText() { QCOMPARE(Presentation::versionText(u"1.2 (45)"_s), u"Version 1.2 (45)"_s); }

    void deviceListWalksTreesDepthFirstWithIndentationAndCardContents()
    {
        // Hub → (dock → drive), receiver; then a second root.
        const QList<DeviceNode> roots {
            node(u"Hub"_s,
                { node(u"Dock"_s,
                      { node(u"SSD"_s, {},
                          { InfoRow(u"Fabricant"_s, u"Samsung"_s), InfoRow(u"Vitesse"_s, u"Jusqu’à 12 Mb/s"_s) }) }),
                    node(u"Récepteur"_s) }),
            node(u"Clavier"_s),
        };
        DeviceListModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setRoots(roots);

        const QStringList expectedNames { u"Hub"_s, u"Dock"_s, u"SSD"_s, u"Récepteur"_s, u"Clavier"_s };
        const QList<double> expectedIndents { 0, 22, 44, 22, 0 };
        QCOMPARE(model.count(), 5);
        for (int row = 0; row < model.count(); ++row) {
            const QModelIndex index = model.index(row);
            QCOMPARE(model.data(index, DeviceListModel::NodeRole).toMap().value(u"name"_s).toString(),
                expectedNames.at(row));
            QCOMPARE(model.data(index, DeviceListModel::IndentRole).toDouble(), expectedIndents.at(row));
        }
        // A hub without subtitle or rows; the drive's rows in their order.
        const QVariantMap hub = model.data(model.index(0), DeviceListModel::NodeRole).toMap();
        QCOMPARE(hub.value(u"subtitle"_s).toString(), QString());
        QCOMPARE(hub.value(u"status"_s).toString(), u"neutral"_s);
        QVERIFY(hub.value(u"rows"_s).toList().isEmpty());
        const QVariantList rows
            = model.data(model.index(2), DeviceListModel::NodeRole).toMap().value(u"rows"_s).toList();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows.at(0).toMap().value(u"label"_s).toString(), u"Fabricant"_s);
        QCOMPARE(rows.at(1).toMap().value(u"value"_s).toString(), u"Jusqu’à 12 Mb/s"_s);
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

    void themeFollowsTheApplicationPalette()
    {
        const QPalette original = QGuiApplication::palette();
        QGuiApplication::setPalette(Theme::controlsPalette(false));
        Theme theme;
        QVERIFY(!theme.isDark());
        QSignalSpy changes(&theme, &Theme::appearanceChanged);
        QGuiApplication::setPalette(Theme::controlsPalette(true));
        QCOMPARE(changes.count(), 1);
        QVERIFY(theme.isDark());
        // Text fields are drawn on the same surface as the cards, in both appearances.
        QCOMPARE(theme.controlColours().value(u"base"_s).value<QColor>(), theme.cardSurface());
        QGuiApplication::setPalette(Theme::controlsPalette(false));
        QCOMPARE(changes.count(), 2);
        QCOMPARE(theme.controlColours().value(u"base"_s).value<QColor>(), theme.cardSurface());
        // Role names as QML writes them.
        QCOMPARE(theme.controlColours().value(u"toolTipText"_s).value<QColor>(),
            Theme::controlsPalette(false).color(QPalette::ToolTipText));
        QGuiApplication::setPalette(original);
    }

    void themeRoles()
    {
        Theme theme;
        QCOMPARE(theme.colour(u"tint"_s), theme.accent());
        QCOMPARE(theme.colour(u"orange"_s), theme.orange());
        QCOMPARE(theme.colour(u"secondary"_s), theme.secondary());
        QCOMPARE(theme.colour(u"mauve"_s), theme.primary());
        // The hairline is the primary colour at 8 % opacity.
        QCOMPARE(theme.hairline().rgb(), theme.primary().rgb());
        QCOMPARE(theme.hairline().alpha(), 20);
        // Fading replaces the opacity rather than multiplying it.
        QCOMPARE(theme.faded(theme.secondary(), 0.15).alpha(), 38);
    }

    void sidebarListsTheThirteenSectionsInOrder()
    {
        SectionListModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model.count(), 13);
        QCOMPARE(model.sectionAt(0), u"overview"_s);
        QCOMPARE(model.data(model.index(2), SectionListModel::TitleRole).toString(), u"Journal"_s);
        QCOMPARE(model.data(model.index(7), SectionListModel::TitleRole).toString(), u"USB"_s);
        QCOMPARE(model.data(model.index(12), SectionListModel::SymbolRole).toString(), u"camera"_s);
        QCOMPARE(model.indexOf(u"battery"_s), 4);
        QCOMPARE(model.indexOf(QString()), -1);
        QCOMPARE(model.sectionAt(13), QString());
    }
};

QUILLON_UI_TEST_MAIN(TestPresentation)
#include "tst_presentation.moc"
