#include "diagnostics/diagnostics_rules.h"

#include "core/texts.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The symbol the Thunderbolt collector gives a port, as opposed to a bus or a device.
const QString thunderboltPortSymbol = u"bolt.horizontal.circle"_s;

bool isConnected(const DeviceNode &node)
{
    return node.status == DeviceStatus::connected;
}

QStringList namesOf(const QList<DeviceNode> &nodes)
{
    QStringList names;
    for (const DeviceNode &node : nodes)
        names.append(node.name);
    return names;
}

// Every node of the section at any depth, in depth-first pre-order.
QList<DeviceNode> allNodes(const QList<DeviceNode> &roots)
{
    QList<DeviceNode> nodes;
    for (const auto &[node, depth] : flattenedAll(roots))
        nodes.append(node);
    return nodes;
}

QString count(qsizetype value)
{
    return QString::number(qint64(value));
}

const DeviceNode *wifiService(const QList<DeviceNode> &network)
{
    // Only the literal hyphenated spelling counts, in any case: "WiFi" is not a match.
    const auto found = std::find_if(network.cbegin(), network.cend(), [](const DeviceNode &node) {
        return node.name.contains(u"wi-fi"_s, Qt::CaseInsensitive);
    });
    return found == network.cend() ? nullptr : &*found;
}

QStringList wifiPhrases(const BuiltInComponents::Component &chip, const DeviceNode *service)
{
    QStringList phrases;
    if (chip.present && chip.detail)
        phrases.append(localized("puce %1").arg(*chip.detail));
    if (service && isConnected(*service)) {
        phrases.append(service->subtitle ? localized("connecté à %1").arg(*service->subtitle) : localized("connecté"));
    } else {
        phrases.append(localized("aucun réseau associé pour l'instant"));
    }
    return phrases;
}

} // namespace

