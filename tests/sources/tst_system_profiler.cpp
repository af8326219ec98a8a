#include "common/test_main.h"

#include "sources/system_profiler.h"

using namespace Qt::StringLiterals;

namespace {

// A profiler that hands back a prepared run and remembers the arguments it was given.
class RecordingProfiler final : public ProfilerSource
{
public:
    mutable QStringList arguments;
    ProcessOutput output{true, {}, 0, R"({"SPUSBDataType": []})"};

    ProcessOutput run(const QStringList &given) const override
    {
        arguments = given;
        return output;
    }
};

const QString unreadable = u"Réponse de system_profiler illisible."_s;

} // namespace

class TestSystemProfiler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parseAnswer_data()
    {
        QTest::addColumn<bool>("started");
        QTest::addColumn<int>("exitStatus");
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QString>("dataType");
        QTest::addColumn<QStringList>("names"); // item names when the answer is read
        QTest::addColumn<QString>("failure");   // the failure text otherwise

        const QString usb = u"SPUSBDataType"_s;
        QTest::newRow("empty array") << true << 0 << QByteArray(R"({"SPUSBDataType": []})") << usb << QStringList()
                                     << QString();
        QTest::newRow("two items in order")
            << true << 0 << QByteArray(R"({"SPUSBDataType": [{"_name": "hub"}, {"_name": "clé"}]})") << usb
            << QStringList{u"hub"_s, u"clé"_s} << QString();
        QTest::newRow("other members ignored")
            << true << 0 << QByteArray(R"({"SPAudioDataType": 3, "SPUSBDataType": [{"_name": "a"}]})") << usb
            << QStringList{u"a"_s} << QString();
        QTest::newRow("empty object") << true << 0 << QByteArray("{}") << usb << QStringList() << unreadable;
        QTest::newRow("member is an object") << true << 0 << QByteArray(R"({"SPUSBDataType": {}})") << usb
                                             << QStringList() << unreadable;
        QTest::newRow("member is null") << true << 0 << QByteArray(R"({"SPUSBDataType": null})") << usb
                                        << QStringList() << unreadable;
        QTest::newRow("member named in another case") << true << 0 << QByteArray(R"({"spusbdatatype": []})") << usb
                                                      << QStringList() << unreadable;
        QTest::newRow("array holding a number") << true << 0 << QByteArray(R"({"SPUSBDataType": [{}, 3]})") << usb
                                                << QStringList() << unreadable;
        QTest::newRow("array holding an array") << true << 0 << QByteArray(R"({"SPUSBDataType": [[]]})") << usb
                                                << QStringList() << unreadable;
        QTest::newRow("array holding null") << true << 0 << QByteArray(R"({"SPUSBDataType": [null]})") << usb
                                            << QStringList() << unreadable;
        QTest::newRow("top level is an array") << true << 0 << QByteArray(R"([{"SPUSBDataType": []}])") << usb
                                               << QStringList() << unreadable;
        QTest::newRow("not JSON") << true << 0 << QByteArray("system_profiler: unknown data type") << usb
                                  << QStringList() << unreadable;
        QTest::newRow("nothing printed") << true << 0 << QByteArray() << usb << QStringList() << unreadable;
        QTest::newRow("truncated") << true << 0 << QByteArray(R"({"SPUSBDataType": [{"_name": "a")") << usb
                                   << QStringList() << unreadable;
        QTest::newRow("text after the object") << true << 0 << QByteArray(R"({"SPUSBDataType": []} x)") << usb
                                               << QStringList() << unreadable;
        QTest::newRow("exit status 2") << true << 2 << QByteArray(R"({"SPCameraDataType": []})")
                                       << u"SPCameraDataType"_s << QStringList()
                                       << u"system_profiler a échoué : code 2 pour SPCameraDataType"_s;
        QTest::newRow("exit status 1, output discarded")
            << true << 1 << QByteArray("not json") << usb << QStringList()
            << u"system_profiler a échoué : code 1 pour SPUSBDataType"_s;
        QTest::newRow("not started") << false << 0 << QByteArray() << usb << QStringList()
                                     << u"system_profiler a échoué : No such file or directory"_s;
    }

    void parseAnswer()
    {
        QFETCH(bool, started);
        QFETCH(int, exitStatus);
        QFETCH(QByteArray, output);
        QFETCH(QString, dataType);
        QFETCH(QStringList, names);
        QFETCH(QString, failure);
        const ProcessOutput run{started, started ? QString() : u"No such file or directory"_s, exitStatus, output};
        const auto answer = SystemProfiler::parseAnswer(run, dataType);
        if (!failure.isEmpty()) {
            QVERIFY(std::holds_alternative<SystemProfiler::Failure>(answer));
            QCOMPARE(std::get<SystemProfiler::Failure>(answer).description(), failure);
            return;
        }
        QVERIFY(std::holds_alternative<QList<PropertyDictionary>>(answer));
        QStringList actual;
        for (const PropertyDictionary &item : std::get<QList<PropertyDictionary>>(answer))
            actual << item.value(u"_name"_s).toString();
        QCOMPARE(actual, names);
    }

    void arguments()
    {
        RecordingProfiler profiler;
        QVERIFY(std::holds_alternative<QList<PropertyDictionary>>(SystemProfiler::items(profiler, u"SPUSBDataType"_s)));
        QCOMPARE(profiler.arguments, QStringList({u"-json"_s, u"SPUSBDataType"_s}));
        SystemProfiler::items(profiler, u"SPUSBDataType"_s, u"mini"_s);
        QCOMPARE(profiler.arguments, QStringList({u"-json"_s, u"SPUSBDataType"_s, u"-detailLevel"_s, u"mini"_s}));
    }
};

QUILLON_TEST_MAIN(TestSystemProfiler)
#include "tst_system_profiler.moc"
