#include "collectors/inventory_service.h"
#include "common/test_main.h"
#include "inventory_fakes.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

// Real storage and device reports published by others, each run through its operation: the
// operation must come back with records or with one of the profiler's two failures.

namespace {

const QString corpusFolder = QStringLiteral(QUILLON_CORPUS_DIR) + u"/profiler"_s;

const QStringList deviceTypes{u"SPDisplaysDataType"_s, u"SPUSBDataType"_s,     u"SPThunderboltDataType"_s,
                              u"SPBluetoothDataType"_s, u"SPNetworkDataType"_s, u"SPAudioDataType"_s,
                              u"SPCameraDataType"_s};
const QString storageType = u"SPStorageDataType"_s;

using Operation = Result<QList<DeviceNode>> (*)(const Platform &);

Operation deviceOperation(const QString &dataType)
{
    static const QHash<QString, Operation> operations{
        {u"SPDisplaysDataType"_s, InventoryService::displays}, {u"SPUSBDataType"_s, InventoryService::usb},
        {u"SPThunderboltDataType"_s, InventoryService::thunderbolt},
        {u"SPBluetoothDataType"_s, InventoryService::bluetooth}, {u"SPNetworkDataType"_s, InventoryService::network},
        {u"SPAudioDataType"_s, InventoryService::audio},       {u"SPCameraDataType"_s, InventoryService::cameras},
    };
    return operations.value(dataType);
}

bool isProfilerFailure(const SystemProfiler::Failure &failure)
{
    const QString message = failure.description();
    return message == u"Réponse de system_profiler illisible."_s
        || message.startsWith(u"system_profiler a échoué : "_s);
}

// What must hold of any tree, whatever the report: a title, an icon, rows with text on
// both sides, and an identifier of its own for every node and row.
void checkTree(const QList<DeviceNode> &roots)
{
    QSet<QUuid> identifiers;
    for (const auto &[node, depth] : flattenedAll(roots)) {
        QVERIFY2(!node.name.isEmpty(), "a node without a title");
        QVERIFY2(!node.symbol.isEmpty(), qPrintable(node.name));
        QVERIFY2(!identifiers.contains(node.id), qPrintable(node.name));
        identifiers.insert(node.id);
        for (const InfoRow &row : node.rows) {
            QVERIFY2(!row.label.isEmpty() && !row.value.isEmpty(), qPrintable(node.name + u" / "_s + row.label));
            QVERIFY(!identifiers.contains(row.id));
            identifiers.insert(row.id);
        }
    }
}

void checkVolumes(const QList<StorageVolume> &volumes)
{
    for (const StorageVolume &volume : volumes) {
        QVERIFY(!volume.name.isEmpty());
        QVERIFY(volume.totalBytes >= 0);
        QVERIFY(volume.smartIsVerified.has_value() == volume.smartStatus.has_value());
    }
}

} // namespace

class TestCorpusInventory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyReport_data();
    void everyReport();
    void cleanupTestCase();

private:
    QHash<QString, int> m_filesRead;
    QHash<QString, int> m_failures;
};

void TestCorpusInventory::initTestCase()
{
    if (!QDir(corpusFolder).exists())
        QSKIP(qPrintable(u"No corpus of real reports beside the checkout ("_s + corpusFolder + u"): nothing to read."_s));
}

void TestCorpusInventory::everyReport_data()
{
    QTest::addColumn<QString>("dataType");
    QTest::addColumn<QString>("path");
    for (const QString &dataType : deviceTypes + QStringList{storageType}) {
        const QDir folder(corpusFolder + u'/' + dataType);
        for (const QString &file : folder.entryList({u"*.json"_s}, QDir::Files, QDir::Name))
            QTest::newRow(qPrintable(dataType + u'/' + file)) << dataType << folder.filePath(file);
    }
}

void TestCorpusInventory::everyReport()
{
    QFETCH(QString, dataType);
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(path));
    auto profiler = std::make_shared<FakeProfiler>();
    profiler->answer(dataType, file.readAll());
    const Platform platform = platformWith(profiler);
    ++m_filesRead[dataType];

    if (dataType == storageType) {
        const Result<QList<StorageVolume>> result = InventoryService::storage(platform);
        if (!result.ok()) {
            ++m_failures[dataType];
            QVERIFY2(isProfilerFailure(result.failure()), qPrintable(result.failure().description()));
            return;
        }
        checkVolumes(result.value());
        return;
    }
    const Result<QList<DeviceNode>> result = deviceOperation(dataType)(platform);
    if (!result.ok()) {
        ++m_failures[dataType];
        QVERIFY2(isProfilerFailure(result.failure()), qPrintable(result.failure().description()));
        return;
    }
    checkTree(result.value());
}

void TestCorpusInventory::cleanupTestCase()
{
    if (m_filesRead.isEmpty())
        return;
    int total = 0;
    for (const QString &dataType : deviceTypes + QStringList{storageType}) {
        total += m_filesRead.value(dataType);
        qInfo("%s: %d files read, %d failed in the profiler's words", qPrintable(dataType),
              m_filesRead.value(dataType), m_failures.value(dataType));
    }
    qInfo("%d corpus files read in all", total);
}

QUILLON_TEST_MAIN(TestCorpusInventory)
#include "tst_corpus_inventory.moc"
