#include "common/test_main.h"
#include "fakes.h"

#include "collectors/app_info.h"
#include "collectors/built_in_device_service.h"
#include "collectors/hardware_service.h"
#include "sources/io_registry.h"

#include <QSysInfo>

using namespace HardwareService;

namespace {

const QString architecture = architectureText(QSysInfo::buildCpuArchitecture());

// The long and the short texts of the cores.
QString cores(const QVariant &numberProcessors, const QByteArray &kernelJson = "{}")
{
    const PropertyDictionary item = numberProcessors.isValid() ? PropertyDictionary{{u"number_processors"_s, numberProcessors}}
                                                               : PropertyDictionary();
    const FakeKernel kernel(kernelJson);
    return coreSummary(item, kernel) + u" | "_s + shortCoreSummary(item, kernel);
}

// The identity and rows of a Mac whose software answer fails when `software` is empty, or
// the failure of its load.
QStringList loaded(const QByteArray &hardware, int exitStatus = 0, const QByteArray &software = {}, const QByteArray &kernelJson = "{}")
{
    FakeMac mac;
    mac.profiler->answer(u"SPHardwareDataType"_s, hardware, exitStatus);
    if (!software.isEmpty())
        mac.profiler->answerItems(u"SPSoftwareDataType"_s, software);
    mac.kernel->values = FakeKernel(kernelJson).values;
    mac.process->host = u"atelier.local"_s;
    mac.process->state = ThermalState::nominal;
    const Result<HardwareInfo> result = HardwareService::load(mac.platform());
    if (!result.ok())
        return {result.failure().description()};
    const HardwareInfo &info = result.value();
    const QString year = info.modelYear ? QString::number(*info.modelYear) : u"-"_s;
    return QStringList{QStringList{info.modelName, info.commercialName.value_or(u"-"_s), year, info.coresShort,
                                   info.serialNumber.value_or(u"-"_s)}
                           .join(u" | "_s)}
        + rowTexts(info.rows);
}

// A registry written as JSON: services by class, or by name under "name:<name>".
FakeMac macWith(const QByteArray &json)
{
    FakeMac mac;
    const QJsonObject services = QJsonDocument::fromJson(json).object();
    for (auto it = services.begin(); it != services.end(); ++it) {
        auto &table = it.key().startsWith(u"name:"_s) ? mac.registry->byName : mac.registry->byClass;
        for (const QVariant &service : it->toArray().toVariantList())
            table[it.key().section(u':', -1)].append(service.toMap());
    }
    return mac;
}

// Each present component of a registry in one line: "id: detail | label = value | …".
QStringList described(const QByteArray &registry)
{
    QStringList lines;
    for (const BuiltInComponents::Listed &listed : BuiltInDeviceService::load(macWith(registry).platform()).listed()) {
        if (listed.component.present)
            lines.append((QStringList{componentIDRawValue(listed.id) + u": "_s + listed.component.detail.value_or(u"-"_s)}
                          + rowTexts(listed.component.rows))
                             .join(u" | "_s));
    }
    return lines;
}

// "portable or desktop | trackpad error count | sensor interfaces".
QStringList machine(const QByteArray &registry)
{
    const BuiltInComponents components = BuiltInDeviceService::load(macWith(registry).platform());
    return {(components.isPortable ? u"portable | "_s : u"desktop | "_s)
            + (components.trackpadCriticalErrors ? QString::number(*components.trackpadCriticalErrors) : u"-"_s) + u" | "_s
            + QString::number(components.sensorInterfaces)};
}

// "candidate: marker" of the service found, "-" for none.
QStringList firstAvailable(const QByteArray &registry, const QStringList &candidates)
{
    const auto match = IORegistry::firstAvailable(*macWith(registry).registry, candidates);
    return {match ? QString(match->className + u": "_s + match->properties.value(u"m"_s).toString()) : u"-"_s};
}

} // namespace