namespace DiagnosticsService {

HardwareCheck displaysCheck(const QList<DeviceNode> &displays)
{
    // The top-level nodes are the graphics processors; their children are the screens.
    QList<DeviceNode> connected;
    for (const DeviceNode &processor : displays)
        std::copy_if(processor.children.cbegin(), processor.children.cend(), std::back_inserter(connected),
                     isConnected);
    HardwareCheck check{.title = localized("Écrans"),
                        .symbol = u"display"_s,
                        .status = CheckStatus::info,
                        .summary = localized("Aucun écran détecté."),
                        .measurement = count(connected.size()),
                        .section = AppSection::displays};
    if (!connected.isEmpty()) {
        const QString found =
            connected.size() == 1 ? u"1 écran détecté"_s : count(connected.size()) + u" écrans détectés"_s;
        check.status = CheckStatus::ok;
        check.summary = namesOf(connected).join(u", "_s) + u" — "_s + found + u"."_s;
    }
    return check;
}

HardwareCheck wifiCheck(const BuiltInComponents &components, const QList<DeviceNode> &network)
{
    const DeviceNode *service = wifiService(network);
    const BuiltInComponents::Component &chip = components.wifi;
    if (!chip.present && !service) {
        return {.title = localized("Wi-Fi"),
                .symbol = u"wifi.slash"_s,
                .status = CheckStatus::info,
                .summary = localized("Aucune puce Wi-Fi détectée sur cette machine."),
                .measurement = localized("Non détecté"),
                .section = AppSection::network};
    }
    return {.title = localized("Wi-Fi"),
            .symbol = u"wifi"_s,
            .status = CheckStatus::ok,
            .summary = localized("Matériel Wi-Fi opérationnel — ") + wifiPhrases(chip, service).join(u", "_s) +
                       u"."_s,
            .measurement = chip.present && chip.detail ? *chip.detail : localized("Présent"),
            .section = AppSection::network};
}

HardwareCheck bluetoothCheck(const QList<DeviceNode> &bluetooth)
{
    const auto isController = [](const DeviceNode &node) { return node.status == DeviceStatus::neutral; };
    const auto controller = std::find_if(bluetooth.cbegin(), bluetooth.cend(), isController);
    if (controller == bluetooth.cend()) {
        return {.title = u"Bluetooth"_s,
                .symbol = u"dot.radiowaves.right"_s,
                .status = CheckStatus::info,
                .summary = localized("Aucun contrôleur Bluetooth détecté."),
                .measurement = localized("Non détecté"),
                .section = AppSection::bluetooth};
    }
    const qsizetype devices = std::count_if(bluetooth.cbegin(), bluetooth.cend(),
                                            [&](const DeviceNode &node) { return !isController(node); });
    const qsizetype connected = std::count_if(bluetooth.cbegin(), bluetooth.cend(), isConnected);
    // The fallback for a controller without chipset is this exact text, stray characters included.
    const QString chipset = controller->subtitle.value_or(u")intégréString(localized: "_s);
    return {.title = u"Bluetooth"_s,
            .symbol = u"dot.radiowaves.right"_s,
            .status = CheckStatus::ok,
            .summary = localized("Contrôleur %1 opérationnel — %2 appareil(s) appairé(s), %3 connecté(s).")
                           .arg(chipset, count(devices), count(connected)),
            .measurement = controller->subtitle.value_or(localized("Présent")),
            .section = AppSection::bluetooth};
}

HardwareCheck audioCheck(const QList<DeviceNode> &audio)
{
    QList<DeviceNode> builtIn;
    std::copy_if(audio.cbegin(), audio.cend(), std::back_inserter(builtIn),
                 [](const DeviceNode &node) { return node.isBuiltIn; });
    HardwareCheck check{.title = u"Audio"_s,
                        .symbol = u"speaker.wave.2"_s,
                        .status = CheckStatus::info,
                        .summary = localized("Aucun périphérique audio détecté."),
                        .measurement = localized("Non détecté"),
                        .section = AppSection::audio};
    if (audio.isEmpty())
        return check;
    if (builtIn.isEmpty()) {
        check.summary = localized("Aucun périphérique audio intégré détecté (%1 périphérique(s) au total).")
                            .arg(count(audio.size()));
        return check;
    }
    check.status = CheckStatus::ok;
    check.summary = localized("%1 — %2 périphérique(s) audio au total.")
                        .arg(namesOf(builtIn).join(u", "_s), count(audio.size()));
    check.measurement = localized("%1 intégré(s)").arg(count(builtIn.size()));
    return check;
}

HardwareCheck cameraCheck(const QList<DeviceNode> &cameras)
{
    if (cameras.isEmpty()) {
        return {.title = localized("Caméra"),
                .symbol = u"camera"_s,
                .status = CheckStatus::info,
                .summary = localized("Aucune caméra détectée."),
                .measurement = localized("Non détectée"),
                .section = AppSection::camera};
    }
    const QString total =
        cameras.size() == 1 ? u"."_s : u", "_s + count(cameras.size()) + u" au total (virtuelles comprises)."_s;
    return {.title = localized("Caméra"),
            .symbol = u"camera"_s,
            .status = CheckStatus::ok,
            .summary = localized("%1 opérationnelle").arg(cameras.first().name) + total,
            .measurement = count(cameras.size()),
            .section = AppSection::camera};
}

HardwareCheck usbCheck(const QList<DeviceNode> &usb)
{
    QList<DeviceNode> connected;
    const QList<DeviceNode> nodes = allNodes(usb);
    std::copy_if(nodes.cbegin(), nodes.cend(), std::back_inserter(connected), isConnected);
    // Ports cannot be judged empty: only a plugged device shows that one works.
    const QString summary =
        connected.isEmpty()
            ? localized("Aucun appareil branché — l'état des ports ne peut se vérifier qu'en y connectant un périphérique.")
            : namesOf(connected).join(u", "_s) + u"."_s;
    return {.title = u"USB"_s,
            .symbol = u"cable.connector"_s,
            .status = CheckStatus::info,
            .summary = summary,
            .measurement = count(connected.size()),
            .section = AppSection::usb};
}

HardwareCheck thunderboltCheck(const QList<DeviceNode> &thunderbolt)
{
    const QList<DeviceNode> nodes = allNodes(thunderbolt);
    const qsizetype ports = std::count_if(nodes.cbegin(), nodes.cend(), [](const DeviceNode &node) {
        return node.symbol == thunderboltPortSymbol;
    });
    const qsizetype occupied = std::count_if(nodes.cbegin(), nodes.cend(), [](const DeviceNode &node) {
        return node.symbol == thunderboltPortSymbol && isConnected(node);
    });
    HardwareCheck check{.title = u"Thunderbolt"_s,
                        .symbol = u"bolt.horizontal"_s,
                        .status = CheckStatus::info,
                        .summary = localized("Aucun bus Thunderbolt exposé par ce Mac."),
                        .measurement = u"0"_s,
                        .section = AppSection::thunderbolt};
    if (ports == 0)
        return check;
    const QString buses = count(thunderbolt.size());
    check.summary = occupied == 0
                        ? localized("%1 port(s) sur %2 bus — aucun appareil connecté.").arg(count(ports), buses)
                        : localized("%1 port(s) sur %2 bus — %3 occupé(s).").arg(count(ports), buses, count(occupied));
    check.measurement = count(occupied) + u"/"_s + count(ports);
    return check;
}

} // namespace DiagnosticsService
