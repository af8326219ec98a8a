#include "common/test_main.h"
#include "fake_sensors.h"
#include "live/live_values.h"
#include "live/processor_load.h"

using namespace Qt::StringLiterals;

using TickList = QList<ProcessorLoad::Ticks>;
using Fractions = QList<double>;
using Text = std::optional<QString>;

class TestProcessorLoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sampleWidensBeforeAdding();
    void usage_data();
    void usage();
    void liveTexts_data();
    void liveTexts();
};

void TestProcessorLoad::sampleWidensBeforeAdding()
{
    // Counters are {user, system, idle, nice}. 4 294 967 295 × 2 + 2 = 8 589 934 592.
    auto script = std::make_shared<TickScript>();
    script->readings = {{{100, 20, 900, 3}, {4294967295u, 4294967295u, 7, 2}}};
    FakeTicks source(script);
    QCOMPARE(ProcessorLoad::sample(&source), (TickList{{123, 900}, {8589934592ull, 7}}));
    QVERIFY(ProcessorLoad::sample(nullptr).isEmpty());
}

void TestProcessorLoad::usage_data()
{
    QTest::addColumn<TickList>("from");
    QTest::addColumn<TickList>("to");
    QTest::addColumn<Fractions>("fractions");

    QTest::newRow("a quarter busy") << TickList{{100, 300}} << TickList{{200, 600}} << Fractions{0.25};
    QTest::newRow("counters did not move") << TickList{{500, 500}, {1, 1}} << TickList{{500, 500}, {2, 3}}
                                           << Fractions{0.0, 1.0 / 3.0};
    QTest::newRow("only busy moved") << TickList{{0, 40}} << TickList{{25, 40}} << Fractions{1.0};
    QTest::newRow("shorter second reading") << TickList{{0, 0}, {0, 0}, {0, 0}} << TickList{{1, 1}, {3, 1}}
                                            << Fractions{0.5, 0.75};
    QTest::newRow("shorter first reading") << TickList{{0, 0}} << TickList{{1, 3}, {3, 1}} << Fractions{0.25};
    // 5 − 10 wraps to 2⁶⁴ − 5; beside it 100 idle ticks vanish in a double.
    QTest::newRow("busy counter went back") << TickList{{10, 0}} << TickList{{5, 100}} << Fractions{1.0};
    // 2⁶⁴ − 5 idle ticks beside 50 busy ones: 50 / 2⁶⁴ in doubles.
    QTest::newRow("idle counter went back") << TickList{{0, 10}} << TickList{{50, 5}}
                                            << Fractions{50.0 / 18446744073709551616.0};
}

void TestProcessorLoad::usage()
{
    QFETCH(TickList, from);
    QFETCH(TickList, to);
    QFETCH(Fractions, fractions);

    QCOMPARE(ProcessorLoad::usage(from, to), fractions);
}

void TestProcessorLoad::liveTexts_data()
{
    QTest::addColumn<std::optional<int>>("angle");
    QTest::addColumn<std::optional<double>>("load");
    QTest::addColumn<std::optional<double>>("temperature");
    QTest::addColumn<LiveValues>("expected");

    QTest::newRow("typical") << std::optional(118) << std::optional(0.37) << std::optional(52.0)
                             << LiveValues{u"118°"_s, u"37 %"_s, 0.37, u"52 °C"_s};
    QTest::newRow("closed lid, idle") << std::optional(0) << std::optional(0.0) << std::optional(41.2)
                                      << LiveValues{u"0°"_s, u"0 %"_s, 0.0, u"41 °C"_s};
    // 12.5 % rounds away from zero; 52.5 °C is an exact tie that printf rounds to even.
    QTest::newRow("halves") << std::optional(180) << std::optional(0.125) << std::optional(52.5)
                            << LiveValues{u"180°"_s, u"13 %"_s, 0.125, u"52 °C"_s};
    QTest::newRow("other halves") << std::optional(1) << std::optional(0.25) << std::optional(53.5)
                                  << LiveValues{u"1°"_s, u"25 %"_s, 0.25, u"54 °C"_s};
    QTest::newRow("full load") << std::optional(90) << std::optional(1.0) << std::optional(99.7)
                               << LiveValues{u"90°"_s, u"100 %"_s, 1.0, u"100 °C"_s};
    QTest::newRow("nothing known") << std::optional<int>() << std::optional<double>() << std::optional<double>()
                                   << LiveValues{Text(), Text(), std::nullopt, Text()};
}

void TestProcessorLoad::liveTexts()
{
    QFETCH(std::optional<int>, angle);
    QFETCH(std::optional<double>, load);
    QFETCH(std::optional<double>, temperature);
    QFETCH(LiveValues, expected);

    const LiveValues values = liveValues(angle, load, temperature);
    QCOMPARE(values.lidAngle, expected.lidAngle);
    QCOMPARE(values.processorLoad, expected.processorLoad);
    QCOMPARE(values.processorLoadFraction, expected.processorLoadFraction);
    QCOMPARE(values.processorTemperature, expected.processorTemperature);
}

QUILLON_TEST_MAIN(TestProcessorLoad)
#include "tst_processor_load.moc"
