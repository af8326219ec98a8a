#pragma once

#include "core/app_section.h"
#include "core/device_node.h"

#include <QList>
#include <QMap>

// The device lists of the seven device sections, each under its own section.
using Inventory = QMap<AppSection, QList<DeviceNode>>;
