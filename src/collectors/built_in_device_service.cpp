#include "collectors/built_in_device_service.h"

#include "core/formatting.h"
#include "core/texts.h"
#include "sources/io_registry.h"
#include "sources/property_access.h"

using namespace Qt::StringLiterals;

namespace BuiltInDeviceService {

namespace {

constexpr qint64 sensorUsagePage = 0x20;
constexpr qint64 lidAngleUsage = 0x8A;
constexpr qint64 vendorUsagePage = 0xFF00;
constexpr qint64 vendorSensorUsagePage = 0xFF0C;

class NoRegistry final : public RegistrySource
{
public:
    QList<PropertyDictionary> servicesOfClass(const QString &) const override { return {}; }
    QList<PropertyDictionary> servicesNamed(const QString &) const override { return {}; }
};

std::optional<QString> integerText(const PropertyDictionary &dict, const QString &key)
{
    const std::optional<qint64> value = Property::integer(dict, key);
    return value ? std::optional(QString::number(*value)) : std::nullopt;
}

std::optional<QString> stringProperty(const PropertyDictionary &dict, const QString &key)
{
    return Property::string(dict, key);
}

Component present(const QString &detail, QList<InfoRow> rows)
{
    return Component{true, detail, std::move(rows)};
}

// "0x20": two upper-case hexadecimal digits at least.
QString hexByte(qint64 value)
{
    return u"0x"_s + QString::number(value, 16).toUpper().rightJustified(2, u'0');
}

} // namespace

Component touchID(const RegistrySource &registry)
{
    const std::optional<PropertyDictionary> sensor = IORegistry::first(registry, u"AppleBiometricSensor"_s);
    if (!sensor)
        return Component::absent();
    QList<InfoRow> rows;
    appendRow(rows, localized("Pilote"), stringProperty(*sensor, u"IOClass"_s));
    appendRow(rows, localized("Identifiant du capteur"), integerText(*sensor, u"SensorID"_s));
    appendRow(rows, localized("Version du micrologiciel"), integerText(*sensor, u"patch-version"_s));
    appendRow(rows, localized("Pris en charge par le système"), Property::yesNo(*sensor, u"DeviceOpenedByEventSystem"_s));
    return present(localized("Détecté"), rows);
}

Component keyboard(const RegistrySource &registry)
{
    const std::optional<PropertyDictionary> driver = IORegistry::first(registry, u"AppleHIDKeyboardEventDriverV2"_s);
    if (!driver)
        return Component::absent();
    const std::optional<QString> layout = localizedLayout(stringProperty(*driver, u"KeyboardLanguage"_s));
    QList<InfoRow> rows;
    appendRow(rows, localized("Modèle"), stringProperty(*driver, u"Product"_s));
    appendRow(rows, localized("Disposition"), layout);
    appendRow(rows, localized("Code pays"), integerText(*driver, u"CountryCode"_s));
    appendRow(rows, localized("Intégré"), Property::yesNo(*driver, u"Built-In"_s));
    appendRow(rows, localized("Actif"), Property::yesNo(*driver, u"KeyboardEnabled"_s));
    appendRow(rows, localized("Touche Échap"), Property::yesNo(*driver, u"HIDKeyboardSupportsEscKey"_s));
    appendRow(rows, localized("Touche Globe"), Property::yesNo(*driver, u"SupportsGlobeKey"_s));
    appendRow(rows, localized("Touche Siri"), Property::yesNo(*driver, u"SupportsSiriKey"_s));
    appendRow(rows, localized("Liaison"), stringProperty(*driver, u"Transport"_s));
    // A reported language is the detail even when it is empty.
    return present(layout ? *layout : localized("Détecté"), rows);
}

Component keyboardBacklight(const QList<PropertyDictionary> &hidInterfaces)
{
    for (const PropertyDictionary &hid : hidInterfaces) {
        if (stringProperty(hid, u"Product"_s) != u"Keyboard Backlight"_s)
            continue;
        QList<InfoRow> rows;
        appendRow(rows, localized("Interface"), stringProperty(hid, u"Product"_s));
        appendRow(rows, localized("Liaison"), stringProperty(hid, u"Transport"_s));
        return present(localized("Présent"), rows);
    }
    return Component::absent();
}

Component lidAngle(const QList<PropertyDictionary> &hidInterfaces)
{
    for (const PropertyDictionary &hid : hidInterfaces) {
        if (Property::integer(hid, u"PrimaryUsagePage"_s) != sensorUsagePage
            || Property::integer(hid, u"PrimaryUsage"_s) != lidAngleUsage)
            continue;
        QList<InfoRow> rows;
        rows.append(InfoRow(localized("Page d'usage HID"), localized("%1 (capteurs)").arg(hexByte(sensorUsagePage))));
        rows.append(InfoRow(localized("Usage HID"), hexByte(lidAngleUsage)));
        appendRow(rows, localized("Liaison"), stringProperty(hid, u"Transport"_s));
        return present(localized("Détecté"), rows);
    }
    return Component::absent();
}

Component haptics(const RegistrySource &registry)
{
    const std::optional<PropertyDictionary> actuator = IORegistry::first(registry, u"AppleActuatorDevice"_s);
    if (!actuator)
        return Component::absent();
    QList<InfoRow> rows;
    appendRow(rows, localized("Révision de l'actionneur"), integerText(*actuator, u"ActuatorRevision"_s));
    appendRow(rows, localized("Liaison"), stringProperty(*actuator, u"Transport"_s));
    return present(localized("Actif"), rows);
}

Component wifi(const RegistrySource &registry)
{
    static const QStringList candidates{u"AppleBCMWLANCore"_s, u"AirPortBrcmNIC"_s, u"AirPortBrcm4360"_s,
                                        u"AppleIntelWifiAdapter"_s};
    const std::optional<IORegistry::ClassMatch> match = IORegistry::firstAvailable(registry, candidates);
    if (!match)
        return Component::absent();
    const PropertyDictionary &chipProperties = match->properties;
    // Every candidate reports a Broadcom-style chip number, so the prefix is the same for all.
    const std::optional<qint64> chipSet = Property::integer(chipProperties, u"ChipSet"_s);
    const std::optional<QString> chip = chipSet ? std::optional(u"BCM"_s + QString::number(*chipSet)) : std::nullopt;
    QList<InfoRow> rows;
    appendRow(rows, localized("Puce"), chip);
    appendRow(rows, localized("Pilote"), match->className);
    appendRow(rows, localized("Micrologiciel chargé"), Property::yesNo(chipProperties, u"FirmwareLoaded"_s));
    appendRow(rows, localized("Version du micrologiciel"),
              shortFirmwareVersion(stringProperty(chipProperties, u"FirmwareVersion"_s)));
    return present(chip ? *chip : localized("Détectée"), rows);
}

Component smc(const RegistrySource &registry)
{
    const std::optional<PropertyDictionary> controller = IORegistry::first(registry, u"AppleSMC"_s);
    if (!controller)
        return Component::absent();
    QList<InfoRow> rows;
    appendRow(rows, localized("Génération"), integerText(*controller, u"Generation"_s));
    appendRow(rows, localized("Pilote"), stringProperty(*controller, u"IOClass"_s));
    return present(localized("Actif"), rows);
}

std::pair<Component, std::optional<qint64>> trackpad(const RegistrySource &registry)
{
    const std::optional<PropertyDictionary> device = IORegistry::first(registry, u"AppleMultitouchDevice"_s);
    if (!device)
        return {Component::absent(), std::nullopt};
    const std::optional<qint64> criticalErrors = Property::integer(*device, u"Critical Errors"_s);
    const std::optional<qint64> columns = Property::integer(*device, u"Sensor Columns"_s);
    const std::optional<qint64> sensorRows = Property::integer(*device, u"Sensor Rows"_s);
    const std::optional<QString> grid = columns && sensorRows
        ? std::optional(QString::number(*columns) + u" × "_s + QString::number(*sensorRows))
        : std::nullopt;

    QList<InfoRow> rows;
    appendRow(rows, localized("Modèle"), stringProperty(*device, u"Product"_s));
    appendRow(rows, localized("Fabricant"), stringProperty(*device, u"Manufacturer"_s));
    appendRow(rows, localized("Intégré"), Property::yesNo(*device, u"MT Built-In"_s));
    appendRow(rows, localized("Surface tactile"), surfaceSize(*device));
    appendRow(rows, localized("Grille de capteurs"), grid);
    appendRow(rows, localized("Force Touch"), Property::yesNo(*device, u"ForceSupported"_s));
    appendRow(rows, localized("Retour haptique"), Property::yesNo(*device, u"ActuationSupported"_s));
    appendRow(rows, localized("Erreurs critiques"), integerText(*device, u"Critical Errors"_s));
    appendRow(rows, localized("Réinitialisations"), integerText(*device, u"ResetCount"_s));
    appendRow(rows, localized("Liaison"), stringProperty(*device, u"Transport"_s));

    // Only zero takes the singular, on purpose.
    QString detail;
    if (!criticalErrors)
        detail = localized("Détecté");
    else if (*criticalErrors == 0)
        detail = localized("0 erreur");
    else
        detail = localized("%1 erreurs").arg(*criticalErrors);
    return {present(detail, rows), criticalErrors};
}

qint64 sensorInterfaceCount(const QList<PropertyDictionary> &hidInterfaces)
{
    qint64 count = 0;
    for (const PropertyDictionary &hid : hidInterfaces) {
        const std::optional<qint64> page = Property::integer(hid, u"PrimaryUsagePage"_s);
        if (page == sensorUsagePage || page == vendorUsagePage || page == vendorSensorUsagePage)
            ++count;
    }
    return count;
}

std::optional<QString> surfaceSize(const PropertyDictionary &trackpadProperties)
{
    const std::optional<qint64> width = Property::integer(trackpadProperties, u"Sensor Surface Width"_s);
    const std::optional<qint64> height = Property::integer(trackpadProperties, u"Sensor Surface Height"_s);
    if (!width || !height)
        return std::nullopt;
    return Format::fixed(double(*width) / 100.0, 1) + u" × "_s + Format::fixed(double(*height) / 100.0, 1)
        + u" mm"_s;
}

std::optional<QString> localizedLayout(const std::optional<QString> &keyboardLanguage)
{
    if (!keyboardLanguage)
        return std::nullopt;
    if (*keyboardLanguage == u"French"_s)
        return localized("Français");
    if (*keyboardLanguage == u"English"_s)
        return localized("Anglais");
    if (*keyboardLanguage == u"German"_s)
        return localized("Allemand");
    if (*keyboardLanguage == u"Spanish"_s)
        return localized("Espagnol");
    if (*keyboardLanguage == u"Italian"_s)
        return localized("Italien");
    return keyboardLanguage;
}

std::optional<QString> shortFirmwareVersion(const std::optional<QString> &firmwareVersion)
{
    if (!firmwareVersion)
        return std::nullopt;
    const QString marker = u"version "_s;
    const qsizetype found = firmwareVersion->indexOf(marker);
    if (found < 0)
        return firmwareVersion;
    const qsizetype start = found + marker.size();
    qsizetype end = start;
    while (end < firmwareVersion->size() && !firmwareVersion->at(end).isSpace())
        ++end;
    return firmwareVersion->mid(start, end - start);
}

BuiltInComponents load(const Platform &platform)
{
    static const NoRegistry noRegistry;
    const RegistrySource &registry = platform.registry ? *platform.registry : noRegistry;
    const QList<PropertyDictionary> hidInterfaces = IORegistry::entriesOfClass(registry, u"IOHIDInterface"_s);

    BuiltInComponents components;
    components.touchID = touchID(registry);
    components.keyboard = keyboard(registry);
    components.keyboardBacklight = keyboardBacklight(hidInterfaces);
    components.lidAngle = lidAngle(hidInterfaces);
    components.haptics = haptics(registry);
    components.wifi = wifi(registry);
    components.smc = smc(registry);
    std::tie(components.trackpad, components.trackpadCriticalErrors) = trackpad(registry);
    components.sensorInterfaces = sensorInterfaceCount(hidInterfaces);
    // A trackpad or a battery makes a portable; the battery is probed only when needed.
    components.isPortable = components.trackpad.present
        || IORegistry::first(registry, u"AppleSmartBattery"_s).has_value();
    return components;
}

} // namespace BuiltInDeviceService
