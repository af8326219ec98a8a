#include "sources/device_words.h"

#include "core/texts.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace DeviceWords {

QString usbBusName(const QString &rawName, const std::optional<QString> &controller)
{
    // "USB31Bus", "USB30Bus", "USB 3.1 Bus", "USB20Bus".
    static const QRegularExpression bus(u"^USB ?(\\d)\\.?(\\d) ?Bus$"_s);
    const QRegularExpressionMatch match = bus.match(rawName.trimmed());
    const QString name = match.hasMatch() ? localized("Bus USB %1.%2").arg(match.captured(1), match.captured(2)) : rawName;
    if (!controller || controller->isEmpty())
        return name;
    return localized("%1 (contrôleur %2)").arg(name, *controller);
}

std::optional<QString> bluetoothType(const std::optional<QString> &type)
{
    if (!type)
        return std::nullopt;
    static const QHash<QString, QString> words{
        {u"headphones"_s, localized("Casque")},        {u"headset"_s, localized("Casque-micro")},
        {u"mouse"_s, localized("Souris")},             {u"keyboard"_s, localized("Clavier")},
        {u"keyboard/mouse combo"_s, localized("Clavier et souris")},
        {u"trackpad"_s, localized("Trackpad")},        {u"phone"_s, localized("Téléphone")},
        {u"smartphone"_s, localized("Téléphone")},     {u"speaker"_s, localized("Enceinte")},
        {u"loudspeaker"_s, localized("Enceinte")},     {u"gamepad"_s, localized("Manette")},
        {u"joystick"_s, localized("Manette")},         {u"watch"_s, localized("Montre")},
        {u"wristwatch"_s, localized("Montre")},        {u"computer"_s, localized("Ordinateur")},
        {u"tablet"_s, localized("Tablette")},          {u"peripheral"_s, localized("Périphérique")},
        {u"audio/video"_s, localized("Audio et vidéo")}, {u"microphone"_s, localized("Micro")},
    };
    return words.value(type->trimmed().toLower(), *type);
}

std::optional<QString> bluetoothServices(const std::optional<QString> &services)
{
    if (!services)
        return std::nullopt;
    static const QRegularExpression listed(u"<([^>]*)>"_s);
    const QRegularExpressionMatch match = listed.match(*services);
    if (!match.hasMatch())
        return std::nullopt;
    static const QHash<QString, QString> words{
        {u"HFP"_s, localized("mains libres")},       {u"HSP"_s, localized("casque")},
        {u"A2DP"_s, localized("audio")},             {u"AVRCP"_s, localized("télécommande")},
        {u"HID"_s, localized("clavier et souris")},  {u"GATT"_s, localized("basse consommation")},
        {u"LEA"_s, localized("audio basse consommation")}, {u"SerialPort"_s, localized("port série")},
        {u"Braille"_s, localized("braille")},        {u"AACP"_s, localized("accessoires Apple")},
        {u"PAN"_s, localized("partage de connexion")}, {u"OBEX"_s, localized("transfert de fichiers")},
    };
    QStringList named;
    for (const QString &service : match.captured(1).split(u' ', Qt::SkipEmptyParts))
        named.append(words.value(service, service));
    if (named.isEmpty())
        return std::nullopt;
    return named.join(u", "_s);
}

std::optional<QString> bluetoothVendor(const std::optional<QString> &identifier)
{
    if (!identifier)
        return std::nullopt;
    bool ok = false;
    const int company = identifier->trimmed().toInt(&ok, 16);
    return ok && company == 0x004C ? std::optional<QString>(u"Apple"_s) : std::nullopt;
}

} // namespace DeviceWords
