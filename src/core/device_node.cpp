#include "core/device_node.h"

#include "core/texts.h"

std::optional<QString> deviceStatusLabel(DeviceStatus status)
{
    switch (status) {
    case DeviceStatus::connected:
        return localized("Connecté");
    case DeviceStatus::disconnected:
        return localized("Non connecté");
    case DeviceStatus::warning:
        return localized("À vérifier");
    case DeviceStatus::neutral:
        break;
    }
    return std::nullopt;
}

static void appendWalk(QList<std::pair<DeviceNode, int>> &out, const DeviceNode &node, int depth)
{
    out.append({node, depth});
    for (const DeviceNode &child : node.children)
        appendWalk(out, child, depth + 1);
}

QList<std::pair<DeviceNode, int>> DeviceNode::flattened(int depth) const
{
    QList<std::pair<DeviceNode, int>> out;
    appendWalk(out, *this, depth);
    return out;
}

QList<std::pair<DeviceNode, int>> flattenedAll(const QList<DeviceNode> &roots)
{
    QList<std::pair<DeviceNode, int>> out;
    for (const DeviceNode &root : roots)
        appendWalk(out, root, 0);
    return out;
}
