#include "records/workshop_settings.h"

#include "platform/factory/platform_factory.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

const QString nameKey = u"workshop.name"_s;
const QString phoneKey = u"workshop.phone"_s;
const QString addressKey = u"workshop.address"_s;

} // namespace

std::optional<WorkshopHeader> workshopHeader(const QString &name, const QString &phone, const QString &address)
{
    // QString::trimmed removes Unicode white space and line breaks, no-break spaces included.
    const QString trimmedName = name.trimmed();
    if (trimmedName.isEmpty())
        return std::nullopt;
    QStringList details;
    for (const QString &field : {phone, address}) {
        const QString trimmed = field.trimmed();
        if (!trimmed.isEmpty())
            details.append(trimmed);
    }
    WorkshopHeader header{trimmedName, std::nullopt};
    if (!details.isEmpty())
        header.details = details.join(u" · "_s);
    return header;
}

WorkshopSettings::WorkshopSettings(QObject *parent) : WorkshopSettings(PlatformFactory::preferences(), parent) { }

WorkshopSettings::WorkshopSettings(std::unique_ptr<QSettings> settings, QObject *parent)
    : WorkshopSettings(std::make_unique<SettingsPreferences>(std::move(settings)), parent)
{
}

WorkshopSettings::WorkshopSettings(std::unique_ptr<PreferenceStore> store, QObject *parent)
    : QObject(parent),
      m_store(std::move(store)),
      m_name(m_store->text(nameKey).value_or(QString())),
      m_phone(m_store->text(phoneKey).value_or(QString())),
      m_address(m_store->text(addressKey).value_or(QString()))
{
}

WorkshopSettings::~WorkshopSettings() = default;

void WorkshopSettings::store(const QString &key, QString &field, const QString &value,
                             void (WorkshopSettings::*changed)())
{
    // Every assignment is written, one write per change; only a new text is published.
    m_store->setText(key, value);
    if (field == value)
        return;
    field = value;
    Q_EMIT(this->*changed)();
}

void WorkshopSettings::setWorkshopName(const QString &name)
{
    store(nameKey, m_name, name, &WorkshopSettings::workshopNameChanged);
}

void WorkshopSettings::setWorkshopPhone(const QString &phone)
{
    store(phoneKey, m_phone, phone, &WorkshopSettings::workshopPhoneChanged);
}

void WorkshopSettings::setWorkshopAddress(const QString &address)
{
    store(addressKey, m_address, address, &WorkshopSettings::workshopAddressChanged);
}

std::optional<WorkshopHeader> WorkshopSettings::header() const
{
    return workshopHeader(m_name, m_phone, m_address);
}
