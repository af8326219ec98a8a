#include "process_bench.h"

#include "child_process.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

// The children keep their preferences and data in a folder of their own: a benchmark never
// reads or writes the user's journal or workshop settings.
QHash<QByteArray, QByteArray> isolatedEnvironment(const QTemporaryDir &home)
{
    QDir(home.path()).mkdir(u"runtime"_s);
    QFile::setPermissions(
        home.filePath(u"runtime"_s), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    return {
        { "XDG_RUNTIME_DIR", home.filePath(u"runtime"_s).toLocal8Bit() },
        { "XDG_CONFIG_HOME", home.filePath(u"config"_s).toLocal8Bit() },
        { "XDG_DATA_HOME", home.filePath(u"data"_s).toLocal8Bit() },
        { "XDG_CACHE_HOME", home.filePath(u"cache"_s).toLocal8Bit() },
        { "QT_QPA_PLATFORM", "offscreen" },
    };
}

// The "key value" lines a probe printed.
QHash<QString, QList<double>> readingsOf(const QByteArray &output)
{
    QHash<QString, QList<double>> readings;
    for (const QByteArray &line : output.split('\n')) {
        const QList<QByteArray> parts = line.trimmed().split(' ');
        if (parts.size() == 2)
            readings[QString::fromLatin1(parts.at(0))].append(parts.at(1).toDouble());
    }
    return readings;
}

void failed(const QString &what, const ChildRun &run)
{
    std::fprintf(stderr, "quillon-bench : %s (démarré : %s, sortie %d)\n", qUtf8Printable(what),
        run.started ? "oui" : "non", run.exitStatus);
}

} // namespace

void benchBilan(BenchTable &table, const QString &bilanProgram, const QString &captureDir, int runs)
{
    QTemporaryDir home;
    const auto environment = isolatedEnvironment(home);
    Samples wall;
    Samples memory;
    Samples processor;
    for (int i = 0; i < runs + 2; ++i) {
        const ChildRun run = runChild(bilanProgram, { u"--capture"_s, captureDir }, environment, false);
        if (!run.started || run.exitStatus != 0) {
            failed(u"quillon-bilan a échoué"_s, run);
            return;
        }
        if (i < 2)
            continue; // the program's files come into the page cache
        wall.values.append(run.wallMs);
        memory.values.append(run.peakResidentMB);
        processor.values.append(run.processorMs);
    }
    table.heading(u"3. quillon-bilan --capture %1, processus entier"_s.arg(captureDir));
    table.add({ u"temps réel, du lancement à la sortie"_s, wall, u"ms"_s, 150.0 });
    table.add({ u"temps processeur (utilisateur + système)"_s, processor, u"ms"_s });
    table.add({ u"mémoire résidente maximale"_s, memory, u"Mo"_s, 60.0 });
}

void benchApplication(BenchTable &table, const QString &probeProgram, int runs, int windowSecs)
{
    QTemporaryDir home;
    const auto environment = isolatedEnvironment(home);
    Samples firstFrame;
    Samples windowLoaded;
    Samples report;
    Samples processor;
    Samples startMemory;
    for (int i = 0; i < runs + 1; ++i) {
        const ChildRun run = runChild(probeProgram, { u"--first-frame"_s }, environment, true);
        const auto readings = readingsOf(run.standardOutput);
        if (run.exitStatus != 0 || !readings.contains(u"firstVerdictFrameMs"_s)) {
            failed(u"l’application n’a pas montré ses verdicts"_s, run);
            return;
        }
        if (i < 1)
            continue;
        firstFrame.values.append(readings.value(u"firstVerdictFrameMs"_s).constFirst());
        report.values.append(readings.value(u"reportMs"_s).value(0));
        windowLoaded.values.append(readings.value(u"windowLoadedMs"_s).value(0));
        processor.values.append(readings.value(u"processorAtFirstVerdictFrameMs"_s).value(0));
        startMemory.values.append(run.peakResidentMB);
    }
    table.heading(u"4. Application (QT_QPA_PLATFORM=offscreen), Mac d’exemple intégré"_s);
    table.add({ u"lancement → fenêtre chargée (QML de la fenêtre principale créé)"_s, windowLoaded, u"ms"_s });
    table.add({ u"lancement → verdicts prêts (rapport construit)"_s, report, u"ms"_s });
    table.add({ u"lancement → 1re image montrant les verdicts"_s, firstFrame, u"ms"_s, 600.0 });
    table.add({ u"  temps processeur du processus à cette image"_s, processor, u"ms"_s, std::nullopt,
        u"tous fils confondus ; peu sensible à la charge de la machine"_s });
    table.add({ u"mémoire résidente maximale au démarrage"_s, startMemory, u"Mo"_s, 150.0 });

    const ChildRun idle = runChild(probeProgram, { u"--idle"_s, QString::number(windowSecs) }, environment, true);
    const auto readings = readingsOf(idle.standardOutput);
    if (idle.exitStatus != 0 || !readings.contains(u"overviewCorePercent"_s)) {
        failed(u"la mesure au repos a échoué"_s, idle);
        return;
    }
    // Each sample: the processor time of one 5-second slice over its wall time, in % of one core.
    const Samples overview { readings.value(u"overviewCorePercent"_s) };
    const Samples other { readings.value(u"otherCorePercent"_s) };
    const double framesOverview = readings.value(u"overviewFramesPerSecond"_s).value(0);
    const double framesOther = readings.value(u"otherFramesPerSecond"_s).value(0);
    table.add({ u"vue d’ensemble ouverte, 3 moniteurs : % d’un cœur"_s, overview, u"%"_s, 1.0,
        u"%1 s mesurées par tranches de 5 s, soit %2 ms de processeur par minute ; %3 images/s"_s.arg(windowSecs)
            .arg(overview.median() * 600.0, 0, 'f', 0)
            .arg(framesOverview, 0, 'f', 1) });
    table.add({ u"section Stockage ouverte, moniteurs arrêtés : % d’un cœur"_s, other, u"%"_s, std::nullopt,
        u"%1 s par tranches de 5 s, soit %2 ms par minute ; %3 images/s"_s.arg(windowSecs)
            .arg(other.median() * 600.0, 0, 'f', 0)
            .arg(framesOther, 0, 'f', 1) });
    table.add({ u"mémoire résidente maximale après %1 s ouverte"_s.arg(2 * windowSecs + 3),
        Samples { { idle.peakResidentMB } }, u"Mo"_s, 150.0 });
}
