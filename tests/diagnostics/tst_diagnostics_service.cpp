#include "check_test_support.h"
#include "common/test_main.h"

#include "diagnostics/diagnostics_service.h"
#include "platform/capture/capture_platform.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace CheckTest;

Q_DECLARE_METATYPE(ThermalState)

namespace {

// Kernel values given as a capture's kernel.json would hold them.
class FakeKernel final : public KernelSource
{
public:
    explicit FakeKernel(QJsonObject values) : m_values(std::move(values)) {}

    std::optional<QByteArray> value(const QByteArray &name) const override
    {
        const QString key = QString::fromLatin1(name);
        if (!m_values.contains(key))
            return std::nullopt;
        return kernelBytes(name, m_values.value(key));
    }

private:
    QJsonObject m_values;
};

class FakeProcess final : public ProcessInformation
{
public:
    explicit FakeProcess(ThermalState state) : m_state(state) {}
    QString hostName() const override { return {}; }
    QString operatingSystemVersion() const override { return {}; }
    ThermalState thermalState() const override { return m_state; }

private:
    ThermalState m_state;
};

class FakeClock final : public Clock
{
public:
    explicit FakeClock(QDateTime moment) : m_moment(std::move(moment)) {}
    QDateTime now() const override { return m_moment; }

private:
    QDateTime m_moment;
};

// 2026-11-16 08:05:07 UTC.
const QDateTime captureMoment = QDateTime::fromSecsSinceEpoch(1794816307, Qt::UTC);
constexpr qint64 secondsPerDay = 86400;

QJsonObject swap(qint64 used)
{
    const qint64 total = Q_INT64_C(17179869184);
    return {{u"total"_s, total}, {u"used"_s, used}, {u"available"_s, total - used}};
}

// A MacBook that has been up three days, nominal temperature, little swap.
QJsonObject usualKernel()
{
    return {{u"hw.memsize"_s, Q_INT64_C(17179869184)},
            {u"kern.boottime"_s, Q_INT64_C(1794816307) - 3 * secondsPerDay},
            {u"vm.swapusage"_s, swap(Q_INT64_C(318767104))}};
}

Platform platformWith(QJsonObject kernel, ThermalState state = ThermalState::nominal)
{
    Platform platform;
    platform.kernel = std::make_shared<FakeKernel>(std::move(kernel));
    platform.process = std::make_shared<FakeProcess>(state);
    platform.clock = std::make_shared<FakeClock>(captureMoment);
    return platform;
}

HardwareInfo laptop()
{
    HardwareInfo made;
    made.memory = u"16 GB"_s;
    made.chip = u"Apple M1 Pro"_s;
    made.cores = u"10 cœurs — 8 performance + 2 efficacité"_s;
    made.osVersion = u"macOS 15.1 (24B83)"_s;
    made.uptime = u"3 j 0 h"_s;
    made.components.keyboard = present(u"Français"_s);
    made.components.trackpad = present(u"0 erreur"_s);
    made.components.smc = present(u"Actif"_s);
    made.components.isPortable = true;
    return made;
}

BatteryInfo goodBattery()
{
    BatteryInfo made;
    made.chargePercent = 87;
    made.healthPercent = 91;
    made.cycleCount = 212;
    made.designCycleCount = 1000;
    return made;
}

StorageVolume volumeNamed(const QString &name)
{
    StorageVolume made;
    made.name = name;
    made.totalBytes = 1e12;
    made.freeBytes = 5e11;
    made.isInternal = true;
    return made;
}

} // namespace

class DiagnosticsServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void checkOrder_data();
    void checkOrder();
    void nothingCollected();
    void systemReadings_data();
    void systemReadings();
    void generatedAtTheClocksTime();
    void freshIdentifiersEachBuild();
};

