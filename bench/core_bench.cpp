#include "core_bench.h"

#include "bench_load.h"
#include "recorded_profiler.h"

#include "collectors/battery_service.h"
#include "collectors/hardware_service.h"
#include "collectors/inventory_service.h"
#include "core/app_section.h"
#include "diagnostics/diagnostics_service.h"
#include "sources/system_profiler.h"
#include "state/app_state.h"

#include <QEventLoop>
#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Run time of one `system_profiler -json <type>` per data type, in milliseconds. The
// figures marked "publié" are the `_SPResponseTime` key (the tool's own measure of the
// time it took to answer, start-up excluded) of `system_profiler -xml` outputs published
// with their machine; the others are estimates, labelled as such.
struct DelaySource
{
    const char16_t *dataType;
    int msecs;
    const char16_t *source;
};

constexpr DelaySource delaySources[] = {
    { u"SPHardwareDataType", 219,
        u"publié : 0,219 s, MacBook Pro 2014 (chef/ohai, données de test du greffon darwin, "
        u"hardware_system_profiler_output.rb)" },
    { u"SPSoftwareDataType", 130, u"estimation (0,13 s : les types sans matériel à sonder répondent en 0,1 à 0,2 s)" },
    { u"SPPowerDataType", 167, u"publié : 0,167 s, MacBook Pro 2014 (chef/ohai, même fichier)" },
    { u"SPStorageDataType", 470, u"publié : 0,470 s, MacBook Pro 2014 (chef/ohai, même fichier)" },
    { u"SPDisplaysDataType", 400, u"estimation (0,4 s : interroge chaque processeur graphique et chaque écran)" },
    { u"SPUSBDataType", 219,
        u"publié : 0,219 s, Mac Intel (glpi-project/glpi-agent, resources/macos/system_profiler/"
        u"SPUSBDataType_without_inserted_dvd.xml ; de 0,11 à 1,58 s dans ses autres exemples)" },
    { u"SPThunderboltDataType", 250, u"estimation (0,25 s)" },
    { u"SPBluetoothDataType", 154, u"publié : 0,154 s (ansible/ansible#28982, « SPBluetoothData »)" },
    { u"SPNetworkDataType", 153, u"publié : 0,153 s (ansible/ansible#28982, « SPNetworkData »)" },
    { u"SPAudioDataType", 300, u"estimation (0,3 s : démarre le service audio)" },
    { u"SPCameraDataType", 250, u"estimation (0,25 s)" },
};

QHash<QString, int> concurrencyDelays()
{
    QHash<QString, int> delays;
    for (const DelaySource &source : delaySources)
        delays.insert(QString::fromUtf16(source.dataType), source.msecs);
    return delays;
}

// The data types behind each section's collector, as the collectors ask for them.
QStringList dataTypesOf(AppSection section)
{
    switch (section) {
    case AppSection::hardware:
        return { u"SPHardwareDataType"_s, u"SPSoftwareDataType"_s };
    case AppSection::battery:
        return { u"SPPowerDataType"_s };
    case AppSection::storage:
        return { u"SPStorageDataType"_s };
    case AppSection::displays:
        return { u"SPDisplaysDataType"_s };
    case AppSection::usb:
        return { u"SPUSBDataType"_s };
    case AppSection::thunderbolt:
        return { u"SPThunderboltDataType"_s };
    case AppSection::bluetooth:
        return { u"SPBluetoothDataType"_s };
    case AppSection::network:
        return { u"SPNetworkDataType"_s };
    case AppSection::audio:
        return { u"SPAudioDataType"_s };
    case AppSection::camera:
        return { u"SPCameraDataType"_s };
    default:
        return {};
    }
}

// One section's collector, as the application state calls it.
void collect(const Platform &platform, AppSection section)
{
    switch (section) {
    case AppSection::hardware:
        (void)HardwareService::load(platform);
        break;
    case AppSection::battery:
        (void)BatteryService::load(platform);
        break;
    case AppSection::storage:
        (void)InventoryService::storage(platform);
        break;
    default:
        (void)InventoryService::devices(platform, section);
        break;
    }
}

void benchParsing(BenchTable &table, const RecordedProfiler &profiler, int runs)
{
    for (const QString &dataType : profilerDataTypes()) {
        const ProcessOutput output = profiler.answer(dataType);
        Samples samples = timeRuns(runs / 10, runs, [&] { (void)SystemProfiler::parseAnswer(output, dataType); });
        table.add({ u"analyse %1 (%2 octets)"_s.arg(dataType).arg(output.standardOutput.size()), samples, u"ms"_s });
    }
}

