#include "ui_test_support.h"

#include "live/battery_monitor.h"
#include "live/cpu_monitor.h"
#include "live/lid_angle_monitor.h"
#include "records/workshop_settings.h"
#include "ui/device_list_model.h"
#include "ui/main_window_controller.h"
#include "ui/theme.h"

#include <QFile>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

bool isShown(const QQuickItem *item)
{
    for (const QQuickItem *at = item; at; at = at->parentItem()) {
        if (!at->isVisible() || at->opacity() == 0)
            return false;
    }
    return true;
}

void collect(QQuickItem *item, QList<QQuickItem *> &all)
{
    all.append(item);
    for (QQuickItem *child : item->childItems())
        collect(child, all);
}

QList<QQuickItem *> shownItems(QQuickItem *root)
{
    QList<QQuickItem *> all;
    collect(root, all);
    QList<QQuickItem *> shown;
    for (QQuickItem *item : std::as_const(all)) {
        if (isShown(item))
            shown.append(item);
    }
    return shown;
}

// The texts a user can see under `root`, in tree order.
QStringList shownTexts(QQuickItem *root)
{
    QStringList texts;
    for (QQuickItem *item : shownItems(root)) {
        const QByteArray type = item->metaObject()->className();
        if (type.startsWith("QQuickText") || type.startsWith("QQuickLabel") || type.contains("Label_QML")) {
            const QString text = item->property("text").toString();
            if (!text.isEmpty())
                texts.append(text);
        }
    }
    return texts;
}

QList<QQuickItem *> shownNamed(QQuickItem *root, const QString &objectName)
{
    QList<QQuickItem *> found;
    for (QQuickItem *item : shownItems(root)) {
        if (item->objectName() == objectName)
            found.append(item);
    }
    return found;
}

QStringList shownSymbols(QQuickItem *root)
{
    QStringList sources;
    for (QQuickItem *item : shownItems(root)) {
        const QString source = item->property("source").toUrl().toString();
        if (source.startsWith(u"image://symbol/"_s))
            sources.append(source);
    }
    return sources;
}

// An off-screen window holding one component under test.
class Scene
{
public:
    Scene()
    {
        QuillonApp::prepareEngine(engine);
        window.resize(640, 480);
    }

    QQuickItem *load(const QByteArray &qml, const QVariantMap &properties = {})
    {
        QQmlComponent component(&engine);
        component.setData(qml, QUrl(u"qrc:/tests/Scene.qml"_s));
        QObject *object = component.createWithInitialProperties(properties);
        if (!object) {
            qWarning() << component.errors();
            return nullptr;
        }
        auto *item = qobject_cast<QQuickItem *>(object);
        item->setParent(&window);
        item->setParentItem(window.contentItem());
        if (item->width() <= 0)
            item->setSize(window.size());
        window.show();
        render();
        return item;
    }

    // Polishes and draws the window, so that layouts and loaders are up to date.
    void render()
    {
        QCoreApplication::processEvents();
        window.grabWindow();
        QCoreApplication::processEvents();
    }

    QQmlEngine engine;
    QQuickWindow window;
};

const QByteArray scaffoldScene = R"(
import QtQuick
import Quillon
Item {
    width: 600; height: 400
    property alias scaffold: scaffold
    SectionScaffold {
        id: scaffold
        anchors.fill: parent
        section: "usb"; isLoading: false; failure: ""; isEmpty: false
        content: Component { Rectangle { objectName: "screen"; implicitHeight: 900; color: "teal" } }
    }
}
)";

DeviceNode device(const QString &name, DeviceStatus status, QList<DeviceNode> children = {}, QList<InfoRow> rows = {})
{
    DeviceNode node;
    node.name = name;
    node.symbol = u"cable.connector"_s;
    node.status = status;
    node.children = std::move(children);
    node.rows = std::move(rows);
    return node;
}

} // namespace

