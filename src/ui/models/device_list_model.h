#pragma once

#include "core/device_node.h"

#include <QAbstractListModel>
#include <QList>
#include <QtQml/qqmlregistration.h>

#include <utility>

// The cards of a device section: the root nodes walked depth first (each node followed by
// its children one level deeper), one row per card, with the indentation of its depth.
class DeviceListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Device lists come from the application state.")

    // Number of cards.
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        IdRole = Qt::UserRole + 1,
        // The card's content: name, subtitle ("" when none), symbol, status (raw value),
        // rows (list of label/value maps), as DeviceCard reads it.
        NodeRole,
        DepthRole,
        // Leading indentation of the card, in points.
        IndentRole,
    };
    Q_ENUM(Role)

    explicit DeviceListModel(QObject *parent = nullptr);

    // Replaces the cards by the walk of these root nodes; nothing happens when they are the
    // same nodes as now.
    void setRoots(const QList<DeviceNode> &roots);
    const QList<DeviceNode> &roots() const { return m_roots; }
    int count() const { return int(m_entries.size()); }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    QList<DeviceNode> m_roots;
    QList<std::pair<DeviceNode, int>> m_entries;
};