void DiagnosticsServiceTest::checkOrder_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("symbol");

    const QList<std::pair<QString, QString>> expected{
        {u"Batterie"_s, u"battery.100"_s},
        {u"Macintosh HD"_s, u"internaldrive"_s},
        {u"Données"_s, u"internaldrive"_s},
        {u"Écrans"_s, u"display"_s},
        {u"Wi-Fi"_s, u"wifi.slash"_s},
        {u"Bluetooth"_s, u"dot.radiowaves.right"_s},
        {u"Audio"_s, u"speaker.wave.2"_s},
        {u"Caméra"_s, u"camera"_s},
        {u"Clavier"_s, u"keyboard"_s},
        {u"Rétroéclairage clavier"_s, u"light.max"_s},
        {u"Trackpad"_s, u"rectangle.and.hand.point.up.left"_s},
        {u"Retour haptique"_s, u"hand.tap"_s},
        {u"Touch ID"_s, u"touchid"_s},
        {u"Angle d'écran"_s, u"laptopcomputer.and.arrow.down"_s},
        {u"Autres capteurs"_s, u"sensor"_s},
        {u"USB"_s, u"cable.connector"_s},
        {u"Thunderbolt"_s, u"bolt.horizontal"_s},
        {u"Mémoire"_s, u"memorychip"_s},
        {u"Processeur"_s, u"cpu"_s},
        {u"Température"_s, u"thermometer.medium"_s},
        {u"Système"_s, u"gearshape"_s},
    };
    for (int position = 0; position < expected.size(); ++position) {
        const QByteArray name = QByteArray::number(position + 1) + ' ' + expected.at(position).first.toUtf8();
        QTest::newRow(name.constData()) << position << expected.at(position).first << expected.at(position).second;
    }
}

void DiagnosticsServiceTest::checkOrder()
{
    QFETCH(int, position);
    QFETCH(QString, title);
    QFETCH(QString, symbol);

    const DiagnosticsReport report =
        DiagnosticsService::build(platformWith(usualKernel()), laptop(), goodBattery(),
                                  {volumeNamed(u"Macintosh HD"_s), volumeNamed(u"Données"_s)}, Inventory());
    QCOMPARE(report.checks.size(), 21);
    const HardwareCheck &check = report.checks.at(position);
    QCOMPARE(check.title, title);
    QCOMPARE(check.symbol, symbol);
    // Only the battery is one of the large tiles.
    QCOMPARE(check.isHighlighted, position == 0);
}

void DiagnosticsServiceTest::nothingCollected()
{
    Platform nothing;
    nothing.clock = std::make_shared<FakeClock>(captureMoment);
    const DiagnosticsReport report = DiagnosticsService::build(nothing, std::nullopt, std::nullopt, {}, Inventory());

    const QList<std::pair<QString, CheckStatus>> expected{
        {u"Batterie"_s, CheckStatus::nonApplicable},
        {u"Stockage"_s, CheckStatus::attention},
        {u"Écrans"_s, CheckStatus::info},
        {u"Wi-Fi"_s, CheckStatus::info},
        {u"Bluetooth"_s, CheckStatus::info},
        {u"Audio"_s, CheckStatus::info},
        {u"Caméra"_s, CheckStatus::info},
        {u"Clavier"_s, CheckStatus::nonApplicable},
        {u"Rétroéclairage clavier"_s, CheckStatus::nonApplicable},
        {u"Trackpad"_s, CheckStatus::nonApplicable},
        {u"Retour haptique"_s, CheckStatus::nonApplicable},
        {u"Touch ID"_s, CheckStatus::nonApplicable},
        {u"Angle d'écran"_s, CheckStatus::nonApplicable},
        {u"Autres capteurs"_s, CheckStatus::info},
        {u"USB"_s, CheckStatus::info},
        {u"Thunderbolt"_s, CheckStatus::info},
        {u"Mémoire"_s, CheckStatus::info},
        {u"Processeur"_s, CheckStatus::info},
        {u"Température"_s, CheckStatus::info},
        {u"Système"_s, CheckStatus::info},
    };
    QCOMPARE(report.checks.size(), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        QCOMPARE(report.checks.at(i).title, expected.at(i).first);
        QCOMPARE(shown(report.checks.at(i).status), shown(expected.at(i).second));
    }
    QCOMPARE(report.checks.at(16).summary, u"— de mémoire vive."_s);
    QCOMPARE(shown(report.checks.at(16).measurement), u"—"_s);
    QCOMPARE(report.checks.at(17).summary, u" · charge mesurée en continu."_s);
    QCOMPARE(report.checks.at(18).summary, u"État thermique inconnu."_s);
    QCOMPARE(shown(report.worst()), shown(CheckStatus::attention));
    QCOMPARE(report.applicableCount(), 13);
    QCOMPARE(report.headline(), u"1 point à surveiller"_s);
}

