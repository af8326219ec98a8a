#include "collectors/app_info.h"
#include "platform/factory/platform_factory.h"
#include "ui/app/quillon_app.h"
#include "ui/theme/theme.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QTranslator>
#include <QtQml/QQmlExtensionPlugin>

#include <cstdio>

Q_IMPORT_QML_PLUGIN(QuillonPlugin)

using namespace Qt::StringLiterals;

namespace {

// Qt's own texts (file errors, dialog buttons) in French, like the rest of the application.
void installQtTranslations(QGuiApplication &application)
{
    for (const QString &catalogue : { u"qtbase_fr"_s, u"qtdeclarative_fr"_s }) {
        auto *translator = new QTranslator(&application);
        if (translator->load(catalogue, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
            QGuiApplication::installTranslator(translator);
        else
            delete translator;
    }
}

void chooseStyle(QGuiApplication &application)
{
#ifdef Q_OS_MACOS
    Q_UNUSED(application)
    QQuickStyle::setStyle(u"macOS"_s);
#else
    QQuickStyle::setStyle(u"Fusion"_s);
    QGuiApplication::setPalette(Theme::controlsPalette(Theme::isDarkPalette(application.palette())));
#endif
}

// The capture to show instead of this Mac: --capture DIR, or the QUILLON_CAPTURE variable.
// Prints the help and quits on --help.
std::optional<QString> captureFromCommandLine(const QGuiApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Le bilan matériel d'un Mac d'occasion, pour les ateliers de réparation."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption capture(u"capture"_s, u"Montrer la capture de ce dossier au lieu de ce Mac."_s, u"dossier"_s);
    parser.addOption(capture);
    parser.process(application);
    if (parser.isSet(capture))
        return parser.value(capture);
    if (const QString fromEnvironment = qEnvironmentVariable("QUILLON_CAPTURE"); !fromEnvironment.isEmpty())
        return fromEnvironment;
    return std::nullopt;
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName(u"Quillon"_s);
    QGuiApplication::setOrganizationDomain(u"quillon.app"_s);
    QGuiApplication::setApplicationName(u"Quillon"_s);
    QGuiApplication::setApplicationVersion(AppInfo::versionLabel());
    installQtTranslations(application);
    const std::optional<QString> capturePath = captureFromCommandLine(application);
    chooseStyle(application);

    auto opened = PlatformFactory::open(capturePath);
    if (const QString *error = std::get_if<QString>(&opened)) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(*error));
        QQmlApplicationEngine engine;
        QuillonApp::prepareEngine(engine);
        engine.setInitialProperties({ { u"message"_s, *error } });
        engine.load(QuillonApp::startupErrorUrl());
        if (!engine.rootObjects().isEmpty())
            QGuiApplication::exec();
        return 2;
    }

    // The desktop's accent colour, contrast and symbols, and the merged title bar (macOS).
    const std::unique_ptr<DesktopLook> desktop = PlatformFactory::desktopLook();
    Theme::followDesktop(desktop.get());

    // The application's objects outlive the windows that show them.
    QuillonApp quillon(std::get<Platform>(std::move(opened)), { .desktop = desktop.get() });
    QQmlApplicationEngine engine;
    QuillonApp::prepareEngine(engine);
    if (!quillon.openWindows(engine))
        return 1;
    return QGuiApplication::exec();
}
