#include "common/test_main.h"

#include "platform/capture/capture_platform.h"
#include "platform/capture/property_list_reader.h"
#include "sources/sysctl.h"
#include "sources/system_profiler.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray header = R"({"format": 1, "capturedAt": "2026-11-16T08:05:07Z", "description": "Atelier"})";

// A capture folder written for one test, removed afterwards.
class Capture
{
public:
    Capture() { write(u"capture.json"_s, header); }

    QString path() const { return m_dir.path(); }

    void write(const QString &relativePath, const QByteArray &bytes) const
    {
        const QString full = path() + u'/' + relativePath;
        QDir().mkpath(QFileInfo(full).path());
        QFile file(full);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write a capture file");
    }

    std::shared_ptr<CaptureFolder> open() const
    {
        auto opened = CaptureFolder::open(path());
        if (auto *error = std::get_if<QString>(&opened))
            qFatal("%s", qPrintable(*error));
        return std::get<std::shared_ptr<CaptureFolder>>(opened);
    }

private:
    QTemporaryDir m_dir;
};

bool namesProblem(const CaptureFolder &folder, const QString &relativePath)
{
    for (const QString &line : folder.problems()) {
        if (line.startsWith(relativePath + u' '))
            return true;
    }
    return false;
}

QByteArray plist(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n" + body + "\n</plist>\n";
}

// The outcome of one profiler run in words: the item count, or the failure text.
QString profilerOutcome(const Platform &platform, const QString &dataType)
{
    const auto answer = SystemProfiler::items(*platform.profiler, dataType);
    if (const auto *failure = std::get_if<SystemProfiler::Failure>(&answer))
        return failure->description();
    return QString::number(std::get<QList<PropertyDictionary>>(answer).size());
}

const QString unreadable = u"Réponse de system_profiler illisible."_s;
const QVariant absent;

} // namespace

class TestCaptureFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void openRefusesWhatIsNotACapture_data()
    {
        QTest::addColumn<QVariant>("captureJson"); // absent: no such file
        QTest::addColumn<QString>("reason");       // a word the error must hold
        QTest::newRow("no capture.json") << absent << u"capture.json"_s;
        QTest::newRow("empty capture.json") << QVariant(QByteArray("")) << u"capture.json"_s;
        QTest::newRow("truncated capture.json") << QVariant(header.left(20)) << u"capture.json"_s;
        QTest::newRow("format 2") << QVariant(QByteArray(R"({"format": 2, "capturedAt": "2026-11-16T08:05:07Z"})"))
                                  << u"format"_s;
        QTest::newRow("format as text")
            << QVariant(QByteArray(R"({"format": "1", "capturedAt": "2026-11-16T08:05:07Z"})")) << u"format"_s;
        QTest::newRow("no capturedAt") << QVariant(QByteArray(R"({"format": 1})")) << u"capturedAt"_s;
        QTest::newRow("capturedAt not a date") << QVariant(QByteArray(R"({"format": 1, "capturedAt": "hier"})"))
                                               << u"capturedAt"_s;
    }

    void openRefusesWhatIsNotACapture()
    {
        QFETCH(QVariant, captureJson);
        QFETCH(QString, reason);
        QTemporaryDir dir;
        if (captureJson.isValid()) {
            QFile file(dir.filePath(u"capture.json"_s));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(captureJson.toByteArray());
        }
        const auto opened = CaptureFolder::open(dir.path());
        QVERIFY(std::holds_alternative<QString>(opened));
        const QString error = std::get<QString>(opened);
        QVERIFY2(error.contains(QDir::toNativeSeparators(dir.path())), qPrintable(error));
        QVERIFY2(error.contains(reason), qPrintable(error));
    }

    void openRefusesMissingFolders()
    {
        QTemporaryDir dir;
        const QString missing = dir.filePath(u"absent"_s);
        const auto opened = CaptureFolder::open(missing);
        QVERIFY(std::holds_alternative<QString>(opened));
        QVERIFY(std::get<QString>(opened).contains(QDir::toNativeSeparators(missing)));

        Capture capture;
        QVERIFY(std::holds_alternative<QString>(CaptureFolder::open(capture.path() + u"/capture.json"_s)));
        QDir(capture.path()).remove(u"capture.json"_s);
        QDir(capture.path()).mkdir(u"capture.json"_s);
        QVERIFY(std::holds_alternative<QString>(CaptureFolder::open(capture.path())));
    }

    void clockIsTheCaptureMoment()
    {
        Capture capture;
        capture.write(u"capture.json"_s,
                      R"({"format": 1, "capturedAt": "2026-11-16T09:05:07+01:00", "description": "Atelier"})");
        const Platform platform = makeCapturePlatform(capture.open());
        const QDateTime moment(QDate(2026, 11, 16), QTime(8, 5, 7), QTimeZone::utc());
        QCOMPARE(platform.clock->now(), moment);
        QCOMPARE(platform.clock->now(), moment); // the clock stands still
        QVERIFY(platform.isReplay);
        QCOMPARE(platform.description, u"Atelier"_s);
    }

    void profiler_data()
    {
        QTest::addColumn<QVariant>("json");   // absent: no such file
        QTest::addColumn<QVariant>("status"); // absent: no such file
        QTest::addColumn<QString>("outcome"); // item count or failure text
        QTest::addColumn<bool>("problem");    // the status file is named among the problems
        const QByteArray answer = R"({"SPUSBDataType": [{"_name": "hub"}, {"_name": "clé"}]})";
        const QString code2 = u"system_profiler a échoué : code 2 pour SPUSBDataType"_s;
        QTest::newRow("answer") << QVariant(answer) << absent << u"2"_s << false;
        QTest::newRow("no answer file") << absent << absent << unreadable << false;
        QTest::newRow("empty answer") << QVariant(QByteArray("")) << absent << unreadable << false;
        QTest::newRow("truncated answer") << QVariant(answer.chopped(3)) << absent << unreadable << false;
        QTest::newRow("status 0") << QVariant(answer) << QVariant(QByteArray("0\n")) << u"2"_s << false;
        QTest::newRow("status 2") << QVariant(answer) << QVariant(QByteArray("2")) << code2 << false;
        QTest::newRow("status 2 with spaces") << absent << QVariant(QByteArray(" 2 \n")) << code2 << false;
        QTest::newRow("status in words") << QVariant(answer) << QVariant(QByteArray("deux")) << QString() << true;
        QTest::newRow("empty status") << QVariant(answer) << QVariant(QByteArray("")) << QString() << true;
    }

    void profiler()
    {
        QFETCH(QVariant, json);
        QFETCH(QVariant, status);
        QFETCH(QString, outcome);
        QFETCH(bool, problem);
        Capture capture;
        if (json.isValid())
            capture.write(u"profiler/SPUSBDataType.json"_s, json.toByteArray());
        if (status.isValid())
            capture.write(u"profiler/SPUSBDataType.status"_s, status.toByteArray());
        const auto folder = capture.open();
        const QString actual = profilerOutcome(makeCapturePlatform(folder), u"SPUSBDataType"_s);
        if (problem) {
            // No exit status can be read: the run fails, and the file is named.
            QVERIFY2(actual.startsWith(u"system_profiler a échoué : "_s), qPrintable(actual));
            QVERIFY2(actual.contains(u"SPUSBDataType.status"_s), qPrintable(actual));
        } else {
            QCOMPARE(actual, outcome);
        }
        QCOMPARE(namesProblem(*folder, u"profiler/SPUSBDataType.status"_s), problem);
    }

    void namesNeverLeaveTheFolder_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("parent folder") << u"../Evil"_s;
        QTest::newRow("sub-folder") << u"name/Evil"_s;
        QTest::newRow("dot dot") << u".."_s;
        QTest::newRow("empty") << QString();
    }

    void namesNeverLeaveTheFolder()
    {
        QFETCH(QString, name);
        // Each file below would answer for `name` if a path built from it reached that file.
        Capture capture;
        const QByteArray profilerAnswer = "{\"" + name.toUtf8().replace('\\', "\\\\") + "\": []}";
        const QByteArray service = plist("<array><dict><key>IOClass</key><string>Evil</string></dict></array>");
        for (const QString &place : {u"Evil"_s, u"profiler/name/Evil"_s, u"profiler/..\\Evil"_s, u"profiler/.."_s}) {
            capture.write(place + u".json"_s, profilerAnswer);
        }
        for (const QString &place : {u"registry/Evil"_s, u"Evil"_s, u"registry/class/name/Evil"_s,
                                     u"registry/name/Evil"_s, u"registry/class/.."_s}) {
            capture.write(place + u".plist"_s, service);
        }
        const Platform platform = makeCapturePlatform(capture.open());
        QCOMPARE(profilerOutcome(platform, name), unreadable);
        QVERIFY(platform.registry->servicesOfClass(name).isEmpty());
        QVERIFY(platform.registry->servicesNamed(name).isEmpty());
    }

    void registry_data()
    {
        QTest::addColumn<QVariant>("file"); // absent: no such file
        QTest::addColumn<QStringList>("services");
        QTest::addColumn<bool>("problem");
        const QByteArray two = plist("<array>"
                                     "<dict><key>IOClass</key><string>first</string></dict>"
                                     "<string>stray</string>"
                                     "<dict><key>IOClass</key><string>second</string></dict>"
                                     "</array>");
        QTest::newRow("two services, a stray text skipped") << QVariant(two) << QStringList{u"first"_s, u"second"_s}
                                                            << false;
        QTest::newRow("no file") << absent << QStringList() << false;
        QTest::newRow("empty file: ioreg found nothing") << QVariant(QByteArray("")) << QStringList() << false;
        QTest::newRow("truncated") << QVariant(two.left(two.size() / 2)) << QStringList() << true;
        QTest::newRow("root is a dictionary")
            << QVariant(plist("<dict><key>IOClass</key><string>first</string></dict>")) << QStringList() << true;
        QTest::newRow("not a property list") << QVariant(QByteArray("IOClass = first")) << QStringList() << true;
        QTest::newRow("deep nesting") << QVariant(plist(QByteArray("<array>").repeated(100000)
                                                        + QByteArray("</array>").repeated(100000)))
                                      << QStringList() << true;
    }

    void registry()
    {
        QFETCH(QVariant, file);
        QFETCH(bool, problem);
        Capture capture;
        if (file.isValid()) {
            capture.write(u"registry/class/AppleSMC.plist"_s, file.toByteArray());
            capture.write(u"registry/name/SMC.plist"_s, file.toByteArray());
        }
        const auto folder = capture.open();
        const Platform platform = makeCapturePlatform(folder);
        for (const auto &services :
             {platform.registry->servicesOfClass(u"AppleSMC"_s), platform.registry->servicesNamed(u"SMC"_s)}) {
            QStringList classes;
            for (const PropertyDictionary &service : services)
                classes << service.value(u"IOClass"_s).toString();
            QTEST(classes, "services");
        }
        QCOMPARE(namesProblem(*folder, u"registry/class/AppleSMC.plist"_s), problem);
        QCOMPARE(namesProblem(*folder, u"registry/name/SMC.plist"_s), problem);
    }

    void kernel_data()
    {
        QTest::addColumn<QString>("name");
        // An integer is read with Sysctl.integer, a text with Sysctl.string; absent means
        // that the value has no bytes at all, so both read as absent.
        QTest::addColumn<QVariant>("expected");
        QTest::newRow("text") << u"kern.osproductversion"_s << QVariant(u"15.1"_s);
        QTest::newRow("64-bit integer") << u"hw.memsize"_s << QVariant(qint64(17179869184));
        QTest::newRow("negative integer") << u"test.negative"_s << QVariant(qint64(-5));
        QTest::newRow("raw 4 bytes holding -1") << u"test.hex32"_s << QVariant(qint64(-1));
        QTest::newRow("raw 8 bytes, upper case") << u"test.hex64"_s << QVariant(qint64(-2));
        QTest::newRow("raw 2 bytes") << u"test.hex16"_s << QVariant(u"AB"_s);
        QTest::newRow("raw odd digits") << u"test.hexodd"_s << absent;
        QTest::newRow("raw non-hex") << u"test.hexbad"_s << absent;
        QTest::newRow("real") << u"test.real"_s << absent;
        QTest::newRow("boolean") << u"test.boolean"_s << absent;
        QTest::newRow("array") << u"test.array"_s << absent;
        QTest::newRow("beyond 64 bits") << u"test.huge"_s << absent;
        QTest::newRow("missing") << u"hw.logicalcpu"_s << absent;
    }

    void kernel()
    {
        QFETCH(QString, name);
        QFETCH(QVariant, expected);
        Capture capture;
        capture.write(u"kernel.json"_s, R"({
            "kern.osproductversion": "15.1", "hw.memsize": 17179869184, "hw.physicalcpu": 10,
            "test.negative": -5, "test.hex32": {"hex": "ffffffff"}, "test.hex64": {"hex": "FEFFFFFFFFFFFFFF"},
            "test.hex16": {"hex": "4142"}, "test.hexodd": {"hex": "fff"}, "test.hexbad": {"hex": "zz"},
            "test.hexempty": {"hex": ""}, "test.real": 2.5, "test.boolean": true, "test.null": null,
            "test.array": [1], "test.huge": 1e300})");
        const Platform platform = makeCapturePlatform(capture.open());
        const std::optional<qint64> integer = Sysctl::integer(*platform.kernel, name.toLatin1());
        const std::optional<QString> text = Sysctl::string(*platform.kernel, name.toLatin1());
        if (expected.typeId() == QMetaType::LongLong) {
            QCOMPARE(integer, std::optional<qint64>(expected.toLongLong()));
        } else if (expected.typeId() == QMetaType::QString) {
            QCOMPARE(text, std::optional<QString>(expected.toString()));
        } else {
            QVERIFY(!integer);
            QVERIFY(!text);
        }
    }

    void kernelStructures()
    {
        Capture capture;
        capture.write(u"kernel.json"_s, R"({"kern.boottime": 1763200000,
            "vm.swapusage": {"total": 3221225472, "used": 2147483648, "available": 1073741824}})");
        const Platform platform = makeCapturePlatform(capture.open());
        // 1 763 200 000 s after 1970: 15 November 2025, 09:46:40 UTC.
        QCOMPARE(Sysctl::bootTime(*platform.kernel), QDateTime(QDate(2025, 11, 15), QTime(9, 46, 40), QTimeZone::utc()));
        const auto swap = Sysctl::swapUsage(*platform.kernel);
        QVERIFY(swap);
        QCOMPARE(swap->total, quint64(3221225472));
        QCOMPARE(swap->used, quint64(2147483648));
        QCOMPARE(swap->available, quint64(1073741824));
    }

    void kernelFileUnreadable_data()
    {
        QTest::addColumn<QVariant>("file");
        QTest::addColumn<bool>("problem");
        QTest::newRow("no file") << absent << false;
        QTest::newRow("truncated") << QVariant(QByteArray(R"({"hw.memsize": 171)")) << true;
        QTest::newRow("root is an array") << QVariant(QByteArray(R"([{"hw.memsize": 1}])")) << true;
        QTest::newRow("swap with a member missing")
            << QVariant(QByteArray(R"({"vm.swapusage": {"total": 3, "used": 2}, "kern.boottime": "hier"})")) << false;
    }

    void kernelFileUnreadable()
    {
        QFETCH(QVariant, file);
        Capture capture;
        if (file.isValid())
            capture.write(u"kernel.json"_s, file.toByteArray());
        const auto folder = capture.open();
        const Platform platform = makeCapturePlatform(folder);
        QVERIFY(!Sysctl::integer(*platform.kernel, "hw.memsize"));
        QVERIFY(!Sysctl::swapUsage(*platform.kernel));
        QVERIFY(!Sysctl::bootTime(*platform.kernel));
        QTEST(namesProblem(*folder, u"kernel.json"_s), "problem");
    }

    void process_data()
    {
        QTest::addColumn<QVariant>("file");
        QTest::addColumn<QString>("hostName");
        QTest::addColumn<QString>("version");
        QTest::addColumn<ThermalState>("thermalState");
        const auto with = [](const char *state) {
            return QVariant(R"json({"hostName": "mac-atelier", "operatingSystemVersion": "Version 15.1 (Build 24B83)",)json"
                            R"json( "thermalState": )json" + QByteArray(state) + '}');
        };
        const QString host = u"mac-atelier"_s, version = u"Version 15.1 (Build 24B83)"_s;
        QTest::newRow("nominal") << with("0") << host << version << ThermalState::nominal;
        QTest::newRow("critical") << with("3") << host << version << ThermalState::critical;
        QTest::newRow("beyond critical") << with("4") << host << version << ThermalState::unknown;
        QTest::newRow("fractional") << with("1.5") << host << version << ThermalState::unknown;
        QTest::newRow("as text") << with("\"2\"") << host << version << ThermalState::unknown;
        QTest::newRow("null") << with("null") << host << version << ThermalState::unknown;
        QTest::newRow("no file") << absent << QString() << QString() << ThermalState::unknown;
        QTest::newRow("root is an array") << QVariant(QByteArray("[0]")) << QString() << QString()
                                          << ThermalState::unknown;
    }

    void process()
    {
        QFETCH(QVariant, file);
        Capture capture;
        if (file.isValid())
            capture.write(u"process.json"_s, file.toByteArray());
        const Platform platform = makeCapturePlatform(capture.open());
        QTEST(platform.process->hostName(), "hostName");
        QTEST(platform.process->operatingSystemVersion(), "version");
        QTEST(platform.process->thermalState(), "thermalState");
    }

    void specialFilesNeverBlock()
    {
        // A folder, a named pipe and an endless device in place of answer files: reading them
        // must neither block nor fill the memory.
        Capture capture;
        QDir(capture.path()).mkpath(u"profiler/SPUSBDataType.json"_s);
        QDir(capture.path()).mkpath(u"registry/class"_s);
        QVERIFY(::mkfifo(QFile::encodeName(capture.path() + u"/profiler/SPAudioDataType.json"_s).constData(), 0600)
                == 0);
        QVERIFY(QFile::link(u"/dev/zero"_s, capture.path() + u"/registry/class/AppleSMC.plist"_s));
        QVERIFY(QFile::link(u"/dev/zero"_s, capture.path() + u"/kernel.json"_s));
        const auto folder = capture.open();
        const Platform platform = makeCapturePlatform(folder);
        QCOMPARE(profilerOutcome(platform, u"SPUSBDataType"_s), unreadable);
        QCOMPARE(profilerOutcome(platform, u"SPAudioDataType"_s), unreadable);
        QVERIFY(platform.registry->servicesOfClass(u"AppleSMC"_s).isEmpty());
        QVERIFY(!Sysctl::integer(*platform.kernel, "hw.memsize"));
        QVERIFY(namesProblem(*folder, u"profiler/SPAudioDataType.json"_s));
    }

    void shippedRegistryFilesRead()
    {
        QDirIterator files(QStringLiteral(QUILLON_CAPTURES_DIR), {u"*.plist"_s}, QDir::Files,
                           QDirIterator::Subdirectories);
        int count = 0;
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const PropertyListReader::Outcome outcome = PropertyListReader::read(file.readAll());
            QVERIFY2(outcome.error.isEmpty(), qPrintable(file.fileName() + u" : "_s + outcome.error));
            ++count;
        }
        if (count == 0)
            QSKIP("no capture with registry answers in this checkout");
    }
};

QUILLON_TEST_MAIN(TestCaptureFolder)
#include "tst_capture_folder.moc"
