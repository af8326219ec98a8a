#include "check_test_support.h"
#include "common/test_main.h"

#include "diagnostics/diagnostics_rules.h"

using namespace Qt::StringLiterals;
using namespace CheckTest;

namespace {

const QString noBreakSpace = QString(QChar(0x00A0));

QString bytes(const QString &number, const QString &unit)
{
    return number + noBreakSpace + unit;
}

BatteryInfo battery(std::optional<qint64> health, std::optional<qint64> cycles, std::optional<qint64> designCycles,
                    int charge)
{
    BatteryInfo made;
    made.healthPercent = health;
    made.cycleCount = cycles;
    made.designCycleCount = designCycles;
    made.chargePercent = charge;
    return made;
}

BatteryInfo withCondition(BatteryInfo made, const QString &condition, bool healthy)
{
    made.condition = condition;
    made.isConditionHealthy = healthy;
    return made;
}

BatteryInfo charging(BatteryInfo made)
{
    made.isCharging = true;
    made.isPluggedIn = true;
    return made;
}

StorageVolume volume(const QString &name, double total, double free, bool internal = true,
                     std::optional<QString> smartStatus = std::nullopt, std::optional<bool> verified = std::nullopt)
{
    StorageVolume made;
    made.name = name;
    made.totalBytes = total;
    made.freeBytes = free;
    made.isInternal = internal;
    made.smartStatus = std::move(smartStatus);
    made.smartIsVerified = verified;
    return made;
}

} // namespace

class PowerStorageChecksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noBattery();
    void battery_data();
    void battery();
    void noVolume();
    void volume_data();
    void volume();
    void oneCheckPerVolumeInOrder();
};

void PowerStorageChecksTest::noBattery()
{
    const HardwareCheck check = DiagnosticsService::batteryCheck(std::nullopt);
    QCOMPARE(check.title, u"Batterie"_s);
    QCOMPARE(check.symbol, u"battery.100"_s);
    QCOMPARE(shown(check.status), shown(CheckStatus::nonApplicable));
    QCOMPARE(check.summary, u"Ce Mac n'a pas de batterie interne."_s);
    QCOMPARE(shown(check.measurement), none());
    QVERIFY(!check.progress);
    QCOMPARE(shown(check.caption), none());
    QCOMPARE(shown(check.section), u"battery"_s);
    QVERIFY(!check.isHighlighted);
}

