#include "sources/vocabulary.h"

#include "core/texts.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace Vocabulary {

const QHash<QString, QString> &table()
{
    // Built once, thread-safely, on first use. The display on/off words are feminine
    // ("Activée") and the attribute and activation-lock words masculine ("Activé").
    static const QHash<QString, QString> words{
        {u"spdisplays_yes"_s, localized("Oui")},
        {u"spdisplays_no"_s, localized("Non")},
        {u"spdisplays_on"_s, localized("Activée")},
        {u"spdisplays_off"_s, localized("Désactivée")},
        {u"spdisplays_internal"_s, localized("Interne")},
        {u"spdisplays_displayport_dongle"_s, localized("Adaptateur DisplayPort")},
        {u"spdisplays_builtin"_s, localized("Intégré")},
        {u"spdisplays_metal3"_s, localized("Metal 3")},
        {u"spdisplays_metal4"_s, localized("Metal 4")},
        {u"receptacle_no_devices_connected"_s, localized("Aucun appareil connecté")},
        {u"receptacle_device_connected"_s, localized("Appareil connecté")},
        // The same state as USB4 Macs word it since macOS 26.
        {u"receptacle_connected"_s, localized("Appareil connecté")},
        {u"spdisplays_built-in-liquid-retina-xdr"_s, localized("Liquid Retina XDR intégré")},
        {u"spdisplays_built-in-retina-lcd"_s, localized("Retina intégré")},
        {u"coreaudio_device_type_builtin"_s, localized("Intégré")},
        {u"coreaudio_device_type_virtual"_s, localized("Virtuel")},
        {u"coreaudio_device_type_usb"_s, QString::fromUtf8("USB")},
        {u"coreaudio_device_type_bluetooth"_s, QString::fromUtf8("Bluetooth")},
        {u"coreaudio_device_type_hdmi"_s, QString::fromUtf8("HDMI")},
        {u"coreaudio_device_type_airplay"_s, QString::fromUtf8("AirPlay")},
        {u"coreaudio_device_type_displayport"_s, QString::fromUtf8("DisplayPort")},
        {u"coreaudio_device_type_unknown"_s, localized("Autre")},
        {u"spaudio_default"_s, localized("Par défaut")},
        {u"spaudio_yes"_s, localized("Oui")},
        {u"spaudio_no"_s, localized("Non")},
        {u"yes"_s, localized("Oui")},
        {u"no"_s, localized("Non")},
        {u"TRUE"_s, localized("Oui")},
        {u"FALSE"_s, localized("Non")},
        {u"ssd"_s, localized("SSD")},
        {u"Verified"_s, localized("Vérifié")},
        {u"attrib_on"_s, localized("Activé")},
        {u"attrib_off"_s, localized("Désactivé")},
        {u"activation_lock_enabled"_s, localized("Activé")},
        {u"activation_lock_disabled"_s, localized("Désactivé")},    };
    return words;
}

std::optional<QString> humanize(const std::optional<QString> &value)
{
    if (!value)
        return std::nullopt;
    const auto known = table().constFind(*value);
    if (known != table().constEnd())
        return *known;

    // Unknown words of the profiler's own prefixes keep their last part, capitalised.
    const qsizetype lastUnderscore = value->lastIndexOf(u'_');
    if (lastUnderscore < 0)
        return value;
    if (!value->startsWith(u"sp"_s) && !value->startsWith(u"coreaudio"_s))
        return value;
    QString tail = value->mid(lastUnderscore + 1);
    tail.replace(u'-', u' ');
    if (tail.isEmpty())
        return value;
    // Full upper-casing of the first character alone (a surrogate pair counts as one).
    const qsizetype firstLength = tail.at(0).isHighSurrogate() && tail.size() > 1 ? 2 : 1;
    return tail.left(firstLength).toUpper() + tail.mid(firstLength);
}

} // namespace Vocabulary
