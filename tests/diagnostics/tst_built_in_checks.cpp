#include "check_test_support.h"
#include "common/test_main.h"

#include "diagnostics/diagnostics_rules.h"

using namespace Qt::StringLiterals;
using namespace CheckTest;

using Rule = HardwareCheck (*)(const BuiltInComponents &);
using Component = BuiltInComponents::Component;
Q_DECLARE_METATYPE(Rule)

namespace {

BuiltInComponents portable(BuiltInComponents components = {})
{
    components.isPortable = true;
    return components;
}

BuiltInComponents withKeyboard(Component keyboard)
{
    BuiltInComponents components;
    components.keyboard = std::move(keyboard);
    return components;
}

BuiltInComponents withTrackpad(Component trackpad, std::optional<qint64> criticalErrors)
{
    BuiltInComponents components;
    components.trackpad = std::move(trackpad);
    components.trackpadCriticalErrors = criticalErrors;
    return components;
}

BuiltInComponents withEverything()
{
    BuiltInComponents components;
    components.keyboardBacklight = present();
    components.haptics = present(u"Taptic Engine"_s);
    components.touchID = present();
    components.lidAngle = present(u"Capteur HID"_s);
    return components;
}

BuiltInComponents withSensors(qint64 interfaces)
{
    BuiltInComponents components;
    components.sensorInterfaces = interfaces;
    return portable(components);
}

} // namespace

class BuiltInChecksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void component_data();
    void component();
    void sensors_data();
    void sensors();
};

void BuiltInChecksTest::component_data()
{
    QTest::addColumn<Rule>("rule");
    QTest::addColumn<BuiltInComponents>("components");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");
    QTest::addColumn<QString>("section");
    QTest::addColumn<bool>("showsLiveAngle");

    const Rule keyboard = DiagnosticsService::keyboardCheck;
    const Rule backlight = DiagnosticsService::keyboardBacklightCheck;
    const Rule trackpad = DiagnosticsService::trackpadCheck;
    const Rule haptics = DiagnosticsService::hapticsCheck;
    const Rule touchID = DiagnosticsService::touchIDCheck;
    const Rule lidAngle = DiagnosticsService::lidAngleCheck;
    const QString hardware = u"hardware"_s;
    const QString notInModel = u"Composant absent de ce modèle."_s;

    QTest::newRow("keyboard with its layout")
        << keyboard << withKeyboard(present(u"ISO français"_s)) << CheckStatus::ok
        << u"Clavier intégré reconnu par le pilote (disposition ISO français)."_s << u"ISO français"_s << hardware
        << false;
    QTest::newRow("keyboard without layout")
        << keyboard << withKeyboard(present()) << CheckStatus::ok << u"Clavier intégré reconnu par le pilote."_s
        << none() << hardware << false;
    QTest::newRow("keyboard missing on a portable")
        << keyboard << portable() << CheckStatus::info << u"Aucun clavier intégré détecté."_s << u"Non détecté"_s
        << hardware << false;
    QTest::newRow("keyboard missing on a desktop")
        << keyboard << BuiltInComponents() << CheckStatus::nonApplicable << notInModel << none() << none() << false;
    QTest::newRow("backlight present") << backlight << withEverything() << CheckStatus::ok
                                       << u"Interface de rétroéclairage présente."_s << none() << hardware << false;
    QTest::newRow("backlight missing on a portable")
        << backlight << portable() << CheckStatus::info << u"Pas de rétroéclairage exposé par ce modèle."_s
        << u"Non détecté"_s << hardware << false;
    QTest::newRow("trackpad without error count")
        << trackpad << withTrackpad(present(u"Force Touch"_s), std::nullopt) << CheckStatus::ok
        << u"Trackpad intégré sain, aucune erreur critique rapportée par le pilote."_s << u"Force Touch"_s
        << hardware << false;
    QTest::newRow("trackpad with zero errors")
        << trackpad << withTrackpad(present(), 0) << CheckStatus::ok
        << u"Trackpad intégré sain, aucune erreur critique rapportée par le pilote."_s << none() << hardware << false;
    QTest::newRow("trackpad with critical errors")
        << trackpad << withTrackpad(present(u"Force Touch"_s), 3) << CheckStatus::attention
        << u"Le pilote rapporte 3 erreur(s) critique(s)."_s << u"Force Touch"_s << hardware << false;
    QTest::newRow("missing trackpad ignores the error count")
        << trackpad << portable(withTrackpad(Component::absent(), 5)) << CheckStatus::info
        << u"Aucun trackpad intégré détecté."_s << u"Non détecté"_s << hardware << false;
    QTest::newRow("trackpad missing on a desktop")
        << trackpad << withTrackpad(Component::absent(), 5) << CheckStatus::nonApplicable << notInModel << none()
        << none() << false;
    QTest::newRow("haptics present") << haptics << withEverything() << CheckStatus::ok
                                     << u"Actionneur haptique (Taptic Engine) présent."_s << u"Taptic Engine"_s
                                     << hardware << false;
    QTest::newRow("haptics missing on a portable")
        << haptics << portable() << CheckStatus::info << u"Aucun actionneur haptique détecté."_s << u"Non détecté"_s
        << hardware << false;
    QTest::newRow("Touch ID present")
        << touchID << withEverything() << CheckStatus::ok
        << u"Capteur biométrique présent et reconnu par le système. L'enrôlement d'empreintes ne change pas cet état."_s
        << none() << hardware << false;
    QTest::newRow("Touch ID missing on a portable")
        << touchID << portable() << CheckStatus::info
        << u"Aucun capteur Touch ID détecté : absent de ce modèle ou hors service."_s << u"Non détecté"_s << hardware
        << false;
    QTest::newRow("lid sensor present")
        << lidAngle << withEverything() << CheckStatus::ok << u"Angle d'ouverture mesuré en direct par le capteur HID."_s
        << u"Capteur HID"_s << hardware << true;
    QTest::newRow("lid sensor missing on a portable")
        << lidAngle << portable() << CheckStatus::info << u"Pas de capteur d'angle exposé par ce modèle."_s
        << u"Non détecté"_s << hardware << true;
    QTest::newRow("lid sensor missing on a desktop")
        << lidAngle << BuiltInComponents() << CheckStatus::nonApplicable << notInModel << none() << none() << true;
}

