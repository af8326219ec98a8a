#include "common/test_main.h"
#include "machine_fakes.h"

#include "collectors/battery_service.h"
#include "collectors/hardware_service.h"
#include "platform/capture/property_list_reader.h"

#include <QDirIterator>
#include <QFile>

using namespace Qt::StringLiterals;

// Real answers published by others, from many Macs and systems: each goes through the
// machine and battery collectors, which must give a record or one of the profiler's two
// failures, and never crash or hang.
namespace {

const QString corpus = QDir::cleanPath(QStringLiteral(QUILLON_CORPUS_DIR));

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A battery that is there, so that the answer under test decides the rest.
FakeMac macWithBattery(const PropertyDictionary &battery = {{u"CurrentCapacity"_s, qint64(50)}})
{
    FakeMac mac;
    mac.registry->byClass[u"AppleSmartBattery"_s] = {battery};
    return mac;
}

void verifyRows(const QList<InfoRow> &rows)
{
    for (const InfoRow &row : rows)
        QVERIFY2(!row.value.isEmpty(), qPrintable(row.label));
}

} // namespace

class TestCorpusMachine : public QObject
{
    Q_OBJECT

    int m_filesRead = 0;

    static void addFiles(const QString &folder, const QString &pattern)
    {
        if (!QDir(corpus).exists())
            QSKIP("No corpus of real outputs beside the checkout (../shared/corpus): nothing to run.");
        QTest::addColumn<QString>("path");
        QStringList paths;
        for (QDirIterator it(corpus + u'/' + folder, {pattern}, QDir::Files, QDirIterator::Subdirectories);
             it.hasNext();)
            paths.append(it.next());
        paths.sort();
        for (const QString &path : paths)
            QTest::newRow(qPrintable(QDir(corpus).relativeFilePath(path))) << path;
    }

private Q_SLOTS:
    void hardwareAnswers_data() { addFiles(u"profiler/SPHardwareDataType"_s, u"*.json"_s); }
    void hardwareAnswers()
    {
        QFETCH(QString, path);
        FakeMac mac;
        mac.profiler->answer(u"SPHardwareDataType"_s, contents(path));
        const Result<HardwareInfo> result = HardwareService::load(mac.platform());
        ++m_filesRead;
        if (!result.ok())
            return qInfo("  %s", qPrintable(result.failure().description()));
        const HardwareInfo &info = result.value();
        verifyRows(info.rows);
        qInfo("  %s | %s | %s | %s", qPrintable(info.modelIdentifier), qPrintable(info.chip), qPrintable(info.cores),
              qPrintable(info.memory));
    }

    void softwareAnswers_data() { addFiles(u"profiler/SPSoftwareDataType"_s, u"*.json"_s); }
    void softwareAnswers()
    {
        QFETCH(QString, path);
        FakeMac mac;
        mac.profiler->answer(u"SPHardwareDataType"_s, R"({"SPHardwareDataType": []})");
        mac.profiler->answer(u"SPSoftwareDataType"_s, contents(path));
        const Result<HardwareInfo> result = HardwareService::load(mac.platform());
        ++m_filesRead;
        QVERIFY(result.ok());
        verifyRows(result.value().rows);
    }

    void powerAnswers_data() { addFiles(u"profiler/SPPowerDataType"_s, u"*.json"_s); }
    void powerAnswers()
    {
        QFETCH(QString, path);
        FakeMac mac = macWithBattery();
        mac.profiler->answer(u"SPPowerDataType"_s, contents(path));
        const std::optional<BatteryInfo> info = BatteryService::load(mac.platform());
        ++m_filesRead;
        QVERIFY(info);
        verifyRows(info->rows);
        qInfo("  health %lld, condition %s, %lld lines", info->healthPercent.value_or(-1),
              qPrintable(info->condition.value_or(u"-"_s)), qint64(info->rows.size()));
    }

    void registryAnswers_data() { addFiles(u"ioreg"_s, u"*.plist"_s); }
    void registryAnswers()
    {
        QFETCH(QString, path);
        const PropertyListReader::Outcome outcome = PropertyListReader::read(contents(path));
        ++m_filesRead;
        QVERIFY2(outcome.error.isEmpty(), qPrintable(outcome.error));
        QVariantList services = outcome.root.toList();
        if (outcome.root.typeId() == QMetaType::QVariantMap)
            services.append(outcome.root);
        QVERIFY(!services.isEmpty());
        for (const QVariant &service : services) {
            const Platform platform = macWithBattery(service.toMap()).platform();
            const std::optional<BatteryInfo> info = BatteryService::load(platform);
            QCOMPARE(BatteryService::liveSnapshot(platform).has_value(), info.has_value());
            if (info)
                verifyRows(info->rows);
        }
    }

    void cleanupTestCase()
    {
        if (m_filesRead > 0)
            qInfo("%d corpus files read", m_filesRead);
    }
};

QUILLON_TEST_MAIN(TestCorpusMachine)
#include "tst_corpus_machine.moc"
