#pragma once

#include "core/battery_info.h"
#include "core/built_in_components.h"
#include "core/device_node.h"
#include "core/storage_volume.h"
#include "diagnostics/diagnostics_report.h"

#include <QMetaType>
#include <QString>

#include <optional>

Q_DECLARE_METATYPE(CheckStatus)
Q_DECLARE_METATYPE(BatteryInfo)
Q_DECLARE_METATYPE(StorageVolume)
Q_DECLARE_METATYPE(BuiltInComponents)

// The nodes of one device section, as a test table column. A wrapper without equality:
// the metatype system cannot decide whether a list of self-containing nodes compares.
struct DeviceSection
{
    QList<DeviceNode> nodes;
};
Q_DECLARE_METATYPE(DeviceSection)

namespace CheckTest {

// Stands for an absent optional text in expected-value columns.
inline QString none()
{
    return QStringLiteral("(aucun)");
}

inline QString shown(const std::optional<QString> &text)
{
    return text ? *text : none();
}

inline QString shown(const std::optional<AppSection> &section)
{
    return section ? AppSections::rawValue(*section) : none();
}

// Readable level names for failure messages.
inline QString shown(CheckStatus status)
{
    switch (status) {
    case CheckStatus::ok:
        return QStringLiteral("ok");
    case CheckStatus::attention:
        return QStringLiteral("attention");
    case CheckStatus::alerte:
        return QStringLiteral("alerte");
    case CheckStatus::info:
        return QStringLiteral("info");
    case CheckStatus::nonApplicable:
        return QStringLiteral("nonApplicable");
    }
    return {};
}

inline DeviceNode node(const QString &name, DeviceStatus status, std::optional<QString> subtitle = std::nullopt,
                       QList<DeviceNode> children = {})
{
    DeviceNode made;
    made.name = name;
    made.status = status;
    made.subtitle = std::move(subtitle);
    made.children = std::move(children);
    return made;
}

inline DeviceSection nodes(QList<DeviceNode> list = {})
{
    return {std::move(list)};
}

inline BuiltInComponents::Component present(std::optional<QString> detail = std::nullopt)
{
    BuiltInComponents::Component component;
    component.present = true;
    component.detail = std::move(detail);
    return component;
}

} // namespace CheckTest
