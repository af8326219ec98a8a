#include "collectors/inventory_service.h"

#include "collectors/inventory_support.h"
#include "core/texts.h"
#include "sources/property_access.h"

using namespace Qt::StringLiterals;
using Property::text;

namespace {

DeviceNode cameraNode(const PropertyDictionary &camera)
{
    DeviceNode node;
    node.name = InventorySupport::nameOrUnnamed(camera);
    node.symbol = u"camera"_s;
    node.status = DeviceStatus::connected;
    appendRow(node.rows, localized("Identifiant du modèle"), text(camera, u"spcamera_model-id"_s));
    appendRow(node.rows, localized("Identifiant unique"), text(camera, u"spcamera_unique-id"_s));
    return node;
}

QList<DeviceNode> cameraNodes(const QList<PropertyDictionary> &items)
{
    QList<DeviceNode> nodes;
    for (const PropertyDictionary &camera : items)
        nodes.append(cameraNode(camera));
    return nodes;
}

} // namespace

namespace InventoryService {

Result<QList<DeviceNode>> cameras(const Platform &platform)
{
    return InventorySupport::collect<DeviceNode>(platform, u"SPCameraDataType"_s, cameraNodes);
}

} // namespace InventoryService
