#include "common/test_main.h"
#include "fakes.h"

#include "collectors/battery_service.h"
#include "collectors/built_in_device_service.h"
#include "collectors/hardware_service.h"
#include "platform/capture/property_list_reader.h"

#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>

// Real answers through every collector. The captures shipped with the project: a few key
// values and the shape of each tree, which only real answers can get wrong together. Answers
// published by others, from many Macs and systems: a record whose lines all have text, or one
// of the profiler's two failures; never a crash.

namespace {

// Nodes with their status ("+" connected, "-" disconnected, "!" warning, nothing for neutral),
// "*" for built in, and their children in brackets.
QString shape(const QList<DeviceNode> &nodes)
{
    static const char *const marks[] = {"+", "-", "!", ""};
    QStringList parts;
    for (const DeviceNode &node : nodes)
        parts.append(node.name + QLatin1StringView(marks[int(node.status)]) + (node.isBuiltIn ? u"*"_s : QString())
                     + (node.children.isEmpty() ? QString() : u'[' + shape(node.children) + u']'));
    return parts.join(u", "_s);
}

QString described(const Platform &platform, const QString &record)
{
    const QString none = u"-"_s;
    if (record == u"hardware"_s) {
        const Result<HardwareInfo> loaded = HardwareService::load(platform);
        if (!loaded.ok())
            return loaded.failure().description();
        const HardwareInfo &info = loaded.value();
        return QStringList{info.modelIdentifier, info.commercialName.value_or(none), info.chip, info.cores, info.memory, info.osVersion,
                           info.uptime, QString::number(info.rows.size()) + u" rows"_s}
            .join(u" | "_s);
    }
    if (record == u"battery"_s) {
        const std::optional<BatteryInfo> info = BatteryService::load(platform);
        if (!info)
            return u"none"_s;
        return QStringList{QString::number(info->chargePercent) + u" %"_s,
                           chargingLabel(info->isCharging, info->isPluggedIn, info->isFullyCharged), info->timeRemaining.value_or(none),
                           info->healthPercent ? QString::number(*info->healthPercent) + u" %"_s : none,
                           info->condition.value_or(none), info->cycleCount ? QString::number(*info->cycleCount) + u" cycles"_s : none,
                           QString::number(info->rows.size()) + u" rows"_s}
            .join(u" | "_s);
    }
    if (record == u"components"_s) {
        const BuiltInComponents components = BuiltInDeviceService::load(platform);
        QStringList present;
        for (const BuiltInComponents::Listed &listed : components.listed())
            if (listed.component.present)
                present.append(componentIDRawValue(listed.id) + u' ' + listed.component.detail.value_or(none));
        return present.join(u", "_s) + u" | "_s + QString::number(components.sensorInterfaces) + u" sensors | "_s
            + (components.isPortable ? u"portable"_s : u"desktop"_s);
    }
    const Result<QList<DeviceNode>> nodes = InventoryService::devices(platform, AppSections::fromRawValue(record).value());
    if (!nodes.ok())
        return nodes.failure().description();
    qsizetype rows = 0;
    for (const auto &[node, depth] : flattenedAll(nodes.value()))
        rows += node.rows.size();
    return shape(nodes.value()) + u" | "_s + QString::number(rows) + u" rows"_s;
}

const QString corpus = QDir::cleanPath(QStringLiteral(QUILLON_CORPUS_DIR));

// What every collector gets wrong on a Mac: a failure not in the profiler's words, a node
// without title or icon, a line without text.
QStringList problems(const Platform &platform)
{
    QStringList problems;
    QList<InfoRow> rows;
    const auto failed = [&](const SystemProfiler::Failure &failure) {
        if (const QString message = failure.description();
            message != u"Réponse de system_profiler illisible."_s && !message.startsWith(u"system_profiler a échoué : "_s))
            problems.append(message);
    };
    if (const Result<HardwareInfo> hardware = HardwareService::load(platform); hardware.ok())
        rows += hardware.value().rows;
    else
        failed(hardware.failure());
    if (const std::optional<BatteryInfo> battery = BatteryService::load(platform))
        rows += battery->rows;
    if (const Result<QList<StorageVolume>> volumes = InventoryService::storage(platform); !volumes.ok())
        failed(volumes.failure());
    for (const AppSection section : AppSections::allCases()) {
        const Result<QList<DeviceNode>> nodes = InventoryService::devices(platform, section);
        if (!nodes.ok())
            failed(nodes.failure());
        for (const auto &[node, depth] : flattenedAll(nodes.ok() ? nodes.value() : QList<DeviceNode>())) {
            rows += node.rows;
            if (node.name.isEmpty() || node.symbol.isEmpty())
                problems.append(u"a node without title or icon: "_s + node.name);
        }
    }
    for (const InfoRow &row : std::as_const(rows))
        if (row.label.isEmpty() || row.value.isEmpty())
            problems.append(u"a line without text: "_s + row.label);
    return problems;
}

} // namespace

