#include "common/fake_mac.h"
#include "common/test_main.h"

#include "collectors/hardware_service.h"
#include "collectors/inventory_service.h"
#include "diagnostics/diagnostics_rules.h"
#include "fuzz/fuzz_inputs.h"
#include "platform/capture/capture_platform.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <QJsonObject>

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

QString dataPath(const QString &relativePath)
{
    return QStringLiteral(QUILLON_TEST_DATA_DIR) + u'/' + relativePath;
}

const QHash<QString, std::function<void(const QByteArray &)>> &inputsByFolder()
{
    static const QHash<QString, std::function<void(const QByteArray &)>> inputs = {
        {u"profiler_answer"_s, FuzzInputs::profilerAnswer},
        {u"registry"_s, FuzzInputs::registryPropertyList},
        {u"journal"_s, FuzzInputs::journalFile},
        {u"model_overrides"_s, FuzzInputs::modelOverrides},
        {u"capture_folder"_s, FuzzInputs::captureFolder},
    };
    return inputs;
}

} // namespace

class TestFuzzRegressions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        int argc = 0;
        char **argv = nullptr;
        FuzzInputs::initialize(&argc, &argv);
    }

    // Every input that once stopped a fuzzer, through the same code again: it must now go
    // through without a crash, a sanitizer report or a broken expectation.
    void everyFoundInputGoesThrough_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("path");
        for (auto it = inputsByFolder().cbegin(); it != inputsByFolder().cend(); ++it) {
            QDirIterator files(dataPath(it.key()), QDir::Files);
            while (files.hasNext()) {
                const QString path = files.next();
                QTest::newRow(qPrintable(it.key() + u'/' + QFileInfo(path).fileName())) << it.key() << path;
            }
        }
    }

    void everyFoundInputGoesThrough()
    {
        QFETCH(QString, folder);
        QFETCH(QString, path);
        inputsByFolder().value(folder)(contents(path));
    }

    // Sizes, channel counts and sample rates are whole numbers in the profiler's answers; one
    // that no 64-bit integer holds stopped the program. Such an answer is now unreadable.
    void numbersBeyondSixtyFourBitsMakeTheAnswerUnreadable_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<AppSection>("section");
        QTest::addColumn<QString>("failure");
        QTest::addColumn<int>("count");
        const QString unreadable = u"Réponse de system_profiler illisible."_s;
        const auto volume = [](const char *size, const char *free) -> QByteArray {
            return R"({"SPStorageDataType": [{"_name": "Macintosh HD", "mount_point": "/", "size_in_bytes": )"
                + QByteArray(size) + R"(, "free_space_in_bytes": )" + QByteArray(free) + "}]}";
        };
        const auto device = [](const char *members) -> QByteArray {
            return R"({"SPAudioDataType": [{"_items": [{"_name": "Haut-parleurs", )" + QByteArray(members) + "}]}]}";
        };
        QTest::newRow("volume of 10^20 bytes") << volume("1e20", "1000") << AppSection::storage << unreadable << 0;
        QTest::newRow("volume of 2^63 bytes") << volume("9223372036854775808", "0") << AppSection::storage << unreadable << 0;
        QTest::newRow("volume just below 2^63 bytes") << volume("9223372036854774784", "0") << AppSection::storage << QString() << 1;
        QTest::newRow("usual volume") << volume("494384795648", "120000000000") << AppSection::storage << QString() << 1;
        QTest::newRow("sample rate of 10^300 Hz") << device(R"("coreaudio_device_srate": 1e300)") << AppSection::audio << unreadable << 0;
        QTest::newRow("usual speakers") << device(R"("coreaudio_device_srate": 48000, "coreaudio_device_output": 2)") << AppSection::audio << QString() << 1;
    }

    void numbersBeyondSixtyFourBitsMakeTheAnswerUnreadable()
    {
        QFETCH(QByteArray, answer);
        QFETCH(AppSection, section);
        QFETCH(QString, failure);
        QFETCH(int, count);
        FakeMac mac;
        mac.profiler->answer(section == AppSection::storage ? u"SPStorageDataType"_s : u"SPAudioDataType"_s, answer);
        const Platform platform = mac.platform();
        const auto outcome = [](const auto &result) {
            return result.ok() ? std::pair(result.value().size(), QString())
                               : std::pair(qsizetype(0), result.failure().description());
        };
        const auto [found, description] = section == AppSection::storage
            ? outcome(InventoryService::storage(platform))
            : outcome(InventoryService::devices(platform, section));
        QCOMPARE(description, failure);
        QCOMPARE(found, count);
    }

    // The installed memory went through a double on its way to the byte text: the largest
    // 64-bit count became 2^63, outside the range, and stopped the program.
    void largestMemorySizeIsWrittenExactly()
    {
        const FakeKernel kernel(R"({"hw.memsize": 9223372036854775807})");
        // 9 223 372 036 854 775 807 bytes are 9 223 372,036… TB.
        QCOMPARE(HardwareService::localizedMemory(std::nullopt, kernel), u"9\u202F223\u202F372,04\u00A0To"_s);
    }

};

QUILLON_TEST_MAIN(TestFuzzRegressions)
#include "tst_fuzz_regressions.moc"
