#pragma once

#include "core/app_section.h"
#include "ui/models/device_list_model.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>

class AppState;

// What the detail area needs to know about one section, kept up to date from the
// application state: whether it is loading, its failure text, whether it has anything to
// show, and for a device section its cards.
class SectionState : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Section states belong to the main window.")

    // The section's raw value ("overview", "usb"…).
    Q_PROPERTY(QString section READ sectionRawValue CONSTANT)
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString symbol READ symbol CONSTANT)
    // Shown when the section has nothing to show.
    Q_PROPERTY(QString emptyMessage READ emptyMessage CONSTANT)
    Q_PROPERTY(bool isDeviceSection READ isDeviceSection CONSTANT)
    // The section's collector (any data collector, for overview and diagnostics) is running.
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY changed)
    // The failure message of the section's last load; empty when there is none.
    Q_PROPERTY(QString failure READ failureText NOTIFY changed)
    // The section has nothing to show.
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY changed)
    // The battery section of a machine without a battery, once it answered: the detail shows
    // the "no battery" message instead of the scaffold.
    Q_PROPERTY(bool showsNoBatteryMessage READ showsNoBatteryMessage NOTIFY changed)
    // The cards of a device section; null for the other sections.
    Q_PROPERTY(DeviceListModel *devices READ devices CONSTANT)

public:
    SectionState(AppSection section, const AppState &state, QObject *parent = nullptr);

    AppSection section() const { return m_section; }
    QString sectionRawValue() const { return AppSections::rawValue(m_section); }
    QString title() const { return AppSections::title(m_section); }
    QString symbol() const { return AppSections::symbol(m_section); }
    QString emptyMessage() const { return AppSections::emptyMessage(m_section); }
    bool isDeviceSection() const { return AppSections::isDeviceSection(m_section); }

    bool isLoading() const;
    std::optional<QString> failure() const;
    QString failureText() const { return failure().value_or(QString()); }
    bool isEmpty() const;
    bool showsNoBatteryMessage() const;
    DeviceListModel *devices() const { return m_devices; }

Q_SIGNALS:
    void changed();

private:
    void update();

    const AppSection m_section;
    const AppState &m_state;
    DeviceListModel *m_devices = nullptr;
};

// Whether a section has nothing to show in the state's current records.
bool sectionIsEmpty(AppSection section, const AppState &state);
