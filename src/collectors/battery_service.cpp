#include "collectors/battery_service.h"

#include "core/formatting.h"
#include "core/texts.h"
#include "sources/io_registry.h"
#include "sources/property_access.h"
#include "sources/system_profiler.h"
#include "sources/vocabulary.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace BatteryService {

namespace {

// The registry keeps 64-bit numbers without a sign and the system reads them back as
// signed: a value past the signed range is a negative one (a discharge current).
std::optional<qint64> integerProperty(const PropertyDictionary &dict, const QString &key)
{
    const auto it = dict.constFind(key);
    if (it == dict.constEnd() || PropertyValues::kindOf(*it) != PropertyValues::Kind::integer)
        return std::nullopt;
    if (it->typeId() == QMetaType::ULongLong || it->typeId() == QMetaType::ULong)
        return qint64(it->toULongLong());
    return it->toLongLong();
}

bool flag(const PropertyDictionary &dict, const QString &key)
{
    return Property::boolean(dict, key).value_or(false);
}

bool reportsNoBattery(const PropertyDictionary &smartBattery)
{
    return Property::boolean(smartBattery, u"BatteryInstalled"_s) == false;
}

int chargePercent(const PropertyDictionary &smartBattery)
{
    const qint64 charge = integerProperty(smartBattery, u"CurrentCapacity"_s).value_or(0);
    return int(std::clamp<qint64>(charge, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

std::optional<double> temperatureCelsius(const PropertyDictionary &smartBattery)
{
    const std::optional<qint64> hundredths = integerProperty(smartBattery, u"Temperature"_s);
    return hundredths ? std::optional(double(*hundredths) / 100.0) : std::nullopt;
}

std::optional<PropertyDictionary> healthInformation(const QList<PropertyDictionary> &powerItems)
{
    const std::optional<PropertyDictionary> battery = batteryInformation(powerItems);
    return battery ? PropertyValues::dictionary(*battery, u"sppower_battery_health_info"_s) : std::nullopt;
}

std::optional<PropertyDictionary> itemNamed(const QList<PropertyDictionary> &items, const QString &name)
{
    for (const PropertyDictionary &item : items) {
        if (Property::text(item, u"_name"_s) == name)
            return item;
    }
    return std::nullopt;
}

// A whole unsigned decimal number made of ASCII digits only.
std::optional<qint64> plainDecimal(const QString &digits)
{
    if (digits.isEmpty())
        return std::nullopt;
    qint64 value = 0;
    for (const QChar c : digits) {
        if (c < u'0' || c > u'9')
            return std::nullopt;
        const int digit = c.unicode() - u'0';
        if (value > (std::numeric_limits<qint64>::max() - digit) / 10)
            return std::nullopt;
        value = value * 10 + digit;
    }
    return value;
}

bool isAllDigits(const QString &word)
{
    return !word.isEmpty() && std::all_of(word.cbegin(), word.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

QString percentText(qint64 percent)
{
    return QString::number(percent) + u" %"_s;
}

QString currentText(qint64 milliamperes)
{
    return (milliamperes > 0 ? u"+"_s : QString()) + QString::number(milliamperes) + u" mA"_s;
}

// Everything the battery lines are built from.
struct Reading
{
    PropertyDictionary registry;
    BatteryInfo info;
    std::optional<qint64> presentCapacity;
    std::optional<qint64> designCapacity;
    QList<PropertyDictionary> powerItems;
    std::optional<qint64> officialHealth;
    std::optional<qint64> computedHealth;
    QDate today;
};

QList<InfoRow> batteryRows(const Reading &reading)
{
    const BatteryInfo &info = reading.info;
    const PropertyDictionary &registry = reading.registry;
    QList<InfoRow> rows;
    rows.append(InfoRow(localized("Niveau de charge"), percentText(info.chargePercent), InfoRowKey::chargeLevel));
    rows.append(InfoRow(localized("État"), chargingLabel(info.isCharging, info.isPluggedIn, info.isFullyCharged),
                        InfoRowKey::powerState));
    appendRow(rows, info.isCharging ? localized("Charge complète dans") : localized("Autonomie restante"),
              info.timeRemaining);
    if (info.healthPercent)
        appendRow(rows, localized("Capacité maximale"), percentText(*info.healthPercent));
    appendRow(rows, localized("État de la batterie"), info.condition);
    if (info.cycleCount)
        appendRow(rows, localized("Cycles de charge"), QString::number(*info.cycleCount));
    if (reading.presentCapacity && reading.designCapacity)
        appendRow(rows, localized("Capacité"),
                  localized("%1 mAh sur %2 mAh d'origine").arg(*reading.presentCapacity).arg(*reading.designCapacity));
    appendRow(rows, localized("Capacité mesurée"), capacityGapText(reading.officialHealth, reading.computedHealth));
    if (info.manufactureDate)
        appendRow(rows, localized("Âge"), ageText(*info.manufactureDate, reading.today));
    if (info.temperatureCelsius)
        appendRow(rows, localized("Température"), Format::fixed(*info.temperatureCelsius, 1) + u" °C"_s);
    std::optional<qint64> millivolts = integerProperty(registry, u"AppleRawBatteryVoltage"_s);
    if (!millivolts)
        millivolts = integerProperty(registry, u"Voltage"_s);
    if (millivolts)
        appendRow(rows, localized("Tension"), Format::fixed(double(*millivolts) / 1000.0, 2) + u" V"_s);
    const std::optional<qint64> amperage = integerProperty(registry, u"Amperage"_s);
    if (amperage && *amperage != 0)
        appendRow(rows, localized("Courant"), currentText(*amperage));
    appendRow(rows, localized("Numéro de série"), Property::string(registry, u"Serial"_s));
    appendRow(rows, localized("Contrôleur"), Property::string(registry, u"DeviceName"_s));
    rows.append(cellProvenanceRows(registry));
    rows.append(adapterRows(reading.powerItems));
    return rows;
}

QList<PropertyDictionary> powerReport(const Platform &platform)
{
    // A failed profiler run costs only the lines it would have given.
    if (!platform.profiler)
        return {};
    const auto answer = SystemProfiler::items(*platform.profiler, u"SPPowerDataType"_s);
    if (const auto *items = std::get_if<QList<PropertyDictionary>>(&answer))
        return *items;
    return {};
}

// Since macOS 27 the capacities and the temperature are no longer at the top of the battery's
// properties: they sit in its BatteryData dictionary and in the battery pack's own service.
// Each missing value is taken from there, so that every reader finds it where it always was.
void fillMovedValues(PropertyDictionary &smartBattery, const RegistrySource &registry)
{
    const PropertyDictionary own = PropertyValues::dictionary(smartBattery, u"BatteryData"_s).value_or(PropertyDictionary());
    const std::optional<PropertyDictionary> packService = IORegistry::first(registry, u"AppleSmartBatteryPack"_s);
    const PropertyDictionary pack = packService ? PropertyValues::dictionary(*packService, u"BatteryData"_s)
                                                      .value_or(PropertyDictionary())
                                                : PropertyDictionary();
    // Where each value moved, in order of preference.
    const QList<std::pair<QString, QList<std::pair<const PropertyDictionary *, QString>>>> moves{
        {u"NominalChargeCapacity"_s, {{&own, u"NominalChargeCapacity"_s}, {&pack, u"NominalChargeCapacity"_s}}},
        {u"DesignCapacity"_s, {{&own, u"DesignCapacity"_s}, {&pack, u"DesignCapacity"_s}}},
        {u"AppleRawMaxCapacity"_s, {{&pack, u"AppleRawMaxCapacity"_s}, {&own, u"FullChargeCapacity"_s}}},
        {u"AppleRawCurrentCapacity"_s, {{&pack, u"AppleRawCurrentCapacity"_s}}},
        {u"Temperature"_s, {{&pack, u"Temperature"_s}}},
        {u"CycleCount"_s, {{&pack, u"CycleCount"_s}}},
    };
    for (const auto &[key, places] : moves) {
        if (integerProperty(smartBattery, key))
            continue;
        for (const auto &[dictionary, movedKey] : places) {
            if (integerProperty(*dictionary, movedKey)) {
                smartBattery.insert(key, dictionary->value(movedKey));
                break;
            }
        }
    }
}

std::optional<PropertyDictionary> installedBattery(const Platform &platform)
{
    if (!platform.registry)
        return std::nullopt;
    std::optional<PropertyDictionary> smartBattery = smartBatteryProperties(*platform.registry);
    if (!smartBattery || reportsNoBattery(*smartBattery))
        return std::nullopt;
    fillMovedValues(*smartBattery, *platform.registry);
    return smartBattery;
}

} // namespace

const QHash<QString, QString> &knownCellMakers()
{
    static const QHash<QString, QString> table{
        {u"ATL"_s, u"Amperex (ATL)"_s},
        {u"SMP"_s, u"Simplo (SMP)"_s},
        {u"SDI"_s, u"Samsung SDI"_s},
        {u"DSY"_s, u"Desay (DSY)"_s},
        {u"SWD"_s, u"Sunwoda (SWD)"_s},
        {u"LGC"_s, u"LG Chem"_s},
        {u"SON"_s, u"Sony"_s},
    };
    return table;
}

std::optional<PropertyDictionary> smartBatteryProperties(const RegistrySource &registry)
{
    return IORegistry::first(registry, u"AppleSmartBattery"_s);
}

std::optional<PropertyDictionary> internalBatteryDescription(const PowerSourceList &powerSources)
{
    for (const PropertyDictionary &description : powerSources.descriptions()) {
        if (Property::string(description, u"Type"_s) == u"InternalBattery"_s)
            return description;
    }
    return std::nullopt;
}

std::optional<PropertyDictionary> batteryInformation(const QList<PropertyDictionary> &powerItems)
{
    return itemNamed(powerItems, u"spbattery_information"_s);
}

std::optional<qint64> officialHealthPercent(const QList<PropertyDictionary> &powerItems)
{
    const std::optional<PropertyDictionary> health = healthInformation(powerItems);
    if (!health)
        return std::nullopt;
    const std::optional<QString> maximum = Property::text(*health, u"sppower_battery_health_maximum_capacity"_s);
    if (!maximum)
        return std::nullopt;
    // Numeric characters of any script are kept, but only plain digits then parse.
    QString numeric;
    for (const QChar c : *maximum) {
        if (c.isNumber())
            numeric += c;
    }
    return plainDecimal(numeric);
}

namespace {

// The smart-battery packed date: bits 15–9 the year since 1980, 8–5 the month, 4–0 the day.
std::optional<QDate> packedDate(qint64 value)
{
    const QDate date(1980 + int(value >> 9), int((value >> 5) & 0xF), int(value & 0x1F));
    return date.isValid() ? std::optional(date) : std::nullopt;
}

// Six ASCII digits YYMMDD in the integer's bytes, least significant first, then zeros.
std::optional<QDate> digitsDate(qint64 value)
{
    QString digits;
    for (int shift = 0; shift < 64; shift += 8) {
        const int byte = int((quint64(value) >> shift) & 0xFF);
        if (byte == 0)
            break;
        if (byte < '0' || byte > '9')
            return std::nullopt;
        digits += QChar(byte);
    }
    if (digits.size() != 6 || (quint64(value) >> 48) != 0)
        return std::nullopt;
    const QDate date(1992 + digits.left(2).toInt(), digits.mid(2, 2).toInt(), digits.mid(4, 2).toInt());
    return date.isValid() ? std::optional(date) : std::nullopt;
}

std::optional<QDate> dateFrom(std::optional<qint64> value)
{
    if (!value || *value <= 0)
        return std::nullopt;
    return *value <= 0xFFFF ? packedDate(*value) : digitsDate(*value);
}

} // namespace

std::optional<QDate> manufactureDate(const PropertyDictionary &smartBattery)
{
    const PropertyDictionary data = PropertyValues::dictionary(smartBattery, u"BatteryData"_s).value_or(PropertyDictionary());
    if (const std::optional<QDate> date = dateFrom(integerProperty(data, u"ManufactureDate"_s)))
        return date;
    return dateFrom(integerProperty(smartBattery, u"ManufactureDate"_s));
}

QString ageText(const QDate &made, const QDate &today)
{
    int years = today.year() - made.year();
    if (today.month() < made.month() || (today.month() == made.month() && today.day() < made.day()))
        --years;
    const QString age = years < 1 ? localized("moins d'un an")
                                  : years == 1 ? localized("1 an") : localized("%1 ans").arg(years);
    return localized("Fabriquée en %1 %2 (%3)").arg(Format::frenchMonthName(made.month())).arg(made.year()).arg(age);
}

std::optional<QString> capacityGapText(std::optional<qint64> official, std::optional<qint64> computed)
{
    if (!official || !computed || std::abs(*official - *computed) <= 3)
        return std::nullopt;
    return localized("%1 % (macOS indique %2 %) : macOS lisse sa capacité maximale sur de nombreuses charges, "
                     "alors que le rapport en mAh suit la dernière mesure de la batterie.")
        .arg(*computed)
        .arg(*official);
}

std::optional<qint64> computedHealthPercent(std::optional<qint64> presentCapacity, std::optional<qint64> designCapacity)
{
    if (!presentCapacity || !designCapacity || *designCapacity < 1)
        return std::nullopt;
    return Format::roundedPercent(double(*presentCapacity) / double(*designCapacity) * 100.0);
}

std::optional<QString> rawConditionValue(const std::optional<PropertyDictionary> &powerSource,
                                         const QList<PropertyDictionary> &powerItems)
{
    if (const std::optional<PropertyDictionary> health = healthInformation(powerItems)) {
        if (std::optional<QString> word = Property::text(*health, u"sppower_battery_health"_s))
            return word;
    }
    if (powerSource)
        return Property::string(*powerSource, u"BatteryHealth"_s);
    return std::nullopt;
}

std::optional<QString> conditionLabel(const std::optional<QString> &rawWord)
{
    if (!rawWord)
        return std::nullopt;
    const QString &word = *rawWord;
    if (word == u"Good"_s || word == u"Normal"_s)
        return localized("Normale");
    if (word == u"Fair"_s)
        return localized("Correcte");
    if (word == u"Poor"_s || word == u"Check Battery"_s)
        return localized("Vérifier la batterie");
    if (word == u"Service Battery"_s || word == u"Service Recommended"_s)
        return localized("Entretien recommandé");
    return word;
}

bool isConditionHealthy(const std::optional<QString> &rawWord)
{
    return !rawWord || *rawWord == u"Good"_s || *rawWord == u"Normal"_s;
}

std::optional<QString> timeRemainingLabel(const PropertyDictionary &smartBattery, bool isCharging)
{
    const std::optional<qint64> minutes
        = integerProperty(smartBattery, isCharging ? u"AvgTimeToFull"_s : u"AvgTimeToEmpty"_s);
    if (!minutes || *minutes < 1 || *minutes > 59999)
        return std::nullopt;
    const qint64 hours = *minutes / 60;
    const qint64 rest = *minutes % 60;
    if (*minutes >= 60)
        return localized("%1 h %2 min").arg(hours).arg(rest);
    return localized("%1 min").arg(rest);
}

QStringList manufacturerWords(const QByteArray &blob)
{
    const auto printable = [](char byte) { return byte >= 0x20 && byte <= 0x7E; };
    QStringList words;
    qsizetype i = 0;
    while (i < blob.size()) {
        const int length = quint8(blob.at(i));
        if (length >= 3 && length <= 8 && blob.size() - i - 1 >= length) {
            const QByteArray word = blob.mid(i + 1, length);
            if (std::all_of(word.cbegin(), word.cend(), printable)) {
                words.append(QString::fromLatin1(word));
                i += 1 + length;
                continue;
            }
        }
        ++i;
    }
    return words;
}

QList<InfoRow> cellProvenanceRows(const PropertyDictionary &smartBattery)
{
    const std::optional<QByteArray> blob = Property::data(smartBattery, u"ManufacturerData"_s);
    if (!blob)
        return {};
    const QStringList words = manufacturerWords(*blob);

    std::optional<QString> maker;
    for (const QString &word : words) {
        const auto known = knownCellMakers().constFind(word);
        if (known != knownCellMakers().constEnd()) {
            maker = *known;
            break;
        }
    }
    // Without a known code the last word names the maker, unless it is a number.
    if (!maker && !words.isEmpty() && !isAllDigits(words.last()))
        maker = localized("%1 — inconnu d'Apple").arg(words.last());

    std::optional<QString> lotCode;
    for (const QString &word : words) {
        if (word.size() >= 4 && isAllDigits(word)) {
            lotCode = word;
            break;
        }
    }

    QList<InfoRow> rows;
    appendRow(rows, localized("Fabricant des cellules"), maker);
    appendRow(rows, localized("Code de lot des cellules"), lotCode);
    return rows;
}

QList<InfoRow> adapterRows(const QList<PropertyDictionary> &powerItems)
{
    const std::optional<PropertyDictionary> charger = itemNamed(powerItems, u"sppower_ac_charger_information"_s);
    if (!charger)
        return {};
    const std::optional<QString> watts = Property::text(*charger, u"sppower_ac_charger_watts"_s);
    QList<InfoRow> rows;
    appendRow(rows, localized("Adaptateur secteur"), Property::text(*charger, u"sppower_ac_charger_name"_s));
    appendRow(rows, localized("Puissance"), watts ? std::optional(*watts + u" W"_s) : std::nullopt);
    appendRow(rows, localized("Fabricant de l'adaptateur"), Property::text(*charger, u"sppower_ac_charger_manufacturer"_s));
    appendRow(rows, localized("Adaptateur branché"),
              Vocabulary::humanize(Property::text(*charger, u"sppower_battery_charger_connected"_s)));
    return rows;
}

std::optional<BatteryInfo> load(const Platform &platform)
{
    const std::optional<PropertyDictionary> smartBattery = installedBattery(platform);
    if (!smartBattery)
        return std::nullopt;
    const std::optional<PropertyDictionary> powerSource
        = platform.powerSources ? internalBatteryDescription(*platform.powerSources) : std::nullopt;

    Reading reading;
    reading.registry = *smartBattery;
    reading.powerItems = powerReport(platform);
    reading.designCapacity = integerProperty(*smartBattery, u"DesignCapacity"_s);
    reading.presentCapacity = integerProperty(*smartBattery, u"NominalChargeCapacity"_s);
    if (!reading.presentCapacity)
        reading.presentCapacity = integerProperty(*smartBattery, u"AppleRawMaxCapacity"_s);

    BatteryInfo &info = reading.info;
    info.chargePercent = chargePercent(*smartBattery);
    info.isCharging = flag(*smartBattery, u"IsCharging"_s);
    info.isFullyCharged = flag(*smartBattery, u"FullyCharged"_s);
    info.isPluggedIn = flag(*smartBattery, u"ExternalConnected"_s);
    info.cycleCount = integerProperty(*smartBattery, u"CycleCount"_s);
    info.designCycleCount = integerProperty(*smartBattery, u"DesignCycleCount9C"_s);
    reading.officialHealth = officialHealthPercent(reading.powerItems);
    reading.computedHealth = computedHealthPercent(reading.presentCapacity, reading.designCapacity);
    info.healthPercent = reading.officialHealth ? reading.officialHealth : reading.computedHealth;
    info.manufactureDate = manufactureDate(*smartBattery);
    reading.today = (platform.clock ? platform.clock->now() : QDateTime::currentDateTimeUtc()).date();
    const std::optional<QString> rawWord = rawConditionValue(powerSource, reading.powerItems);
    info.condition = conditionLabel(rawWord);
    info.isConditionHealthy = isConditionHealthy(rawWord);
    info.temperatureCelsius = temperatureCelsius(*smartBattery);
    info.timeRemaining = timeRemainingLabel(*smartBattery, info.isCharging);
    info.rows = batteryRows(reading);
    return info;
}

std::optional<BatterySnapshot> liveSnapshot(const Platform &platform)
{
    const std::optional<PropertyDictionary> smartBattery = installedBattery(platform);
    if (!smartBattery)
        return std::nullopt;
    BatterySnapshot snapshot;
    snapshot.chargePercent = chargePercent(*smartBattery);
    snapshot.isCharging = flag(*smartBattery, u"IsCharging"_s);
    snapshot.isPluggedIn = flag(*smartBattery, u"ExternalConnected"_s);
    snapshot.isFullyCharged = flag(*smartBattery, u"FullyCharged"_s);
    snapshot.timeRemaining = timeRemainingLabel(*smartBattery, snapshot.isCharging);
    snapshot.temperatureCelsius = temperatureCelsius(*smartBattery);
    return snapshot;
}

} // namespace BatteryService
