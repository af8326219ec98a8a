#include "check_test_support.h"
#include "common/test_main.h"

#include "diagnostics/diagnostics_rules.h"

using namespace Qt::StringLiterals;
using namespace CheckTest;

Q_DECLARE_METATYPE(ThermalState)
Q_DECLARE_METATYPE(std::optional<HardwareInfo>)

namespace {

const QString noBreakSpace = QString(QChar(0x00A0));
constexpr qint64 sixteenGiB = 17179869184;

HardwareInfo hardware(const QString &memory = u"16 Go"_s)
{
    HardwareInfo made;
    made.memory = memory;
    made.chip = u"Apple M1 Pro"_s;
    made.cores = u"10 cœurs (8 performance, 2 efficacité)"_s;
    made.osVersion = u"macOS Sequoia 15.1 (24B83)"_s;
    made.uptime = u"3 jours, 4 h"_s;
    return made;
}

Sysctl::SwapUsage swapUsed(quint64 used)
{
    return {.total = used, .used = used, .available = 0};
}

} // namespace

class SystemChecksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void memory_data();
    void memory();
    void processor_data();
    void processor();
    void thermal_data();
    void thermal();
    void systemWithoutHardware();
    void system_data();
    void system();
};

void SystemChecksTest::memory_data()
{
    QTest::addColumn<bool>("hasHardware");
    QTest::addColumn<bool>("hasSwap");
    QTest::addColumn<qint64>("swapBytes");
    QTest::addColumn<qint64>("installedBytes"); // -1: cannot be read
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    QTest::newRow("swap usage unreadable") << true << false << qint64(0) << sixteenGiB << CheckStatus::info
                                           << u"16 Go de mémoire vive."_s << u"16 Go"_s;
    QTest::newRow("no hardware, swap unreadable") << false << false << qint64(0) << sixteenGiB << CheckStatus::info
                                                  << u"— de mémoire vive."_s << u"—"_s;
    QTest::newRow("no hardware, no swap used")
        << false << true << qint64(0) << sixteenGiB << CheckStatus::ok
        << u"— de RAM, Zéro"_s + noBreakSpace + u"Ko d'échange sur disque."_s << u"—"_s;
    QTest::newRow("swap exactly half of memory")
        << true << true << qint64(8589934592) << sixteenGiB << CheckStatus::ok
        << u"16 Go de RAM, 8,59"_s + noBreakSpace + u"Go d'échange sur disque."_s << u"16 Go"_s;
    QTest::newRow("swap one byte over half of memory")
        << true << true << qint64(8589934593) << sixteenGiB << CheckStatus::attention
        << u"16 Go de RAM mais 8,59"_s + noBreakSpace + u"Go d'échange sur disque — la machine manque de mémoire."_s
        << u"16 Go"_s;
    QTest::newRow("installed memory unreadable")
        << true << true << qint64(50000000000) << qint64(-1) << CheckStatus::ok
        << u"16 Go de RAM, 50"_s + noBreakSpace + u"Go d'échange sur disque."_s << u"16 Go"_s;
    QTest::newRow("installed memory reads zero")
        << true << true << qint64(50000000000) << qint64(0) << CheckStatus::ok
        << u"16 Go de RAM, 50"_s + noBreakSpace + u"Go d'échange sur disque."_s << u"16 Go"_s;
}

void SystemChecksTest::memory()
{
    QFETCH(bool, hasHardware);
    QFETCH(bool, hasSwap);
    QFETCH(qint64, swapBytes);
    QFETCH(qint64, installedBytes);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    const HardwareCheck check = DiagnosticsService::memoryCheck(
        hasHardware ? std::optional(::hardware()) : std::nullopt,
        hasSwap ? std::optional(swapUsed(quint64(swapBytes))) : std::nullopt,
        installedBytes < 0 ? std::nullopt : std::optional(installedBytes));
    QCOMPARE(check.title, u"Mémoire"_s);
    QCOMPARE(check.symbol, u"memorychip"_s);
    QCOMPARE(shown(check.status), shown(status));
    QCOMPARE(check.summary, summary);
    QCOMPARE(shown(check.measurement), measurement);
    QCOMPARE(shown(check.section), u"hardware"_s);
    QVERIFY(!check.progress && !check.caption && !check.live);
}

void SystemChecksTest::processor_data()
{
    QTest::addColumn<std::optional<HardwareInfo>>("info");
    QTest::addColumn<QString>("summary");

    QTest::newRow("chip and cores")
        << std::optional(::hardware())
        << u"Apple M1 Pro — 10 cœurs (8 performance, 2 efficacité) · charge mesurée en continu."_s;
    HardwareInfo withoutCores = ::hardware();
    withoutCores.cores.clear();
    QTest::newRow("cores text empty") << std::optional(withoutCores)
                                      << u"Apple M1 Pro —  · charge mesurée en continu."_s;
    QTest::newRow("no hardware") << std::optional<HardwareInfo>() << u" · charge mesurée en continu."_s;
}

