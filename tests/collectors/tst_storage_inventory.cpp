#include "collectors/inventory_service.h"
#include "common/test_main.h"
#include "inventory_fakes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString storageType = u"SPStorageDataType"_s;

struct VolumeSpec
{
    QString name;
    double size = 0;
    QString mountPoint;
    QString device; // no physical drive when empty
    bool internal = false;
};

// One volume of the storage report, with only the keys that decide what is kept and where.
QByteArray volumeJson(const VolumeSpec &spec)
{
    QJsonObject volume{{u"_name"_s, spec.name}, {u"size_in_bytes"_s, spec.size}, {u"free_space_in_bytes"_s, 1000}};
    if (!spec.mountPoint.isEmpty())
        volume.insert(u"mount_point"_s, spec.mountPoint);
    if (!spec.device.isEmpty()) {
        volume.insert(u"physical_drive"_s, QJsonObject{{u"device_name"_s, spec.device},
                                                       {u"is_internal_disk"_s, spec.internal ? u"yes"_s : u"no"_s}});
    }
    return QJsonDocument(volume).toJson(QJsonDocument::Compact);
}

QByteArray volumesJson(const QList<VolumeSpec> &specs)
{
    QByteArrayList parts;
    for (const VolumeSpec &spec : specs)
        parts.append(volumeJson(spec));
    return parts.join(',');
}

QList<StorageVolume> storageOf(const QByteArray &itemsJson)
{
    const Result<QList<StorageVolume>> result = InventoryService::storage(platformAnswering(storageType, itemsJson));
    if (!result.ok()) {
        qWarning("%s", qPrintable(result.failure().description()));
        return {};
    }
    return result.value();
}

QStringList volumeNames(const QList<StorageVolume> &volumes)
{
    QStringList out;
    for (const StorageVolume &volume : volumes)
        out.append(volume.name);
    return out;
}

} // namespace

class TestStorageInventory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keptVolumesAndOrder_data();
    void keptVolumesAndOrder();
    void volumeFields_data();
    void volumeFields();
    void runsTheStorageReportOnce();
    void profilerFailurePassesThrough_data();
    void profilerFailurePassesThrough();
    void sampleCapture();
    void storageMixCapture();
};

