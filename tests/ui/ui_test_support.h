#pragma once

#include "common/test_main.h"

#include "platform/factory/platform_factory.h"
#include "sources/desktop_look.h"
#include "state/app_state.h"
#include "ui/app/main_window_controller.h"
#include "ui/app/quillon_app.h"

#include <QDir>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtQml/QQmlExtensionPlugin>

#include <memory>

Q_IMPORT_QML_PLUGIN(QuillonPlugin)

// The UI tests run a GUI application off-screen, in French, with the Fusion style.
#define QUILLON_UI_TEST_MAIN(TestClass)                                                                                \
    int main(int argc, char *argv[])                                                                                   \
    {                                                                                                                  \
        pinTestEnvironment();                                                                                          \
        QQuickStyle::setStyle(QStringLiteral("Fusion"));                                                               \
        QGuiApplication app(argc, argv);                                                                               \
        TestClass test;                                                                                                \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }

namespace UiTest {

// A desktop with a look of its own, as macOS has: an accent colour, "Increase contrast", and
// the drawing of the symbols named in `drawings` (a plain square of the asked colour).
struct StandInDesktop : DesktopLook
{
    std::optional<std::uint32_t> accent;
    bool moreContrast = false;
    QStringList drawings;
    bool mergesTitleBar = false;
    mutable int titleBarDoubleClicks = 0;
    std::function<void()> changed;

    std::optional<std::uint32_t> accentColour() const override { return accent; }
    bool increasesContrast() const override { return moreContrast; }
    std::optional<Drawing> drawSymbol(const QString &name, int pixels, std::uint32_t argb) const override
    {
        if (!drawings.contains(name))
            return std::nullopt;
        Drawing drawing { pixels, pixels, {} };
        const QColor colour = QColor::fromRgba(argb);
        for (int i = 0; i < pixels * pixels; ++i)
            drawing.rgba.insert(drawing.rgba.end(), { std::uint8_t(colour.red()), std::uint8_t(colour.green()),
                                                      std::uint8_t(colour.blue()), std::uint8_t(colour.alpha()) });
        return drawing;
    }
    bool mergeTitleBar(std::uintptr_t) const override { return mergesTitleBar; }
    void titleBarDoubleClicked(std::uintptr_t) const override { ++titleBarDoubleClicks; }
    void watch(std::function<void()> onChange) override { changed = std::move(onChange); }
};

// The platform of a capture folder shipped with the project.
inline Platform capturePlatform(const QString &name)
{
    auto opened = PlatformFactory::open(QDir(QStringLiteral(QUILLON_CAPTURES_DIR)).filePath(name));
    if (const QString *error = std::get_if<QString>(&opened))
        qFatal("Capture %s cannot be read: %s", qUtf8Printable(name), qUtf8Printable(*error));
    return std::get<Platform>(std::move(opened));
}

// The application over a capture, with its journal and preferences in a temporary folder.
struct App
{
    QTemporaryDir folder;
    std::unique_ptr<QuillonApp> app;

    explicit App(const QString &capture, const DesktopLook *desktop = nullptr)
    {
        QuillonApp::Options options;
        options.desktop = desktop;
        options.journalDirectory = folder.filePath(QStringLiteral("journal"));
        options.preferences
            = std::make_unique<QSettings>(folder.filePath(QStringLiteral("preferences.ini")), QSettings::IniFormat);
        app = std::make_unique<QuillonApp>(capturePlatform(capture), std::move(options));
    }
};

// Waits for a full load, unless one is over already (nothing loading and the report made).
inline bool waitForFullLoad(AppState &state)
{
    if (state.loading().isEmpty() && state.report())
        return true;
    QSignalSpy loaded(&state, &AppState::everythingLoaded);
    return loaded.wait(10000);
}

// The items a user can see under `root` (itself included), in tree order.
inline QList<QQuickItem *> shownItems(QQuickItem *root)
{
    if (!root->isVisible() || root->opacity() == 0)
        return {};
    QList<QQuickItem *> shown { root };
    for (QQuickItem *child : root->childItems())
        shown += shownItems(child);
    return shown;
}

// The shown items whose object name is `name`, or, for a name ending in '*', whose QML type
// name starts with it ("CheckRow*").
inline QList<QQuickItem *> shownNamed(QQuickItem *root, const QString &name)
{
    QList<QQuickItem *> found;
    for (QQuickItem *item : shownItems(root)) {
        const bool matches = name.endsWith(u'*')
            ? QString::fromLatin1(item->metaObject()->className()).startsWith(name.chopped(1))
            : item->objectName() == name;
        if (matches)
            found.append(item);
    }
    return found;
}

// The first shown item named `name`; the test fails on a null pointer when there is none.
inline QQuickItem *shownItem(QQuickItem *root, const QString &name)
{
    const QList<QQuickItem *> found = shownNamed(root, name);
    return found.isEmpty() ? nullptr : found.first();
}

// The texts a user can see under `root`, in tree order.
inline QStringList shownTexts(QQuickItem *root)
{
    QStringList texts;
    for (QQuickItem *item : shownItems(root)) {
        const QByteArray type = item->metaObject()->className();
        const QString text = item->property("text").toString();
        if ((type.startsWith("QQuickText") || type.startsWith("QQuickLabel") || type.contains("Label_QML"))
            && !text.isEmpty())
            texts.append(text);
    }
    return texts;
}

// Polishes and draws the window a few times, so that layouts and loaders are up to date.
inline void render(QQuickWindow *window)
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        window->grabWindow();
    }
    QCoreApplication::processEvents();
}

inline void click(QQuickWindow *window, QQuickItem *item)
{
    QTest::mouseClick(
        window, Qt::LeftButton, {}, item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint());
    render(window);
}

// The application's main window over a capture; `window` is null when it cannot open.
struct Window
{
    App app;
    QQmlApplicationEngine engine;
    QQuickWindow *window = nullptr;

    explicit Window(const QString &capture, const DesktopLook *desktop = nullptr) : app(capture, desktop)
    {
        QuillonApp::prepareEngine(engine);
        if (app.app->openWindows(engine))
            window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    }
    ~Window()
    {
        if (window)
            window->close();
    }

    // Waits for every section to load, then shows `section` (the overview for none).
    bool open(std::optional<AppSection> section)
    {
        if (!window || !waitForFullLoad(app.app->state()))
            return false;
        show(section);
        return true;
    }
    void show(std::optional<AppSection> section)
    {
        controller().setSelection(section);
        render(window);
    }
    MainWindowController &controller() { return app.app->mainWindow(); }
    QQuickItem *content() const { return window->contentItem(); }
    QStringList texts() const { return shownTexts(content()); }
    QQuickItem *item(const QString &name) const { return shownItem(content(), name); }
    QList<QQuickItem *> items(const QString &name) const { return shownNamed(content(), name); }
    [[nodiscard]] bool click(const QString &name) const
    {
        QQuickItem *found = item(name);
        if (found)
            UiTest::click(window, found);
        return found;
    }
};

} // namespace UiTest
