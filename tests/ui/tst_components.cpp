#include "ui_test_support.h"

#include "live/battery_monitor.h"
#include "live/cpu_monitor.h"
#include "live/lid_angle_monitor.h"
#include "records/history.h"
#include "records/workshop_settings.h"
#include "ui/models/device_list_model.h"
#include "ui/theme/theme.h"

#include <QAccessible>
#include <QFile>
#include <QQmlComponent>

using namespace Qt::StringLiterals;
using namespace UiTest;

namespace {

// An off-screen window holding one component under test.
class Scene
{
public:
    Scene()
    {
        QuillonApp::prepareEngine(engine);
        window.resize(640, 480);
    }

    // Loads `qml`, a QML object with the project's module and layouts imported.
    QQuickItem *load(const QByteArray &qml, const QVariantMap &properties = {})
    {
        QQmlComponent component(&engine);
        component.setData(
            "import QtQuick\nimport QtQuick.Layouts\nimport Quillon\n" + qml, QUrl(u"qrc:/tests/Scene.qml"_s));
        auto *item = qobject_cast<QQuickItem *>(component.createWithInitialProperties(properties));
        if (!item) {
            qWarning() << component.errors();
            return nullptr;
        }
        item->setParent(&window);
        item->setParentItem(window.contentItem());
        if (item->width() <= 0)
            item->setSize(window.size());
        window.show();
        render(&window);
        return item;
    }

    QQmlEngine engine;
    QQuickWindow window;
};

bool isWindowShown(const QString &title)
{
    const QList<QWindow *> windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.cbegin(), windows.cend(),
        [&title](const QWindow *top) { return top->title() == title && top->isVisible(); });
}

} // namespace