void TestStorageInventory::keptVolumesAndOrder_data()
{
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QStringList>("expected");

    const double gb = 1e9;
    QTest::newRow("system and data volumes of one container") << volumesJson({
        {u"Macintosh HD - Data"_s, 494 * gb, u"/System/Volumes/Data"_s, u"APPLE SSD"_s, true},
        {u"Macintosh HD"_s, 494 * gb, u"/"_s, u"APPLE SSD"_s, true},
    }) << QStringList{u"Macintosh HD"_s};
    QTest::newRow("same drive, different sizes: internal first, larger first") << volumesJson({
        {u"Clé"_s, 2000 * gb, u"/Volumes/Clé"_s, u"Elements"_s, false},
        {u"Données"_s, 300 * gb, u"/System/Volumes/Data"_s, u"APPLE SSD"_s, true},
        {u"Macintosh HD"_s, 500 * gb, u"/"_s, u"APPLE SSD"_s, true},
    }) << QStringList{u"Macintosh HD"_s, u"Données"_s, u"Clé"_s};
    QTest::newRow("the root volume wins its container even when it is not the largest") << volumesJson({
        {u"Données"_s, 100 * gb, u"/System/Volumes/Data"_s, u"APPLE SSD"_s, true},
        {u"Autre"_s, 900 * gb, u"/Volumes/Autre"_s, u"APPLE SSD"_s, true},
        {u"Macintosh HD"_s, 100 * gb, u"/"_s, u"APPLE SSD"_s, true},
    }) << QStringList{u"Autre"_s, u"Macintosh HD"_s};
    QTest::newRow("no root volume: the first reported of a container wins") << volumesJson({
        {u"Premier"_s, 250 * gb, u"/Volumes/Premier"_s, u"Samsung SSD"_s, false},
        {u"Second"_s, 250 * gb, u"/Volumes/Second"_s, u"Samsung SSD"_s, false},
    }) << QStringList{u"Premier"_s};
    QTest::newRow("external volumes of different devices with equal size keep report order") << volumesJson({
        {u"Zèbre"_s, 64 * gb, u"/Volumes/Zèbre"_s, u"SanDisk"_s, false},
        {u"Abeille"_s, 64 * gb, u"/Volumes/Abeille"_s, u"Kingston"_s, false},
    }) << QStringList{u"Zèbre"_s, u"Abeille"_s};
    QTest::newRow("larger external first") << volumesJson({
        {u"Petit"_s, 16 * gb, u"/Volumes/Petit"_s, u"SanDisk"_s, false},
        {u"Grand"_s, 4000 * gb, u"/Volumes/Grand"_s, u"LaCie"_s, false},
    }) << QStringList{u"Grand"_s, u"Petit"_s};
    QTest::newRow("volumes without a drive are told apart by name") << volumesJson({
        {u"Réseau"_s, 100 * gb, u"/Volumes/Réseau"_s, {}, false},
        {u"Réseau"_s, 100 * gb, u"/Volumes/Réseau-1"_s, {}, false},
        {u"Partage"_s, 100 * gb, u"/Volumes/Partage"_s, {}, false},
    }) << QStringList{u"Réseau"_s, u"Partage"_s};
    QTest::newRow("a volume named like another volume's device shares its key") << volumesJson({
        {u"Samsung T7"_s, 100 * gb, u"/Volumes/T7"_s, {}, false},
        {u"Données"_s, 100 * gb, u"/Volumes/Données"_s, u"Samsung T7"_s, false},
    }) << QStringList{u"Samsung T7"_s};
    QTest::newRow("fractional sizes are truncated in the duplicate key") << volumesJson({
        {u"Moins"_s, 500.4, u"/Volumes/Moins"_s, u"Disque"_s, false},
        {u"Plus"_s, 500.9, u"/Volumes/Plus"_s, u"Disque"_s, false},
    }) << QStringList{u"Plus"_s};
    QTest::newRow("volumes without size are kept") << volumesJson({
        {u"Vide"_s, 0, u"/Volumes/Vide"_s, u"Lecteur"_s, false},
        {u"Plein"_s, 8 * gb, u"/Volumes/Plein"_s, u"Lecteur"_s, false},
    }) << QStringList{u"Plein"_s, u"Vide"_s};
    QTest::newRow("disk image by device name") << QByteArray(R"json({"_name": "VLC", "size_in_bytes": 203476992,
        "physical_drive": {"device_name": "Disk Image", "media_name": "Apple UDIF read-only compressed (zlib) Media"}})json")
                                               << QStringList();
    QTest::newRow("disk image by media name") << QByteArray(R"json({"_name": "Logiciels", "size_in_bytes": 1048576000,
        "physical_drive": {"device_name": "Apple UDIF read-only compressed (zlib)", "media_name": "Disk Image"}})json")
                                              << QStringList();
    QTest::newRow("disk image by media name without device name") << QByteArray(R"json({"_name": "Installeur",
        "physical_drive": {"media_name": "Disk Image"}})json") << QStringList();
    QTest::newRow("disk image wording outside a drive dictionary is not a disk image")
        << QByteArray(R"json({"_name": "Clé", "physical_drive": "Disk Image", "device_name": "Disk Image"})json")
        << QStringList{u"Clé"_s};
    QTest::newRow("disk image spelt in lower case is a disk") << QByteArray(R"json({"_name": "Archive",
        "physical_drive": {"device_name": "disk image"}})json") << QStringList{u"Archive"_s};
    QTest::newRow("empty report") << QByteArray() << QStringList();
}

void TestStorageInventory::keptVolumesAndOrder()
{
    QFETCH(QByteArray, items);
    QFETCH(QStringList, expected);
    QCOMPARE(volumeNames(storageOf(items)), expected);
}

