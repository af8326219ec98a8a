#pragma once

#include "core/info_row.h"

#include <QList>
#include <QString>

#include <optional>

// The machine's built-in parts as the I/O registry shows them.
struct BuiltInComponents
{
    struct Component
    {
        bool present = false;
        std::optional<QString> detail;
        QList<InfoRow> rows;

        // Not present, no detail, no rows.
        static Component absent() { return {}; }

        friend bool operator==(const Component &, const Component &) = default;
    };

    enum class ComponentID { touchID, keyboard, keyboardBacklight, trackpad, haptics, lidAngle, wifi, smc };

    struct Listed
    {
        ComponentID id;
        QString title;
        QString symbol;
        Component component;
    };

    Component touchID;
    Component trackpad;
    Component haptics;
    Component keyboard;
    Component keyboardBacklight;
    Component lidAngle;
    Component wifi;
    Component smc;
    std::optional<qint64> trackpadCriticalErrors;
    qint64 sensorInterfaces = 0;
    bool isPortable = false;

    // The eight components in the order of the components grid and of the report.
    QList<Listed> listed() const;

    friend bool operator==(const BuiltInComponents &, const BuiltInComponents &) = default;
};

QString componentIDRawValue(BuiltInComponents::ComponentID id);
std::optional<BuiltInComponents::ComponentID> componentIDFromRawValue(const QString &rawValue);
