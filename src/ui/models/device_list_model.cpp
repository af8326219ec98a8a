#include "ui/models/device_list_model.h"

#include "ui/presentation/presentation.h"

#include <QVariantMap>

using namespace Qt::StringLiterals;

DeviceListModel::DeviceListModel(QObject *parent) : QAbstractListModel(parent)
{
}

namespace {

// The walk of the trees, one entry per device without its children: a row compares and
// copies only what its own card shows.
void appendShallow(QList<std::pair<DeviceNode, int>> &entries, const DeviceNode &node, int depth)
{
    DeviceNode own = node;
    own.children.clear();
    entries.append({std::move(own), depth});
    for (const DeviceNode &child : node.children)
        appendShallow(entries, child, depth + 1);
}

QList<std::pair<DeviceNode, int>> shallowWalk(const QList<DeviceNode> &roots)
{
    QList<std::pair<DeviceNode, int>> entries;
    for (const DeviceNode &root : roots)
        appendShallow(entries, root, 0);
    return entries;
}

// Devices keep their identity across collections: the same identifiers mean the same rows.
QList<QUuid> identifiers(const QList<std::pair<DeviceNode, int>> &entries)
{
    QList<QUuid> ids;
    ids.reserve(entries.size());
    for (const auto &[node, depth] : entries)
        ids.append(node.id);
    return ids;
}

} // namespace

void DeviceListModel::setRoots(const QList<DeviceNode> &roots)
{
    QList<std::pair<DeviceNode, int>> entries = shallowWalk(roots);
    if (identifiers(entries) == identifiers(m_entries) && roots.size() == m_roots.size()) {
        // The same devices: only the rows whose content changed are told, no card is rebuilt.
        m_roots = roots;
        for (qsizetype row = 0; row < entries.size(); ++row) {
            if (entries.at(row) == m_entries.at(row))
                continue;
            m_entries[row] = entries.at(row);
            Q_EMIT dataChanged(index(int(row)), index(int(row)));
        }
        return;
    }
    const int previousCount = count();
    beginResetModel();
    m_roots = roots;
    m_entries = std::move(entries);
    endResetModel();
    if (count() != previousCount)
        Q_EMIT countChanged();
}

int DeviceListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant DeviceListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto &[node, depth] = m_entries.at(index.row());
    switch (role) {
    case IdRole:
        return node.id.toString(QUuid::WithoutBraces);
    case NodeRole:
        return QVariantMap {
            { u"name"_s, node.name },
            { u"subtitle"_s, node.subtitle.value_or(QString()) },
            { u"symbol"_s, node.symbol },
            { u"status"_s, Presentation::statusRawValue(node.status) },
            { u"rows"_s, Presentation::rowsForQml(node.rows) },
        };
    case DepthRole:
        return depth;
    case IndentRole:
        return Presentation::deviceIndent(depth);
    default:
        return {};
    }
}

QHash<int, QByteArray> DeviceListModel::roleNames() const
{
    return { { IdRole, "deviceId" }, { NodeRole, "node" }, { DepthRole, "depth" }, { IndentRole, "indent" } };
}