void PowerStorageChecksTest::battery_data()
{
    QTest::addColumn<BatteryInfo>("info");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");
    QTest::addColumn<double>("progress");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("symbol");

    QTest::newRow("capacity 69 % is a fault")
        << ::battery(69, 512, 1000, 80) << CheckStatus::alerte
        << u"Capacité tombée à 69 % de l'origine (512 cycles, charge 80 %) — remplacement à envisager."_s
        << u"69 %"_s << 0.69 << u"512 cycles"_s << u"battery.100"_s;
    QTest::newRow("capacity 70 % is to watch")
        << ::battery(70, 300, 1000, 45) << CheckStatus::attention
        << u"Capacité maximale à 70 %, sous le seuil de 80 % (300 cycles, charge 45 %)."_s << u"70 %"_s << 0.70
        << u"300 cycles"_s << u"battery.100"_s;
    QTest::newRow("capacity 79 %, cycles unknown")
        << ::battery(79, std::nullopt, 1000, 45) << CheckStatus::attention
        << u"Capacité maximale à 79 %, sous le seuil de 80 % (cycles inconnus, charge 45 %)."_s << u"79 %"_s
        << 0.79 << none() << u"battery.100"_s;
    QTest::newRow("capacity 80 % goes on to the cycle count")
        << ::battery(80, 1000, 1000, 100) << CheckStatus::attention
        << u"1000 cycles : la batterie a dépassé la durée de vie prévue par Apple."_s << u"80 %"_s << 0.80
        << u"1000 cycles"_s << u"battery.100"_s;
    QTest::newRow("one cycle below the design count")
        << ::battery(80, 999, 1000, 100) << CheckStatus::ok
        << u"Capacité maximale à 80 % de l'origine (999 cycles, charge 100 %)."_s << u"80 %"_s << 0.80
        << u"999 cycles"_s << u"battery.100"_s;
    QTest::newRow("cycle count without design count")
        << ::battery(90, 2000, std::nullopt, 60) << CheckStatus::ok
        << u"Capacité maximale à 90 % de l'origine (2000 cycles, charge 60 %)."_s << u"90 %"_s << 0.90
        << u"2000 cycles"_s << u"battery.100"_s;
    QTest::newRow("worn capacity hides cycles and condition")
        << withCondition(::battery(65, 1200, 1000, 30), u"Service Recommended"_s, false) << CheckStatus::alerte
        << u"Capacité tombée à 65 % de l'origine (1200 cycles, charge 30 %) — remplacement à envisager."_s
        << u"65 %"_s << 0.65 << u"1200 cycles"_s << u"battery.100"_s;
    QTest::newRow("too many cycles hides the condition")
        << withCondition(::battery(85, 1500, 1000, 30), u"Service Recommended"_s, false) << CheckStatus::attention
        << u"1500 cycles : la batterie a dépassé la durée de vie prévue par Apple."_s << u"85 %"_s << 0.85
        << u"1500 cycles"_s << u"battery.100"_s;
    QTest::newRow("unhealthy condition reported")
        << withCondition(::battery(85, 400, 1000, 30), u"Service Recommended"_s, false) << CheckStatus::attention
        << u"macOS signale : Service Recommended (400 cycles)."_s << u"85 %"_s << 0.85 << u"400 cycles"_s
        << u"battery.100"_s;
    QTest::newRow("healthy condition reported")
        << withCondition(::battery(95, 12, 1000, 30), u"Normal"_s, true) << CheckStatus::ok
        << u"Capacité maximale à 95 % de l'origine (12 cycles, charge 30 %)."_s << u"95 %"_s << 0.95
        << u"12 cycles"_s << u"battery.100"_s;
    QTest::newRow("unhealthy condition without capacity figure")
        << withCondition(::battery(std::nullopt, 50, 1000, 77), u"Replace Soon"_s, false) << CheckStatus::attention
        << u"macOS signale : Replace Soon (50 cycles)."_s << u"77 %"_s << 0.77 << u"50 cycles"_s << u"battery.100"_s;
    QTest::newRow("reported condition holding placeholders")
        << withCondition(::battery(std::nullopt, 50, 1000, 77), u"%1 et %2"_s, false) << CheckStatus::attention
        << u"macOS signale : %1 et %2 (50 cycles)."_s << u"77 %"_s << 0.77 << u"50 cycles"_s << u"battery.100"_s;
    QTest::newRow("nothing known, charging at 54 %")
        << charging(::battery(std::nullopt, std::nullopt, std::nullopt, 54)) << CheckStatus::ok
        << u"Batterie détectée, cycles inconnus, charge 54 %."_s << u"54 %"_s << 0.54 << none()
        << u"battery.100.bolt"_s;
}

void PowerStorageChecksTest::battery()
{
    QFETCH(BatteryInfo, info);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);
    QFETCH(double, progress);
    QFETCH(QString, caption);
    QFETCH(QString, symbol);

    const HardwareCheck check = DiagnosticsService::batteryCheck(info);
    QCOMPARE(shown(check.status), shown(status));
    QCOMPARE(check.summary, summary);
    QCOMPARE(shown(check.measurement), measurement);
    QVERIFY(check.progress);
    QCOMPARE(*check.progress, progress);
    QCOMPARE(shown(check.caption), caption);
    QCOMPARE(check.symbol, symbol);
    QCOMPARE(check.title, u"Batterie"_s);
    QCOMPARE(shown(check.section), u"battery"_s);
    QVERIFY(check.isHighlighted);
    QVERIFY(!check.live);
}

void PowerStorageChecksTest::noVolume()
{
    const QList<HardwareCheck> checks = DiagnosticsService::storageChecks({});
    QCOMPARE(checks.size(), 1);
    const HardwareCheck &check = checks.first();
    QCOMPARE(check.title, u"Stockage"_s);
    QCOMPARE(check.symbol, u"internaldrive"_s);
    QCOMPARE(shown(check.status), shown(CheckStatus::attention));
    QCOMPARE(check.summary, u"Aucun volume détecté."_s);
    QCOMPARE(shown(check.measurement), none());
    QVERIFY(!check.progress);
    QCOMPARE(shown(check.section), u"storage"_s);
}

