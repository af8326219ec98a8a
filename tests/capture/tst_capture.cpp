#include "capture_helpers.h"
#include "common/test_main.h"
#include "sources/readings.h"

#include "platform/capture/capture_platform.h"
#include "platform/capture/property_list_reader.h"
#include "sources/system_profiler.h"

#include <QTimeZone>

#include <plist/plist.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray xml(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n" + body + "\n</plist>\n";
}

// The same property list in the binary form, as libplist writes it.
QByteArray binary(const QByteArray &xmlText)
{
    plist_t root = nullptr;
    char *bytes = nullptr;
    uint32_t length = 0;
    plist_from_xml(xmlText.constData(), uint32_t(xmlText.size()), &root);
    plist_to_bin(root, &bytes, &length);
    plist_free(root);
    const QByteArray result(bytes, qsizetype(length));
    free(bytes);
    return result;
}

void appendBigEndian(QByteArray &bytes, quint64 value, int size)
{
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes.append(char((value >> shift) & 0xff));
}

// A binary property list written by hand: object 0 is the root; references and offsets are 4 bytes.
QByteArray handMadeBinary(const QList<QByteArray> &objects)
{
    QByteArray bytes("bplist00"), offsets;
    for (const QByteArray &object : objects) {
        appendBigEndian(offsets, quint64(bytes.size()), 4);
        bytes += object;
    }
    const quint64 offsetTable = quint64(bytes.size());
    bytes += offsets + QByteArray(6, '\0') + char(4) + char(4);
    appendBigEndian(bytes, quint64(objects.size()), 8);
    appendBigEndian(bytes, 0, 8);
    appendBigEndian(bytes, offsetTable, 8);
    return bytes;
}

// An array object whose elements are the given object references.
QByteArray arrayOf(const QList<quint64> &references)
{
    QByteArray object(1, char(0xA0 + references.size()));
    for (quint64 reference : references)
        appendBigEndian(object, reference, 4);
    return object;
}

// `depth` arrays, each holding the next; the innermost is empty.
QByteArray nested(int depth, bool isBinary)
{
    if (!isBinary)
        return xml(QByteArray("<array>").repeated(depth) + QByteArray("</array>").repeated(depth));
    QList<QByteArray> objects;
    for (int i = 1; i < depth; ++i)
        objects.append(arrayOf({ quint64(i) }));
    return handMadeBinary(objects << arrayOf({}));
}

bool namesProblem(const CaptureFolder &folder, const QString &relativePath)
{
    return folder.problems().join(u'\n').contains(relativePath + u" : "_s);
}

const QString unreadable = u"Réponse de system_profiler illisible."_s;

} // namespace