void BuiltInChecksTest::component()
{
    QFETCH(Rule, rule);
    QFETCH(BuiltInComponents, components);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);
    QFETCH(QString, section);
    QFETCH(bool, showsLiveAngle);

    const HardwareCheck check = rule(components);
    QCOMPARE(shown(check.status), shown(status));
    QCOMPARE(check.summary, summary);
    QCOMPARE(shown(check.measurement), measurement);
    QCOMPARE(shown(check.section), section);
    QCOMPARE(check.live == LiveMetric::lidAngle, showsLiveAngle);
    QCOMPARE(bool(check.live), showsLiveAngle);
    QVERIFY(!check.progress && !check.caption && !check.isHighlighted);
}

void BuiltInChecksTest::sensors_data()
{
    QTest::addColumn<qint64>("interfaces");
    QTest::addColumn<CheckStatus>("status");
    QTest::addColumn<QString>("summary");
    QTest::addColumn<QString>("measurement");

    const QString noSensor = u"Aucune interface HID de capteur interne détectée."_s;
    QTest::newRow("none") << qint64(0) << CheckStatus::info << noSensor << u"0"_s;
    QTest::newRow("negative count") << qint64(-2) << CheckStatus::info << noSensor << u"-2"_s;
    QTest::newRow("one") << qint64(1) << CheckStatus::ok
                         << u"1 interface(s) HID de capteurs internes actives (luminosité, couvercle, alimentation…)."_s
                         << u"1"_s;
    QTest::newRow("fourteen")
        << qint64(14) << CheckStatus::ok
        << u"14 interface(s) HID de capteurs internes actives (luminosité, couvercle, alimentation…)."_s << u"14"_s;
}

void BuiltInChecksTest::sensors()
{
    QFETCH(qint64, interfaces);
    QFETCH(CheckStatus, status);
    QFETCH(QString, summary);
    QFETCH(QString, measurement);

    const HardwareCheck check = DiagnosticsService::sensorsCheck(withSensors(interfaces));
    QCOMPARE(check.title, u"Autres capteurs"_s);
    QCOMPARE(check.symbol, u"sensor"_s);
    QCOMPARE(shown(check.status), shown(status));
    QCOMPARE(check.summary, summary);
    QCOMPARE(shown(check.measurement), measurement);
    QCOMPARE(shown(check.section), u"hardware"_s);
    QVERIFY(!check.live);
}

QUILLON_TEST_MAIN(BuiltInChecksTest)
#include "tst_built_in_checks.moc"
