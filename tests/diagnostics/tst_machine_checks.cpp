#include "check_test_support.h"
#include "common/test_main.h"

#include "diagnostics/diagnostics_rules.h"

using namespace CheckTest;
using namespace DiagnosticsService;

namespace {

const QString worn = u"Entretien recommandé"_s;

// A condition is the French label of the system's health word; only "Normale" is healthy.
std::optional<BatteryInfo> battery(std::optional<qint64> health, std::optional<qint64> cycles, std::optional<qint64> designCycles,
                                   int charge, const std::optional<QString> &condition = {}, bool charging = false)
{
    return BatteryInfo{.chargePercent = charge, .isCharging = charging, .cycleCount = cycles, .designCycleCount = designCycles,
                       .healthPercent = health, .condition = condition, .isConditionHealthy = !condition || condition == u"Normale"_s};
}

StorageVolume volume(const QString &name, double total, double free, bool internal = true,
                     const std::optional<QString> &smartStatus = {}, std::optional<bool> verified = {})
{
    return {.name = name, .totalBytes = total, .freeBytes = free, .isInternal = internal, .smartStatus = smartStatus,
            .smartIsVerified = verified};
}

// A half-full 1 To volume on a drive whose health log says this.
StorageVolume onWornDrive(int percentUsed, int spare = 100, int criticalWarning = 0, double mediaErrors = 0)
{
    StorageVolume made = volume(u"HD"_s, 1e12, 5e11);
    made.wear = DriveWear{.percentageUsed = percentUsed, .availableSpare = spare, .availableSpareThreshold = 10,
                          .criticalWarning = criticalWarning, .bytesWritten = 12.4e12, .powerOnHours = 1402,
                          .mediaErrors = mediaErrors};
    return made;
}

// The only check of one volume.
HardwareCheck storage(const StorageVolume &volume)
{
    return storageChecks({volume}).value(0);
}

std::optional<HardwareInfo> machine(bool present = true, const QString &cores = u"10 cœurs — 8 performance + 2 efficacité"_s)
{
    const HardwareInfo made{.chip = u"Apple M1 Pro"_s, .cores = cores, .memory = u"16 GB"_s, .osVersion = u"macOS 15.1 (24B83)"_s,
                            .uptime = u"3 j 4 h"_s};
    return present ? std::optional(made) : std::nullopt;
}

HardwareCheck memory(bool hardware, std::optional<quint64> swapUsed, std::optional<qint64> installed = 17179869184)
{
    const auto swap = swapUsed ? std::optional(Sysctl::SwapUsage{*swapUsed, *swapUsed, 0}) : std::nullopt;
    return memoryCheck(machine(hardware), swap, installed);
}

HardwareCheck thermal(ThermalState state, bool smc = true)
{
    BuiltInComponents components;
    components.smc.present = smc;
    return thermalCheck(state, components);
}

// The kernel gives the boot time in UTC, the clock gives now in local time.
HardwareCheck upFor(std::optional<qint64> seconds, bool hardware = true)
{
    const QDateTime now(QDate(2026, 11, 16), QTime(9, 5, 7));
    return systemCheck(machine(hardware), seconds ? std::optional(now.toUTC().addSecs(-*seconds)) : std::nullopt, now);
}

} // namespace

class MachineChecksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void verdicts_data()
    {
        QTest::addColumn<HardwareCheck>("check");
        QTest::addColumn<QString>("expected");

        QTest::newRow("battery: none") << batteryCheck({}) << u"nonApplicable | Ce Mac n'a pas de batterie interne. | -"_s;
        QTest::newRow("battery: capacity 69 % is a fault") << batteryCheck(battery(69, 512, 1000, 80))
            << u"alerte | Capacité tombée à 69 % de l'origine (512 cycles, charge 80 %) — remplacement à envisager. | 69 % | 0.69 | "
            "512 cycles"_s;
        QTest::newRow("battery: capacity 70 % is to watch") << batteryCheck(battery(70, 300, 1000, 45))
            << u"attention | Capacité maximale à 70 %, sous le seuil de 80 % (300 cycles, charge 45 %). | 70 % | 0.7 | 300 cycles"_s;
        QTest::newRow("battery: capacity 80 %, cycles as designed") << batteryCheck(battery(80, 1000, 1000, 100))
            << u"attention | 1000 cycles : la batterie a dépassé la durée de vie prévue par Apple. | 80 % | 0.8 | 1000 cycles"_s;
        QTest::newRow("battery: one cycle below the design") << batteryCheck(battery(80, 999, 1000, 100))
            << u"ok | Capacité maximale à 80 % de l'origine (999 cycles, charge 100 %). | 80 % | 0.8 | 999 cycles"_s;
        QTest::newRow("battery: capacity before cycles and condition") << batteryCheck(battery(65, 1200, 1000, 30, worn))
            << u"alerte | Capacité tombée à 65 % de l'origine (1200 cycles, charge 30 %) — remplacement à envisager. | 65 % | 0.65 | "
            "1200 cycles"_s;
        QTest::newRow("battery: cycles before condition") << batteryCheck(battery(85, 1500, 1000, 30, worn))
            << u"attention | 1500 cycles : la batterie a dépassé la durée de vie prévue par Apple. | 85 % | 0.85 | 1500 cycles"_s;
        QTest::newRow("battery: condition to check") << batteryCheck(battery(85, 400, 1000, 30, worn))
            << u"attention | macOS signale : Entretien recommandé (400 cycles). | 85 % | 0.85 | 400 cycles"_s;

        QTest::newRow("storage: none") << storageChecks({}).value(0) << u"attention | Aucun volume détecté. | -"_s;
        // 378 775 035 904 of 500 107 862 016 bytes used: 75.74 %.
        QTest::newRow("storage: verified") << storage(volume(u"HD"_s, 500107862016, 121332826112, true, u"Vérifié"_s, true))
            << u"ok | 121,33\u00A0Go disponibles (76 % utilisés), S.M.A.R.T. vérifié. | 500,11\u00A0Go | 0.757387 | -"_s;
        QTest::newRow("storage: exactly 90 % full") << storage(volume(u"Clé"_s, 1e12, 1e11))
            << u"attention | Rempli à 90 %, il ne reste que 100\u00A0Go. | 1\u00A0To | 0.9 | -"_s;
        QTest::newRow("storage: 89.99 % full rounds to 90 but stays correct") << storage(volume(u"Clé"_s, 1e12, 1.001e11))
            << u"ok | 100,1\u00A0Go disponibles (90 % utilisés). | 1\u00A0To | 0.8999 | -"_s;
        QTest::newRow("storage: S.M.A.R.T. failing beats full") << storage(volume(u"HD"_s, 1e12, 1e10, true, u"Failing"_s, false))
            << u"alerte | État S.M.A.R.T. : Failing — sauvegarde immédiate conseillée. | 1\u00A0To | 0.99 | -"_s;
        QTest::newRow("storage: not verified, no status") << storage(volume(u"HD"_s, 1e12, 5e11, true, {}, false))
            << u"alerte | État S.M.A.R.T. : ? — sauvegarde immédiate conseillée. | 1\u00A0To | 0.5 | -"_s;

        // The drive's own wear: 80 % of its rated endurance and a spare under its threshold are
        // to watch; 95 %, a critical warning or a media error is a fault, before a full volume.
        QTest::newRow("wear: 79 %") << storage(onWornDrive(79))
            << u"ok | 500\u00A0Go disponibles (50 % utilisés), usure 79 %. | 1\u00A0To | 0.5 | -"_s;
        QTest::newRow("wear: 80 %") << storage(onWornDrive(80))
            << u"attention | SSD fatigué : 80 % de son endurance consommée. | 1\u00A0To | 0.5 | -"_s;
        QTest::newRow("wear: spare one point under its threshold") << storage(onWornDrive(10, 9))
            << u"attention | SSD fatigué : réserve à 9 %, sous son seuil de 10 %. | 1\u00A0To | 0.5 | -"_s;
        QTest::newRow("wear: spare at its threshold") << storage(onWornDrive(10, 10))
            << u"ok | 500\u00A0Go disponibles (50 % utilisés), usure 10 %. | 1\u00A0To | 0.5 | -"_s;
        QTest::newRow("wear: 95 %") << storage(onWornDrive(95))
            << u"alerte | SSD usé : 95 % de son endurance consommée — sauvegarde et remplacement à prévoir. | 1\u00A0To | 0.5 | -"_s;
        QTest::newRow("wear: critical warning and one media error") << storage(onWornDrive(2, 100, 4, 1))
            << u"alerte | SSD usé : alerte critique du contrôleur (0x04), 1 erreur de support — sauvegarde et remplacement à prévoir. | 1\u00A0To | 0.5 | -"_s;
        StorageVolume unreadable = onWornDrive(99);
        unreadable.wear->unreadable = u"lecture refusée"_s;

        QTest::newRow("memory: swap unreadable") << memory(true, {}) << u"info | 16 GB de mémoire vive. | 16 GB"_s;
        QTest::newRow("memory: no hardware, no swap") << memory(false, 0) << u"ok | — de RAM, Zéro\u00A0Ko d'échange sur disque. | —"_s;
        QTest::newRow("memory: swap exactly half") << memory(true, 8589934592)
            << u"ok | 16 GB de RAM, 8,59\u00A0Go d'échange sur disque. | 16 GB"_s;
        QTest::newRow("memory: one byte more") << memory(true, 8589934593)
            << u"attention | 16 GB de RAM mais 8,59\u00A0Go d'échange sur disque — la machine manque de mémoire. | 16 GB"_s;

        QTest::newRow("processor: chip and cores") << processorCheck(machine())
            << u"info | Apple M1 Pro — 10 cœurs — 8 performance + 2 efficacité · charge mesurée en continu. | -"_s;

        QTest::newRow("thermal: nominal with SMC") << thermal(ThermalState::nominal)
            << u"ok | Température de fonctionnement normale, contrôleur SMC actif. | Normale"_s;
        QTest::newRow("thermal: critical") << thermal(ThermalState::critical, false)
            << u"alerte | Température critique : la machine se protège en bridant fortement le processeur. | Critique"_s;

        const QString up = u"ok | macOS 15.1 (24B83) — allumé depuis 3 j 4 h. | 3 j 4 h"_s;
        const QString restart = u" jours, un redémarrage est conseillé. | 3 j 4 h"_s;
        QTest::newRow("system: no hardware") << upFor(0, false) << u"info | Informations système indisponibles. | -"_s;
        QTest::newRow("system: one second short of 30 days") << upFor(2591999) << up;
        QTest::newRow("system: exactly 30 days") << upFor(2592000) << u"attention | macOS 15.1 (24B83) — allumé depuis 30"_s + restart;
    }

    void verdicts()
    {
        QFETCH(HardwareCheck, check);
        QTEST(verdict(check), "expected");
    }

    void oneCheckPerVolumeInOrder()
    {
        QStringList titles;
        for (const HardwareCheck &check : storageChecks({volume(u"HD"_s, 1, 1), volume(u"Données"_s, 1, 1), volume(u"HD"_s, 1, 1)}))
            titles.append(check.title);
        QCOMPARE(titles, (QStringList{u"HD"_s, u"Données"_s, u"HD"_s}));
    }
};

QUILLON_TEST_MAIN(MachineChecksTest)
#include "tst_machine_checks.moc"