class TestCapture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void propertyLists_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("read"); // the root in words, or "error"
        const auto both = [](const char *name, const QByteArray &body, const QString &read) {
            QTest::addRow("%s, XML", name) << xml(body) << read;
            QTest::addRow("%s, binary", name) << binary(xml(body)) << read;
        };
        both("dictionary",
            "<dict><key>b</key><array><dict><key>id</key><string>x</string></dict></array>"
            "<key>a</key><integer>1</integer></dict>",
            u"{a: 1, b: [{id: \"x\"}]}"_s);
        both("scalars",
            "<array><true/><false/><real>1.5</real><real>3</real><integer>-5</integer>"
            "<data>AAEC/w==</data><string>caf\xc3\xa9 \xe2\x80\x94\xe2\x80\xaf</string></array>",
            u"[true, false, 1.5, 3.0, -5, <000102ff>, \"café —\u202F\"]"_s);
        both("64-bit integers",
            "<array><integer>9223372036854775807</integer><integer>-9223372036854775808</integer>"
            "<integer>9223372036854775808</integer><integer>18446744073709551615</integer></array>",
            u"[9223372036854775807, -9223372036854775808, 9223372036854775808, 18446744073709551615]"_s);
        both("dates on both sides of 2001",
            "<array><date>2026-11-16T08:05:07Z</date><date>1904-01-01T00:00:00Z</date>"
            "<date>2100-03-01T12:00:00Z</date></array>",
            u"[@2026-11-16T08:05:07Z, @1904-01-01T00:00:00Z, @2100-03-01T12:00:00Z]"_s);
        QTest::newRow("invalid UTF-8 replaced")
            << xml("<dict><key>k\xc3</key><string>a\xffz</string></dict>") << u"{k\uFFFD: \"a\uFFFDz\"}"_s;
        // The root is at depth 0: 129 nested arrays reach the deepest accepted depth, 128.
        const QString deepest = QString(129, u'[') + QString(129, u']');
        QTest::newRow("deepest accepted nesting, binary") << nested(129, true) << deepest;
        const QString error = u"error"_s;
        QTest::newRow("one level too deep, binary") << nested(130, true) << error;
        QTest::newRow("deep binary nesting") << nested(100000, true) << error;
        const QByteArray dictionary = xml("<dict><key>a</key><integer>1</integer></dict>");
        QByteArray offsetOutside = binary(dictionary);
        offsetOutside.replace(offsetOutside.size() - 8, 8, QByteArray::fromHex("00000000ffffff00"));
        QTest::newRow("empty") << QByteArray() << error;
        QTest::newRow("truncated binary") << binary(dictionary).chopped(10) << error;
        QTest::newRow("offset table outside the file") << offsetOutside << error;
        QTest::newRow("binary array holding itself") << handMadeBinary({ arrayOf({ 0 }) }) << error;
        QTest::newRow("binary reference beyond the objects") << handMadeBinary({ arrayOf({ 5 }) }) << error;
        // Forty arrays that each hold the next one twice: 2^40 paths through 41 objects.
        QList<QByteArray> shared;
        for (quint64 i = 1; i <= 40; ++i)
            shared << arrayOf({ i, i });
        QTest::newRow("binary objects shared 2^40 times") << handMadeBinary(shared << "\x08"_ba) << error;
        QTest::newRow("integer beyond 64 bits") << xml("<integer>99999999999999999999999</integer>") << error;
    }

    void propertyLists()
    {
        QFETCH(QByteArray, bytes);
        const PropertyListReader::Outcome outcome = PropertyListReader::read(bytes);
        QTEST(outcome.error.isEmpty() ? propertyText(outcome.root) : u"error"_s, "read");
        QVERIFY(outcome.error.isEmpty() || !outcome.root.isValid());
    }

    void openRefusesWhatIsNotACapture_data()
    {
        QTest::addColumn<QByteArray>("captureJson"); // null: no such file
        QTest::addColumn<QString>("reason"); // a word the error must hold
        QTest::newRow("no capture.json") << QByteArray() << u"capture.json"_s;
        QTest::newRow("format 2") << R"({"format": 2, "capturedAt": "2026-11-16T08:05:07Z"})"_ba << u"format"_s;
        QTest::newRow("capturedAt not a date") << R"({"format": 1, "capturedAt": "hier"})"_ba << u"capturedAt"_s;
    }

    void openRefusesWhatIsNotACapture()
    {
        QFETCH(QByteArray, captureJson);
        QFETCH(QString, reason);
        QTemporaryDir dir;
        QFile file(dir.filePath(u"capture.json"_s));
        QVERIFY(captureJson.isNull() || (file.open(QIODevice::WriteOnly) && file.write(captureJson) >= 0));
        file.close();
        const auto opened = CaptureFolder::open(dir.path());
        const QString error = std::holds_alternative<QString>(opened) ? std::get<QString>(opened) : QString();
        QVERIFY2(error.contains(QDir::toNativeSeparators(dir.path())) && error.contains(reason), qPrintable(error));
    }

    void replayIsAtTheCaptureMoment()
    {
        Capture capture;
        const Platform platform = makeCapturePlatform(capture.open());
        QCOMPARE(platform.clock->now(), QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7), QTimeZone::utc()));
        QVERIFY(platform.isReplay);
        QCOMPARE(platform.description, u"Atelier"_s);
        const QString missing = capture.dir.filePath(u"absent"_s);
        QVERIFY(std::get<QString>(CaptureFolder::open(missing)).contains(QDir::toNativeSeparators(missing)));
    }

    void profilerFiles_data()
    {
        QTest::addColumn<QByteArray>("json"); // null: no such file
        QTest::addColumn<QByteArray>("status"); // null: no such file
        QTest::addColumn<QString>("outcome"); // item names or failure text
        const QByteArray answer = R"({"SPUSBDataType": [{"_name": "hub"}, {"_name": "clé"}]})";
        QTest::newRow("answer") << answer << QByteArray() << u"[hub, clé]"_s;
        QTest::newRow("no answer file") << QByteArray() << QByteArray() << unreadable;
        QTest::newRow("status 2 with spaces")
            << answer << " 2 \n"_ba << u"system_profiler a échoué : code 2 pour SPUSBDataType"_s;
        QTest::newRow("status in words")
            << answer << "deux"_ba
            << u"system_profiler a échoué : statut illisible dans profiler/SPUSBDataType.status"_s;
    }

    void profilerFiles()
    {
        QFETCH(QByteArray, json);
        QFETCH(QByteArray, status);
        Capture capture;
        capture.write(u"profiler/SPUSBDataType.json"_s, json);
        capture.write(u"profiler/SPUSBDataType.status"_s, status);
        const auto folder = capture.open();
        QTEST(answerText(SystemProfiler::items(*makeCapturePlatform(folder).profiler, u"SPUSBDataType"_s)), "outcome");
        QCOMPARE(namesProblem(*folder, u"profiler/SPUSBDataType.status"_s), status == "deux");
    }

    void namesNeverLeaveTheFolder_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("parent folder") << u"../Evil"_s;
        QTest::newRow("dot dot") << u".."_s;
        QTest::newRow("empty") << QString();
    }

    void namesNeverLeaveTheFolder()
    {
        QFETCH(QString, name);
        // Each file below would answer for `name` if a path built from it reached that file.
        Capture capture;
        for (const QString &place : { u"Evil"_s, u"profiler/name/Evil"_s, u"profiler/.."_s })
            capture.write(place + u".json"_s, "{\"" + name.toUtf8() + "\": []}");
        for (const QString &place : { u"registry/Evil"_s, u"Evil"_s, u"registry/class/name/Evil"_s,
                 u"registry/name/Evil"_s, u"registry/class/.."_s })
            capture.write(place + u".plist"_s, xml("<array><dict/></array>"));
        const Platform platform = makeCapturePlatform(capture.open());
        QCOMPARE(answerText(SystemProfiler::items(*platform.profiler, name)), unreadable);
        QVERIFY(platform.registry->servicesOfClass(name).isEmpty());
        QVERIFY(platform.registry->servicesNamed(name).isEmpty());
    }

    void registryFiles_data()
    {
        QTest::addColumn<QByteArray>("file"); // null: no such file
        QTest::addColumn<QString>("services");
        QTest::addColumn<bool>("problem");
        const QByteArray two = xml("<array><dict><key>IOClass</key><string>first</string></dict><string>stray</string>"
                                   "<dict><key>IOClass</key><string>second</string></dict></array>");
        QTest::newRow("two services, a stray text skipped")
            << two << u"[{IOClass: \"first\"}, {IOClass: \"second\"}]"_s << false;
        QTest::newRow("no file") << QByteArray() << u"[]"_s << false;
        QTest::newRow("truncated") << two.left(two.size() / 2) << u"[]"_s << true;
    }

    void registryFiles()
    {
        QFETCH(QByteArray, file);
        Capture capture;
        capture.write(u"registry/class/AppleSMC.plist"_s, file);
        capture.write(u"registry/name/SMC.plist"_s, file);
        const auto folder = capture.open();
        const Platform platform = makeCapturePlatform(folder);
        QTEST(propertyText(platform.registry->servicesOfClass(u"AppleSMC"_s)), "services");
        QTEST(propertyText(platform.registry->servicesNamed(u"SMC"_s)), "services");
        QTEST(namesProblem(*folder, u"registry/class/AppleSMC.plist"_s), "problem");
        QTEST(namesProblem(*folder, u"registry/name/SMC.plist"_s), "problem");
    }

    // Kernel values as a Mac's kernel would hand them over; the usual values are replayed by
    // the capture writer's tests.
    void kernelFile_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("reading");
        const QByteArray kernel = R"({"kern.osversion": "24B83", "hw.hex64": {"hex": "FEFFFFFFFFFFFFFF"},
            "hw.hexodd": {"hex": "fff"}, "hw.real": 2.5, "vm.swapusage": {"total": 3, "used": 2}})";
        QTest::newRow("raw 8 bytes, upper case") << kernel << "hw.hex64"_ba << u"-2"_s;
        QTest::newRow("swap with a member missing") << kernel << "vm.swapusage"_ba << nothingRead;
    }

    // A value that cannot be read reads as nothing; a file that cannot be read is named among
    // the problems ("kernel.json" instead of the reading).
    void kernelFile()
    {
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, name);
        Capture capture;
        capture.write(u"kernel.json"_s, file);
        const auto folder = capture.open();
        const QString reading = kernelReading(*makeCapturePlatform(folder).kernel, name);
        QTEST(namesProblem(*folder, u"kernel.json"_s) ? u"kernel.json"_s : reading, "reading");
    }

    // Pipes, devices and endless kernel files in place of the capture's files: each is
    // refused without waiting for it, with a French reason, and nothing fills the memory.
    void hostileFilesAreRefusedAtOnce_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("target"); // "fifo" for a named pipe
        QTest::addColumn<QString>("said");
        QTest::newRow("answer file as a pipe") << u"profiler/SPAudioDataType.json"_s << u"fifo"_s
                                               << u"n’est pas un fichier ordinaire"_s;
        QTest::newRow("kernel values from /dev/zero") << u"kernel.json"_s << u"/dev/zero"_s
                                                      << u"n’est pas un fichier ordinaire"_s;
        // A "regular" file of the kernel that never ends.
        QTest::newRow("registry answer from /proc/self/pagemap")
            << u"registry/class/AppleSmartBattery.plist"_s << u"/proc/self/pagemap"_s << u"trop volumineux"_s;
        QTest::newRow("capture header from /proc/self/pagemap") << u"capture.json"_s << u"/proc/self/pagemap"_s
                                                               << u"trop volumineux"_s;
    }

    void hostileFilesAreRefusedAtOnce()
    {
        QFETCH(QString, file);
        QFETCH(QString, target);
        QFETCH(QString, said);
        if (target.startsWith(u'/') && !QFileInfo::exists(target))
            QSKIP("this system has no such file to link to");
        Capture capture;
        QDir(capture.dir.path()).mkpath(QFileInfo(capture.dir.filePath(file)).path());
        if (file == u"capture.json"_s)
            QFile::remove(capture.dir.filePath(file));
        const QByteArray path = QFile::encodeName(capture.dir.filePath(file));
        QVERIFY(target == u"fifo"_s ? ::mkfifo(path.constData(), 0600) == 0 : QFile::link(target, QString::fromLocal8Bit(path)));
        QString message;
        if (file == u"capture.json"_s) {
            const auto opened = CaptureFolder::open(capture.dir.path());
            QVERIFY(std::holds_alternative<QString>(opened));
            message = std::get<QString>(opened);
        } else {
            const auto folder = capture.open();
            const Platform platform = makeCapturePlatform(folder);
            (void)SystemProfiler::items(*platform.profiler, u"SPAudioDataType"_s);
            (void)kernelReading(*platform.kernel, "hw.memsize");
            (void)platform.registry->servicesOfClass(u"AppleSmartBattery"_s);
            message = folder->problems().join(u'\n');
        }
        QVERIFY2(message.contains(said), qPrintable(message));
    }

    // Parse errors are said in French, with where they were found: never Qt's English text.
    void parseErrorsInFrench_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("where");
        QTest::addColumn<QString>("said");
        QTest::newRow("JSON value") << u"kernel.json"_s << QByteArray("{\"hw.memsize\": tru}")
                                    << u"kernel.json : JSON illisible à l’octet "_s << u" : valeur inattendue"_s;
        QTest::newRow("JSON cut short") << u"power-sources.json"_s << QByteArray("[{\"Type\": \"Intern")
                                        << u"power-sources.json : JSON illisible à l’octet "_s << u" : texte non terminé"_s;
    }

    void parseErrorsInFrench()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, bytes);
        Capture capture;
        capture.write(file, bytes);
        const auto folder = capture.open();
        const Platform platform = makeCapturePlatform(folder);
        (void)kernelReading(*platform.kernel, "hw.memsize");
        (void)platform.powerSources->descriptions();
        (void)platform.registry->servicesOfClass(u"AppleSmartBattery"_s);
        const QString problems = folder->problems().join(u'\n');
        QFETCH(QString, where);
        QFETCH(QString, said);
        QVERIFY2(problems.contains(where) && problems.contains(said), qPrintable(problems));
        for (const QString &english : {u"illegal"_s, u"Premature"_s, u"unterminated"_s})
            QVERIFY2(!problems.contains(english, Qt::CaseInsensitive), qPrintable(problems));
    }
};

QUILLON_TEST_MAIN(TestCapture)
#include "tst_capture.moc"
