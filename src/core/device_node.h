#pragma once

#include "core/info_row.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>
#include <utility>

enum class DeviceStatus { connected, disconnected, warning, neutral };

// The badge text of a status; a neutral device shows no badge.
std::optional<QString> deviceStatusLabel(DeviceStatus status);

// One entry of a device section, possibly with children (a USB hub and what hangs on it).
struct DeviceNode
{
    QUuid id = QUuid::createUuid();
    QString name;
    std::optional<QString> subtitle;
    QString symbol;
    DeviceStatus status = DeviceStatus::neutral;
    QList<InfoRow> rows;
    QList<DeviceNode> children; // absent and empty are the same
    bool isBuiltIn = false;

    // The node and all its descendants in depth-first pre-order, each with its depth:
    // the node itself at `depth`, then each child's own walk at depth + 1.
    QList<std::pair<DeviceNode, int>> flattened(int depth = 0) const;

    friend bool operator==(const DeviceNode &, const DeviceNode &) = default;
};

// The walk of every top-level node from depth 0, concatenated.
QList<std::pair<DeviceNode, int>> flattenedAll(const QList<DeviceNode> &roots);