void DiagnosticsServiceTest::systemReadings_data()
{
    QTest::addColumn<QJsonObject>("kernel");
    QTest::addColumn<ThermalState>("thermalState");
    QTest::addColumn<QString>("title");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");

    const QString memory = u"Mémoire"_s, temperature = u"Température"_s, system = u"Système"_s;
    const QString nbsp = QString(QChar(0x00A0));

    QJsonObject heavySwap = usualKernel();
    heavySwap[u"vm.swapusage"_s] = swap(Q_INT64_C(8589934593));
    QTest::newRow("swap over half the memory")
        << heavySwap << ThermalState::nominal << memory << CheckStatus::attention
        << u"16 GB de RAM mais 8,59"_s + nbsp + u"Go d'échange sur disque — la machine manque de mémoire."_s;
    QJsonObject noSwap = usualKernel();
    noSwap.remove(u"vm.swapusage"_s);
    QTest::newRow("swap unreadable") << noSwap << ThermalState::nominal << memory << CheckStatus::info
                                     << u"16 GB de mémoire vive."_s;
    QTest::newRow("thermal state serious") << usualKernel() << ThermalState::serious << temperature
                                           << CheckStatus::attention
                                           << u"Température élevée : macOS réduit les performances."_s;
    QJsonObject longUp = usualKernel();
    longUp[u"kern.boottime"_s] = Q_INT64_C(1794816307) - 30 * secondsPerDay;
    QTest::newRow("up exactly 30 days") << longUp << ThermalState::nominal << system << CheckStatus::attention
                                        << u"macOS 15.1 (24B83) — allumé depuis 30 jours, un redémarrage est conseillé."_s;
    QJsonObject noBoot = usualKernel();
    noBoot.remove(u"kern.boottime"_s);
    QTest::newRow("boot time unreadable") << noBoot << ThermalState::nominal << system << CheckStatus::ok
                                          << u"macOS 15.1 (24B83) — allumé depuis 3 j 0 h."_s;
}

void DiagnosticsServiceTest::systemReadings()
{
    QFETCH(QJsonObject, kernel);
    QFETCH(ThermalState, thermalState);
    QFETCH(QString, title);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);

    const DiagnosticsReport report =
        DiagnosticsService::build(platformWith(kernel, thermalState), laptop(), goodBattery(), {}, Inventory());
    const auto found = std::find_if(report.checks.cbegin(), report.checks.cend(),
                                    [&](const HardwareCheck &check) { return check.title == title; });
    QVERIFY(found != report.checks.cend());
    const HardwareCheck &check = *found;
    QCOMPARE(shown(check.status), shown(status));
    QCOMPARE(check.summary, summary);
}

void DiagnosticsServiceTest::generatedAtTheClocksTime()
{
    const DiagnosticsReport report =
        DiagnosticsService::build(platformWith(usualKernel()), laptop(), std::nullopt, {}, Inventory());
    QCOMPARE(report.generatedAt, captureMoment);
}

void DiagnosticsServiceTest::freshIdentifiersEachBuild()
{
    const Platform platform = platformWith(usualKernel());
    const DiagnosticsReport first = DiagnosticsService::build(platform, laptop(), goodBattery(), {}, Inventory());
    const DiagnosticsReport second = DiagnosticsService::build(platform, laptop(), goodBattery(), {}, Inventory());
    QSet<QUuid> ids;
    for (const DiagnosticsReport &report : {first, second}) {
        for (const HardwareCheck &check : report.checks)
            ids.insert(check.id);
    }
    QCOMPARE(ids.size(), first.checks.size() + second.checks.size());
    QVERIFY(first != second);
}

QUILLON_TEST_MAIN(DiagnosticsServiceTest)
#include "tst_diagnostics_service.moc"