void SystemChecksTest::processor()
{
    QFETCH(std::optional<HardwareInfo>, info);
    QFETCH(QString, summary);

    const HardwareCheck check = DiagnosticsService::processorCheck(info);
    QCOMPARE(check.title, u"Processeur"_s);
    QCOMPARE(check.symbol, u"cpu"_s);
    QCOMPARE(shown(check.status), shown(CheckStatus::info));
    QCOMPARE(check.summary, summary);
    QCOMPARE(shown(check.measurement), none());
    QVERIFY(check.live == LiveMetric::processorLoad);
    QCOMPARE(shown(check.section), u"hardware"_s);
}

void SystemChecksTest::thermal_data()
{
    QTest::addColumn<ThermalState>("state");
    QTest::addColumn<bool>("smcPresent");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    QTest::newRow("nominal with SMC") << ThermalState::nominal << true << CheckStatus::ok
                                      << u"Température de fonctionnement normale, contrôleur SMC actif."_s
                                      << u"Normale"_s;
    QTest::newRow("nominal without SMC") << ThermalState::nominal << false << CheckStatus::ok
                                         << u"Température de fonctionnement normale."_s << u"Normale"_s;
    QTest::newRow("fair") << ThermalState::fair << true << CheckStatus::ok
                          << u"Légère montée en température, sans conséquence."_s << u"Correcte"_s;
    QTest::newRow("serious") << ThermalState::serious << true << CheckStatus::attention
                             << u"Température élevée : macOS réduit les performances."_s << u"Élevée"_s;
    QTest::newRow("critical") << ThermalState::critical << false << CheckStatus::alerte
                              << u"Température critique : la machine se protège en bridant fortement le processeur."_s
                              << u"Critique"_s;
    QTest::newRow("unknown") << ThermalState::unknown << true << CheckStatus::info << u"État thermique inconnu."_s
                             << u"Inconnue"_s;
}

void SystemChecksTest::thermal()
{
    QFETCH(ThermalState, state);
    QFETCH(bool, smcPresent);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    BuiltInComponents components;
    components.smc = smcPresent ? present() : BuiltInComponents::Component::absent();
    const HardwareCheck check = DiagnosticsService::thermalCheck(state, components);
    QCOMPARE(check.title, u"Température"_s);
    QCOMPARE(check.symbol, u"thermometer.medium"_s);
    QCOMPARE(shown(check.status), shown(status));
    QCOMPARE(check.summary, summary);
    QCOMPARE(shown(check.measurement), measurement);
    QVERIFY(check.live == LiveMetric::processorTemperature);
    QCOMPARE(shown(check.section), u"hardware"_s);
}

void SystemChecksTest::systemWithoutHardware()
{
    const QDateTime now = QDateTime::fromSecsSinceEpoch(1794816307, Qt::UTC);
    const HardwareCheck check = DiagnosticsService::systemCheck(std::nullopt, now.addDays(-90), now);
    QCOMPARE(check.title, u"Système"_s);
    QCOMPARE(check.symbol, u"gearshape"_s);
    QCOMPARE(shown(check.status), shown(CheckStatus::info));
    QCOMPARE(check.summary, u"Informations système indisponibles."_s);
    QCOMPARE(shown(check.measurement), none());
    QCOMPARE(shown(check.section), u"hardware"_s);
}

void SystemChecksTest::system_data()
{
    QTest::addColumn<qint64>("secondsSinceBoot"); // -1: boot time unreadable
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");

    const QString restart = u" jours, un redémarrage est conseillé."_s;
    QTest::newRow("29.99 days") << qint64(2591136) << CheckStatus::ok
                                << u"macOS Sequoia 15.1 (24B83) — allumé depuis 3 jours, 4 h."_s;
    QTest::newRow("one second short of 30 days") << qint64(2591999) << CheckStatus::ok
                                                 << u"macOS Sequoia 15.1 (24B83) — allumé depuis 3 jours, 4 h."_s;
    QTest::newRow("exactly 30 days") << qint64(2592000) << CheckStatus::attention
                                     << u"macOS Sequoia 15.1 (24B83) — allumé depuis 30"_s + restart;
    QTest::newRow("45.9 days counts whole days") << qint64(3965760) << CheckStatus::attention
                                                 << u"macOS Sequoia 15.1 (24B83) — allumé depuis 45"_s + restart;
    QTest::newRow("boot time unreadable") << qint64(-1) << CheckStatus::ok
                                          << u"macOS Sequoia 15.1 (24B83) — allumé depuis 3 jours, 4 h."_s;
}

void SystemChecksTest::system()
{
    QFETCH(qint64, secondsSinceBoot);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);

    // The boot time is in UTC and now in local time, as the kernel and the clock give them.
    const QDateTime now = QDateTime(QDate(2026, 11, 16), QTime(9, 5, 7));
    const std::optional<QDateTime> boot =
        secondsSinceBoot < 0 ? std::nullopt : std::optional(now.toUTC().addSecs(-secondsSinceBoot));
    const HardwareCheck check = DiagnosticsService::systemCheck(::hardware(), boot, now);
    QCOMPARE(shown(check.status), shown(status));
    QCOMPARE(check.summary, summary);
    QCOMPARE(shown(check.measurement), u"3 jours, 4 h"_s);
    QVERIFY(!check.live && !check.progress && !check.caption && !check.isHighlighted);
}

QUILLON_TEST_MAIN(SystemChecksTest)
#include "tst_system_checks.moc"