class TestComponents : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void settingsFieldsStoreWhatIsTyped()
    {
        QTemporaryDir folder;
        auto store = std::make_unique<QSettings>(folder.filePath(u"p.ini"_s), QSettings::IniFormat);
        store->setValue(u"workshop.phone"_s, u"01 23 45 67 89"_s);
        WorkshopSettings workshop(std::move(store));

        Scene scene;
        QQuickItem *root = scene.load(
            "WorkshopSettingsView { width: 460 }", { { u"workshop"_s, QVariant::fromValue<QObject *>(&workshop) } });
        QVERIFY(root);
        QQuickItem *phone = shownItem(root, u"phoneField"_s);
        QCOMPARE(phone->property("text").toString(), u"01 23 45 67 89"_s);
        // Each field keeps a visible label once filled, and names itself to VoiceOver.
        QCOMPARE(phone->property("placeholderText").toString(), QString());
        QAccessibleInterface *named = QAccessible::queryAccessibleInterface(phone);
        QVERIFY(named);
        QCOMPARE(named->text(QAccessible::Name), u"Téléphone"_s);
        QCOMPARE(named->role(), QAccessible::EditableText);

        shownItem(root, u"nameField"_s)->forceActiveFocus();
        for (const char key : QByteArray("Atelier"))
            QTest::keyClick(&scene.window, key);
        QCOMPARE(workshop.workshopName(), u"Atelier"_s);
        QSettings reread(folder.filePath(u"p.ini"_s), QSettings::IniFormat);
        QCOMPARE(reread.value(u"workshop.name"_s).toString(), u"Atelier"_s);
    }

    // Tab goes through the verdicts in screen order, each a button that VoiceOver names with
    // its title, level and value, and comes back to the first.
    void tabReachesEveryVerdictAsANamedButton_data()
    {
        QTest::addColumn<AppSection>("section");
        QTest::addColumn<int>("buttons");
        QTest::addColumn<QStringList>("first");
        QTest::addColumn<AppSection>("spaceOpens");
        // The sample's 21 verdicts; the overview shows the banner, then every verdict but the
        // battery's (it has its own card) as a tile.
        QTest::newRow("overview") << AppSection::overview << 21
                                  << QStringList { u"Aucun problème détecté, Voir le détail"_s,
                                         u"Macintosh HD, correct, 494,38\u00a0Go"_s, u"Sauvegarde, correct, 1\u00a0To"_s }
                                  << AppSection::diagnostics;
        // The diagnostics list who controls the Mac first: five more verdicts.
        QTest::newRow("diagnostics") << AppSection::diagnostics << 26
                                     << QStringList { u"Gestion à distance, correct, Non géré"_s,
                                            u"Verrouillage d'activation, correct, Désactivé"_s,
                                            u"Localiser mon Mac, correct, Désactivé"_s, u"FileVault, info, Activé"_s,
                                            u"Protection de l'intégrité du système, correct, Activée"_s,
                                            u"Batterie, correct, 91 %"_s,
                                            u"Macintosh HD, correct, 494,38\u00a0Go"_s, u"Sauvegarde, correct, 1\u00a0To"_s }
                                     << AppSection::hardware;
    }

    void tabReachesEveryVerdictAsANamedButton()
    {
        QFETCH(AppSection, section);
        QFETCH(int, buttons);
        QFETCH(QStringList, first);
        QFETCH(AppSection, spaceOpens);
        Window shown(u"sample"_s);
        QVERIFY(shown.open(section));
        QStringList reached;
        for (int i = 0; i < 100; ++i) {
            QTest::keyClick(shown.window, Qt::Key_Tab);
            QQuickItem *focused = shown.window->activeFocusItem();
            QAccessibleInterface *button = focused ? QAccessible::queryAccessibleInterface(focused) : nullptr;
            if (!button || button->role() != QAccessible::Button || !focused->objectName().endsWith(u"Press"_s))
                continue;
            if (reached.contains(button->text(QAccessible::Name)))
                break;
            reached << button->text(QAccessible::Name);
        }
        QCOMPARE(reached.mid(0, first.size()), first);
        QCOMPARE(reached.size(), buttons);
        // A level is never read twice ("Processeur, info, Info").
        for (const QString &name : std::as_const(reached))
            QVERIFY2(name.count(u"info"_s, Qt::CaseInsensitive) <= 1, qPrintable(name));
        // Back on the first one, Space opens its section.
        QTest::keyClick(shown.window, Qt::Key_Space);
        QCOMPARE(shown.controller().selection(), spaceOpens);
    }

    // On the journal, Tab goes from its commands to its search, then to each entry's
    // "Retirer", which names the machine and the date; each stop has its role.
    void tabOrderOfTheJournal()
    {
        QAccessible::setActive(true); // as when VoiceOver runs
        Window shown(u"sample"_s);
        QVERIFY(shown.open(AppSection::history));
        QTRY_COMPARE(shown.app.app->history().count(), 1);
        QList<std::pair<QString, QAccessible::Role>> stops;
        for (int i = 0; i < 60; ++i) {
            QTest::keyClick(shown.window, Qt::Key_Tab);
            QQuickItem *focused = shown.window->activeFocusItem();
            QAccessibleInterface *control = focused ? QAccessible::queryAccessibleInterface(focused) : nullptr;
            QVERIFY(control);
            const std::pair stop { control->text(QAccessible::Name), control->role() };
            QVERIFY2(!stop.first.isEmpty(), focused->metaObject()->className());
            if (stops.contains(stop))
                break;
            stops << stop;
        }
        const qsizetype first = stops.indexOf(std::pair { u"Exporter en tableur"_s, QAccessible::Button });
        QVERIFY(first >= 0);
        QCOMPARE(stops.mid(first, 5),
                 (QList<std::pair<QString, QAccessible::Role>> {
                     { u"Exporter en tableur"_s, QAccessible::Button },
                     { u"Tout effacer"_s, QAccessible::Button },
                     { u"Rechercher dans le journal"_s, QAccessible::EditableText },
                     { u"Verdict"_s, QAccessible::ComboBox },
                     { u"Retirer MacBook Pro du 16 nov. 2026 à 09:05"_s, QAccessible::Button } }));
    }

    // At the default and the minimum window size, the configuration and battery cards of the
    // overview show every label and figure whole and at its size, the configuration in two
    // columns at least, and the verdict of the diagnostics stays on one line.
    void summariesCutNothing_data()
    {
        QTest::addColumn<QString>("capture");
        QTest::addColumn<QSize>("size");
        for (const QString &capture : { u"sample"_s, u"intel-macbook-pro"_s, u"air-m5-macos27"_s })
            for (const QSize size : { QSize(1000, 700), QSize(820, 560) })
                QTest::addRow("%s %dx%d", qPrintable(capture), size.width(), size.height()) << capture << size;
    }

    void summariesCutNothing()
    {
        QFETCH(QString, capture);
        QFETCH(QSize, size);
        Window shown(capture);
        shown.window->resize(size);
        QVERIFY(shown.open(AppSection::overview));
        QQuickItem *cards = shownItem(shown.content(), u"highlightCards"_s);
        QVERIFY(cards);
        int figures = 0;
        for (QQuickItem *item : shownItems(cards)) {
            const QString text = item->property("text").toString();
            QVERIFY2(!item->property("truncated").toBool(), qPrintable(text));
            if (item->objectName() == u"statValue") {
                ++figures;
                QVERIFY2(item->property("contentWidth").toReal() <= item->width() + 0.5, qPrintable(text));
                QCOMPARE(item->property("font").value<QFont>().pixelSize(), 15);
            }
        }
        QVERIFY(figures >= 8);
        QVERIFY(shownItem(cards, u"configurationFigures"_s)->property("columns").toInt() >= 2);
        // The verdict of the diagnostics on one line ("1 anomalie · 2 points à surveiller").
        QVERIFY(shown.open(AppSection::diagnostics));
        QCOMPARE(shownItem(shown.content(), u"bannerHeadline"_s)->property("lineCount").toInt(), 1);
    }

    // Where the desktop merges the title bar with the toolbar (macOS), the sidebar leaves a
    // band for the window's buttons, and a double click on the toolbar goes to the desktop.
    void mergedTitleBar_data()
    {
        QTest::addColumn<bool>("merges");
        QTest::newRow("merged") << true;
        QTest::newRow("separate") << false;
    }

    void mergedTitleBar()
    {
        QFETCH(bool, merges);
        StandInDesktop desktop;
        desktop.mergesTitleBar = merges;
        Window shown(u"sample"_s, &desktop);
        QVERIFY(shown.open(AppSection::overview));
        QCOMPARE(shownItem(shown.window->contentItem(), u"sidebarTitleBar"_s) != nullptr, merges);
        QQuickItem *toolbar = shownItem(shown.window->contentItem(), u"toolbar"_s);
        const QPoint onTitle = toolbar->mapToScene(QPointF(toolbar->width() / 3, toolbar->height() / 2)).toPoint();
        QTest::mouseDClick(shown.window, Qt::LeftButton, {}, onTitle);
        QCOMPARE(desktop.titleBarDoubleClicks, merges ? 1 : 0);
    }

    // The sample-data banner can be closed; the window title then says it instead.
    void closingTheSampleBannerMovesItsWordsToTheTitle()
    {
        Window shown(u"sample"_s);
        QVERIFY(shown.open(std::nullopt));
        QQuickItem *banner = shownItem(shown.window->contentItem(), u"sampleBanner"_s);
        QVERIFY(banner);
        QVERIFY(!shown.window->title().contains(u"Données d'exemple"_s));
        QQuickItem *close = shownItem(banner, u"sampleBannerClose"_s);
        QTest::mouseClick(shown.window, Qt::LeftButton, {}, close->mapToScene(close->boundingRect().center()).toPoint());
        QTRY_VERIFY(!banner->isVisible());
        QCOMPARE(shown.window->title(), u"Vue d'ensemble — Données d'exemple"_s);
    }

    void secondaryWindowsCloseFromTheKeyboard_data()
    {
        QTest::addColumn<QByteArray>("opener");
        QTest::addColumn<QKeySequence>("keys");
        for (const QByteArray &opener : { QByteArray("showAbout"), QByteArray("showSettings") }) {
            QTest::addRow("%s, Esc", opener.constData()) << opener << QKeySequence(Qt::Key_Escape);
            QTest::addRow("%s, close", opener.constData()) << opener << QKeySequence(QKeySequence::Close);
        }
    }

    void secondaryWindowsCloseFromTheKeyboard()
    {
        QFETCH(QByteArray, opener);
        QFETCH(QKeySequence, keys);
        Window shown(u"sample"_s);
        QVERIFY(shown.open(std::nullopt));
        QMetaObject::invokeMethod(shown.window, opener.constData());
        QQuickWindow *secondary = nullptr;
        for (QWindow *top : QGuiApplication::topLevelWindows()) {
            if (top != shown.window && top->isVisible())
                secondary = qobject_cast<QQuickWindow *>(top);
        }
        QVERIFY(secondary);
        QTest::qWait(100);
        QTest::keySequence(secondary, keys);
        QTRY_VERIFY(!secondary->isVisible());
        QVERIFY(shown.window->isVisible());
    }

    void shortcutsOpenWindowsAndClosingStopsTheMonitors()
    {
        Window shown(u"sample"_s);
        QVERIFY(shown.window);
        shown.window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(shown.window));
        QVERIFY(shown.open(AppSection::usb));
        MainWindowController &controller = shown.controller();

        // ⌘R refreshes the section on screen. A recorded answer can come back while the key is
        // still being delivered: the refresh shows in the changes of the flag, not in its value.
        QVERIFY(!controller.isRefreshing());
        QSignalSpy refreshing(&controller, &MainWindowController::refreshingChanged);
        QTest::keyClick(shown.window, Qt::Key_R, Qt::ControlModifier);
        QVERIFY(!refreshing.isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(!controller.isRefreshing(), 10000);

        // ⌘1…⌘9 show the sections in sidebar order: ⌘2 the diagnostics, ⌘4 the hardware.
        QTest::keyClick(shown.window, Qt::Key_2, Qt::ControlModifier);
        QCOMPARE(controller.selection(), AppSection::diagnostics);
        QTest::keyClick(shown.window, Qt::Key_4, Qt::ControlModifier);
        QCOMPARE(controller.selection(), AppSection::hardware);
        // "Ouvrir une capture…" hands the chosen folder to a second run of the application.
        QStringList opened;
        controller.setCaptureOpener([&opened](const QString &folder) { opened << folder; });
        controller.openCapture(QUrl::fromLocalFile(u"/captures/atelier"_s));
        controller.openCapture(QUrl(u"https://example.org/capture"_s));
        QCOMPARE(opened, QStringList { u"/captures/atelier"_s });

        // ⌘, opens the workshop settings; the brand block the About window.
        QVERIFY(!isWindowShown(u"Réglages de l'atelier"_s));
        QTest::keyClick(shown.window, Qt::Key_Comma, Qt::ControlModifier);
        QTRY_VERIFY(isWindowShown(u"Réglages de l'atelier"_s));
        QQuickItem *brand = shown.item(u"sidebarBrand"_s);
        QVERIFY(brand);
        QCOMPARE(shownTexts(brand), (QStringList { u"Quillon"_s, u"Version 0.1.0"_s }));
        QVERIFY(!isWindowShown(u"À propos de Quillon"_s));
        QTest::mouseClick(
            shown.window, Qt::LeftButton, {}, brand->mapToScene(QPointF(brand->width() / 2, 10)).toPoint());
        QTRY_VERIFY(isWindowShown(u"À propos de Quillon"_s));

        // Closing the main window stops the live monitors.
        controller.setSelection(AppSection::hardware);
        QVERIFY(shown.app.app->processorMonitor().isRunning());
        shown.window->close();
        QVERIFY(!shown.app.app->processorMonitor().isRunning());
        QVERIFY(!shown.app.app->batteryMonitor().isRunning());
        QVERIFY(!shown.app.app->lidAngleMonitor().isRunning());
    }

};

QUILLON_UI_TEST_MAIN(TestComponents)
#include "tst_components.moc"
