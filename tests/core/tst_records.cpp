#include "common/test_main.h"

#include "core/app_section.h"
#include "core/battery_info.h"
#include "core/built_in_components.h"
#include "core/device_node.h"
#include "core/storage_volume.h"

using namespace Qt::StringLiterals;

namespace {

DeviceNode node(const QString &name, QList<DeviceNode> children = {})
{
    DeviceNode result;
    result.name = name;
    result.children = std::move(children);
    return result;
}

// "name:depth" for each pair of a walk, space-separated.
QString describe(const QList<std::pair<DeviceNode, int>> &walk)
{
    QStringList pieces;
    for (const auto &[walked, depth] : walk)
        pieces << walked.name + u':' + QString::number(depth);
    return pieces.join(u' ');
}

} // namespace

class TestRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void flattenedIsDepthFirstPreOrder()
    {
        // hub → (dock → (keyboard → (trackpad)), mouse): the second child comes after the whole first branch.
        const DeviceNode hub = node(u"hub"_s, {node(u"dock"_s, {node(u"keyboard"_s, {node(u"trackpad"_s)})}),
                                               node(u"mouse"_s)});
        QCOMPARE(describe(hub.flattened(0)), u"hub:0 dock:1 keyboard:2 trackpad:3 mouse:1"_s);
        QCOMPARE(describe(hub.flattened(2)), u"hub:2 dock:3 keyboard:4 trackpad:5 mouse:3"_s);
        QCOMPARE(describe(node(u"leaf"_s).flattened(0)), u"leaf:0"_s);
        QCOMPARE(describe(flattenedAll({hub, node(u"camera"_s)})),
                 u"hub:0 dock:1 keyboard:2 trackpad:3 mouse:1 camera:0"_s);
        QVERIFY(flattenedAll({}).isEmpty());
    }

    void usedSpace_data()
    {
        QTest::addColumn<double>("total");
        QTest::addColumn<double>("free");
        QTest::addColumn<double>("usedBytes");
        QTest::addColumn<double>("usedFraction");
        QTest::newRow("a quarter used") << 1000.0 << 750.0 << 250.0 << 0.25;
        QTest::newRow("full") << 500e9 << 0.0 << 500e9 << 1.0;
        QTest::newRow("no capacity") << 0.0 << 0.0 << 0.0 << 0.0;
        QTest::newRow("no capacity but free space") << 0.0 << 100.0 << 0.0 << 0.0;
        QTest::newRow("free space above capacity") << 100.0 << 150.0 << 0.0 << 0.0;
        QTest::newRow("negative free space, not clamped above 1") << 100.0 << -50.0 << 150.0 << 1.5;
    }

    void usedSpace()
    {
        QFETCH(double, total);
        QFETCH(double, free);
        StorageVolume volume;
        volume.totalBytes = total;
        volume.freeBytes = free;
        QTEST(volume.usedBytes(), "usedBytes");
        QTEST(volume.usedFraction(), "usedFraction");
    }

    void stateLabel_data()
    {
        QTest::addColumn<bool>("charging");
        QTest::addColumn<bool>("plugged");
        QTest::addColumn<bool>("full");
        QTest::addColumn<QString>("label");
        QTest::newRow("full, plugged and charging") << true << true << true << u"Chargée — sur secteur"_s;
        QTest::newRow("full and plugged") << false << true << true << u"Chargée — sur secteur"_s;
        QTest::newRow("full, charging, unplugged") << true << false << true << u"En charge"_s;
        QTest::newRow("charging while plugged") << true << true << false << u"En charge"_s;
        QTest::newRow("plugged only") << false << true << false << u"Sur secteur"_s;
        QTest::newRow("nothing") << false << false << false << u"Sur batterie"_s;
    }

    void stateLabel()
    {
        QFETCH(bool, charging);
        QFETCH(bool, plugged);
        QFETCH(bool, full);
        BatterySnapshot snapshot;
        snapshot.isCharging = charging;
        snapshot.isPluggedIn = plugged;
        snapshot.isFullyCharged = full;
        QTEST(snapshot.stateLabel(), "label");
    }

    void rowsBuiltFromTheSameDataDiffer()
    {
        const InfoRow first(u"Numéro de série"_s, u"C02XYZ"_s);
        const InfoRow second(u"Numéro de série"_s, u"C02XYZ"_s);
        QVERIFY(first != second);
        QVERIFY(first.id != second.id);
        const InfoRow copy = first;
        QCOMPARE(copy, first);
        QVERIFY(node(u"a"_s) != node(u"a"_s));
        QVERIFY(StorageVolume() != StorageVolume());
    }

    void statusLabels_data()
    {
        QTest::addColumn<DeviceStatus>("status");
        QTest::addColumn<QString>("label"); // a null text: no label, no badge
        QTest::newRow("connected") << DeviceStatus::connected << u"Connecté"_s;
        QTest::newRow("disconnected") << DeviceStatus::disconnected << u"Non connecté"_s;
        QTest::newRow("warning") << DeviceStatus::warning << u"À vérifier"_s;
        QTest::newRow("neutral") << DeviceStatus::neutral << QString();
    }

    void statusLabels()
    {
        QFETCH(DeviceStatus, status);
        QFETCH(QString, label);
        const std::optional<QString> actual = deviceStatusLabel(status);
        QCOMPARE(actual.has_value(), !label.isNull());
        if (actual)
            QCOMPARE(*actual, label);
    }

    void sectionsInSidebarOrder()
    {
        QStringList raw;
        for (AppSection section : AppSections::allCases())
            raw << AppSections::rawValue(section);
        QCOMPARE(raw, QStringList({u"overview"_s, u"diagnostics"_s, u"history"_s, u"hardware"_s, u"battery"_s,
                                   u"storage"_s, u"displays"_s, u"usb"_s, u"thunderbolt"_s, u"bluetooth"_s,
                                   u"network"_s, u"audio"_s, u"camera"_s}));
        const QList<AppSection> data{AppSection::hardware, AppSection::battery,   AppSection::storage,
                                     AppSection::displays, AppSection::usb,       AppSection::thunderbolt,
                                     AppSection::bluetooth, AppSection::network,  AppSection::audio,
                                     AppSection::camera};
        QCOMPARE(AppSections::dataSections(), data);
    }

    void unknownRawValues_data()
    {
        QTest::addColumn<QString>("raw");
        QTest::newRow("empty") << QString();
        QTest::newRow("capitalised") << u"Overview"_s;
        QTest::newRow("french title") << u"Batterie"_s;
        QTest::newRow("trailing space") << u"usb "_s;
        QTest::newRow("not a section") << u"settings"_s;
    }

    void unknownRawValues()
    {
        QFETCH(QString, raw);
        QVERIFY(!AppSections::fromRawValue(raw));
        QVERIFY(!componentIDFromRawValue(raw));
    }

    void listedComponents()
    {
        // Each component carries its own field name as detail, so a mix-up between fields shows.
        BuiltInComponents components;
        const auto tag = [](const char *name) {
            BuiltInComponents::Component component;
            component.present = true;
            component.detail = QString::fromLatin1(name);
            return component;
        };
        components.touchID = tag("touchID");
        components.trackpad = tag("trackpad");
        components.haptics = tag("haptics");
        components.keyboard = tag("keyboard");
        components.keyboardBacklight = tag("keyboardBacklight");
        components.lidAngle = tag("lidAngle");
        components.wifi = tag("wifi");
        components.smc = tag("smc");

        const QStringList order{u"touchID"_s,  u"keyboard"_s, u"keyboardBacklight"_s, u"trackpad"_s,
                                u"haptics"_s,  u"lidAngle"_s, u"wifi"_s,              u"smc"_s};
        const QList<BuiltInComponents::Listed> listed = components.listed();
        QCOMPARE(listed.size(), 8);
        QCOMPARE(listed[5].title, u"Capteur d'angle d'écran"_s);
        for (qsizetype i = 0; i < listed.size(); ++i) {
            QCOMPARE(componentIDRawValue(listed[i].id), order[i]);
            QCOMPARE(componentIDFromRawValue(order[i]), listed[i].id);
            QCOMPARE(listed[i].component.detail, order[i]);
        }
        QCOMPARE(BuiltInComponents().listed().at(4).component, BuiltInComponents::Component::absent());
    }
};

QUILLON_TEST_MAIN(TestRecords)
#include "tst_records.moc"
