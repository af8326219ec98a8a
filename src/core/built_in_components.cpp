#include "core/built_in_components.h"

#include "core/texts.h"

#include <array>

using ComponentID = BuiltInComponents::ComponentID;

static constexpr std::array<std::pair<ComponentID, const char *>, 8> rawValues{{
    {ComponentID::touchID, "touchID"},
    {ComponentID::keyboard, "keyboard"},
    {ComponentID::keyboardBacklight, "keyboardBacklight"},
    {ComponentID::trackpad, "trackpad"},
    {ComponentID::haptics, "haptics"},
    {ComponentID::lidAngle, "lidAngle"},
    {ComponentID::wifi, "wifi"},
    {ComponentID::smc, "smc"},
}};

QString componentIDRawValue(ComponentID id)
{
    for (const auto &[candidate, raw] : rawValues) {
        if (candidate == id)
            return QString::fromLatin1(raw);
    }
    return {};
}

std::optional<ComponentID> componentIDFromRawValue(const QString &rawValue)
{
    for (const auto &[candidate, raw] : rawValues) {
        if (rawValue == QLatin1StringView(raw))
            return candidate;
    }
    return std::nullopt;
}

QList<BuiltInComponents::Listed> BuiltInComponents::listed() const
{
    return {
        {ComponentID::touchID, localized("Touch ID"), QStringLiteral("touchid"), touchID},
        {ComponentID::keyboard, localized("Clavier"), QStringLiteral("keyboard"), keyboard},
        {ComponentID::keyboardBacklight, localized("Rétroéclairage du clavier"), QStringLiteral("light.max"),
         keyboardBacklight},
        {ComponentID::trackpad, localized("Trackpad"), QStringLiteral("rectangle.and.hand.point.up.left"), trackpad},
        {ComponentID::haptics, localized("Retour haptique"), QStringLiteral("hand.tap"), haptics},
        {ComponentID::lidAngle, localized("Capteur d'angle d'écran"), QStringLiteral("laptopcomputer.and.arrow.down"),
         lidAngle},
        {ComponentID::wifi, localized("Puce Wi-Fi"), QStringLiteral("wifi"), wifi},
        {ComponentID::smc, localized("Contrôleur SMC"), QStringLiteral("cpu"), smc},
    };
}