void PowerStorageChecksTest::volume_data()
{
    QTest::addColumn<StorageVolume>("input");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");
    QTest::addColumn<double>("progress");

    // 378 775 035 904 of 500 107 862 016 bytes used: 75.74 %.
    QTest::newRow("internal volume, S.M.A.R.T. verified")
        << ::volume(u"Macintosh HD"_s, 500107862016, 121332826112, true, u"Verified"_s, true) << u"internaldrive"_s
        << CheckStatus::ok
        << bytes(u"121,33"_s, u"Go"_s) + u" disponibles (76 % utilisés), S.M.A.R.T. verified."_s
        << bytes(u"500,11"_s, u"Go"_s) << 0.7573866852984643;
    QTest::newRow("exactly 90 % full")
        << ::volume(u"Sauvegardes"_s, 1e12, 1e11, false) << u"externaldrive"_s << CheckStatus::attention
        << u"Rempli à 90 %, il ne reste que "_s + bytes(u"100"_s, u"Go"_s) + u"."_s << bytes(u"1"_s, u"To"_s)
        << 0.9;
    QTest::newRow("89.99 % full rounds to 90 but stays correct")
        << ::volume(u"Sauvegardes"_s, 1e12, 1.001e11, false) << u"externaldrive"_s << CheckStatus::ok
        << bytes(u"100,1"_s, u"Go"_s) + u" disponibles (90 % utilisés)."_s << bytes(u"1"_s, u"To"_s) << 0.8999;
    QTest::newRow("used half percent rounds away from zero")
        << ::volume(u"Clé"_s, 8e9, 7e9, false) << u"externaldrive"_s << CheckStatus::ok
        << bytes(u"7"_s, u"Go"_s) + u" disponibles (13 % utilisés)."_s << bytes(u"8"_s, u"Go"_s) << 0.125;
    QTest::newRow("capacity of zero")
        << ::volume(u"Vide"_s, 0, 0) << u"internaldrive"_s << CheckStatus::ok
        << bytes(u"Zéro"_s, u"Ko"_s) + u" disponibles (0 % utilisés)."_s << bytes(u"Zéro"_s, u"Ko"_s) << 0.0;
    QTest::newRow("more free space than capacity")
        << ::volume(u"Réseau"_s, 1e12, 2e12, false) << u"externaldrive"_s << CheckStatus::ok
        << bytes(u"2"_s, u"To"_s) + u" disponibles (0 % utilisés)."_s << bytes(u"1"_s, u"To"_s) << 0.0;
    QTest::newRow("S.M.A.R.T. failing on a full volume")
        << ::volume(u"Macintosh HD"_s, 1e12, 1e10, true, u"Failing"_s, false) << u"internaldrive"_s
        << CheckStatus::alerte << u"État S.M.A.R.T. : Failing — sauvegarde immédiate conseillée."_s
        << bytes(u"1"_s, u"To"_s) << 0.99;
    QTest::newRow("S.M.A.R.T. not verified, status unknown")
        << ::volume(u"Macintosh HD"_s, 1e12, 5e11, true, std::nullopt, false) << u"internaldrive"_s
        << CheckStatus::alerte << u"État S.M.A.R.T. : ? — sauvegarde immédiate conseillée."_s
        << bytes(u"1"_s, u"To"_s) << 0.5;
    QTest::newRow("unknown verification counts as verified")
        << ::volume(u"Macintosh HD"_s, 1e12, 5e11, true, u"Verified"_s, std::nullopt) << u"internaldrive"_s
        << CheckStatus::ok << bytes(u"500"_s, u"Go"_s) + u" disponibles (50 % utilisés), S.M.A.R.T. verified."_s
        << bytes(u"1"_s, u"To"_s) << 0.5;
}

void PowerStorageChecksTest::volume()
{
    QFETCH(StorageVolume, input);
    QFETCH(QString, symbol);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);
    QFETCH(double, progress);

    const QList<HardwareCheck> checks = DiagnosticsService::storageChecks({input});
    QCOMPARE(checks.size(), 1);
    const HardwareCheck &check = checks.first();
    QCOMPARE(check.title, input.name);
    QCOMPARE(check.symbol, symbol);
    QCOMPARE(shown(check.status), shown(status));
    QCOMPARE(check.summary, summary);
    QCOMPARE(shown(check.measurement), measurement);
    QVERIFY(check.progress);
    QCOMPARE(*check.progress, progress);
    QCOMPARE(shown(check.caption), none());
    QCOMPARE(shown(check.section), u"storage"_s);
    QVERIFY(!check.isHighlighted);
}

void PowerStorageChecksTest::oneCheckPerVolumeInOrder()
{
    const QList<HardwareCheck> checks = DiagnosticsService::storageChecks(
        {::volume(u"Macintosh HD"_s, 1e12, 5e11), ::volume(u"Données"_s, 1e12, 5e10, false),
         ::volume(u"Macintosh HD"_s, 1e12, 5e11)});
    QCOMPARE(checks.size(), 3);
    QCOMPARE(checks.at(0).title, u"Macintosh HD"_s);
    QCOMPARE(checks.at(1).title, u"Données"_s);
    QCOMPARE(shown(checks.at(1).status), shown(CheckStatus::attention));
    QCOMPARE(checks.at(2).title, u"Macintosh HD"_s);
    QVERIFY(checks.at(0).id != checks.at(2).id);
}

QUILLON_TEST_MAIN(PowerStorageChecksTest)
#include "tst_power_storage_checks.moc"
