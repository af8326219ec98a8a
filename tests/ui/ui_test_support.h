#pragma once

#include "common/test_main.h"

#include "core/app_state.h"
#include "platform/factory/platform_factory.h"
#include "ui/quillon_app.h"

#include <QDir>
#include <QGuiApplication>
#include <QQuickStyle>
#include <QSettings>
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

inline QString capturePath(const QString &name)
{
    return QDir(QStringLiteral(QUILLON_CAPTURES_DIR)).filePath(name);
}

// The platform of a capture folder shipped with the project.
inline Platform capturePlatform(const QString &name)
{
    auto opened = PlatformFactory::open(capturePath(name));
    if (const QString *error = std::get_if<QString>(&opened))
        qFatal("Capture %s cannot be read: %s", qUtf8Printable(name), qUtf8Printable(*error));
    return std::get<Platform>(std::move(opened));
}

// The application over a capture, with its journal and preferences in a temporary folder.
struct App
{
    QTemporaryDir folder;
    std::unique_ptr<QuillonApp> app;

    explicit App(const QString &capture)
    {
        QuillonApp::Options options;
        options.journalDirectory = folder.filePath(QStringLiteral("journal"));
        options.preferences
            = std::make_unique<QSettings>(folder.filePath(QStringLiteral("preferences.ini")), QSettings::IniFormat);
        app = std::make_unique<QuillonApp>(capturePlatform(capture), std::move(options));
    }
};

} // namespace UiTest
