#pragma once

#include <QSettings>
#include <QString>

#include <memory>
#include <optional>

// The user's preferences of the application: texts under keys such as "workshop.name".
// On macOS they live in the application's own defaults domain (its bundle identifier), where
// `defaults read` and managed-Mac profiles find them; elsewhere in Qt's settings.
class PreferenceStore
{
public:
    virtual ~PreferenceStore() = default;
    virtual std::optional<QString> text(const QString &key) const = 0;
    // Written at once.
    virtual void setText(const QString &key, const QString &value) = 0;
};

// Over Qt's settings (the platform's store, or a test's ini file).
class SettingsPreferences final : public PreferenceStore
{
public:
    explicit SettingsPreferences(std::unique_ptr<QSettings> settings) : m_settings(std::move(settings)) { }

    std::optional<QString> text(const QString &key) const override
    {
        const QVariant value = m_settings->value(key);
        return value.isValid() ? std::optional<QString>(value.toString()) : std::nullopt;
    }
    void setText(const QString &key, const QString &value) override
    {
        m_settings->setValue(key, value);
        m_settings->sync();
    }

private:
    std::unique_ptr<QSettings> m_settings;
};
