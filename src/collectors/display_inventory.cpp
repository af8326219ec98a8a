#include "collectors/inventory_service.h"

#include "collectors/inventory_support.h"
#include "core/texts.h"
#include "sources/property_access.h"
#include "sources/vocabulary.h"

using namespace Qt::StringLiterals;
using Property::text;
using Vocabulary::humanize;

namespace {

bool saysYes(const PropertyDictionary &dict, const QString &key)
{
    return text(dict, key) == u"spdisplays_yes"_s;
}

QList<InfoRow> displayRows(const PropertyDictionary &dict, bool isMain)
{
    QList<InfoRow> rows;
    appendRow(rows, localized("Résolution"), text(dict, u"_spdisplays_resolution"_s));
    if (const std::optional<QString> pixels = text(dict, u"_spdisplays_pixels"_s))
        rows.append(InfoRow(localized("Définition native"), *pixels, InfoRowKey::nativeResolution));
    appendRow(rows, localized("Type"), humanize(text(dict, u"spdisplays_display_type"_s)));
    appendRow(rows, localized("Connexion"), humanize(text(dict, u"spdisplays_connection_type"_s)));
    appendRow(rows, localized("Écran principal"), isMain ? localized("Oui") : localized("Non"));
    appendRow(rows, localized("Recopie vidéo"), humanize(text(dict, u"spdisplays_mirror"_s)));
    appendRow(rows, localized("Identifiant fabricant"), text(dict, u"_spdisplays_display-vendor-id"_s));
    appendRow(rows, localized("Identifiant produit"), text(dict, u"_spdisplays_display-product-id"_s));
    appendRow(rows, localized("Numéro de série"), text(dict, u"_spdisplays_display-serial-number"_s));
    return rows;
}

DeviceNode displayNode(const PropertyDictionary &dict)
{
    const bool isMain = saysYes(dict, u"spdisplays_main"_s);
    // A display that does not say it is online counts as offline.
    const bool isOnline = saysYes(dict, u"spdisplays_online"_s);
    DeviceNode node;
    node.name = InventorySupport::nameOrUnnamed(dict);
    node.subtitle = text(dict, u"_spdisplays_resolution"_s);
    node.symbol = isMain ? u"display"_s : u"display.2"_s;
    node.status = isOnline ? DeviceStatus::connected : DeviceStatus::disconnected;
    node.rows = displayRows(dict, isMain);
    return node;
}

QString displayCount(qsizetype count)
{
    if (count == 1)
        return localized("1 écran");
    return localized("%1 écrans").arg(count);
}

// Processors sharing the system memory report it under a key of their own.
std::optional<QString> vram(const PropertyDictionary &dict)
{
    if (std::optional<QString> dedicated = text(dict, u"spdisplays_vram"_s))
        return dedicated;
    return text(dict, u"spdisplays_vram_shared"_s);
}

QList<InfoRow> processorRows(const PropertyDictionary &dict)
{
    QList<InfoRow> rows;
    appendRow(rows, localized("Modèle"), text(dict, u"sppci_model"_s));
    appendRow(rows, localized("Fabricant"), humanize(text(dict, u"spdisplays_vendor"_s)));
    appendRow(rows, localized("Cœurs graphiques"), text(dict, u"sppci_cores"_s));
    appendRow(rows, localized("Bus"), humanize(text(dict, u"sppci_bus"_s)));
    appendRow(rows, localized("VRAM"), vram(dict));
    appendRow(rows, localized("Metal"), humanize(text(dict, u"spdisplays_mtlgpufamilysupport"_s)));
    return rows;
}

DeviceNode processorNode(const PropertyDictionary &dict)
{
    DeviceNode node;
    for (const PropertyDictionary &display : InventorySupport::dictionariesAt(dict, u"spdisplays_ndrvs"_s))
        node.children.append(displayNode(display));
    node.name = InventorySupport::nameOrUnnamed(dict);
    node.subtitle = displayCount(node.children.size());
    node.symbol = u"cpu"_s;
    node.status = DeviceStatus::neutral;
    node.rows = processorRows(dict);
    return node;
}

QList<DeviceNode> processorNodes(const QList<PropertyDictionary> &items)
{
    QList<DeviceNode> nodes;
    for (const PropertyDictionary &dict : items)
        nodes.append(processorNode(dict));
    return nodes;
}

} // namespace

namespace InventoryService {

Result<QList<DeviceNode>> displays(const Platform &platform)
{
    return InventorySupport::collect<DeviceNode>(platform, u"SPDisplaysDataType"_s, processorNodes);
}

} // namespace InventoryService
