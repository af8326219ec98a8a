#include "common/test_main.h"

#include "collectors/app_info.h"
#include "collectors/hardware_service.h"
#include "platform/capture/capture_folder.h"
#include "platform/capture/capture_platform.h"

#include <QJsonObject>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace {

// The system profiler answering per data type with a given output and exit status.
class FakeProfiler final : public ProfilerSource
{
public:
    QHash<QString, ProcessOutput> answers;

    void answer(const QString &dataType, const QByteArray &output, int exitStatus = 0)
    {
        answers.insert(dataType, ProcessOutput{true, {}, exitStatus, output});
    }
    ProcessOutput run(const QStringList &arguments) const override
    {
        return answers.value(arguments.value(1), ProcessOutput{true, {}, 0, {}});
    }
};

// Kernel values given as the members of a capture's kernel.json.
class FakeKernel final : public KernelSource
{
public:
    QJsonObject values;
    std::optional<QByteArray> value(const QByteArray &name) const override
    {
        const QString key = QString::fromLatin1(name);
        return values.contains(key) ? kernelBytes(name, values.value(key)) : std::nullopt;
    }
};

class FakeProcess final : public ProcessInformation
{
public:
    QString host;
    QString version;
    ThermalState state = ThermalState::unknown;
    QString hostName() const override { return host; }
    QString operatingSystemVersion() const override { return version; }
    ThermalState thermalState() const override { return state; }
};

class FakeClock final : public Clock
{
public:
    QDateTime moment = QDateTime::fromSecsSinceEpoch(1'800'000'000, Qt::UTC);
    QDateTime now() const override { return moment; }
};

class EmptyRegistry final : public RegistrySource
{
public:
    QList<PropertyDictionary> servicesOfClass(const QString &) const override { return {}; }
    QList<PropertyDictionary> servicesNamed(const QString &) const override { return {}; }
};

struct FakeMac
{
    std::shared_ptr<FakeProfiler> profiler = std::make_shared<FakeProfiler>();
    std::shared_ptr<FakeKernel> kernel = std::make_shared<FakeKernel>();
    std::shared_ptr<FakeProcess> process = std::make_shared<FakeProcess>();
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();

    Platform platform() const
    {
        Platform platform;
        platform.profiler = profiler;
        platform.kernel = kernel;
        platform.registry = std::make_shared<EmptyRegistry>();
        platform.process = process;
        platform.clock = clock;
        return platform;
    }
};

PropertyDictionary item(const QString &key, const QVariant &value)
{
    return value.isValid() ? PropertyDictionary{{key, value}} : PropertyDictionary{};
}

QStringList rowTexts(const QList<InfoRow> &rows)
{
    QStringList texts;
    for (const InfoRow &row : rows)
        texts.append(row.label + u" = "_s + row.value);
    return texts;
}

Platform capture(const QString &name)
{
    const auto opened = CaptureFolder::open(QStringLiteral(QUILLON_CAPTURES_DIR) + u'/' + name);
    if (const QString *error = std::get_if<QString>(&opened))
        qFatal("%s", qPrintable(*error));
    return makeCapturePlatform(std::get<std::shared_ptr<CaptureFolder>>(opened));
}

} // namespace