void TestStorageInventory::volumeFields_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("totalBytes");
    QTest::addColumn<double>("freeBytes");
    QTest::addColumn<std::optional<QString>>("fileSystem");
    QTest::addColumn<std::optional<QString>>("mountPoint");
    QTest::addColumn<bool>("isInternal");
    QTest::addColumn<std::optional<QString>>("smartStatus");
    QTest::addColumn<std::optional<bool>>("smartIsVerified");
    QTest::addColumn<std::optional<QString>>("deviceName");

    const std::optional<QString> none;
    QTest::newRow("internal volume, verified") << QByteArray(R"json({"_name": "Macintosh HD", "file_system": "APFS",
        "mount_point": "/", "size_in_bytes": 494384795648, "free_space_in_bytes": 187362746368,
        "physical_drive": {"device_name": "APPLE SSD AP0512R", "is_internal_disk": "yes", "smart_status": "Verified"}})json")
        << u"Macintosh HD"_s << 494384795648.0 << 187362746368.0 << std::optional(u"APFS"_s) << std::optional(u"/"_s)
        << true << std::optional(u"Vérifié"_s) << std::optional(true) << std::optional(u"APPLE SSD AP0512R"_s);
    QTest::newRow("failing disk") << QByteArray(R"json({"_name": "HD", "size_in_bytes": 1000,
        "physical_drive": {"device_name": "WDC", "is_internal_disk": "yes", "smart_status": "Failing"}})json")
        << u"HD"_s << 1000.0 << 0.0 << none << none << true << std::optional(u"Failing"_s) << std::optional(false)
        << std::optional(u"WDC"_s);
    QTest::newRow("verified spelt in lower case is not verified") << QByteArray(R"json({"_name": "HD",
        "physical_drive": {"smart_status": "verified"}})json")
        << u"HD"_s << 0.0 << 0.0 << none << none << false << std::optional(u"verified"_s) << std::optional(false) << none;
    QTest::newRow("drive without smart status") << QByteArray(R"json({"_name": "Clé",
        "physical_drive": {"device_name": "Cruzer", "is_internal_disk": "no"}})json")
        << u"Clé"_s << 0.0 << 0.0 << none << none << false << none << std::optional<bool>() << std::optional(u"Cruzer"_s);
    QTest::newRow("empty smart status counts as none") << QByteArray(R"json({"_name": "Clé",
        "physical_drive": {"smart_status": ""}})json")
        << u"Clé"_s << 0.0 << 0.0 << none << none << false << none << std::optional<bool>() << none;
    QTest::newRow("internal written with a capital") << QByteArray(R"json({"_name": "HD",
        "physical_drive": {"is_internal_disk": "Yes"}})json")
        << u"HD"_s << 0.0 << 0.0 << none << none << false << none << std::optional<bool>() << none;
    QTest::newRow("internal written as a boolean") << QByteArray(R"json({"_name": "HD",
        "physical_drive": {"is_internal_disk": true}})json")
        << u"HD"_s << 0.0 << 0.0 << none << none << false << none << std::optional<bool>() << none;
    QTest::newRow("nothing but an empty name") << QByteArray(R"json({"_name": ""})json")
        << u"Sans nom"_s << 0.0 << 0.0 << none << none << false << none << std::optional<bool>() << none;
    QTest::newRow("sizes written as text") << QByteArray(R"json({"_name": "NAS", "size_in_bytes": "250000000000",
        "free_space_in_bytes": "1.5e9", "file_system": "SMB"})json")
        << u"NAS"_s << 250000000000.0 << 1500000000.0 << std::optional(u"SMB"_s) << none << false << none
        << std::optional<bool>() << none;
    QTest::newRow("sizes with a unit are not sizes") << QByteArray(R"json({"_name": "NAS", "size_in_bytes": "250 GB",
        "free_space_in_bytes": "12 GB"})json")
        << u"NAS"_s << 0.0 << 0.0 << none << none << false << none << std::optional<bool>() << none;
    QTest::newRow("drive that is not a dictionary") << QByteArray(R"json({"_name": "HD",
        "physical_drive": ["APPLE SSD", "yes"]})json")
        << u"HD"_s << 0.0 << 0.0 << none << none << false << none << std::optional<bool>() << none;
}

void TestStorageInventory::volumeFields()
{
    QFETCH(QByteArray, item);
    const QList<StorageVolume> volumes = storageOf(item);
    QCOMPARE(volumes.size(), 1);
    const StorageVolume &volume = volumes.first();
    QTEST(volume.name, "name");
    QTEST(volume.totalBytes, "totalBytes");
    QTEST(volume.freeBytes, "freeBytes");
    QTEST(volume.fileSystem, "fileSystem");
    QTEST(volume.mountPoint, "mountPoint");
    QTEST(volume.isInternal, "isInternal");
    QTEST(volume.smartStatus, "smartStatus");
    QTEST(volume.smartIsVerified, "smartIsVerified");
    QTEST(volume.deviceName, "deviceName");
}

void TestStorageInventory::runsTheStorageReportOnce()
{
    auto profiler = std::make_shared<FakeProfiler>();
    profiler->answer(storageType, R"json({"SPStorageDataType": [{"_name": "A"}, {"_name": "B"}]})json");
    const auto first = InventoryService::storage(platformWith(profiler));
    const auto second = InventoryService::storage(platformWith(profiler));
    QCOMPARE(profiler->runs(), (QList<QStringList>{{u"-json"_s, storageType}, {u"-json"_s, storageType}}));
    // Every build makes new records: the same report never gives equal volumes.
    QVERIFY(first.value().first().id != second.value().first().id);
    QVERIFY(first.value().at(0).id != first.value().at(1).id);
}