class TestHardwareService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data()
    {
        QTest::addColumn<QString>("actual");
        QTest::addColumn<QString>("expected");
        const FakeKernel memsize(R"({"hw.memsize": 17179869184})"), boot(R"({"kern.boottime": 1800000000})");
        const auto memory = [&](const std::optional<QString> &text) { return localizedMemory(text, memsize); };
        const auto upFor = [&](qint64 ms) { return uptime(boot, QDateTime::fromSecsSinceEpoch(1'800'000'000, Qt::UTC).addMSecs(ms)); };
        QTest::newRow("cores of Apple silicon") << cores(u"proc 10:4:6"_s) << u"10 cœurs — 4 performance + 6 efficacité | 10 (4P + 6E)"_s;
        // Since macOS 26, four fields; the kernel names the tiers.
        const QByteArray m5Max = R"({"hw.nperflevels": 2, "hw.perflevel0.name": "Super", "hw.perflevel0.physicalcpu": 6,
            "hw.perflevel1.name": "Performance", "hw.perflevel1.physicalcpu": 12})";
        QTest::newRow("cores: M5 Max, super and performance") << cores(u"proc 18:6:0:12"_s, m5Max)
            << u"18 cœurs — 6 super + 12 performance | 18 (6S + 12P)"_s;
        QTest::newRow("cores: base M5, super and efficiency") << cores(u"proc 10:4:6:0"_s,
            R"({"hw.nperflevels": 2, "hw.perflevel0.name": "Super", "hw.perflevel0.physicalcpu": 4,
                "hw.perflevel1.name": "Efficiency", "hw.perflevel1.physicalcpu": 6})")
            << u"10 cœurs — 4 super + 6 efficacité | 10 (4S + 6E)"_s;
        QTest::newRow("cores: M4 on macOS 26 reads as before") << cores(u"proc 10:4:6:0"_s,
            R"({"hw.nperflevels": 2, "hw.perflevel0.name": "Performance", "hw.perflevel0.physicalcpu": 4,
                "hw.perflevel1.name": "Efficiency", "hw.perflevel1.physicalcpu": 6})")
            << u"10 cœurs — 4 performance + 6 efficacité | 10 (4P + 6E)"_s;
        QTest::newRow("cores: a tier macOS names otherwise") << cores(u"proc 10:4:0:6"_s,
            R"({"hw.nperflevels": 2, "hw.perflevel0.name": "Super", "hw.perflevel0.physicalcpu": 4,
                "hw.perflevel1.name": "Turbo", "hw.perflevel1.physicalcpu": 6})")
            << u"10 cœurs — 4 super + 6 turbo | 10 (4S + 6T)"_s;
        QTest::newRow("cores: Intel count with threads") << cores(qint64(8), R"({"hw.logicalcpu": 16})")
            << u"8 cœurs / 16 threads | 8 cœurs"_s;
        QTest::newRow("cores: no count, no logical count") << cores(u"many"_s, R"({"hw.physicalcpu": 8})") << u"— | —"_s;

        QTest::newRow("memory from the kernel") << memory(std::nullopt) << u"17,18\u00A0Go"_s;
        QTest::newRow("no memory at all") << localizedMemory(std::nullopt, FakeKernel()) << u"—"_s;

        QTest::newRow("uptime of one hour") << upFor(3'600'000) << u"1 h 0 min"_s;

        FakeProcess process;
        process.version = u"Version 15.1 (Build 24B83)"_s;
        QTest::newRow("system version and build") << osVersion(FakeKernel(R"({"kern.osproductversion": "15.1",
            "kern.osversion": "24B83"})"), process) << u"macOS 15.1 (24B83)"_s;

        const QString i9 = u"8-Core Intel Core i9"_s, speed = u"2,3 GHz"_s;
        QTest::newRow("Intel processor and speed") << intelProcessorLabel({{u"cpu_type"_s, i9}, {u"current_processor_speed"_s, speed}})
            << u"8-Core Intel Core i9 à 2,3 GHz"_s;

    }

    void texts()
    {
        QFETCH(QString, actual);
        QTEST(actual, "expected");
    }

    // Rows are always there, dashed, or left out when empty; only the hardware answer fails the load.
    void load_data()
    {
        QTest::addColumn<QStringList>("actual");
        QTest::addColumn<QStringList>("expected"); // model name | commercial name | year | short cores | serial number, then the rows
        QTest::newRow("every value") << loaded(R"({"SPHardwareDataType": [{"machine_name": "MacBook Pro", "machine_model": "MacBookPro18,3",
            "model_number": "MKGR3FN/A", "chip_type": "Apple M1 Pro", "current_processor_speed": "3,2 GHz",
            "number_processors": "proc 10:8:2", "packages": 1, "physical_memory": "16 GB", "serial_number": "K7Q2", "platform_UUID": "7C2E",
            "boot_rom_version": "11881.41.5", "activation_lock_status": "activation_lock_disabled"}]})", 0,
            R"({"local_host_name": "Atelier", "user_name": "Claire"})", R"({"kern.osproductversion": "15.1", "kern.osversion": "24B83",
            "kern.osrelease": "24.1.0", "kern.boottime": 1799910000, "hw.logicalcpu": 10})")
            << QStringList{u"MacBook Pro | MacBook Pro 14″ M1 Pro/Max, 2021 | 2021 | 10 (8P + 2E) | K7Q2"_s, u"Modèle = MacBook Pro"_s,
            u"Identifiant du modèle = MacBookPro18,3"_s, u"Millésime = MacBook Pro 14″ M1 Pro/Max, 2021"_s, u"Référence = MKGR3FN/A"_s,
            u"Puce / processeur = Apple M1 Pro"_s, u"Cœurs = 10 cœurs — 8 performance + 2 efficacité"_s, u"Vitesse = 3,2 GHz"_s,
            u"Nombre de processeurs = 1"_s, u"Mémoire = 16 GB"_s, u"Architecture de l'app = "_s + architecture, u"Numéro de série = K7Q2"_s,
            u"UUID de plateforme = 7C2E"_s, u"Version du firmware = 11881.41.5"_s, u"Verrouillage d'activation = Désactivé"_s,
            u"Système = macOS 15.1 (24B83)"_s, u"Noyau = Darwin 24.1.0"_s, u"Nom de l'ordinateur = Atelier"_s,
            u"Session ouverte par = Claire"_s, u"Démarré depuis = 1 j 1 h"_s, u"État thermique = Normal"_s};
        QTest::newRow("an unknown model and nothing else") << loaded(R"({"SPHardwareDataType": [{"machine_model": "Mac99,1"}]})")
            << QStringList{u"Mac | - | - | — | -"_s, u"Modèle = —"_s, u"Identifiant du modèle = Mac99,1"_s, u"Puce / processeur = —"_s,
            u"Cœurs = —"_s, u"Mémoire = —"_s, u"Architecture de l'app = "_s + architecture, u"Numéro de série = —"_s, u"Système = macOS "_s,
            u"Nom de l'ordinateur = atelier.local"_s, u"Démarré depuis = —"_s, u"État thermique = Normal"_s};
        QTest::newRow("exit status") << loaded("{}", 1) << QStringList{u"system_profiler a échoué : code 1 pour SPHardwareDataType"_s};
    }

    void load()
    {
        QFETCH(QStringList, actual);
        QTEST(actual, "expected");
    }

    // The built-in components, from registries written as JSON.
    void builtIn_data()
    {
        QTest::addColumn<QStringList>("actual");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("Touch ID") << described(R"({"AppleBiometricSensor": [{"IOClass": "AppleSandDollar", "SensorID": 36,
            "patch-version": 11, "DeviceOpenedByEventSystem": true}]})")
            << QStringList{u"touchID: Détecté | Pilote = AppleSandDollar | Identifiant du capteur = 36 | Version du micrologiciel = 11 | "
            "Pris en charge par le système = Oui"_s};
        QTest::newRow("keyboard") << described(R"({"AppleHIDKeyboardEventDriverV2": [{"Product": "Internal Keyboard",
            "KeyboardLanguage": "French", "CountryCode": 8, "Built-In": true, "KeyboardEnabled": true, "HIDKeyboardSupportsEscKey": true,
            "SupportsGlobeKey": true, "SupportsSiriKey": false, "Transport": "SPI"}]})")
            << QStringList{u"keyboard: Français | Modèle = Internal Keyboard | Disposition = Français | Code pays = 8 | Intégré = Oui | "
            "Actif = Oui | Touche Échap = Oui | Touche Globe = Oui | Touche Siri = Non | Liaison = SPI"_s};
        QTest::newRow("keyboard backlight") << described(R"({"IOHIDInterface": [{"Product": "Keyboard Backlight", "Transport": "SPI"}]})")
            << QStringList{u"keyboardBacklight: Présent | Interface = Keyboard Backlight | Liaison = SPI"_s};
        const QStringList lid{u"lidAngle: Détecté | Page d'usage HID = 0x20 (capteurs) | Usage HID = 0x8A | Liaison = SPU"_s};
        QTest::newRow("lid angle after another interface") << described(R"({"IOHIDInterface": [{"PrimaryUsagePage": 1, "PrimaryUsage": 6},
            {"PrimaryUsagePage": 32, "PrimaryUsage": 138, "Transport": "SPU"}]})") << lid;
        QTest::newRow("haptics") << described(R"({"AppleActuatorDevice": [{"ActuatorRevision": 4, "Transport": "SPI"}]})")
            << QStringList{u"haptics: Actif | Révision de l'actionneur = 4 | Liaison = SPI"_s};
        QTest::newRow("Wi-Fi found by class") << described(R"({"AirPortBrcmNIC": [{"IOClass": "Other", "ChipSet": 4387,
            "FirmwareLoaded": true, "FirmwareVersion": "wl0: Sep 1 2023 version 20.10.1038.6.8.7.144 FWID 01-1"}]})")
            << QStringList{u"wifi: BCM4387 | Puce = BCM4387 | Pilote = AirPortBrcmNIC | Micrologiciel chargé = Oui | "
            "Version du micrologiciel = 20.10.1038.6.8.7.144"_s};
        QTest::newRow("Intel Wi-Fi keeps the BCM prefix") << described(R"({"AppleIntelWifiAdapter": [{"ChipSet": 9560}]})")
            << QStringList{u"wifi: BCM9560 | Puce = BCM9560 | Pilote = AppleIntelWifiAdapter"_s};
        QTest::newRow("SMC") << described(R"({"AppleSMC": [{"Generation": 3, "IOClass": "AppleSMC"}]})")
            << QStringList{u"smc: Actif | Génération = 3 | Pilote = AppleSMC"_s};
        QTest::newRow("trackpad") << described(R"({"AppleMultitouchDevice": [{"Product": "Trackpad", "Manufacturer": "Apple Inc.",
            "MT Built-In": true, "Sensor Surface Width": 16020, "Sensor Surface Height": 9940, "Sensor Columns": 30, "Sensor Rows": 22,
            "ForceSupported": true, "ActuationSupported": false, "Critical Errors": 0, "ResetCount": 2, "Transport": "SPI"}]})")
            << QStringList{u"trackpad: 0 erreur | Modèle = Trackpad | Fabricant = Apple Inc. | Intégré = Oui | "
            "Surface tactile = 160.2 × 99.4 mm | Grille de capteurs = 30 × 22 | Force Touch = Oui | Retour haptique = Non | "
            "Erreurs critiques = 0 | Réinitialisations = 2 | Liaison = SPI"_s};
        QTest::newRow("desktop") << machine("{}") << QStringList{u"desktop | - | 0"_s};
        QTest::newRow("trackpad without battery service") << machine(R"({"AppleMultitouchDevice": [{"Critical Errors": 2}]})")
            << QStringList{u"portable | 2 | 0"_s};

        const auto firmware = [](const QString &text) {
            return QStringList{BuiltInDeviceService::shortFirmwareVersion(text).value_or(u"-"_s)};
        };
        QTest::newRow("firmware version at the end") << firmware(u"fw version 7.1"_s) << QStringList{u"7.1"_s};
        QTest::newRow("a capitalised word does not count") << firmware(u"Version 1.2 FWID"_s) << QStringList{u"Version 1.2 FWID"_s};

        // Candidates in order, each by class and then by name; the answer names the candidate.
        QTest::newRow("an earlier candidate's name beats a later one's class")
            << firstAvailable(R"({"name:A": [{"m": "a-name"}], "B": [{"m": "b-class"}]})", {u"A"_s, u"B"_s}) << QStringList{u"A: a-name"_s};
    }

    void builtIn()
    {
        QFETCH(QStringList, actual);
        QTEST(actual, "expected");
    }
};

QUILLON_TEST_MAIN(TestHardwareService)
#include "tst_hardware_service.moc"
