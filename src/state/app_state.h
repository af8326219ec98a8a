#pragma once

#include "core/app_section.h"
#include "core/battery_info.h"
#include "core/hardware_info.h"
#include "core/inventory.h"
#include "core/storage_volume.h"
#include "diagnostics/diagnostics_report.h"
#include "sources/platform.h"

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QThreadPool>

#include <functional>
#include <optional>

// Everything the collectors gathered, and the one place that decides when each collector
// runs. Lives on the main thread: every field is read and written there, so the per-section
// bookkeeping needs no lock. Collector work runs in a thread pool of its own, at most one
// run per section, the ten sections of a full load side by side.
class AppState : public QObject
{
    Q_OBJECT
    // The moment of the last successful section load or whole refresh; stamped again
    // (and notified) even when the clock gives the same moment.
    Q_PROPERTY(QDateTime lastRefresh READ lastRefreshValue NOTIFY lastRefreshChanged)
    // Raw values of the sections whose collector is running now.
    Q_PROPERTY(QStringList loadingSections READ loadingSections NOTIFY loadingChanged)

public:
    explicit AppState(Platform platform, QObject *parent = nullptr);
    // Ends the profiler runs still in flight (ProfilerSource::cancelAll), then waits for the
    // collectors to return: never for the tool itself.
    ~AppState() override;

    const Platform &platform() const { return m_platform; }

    const std::optional<HardwareInfo> &hardware() const { return m_hardware; }
    const std::optional<BatteryInfo> &battery() const { return m_battery; }
    const QList<StorageVolume> &volumes() const { return m_volumes; }
    const Inventory &inventory() const { return m_inventory; }
    const std::optional<DiagnosticsReport> &report() const { return m_report; }
    const QSet<AppSection> &loading() const { return m_loading; }
    const QHash<AppSection, QString> &failures() const { return m_failures; }
    std::optional<QString> failure(AppSection section) const;
    const std::optional<QDateTime> &lastRefresh() const { return m_lastRefresh; }
    bool batteryProbed() const { return m_batteryProbed; }

    // Overview and diagnostics are loading while any data section is; history never is.
    bool isLoading(AppSection section) const;
    bool isCached(AppSection section) const;

    // Loads one section (everything for overview and diagnostics); `force` false loads only
    // what is not cached. `done` runs on the main thread once the load has finished.
    void load(AppSection section, bool force, std::function<void()> done = {});
    void loadEverything(bool force, std::function<void()> done = {});
    // The user's refresh of the section on screen: always forced, then the report is rebuilt.
    void refresh(AppSection current, std::function<void()> done = {});
    void rebuildReport();

    QDateTime lastRefreshValue() const { return m_lastRefresh.value_or(QDateTime()); }
    QStringList loadingSections() const;

Q_SIGNALS:
    void hardwareChanged();
    void batteryChanged();
    void volumesChanged();
    void inventoryChanged();
    void reportChanged();
    void loadingChanged();
    void failuresChanged();
    void lastRefreshChanged();
    // A full load (all ten sections, then the report) has finished.
    void everythingLoaded();

private:
    struct Outcome;
    using Work = std::function<Outcome()>;

    Work collectorFor(AppSection section) const;
    void offMainThread(Work work, std::function<void(Outcome)> deliver);
    void apply(AppSection section, Outcome outcome);
    void stampLastRefresh();

    Platform m_platform;
    QThreadPool m_pool;
    std::optional<HardwareInfo> m_hardware;
    std::optional<BatteryInfo> m_battery;
    QList<StorageVolume> m_volumes;
    Inventory m_inventory;
    std::optional<DiagnosticsReport> m_report;
    QSet<AppSection> m_loading;
    QHash<AppSection, QString> m_failures;
    std::optional<QDateTime> m_lastRefresh;
    bool m_batteryProbed = false;
};