void benchCollectors(BenchTable &table, const Platform &platform, int runs)
{
    for (AppSection section : AppSections::dataSections()) {
        Samples samples = timeRuns(runs / 10, runs, [&] { collect(platform, section); });
        table.add({ u"collecte %1 (%2)"_s.arg(AppSections::rawValue(section), dataTypesOf(section).join(u" + "_s)),
            samples, u"ms"_s });
    }
}

} // namespace

QStringList profilerDataTypes()
{
    QStringList dataTypes;
    for (const DelaySource &source : delaySources)
        dataTypes.append(QString::fromUtf16(source.dataType));
    return dataTypes;
}

QStringList concurrencyDelaySources()
{
    QStringList lines;
    for (const DelaySource &source : delaySources)
        lines.append(u"%1 %2 ms — %3"_s.arg(QString::fromUtf16(source.dataType), -22)
                         .arg(source.msecs, 4)
                         .arg(QString::fromUtf16(source.source)));
    return lines;
}

void benchCore(BenchTable &table, const Platform &platform, int runs)
{
    auto profiler = std::make_shared<RecordedProfiler>(*platform.profiler, profilerDataTypes());
    const Platform inMemory = withProfiler(platform, profiler);

    table.heading(u"1. Cœur : chargement complet en mémoire (réponses de system_profiler déjà lues)"_s);
    Samples full = timeRuns(runs / 10, runs, [&] { (void)fullLoadAndReport(inMemory); });
    table.add({ u"AppState neuf : 10 sections + verdicts + rapport texte"_s, full, u"ms"_s, 10.0 });

    // The refresh of the overview on a state that already loaded once: its threads are up.
    AppState state(inMemory);
    Samples refresh = timeRuns(runs / 10, runs, [&] {
        QEventLoop loop;
        bool done = false;
        state.refresh(AppSection::overview, [&] {
            done = true;
            loop.quit();
        });
        if (!done)
            loop.exec();
    });
    table.add({ u"Actualiser (⌘R) la vue d’ensemble déjà chargée"_s, refresh, u"ms"_s });

    const Loaded loaded = fullLoad(inMemory);
    Samples rules = timeRuns(runs / 10, runs, [&] {
        (void)DiagnosticsService::build(inMemory, loaded.hardware, loaded.battery, loaded.volumes, loaded.inventory);
    });
    table.add({ u"règles : DiagnosticsService::build"_s, rules, u"ms"_s });
    Samples text = timeRuns(runs / 10, runs, [&] { (void)reportText(inMemory, loaded); });
    table.add({ u"rapport texte : ReportBuilder::build"_s, text, u"ms"_s });

    table.heading(u"1b. Analyse et collecte par type de données (un fil, en mémoire)"_s);
    benchParsing(table, *profiler, runs);
    benchCollectors(table, inMemory, runs);
}

void benchConcurrency(BenchTable &table, const Platform &platform, int runs)
{
    auto profiler = std::make_shared<RecordedProfiler>(*platform.profiler, profilerDataTypes());
    const QHash<QString, int> delays = concurrencyDelays();
    profiler->setDelays(delays);
    const Platform delayed = withProfiler(platform, profiler);
    int slowest = 0;
    int sum = 0;
    QString slowestType;
    for (auto it = delays.cbegin(); it != delays.cend(); ++it) {
        sum += it.value();
        if (it.value() > slowest) {
            slowest = it.value();
            slowestType = it.key();
        }
    }

    table.heading(u"2. Concurrence : chaque réponse retardée du temps de system_profiler sur un Mac"_s);
    Samples wall = timeRuns(1, runs, [&] { (void)fullLoadAndReport(delayed); });
    table.add({ u"chargement complet + rapport, temps réel"_s, wall, u"ms"_s, std::nullopt,
        u"plus long délai seul : %1 ms, %2"_s.arg(slowest).arg(slowestType) });
    Samples ratio;
    for (double value : std::as_const(wall.values))
        ratio.values.append(value / double(slowest));
    Row ratioRow { u"temps réel ÷ plus long délai seul"_s, ratio, QString(), 1.1,
        u"1 = parfait ; tout en série : %1"_s.arg(double(sum) / double(slowest), 0, 'f', 1) };
    ratioRow.budgetIncluded = true;
    table.add(ratioRow);
}