class TestComponents : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scaffoldShowsOneState_data()
    {
        QTest::addColumn<bool>("isLoading");
        QTest::addColumn<QString>("failure");
        QTest::addColumn<bool>("isEmpty");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<bool>("showsContent");

        const QString failure = u"La commande system_profiler a échoué (code 1)."_s;
        QTest::newRow("failure over stale content")
            << false << failure << false << QStringList { u"Lecture impossible"_s, failure }
            << u"exclamationmark.triangle"_s << false;
        QTest::newRow("first load") << true << QString() << true << QStringList { u"Analyse en cours…"_s } << QString()
                                    << false;
        QTest::newRow("empty usb section")
            << false << QString() << true << QStringList { u"Rien à afficher"_s, u"Aucun périphérique USB branché."_s }
            << u"cable.connector"_s << false;
        QTest::newRow("refresh keeps the content") << true << QString() << false << QStringList() << QString() << true;
    }

    void scaffoldShowsOneState()
    {
        QFETCH(bool, isLoading);
        QFETCH(QString, failure);
        QFETCH(bool, isEmpty);
        QFETCH(QStringList, texts);
        QFETCH(QString, symbol);
        QFETCH(bool, showsContent);

        Scene scene;
        QQuickItem *root = scene.load(scaffoldScene);
        QVERIFY(root);
        QObject *scaffold = root->property("scaffold").value<QObject *>();
        scaffold->setProperty("isLoading", isLoading);
        scaffold->setProperty("failure", failure);
        scaffold->setProperty("isEmpty", isEmpty);
        scene.render();

        QCOMPARE(shownTexts(root), texts);
        const QStringList symbols = shownSymbols(root);
        if (symbol.isEmpty()) {
            QVERIFY(symbols.isEmpty());
        } else {
            QCOMPARE(symbols.size(), 1);
            QVERIFY2(symbols.first().endsWith(u'/' + symbol), qPrintable(symbols.first()));
        }
        const QList<QQuickItem *> screens = shownNamed(root, u"screen"_s);
        QCOMPARE(screens.size(), showsContent ? 1 : 0);
        if (showsContent) {
            // Padded 22 points inside its scroll area.
            const QPointF corner = screens.first()->mapToItem(root, QPointF(0, 0));
            QCOMPARE(corner, QPointF(22, 22));
            QCOMPARE(screens.first()->width(), 600 - 44.0);
        }
    }

    void scaffoldTintsByState()
    {
        Scene scene;
        QQuickItem *root = scene.load(scaffoldScene);
        QObject *scaffold = root->property("scaffold").value<QObject *>();
        Theme theme;
        scaffold->setProperty("failure", u"Réponse de system_profiler illisible."_s);
        scene.render();
        QVERIFY(shownSymbols(root).first().contains(theme.orange().name(QColor::HexArgb).mid(1)));
        scaffold->setProperty("failure", QString());
        scaffold->setProperty("isEmpty", true);
        scene.render();
        QVERIFY(shownSymbols(root).first().contains(theme.secondary().name(QColor::HexArgb).mid(1)));
    }

    void messageWithoutTextShowsIconAndTitleOnly()
    {
        Scene scene;
        QQuickItem *root = scene.load(R"(
import QtQuick
import Quillon
MessageView { width: 400; height: 300; symbol: "powerplug"; title: "Aucune batterie"; tint: Theme.secondary }
)");
        QVERIFY(root);
        QCOMPARE(shownTexts(root), QStringList { u"Aucune batterie"_s });
        QCOMPARE(shownSymbols(root).size(), 1);
    }

    void deviceTreeIsDrawnAsIndentedCards()
    {
        DeviceListModel model;
        const QList<DeviceNode> roots {
            device(u"Concentrateur USB"_s, DeviceStatus::neutral,
                { device(u"Dock CalDigit"_s, DeviceStatus::connected,
                    { device(u"Samsung T7"_s, DeviceStatus::warning, {},
                        { InfoRow(u"Fabricant"_s, u"Samsung"_s), InfoRow(u"Vitesse"_s, u"10 Gb/s"_s) }) }) }),
        };
        model.setRoots(roots);

        Scene scene;
        QQuickItem *root = scene.load(R"(
import QtQuick
import Quillon
DeviceListView { width: 560 }
)",
            { { u"nodes"_s, QVariant::fromValue(&model) } });
        QVERIFY(root);
        QList<QQuickItem *> cards;
        for (QQuickItem *item : shownItems(root)) {
            if (QByteArray(item->metaObject()->className()).startsWith("DeviceCard"))
                cards.append(item);
        }
        QCOMPARE(cards.size(), 3);
        QList<qreal> indents;
        for (QQuickItem *card : std::as_const(cards))
            indents.append(card->mapToItem(root, QPointF(0, 0)).x());
        QCOMPARE(indents, (QList<qreal> { 0, 22, 44 }));
        QCOMPARE(cards.at(2)->width(), 560 - 44.0);
        // Cards follow each other 12 points apart.
        QCOMPARE(cards.at(1)->mapToItem(root, QPointF(0, 0)).y(), cards.at(0)->height() + 12);

        // The neutral hub: no badge; no rows, so no divider.
        QVERIFY(shownNamed(cards.at(0), u"deviceBadge"_s).isEmpty());
        QVERIFY(shownNamed(cards.at(0), u"deviceDivider"_s).isEmpty());
        QCOMPARE(shownTexts(cards.at(0)), QStringList { u"Concentrateur USB"_s });
        // The connected dock: its badge.
        QCOMPARE(shownTexts(cards.at(1)), (QStringList { u"Dock CalDigit"_s, u"Connecté"_s }));
        // The drive to check: badge, divider and its rows in order.
        QCOMPARE(shownNamed(cards.at(2), u"deviceDivider"_s).size(), 1);
        QCOMPARE(shownTexts(cards.at(2)),
            (QStringList {
                u"Samsung T7"_s, u"À vérifier"_s, u"Fabricant"_s, u"Samsung"_s, u"Vitesse"_s, u"10 Gb/s"_s }));
    }

    void rowValuesAreSelectableAndLabelsAreNot()
    {
        Scene scene;
        QQuickItem *root = scene.load(R"(
import QtQuick
import Quillon
InfoRowsView {
    width: 500
    rows: [ { label: "Identifiant du modèle", value: "MacBookPro18,3" }, { label: "Mémoire", value: "16 Go" } ]
}
)");
        QVERIFY(root);
        const QList<QQuickItem *> values = shownNamed(root, u"rowValue"_s);
        const QList<QQuickItem *> labels = shownNamed(root, u"rowLabel"_s);
        QCOMPARE(values.size(), 2);
        QCOMPARE(labels.size(), 2);
        QVERIFY(values.first()->property("selectByMouse").toBool());
        QCOMPARE(labels.first()->metaObject()->indexOfProperty("selectByMouse"), -1);
        // Values start in one column, 20 points after the widest label.
        const qreal valueX = values.at(0)->mapToItem(root, QPointF(0, 0)).x();
        QCOMPARE(values.at(1)->mapToItem(root, QPointF(0, 0)).x(), valueX);
        QCOMPARE(valueX, labels.at(0)->width() + 20);
        QVERIFY(labels.at(0)->property("implicitWidth").toReal() <= labels.at(0)->width());
        // Rows 9 points apart.
        QCOMPARE(labels.at(1)->mapToItem(root, QPointF(0, 0)).y(), labels.at(0)->height() + 9);
    }

    void statBlockShowsItsLabelInCapitalsAndShrinksItsValue()
    {
        Scene scene;
        QQuickItem *root = scene.load(R"(
import QtQuick
import Quillon
Column {
    width: 300
    StatBlock { width: 120; label: "cœurs"; value: "10" }
    StatBlock { objectName: "narrow"; width: 60; label: "Puce"; value: "Apple M1 Pro Max Ultra" }
}
)");
        QVERIFY(root);
        QCOMPARE(shownTexts(root).first(), u"CŒURS"_s);
        const QList<QQuickItem *> values = shownNamed(root, u"statValue"_s);
        QCOMPARE(values.size(), 2);
        QCOMPARE(values.at(0)->property("font").value<QFont>().pixelSize(), 15);
        // Too long for its column: smaller, but not below 60 % (9 points).
        QCOMPARE(values.at(1)->property("font").value<QFont>().pixelSize(), 9);
    }

    void cardHeaderShowsOnlyWhatIsGiven()
    {
        Scene scene;
        QQuickItem *root = scene.load(R"(
import QtQuick
import QtQuick.Layouts
import Quillon
Column {
    width: 400
    Card { objectName: "plain"; width: 400; Rectangle { implicitHeight: 10; Layout.fillWidth: true } }
    Card { objectName: "full"; width: 400; title: "Fiche technique"; systemImage: "cpu"; accessory: "die 52 °C"
           Rectangle { implicitHeight: 10; Layout.fillWidth: true } }
}
)");
        QVERIFY(root);
        QQuickItem *plain = shownNamed(root, u"plain"_s).first();
        QQuickItem *full = shownNamed(root, u"full"_s).first();
        QVERIFY(shownNamed(plain, u"cardHeader"_s).isEmpty());
        QCOMPARE(shownTexts(full), (QStringList { u"Fiche technique"_s, u"die 52 °C"_s }));
        QCOMPARE(shownSymbols(full).size(), 1);
        // Padding 18, header and content 14 apart: 18 + 10 + 18 without header.
        QCOMPARE(plain->height(), 46.0);
        QCOMPARE(full->property("radius").toReal(), 14.0);
    }

    void highlightCardHasItsOwnMetrics()
    {
        Scene scene;
        QQuickItem *root = scene.load(R"(
import QtQuick
import QtQuick.Layouts
import Quillon
HighlightCard { width: 400; title: "Batterie"; symbol: "battery.75"; accessory: "3:20 restantes"
                Rectangle { implicitHeight: 10; Layout.fillWidth: true } }
)");
        QVERIFY(root);
        QCOMPARE(root->property("radius").toReal(), 16.0);
        QVERIFY(shownSymbols(root).first().endsWith(u"/battery.75"_s));
        QCOMPARE(shownTexts(root), (QStringList { u"Batterie"_s, u"3:20 restantes"_s }));
        QQuickItem *accessory = shownNamed(root, u"cardAccessory"_s).first();
        QCOMPARE(accessory->property("font").value<QFont>().pixelSize(), Theme().caption());
        // Padding 18, header, 15 points, content 10, padding 18.
        QQuickItem *header = shownNamed(root, u"cardHeader"_s).first();
        QCOMPARE(root->height(), 18 + header->height() + 15 + 10 + 18);
    }

    void aboutViewShowsNameVersionAndFeatures()
    {
        Scene scene;
        QQuickItem *root = scene.load(R"(
import QtQuick
import Quillon
AboutView { }
)");
        QVERIFY(root);
        const QStringList texts = shownTexts(root);
        QCOMPARE(
            texts.mid(0, 3), (QStringList { u"Quillon"_s, u"Version 0.1.0"_s, u"Bilan matériel et périphériques"_s }));
        QVERIFY(texts.contains(u"Vingt composants contrôlés"_s));
        QVERIFY(texts.contains(u"Angle d'écran, charge et température en direct"_s));
        QVERIFY(texts.contains(u"Aucune donnée ne quitte cette machine"_s));
        QCOMPARE(texts.mid(texts.size() - 2), (QStringList { u"Site"_s, u"Confidentialité"_s }));
        // Without an icon image of its own: the fallback tile.
        QCOMPARE(shownNamed(root, u"iconTile"_s).size(), 1);
        QVERIFY(shownSymbols(root).first().endsWith(u"/laptopcomputer"_s));
    }

    void settingsFieldsStoreWhatIsTyped()
    {
        QTemporaryDir folder;
        auto store = std::make_unique<QSettings>(folder.filePath(u"p.ini"_s), QSettings::IniFormat);
        store->setValue(u"workshop.phone"_s, u"01 23 45 67 89"_s);
        WorkshopSettings workshop(std::move(store));

        Scene scene;
        QQuickItem *root = scene.load(R"(
import QtQuick
import Quillon
WorkshopSettingsView { width: 460 }
)",
            { { u"workshop"_s, QVariant::fromValue<QObject *>(&workshop) } });
        QVERIFY(root);
        // The footer wraps inside the 460-point form rather than widening it.
        QQuickItem *footer = shownNamed(root, u"sectionFooter"_s).first();
        QVERIFY(footer->mapToItem(root, QPointF(footer->width(), 0)).x() <= 460);
        QVERIFY(footer->property("lineCount").toInt() >= 2);
        QQuickItem *phone = shownNamed(root, u"phoneField"_s).first();
        QCOMPARE(phone->property("text").toString(), u"01 23 45 67 89"_s);
        QCOMPARE(phone->property("placeholderText").toString(), u"Téléphone"_s);

        QQuickItem *name = shownNamed(root, u"nameField"_s).first();
        name->forceActiveFocus();
        for (const char key : QByteArray("Atelier"))
            QTest::keyClick(&scene.window, key);
        QCOMPARE(workshop.workshopName(), u"Atelier"_s);
        QSettings reread(folder.filePath(u"p.ini"_s), QSettings::IniFormat);
        QCOMPARE(reread.value(u"workshop.name"_s).toString(), u"Atelier"_s);
    }

    void exportAsksForAFileThenWritesItOrRaisesTheAlert()
    {
        UiTest::App app(u"sample"_s);
        QQmlApplicationEngine engine;
        QuillonApp::prepareEngine(engine);
        QVERIFY(app.app->openWindows(engine));
        QObject *window = engine.rootObjects().constFirst();
        QObject *saveDialog = window->findChild<QObject *>(u"saveDialog"_s);
        QObject *alert = window->findChild<QObject *>(u"failureAlert"_s);
        QVERIFY(saveDialog && alert);
        MainWindowController &controller = app.app->mainWindow();
        QStringList revealed;
        controller.setFileRevealer([&revealed](const QString &path) { revealed << path; });

        controller.setProposedFolder(app.folder.path());
        controller.startExport();
        QTRY_VERIFY_WITH_TIMEOUT(saveDialog->property("visible").toBool(), 10000);
        QCOMPARE(saveDialog->property("title").toString(), u"Exporter le bilan"_s);
        const QString path = app.folder.filePath(u"Bilan-MacBook-Pro-2026-11-16.txt"_s);
        QCOMPARE(saveDialog->property("selectedFile").toUrl(), QUrl::fromLocalFile(path));

        // The user keeps the proposed file: it is written and shown.
        QMetaObject::invokeMethod(saveDialog, "accept");
        QTRY_VERIFY(!controller.isExporting());
        QCOMPARE(revealed, QStringList { path });
        QVERIFY(QFile::exists(path));
        QVERIFY(!alert->property("visible").toBool());

        // A file that cannot be written: the alert with the system's explanation.
        controller.setProposedFolder(app.folder.filePath(u"absent"_s));
        controller.startExport();
        QTRY_VERIFY_WITH_TIMEOUT(saveDialog->property("visible").toBool(), 10000);
        QMetaObject::invokeMethod(saveDialog, "accept");
        QTRY_VERIFY(alert->property("visible").toBool());
        QCOMPARE(alert->property("text").toString(), u"Export impossible"_s);
        QVERIFY(!alert->property("informativeText").toString().isEmpty());
        QCOMPARE(revealed.size(), 1);
        QVERIFY(!controller.isExporting());
        engine.rootObjects().constFirst()->setProperty("visible", false);
    }

    void shortcutsAndClosingTheWindow()
    {
        UiTest::App app(u"sample"_s);
        QQmlApplicationEngine engine;
        QuillonApp::prepareEngine(engine);
        QVERIFY(app.app->openWindows(engine));
        auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
        window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QSignalSpy loaded(&app.app->state(), &AppState::everythingLoaded);
        QVERIFY(loaded.wait(10000));
        MainWindowController &controller = app.app->mainWindow();

        // ⌘R refreshes the section on screen.
        controller.setSelection(AppSection::usb);
        QVERIFY(!controller.isRefreshing());
        // A recorded answer can come back while the key is still being delivered: the refresh
        // shows in the changes of the refreshing flag, not necessarily in its value afterwards.
        QSignalSpy refreshing(&controller, &MainWindowController::refreshingChanged);
        QTest::keyClick(window, Qt::Key_R, Qt::ControlModifier);
        QVERIFY(!refreshing.isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(!controller.isRefreshing(), 10000);

        // ⌘, opens the workshop settings.
        auto settingsShown = [] {
            for (QWindow *top : QGuiApplication::topLevelWindows()) {
                if (top->title() == u"Réglages de l'atelier"_s && top->isVisible())
                    return true;
            }
            return false;
        };
        QVERIFY(!settingsShown());
        QTest::keyClick(window, Qt::Key_Comma, Qt::ControlModifier);
        QTRY_VERIFY(settingsShown());

        // The brand block opens the About window; the settings button the settings window.
        auto shown = [](const QString &title) {
            for (QWindow *top : QGuiApplication::topLevelWindows()) {
                if (top->title() == title && top->isVisible())
                    return true;
            }
            return false;
        };
        QQuickItem *brand = shownNamed(window->contentItem(), u"sidebarBrand"_s).first();
        QCOMPARE(shownTexts(brand), (QStringList { u"Quillon"_s, u"Version 0.1.0"_s }));
        QVERIFY(!shown(u"À propos de Quillon"_s));
        QTest::mouseClick(window, Qt::LeftButton, {}, brand->mapToScene(QPointF(brand->width() / 2, 10)).toPoint());
        QTRY_VERIFY(shown(u"À propos de Quillon"_s));

        // Closing the main window stops the live monitors.
        controller.setSelection(AppSection::hardware);
        QVERIFY(app.app->processorMonitor().isRunning());
        window->close();
        QVERIFY(!app.app->processorMonitor().isRunning());
        QVERIFY(!app.app->batteryMonitor().isRunning());
        QVERIFY(!app.app->lidAngleMonitor().isRunning());
    }

    void mainWindowOnADesktop()
    {
        UiTest::App app(u"desktop-mac-studio"_s);
        QQmlApplicationEngine engine;
        QuillonApp::prepareEngine(engine);
        QVERIFY(app.app->openWindows(engine));
        auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
        QVERIFY(window);
        QCOMPARE(window->size(), QSize(1000, 700));
        QCOMPARE(window->minimumSize(), QSize(820, 560));
        QQuickItem *content = window->contentItem();

        // Right after start: the overview loads, the refresh button waits.
        MainWindowController &controller = app.app->mainWindow();
        QVERIFY(controller.isRefreshing());
        QCOMPARE(shownNamed(content, u"busyIndicator"_s).size(), 1);
        QVERIFY(shownTexts(content).contains(u"Analyse en cours…"_s));

        QSignalSpy loaded(&app.app->state(), &AppState::everythingLoaded);
        QVERIFY(loaded.wait(10000));
        window->grabWindow();
        QVERIFY(shownNamed(content, u"busyIndicator"_s).isEmpty());

        const QStringList texts = shownTexts(content);
        // The sample notice: the words in bold, then the capture's description.
        const QString notice = shownNamed(content, u"sampleNotice"_s).first()->property("text").toString();
        QVERIFY(notice.startsWith(u"<b>Données d'exemple</b>"_s));
        QVERIFY(notice.endsWith(u"ordinateur de bureau sans batterie ni trackpad, aucune source d'alimentation, "
                                u"rapport d'alimentation sans batterie ; deux écrans externes et un clavier USB."_s));
        QVERIFY(texts.contains(u"Exporter"_s));
        QVERIFY(texts.contains(u"Actualiser"_s));
        QVERIFY(texts.contains(u"Réglages"_s));
        // The thirteen sections in the sidebar.
        QQuickItem *list = shownNamed(content, u"sectionList"_s).first();
        QCOMPARE(list->property("count").toInt(), 13);

        controller.setSelection(AppSection::battery);
        window->grabWindow();
        QVERIFY(shownTexts(content).contains(u"Aucune batterie"_s));
        QVERIFY(shownTexts(content).contains(u"Ce Mac est alimenté uniquement sur secteur."_s));
        QVERIFY(shownSymbols(content).contains(Theme().symbolSource(u"powerplug"_s, Theme().secondary())));

        controller.setSelection(AppSection::history);
        window->grabWindow();
        QCOMPARE(shownNamed(content, u"journalPage"_s).size(), 1);
        QVERIFY(shownTexts(content).contains(u"Mac Studio"_s));

        controller.setSelection(AppSection::displays);
        window->grabWindow();
        QVERIFY(!shownNamed(content, u"deviceList"_s).isEmpty());
        QVERIFY(shownTexts(content).contains(u"Écrans"_s));
        window->close();
    }
};

QUILLON_UI_TEST_MAIN(TestComponents)
#include "tst_components.moc"
