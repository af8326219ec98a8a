#include "common/test_main.h"

#include "core/battery_info.h"
#include "core/byte_format.h"
#include "core/device_node.h"
#include "core/formatting.h"
#include "core/storage_volume.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace {

DeviceNode node(const QString &name, QList<DeviceNode> children = {})
{
    return { .name = name, .children = std::move(children) };
}

} // namespace

class TestCore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // French byte counts: U+202F groups the digits, U+00A0 stands before the unit.
    void byteCount_data()
    {
        QTest::addColumn<double>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0.0 << u"Zéro\u00A0Ko"_s;
        QTest::newRow("just under the gigabyte") << 999949999.0 << u"999,9\u00A0Mo"_s;
        QTest::newRow("rounds into gigabytes") << 999950000.0 << u"1\u00A0Go"_s;
        QTest::newRow("2,675 Go, stored below the tie, rounds up") << 2675000000.0 << u"2,68\u00A0Go"_s;
        QTest::newRow("rounds into terabytes") << 999995000000.0 << u"1\u00A0To"_s;
        QTest::newRow("trailing zeros dropped") << 2000398934016.0 << u"2\u00A0To"_s;
        QTest::newRow("grouped thousands") << 4e15 << u"4\u202F000\u00A0To"_s;
    }

    void byteCount()
    {
        QFETCH(double, bytes);
        QFETCH(QString, text);
        QCOMPARE(ByteFormat::string(bytes), text);
        QCOMPARE(ByteFormat::parts(bytes), ByteFormat::splitAtLastSpace(text));
    }

    void fixed_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QString>("text");
        QTest::newRow("exact tie to even, down") << 52.5 << 0 << u"52"_s;
        QTest::newRow("30.55 stored above the tie") << 30.55 << 1 << u"30.6"_s;
        QTest::newRow("2.675 stored below the tie") << 2.675 << 2 << u"2.67"_s;
    }

    void fixed()
    {
        QFETCH(double, value);
        QFETCH(int, decimals);
        QTEST(Format::fixed(value, decimals), "text");
    }

    void percentRoundsHalvesAwayFromZero()
    {
        QCOMPARE(Format::roundedPercent(2.5), 3);
        QCOMPARE(Format::roundedPercent(-2.5), -3);
    }

    void dates_data()
    {
        QTest::addColumn<QDateTime>("moment");
        QTest::addColumn<QStringList>("texts"); // long, abbreviated, time, ISO 8601, UTC date
        const QTimeZone paris("Europe/Paris");
        // 09:05:07 in Paris in November is 08:05:07 UTC (UTC+1).
        QTest::newRow("november, winter time") << QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7), QTimeZone::utc())
                                               << QStringList { u"16 novembre 2026 à 09:05"_s, u"16 nov. 2026 à 09:05"_s,
                                                      u"09:05:07"_s, u"2026-11-16T08:05:07Z"_s, u"2026-11-16"_s };
        // Half past midnight on 14 July in Paris is still 13 July in UTC (UTC+2).
        QTest::newRow("july, summer time") << QDateTime(QDate(2026, 7, 14), QTime(0, 30), paris)
                                           << QStringList { u"14 juillet 2026 à 00:30"_s, u"14 juil. 2026 à 00:30"_s,
                                                  u"00:30:00"_s, u"2026-07-13T22:30:00Z"_s, u"2026-07-13"_s };
    }

    void dates()
    {
        QFETCH(QDateTime, moment);
        QTEST((QStringList { Format::longDateShortTime(moment), Format::abbreviatedDateShortTime(moment),
                  Format::standardTime(moment), Format::iso8601Utc(moment), Format::utcCalendarDate(moment) }),
            "texts");
    }

    void flattenedIsDepthFirstPreOrder()
    {
        const DeviceNode hub
            = node(u"hub"_s, { node(u"dock"_s, { node(u"keyboard"_s, { node(u"trackpad"_s) }) }), node(u"mouse"_s) });
        QStringList walk;
        for (const auto &[walked, depth] : flattenedAll({ hub, node(u"camera"_s) }))
            walk << walked.name + u':' + QString::number(depth);
        QCOMPARE(walk.join(u' '), u"hub:0 dock:1 keyboard:2 trackpad:3 mouse:1 camera:0"_s);
        QCOMPARE(hub.flattened(2).constLast().second, 3);
    }

    void usedSpace_data()
    {
        QTest::addColumn<double>("total");
        QTest::addColumn<double>("free");
        QTest::addColumn<double>("usedBytes");
        QTest::addColumn<double>("usedFraction");
        QTest::newRow("a quarter used") << 1000.0 << 750.0 << 250.0 << 0.25;
        QTest::newRow("no capacity but free space") << 0.0 << 100.0 << 0.0 << 0.0;
        QTest::newRow("free space above capacity") << 100.0 << 150.0 << 0.0 << 0.0;
        QTest::newRow("negative free space, not clamped above 1") << 100.0 << -50.0 << 150.0 << 1.5;
    }

    void usedSpace()
    {
        QFETCH(double, total);
        QFETCH(double, free);
        const StorageVolume volume { .totalBytes = total, .freeBytes = free };
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
        QTest::newRow("full, charging, unplugged") << true << false << true << u"En charge"_s;
        QTest::newRow("charging while plugged") << true << true << false << u"En charge"_s;
        QTest::newRow("plugged only") << false << true << false << u"Sur secteur"_s;
        QTest::newRow("full on battery") << false << false << true << u"Sur batterie"_s;
    }

    void stateLabel()
    {
        QFETCH(bool, charging);
        QFETCH(bool, plugged);
        QFETCH(bool, full);
        const BatterySnapshot snapshot { .isCharging = charging, .isPluggedIn = plugged, .isFullyCharged = full };
        QTEST(snapshot.stateLabel(), "label");
    }

};

QUILLON_TEST_MAIN(TestCore)
#include "tst_core.moc"
