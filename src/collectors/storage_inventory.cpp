#include "collectors/inventory_service.h"

#include "collectors/inventory_support.h"
#include "sources/nvme_health.h"
#include "sources/property_access.h"
#include "sources/vocabulary.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// A mounted disk image is not a disk of the machine. Its drive names itself "Disk Image",
// either as its device name or, failing that, as its media name.
bool isDiskImage(const std::optional<PropertyDictionary> &drive)
{
    if (!drive)
        return false;
    const QString diskImage = u"Disk Image"_s;
    if (Property::text(*drive, u"device_name"_s) == diskImage)
        return true;
    return Property::text(*drive, u"media_name"_s) == diskImage;
}

void fillFromDrive(StorageVolume &volume, const PropertyDictionary &drive)
{
    volume.isInternal = Property::text(drive, u"is_internal_disk"_s) == u"yes"_s;
    const std::optional<QString> smart = Property::text(drive, u"smart_status"_s);
    volume.smartStatus = Vocabulary::humanize(smart);
    if (smart)
        volume.smartIsVerified = *smart == u"Verified"_s;
    volume.deviceName = Property::text(drive, u"device_name"_s);
}

std::optional<StorageVolume> volumeFrom(const PropertyDictionary &dict)
{
    const std::optional<PropertyDictionary> drive = PropertyValues::dictionary(dict, u"physical_drive"_s);
    if (isDiskImage(drive))
        return std::nullopt;

    StorageVolume volume;
    volume.name = InventorySupport::nameOrUnnamed(dict);
    volume.totalBytes = Property::number(dict, u"size_in_bytes"_s).value_or(0);
    volume.freeBytes = Property::number(dict, u"free_space_in_bytes"_s).value_or(0);
    volume.fileSystem = Property::text(dict, u"file_system"_s);
    volume.mountPoint = Property::text(dict, u"mount_point"_s);
    if (drive)
        fillFromDrive(volume, *drive);
    return volume;
}

QList<StorageVolume> convertVolumes(const QList<PropertyDictionary> &items)
{
    QList<StorageVolume> volumes;
    for (const PropertyDictionary &dict : items) {
        if (std::optional<StorageVolume> volume = volumeFrom(dict))
            volumes.append(std::move(*volume));
    }
    return volumes;
}

bool isRoot(const StorageVolume &volume)
{
    return volume.mountPoint == u"/"_s;
}

// The root volume first, then the larger first, so that the root volume wins the walk below.
void sortRootFirst(QList<StorageVolume> &volumes)
{
    std::stable_sort(volumes.begin(), volumes.end(), [](const StorageVolume &a, const StorageVolume &b) {
        if (isRoot(a) != isRoot(b))
            return isRoot(a);
        return a.totalBytes > b.totalBytes;
    });
}

// The sizes have been checked by hasByteCounts.
QString duplicateKey(const StorageVolume &volume)
{
    const qint64 size = InventorySupport::wholeNumber(volume.totalBytes).value_or(0);
    return volume.deviceName.value_or(volume.name) + u'|' + QString::number(size);
}

// The system and data volumes of one APFS container report the same device and the same
// container size: keep the first of them.
QList<StorageVolume> dropDuplicates(const QList<StorageVolume> &volumes)
{
    QSet<QString> seen;
    QList<StorageVolume> kept;
    for (const StorageVolume &volume : volumes) {
        const QString key = duplicateKey(volume);
        if (seen.contains(key))
            continue;
        seen.insert(key);
        kept.append(volume);
    }
    return kept;
}

void sortInternalFirst(QList<StorageVolume> &volumes)
{
    std::stable_sort(volumes.begin(), volumes.end(), [](const StorageVolume &a, const StorageVolume &b) {
        if (a.isInternal != b.isInternal)
            return a.isInternal;
        return a.totalBytes > b.totalBytes;
    });
}

// The size becomes part of the duplicate key and both sizes are written as byte counts;
// checking them first also keeps the sorts below away from values that do not compare.
bool hasByteCounts(const StorageVolume &volume)
{
    return InventorySupport::wholeNumber(volume.totalBytes) && InventorySupport::wholeNumber(volume.freeBytes);
}

Result<QList<StorageVolume>> volumesFrom(const QList<PropertyDictionary> &items)
{
    QList<StorageVolume> volumes = convertVolumes(items);
    if (!std::all_of(volumes.cbegin(), volumes.cend(), hasByteCounts))
        return SystemProfiler::Failure::unreadableOutput();
    sortRootFirst(volumes);
    volumes = dropDuplicates(volumes);
    sortInternalFirst(volumes);
    return volumes;
}

QString driveKey(const QString &model)
{
    return model.simplified().toCaseFolded();
}

// The health log of each internal drive goes to the volumes that live on it, matched by the
// drive's model name; a Mac with one internal drive and one log needs no name to match.
void attachWear(QList<StorageVolume> &volumes, const QList<DriveHealthLog> &logs)
{
    if (logs.isEmpty())
        return;
    QSet<QString> internalDrives;
    for (const StorageVolume &volume : std::as_const(volumes)) {
        if (volume.isInternal)
            internalDrives.insert(driveKey(volume.deviceName.value_or(QString())));
    }
    for (StorageVolume &volume : volumes) {
        if (!volume.isInternal)
            continue;
        const QString key = driveKey(volume.deviceName.value_or(QString()));
        const auto named = std::find_if(logs.cbegin(), logs.cend(),
                                        [&key](const DriveHealthLog &log) { return driveKey(log.model) == key; });
        if (named != logs.cend())
            volume.wear = NvmeHealth::decode(*named);
        else if (logs.size() == 1 && internalDrives.size() == 1)
            volume.wear = NvmeHealth::decode(logs.first());
    }
}

} // namespace

namespace InventoryService {

Result<QList<StorageVolume>> storage(const Platform &platform)
{
    Result<QList<StorageVolume>> volumes
        = InventorySupport::collect<StorageVolume>(platform, u"SPStorageDataType"_s, volumesFrom);
    if (!volumes.ok() || !platform.driveHealth)
        return volumes;
    QList<StorageVolume> withWear = volumes.value();
    attachWear(withWear, platform.driveHealth->logs());
    return withWear;
}

} // namespace InventoryService
