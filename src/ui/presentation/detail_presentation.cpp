#include "ui/presentation/detail_presentation.h"

#include "core/byte_format.h"
#include "core/formatting.h"
#include "core/texts.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace DetailPresentation {

QString tintRole(VolumeTint tint)
{
    switch (tint) {
    case VolumeTint::orange:
        return u"orange"_s;
    case VolumeTint::red:
        return u"red"_s;
    case VolumeTint::accent:
        break;
    }
    return u"accent"_s;
}

VolumeUsage volumeUsage(double totalBytes, double freeBytes)
{
    VolumeUsage usage;
    usage.usedBytes = std::max(totalBytes - freeBytes, 0.0);
    usage.usedFraction = totalBytes > 0 ? usage.usedBytes / totalBytes : 0;
    usage.percent = qint64(std::trunc(usage.usedFraction * 100));
    usage.tint = usage.usedFraction < 0.75 ? VolumeTint::accent
        : usage.usedFraction < 0.90        ? VolumeTint::orange
                                           : VolumeTint::red;
    return usage;
}

double gaugeBarWidth(double trackWidth, double usedFraction)
{
    return std::max(trackWidth * usedFraction, minimumGaugeBarWidth);
}

QString volumeBadge(bool isInternal)
{
    return isInternal ? localized("Interne") : localized("Externe");
}

QString volumeSymbol(bool isInternal)
{
    return isInternal ? u"internaldrive"_s : u"externaldrive"_s;
}

QList<InfoRow> volumeRows(const StorageVolume &volume)
{
    QList<InfoRow> rows;
    appendRow(rows, localized("Disque"), volume.deviceName);
    appendRow(rows, localized("Système de fichiers"), volume.fileSystem);
    appendRow(rows, localized("Point de montage"), volume.mountPoint);
    appendRow(rows, localized("État S.M.A.R.T."), volume.smartStatus);
    if (volume.wear)
        rows.append(wearRows(*volume.wear));
    return rows;
}

QList<InfoRow> wearRows(const DriveWear &wear)
{
    if (wear.unreadable)
        return {InfoRow(localized("Usure"), localized("illisible — %1").arg(*wear.unreadable))};
    const auto whole = [](double value) { return Format::groupThousands(QString::number(qint64(value))); };
    QList<InfoRow> rows{
        InfoRow(localized("Usure"), localized("%1 % de l'endurance prévue").arg(wear.percentageUsed)),
        InfoRow(localized("Réserve disponible"),
                localized("%1 % (seuil %2 %)").arg(wear.availableSpare).arg(wear.availableSpareThreshold)),
        InfoRow(localized("Données écrites"), ByteFormat::string(wear.bytesWritten)),
        InfoRow(localized("Données lues"), ByteFormat::string(wear.bytesRead)),
        InfoRow(localized("Heures de fonctionnement"), whole(wear.powerOnHours) + u" h"_s),
        InfoRow(localized("Mises sous tension"), whole(wear.powerCycles)),
        InfoRow(localized("Arrêts imprévus"), whole(wear.unsafeShutdowns)),
        InfoRow(localized("Erreurs de support"), whole(wear.mediaErrors)),
    };
    if (wear.criticalWarning != 0)
        rows.append(InfoRow(localized("Alerte critique"), u"0x%1"_s.arg(wear.criticalWarning, 2, 16, QChar(u'0'))));
    return rows;
}

QList<InfoRow> processorRows(const std::optional<QString> &loadText, const std::optional<QString> &temperatureText)
{
    return {
        InfoRow(localized("Charge globale"), loadText.value_or(localized("mesure en cours…"))),
        InfoRow(localized("Température du die"), temperatureText.value_or(localized("non disponible"))),
    };
}

std::optional<QString> processorAccessory(const std::optional<QString> &temperatureText)
{
    if (!temperatureText)
        return std::nullopt;
    return localized("die ") + *temperatureText;
}

CoreBar coreBar(double loadFraction)
{
    return { .opacity = 0.25 + 0.75 * loadFraction,
        .height = std::max(loadFraction * coreSlotHeight, minimumCoreBarHeight) };
}

QString componentsAccessory(qint64 sensorInterfaces)
{
    return localized("%1 interfaces de capteurs").arg(sensorInterfaces);
}

QString componentStateText(const BuiltInComponents::Listed &entry, const std::optional<QString> &lidAngle)
{
    if (!entry.component.present)
        return localized("Non détecté");
    if (entry.id == BuiltInComponents::ComponentID::lidAngle && lidAngle)
        return *lidAngle;
    return entry.component.detail.value_or(localized("Détecté"));
}

QList<InfoRow> componentRows(const BuiltInComponents::Listed &entry, const std::optional<QString> &lidAngle)
{
    QList<InfoRow> rows = entry.component.rows;
    if (entry.id == BuiltInComponents::ComponentID::lidAngle)
        rows.append(InfoRow(localized("Angle mesuré"), lidAngle.value_or(localized("lecture en cours…"))));
    return rows;
}

QString journalCountText(qint64 count)
{
    return localized("%1 machine(s) contrôlée(s)").arg(count);
}

bool journalEntryIsClean(qint64 warningCount, qint64 faultCount)
{
    return warningCount == 0 && faultCount == 0;
}

// A bilan with failed reads and nothing else to say is incomplete, not clean.
QString journalEntrySymbol(qint64 warningCount, qint64 faultCount, qint64 failedReadCount)
{
    if (!journalEntryIsClean(warningCount, faultCount))
        return u"exclamationmark.triangle"_s;
    return failedReadCount > 0 ? u"info.circle"_s : u"checkmark.circle"_s;
}

QString journalHeadlineRole(qint64 warningCount, qint64 faultCount, qint64 failedReadCount)
{
    if (!journalEntryIsClean(warningCount, faultCount))
        return u"orange"_s;
    return failedReadCount > 0 ? u"accent"_s : u"green"_s;
}

QList<InfoRow> journalEntryRows(const HistoryEntry &entry)
{
    const auto text
        = [](const auto &number) { return number ? std::optional<QString>(QString::number(*number)) : std::nullopt; };
    QList<InfoRow> rows;
    appendRow(rows, localized("Numéro de série"), entry.serialNumber);
    appendRow(rows, localized("Configuration"), QString(entry.chip + u" · "_s + entry.memory));
    appendRow(rows, localized("Stockage"),
        entry.storageBytes ? std::optional<QString>(ByteFormat::string(*entry.storageBytes)) : std::nullopt);
    appendRow(rows, localized("Capacité maximale"),
        entry.batteryHealth ? std::optional<QString>(text(entry.batteryHealth).value() + u" %"_s) : std::nullopt);
    appendRow(rows, localized("Cycles"), text(entry.batteryCycles));
    return rows;
}

} // namespace DetailPresentation
