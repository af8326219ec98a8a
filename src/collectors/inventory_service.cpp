#include "collectors/inventory_service.h"

#include <QHash>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace InventoryService {

namespace {

// What tells a device apart from its siblings: its name and the values that identify it.
QString identityOf(const DeviceNode &node)
{
    static const QStringList identifying{u"Numéro de série"_s, u"Emplacement"_s, u"Identifiant fabricant"_s,
                                         u"Identifiant produit"_s, u"Adresse"_s};
    QString identity = node.name;
    for (const InfoRow &row : node.rows) {
        if (identifying.contains(row.label))
            identity += u'|' + row.label + u'=' + row.value;
    }
    return identity;
}

// Every device gets an identity made from what identifies it and from its place in the tree,
// the same at every collection of the same Mac: a refresh then changes only what changed.
void giveStableIdentities(QList<DeviceNode> &nodes, const QString &parentKey)
{
    static const QUuid space = QUuid::fromString(u"{6f1c2b7e-3a4d-5e8f-9a0b-1c2d3e4f5a6b}"_s);
    QHash<QString, int> seen;
    for (DeviceNode &node : nodes) {
        const QString identity = identityOf(node);
        // Two siblings alike in every identifying value are told apart by their order.
        const QString key = parentKey + u'/' + identity + u'#' + QString::number(seen[identity]++);
        node.id = QUuid::createUuidV5(space, key);
        giveStableIdentities(node.children, key);
    }
}

Result<QList<DeviceNode>> withStableIdentities(Result<QList<DeviceNode>> result, AppSection section)
{
    if (result.ok())
        giveStableIdentities(result.value(), AppSections::rawValue(section));
    return result;
}

Result<QList<DeviceNode>> collected(const Platform &platform, AppSection section)
{
    switch (section) {
    case AppSection::displays:
        return displays(platform);
    case AppSection::usb:
        return usb(platform);
    case AppSection::thunderbolt:
        return thunderbolt(platform);
    case AppSection::bluetooth:
        return bluetooth(platform);
    case AppSection::network:
        return network(platform);
    case AppSection::audio:
        return audio(platform);
    case AppSection::camera:
        return cameras(platform);
    case AppSection::overview:
    case AppSection::diagnostics:
    case AppSection::history:
    case AppSection::hardware:
    case AppSection::battery:
    case AppSection::storage:
        break;
    }
    return QList<DeviceNode>();
}

} // namespace

Result<QList<DeviceNode>> devices(const Platform &platform, AppSection section)
{
    return withStableIdentities(collected(platform, section), section);
}

} // namespace InventoryService
