#include "collectors/inventory_service.h"

#include "collectors/inventory_support.h"
#include "core/texts.h"
#include "sources/property_access.h"
#include "sources/vocabulary.h"

using namespace Qt::StringLiterals;
using Property::text;

namespace {

bool saysYes(const PropertyDictionary &device, const QString &key)
{
    return text(device, key) == u"spaudio_yes"_s;
}

// The profiler writes channel counts and sample rates as whole numbers: a device with any
// other value there makes the answer unreadable (see hasWholeNumbers).
bool hasWholeNumbers(const PropertyDictionary &device)
{
    for (const QString &key : {u"coreaudio_device_input"_s, u"coreaudio_device_output"_s, u"coreaudio_device_srate"_s}) {
        const std::optional<double> number = Property::number(device, key);
        if (number && !InventorySupport::wholeNumber(*number))
            return false;
    }
    return true;
}

qint64 channelCount(const PropertyDictionary &device, const QString &key)
{
    const std::optional<double> count = Property::number(device, key);
    return count ? InventorySupport::wholeNumber(*count).value_or(0) : 0;
}

std::optional<QString> sampleRate(const PropertyDictionary &device)
{
    const std::optional<double> rate = Property::number(device, u"coreaudio_device_srate"_s);
    if (!rate)
        return std::nullopt;
    return QString::number(InventorySupport::wholeNumber(*rate).value_or(0)) + u" Hz"_s;
}

std::optional<QString> countText(qint64 count)
{
    return count >= 1 ? std::optional<QString>(QString::number(count)) : std::nullopt;
}

QStringList roles(const PropertyDictionary &device)
{
    QStringList out;
    if (saysYes(device, u"coreaudio_default_audio_output_device"_s))
        out.append(localized("sortie par défaut"));
    if (saysYes(device, u"coreaudio_default_audio_input_device"_s))
        out.append(localized("entrée par défaut"));
    return out;
}

DeviceNode audioNode(const PropertyDictionary &device)
{
    const std::optional<QString> transport = text(device, u"coreaudio_device_transport"_s);
    const qint64 inputs = channelCount(device, u"coreaudio_device_input"_s);
    const qint64 outputs = channelCount(device, u"coreaudio_device_output"_s);
    const QStringList deviceRoles = roles(device);
    DeviceNode node;
    node.name = InventorySupport::nameOrUnnamed(device);
    node.subtitle = deviceRoles.isEmpty() ? Vocabulary::humanize(transport) : deviceRoles.join(u" · "_s);
    node.symbol = outputs >= 1 ? u"speaker.wave.2"_s : u"mic"_s;
    node.status = deviceRoles.isEmpty() ? DeviceStatus::neutral : DeviceStatus::connected;
    node.isBuiltIn = transport == u"coreaudio_device_type_builtin"_s;
    QList<InfoRow> &rows = node.rows;
    appendRow(rows, localized("Fabricant"), text(device, u"coreaudio_device_manufacturer"_s));
    appendRow(rows, localized("Connexion"), Vocabulary::humanize(transport));
    appendRow(rows, localized("Fréquence d'échantillonnage"), sampleRate(device));
    appendRow(rows, localized("Canaux d'entrée"), countText(inputs));
    appendRow(rows, localized("Canaux de sortie"), countText(outputs));
    appendRow(rows, localized("Source d'entrée"), Vocabulary::humanize(text(device, u"coreaudio_input_source"_s)));
    appendRow(rows, localized("Source de sortie"), Vocabulary::humanize(text(device, u"coreaudio_output_source"_s)));
    return node;
}

// The report groups the devices under one or more entries; their order is kept.
Result<QList<DeviceNode>> audioNodes(const QList<PropertyDictionary> &items)
{
    QList<DeviceNode> nodes;
    for (const PropertyDictionary &entry : items) {
        for (const PropertyDictionary &device : InventorySupport::dictionariesAt(entry, u"_items"_s)) {
            if (!hasWholeNumbers(device))
                return SystemProfiler::Failure::unreadableOutput();
            nodes.append(audioNode(device));
        }
    }
    return nodes;
}

} // namespace

namespace InventoryService {

Result<QList<DeviceNode>> audio(const Platform &platform)
{
    return InventorySupport::collect<DeviceNode>(platform, u"SPAudioDataType"_s, audioNodes);
}

} // namespace InventoryService
