#include "cli/bilan_options.h"
#include "cli/bilan_run.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
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