void TestStorageInventory::profilerFailurePassesThrough_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<int>("exitStatus");
    QTest::addColumn<QString>("message");

    QTest::newRow("exit status 2") << QByteArray(R"json({"SPStorageDataType": []})json") << 2
                                   << u"system_profiler a échoué : code 2 pour SPStorageDataType"_s;
    QTest::newRow("object instead of a list") << QByteArray(R"json({"SPStorageDataType": {}})json") << 0
                                              << u"Réponse de system_profiler illisible."_s;
    QTest::newRow("another data type only") << QByteArray(R"json({"SPUSBDataType": []})json") << 0
                                            << u"Réponse de system_profiler illisible."_s;
    QTest::newRow("a volume that is not an object") << QByteArray(R"json({"SPStorageDataType": [{"_name": "A"}, 3]})json") << 0
                                                    << u"Réponse de system_profiler illisible."_s;
}

void TestStorageInventory::profilerFailurePassesThrough()
{
    QFETCH(QByteArray, output);
    QFETCH(int, exitStatus);
    auto profiler = std::make_shared<FakeProfiler>();
    profiler->answer(storageType, output, exitStatus);
    const Result<QList<StorageVolume>> result = InventoryService::storage(platformWith(profiler));
    QVERIFY(!result.ok());
    QTEST(result.failure().description(), "message");
}

// The sample Mac: its system and data volumes share one container, a disk image is mounted
// and a Samsung T7 is plugged in.
void TestStorageInventory::sampleCapture()
{
    const std::optional<Platform> platform = capturePlatform(u"sample"_s);
    QVERIFY(platform);
    const Result<QList<StorageVolume>> result = InventoryService::storage(*platform);
    QVERIFY(result.ok());
    const QList<StorageVolume> &volumes = result.value();
    QCOMPARE(volumeNames(volumes), (QStringList{u"Macintosh HD"_s, u"Sauvegarde"_s}));

    const StorageVolume &system = volumes.at(0);
    QCOMPARE(system.totalBytes, 494384795648.0);
    QCOMPARE(system.freeBytes, 187362746368.0);
    QCOMPARE(system.fileSystem, u"APFS"_s);
    QCOMPARE(system.mountPoint, u"/"_s);
    QVERIFY(system.isInternal);
    QCOMPARE(system.smartStatus, u"Vérifié"_s);
    QCOMPARE(system.smartIsVerified, true);
    QCOMPARE(system.deviceName, u"APPLE SSD AP0512R"_s);

    const StorageVolume &backup = volumes.at(1);
    QCOMPARE(backup.totalBytes, 1000202039296.0);
    QCOMPARE(backup.freeBytes, 412873195520.0);
    QCOMPARE(backup.fileSystem, u"ExFAT"_s);
    QCOMPARE(backup.mountPoint, u"/Volumes/Sauvegarde"_s);
    QVERIFY(!backup.isInternal);
    QCOMPARE(backup.smartStatus, std::nullopt);
    QCOMPARE(backup.smartIsVerified, std::nullopt);
    QCOMPARE(backup.deviceName, u"PSSD T7"_s);
}

// A nearly full internal disk, two kinds of disk image and a 2 TB USB disk.
void TestStorageInventory::storageMixCapture()
{
    const std::optional<Platform> platform = capturePlatform(u"storage-mix"_s);
    QVERIFY(platform);
    const Result<QList<StorageVolume>> result = InventoryService::storage(*platform);
    QVERIFY(result.ok());
    const QList<StorageVolume> &volumes = result.value();
    QCOMPARE(volumeNames(volumes), (QStringList{u"Macintosh HD"_s, u"Archives"_s}));
    QCOMPARE(volumes.at(0).mountPoint, u"/"_s);
    QVERIFY(volumes.at(0).isInternal);
    QCOMPARE(volumes.at(0).totalBytes, 245107195904.0);
    QCOMPARE(volumes.at(0).freeBytes, 17850376192.0);
    QVERIFY(!volumes.at(1).isInternal);
    QCOMPARE(volumes.at(1).totalBytes, 2000398934016.0);
    QCOMPARE(volumes.at(1).deviceName, u"Elements 25A2"_s);
}

QUILLON_TEST_MAIN(TestStorageInventory)
#include "tst_storage_inventory.moc"
