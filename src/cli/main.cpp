#include "cli/bilan_options.h"
#include "cli/bilan_run.h"

#include <QCoreApplication>
#include <QTextStream>
#ifdef QUILLON_HAS_PDF
#include <QGuiApplication>
#endif

#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    // A PDF is drawn with Qt's fonts and painter, which need a GUI application; without a
    // display it runs off screen.
    bool pdf = false;
    for (int i = 1; i + 1 < argc; ++i)
        pdf = pdf || (QByteArray(argv[i]) == "--output" && QByteArray(argv[i + 1]).toLower().endsWith(".pdf"));
    if (pdf && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY")
        && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef QUILLON_HAS_PDF
    std::unique_ptr<QCoreApplication> application
        = pdf ? std::make_unique<QGuiApplication>(argc, argv) : std::make_unique<QCoreApplication>(argc, argv);
#else
    auto application = std::make_unique<QCoreApplication>(argc, argv);
#endif
    QCoreApplication &app = *application;
    QCoreApplication::setApplicationName(u"Quillon"_s);
    QCoreApplication::setOrganizationName(u"Quillon"_s);
    QCoreApplication::setOrganizationDomain(u"quillon.app"_s);

    QTextStream output(stdout);
    QTextStream errors(stderr);
    const auto parsed = BilanCommandLine::parse(app.arguments().mid(1));
    if (const QString *error = std::get_if<QString>(&parsed)) {
        errors << u"quillon-bilan : "_s << *error << Qt::endl;
        return 2;
    }
    return runBilan(std::get<BilanOptions>(parsed), output, errors);
}
