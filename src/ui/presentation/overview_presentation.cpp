#include "ui/presentation/overview_presentation.h"

#include "core/byte_format.h"
#include "core/texts.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Presentation {

namespace {

const QString separator = u"  ·  "_s;

} // namespace

QString machineSymbol(bool hasBattery)
{
    return hasBattery ? u"laptopcomputer"_s : u"desktopcomputer"_s;
}

QString overviewTitle(const std::optional<HardwareInfo> &hardware)
{
    return hardware ? hardware->modelName : localized("Analyse du Mac…");
}

QString machineConfigurationLine(const HardwareInfo &hardware)
{
    return QStringList { hardware.chip, hardware.memory, hardware.osVersion }.join(separator);
}

QString machineModelLine(const HardwareInfo &hardware)
{
    return hardware.commercialName.value_or(hardware.modelIdentifier) + separator + hardware.cores;
}

QString storageValue(const QList<StorageVolume> &volumes)
{
    if (volumes.isEmpty())
        return missingValueMark();
    const auto internal
        = std::find_if(volumes.cbegin(), volumes.cend(), [](const StorageVolume &volume) { return volume.isInternal; });
    return ByteFormat::string((internal != volumes.cend() ? *internal : volumes.first()).totalBytes);
}

std::optional<QString> screenValue(const QList<DeviceNode> &displayRoots)
{
    // The roots are the graphics processors; the displays are their children.
    for (const DeviceNode &processor : displayRoots) {
        for (const DeviceNode &display : processor.children) {
            for (const InfoRow &row : display.rows) {
                if (row.key == InfoRowKey::nativeResolution)
                    return row.value;
            }
        }
    }
    return std::nullopt;
}

// An unknown value shows the missing-value mark rather than an empty figure.
QString orMissing(const QString &value)
{
    return value.trimmed().isEmpty() ? missingValueMark() : value;
}

QList<StatFigure> configurationFigures(
    const HardwareInfo &hardware, const QList<StorageVolume> &volumes, const QList<DeviceNode> &displayRoots)
{
    const QString primary = u"primary"_s;
    QList<StatFigure> figures {
        { localized("Puce"), orMissing(hardware.chip), primary },
        { localized("Cœurs"), orMissing(hardware.coresShort), primary },
        { localized("Mémoire"), orMissing(hardware.memory), primary },
        { localized("Stockage"), storageValue(volumes), primary },
    };
    if (std::optional<QString> screen = screenValue(displayRoots))
        figures.append({ localized("Écran"), *screen, primary });
    const QString system = QString(hardware.osVersion).remove(u"macOS "_s).trimmed();
    figures.append({ u"macOS"_s, system.isEmpty() ? missingValueMark() : system, primary });
    figures.append({ localized("Année"), hardware.modelYear ? QString::number(*hardware.modelYear) : missingValueMark(),
        u"accent"_s });
    figures.append({ localized("Modèle"), orMissing(hardware.modelIdentifier), primary });
    if (hardware.serialNumber)
        figures.append({ localized("Série"), *hardware.serialNumber, primary });
    return figures;
}

} // namespace Presentation
