#include "common/fake_mac.h"
#include "common/test_main.h"

#include "platform/capture/capture_platform.h"
#include "state/app_state.h"

#include <QMutex>
#include <QSemaphore>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

// A profiler that answers every data type with an empty list, counts its runs, can fail
// chosen data types and can hold a data type's runs until the test releases them.
class GatedProfiler final : public ProfilerSource
{
public:
    ProcessOutput run(const QStringList &arguments) const override
    {
        const QString type = arguments.value(1);
        QSemaphore *gate = nullptr;
        {
            QMutexLocker lock(&mutex);
            ++runs[type];
            gate = gates.value(type);
        }
        if (gate)
            gate->acquire();
        QMutexLocker lock(&mutex);
        if (failing.contains(type))
            return { true, {}, 1, {} };
        return { true, {}, 0, u"{\"%1\": []}"_s.arg(type).toUtf8() };
    }

    int runCount(const QString &type) const
    {
        QMutexLocker lock(&mutex);
        return runs.value(type);
    }

    mutable QMutex mutex;
    mutable QHash<QString, int> runs;
    QHash<QString, QSemaphore *> gates;
    QSet<QString> failing;
};

const QStringList allDataTypes { u"SPHardwareDataType"_s, u"SPSoftwareDataType"_s, u"SPPowerDataType"_s,
    u"SPStorageDataType"_s, u"SPDisplaysDataType"_s, u"SPUSBDataType"_s, u"SPThunderboltDataType"_s,
    u"SPBluetoothDataType"_s, u"SPNetworkDataType"_s, u"SPAudioDataType"_s, u"SPCameraDataType"_s };

} // namespace

class TestAppState : public QObject
{
    Q_OBJECT

    std::shared_ptr<GatedProfiler> m_profiler;
    std::shared_ptr<FakeRegistry> m_registry;

    Platform fakePlatform()
    {
        m_profiler = std::make_shared<GatedProfiler>();
        m_registry = std::make_shared<FakeRegistry>();
        Platform platform = silentPlatform(m_profiler);
        platform.registry = m_registry;
        return platform;
    }

    int batteryLookups() const
    {
        QMutexLocker lock(&m_registry->mutex);
        return int(m_registry->classesAsked.count(u"AppleSmartBattery"_s));
    }

    static void loadAndWait(AppState &state, AppSection section, bool force)
    {
        bool finished = false;
        state.load(section, force, [&finished] { finished = true; });
        QTRY_VERIFY_WITH_TIMEOUT(finished, 5000);
    }

private Q_SLOTS:
    void firstLoadRunsEverySectionOnceThenBuildsTheReport()
    {
        AppState state(fakePlatform());
        QStringList events;
        connect(&state, &AppState::reportChanged, this, [&events] { events << u"report"_s; });
        connect(&state, &AppState::lastRefreshChanged, this, [&events] { events << u"stamp"_s; });

        QVERIFY(!state.lastRefresh());
        loadAndWait(state, AppSection::overview, false);

        for (const QString &type : allDataTypes)
            QCOMPARE(m_profiler->runCount(type), type == u"SPPowerDataType"_s ? 0 : 1);
        // Without a smart battery the battery collector stops before asking the profiler.
        QVERIFY(batteryLookups() > 0);
        QVERIFY(state.hardware());
        QVERIFY(state.report());
        QCOMPARE(state.inventory().size(), 7);
        QVERIFY(state.batteryProbed());
        QVERIFY(!state.battery());
        QVERIFY(state.loading().isEmpty());
        // The report comes once, after every section, and the full load stamps last.
        QCOMPARE(events.count(u"report"_s), 1);
        QCOMPARE(events.last(), u"stamp"_s);
        QCOMPARE(events.indexOf(u"report"_s), events.size() - 2);
        QCOMPARE(state.lastRefresh(), QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7), Qt::UTC));
    }

    void cachedSectionsAreNotLoadedAgain()
    {
        AppState state(fakePlatform());
        loadAndWait(state, AppSection::battery, false);
        const int lookups = batteryLookups();
        QVERIFY(lookups > 0);
        QVERIFY(state.isCached(AppSection::battery));

        // A desktop without a battery has answered once: selecting the section again loads nothing.
        QSignalSpy loadingChanges(&state, &AppState::loadingChanged);
        loadAndWait(state, AppSection::battery, false);
        QCOMPARE(batteryLookups(), lookups);
        QCOMPARE(loadingChanges.count(), 0);

        loadAndWait(state, AppSection::usb, false);
        loadAndWait(state, AppSection::usb, false);
        QCOMPARE(m_profiler->runCount(u"SPUSBDataType"_s), 1);
        // An empty device list is cached too.
        QVERIFY(state.inventory().value(AppSection::usb).isEmpty());
        QVERIFY(state.isCached(AppSection::usb));

        loadAndWait(state, AppSection::usb, true);
        QCOMPARE(m_profiler->runCount(u"SPUSBDataType"_s), 2);
    }

    void failedSectionIsRetriedAndItsMessageClearedWhenTheRetryStarts()
    {
        AppState state(fakePlatform());
        m_profiler->failing.insert(u"SPUSBDataType"_s);
        loadAndWait(state, AppSection::usb, false);
        QCOMPARE(state.failure(AppSection::usb), u"system_profiler a échoué : code 1 pour SPUSBDataType"_s);
        QVERIFY(!state.isCached(AppSection::usb));
        QVERIFY(!state.lastRefresh());

        QSemaphore gate;
        m_profiler->gates.insert(u"SPUSBDataType"_s, &gate);
        bool finished = false;
        state.load(AppSection::usb, false, [&finished] { finished = true; });
        QVERIFY(!state.failure(AppSection::usb));
        QVERIFY(state.isLoading(AppSection::usb));
        {
            QMutexLocker lock(&m_profiler->mutex); // the held run reads it once released
            m_profiler->failing.clear();
        }
        gate.release();
        QTRY_VERIFY_WITH_TIMEOUT(finished, 5000);
        QVERIFY(!state.failure(AppSection::usb));
        QVERIFY(state.isCached(AppSection::usb));
        QVERIFY(state.lastRefresh());
    }

    void failureKeepsTheSectionsPreviousData()
    {
        AppState state(fakePlatform());
        loadAndWait(state, AppSection::hardware, false);
        QVERIFY(state.hardware());
        m_profiler->failing.insert(u"SPHardwareDataType"_s);
        loadAndWait(state, AppSection::hardware, true);
        QVERIFY(state.hardware());
        QVERIFY(state.failure(AppSection::hardware));
    }

    void secondRequestWhileLoadingIsDropped()
    {
        AppState state(fakePlatform());
        QSemaphore gate;
        m_profiler->gates.insert(u"SPDisplaysDataType"_s, &gate);
        bool first = false;
        bool second = false;
        state.load(AppSection::displays, true, [&first] { first = true; });
        state.refresh(AppSection::displays, [&second] { second = true; });
        QVERIFY(state.isLoading(AppSection::displays));
        QVERIFY(state.isLoading(AppSection::overview));
        QVERIFY(state.isLoading(AppSection::diagnostics));
        QVERIFY(!state.isLoading(AppSection::history));
        QVERIFY(!state.isLoading(AppSection::usb));
        gate.release(2);
        QTRY_VERIFY_WITH_TIMEOUT(first && second, 5000);
        QCOMPARE(m_profiler->runCount(u"SPDisplaysDataType"_s), 1);
        QVERIFY(!state.isLoading(AppSection::overview));
    }

};

QUILLON_TEST_MAIN(TestAppState)
#include "tst_app_state.moc"
