#include "collectors/inventory_service.h"
#include "common/test_main.h"
#include "inventory_fakes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString storageType = u"SPStorageDataType"_s;

struct ReportedVolume
{
    QString name;
    double size = 0;
    QString mountPoint;
    QString device; // no physical drive when empty
    bool internal = false;
};

// One volume of the storage report, with only the keys that decide what is kept and where.
QByteArray volumeJson(const ReportedVolume &reported)
{
    QJsonObject volume{{u"_name"_s, reported.name}, {u"size_in_bytes"_s, reported.size}, {u"free_space_in_bytes"_s, 1000}};
    if (!reported.mountPoint.isEmpty())
        volume.insert(u"mount_point"_s, reported.mountPoint);
    if (!reported.device.isEmpty()) {
        volume.insert(u"physical_drive"_s, QJsonObject{{u"device_name"_s, reported.device},
                                                       {u"is_internal_disk"_s, reported.internal ? u"yes"_s : u"no"_s}});
    }
    return QJsonDocument(volume).toJson(QJsonDocument::Compact);
}

QByteArray volumesJson(const QList<ReportedVolume> &volumes)
{
    QByteArrayList parts;
    for (const ReportedVolume &reported : volumes)
        parts.append(volumeJson(reported));
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

// A volume in one line: "name | total / free | file system | mount point | internal or
// external | S.M.A.R.T. wording | verified, not verified or - | device", "-" for what is absent.
QString describeVolume(const StorageVolume &volume)
{
    const QString none = u"-"_s;
    const QString verdict = !volume.smartIsVerified ? none
        : *volume.smartIsVerified                   ? u"verified"_s
                                                    : u"not verified"_s;
    return QStringList{volume.name,
                       QString::number(volume.totalBytes, 'f', 0) + u" / "_s + QString::number(volume.freeBytes, 'f', 0),
                       volume.fileSystem.value_or(none), volume.mountPoint.value_or(none),
                       volume.isInternal ? u"internal"_s : u"external"_s, volume.smartStatus.value_or(none), verdict,
                       volume.deviceName.value_or(none)}
        .join(u" | "_s);
}

QStringList describeVolumes(const QList<StorageVolume> &volumes)
{
    QStringList out;
    for (const StorageVolume &volume : volumes)
        out.append(describeVolume(volume));
    return out;
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
    QTest::addColumn<QString>("volume");

    QTest::newRow("failing disk") << QByteArray(R"json({"_name": "HD", "size_in_bytes": 1000, "file_system": "HFS+",
        "physical_drive": {"device_name": "WDC", "is_internal_disk": "yes", "smart_status": "Failing"}})json")
        << u"HD | 1000 / 0 | HFS+ | - | internal | Failing | not verified | WDC"_s;
    QTest::newRow("verified spelt in lower case is not verified") << QByteArray(R"json({"_name": "HD",
        "physical_drive": {"smart_status": "verified"}})json")
        << u"HD | 0 / 0 | - | - | external | verified | not verified | -"_s;
    QTest::newRow("drive without smart status") << QByteArray(R"json({"_name": "Clé", "mount_point": "/Volumes/Clé",
        "physical_drive": {"device_name": "Cruzer", "is_internal_disk": "no"}})json")
        << u"Clé | 0 / 0 | - | /Volumes/Clé | external | - | - | Cruzer"_s;
    QTest::newRow("empty smart status counts as none") << QByteArray(R"json({"_name": "Clé",
        "physical_drive": {"smart_status": ""}})json") << u"Clé | 0 / 0 | - | - | external | - | - | -"_s;
    QTest::newRow("internal written with a capital") << QByteArray(R"json({"_name": "HD",
        "physical_drive": {"is_internal_disk": "Yes"}})json") << u"HD | 0 / 0 | - | - | external | - | - | -"_s;
    QTest::newRow("internal written as a boolean") << QByteArray(R"json({"_name": "HD",
        "physical_drive": {"is_internal_disk": true}})json") << u"HD | 0 / 0 | - | - | external | - | - | -"_s;
    QTest::newRow("nothing but an empty name") << QByteArray(R"json({"_name": ""})json")
                                               << u"Sans nom | 0 / 0 | - | - | external | - | - | -"_s;
    QTest::newRow("sizes written as text") << QByteArray(R"json({"_name": "NAS", "size_in_bytes": "250000000000",
        "free_space_in_bytes": "1.5e9", "file_system": "SMB"})json")
        << u"NAS | 250000000000 / 1500000000 | SMB | - | external | - | - | -"_s;
    QTest::newRow("sizes with a unit are not sizes") << QByteArray(R"json({"_name": "NAS", "size_in_bytes": "250 GB",
        "free_space_in_bytes": "12 GB"})json") << u"NAS | 0 / 0 | - | - | external | - | - | -"_s;
    QTest::newRow("drive that is not a dictionary") << QByteArray(R"json({"_name": "HD",
        "physical_drive": ["APPLE SSD", "yes"]})json") << u"HD | 0 / 0 | - | - | external | - | - | -"_s;
}

void TestStorageInventory::volumeFields()
{
    QFETCH(QByteArray, item);
    QTEST(describeVolumes(storageOf(item)).join(u'\n'), "volume");
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
    QCOMPARE(describeVolumes(result.value()),
             (QStringList{u"Macintosh HD | 494384795648 / 187362746368 | APFS | / | internal | Vérifié | verified | "
                          "APPLE SSD AP0512R"_s,
                          u"Sauvegarde | 1000202039296 / 412873195520 | ExFAT | /Volumes/Sauvegarde | external | - | - | "
                          "PSSD T7"_s}));
}

// A nearly full internal disk, two kinds of disk image and a 2 TB USB disk.
void TestStorageInventory::storageMixCapture()
{
    const std::optional<Platform> platform = capturePlatform(u"storage-mix"_s);
    QVERIFY(platform);
    const Result<QList<StorageVolume>> result = InventoryService::storage(*platform);
    QVERIFY(result.ok());
    QCOMPARE(describeVolumes(result.value()),
             (QStringList{u"Macintosh HD | 245107195904 / 17850376192 | APFS | / | internal | Vérifié | verified | "
                          "APPLE SSD AP0256Z"_s,
                          u"Archives | 2000398934016 / 845712384000 | ExFAT | /Volumes/Archives | external | - | - | "
                          "Elements 25A2"_s}));
}

QUILLON_TEST_MAIN(TestStorageInventory)
#include "tst_storage_inventory.moc"
