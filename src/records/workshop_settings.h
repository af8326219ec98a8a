#pragma once

#include "records/workshop_header.h"
#include "sources/preference_store.h"

#include <QObject>
#include <QSettings>
#include <QString>

#include <memory>
#include <optional>

// The workshop's name, phone and address, kept in the user's preferences under the keys
// "workshop.name", "workshop.phone" and "workshop.address" exactly as typed (on macOS in the
// application's own defaults domain). Read once at creation; every change is written at
// once. Main thread only.
class WorkshopSettings : public QObject
{
    Q_OBJECT

    // The workshop's name as typed.
    Q_PROPERTY(QString workshopName READ workshopName WRITE setWorkshopName NOTIFY workshopNameChanged)
    // The workshop's phone number as typed.
    Q_PROPERTY(QString workshopPhone READ workshopPhone WRITE setWorkshopPhone NOTIFY workshopPhoneChanged)
    // The workshop's address as typed.
    Q_PROPERTY(QString workshopAddress READ workshopAddress WRITE setWorkshopAddress NOTIFY workshopAddressChanged)

public:
    // Over the user's preferences of the application.
    explicit WorkshopSettings(QObject *parent = nullptr);
    // Over the given store.
    explicit WorkshopSettings(std::unique_ptr<PreferenceStore> store, QObject *parent = nullptr);
    // Over Qt's settings (a test's ini file, for instance).
    explicit WorkshopSettings(std::unique_ptr<QSettings> settings, QObject *parent = nullptr);
    ~WorkshopSettings() override;

    QString workshopName() const { return m_name; }
    QString workshopPhone() const { return m_phone; }
    QString workshopAddress() const { return m_address; }

    void setWorkshopName(const QString &name);
    void setWorkshopPhone(const QString &phone);
    void setWorkshopAddress(const QString &address);

    // The header of exported reports, computed from the current fields; none while the
    // trimmed name is empty.
    std::optional<WorkshopHeader> header() const;

Q_SIGNALS:
    void workshopNameChanged();
    void workshopPhoneChanged();
    void workshopAddressChanged();

private:
    void store(const QString &key, QString &field, const QString &value, void (WorkshopSettings::*changed)());

    std::unique_ptr<PreferenceStore> m_store;
    QString m_name;
    QString m_phone;
    QString m_address;
};

// The header for these three fields as typed: the trimmed name, and the trimmed phone and
// address that are not empty, joined by " · ". None when the trimmed name is empty.
std::optional<WorkshopHeader> workshopHeader(const QString &name, const QString &phone, const QString &address);
