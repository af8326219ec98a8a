#include "diagnostics/diagnostics_rules.h"

#include "core/texts.h"

using namespace Qt::StringLiterals;

namespace {

// What one built-in rule says about its component.
struct ComponentRule
{
    QString title;
    QString symbol;
    QString summaryWhenPresent;
    QString summaryWhenAbsent;
    std::optional<LiveMetric> live;
};

// A present component is correct; an absent one is only worth a note on a portable Mac,
// which should have it, and does not apply to a desktop, which never has it.
HardwareCheck componentCheck(const ComponentRule &rule, const BuiltInComponents::Component &component,
                             bool isPortable)
{
    HardwareCheck check{.title = rule.title, .symbol = rule.symbol, .live = rule.live};
    if (component.present) {
        check.status = CheckStatus::ok;
        check.summary = rule.summaryWhenPresent;
        check.measurement = component.detail;
        check.section = AppSection::hardware;
    } else if (isPortable) {
        check.status = CheckStatus::info;
        check.summary = rule.summaryWhenAbsent;
        check.measurement = localized("Non détecté");
        check.section = AppSection::hardware;
    } else {
        check.status = CheckStatus::nonApplicable;
        check.summary = localized("Composant absent de ce modèle.");
    }
    return check;
}

QString keyboardSummary(const BuiltInComponents::Component &keyboard)
{
    const QString layout = keyboard.detail ? localized(" (disposition %1)").arg(*keyboard.detail) : QString();
    return localized("Clavier intégré reconnu par le pilote%1.").arg(layout);
}

} // namespace

namespace DiagnosticsService {

HardwareCheck keyboardCheck(const BuiltInComponents &components)
{
    return componentCheck({localized("Clavier"), u"keyboard"_s, keyboardSummary(components.keyboard),
                           localized("Aucun clavier intégré détecté.")},
                          components.keyboard, components.isPortable);
}

HardwareCheck keyboardBacklightCheck(const BuiltInComponents &components)
{
    return componentCheck({localized("Rétroéclairage clavier"), u"light.max"_s,
                           localized("Interface de rétroéclairage présente."),
                           localized("Pas de rétroéclairage exposé par ce modèle.")},
                          components.keyboardBacklight, components.isPortable);
}

HardwareCheck trackpadCheck(const BuiltInComponents &components)
{
    HardwareCheck check = componentCheck(
        {localized("Trackpad"), u"rectangle.and.hand.point.up.left"_s,
         localized("Trackpad intégré sain, aucune erreur critique rapportée par le pilote."),
         localized("Aucun trackpad intégré détecté.")},
        components.trackpad, components.isPortable);
    // The driver's critical error count is the one built-in reading that can call for attention.
    const std::optional<qint64> errors = components.trackpadCriticalErrors;
    if (components.trackpad.present && errors && *errors != 0) {
        check.status = CheckStatus::attention;
        check.summary = localized("Le pilote rapporte %1 erreur(s) critique(s).").arg(QString::number(*errors));
    }
    return check;
}

HardwareCheck hapticsCheck(const BuiltInComponents &components)
{
    return componentCheck({localized("Retour haptique"), u"hand.tap"_s,
                           localized("Actionneur haptique (Taptic Engine) présent."),
                           localized("Aucun actionneur haptique détecté.")},
                          components.haptics, components.isPortable);
}

HardwareCheck touchIDCheck(const BuiltInComponents &components)
{
    return componentCheck(
        {localized("Touch ID"), u"touchid"_s,
         localized("Capteur biométrique présent et reconnu par le système. L'enrôlement d'empreintes ne change pas cet état."),
         localized("Aucun capteur Touch ID détecté : absent de ce modèle ou hors service.")},
        components.touchID, components.isPortable);
}

HardwareCheck lidAngleCheck(const BuiltInComponents &components)
{
    // The live angle replaces the measurement whenever one is read, whatever the verdict.
    return componentCheck({localized("Angle d'écran"), u"laptopcomputer.and.arrow.down"_s,
                           localized("Angle d'ouverture mesuré en direct par le capteur HID."),
                           localized("Pas de capteur d'angle exposé par ce modèle."), LiveMetric::lidAngle},
                          components.lidAngle, components.isPortable);
}

HardwareCheck sensorsCheck(const BuiltInComponents &components)
{
    const qint64 interfaces = components.sensorInterfaces;
    HardwareCheck check{.title = localized("Autres capteurs"),
                        .symbol = u"sensor"_s,
                        .status = CheckStatus::info,
                        .summary = localized("Aucune interface HID de capteur interne détectée."),
                        .measurement = QString::number(interfaces),
                        .section = AppSection::hardware};
    if (interfaces >= 1) {
        check.status = CheckStatus::ok;
        check.summary =
            localized("%1 interface(s) HID de capteurs internes actives (luminosité, couvercle, alimentation…).")
                .arg(QString::number(interfaces));
    }
    return check;
}

} // namespace DiagnosticsService
