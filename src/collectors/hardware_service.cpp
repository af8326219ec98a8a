#include "collectors/hardware_service.h"

#include "collectors/built_in_device_service.h"
#include "collectors/ownership_service.h"
#include "core/byte_format.h"
#include "core/texts.h"
#include "sources/mac_models.h"
#include "sources/property_access.h"
#include "sources/sysctl.h"
#include "sources/vocabulary.h"

#include <QSysInfo>

#include <limits>

using namespace Qt::StringLiterals;

namespace HardwareService {

namespace {

// Stand-ins for services a platform does not provide: nothing can be read from them.
class NoKernel final : public KernelSource
{
public:
    std::optional<QByteArray> value(const QByteArray &) const override { return std::nullopt; }
};

class NoProcessInformation final : public ProcessInformation
{
public:
    QString hostName() const override { return {}; }
    QString operatingSystemVersion() const override { return {}; }
    ThermalState thermalState() const override { return ThermalState::unknown; }
};

// A whole decimal integer with an optional sign and nothing else around it.
std::optional<qint64> decimalInteger(QStringView text)
{
    qsizetype start = 0;
    bool negative = false;
    if (!text.isEmpty() && (text.front() == u'+' || text.front() == u'-')) {
        negative = text.front() == u'-';
        start = 1;
    }
    if (start == text.size())
        return std::nullopt;
    // Accumulated as a negative number so that the most negative value fits too.
    qint64 value = 0;
    constexpr qint64 lowest = std::numeric_limits<qint64>::min();
    for (qsizetype i = start; i < text.size(); ++i) {
        const char16_t c = text.at(i).unicode();
        if (c < u'0' || c > u'9')
            return std::nullopt;
        const int digit = c - u'0';
        if (value < (lowest + digit) / 10)
            return std::nullopt;
        value = value * 10 - digit;
    }
    if (!negative) {
        if (value == lowest)
            return std::nullopt;
        value = -value;
    }
    return value;
}

PropertyDictionary firstItem(const QList<PropertyDictionary> &items)
{
    return items.isEmpty() ? PropertyDictionary() : items.first();
}

QString orMissingMark(const std::optional<QString> &text)
{
    return text.value_or(missingValueMark());
}

struct Sources
{
    const KernelSource &kernel;
    const ProcessInformation &process;
    QDateTime now;
};

QList<InfoRow> buildRows(const PropertyDictionary &hardware, const PropertyDictionary &software,
                         const QString &chip, const QString &cores, const QString &memory, const Sources &sources)
{
    const std::optional<QString> identifier = Property::text(hardware, u"machine_model"_s);
    const std::optional<QString> release = Sysctl::string(sources.kernel, "kern.osrelease");
    std::optional<QString> computerName = Property::text(software, u"local_host_name"_s);
    if (!computerName)
        computerName = sources.process.hostName();

    QList<InfoRow> rows;
    rows.append(InfoRow(localized("Modèle"), orMissingMark(Property::text(hardware, u"machine_name"_s))));
    rows.append(InfoRow(localized("Identifiant du modèle"), orMissingMark(identifier)));
    appendRow(rows, localized("Millésime"), identifier ? MacModels::commercialName(*identifier) : std::nullopt);
    appendRow(rows, localized("Référence"), Property::text(hardware, u"model_number"_s));
    rows.append(InfoRow(localized("Puce / processeur"), chip));
    rows.append(InfoRow(localized("Cœurs"), cores));
    appendRow(rows, localized("Vitesse"), Property::text(hardware, u"current_processor_speed"_s));
    appendRow(rows, localized("Nombre de processeurs"), Property::text(hardware, u"packages"_s));
    rows.append(InfoRow(localized("Mémoire"), memory));
    rows.append(InfoRow(localized("Architecture de l'app"), architectureText()));
    rows.append(InfoRow(localized("Numéro de série"), orMissingMark(Property::text(hardware, u"serial_number"_s))));
    appendRow(rows, localized("UUID de plateforme"), Property::text(hardware, u"platform_UUID"_s));
    appendRow(rows, localized("Version du firmware"), Property::text(hardware, u"boot_rom_version"_s));
    appendRow(rows, localized("Verrouillage d'activation"),
              Vocabulary::humanize(Property::text(hardware, u"activation_lock_status"_s)));
    rows.append(InfoRow(localized("Système"), osVersion(sources.kernel, sources.process)));
    appendRow(rows, localized("Noyau"), release ? std::optional(localized("Darwin %1").arg(*release)) : std::nullopt);
    appendRow(rows, localized("Nom de l'ordinateur"), computerName);
    appendRow(rows, localized("Session ouverte par"), Property::text(software, u"user_name"_s));
    rows.append(InfoRow(localized("Démarré depuis"), uptime(sources.kernel, sources.now)));
    rows.append(InfoRow(localized("État thermique"), thermalState(sources.process.thermalState())));
    return rows;
}

} // namespace

QString intelProcessorLabel(const PropertyDictionary &hardwareItem)
{
    const std::optional<QString> type = Property::text(hardwareItem, u"cpu_type"_s);
    if (!type)
        return {};
    const std::optional<QString> speed = Property::text(hardwareItem, u"current_processor_speed"_s);
    if (!speed)
        return *type;
    return localized("%1 à %2").arg(*type, *speed);
}

QList<qint64> coreCounts(const PropertyDictionary &hardwareItem)
{
    QString text = Property::text(hardwareItem, u"number_processors"_s).value_or(QString());
    text.remove(u"proc "_s);
    QList<qint64> counts;
    for (const QString &piece : text.split(u':', Qt::SkipEmptyParts)) {
        if (const std::optional<qint64> count = decimalInteger(piece))
            counts.append(*count);
    }
    return counts;
}

namespace {

// A tier's name as the core counts say it: the kernel's English word in French, any other
// word as macOS writes it, in lower case.
QString tierWord(const QString &kernelName)
{
    const QString name = kernelName.trimmed();
    if (name.compare(u"Super"_s, Qt::CaseInsensitive) == 0)
        return localized("super");
    if (name.compare(u"Performance"_s, Qt::CaseInsensitive) == 0)
        return localized("performance");
    if (name.compare(u"Efficiency"_s, Qt::CaseInsensitive) == 0)
        return localized("efficacité");
    return name.toLower();
}

} // namespace

QList<CoreTier> coreTiers(const PropertyDictionary &hardwareItem, const KernelSource &kernel)
{
    const QList<qint64> counts = coreCounts(hardwareItem);
    QList<CoreTier> named;
    const qint64 levels = Sysctl::integer(kernel, "hw.nperflevels").value_or(0);
    for (qint64 level = 0; level < std::min<qint64>(levels, 8); ++level) {
        const QByteArray prefix = "hw.perflevel" + QByteArray::number(level);
        const std::optional<QString> name = Sysctl::string(kernel, prefix + ".name");
        const std::optional<qint64> cores = Sysctl::integer(kernel, prefix + ".physicalcpu");
        if (!name || name->trimmed().isEmpty() || !cores || *cores <= 0)
            return {};
        named.append({tierWord(*name), *cores});
    }
    const bool superTier = std::any_of(named.cbegin(), named.cend(),
                                       [](const CoreTier &tier) { return tier.name == localized("super"); });
    // The fourth field ("total:top:efficiency:second") counts a second tier of large cores.
    const bool secondTier = counts.size() >= 4 && counts[3] != 0;
    if (!superTier && !secondTier)
        return {};
    if (!named.isEmpty())
        return named;
    if (!secondTier)
        return {};
    // Without the kernel's names, the fields' own order: super, performance, efficiency.
    QList<CoreTier> fromFields{{localized("super"), counts[1]}, {localized("performance"), counts[3]}};
    if (counts[2] != 0)
        fromFields.append({localized("efficacité"), counts[2]});
    return fromFields;
}

namespace {

qint64 totalOf(const QList<CoreTier> &tiers)
{
    qint64 total = 0;
    for (const CoreTier &tier : tiers)
        total += tier.count;
    return total;
}

} // namespace

QString coreSummary(const PropertyDictionary &hardwareItem, const KernelSource &kernel)
{
    const QList<qint64> counts = coreCounts(hardwareItem);
    if (const QList<CoreTier> tiers = coreTiers(hardwareItem, kernel); !tiers.isEmpty()) {
        QStringList parts;
        for (const CoreTier &tier : tiers)
            parts.append(u"%1 %2"_s.arg(tier.count).arg(tier.name));
        const qint64 total = counts.isEmpty() ? totalOf(tiers) : counts.first();
        return localized("%1 cœurs — %2").arg(total).arg(parts.join(u" + "_s));
    }
    if (counts.size() >= 3)
        return localized("%1 cœurs — %2 performance + %3 efficacité").arg(counts[0]).arg(counts[1]).arg(counts[2]);

    std::optional<qint64> total;
    if (!counts.isEmpty())
        total = counts.first();
    else
        total = decimalInteger(Property::text(hardwareItem, u"number_processors"_s).value_or(QString()));

    const std::optional<qint64> logical = Sysctl::integer(kernel, "hw.logicalcpu");
    if (!total) {
        const std::optional<qint64> physical = Sysctl::integer(kernel, "hw.physicalcpu");
        if (!physical || !logical)
            return missingValueMark();
        return localized("%1 cœurs / %2 threads").arg(*physical).arg(*logical);
    }
    if (!logical || *logical == *total)
        return localized("%1 cœurs").arg(*total);
    return localized("%1 cœurs / %2 threads").arg(*total).arg(*logical);
}

QString shortCoreSummary(const PropertyDictionary &hardwareItem, const KernelSource &kernel)
{
    const QList<qint64> counts = coreCounts(hardwareItem);
    if (const QList<CoreTier> tiers = coreTiers(hardwareItem, kernel); !tiers.isEmpty()) {
        QStringList parts;
        for (const CoreTier &tier : tiers)
            parts.append(u"%1%2"_s.arg(tier.count).arg(tier.name.left(1).toUpper()));
        const qint64 total = counts.isEmpty() ? totalOf(tiers) : counts.first();
        return u"%1 (%2)"_s.arg(total).arg(parts.join(u" + "_s));
    }
    if (counts.size() >= 3)
        return localized("%1 (%2P + %3E)").arg(counts[0]).arg(counts[1]).arg(counts[2]);
    if (!counts.isEmpty())
        return localized("%1 cœurs").arg(counts.first());
    return missingValueMark();
}

QString localizedMemory(const std::optional<QString> &physicalMemory, const KernelSource &kernel)
{
    if (!physicalMemory) {
        const std::optional<qint64> bytes = Sysctl::integer(kernel, "hw.memsize");
        return bytes ? ByteFormat::string(*bytes) : missingValueMark();
    }
    const QStringList pieces = physicalMemory->split(u' ', Qt::SkipEmptyParts);
    if (pieces.size() != 2)
        return *physicalMemory;
    const std::optional<qint64> amount = decimalInteger(pieces.first());
    if (!amount)
        return *physicalMemory;
    // The profiler's English units are kept; an unknown unit is shown as gigabytes.
    if (pieces.last() == u"TB"_s)
        return localized("%1 TB").arg(*amount);
    if (pieces.last() == u"MB"_s)
        return localized("%1 MB").arg(*amount);
    return localized("%1 GB").arg(*amount);
}

QString osVersion(const KernelSource &kernel, const ProcessInformation &process)
{
    const QString version = Sysctl::string(kernel, "kern.osproductversion").value_or(process.operatingSystemVersion());
    const std::optional<QString> build = Sysctl::string(kernel, "kern.osversion");
    QString text = u"macOS "_s + version;
    if (build)
        text += u" ("_s + *build + u')';
    return text;
}

QString uptime(const KernelSource &kernel, const QDateTime &now)
{
    const std::optional<QDateTime> boot = Sysctl::bootTime(kernel);
    if (!boot)
        return missingValueMark();
    const qint64 seconds = boot->secsTo(now);
    if (seconds >= 86400)
        return localized("%1 j %2 h").arg(seconds / 86400).arg((seconds % 86400) / 3600);
    if (seconds >= 3600)
        return localized("%1 h %2 min").arg(seconds / 3600).arg((seconds % 3600) / 60);
    return localized("%1 min").arg(seconds / 60);
}

QString thermalState(ThermalState state)
{
    switch (state) {
    case ThermalState::nominal:
        return u"Normal"_s;
    case ThermalState::fair:
        return localized("Correct");
    case ThermalState::serious:
        return localized("Élevé");
    case ThermalState::critical:
        return localized("Critique");
    case ThermalState::unknown:
        break;
    }
    return localized("Inconnu");
}

QString architectureText(const QString &buildArchitecture)
{
    if (buildArchitecture == u"arm64"_s)
        return localized("arm64 (Apple Silicon)");
    if (buildArchitecture == u"x86_64"_s)
        return localized("x86_64 (Intel)");
    return buildArchitecture;
}

QString architectureText()
{
    return architectureText(QSysInfo::buildCpuArchitecture());
}

Result<HardwareInfo> load(const Platform &platform)
{
    static const NoKernel noKernel;
    static const NoProcessInformation noProcess;
    const KernelSource &kernel = platform.kernel ? *platform.kernel : noKernel;
    const ProcessInformation &process = platform.process ? *platform.process : noProcess;
    const QDateTime now = platform.clock ? platform.clock->now() : QDateTime::currentDateTimeUtc();

    // Without a profiler the tool printed nothing: the answer is unreadable.
    const auto hardwareAnswer = platform.profiler
        ? SystemProfiler::items(*platform.profiler, u"SPHardwareDataType"_s)
        : std::variant<QList<PropertyDictionary>, SystemProfiler::Failure>(SystemProfiler::Failure::unreadableOutput());
    if (const auto *failure = std::get_if<SystemProfiler::Failure>(&hardwareAnswer))
        return *failure;
    const PropertyDictionary hardware = firstItem(std::get<QList<PropertyDictionary>>(hardwareAnswer));

    // The software item only adds the computer and user names: its failure is not the load's.
    PropertyDictionary software;
    if (platform.profiler) {
        const auto softwareAnswer = SystemProfiler::items(*platform.profiler, u"SPSoftwareDataType"_s);
        if (const auto *items = std::get_if<QList<PropertyDictionary>>(&softwareAnswer))
            software = firstItem(*items);
    }

    HardwareInfo info;
    info.components = BuiltInDeviceService::load(platform);

    QString chip = Property::text(hardware, u"chip_type"_s).value_or(intelProcessorLabel(hardware));
    if (chip.isEmpty())
        chip = missingValueMark();
    const QString cores = coreSummary(hardware, kernel);
    const QString memory = localizedMemory(Property::text(hardware, u"physical_memory"_s), kernel);
    const std::optional<QString> identifier = Property::text(hardware, u"machine_model"_s);

    info.rows = buildRows(hardware, software, chip, cores, memory, Sources{kernel, process, now});
    info.modelName = Property::text(hardware, u"machine_name"_s).value_or(localized("Mac"));
    info.modelIdentifier = identifier.value_or(missingValueMark());
    if (identifier) {
        info.commercialName = MacModels::commercialName(*identifier);
        if (const std::optional<MacModels::Model> model = MacModels::model(*identifier))
            info.modelYear = model->year;
    }
    info.chip = chip;
    info.cores = cores;
    info.coresShort = shortCoreSummary(hardware, kernel);
    info.memory = memory;
    info.osVersion = osVersion(kernel, process);
    info.uptime = uptime(kernel, now);
    info.architecture = architectureText();
    info.serialNumber = Property::text(hardware, u"serial_number"_s);
    const bool isIntel = !Property::text(hardware, u"chip_type"_s) && Property::text(hardware, u"cpu_type"_s);
    info.ownership = OwnershipService::read(platform, Property::text(hardware, u"activation_lock_status"_s), isIntel);
    return info;
}

} // namespace HardwareService
