// quillon-bench [--bilan PROGRAM] [--app PROGRAM] [--capture DIR] [--quick] [--only PART,...]
//
// Prints the performance table of Quillon: the core's full load in memory, its concurrency
// against the system profiler's real run times, quillon-bilan as a process, the application
// off screen, the journal at 500 entries. Each figure is the median and the 95th percentile
// of its runs. scripts/bench builds everything in release mode and runs this. --only keeps
// some parts (core, concurrency, bilan, app, journal), for a profiler run.

#include "bench_table.h"
#include "core_bench.h"
#include "journal_bench.h"
#include "process_bench.h"
#include "screens_bench.h"

#include "platform/factory/platform_factory.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QLibraryInfo>
#include <QSysInfo>
#include <QTextStream>
#include <QThread>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QString firstMatch(const QString &path, const QString &key)
{
    // Files of /proc tell a size of zero: read them whole, without relying on it.
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString text = QString::fromUtf8(file.readAll());
    for (const QString &line : text.split(u'\n')) {
        if (line.startsWith(key))
            return line.section(u':', 1).trimmed();
    }
    return {};
}

QString loadAverage()
{
    QFile file(u"/proc/loadavg"_s);
    if (!file.open(QIODevice::ReadOnly))
        return u"inconnue"_s;
    const QList<QByteArray> parts = file.readAll().split(' ');
    return u"%1 / %2 / %3 (1, 5, 15 min)"_s.arg(
        QString::fromLatin1(parts.value(0)), QString::fromLatin1(parts.value(1)), QString::fromLatin1(parts.value(2)));
}

QString compilerName()
{
#if defined(__clang__)
    return u"Clang %1.%2"_s.arg(__clang_major__).arg(__clang_minor__);
#elif defined(__GNUC__)
    return u"GCC %1.%2"_s.arg(__GNUC__).arg(__GNUC_MINOR__);
#else
    return u"compilateur inconnu"_s;
#endif
}

void describeMachine(QTextStream &out)
{
    const double memoryGB = firstMatch(u"/proc/meminfo"_s, u"MemTotal"_s).section(u' ', 0, 0).toDouble() * 1024 / 1e9;
    out << u"Quillon — mesures de performance, "_s << QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm"_s)
        << u'\n';
    out << u"Machine : "_s << firstMatch(u"/proc/cpuinfo"_s, u"model name"_s) << u", "_s << QThread::idealThreadCount()
        << u" cœurs logiques, "_s << QString::number(memoryGB, 'f', 1) << u" Go de mémoire ; "_s
        << QSysInfo::prettyProductName() << u", noyau "_s << QSysInfo::kernelVersion() << u'\n';
    out << u"Logiciel : Qt "_s << QLibraryInfo::version().toString() << u", "_s << compilerName()
#ifdef NDEBUG
        << u", optimisé (release)"_s
#else
        << u", NON optimisé (debug) : chiffres sans valeur"_s
#endif
        << u'\n';
    out << u"Charge au début : "_s << loadAverage() << u'\n';
    out.flush();
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"Quillon"_s);
    QCoreApplication::setOrganizationName(u"Quillon"_s);
    const QStringList arguments = QCoreApplication::arguments();
    const QString bilan = arguments.value(arguments.indexOf(u"--bilan"_s) + 1);
    const QString app = arguments.value(arguments.indexOf(u"--app"_s) + 1);
    const QString capture
        = arguments.contains(u"--capture"_s) ? arguments.value(arguments.indexOf(u"--capture"_s) + 1) : QString();
    const bool quick = arguments.contains(u"--quick"_s);
    const QStringList only = arguments.contains(u"--only"_s)
        ? arguments.value(arguments.indexOf(u"--only"_s) + 1).split(u',')
        : QStringList();
    const auto wanted = [&only](const QString &part) { return only.isEmpty() || only.contains(part); };

    QTextStream out(stdout);
    describeMachine(out);

    // The built-in sample, as the application shows it, unless a capture folder is named.
    auto opened = PlatformFactory::open(capture.isEmpty() ? std::optional<QString>() : capture);
    if (const QString *error = std::get_if<QString>(&opened)) {
        std::fprintf(stderr, "quillon-bench : %s\n", qUtf8Printable(*error));
        return 2;
    }
    const Platform platform = std::get<Platform>(opened);

    BenchTable table;
    if (wanted(u"core"_s))
        benchCore(table, platform, quick ? 50 : 400);
    if (wanted(u"concurrency"_s))
        benchConcurrency(table, platform, quick ? 5 : 20);
    if (arguments.contains(u"--bilan"_s) && wanted(u"bilan"_s))
        benchBilan(
            table, bilan, capture.isEmpty() ? QStringLiteral(QUILLON_SAMPLE_CAPTURE_DIR) : capture, quick ? 5 : 30);
    if (arguments.contains(u"--app"_s) && wanted(u"app"_s))
        benchApplication(table, app, quick ? 3 : 10, quick ? 10 : 30);
    if (wanted(u"journal"_s))
        benchJournal(table, platform, quick ? 20 : 100);
    if (arguments.contains(u"--app"_s) && wanted(u"screens"_s))
        benchScreens(table, app, platform, quick ? 2 : 5);

    out << u'\n';
    table.print(out);
    out << u"\nCharge à la fin : "_s << loadAverage() << u'\n';
    if (wanted(u"concurrency"_s)) {
        out << u"Délais de system_profiler de la mesure 2 (temps de réponse par type de données) :\n"_s;
        for (const QString &line : concurrencyDelaySources())
            out << u"  "_s << line << u'\n';
    }
    const QStringList missed = table.missed();
    out << (missed.isEmpty() ? u"\nToutes les cibles sont tenues.\n"_s
                             : u"\nCibles manquées : "_s + missed.join(u" ; "_s) + u'\n');
    out.flush();
    return 0;
}
