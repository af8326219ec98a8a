#include "common/test_main.h"
#include "machine_fakes.h"

#include "collectors/app_info.h"
#include "collectors/hardware_service.h"

#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace {

FakeKernel kernelWith(const QJsonObject &values)
{
    FakeKernel kernel;
    kernel.values = values;
    return kernel;
}

const QString architecture = HardwareService::architectureText(QSysInfo::buildCpuArchitecture());

} // namespace

class TestHardwareService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void coreSummaries_data()
    {
        QTest::addColumn<QVariant>("numberProcessors"); // invalid: the key is missing
        QTest::addColumn<QJsonObject>("kernel");
        QTest::addColumn<QStringList>("expected");      // long text, short text
        const QJsonObject sixteenThreads{{u"hw.physicalcpu"_s, 8}, {u"hw.logicalcpu"_s, 16}};
        QTest::newRow("Apple silicon counts") << QVariant(u"proc 10:4:6"_s) << QJsonObject{{u"hw.logicalcpu"_s, 10}}
                                              << QStringList{u"10 cœurs — 4 performance + 6 efficacité"_s,
                                                             u"10 (4P + 6E)"_s};
        QTest::newRow("pieces that are not integers are dropped")
            << QVariant(u"proc 12:x:8:4"_s) << QJsonObject{}
            << QStringList{u"12 cœurs — 8 performance + 4 efficacité"_s, u"12 (8P + 4E)"_s};
        QTest::newRow("Intel count with threads") << QVariant(qint64(8)) << sixteenThreads
                                                  << QStringList{u"8 cœurs / 16 threads"_s, u"8 cœurs"_s};
        QTest::newRow("as many threads as cores") << QVariant(qint64(8)) << QJsonObject{{u"hw.logicalcpu"_s, 8}}
                                                  << QStringList{u"8 cœurs"_s, u"8 cœurs"_s};
        QTest::newRow("two counts give the total") << QVariant(u"proc 6:4"_s) << QJsonObject{}
                                                   << QStringList{u"6 cœurs"_s, u"6 cœurs"_s};
        QTest::newRow("no count: the kernel's, shown even when equal")
            << QVariant() << QJsonObject{{u"hw.physicalcpu"_s, 10}, {u"hw.logicalcpu"_s, 10}}
            << QStringList{u"10 cœurs / 10 threads"_s, u"—"_s};
        QTest::newRow("no count, no logical count") << QVariant(u"many"_s) << QJsonObject{{u"hw.physicalcpu"_s, 8}}
                                                    << QStringList{u"—"_s, u"—"_s};
    }

    void coreSummaries()
    {
        QFETCH(QVariant, numberProcessors);
        QFETCH(QJsonObject, kernel);
        QFETCH(QStringList, expected);
        PropertyDictionary item;
        if (numberProcessors.isValid())
            item.insert(u"number_processors"_s, numberProcessors);
        QCOMPARE((QStringList{HardwareService::coreSummary(item, kernelWith(kernel)),
                              HardwareService::shortCoreSummary(item)}),
                 expected);
    }

    void texts_data()
    {
        QTest::addColumn<QString>("actual");
        QTest::addColumn<QString>("expected");
        const FakeKernel memsize = kernelWith({{u"hw.memsize"_s, qint64(17179869184)}});
        const auto memory = [&](const QString &text) { return HardwareService::localizedMemory(text, memsize); };
        QTest::newRow("memory in GB") << memory(u"16 GB"_s) << u"16 GB"_s;
        QTest::newRow("memory in TB") << memory(u"1 TB"_s) << u"1 TB"_s;
        QTest::newRow("memory in MB") << memory(u"512 MB"_s) << u"512 MB"_s;
        QTest::newRow("unknown unit shown as GB") << memory(u"16 Go"_s) << u"16 GB"_s;
        QTest::newRow("repeated spaces") << memory(u"32  GB"_s) << u"32 GB"_s;
        QTest::newRow("amount not an integer") << memory(u"16.5 GB"_s) << u"16.5 GB"_s;
        QTest::newRow("three pieces") << memory(u"16 GB LPDDR5"_s) << u"16 GB LPDDR5"_s;
        QTest::newRow("memory from the kernel") << HardwareService::localizedMemory(std::nullopt, memsize)
                                                << u"17,18\u00A0Go"_s;
        QTest::newRow("no memory at all") << HardwareService::localizedMemory(std::nullopt, FakeKernel()) << u"—"_s;

        const FakeKernel boot = kernelWith({{u"kern.boottime"_s, 1'800'000'000}});
        const QDateTime booted = QDateTime::fromSecsSinceEpoch(1'800'000'000, Qt::UTC);
        const auto uptime = [&](qint64 ms) { return HardwareService::uptime(boot, booted.addMSecs(ms)); };
        QTest::newRow("just under an hour") << uptime(3'599'999) << u"59 min"_s;
        QTest::newRow("one hour") << uptime(3'600'000) << u"1 h 0 min"_s;
        QTest::newRow("just under a day") << uptime(86'399'000) << u"23 h 59 min"_s;
        QTest::newRow("days hide the minutes") << uptime(90'059'000) << u"1 j 1 h"_s;
        QTest::newRow("no boot time") << HardwareService::uptime(FakeKernel(), booted) << u"—"_s;

        FakeProcess process;
        process.version = u"Version 15.1 (Build 24B83)"_s;
        const QJsonObject build{{u"kern.osversion"_s, u"24B83"_s}};
        QTest::newRow("system version and build")
            << HardwareService::osVersion(kernelWith({{u"kern.osproductversion"_s, u"15.1"_s}, {u"kern.osversion"_s, u"24B83"_s}}), process)
            << u"macOS 15.1 (24B83)"_s;
        QTest::newRow("system version from the process")
            << HardwareService::osVersion(kernelWith(build), process) << u"macOS Version 15.1 (Build 24B83) (24B83)"_s;

        const auto intel = [](const QVariantMap &item) { return HardwareService::intelProcessorLabel(item); };
        QTest::newRow("processor and speed") << intel({{u"cpu_type"_s, u"8-Core Intel Core i9"_s},
                                                       {u"current_processor_speed"_s, u"2,3 GHz"_s}})
                                             << u"8-Core Intel Core i9 à 2,3 GHz"_s;
        QTest::newRow("speed without processor") << intel({{u"current_processor_speed"_s, u"2,3 GHz"_s}}) << QString();

        QTest::newRow("fair") << HardwareService::thermalState(ThermalState::fair) << u"Correct"_s;
        QTest::newRow("serious") << HardwareService::thermalState(ThermalState::serious) << u"Élevé"_s;
        QTest::newRow("critical") << HardwareService::thermalState(ThermalState::critical) << u"Critique"_s;
        QTest::newRow("unknown") << HardwareService::thermalState(ThermalState::unknown) << u"Inconnu"_s;
        QTest::newRow("arm64") << HardwareService::architectureText(u"arm64"_s) << u"arm64 (Apple Silicon)"_s;
        QTest::newRow("x86_64") << HardwareService::architectureText(u"x86_64"_s) << u"x86_64 (Intel)"_s;
        QTest::newRow("other architecture") << HardwareService::architectureText(u"riscv64"_s) << u"riscv64"_s;
        QTest::newRow("same version and build") << AppInfo::versionLabel(u"1.2"_s, u"1.2"_s) << u"1.2"_s;
        QTest::newRow("version and build") << AppInfo::versionLabel(u"1.2"_s, u"45"_s) << u"1.2 (45)"_s;
        QTest::newRow("no build") << AppInfo::versionLabel(u"1.2"_s, std::nullopt) << u"1.2 (—)"_s;
    }

    void texts()
    {
        QFETCH(QString, actual);
        QFETCH(QString, expected);
        QCOMPARE(actual, expected);
    }

    void hardwareFailureFailsTheLoad_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<int>("exitStatus");
        QTest::addColumn<QString>("expected");
        QTest::newRow("exit status") << QByteArray("{}") << 1
                                     << u"system_profiler a échoué : code 1 pour SPHardwareDataType"_s;
        QTest::newRow("not JSON") << QByteArray("<html>") << 0 << u"Réponse de system_profiler illisible."_s;
    }

    void hardwareFailureFailsTheLoad()
    {
        QFETCH(QByteArray, output);
        QFETCH(int, exitStatus);
        QFETCH(QString, expected);
        FakeMac mac;
        mac.profiler->answer(u"SPHardwareDataType"_s, output, exitStatus);
        mac.profiler->answer(u"SPSoftwareDataType"_s, R"({"SPSoftwareDataType": []})");
        const Result<HardwareInfo> result = HardwareService::load(mac.platform());
        QVERIFY(!result.ok());
        QCOMPARE(result.failure().description(), expected);
    }

    // A sparse answer is no failure, and a failing software answer only loses the names.
    void sparseAnswersDashOrDropRows()
    {
        FakeMac mac;
        mac.profiler->answer(u"SPHardwareDataType"_s, R"({"SPHardwareDataType": [{"machine_model": "Mac99,1"}]})");
        mac.profiler->answer(u"SPSoftwareDataType"_s, "{}", 1);
        mac.process->host = u"atelier.local"_s;
        const Result<HardwareInfo> result = HardwareService::load(mac.platform());
        QVERIFY(result.ok());
        const HardwareInfo &info = result.value();
        QCOMPARE(info.modelName, u"Mac"_s);
        QVERIFY(!info.serialNumber && !info.commercialName && !info.modelYear);
        QCOMPARE(rowTexts(info.rows),
                 (QStringList{u"Modèle = —"_s, u"Identifiant du modèle = Mac99,1"_s, u"Puce / processeur = —"_s,
                              u"Cœurs = —"_s, u"Mémoire = —"_s, u"Architecture de l'app = "_s + architecture,
                              u"Numéro de série = —"_s, u"Système = macOS "_s, u"Nom de l'ordinateur = atelier.local"_s,
                              u"Démarré depuis = —"_s, u"État thermique = Inconnu"_s}));
    }

    void sampleCapture()
    {
        const Result<HardwareInfo> result = HardwareService::load(capturePlatform(u"sample"_s));
        QVERIFY(result.ok());
        const HardwareInfo &info = result.value();
        QCOMPARE((QStringList{info.modelName, info.modelIdentifier, info.commercialName.value_or(u"?"_s), info.chip,
                              info.cores, info.coresShort, info.memory, info.osVersion, info.uptime,
                              info.architecture, info.serialNumber.value_or(u"?"_s)}),
                 (QStringList{u"MacBook Pro"_s, u"MacBookPro18,3"_s, u"MacBook Pro 14″ M1 Pro/Max, 2021"_s,
                              u"Apple M1 Pro"_s, u"10 cœurs — 8 performance + 2 efficacité"_s, u"10 (8P + 2E)"_s,
                              u"16 GB"_s, u"macOS 15.1 (24B83)"_s, u"3 j 20 h"_s, architecture, u"K7Q2XW9J4F"_s}));
        QCOMPARE(info.modelYear, 2021);
        // Booted at 1794482395, captured at 2026-11-16T08:05:07Z (1794816307): 333912 s.
        QCOMPARE(rowTexts(info.rows),
                 (QStringList{u"Modèle = MacBook Pro"_s, u"Identifiant du modèle = MacBookPro18,3"_s,
                              u"Millésime = MacBook Pro 14″ M1 Pro/Max, 2021"_s, u"Référence = MKGR3FN/A"_s,
                              u"Puce / processeur = Apple M1 Pro"_s,
                              u"Cœurs = 10 cœurs — 8 performance + 2 efficacité"_s, u"Mémoire = 16 GB"_s,
                              u"Architecture de l'app = "_s + architecture, u"Numéro de série = K7Q2XW9J4F"_s,
                              u"UUID de plateforme = 7C2E41D8-93B5-5F0A-A6D4-2E8B1C9F3A57"_s,
                              u"Version du firmware = 11881.41.5"_s, u"Verrouillage d'activation = Désactivé"_s,
                              u"Système = macOS 15.1 (24B83)"_s, u"Noyau = Darwin 24.1.0"_s,
                              u"Nom de l'ordinateur = MacBook Pro de Claire"_s,
                              u"Session ouverte par = Claire Moreau (claire)"_s, u"Démarré depuis = 3 j 20 h"_s,
                              u"État thermique = Normal"_s}));
        QVERIFY(std::none_of(info.rows.cbegin(), info.rows.cend(), [](const InfoRow &row) { return row.key; }));
        QVERIFY(info.components.trackpad.present);
    }

    void intelCapture()
    {
        const HardwareInfo info = HardwareService::load(capturePlatform(u"intel-macbook-pro"_s)).value();
        // Booted at 1794823684, captured at 1794842444: 18760 s.
        QCOMPARE((QStringList{info.chip, info.cores, info.coresShort, info.memory, info.uptime}),
                 (QStringList{u"8-Core Intel Core i9 à 2,3 GHz"_s, u"8 cœurs / 16 threads"_s, u"8 cœurs"_s,
                              u"16 GB"_s, u"5 h 12 min"_s}));
        const QStringList rows = rowTexts(info.rows);
        QVERIFY(rows.contains(u"Vitesse = 2,3 GHz"_s) && rows.contains(u"Nombre de processeurs = 1"_s));
        QCOMPARE(rows.last(), u"État thermique = Correct"_s);
    }

    void profilerFailuresCaptureStillLoads()
    {
        const Result<HardwareInfo> result = HardwareService::load(capturePlatform(u"profiler-failures"_s));
        QVERIFY(result.ok());
        QCOMPARE(result.value().commercialName, u"MacBook Air 13″ M2, 2022"_s);
        QVERIFY(rowTexts(result.value().rows).contains(u"Verrouillage d'activation = Activé"_s));
    }
};

QUILLON_TEST_MAIN(TestHardwareService)
#include "tst_hardware_service.moc"
