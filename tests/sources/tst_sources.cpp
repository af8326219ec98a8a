#include "isolated_home.h"
#include "readings.h"

#include "core/formatting.h"
#include "sources/device_words.h"
#include "sources/mac_models.h"
#include "sources/nvme_health.h"
#include "sources/property_access.h"
#include "sources/security_commands.h"
#include "sources/system_profiler.h"
#include "sources/vocabulary.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(LockFact)
Q_DECLARE_METATYPE(DriveHealthLog)

namespace {

// A profiler item holding one JSON literal under "v".
PropertyDictionary item(const char *literal)
{
    const QJsonDocument document = QJsonDocument::fromJson("{\"v\": " + QByteArray(literal) + '}');
    if (!document.isObject())
        qFatal("bad JSON in a test table: %s", literal);
    return PropertyValues::dictionaryFromJson(document.object());
}

const QString none = nothingRead;
const QString unreadable = u"Réponse de system_profiler illisible."_s;

template <typename T, typename Show> QString shown(const std::optional<T> &value, Show show)
{
    return value ? show(*value) : none;
}

ProcessOutput printed(const QByteArray &text, int exitStatus = 0)
{
    return ProcessOutput{.started = true, .exitStatus = exitStatus, .standardOutput = text};
}

QString factText(const LockFact &fact)
{
    const char *states[] = {"unknown", "off", "on"};
    return QString::fromLatin1(states[int(fact.state)]) + u" | "_s + fact.words;
}

// A health log with its counters set at the NVMe offsets, worked out by hand.
QByteArray healthLog(int percentUsed, quint64 unitsWritten, quint64 hours, quint64 mediaErrors, int warning = 0)
{
    QByteArray log(NvmeHealth::logSize, '\0');
    log[0] = char(warning);
    log[3] = char(100);
    log[4] = char(10);
    log[5] = char(percentUsed);
    const auto put = [&log](int offset, quint64 value) {
        for (int i = 0; i < 8; ++i)
            log[offset + i] = char((value >> (8 * i)) & 0xFF);
    };
    put(48, unitsWritten);
    put(128, hours);
    put(160, mediaErrors);
    return log;
}

} // namespace