class TestHardwareService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void coreSummaries_data()
    {
        QTest::addColumn<QVariant>("numberProcessors"); // invalid: the key is missing
        QTest::addColumn<QJsonObject>("kernel");
        QTest::addColumn<QString>("expectedLong");
        QTest::addColumn<QString>("expectedShort");

        const QJsonObject tenLogical{{u"hw.logicalcpu"_s, 10}};
        const QJsonObject sixteenLogical{{u"hw.physicalcpu"_s, 8}, {u"hw.logicalcpu"_s, 16}};
        QTest::newRow("Apple silicon counts") << QVariant(u"proc 10:4:6"_s) << tenLogical
                                              << u"10 cœurs — 4 performance + 6 efficacité"_s << u"10 (4P + 6E)"_s;
        QTest::newRow("pieces that are not integers are dropped")
            << QVariant(u"proc 12:x:8:4"_s) << QJsonObject{} << u"12 cœurs — 8 performance + 4 efficacité"_s
            << u"12 (8P + 4E)"_s;
        QTest::newRow("Intel count with threads") << QVariant(qint64(8)) << sixteenLogical
                                                  << u"8 cœurs / 16 threads"_s << u"8 cœurs"_s;
        QTest::newRow("Intel count as many threads as cores")
            << QVariant(qint64(8)) << QJsonObject{{u"hw.logicalcpu"_s, 8}} << u"8 cœurs"_s << u"8 cœurs"_s;
        QTest::newRow("count without a logical count") << QVariant(u"8"_s) << QJsonObject{} << u"8 cœurs"_s
                                                       << u"8 cœurs"_s;
        QTest::newRow("two counts give the total") << QVariant(u"proc 6:4"_s) << sixteenLogical
                                                   << u"6 cœurs / 16 threads"_s << u"6 cœurs"_s;
        QTest::newRow("no count: the kernel's, both shown even when equal")
            << QVariant() << QJsonObject{{u"hw.physicalcpu"_s, 10}, {u"hw.logicalcpu"_s, 10}}
            << u"10 cœurs / 10 threads"_s << u"—"_s;
        QTest::newRow("no count and no logical count") << QVariant(u"many"_s)
                                                       << QJsonObject{{u"hw.physicalcpu"_s, 8}} << u"—"_s << u"—"_s;
    }

    void coreSummaries()
    {
        QFETCH(QVariant, numberProcessors);
        QFETCH(QJsonObject, kernel);
        FakeKernel fakeKernel;
        fakeKernel.values = kernel;
        QFETCH(QString, expectedLong);
        QFETCH(QString, expectedShort);
        const PropertyDictionary hardware = item(u"number_processors"_s, numberProcessors);
        QCOMPARE(HardwareService::coreSummary(hardware, fakeKernel), expectedLong);
        QCOMPARE(HardwareService::shortCoreSummary(hardware), expectedShort);
    }

    void memory_data()
    {
        QTest::addColumn<QVariant>("physicalMemory");
        QTest::addColumn<QString>("expected");
        QTest::newRow("gigabytes") << QVariant(u"16 GB"_s) << u"16 GB"_s;
        QTest::newRow("terabytes") << QVariant(u"1 TB"_s) << u"1 TB"_s;
        QTest::newRow("megabytes") << QVariant(u"512 MB"_s) << u"512 MB"_s;
        QTest::newRow("unknown unit shown as GB") << QVariant(u"16 Go"_s) << u"16 GB"_s;
        QTest::newRow("repeated spaces") << QVariant(u"32  GB"_s) << u"32 GB"_s;
        QTest::newRow("not an integer") << QVariant(u"16.5 GB"_s) << u"16.5 GB"_s;
        QTest::newRow("three pieces") << QVariant(u"16 GB LPDDR5"_s) << u"16 GB LPDDR5"_s;
        QTest::newRow("absent: the kernel's byte count") << QVariant() << u"17,18\u00A0Go"_s;
    }

    void memory()
    {
        QFETCH(QVariant, physicalMemory);
        FakeKernel kernel;
        kernel.values = {{u"hw.memsize"_s, qint64(17179869184)}};
        const std::optional<QString> text
            = physicalMemory.isValid() ? std::optional(physicalMemory.toString()) : std::nullopt;
        QFETCH(QString, expected);
        QCOMPARE(HardwareService::localizedMemory(text, kernel), expected);
        QCOMPARE(HardwareService::localizedMemory(std::nullopt, FakeKernel()), u"—"_s);
    }

    void uptime_data()
    {
        QTest::addColumn<qint64>("milliseconds");
        QTest::addColumn<QString>("expected");
        QTest::newRow("just under an hour") << qint64(3'599'999) << u"59 min"_s;
        QTest::newRow("one hour") << qint64(3'600'000) << u"1 h 0 min"_s;
        QTest::newRow("just under a day") << qint64(86'399'000) << u"23 h 59 min"_s;
        QTest::newRow("a day and an hour hides the minutes") << qint64(90'000'000 + 59'000) << u"1 j 1 h"_s;
        QTest::newRow("under a minute") << qint64(59'000) << u"0 min"_s;
    }

    void uptime()
    {
        QFETCH(qint64, milliseconds);
        FakeKernel kernel;
        kernel.values = {{u"kern.boottime"_s, 1'800'000'000}};
        const QDateTime now = QDateTime::fromSecsSinceEpoch(1'800'000'000, Qt::UTC).addMSecs(milliseconds);
        QFETCH(QString, expected);
        QCOMPARE(HardwareService::uptime(kernel, now), expected);
        QCOMPARE(HardwareService::uptime(FakeKernel(), now), u"—"_s);
    }

    void shortTexts_data()
    {
        QTest::addColumn<QString>("actual");
        QTest::addColumn<QString>("expected");
        const auto intel = [](const char *type, const char *speed) {
            PropertyDictionary dict;
            if (type)
                dict.insert(u"cpu_type"_s, QString::fromUtf8(type));
            if (speed)
                dict.insert(u"current_processor_speed"_s, QString::fromUtf8(speed));
            return HardwareService::intelProcessorLabel(dict);
        };
        QTest::newRow("processor and speed") << intel("8-Core Intel Core i9", "2,3 GHz")
                                             << u"8-Core Intel Core i9 à 2,3 GHz"_s;
        QTest::newRow("processor alone") << intel("Dual-Core Intel Core i5", nullptr) << u"Dual-Core Intel Core i5"_s;
        QTest::newRow("speed alone") << intel(nullptr, "2,3 GHz") << QString();
        QTest::newRow("nominal") << HardwareService::thermalState(ThermalState::nominal) << u"Normal"_s;
        QTest::newRow("fair") << HardwareService::thermalState(ThermalState::fair) << u"Correct"_s;
        QTest::newRow("serious") << HardwareService::thermalState(ThermalState::serious) << u"Élevé"_s;
        QTest::newRow("critical") << HardwareService::thermalState(ThermalState::critical) << u"Critique"_s;
        QTest::newRow("unknown") << HardwareService::thermalState(ThermalState::unknown) << u"Inconnu"_s;
        QTest::newRow("arm64") << HardwareService::architectureText(u"arm64"_s) << u"arm64 (Apple Silicon)"_s;
        QTest::newRow("x86_64") << HardwareService::architectureText(u"x86_64"_s) << u"x86_64 (Intel)"_s;
        QTest::newRow("other") << HardwareService::architectureText(u"riscv64"_s) << u"riscv64"_s;
        QTest::newRow("same version and build") << AppInfo::versionLabel(u"1.2"_s, u"1.2"_s) << u"1.2"_s;
        QTest::newRow("version and build") << AppInfo::versionLabel(u"1.2"_s, u"45"_s) << u"1.2 (45)"_s;
        QTest::newRow("no build") << AppInfo::versionLabel(u"1.2"_s, std::nullopt) << u"1.2 (—)"_s;
        QTest::newRow("nothing") << AppInfo::versionLabel(std::nullopt, std::nullopt) << u"—"_s;
    }

    void shortTexts()
    {
        QFETCH(QString, actual);
        QFETCH(QString, expected);
        QCOMPARE(actual, expected);
    }

    void osVersion_data()
    {
        QTest::addColumn<QJsonObject>("kernel");
        QTest::addColumn<QString>("expected");
        QTest::newRow("version and build") << QJsonObject{{u"kern.osproductversion"_s, u"15.1"_s},
                                                          {u"kern.osversion"_s, u"24B83"_s}}
                                           << u"macOS 15.1 (24B83)"_s;
        QTest::newRow("no build") << QJsonObject{{u"kern.osproductversion"_s, u"15.1"_s}} << u"macOS 15.1"_s;
        QTest::newRow("the process's text without a kernel version")
            << QJsonObject{{u"kern.osversion"_s, u"24B83"_s}} << u"macOS Version 15.1 (Build 24B83) (24B83)"_s;
    }

    void osVersion()
    {
        QFETCH(QJsonObject, kernel);
        FakeKernel fakeKernel;
        fakeKernel.values = kernel;
        FakeProcess process;
        process.version = u"Version 15.1 (Build 24B83)"_s;
        QFETCH(QString, expected);
        QCOMPARE(HardwareService::osVersion(fakeKernel, process), expected);
    }

    void hardwareFailureFailsTheLoad_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<int>("exitStatus");
        QTest::addColumn<QString>("expected");
        QTest::newRow("exit status") << QByteArray("{}") << 1 << u"system_profiler a échoué : code 1 pour SPHardwareDataType"_s;
        QTest::newRow("not JSON") << QByteArray("<html>") << 0 << u"Réponse de system_profiler illisible."_s;
        QTest::newRow("data type missing") << QByteArray("{}") << 0 << u"Réponse de system_profiler illisible."_s;
    }

    void hardwareFailureFailsTheLoad()
    {
        FakeMac mac;
        QFETCH(QByteArray, output);
        QFETCH(int, exitStatus);
        QFETCH(QString, expected);
        mac.profiler->answer(u"SPHardwareDataType"_s, output, exitStatus);
        const Result<HardwareInfo> result = HardwareService::load(mac.platform());
        QVERIFY(!result.ok());
        QCOMPARE(result.failure().description(), expected);
    }

    // An empty answer is no failure; a failing software answer only loses the names.
    void emptyAnswersDashOrDropRows()
    {
        FakeMac mac;
        mac.profiler->answer(u"SPHardwareDataType"_s, R"({"SPHardwareDataType": []})");
        mac.profiler->answer(u"SPSoftwareDataType"_s, "{}", 1);
        mac.process->host = u"atelier.local"_s;
        const Result<HardwareInfo> result = HardwareService::load(mac.platform());
        QVERIFY(result.ok());
        const HardwareInfo &info = result.value();
        QCOMPARE(info.modelName, u"Mac"_s);
        QCOMPARE(info.modelIdentifier, u"—"_s);
        QVERIFY(!info.serialNumber && !info.commercialName && !info.modelYear);
        const QString architecture = HardwareService::architectureText(QSysInfo::buildCpuArchitecture());
        QCOMPARE(rowTexts(info.rows),
                 (QStringList{u"Modèle = —"_s, u"Identifiant du modèle = —"_s, u"Puce / processeur = —"_s,
                              u"Cœurs = —"_s, u"Mémoire = —"_s, u"Architecture de l'app = "_s + architecture,
                              u"Numéro de série = —"_s, u"Système = macOS "_s,
                              u"Nom de l'ordinateur = atelier.local"_s, u"Démarré depuis = —"_s,
                              u"État thermique = Inconnu"_s}));
    }

    void unknownModelHasNoCommercialName()
    {
        FakeMac mac;
        mac.profiler->answer(u"SPHardwareDataType"_s,
                             R"({"SPHardwareDataType": [{"machine_name": "MacBook Pro", "machine_model": "Mac99,1"}]})");
        const HardwareInfo info = HardwareService::load(mac.platform()).value();
        QCOMPARE(info.modelName, u"MacBook Pro"_s);
        QCOMPARE(info.modelIdentifier, u"Mac99,1"_s);
        QVERIFY(!info.commercialName && !info.modelYear);
        QVERIFY(!rowTexts(info.rows).join(u'\n').contains(u"Millésime"_s));
    }

    void sampleCapture()
    {
        const Result<HardwareInfo> result = HardwareService::load(capture(u"sample"_s));
        QVERIFY(result.ok());
        const HardwareInfo &info = result.value();
        QCOMPARE(info.modelName, u"MacBook Pro"_s);
        QCOMPARE(info.modelIdentifier, u"MacBookPro18,3"_s);
        QCOMPARE(info.commercialName, u"MacBook Pro 14″ M1 Pro/Max, 2021"_s);
        QCOMPARE(info.modelYear, 2021);
        QCOMPARE(info.chip, u"Apple M1 Pro"_s);
        QCOMPARE(info.cores, u"10 cœurs — 8 performance + 2 efficacité"_s);
        QCOMPARE(info.coresShort, u"10 (8P + 2E)"_s);
        QCOMPARE(info.memory, u"16 GB"_s);
        QCOMPARE(info.osVersion, u"macOS 15.1 (24B83)"_s);
        // Booted at 1794482395, captured at 2026-11-16T08:05:07Z (1794816307): 333912 s.
        QCOMPARE(info.uptime, u"3 j 20 h"_s);
        QCOMPARE(info.serialNumber, u"K7Q2XW9J4F"_s);
        const QString architecture = HardwareService::architectureText(QSysInfo::buildCpuArchitecture());
        QCOMPARE(info.architecture, architecture);
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
        for (const InfoRow &row : info.rows)
            QVERIFY(!row.key);
        QVERIFY(info.components.trackpad.present);
    }

    void intelCapture()
    {
        const HardwareInfo info = HardwareService::load(capture(u"intel-macbook-pro"_s)).value();
        QCOMPARE(info.chip, u"8-Core Intel Core i9 à 2,3 GHz"_s);
        QCOMPARE(info.cores, u"8 cœurs / 16 threads"_s);
        QCOMPARE(info.coresShort, u"8 cœurs"_s);
        QCOMPARE(info.memory, u"16 GB"_s);
        QCOMPARE(info.commercialName, u"MacBook Pro 16″, 2019"_s);
        // Booted at 1794823684, captured at 1794842444: 18760 s.
        QCOMPARE(info.uptime, u"5 h 12 min"_s);
        const QStringList rows = rowTexts(info.rows);
        QVERIFY(rows.contains(u"Vitesse = 2,3 GHz"_s));
        QVERIFY(rows.contains(u"Nombre de processeurs = 1"_s));
        QCOMPARE(rows.last(), u"État thermique = Correct"_s);
    }

    void profilerFailuresCaptureStillLoads()
    {
        const Result<HardwareInfo> result = HardwareService::load(capture(u"profiler-failures"_s));
        QVERIFY(result.ok());
        QCOMPARE(result.value().commercialName, u"MacBook Air 13″ M2, 2022"_s);
        QVERIFY(rowTexts(result.value().rows).contains(u"Verrouillage d'activation = Activé"_s));
        QVERIFY(rowTexts(result.value().rows).contains(u"Nom de l'ordinateur = MacBook Air de Léa"_s));
    }
};

QUILLON_TEST_MAIN(TestHardwareService)
#include "tst_hardware_service.moc"