class TestRealAnswers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void capture_data()
    {
        QTest::addColumn<QString>("capture");
        QTest::addColumn<QStringList>("expected"); // "record: description"
        // Up 333 912 s at the capture; an LG screen, a CalDigit dock holding a Logitech receiver
        // and a Samsung T7, AirPods and a Magic Mouse connected; a disk image mounted.
        QTest::newRow("sample") << u"sample"_s << QStringList{
            u"hardware: MacBookPro18,3 | MacBook Pro 14″ M1 Pro/Max, 2021 | Apple M1 Pro | 10 cœurs — 8 performance + 2 efficacité | "
            "16 GB | macOS 15.1 (24B83) | 3 j 20 h | 18 rows"_s,
            u"battery: 87 % | En charge | 1 h 15 min | 91 % | Normale | 212 cycles | 19 rows"_s,
            u"components: touchID Détecté, keyboard Français, keyboardBacklight Présent, trackpad 0 erreur, haptics Actif, "
            "lidAngle Détecté, wifi BCM4387, smc Actif | 8 sensors | portable"_s,
            u"displays: Apple M1 Pro[Color LCD+, LG HDR 4K+] | 21 rows"_s,
            u"usb: Bus USB 3.1 (contrôleur AppleT6000USBXHCI), Bus USB 3.1 (contrôleur AppleT6000USBXHCI), "
            "Bus USB 3.1 (contrôleur AppleT6000USBXHCI), Bus USB 3.0 (contrôleur AppleUSBXHCIFL1100)[USB2.1 Hub[USB Receiver+], "
            "USB3.1 Hub[PSSD T7+]] | 37 rows"_s,
            u"thunderbolt: Bus Thunderbolt / USB4 3[Port 3-], Bus Thunderbolt / USB4 2[TS3 Plus, Port 2+], "
            "Bus Thunderbolt / USB4 1[Port 1-] | 19 rows"_s,
            u"bluetooth: Contrôleur Bluetooth, AirPods Pro de Claire+, Magic Mouse+, iPhone de Claire-, JBL Flip 5-, "
            "Magic Keyboard- | 27 rows"_s,
            u"network: Wi-Fi+, Thunderbolt Bridge-, Bluetooth PAN- | 21 rows"_s,
            u"audio: LG HDR 4K, AirPods Pro de Claire+, Micro MacBook Pro+*, Haut-parleurs MacBook Pro* | 22 rows"_s,
            u"camera: Caméra FaceTime HD+ | 2 rows"_s};
        QTest::newRow("worn battery") << u"worn-battery"_s << QStringList{
            u"battery: 42 % | Sur batterie | - | 71 % | Entretien recommandé | 1180 cycles | 15 rows"_s};
        // Booted 3 550 625 s before the capture; a keyboard on USB and two screens.
        QTest::newRow("desktop") << u"desktop-mac-studio"_s << QStringList{
            u"hardware: Mac13,1 | Mac Studio M1 Max, 2022 | Apple M1 Max | 10 cœurs — 8 performance + 2 efficacité | 32 GB | "
            "macOS 15.1 (24B83) | 41 j 2 h | 18 rows"_s,
            u"battery: none"_s,
            u"components: keyboard Français, wifi BCM4387, smc Actif | 1 sensors | desktop"_s,
            u"displays: Apple M1 Max[Studio Display+, DELL U2723QE+] | 19 rows"_s,
            u"usb: Bus USB 3.1 (contrôleur AppleT6000USBXHCI), Bus USB 3.1 (contrôleur AppleT6000USBXHCI)[Magic Keyboard with "
            "Numeric Keypad+], Bus USB 3.1 (contrôleur AppleT6000USBXHCI), Bus USB 3.1 (contrôleur AppleT6000USBXHCI) | 13 rows"_s};
        // Booted 18 760 s before the capture.
        QTest::newRow("Intel") << u"intel-macbook-pro"_s << QStringList{
            u"hardware: MacBookPro16,1 | MacBook Pro 16″, 2019 | 8-Core Intel Core i9 à 2,3 GHz | 8 cœurs / 16 threads | 16 GB | "
            "macOS 14.7.1 (23H222) | 5 h 12 min | 20 rows"_s,
            u"components: trackpad 0 erreur, wifi BCM4364, smc Actif | 0 sensors | portable"_s};
        // Booted 2 882 s before the capture.
        QTest::newRow("profiler failures") << u"profiler-failures"_s << QStringList{
            u"hardware: Mac14,2 | MacBook Air 13″ M2, 2022 | Apple M2 | 8 cœurs — 4 performance + 4 efficacité | 8 GB | "
            "macOS 15.1 (24B83) | 48 min | 18 rows"_s,
            u"usb: system_profiler a échoué : code 1 pour SPUSBDataType"_s,
            u"thunderbolt: Réponse de system_profiler illisible."_s,
            u"bluetooth: Réponse de system_profiler illisible."_s,
            u"camera: Réponse de system_profiler illisible."_s,
            u"audio: Micro MacBook Air+*, Haut-parleurs MacBook Air+* | 10 rows"_s};
    }

    void capture()
    {
        QFETCH(QString, capture);
        QFETCH(QStringList, expected);
        const Platform platform = capturePlatform(capture);
        QStringList actual;
        for (const QString &line : expected) {
            const QString record = line.section(u": "_s, 0, 0);
            actual.append(record + u": "_s + described(platform, record));
        }
        QCOMPARE(actual, expected);
    }

    // Outputs of macOS 26 and 27 Macs: what the older rules read wrong on them.
    void todaysMacs_data()
    {
        const QString current = corpus + u"/current-macs"_s;
        if (!QDir(current).exists())
            QSKIP("No outputs of today's Macs beside the checkout (../shared/corpus/current-macs): nothing to run.");
        QTest::addColumn<QString>("dataType");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("kernel");
        QTest::addColumn<QString>("expected");
        const QByteArray tahoe = R"({"kern.osproductversion": "26.1"})";
        // Counted by hand: the leaves that are no bus and no hub.
        QTest::newRow("USB devices under the host type") << u"SPUSBHostDataType"_s
            << current + u"/lsusb-macos-tahoe/tahoe_usb_full.json"_s << tahoe << u"USB: 9 connected, 0 buses or hubs"_s;
        QTest::newRow("a bus without devices") << u"SPUSBHostDataType"_s
            << current + u"/lsusb-macos-tahoe/tahoe_usb_basic.json"_s << tahoe << u"USB: 2 connected, 0 buses or hubs"_s;
        // The display's upstream link is no port. Buses 2, 1, 0 in the answer's order carry the
        // ports with identifiers 3, 2, 1; the display on bus 1 comes first with its own port 2.
        QTest::newRow("USB4 display") << u"SPThunderboltDataType"_s
            << current + u"/lsusb-macos-tahoe/tahoe_tb_kirb.json"_s << tahoe << u"Thunderbolt: ports 3, 2, 2, 1"_s;
        // Capacities in the battery's BatteryData, temperature in the pack's: 2989 hundredths.
        QTest::newRow("macOS 27 battery") << u"AppleSmartBattery"_s
            << current + u"/systeminfokit-applesmartbattery/json/AppleSmartBattery/MacBook_Air_M3_macOS_27_unknownAdapter.json"_s
            << QByteArray("{}") << u"4274 mAh sur 4563 mAh d'origine | 29.9 °C | 113"_s;
        QTest::newRow("M5 Max cores") << u"SPHardwareDataType"_s
            << current + u"/tirekick-m5max/SPHardwareDataType_AppleSilicon_M5Max_lockEnabled.json"_s
            << QByteArray(R"({"hw.nperflevels": 2, "hw.perflevel0.name": "Super", "hw.perflevel0.physicalcpu": 6,
                             "hw.perflevel1.name": "Performance", "hw.perflevel1.physicalcpu": 12})")
            << u"18 cœurs — 6 super + 12 performance | MacBook Pro 16″ M5 Pro/Max, 2026"_s;
    }

    void todaysMacs()
    {
        QFETCH(QString, dataType);
        QFETCH(QString, file);
        QFETCH(QByteArray, kernel);
        QFile answer(file);
        QVERIFY(answer.open(QIODevice::ReadOnly));
        FakeMac mac;
        mac.kernel->values = QJsonDocument::fromJson(kernel).object();
        mac.profiler->answer(dataType, answer.readAll());
        QString actual;
        if (dataType == u"AppleSmartBattery"_s) {
            QFile pack(QString(file).replace(u"/AppleSmartBattery/"_s, u"/AppleSmartBatteryPack/"_s));
            QVERIFY(pack.open(QIODevice::ReadOnly));
            answer.seek(0);
            mac.registry->byClass[u"AppleSmartBattery"_s] = {QJsonDocument::fromJson(answer.readAll()).object().toVariantMap()};
            mac.registry->byClass[u"AppleSmartBatteryPack"_s] = {QJsonDocument::fromJson(pack.readAll()).object().toVariantMap()};
            const std::optional<BatteryInfo> battery = BatteryService::load(mac.platform());
            QVERIFY(battery);
            QStringList values;
            for (const InfoRow &row : battery->rows)
                if (row.label == u"Capacité"_s || row.label == u"Température"_s)
                    values.append(row.value);
            values.append(QString::number(battery->cycleCount.value_or(-1)));
            actual = values.join(u" | "_s);
        } else if (dataType == u"SPHardwareDataType"_s) {
            const Result<HardwareInfo> hardware = HardwareService::load(mac.platform());
            QVERIFY(hardware.ok());
            actual = hardware.value().cores + u" | "_s + hardware.value().commercialName.value_or(u"-"_s);
        } else if (dataType == u"SPUSBHostDataType"_s) {
            const Result<QList<DeviceNode>> usb = InventoryService::devices(mac.platform(), AppSection::usb);
            QVERIFY(usb.ok());
            int connected = 0;
            int wrong = 0;
            for (const auto &[node, depth] : flattenedAll(usb.value())) {
                const bool busOrHub = node.name.contains(u"Bus"_s) || node.name.contains(u"Hub"_s);
                connected += node.status == DeviceStatus::connected;
                wrong += busOrHub && node.status == DeviceStatus::connected;
            }
            actual = u"USB: %1 connected, %2 buses or hubs"_s.arg(connected).arg(wrong);
        } else {
            const Result<QList<DeviceNode>> thunderbolt = InventoryService::devices(mac.platform(), AppSection::thunderbolt);
            QVERIFY(thunderbolt.ok());
            QStringList ports;
            for (const auto &[node, depth] : flattenedAll(thunderbolt.value())) {
                if (node.name.startsWith(u"Port"_s))
                    ports.append(node.name.mid(5));
                for (const InfoRow &row : node.rows)
                    QVERIFY2(!row.value.contains(u"receptacle_"_s), qPrintable(row.value));
            }
            actual = u"Thunderbolt: ports "_s + ports.join(u", "_s);
        }
        QTEST(actual, "expected");
    }

    void everyAnswer_data()
    {
        if (!QDir(corpus).exists())
            QSKIP("No corpus of real answers beside the checkout (../shared/corpus): nothing to run.");
        QTest::addColumn<QString>("path");
        QStringList paths;
        for (const QString &folder : {u"/profiler"_s, u"/ioreg"_s})
            for (QDirIterator it(corpus + folder, {u"*.json"_s, u"*.plist"_s}, QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
                paths.append(it.next());
        paths.sort();
        for (const QString &path : std::as_const(paths))
            QTest::newRow(qPrintable(QDir(corpus).relativeFilePath(path))) << path;
    }

    // Each answer of the system profiler on a Mac with a battery, each smart-battery service of
    // a registry dump as the only battery of a Mac.
    void everyAnswer()
    {
        QFETCH(QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QList<PropertyDictionary> batteries{{{u"CurrentCapacity"_s, qint64(50)}}};
        if (path.endsWith(u".plist"_s)) {
            const PropertyListReader::Outcome outcome = PropertyListReader::read(file.readAll());
            QVERIFY2(outcome.error.isEmpty(), qPrintable(outcome.error));
            batteries.clear();
            const bool single = outcome.root.typeId() == QMetaType::QVariantMap;
            for (const QVariant &service : single ? QVariantList{outcome.root} : outcome.root.toList())
                batteries.append(service.toMap());
        }
        for (const PropertyDictionary &battery : std::as_const(batteries)) {
            FakeMac mac;
            mac.registry->byClass[u"AppleSmartBattery"_s] = {battery};
            mac.profiler->answerItems(u"SPHardwareDataType"_s, {});
            if (!path.endsWith(u".plist"_s))
                mac.profiler->answer(QFileInfo(path).dir().dirName(), file.readAll());
            QCOMPARE(problems(mac.platform()), QStringList());
            QCOMPARE(BatteryService::liveSnapshot(mac.platform()).has_value(), BatteryService::load(mac.platform()).has_value());
        }
    }
};

QUILLON_TEST_MAIN(TestRealAnswers)
#include "tst_real_answers.moc"