class TestSources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Each command's answers as the ownership facts read them; anything missing, failed or
    // unknown cannot be told, and says why.
    void ownershipCommands_data()
    {
        QTest::addColumn<LockFact>("fact");
        QTest::addColumn<QString>("expected");
        using namespace SecurityCommands;
        QTest::newRow("enrolment: neither") << readEnrollment(printed("Enrolled via DEP: No\nMDM enrollment: No\n"))
                                            << u"off | Aucune gestion à distance"_s;
        QTest::newRow("enrolment: MDM, user approved")
            << readEnrollment(printed("Enrolled via DEP: No\nMDM enrollment: Yes (User Approved)\nMDM server: https://x\n"))
            << u"on | Géré par un MDM"_s;
        QTest::newRow("enrolment: DEP alone is enough") << readEnrollment(printed("Enrolled via DEP: Yes\nMDM enrollment: No\n"))
                                                        << u"on | Inscrit via DEP"_s;
        QTest::newRow("enrolment: one line saying No clears nothing")
            << readEnrollment(printed("MDM enrollment: No\n"))
            << u"unknown | réponse inconnue de profiles status -type enrollment : « MDM enrollment: No »"_s;
        QTest::newRow("enrolment: tool failed") << readEnrollment(printed("", 1))
                                                << u"unknown | profiles status -type enrollment a échoué (code 1)"_s;
        ProcessOutput missing;
        missing.startError = u"No such file or directory"_s;
        QTest::newRow("enrolment: tool missing") << readEnrollment(missing)
            << u"unknown | profiles status -type enrollment n'a pas pu être lancé (No such file or directory)"_s;
        ProcessOutput stopped = printed("");
        stopped.stoppedAfterSeconds = 15;
        QTest::newRow("FileVault: no answer in time") << readFileVault(stopped)
                                                      << u"unknown | fdesetup status ne répond pas après 15 s"_s;
        QTest::newRow("FileVault: on after restart")
            << readFileVault(printed("FileVault is Off, but will be enabled after the next restart.\n"))
            << u"off | Désactivé, activation au prochain démarrage"_s;
        QTest::newRow("integrity: disabled")
            << readIntegrityProtection(printed("System Integrity Protection status: disabled.\n")) << u"off | Désactivée"_s;
        QTest::newRow("integrity: custom configuration")
            << readIntegrityProtection(printed("System Integrity Protection status: unknown (Custom Configuration).\n"))
            << u"off | Configuration personnalisée, en partie désactivée"_s;
        QTest::newRow("Find My: token among the names")
            << readFindMy(printed("SystemAudioVolume\t%80\nfmm-mobileme-token-FMM\tbplist\n")) << u"on | Activé"_s;
        QTest::newRow("Find My: a name that only starts alike")
            << readFindMy(printed("fmm-mobileme-token-FMM-old\nfmm-computer-name\n")) << u"off | Désactivé"_s;
        QTest::newRow("Find My: nothing printed") << readFindMy(printed("")) << u"unknown | nvram -p n'a rien répondu"_s;
        QTest::newRow("activation lock: word absent") << readActivationLock(std::nullopt)
                                                      << u"unknown | macOS ne l'indique pas pour ce Mac"_s;
    }

    void ownershipCommands()
    {
        QFETCH(LockFact, fact);
        QTEST(factText(fact), "expected");
    }

    // Words for the names and codes the profiler gives devices.
    void deviceWords_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<QString>("expected");
        using namespace DeviceWords;
        const auto shown = [](const std::optional<QString> &text) { return text.value_or(u"(rien)"_s); };
        QTest::newRow("bus of the older type") << usbBusName(u"USB31Bus"_s, u"AppleT8103USBXHCI"_s)
                                               << u"Bus USB 3.1 (contrôleur AppleT8103USBXHCI)"_s;
        QTest::newRow("bus of the host type, no controller") << usbBusName(u"USB 2.0 Bus"_s, std::nullopt) << u"Bus USB 2.0"_s;
        QTest::newRow("a name of another shape") << usbBusName(u"Root Hub"_s, u"XHCI"_s) << u"Root Hub (contrôleur XHCI)"_s;
        QTest::newRow("type in capitals") << shown(bluetoothType(u"HEADPHONES"_s)) << u"Casque"_s;
        QTest::newRow("unknown type as it is") << shown(bluetoothType(u"Hearing Aid"_s)) << u"Hearing Aid"_s;
        QTest::newRow("services by name")
            << shown(bluetoothServices(u"0x392039 < HFP AVRCP A2DP LEA Unknown >"_s))
            << u"mains libres, télécommande, audio, audio basse consommation, Unknown"_s;
        QTest::newRow("a mask alone says nothing") << shown(bluetoothServices(u"0x392039"_s)) << u"(rien)"_s;
        QTest::newRow("Apple's company number") << shown(bluetoothVendor(u"0x004C"_s)) << u"Apple"_s;
    }

    void deviceWords()
    {
        QFETCH(QString, words);
        QTEST(words, "expected");
    }

    void nvramNamesOnly()
    {
        QCOMPARE(SecurityCommands::variableNamesOnly("boot-args\t-v\nfmm-mobileme-token-FMM\tbplist00%d4secret\n\n"),
                 QByteArray("boot-args\nfmm-mobileme-token-FMM\n"));
    }

    // Counters at their NVMe offsets: 24 218 750 data units of 512 000 bytes are 12,4 To.
    void nvmeHealthLog_data()
    {
        QTest::addColumn<DriveHealthLog>("entry");
        QTest::addColumn<QString>("expected"); // used % | spare/threshold | written bytes | hours | media errors | warning
        QTest::newRow("a young drive") << DriveHealthLog{u"APPLE SSD"_s, healthLog(3, 24218750, 1402, 0), {}}
                                       << u"3 | 100/10 | 12400000000000 | 1402 | 0 | 0"_s;
        QTest::newRow("counters above 32 bits") << DriveHealthLog{u"APPLE SSD"_s, healthLog(150, 0x1'0000'0000ULL, 0x1'0000'0001ULL, 7, 4), {}}
                                                << u"150 | 100/10 | 2199023255552000 | 4294967297 | 7 | 4"_s;
        QTest::newRow("refused") << DriveHealthLog{u"APPLE SSD"_s, {}, u"lecture refusée"_s} << u"lecture refusée"_s;
    }

    void nvmeHealthLog()
    {
        QFETCH(DriveHealthLog, entry);
        const DriveWear wear = NvmeHealth::decode(entry);
        const QString figures = u"%1 | %2/%3 | %4 | %5 | %6 | %7"_s.arg(wear.percentageUsed).arg(wear.availableSpare)
                                    .arg(wear.availableSpareThreshold).arg(qint64(wear.bytesWritten))
                                    .arg(qint64(wear.powerOnHours)).arg(qint64(wear.mediaErrors)).arg(wear.criticalWarning);
        QTEST(wear.unreadable.value_or(figures), "expected");
    }

    void profilerAnswer_data()
    {
        QTest::addColumn<int>("exitStatus"); // -1: the program did not start
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QString>("outcome"); // the item names, or the failure text
        QTest::newRow("empty array") << 0 << QByteArray(R"({"SPUSBDataType": []})") << u"[]"_s;
        QTest::newRow("member is an object") << 0 << QByteArray(R"({"SPUSBDataType": {}})") << unreadable;
        QTest::newRow("an element is not an object") << 0 << QByteArray(R"({"SPUSBDataType": [{}, 3]})") << unreadable;
        QTest::newRow("not JSON") << 0 << QByteArray("system_profiler: unknown data type") << unreadable;
        QTest::newRow("exit status 2, output discarded")
            << 2 << QByteArray(R"({"SPUSBDataType": []})") << u"system_profiler a échoué : code 2 pour SPUSBDataType"_s;
        QTest::newRow("not started") << -1 << QByteArray() << u"system_profiler a échoué : No such file or directory"_s;
    }

    void profilerAnswer()
    {
        QFETCH(int, exitStatus);
        QFETCH(QByteArray, output);
        const bool started = exitStatus >= 0;
        const ProcessOutput run { started, started ? QString() : u"No such file or directory"_s, exitStatus, output };
        QTEST(answerText(SystemProfiler::parseAnswer(run, u"SPUSBDataType"_s)), "outcome");
    }

    void accessors_data()
    {
        QTest::addColumn<PropertyDictionary>("item");
        QTest::addColumn<QStringList>("read"); // by text, number, integer, yesNo
        const auto row = [](const char *name, const PropertyDictionary &item, const QStringList &read) {
            QTest::newRow(name) << item << read;
        };
        row("missing key", { { u"V"_s, 1 }, { u"v "_s, 1 } }, { none, none, none, none });
        row("true", item("true"), { u"1"_s, u"1"_s, u"1"_s, u"Oui"_s });
        row("-3.9 truncated toward zero", item("-3.9"), { u"-3.9"_s, u"-3.9"_s, u"-3"_s, u"Oui"_s });
        row("1e21", item("1e21"), { u"1e+21"_s, u"1e+21"_s, none, u"Oui"_s });
        row("above the signed range", { { u"v"_s, std::numeric_limits<quint64>::max() } },
            { u"18446744073709551615"_s, u"18446744073709551616"_s, none, u"Oui"_s });
        row("text 12.5", item(R"("12.5")"), { u"12.5"_s, u"12.5"_s, none, none });
        row("text with a plus", item(R"("+1e3")"), { u"+1e3"_s, u"1000"_s, none, none });
        row("mixed array", item(R"([1, "a", true, 2.5])"), { u"1, a, 1, 2.5"_s, none, none, none });
        row("null", item("null"), { none, none, none, none });
    }

    void accessors()
    {
        QFETCH(PropertyDictionary, item);
        const auto same = [](const QString &text) { return text; };
        const auto number = [](qint64 n) { return QString::number(n); };
        QTEST((QStringList { shown(Property::text(item, u"v"_s), same),
                  shown(Property::number(item, u"v"_s), Format::shortestNumber),
                  shown(Property::integer(item, u"v"_s), number), shown(Property::yesNo(item, u"v"_s), same) }),
            "read");
    }

    void kernelValues_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("bytes"); // little-endian, as on every Mac
        QTest::addColumn<QString>("reading");
        const auto hex = [](const char *digits) { return QByteArray::fromHex(digits); };
        QTest::newRow("4 bytes holding -1") << "hw.memsize"_ba << hex("ffffffff") << u"-1"_s;
        QTest::newRow("text to the first zero") << "kern.osversion"_ba << QByteArray("24B83\0x\0", 8) << u"24B83"_s;
        QTest::newRow("invalid UTF-8 replaced") << "kern.osversion"_ba << hex("61ff6200") << u"a\uFFFDb"_s;
        // 1 763 200 000 s = 20 407 days + 35 200 s after 1970; 999 999 µs ignored.
        QTest::newRow("boot time") << "kern.boottime"_ba << hex("004c1869000000003f420f0000000000")
                                   << u"2025-11-15T09:46:40Z"_s;
        // total 3 GiB, available 1 GiB, used 2 GiB, then page size and encryption flag.
        const QByteArray swap = hex("000000c000000000000000400000000000000080000000000040000001000000");
        QTest::newRow("swap") << "vm.swapusage"_ba << swap << u"3221225472 2147483648 1073741824"_s;
    }

    void kernelValues()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, bytes);
        QTEST(kernelReading(OneValueKernel(name, bytes), name), "reading");
        QCOMPARE(kernelReading(OneValueKernel("other", bytes), name), none);
    }

    void humanize_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("wording");
        QTest::newRow("activation lock off, masculine") << u"activation_lock_disabled"_s << u"Désactivé"_s;
        QTest::newRow("built-in XDR from the table")
            << u"spdisplays_built-in-liquid-retina-xdr"_s << u"Liquid Retina XDR intégré"_s;
        QTest::newRow("unknown built-in panel by the rule")
            << u"spdisplays_built-in-mini-led"_s << u"Built in mini led"_s;
        QTest::newRow("coreaudio prefix, last part only") << u"coreaudio_device_output"_s << u"Output"_s;
    }

    void humanize()
    {
        QFETCH(QString, code);
        QTEST(Vocabulary::humanize(code).value_or(none), "wording");
        QVERIFY(!Vocabulary::humanize(std::nullopt));
    }

    void commercialName_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("name");
        // The 16″ and 14″ M4 Pro/Max were swapped once.
        QTest::newRow("Mac16,5 is the 16-inch") << u"Mac16,5"_s << u"MacBook Pro 16″ M4 Pro/Max, 2024"_s;
        QTest::newRow("Mac16,6 is the 14-inch") << u"Mac16,6"_s << u"MacBook Pro 14″ M4 Pro/Max, 2024"_s;
        QTest::newRow("M5 Max MacBook Pro") << u"Mac17,6"_s << u"MacBook Pro 16″ M5 Pro/Max, 2026"_s;
        QTest::newRow("MacBook Neo") << u"Mac17,5"_s << u"MacBook Neo A18 Pro, 2026"_s;
        QTest::newRow("unknown") << u"Mac99,1"_s << none;
    }

    void commercialName()
    {
        QVERIFY(!QFile::exists(MacModels::overridesPath()));
        QFETCH(QString, identifier);
        QTEST(MacModels::commercialName(identifier).value_or(none), "name");
    }

    void decodeOverrides_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("decoded"); // "identifier=name, year" for each entry, or none
        QTest::newRow("further members ignored")
            << R"({"Mac99,1": {"name": "Nouveau", "year": 2031, "chip": "M9"}})"_ba << u"Mac99,1=Nouveau, 2031"_s;
        QTest::newRow("one entry lacking year")
            << R"({"Mac16,7": {"name": "A", "year": 2024}, "Mac99,1": {"name": "B"}})"_ba << none;
        QTest::newRow("not JSON") << "Mac99,1 = B"_ba << none;
    }

    void decodeOverrides()
    {
        QFETCH(QByteArray, json);
        const auto decoded = MacModels::decodeOverrides(json);
        QString entries = decoded ? QString() : none;
        for (const auto &[identifier, model] : decoded.value_or(QHash<QString, MacModels::Model>()).asKeyValueRange())
            entries += identifier + u'=' + model.name + u", "_s + QString::number(model.year);
        QTEST(entries, "decoded");
    }
};

QUILLON_TEST_MAIN_IN_FRESH_HOME(TestSources, [] {})
#include "tst_sources.moc"
