#include "state/app_state.h"

#include "collectors/battery_service.h"
#include "collectors/hardware_service.h"
#include "collectors/inventory_service.h"
#include "diagnostics/diagnostics_service.h"

#include <QPointer>

#include <memory>
#include <variant>

// What one collector run gave: the record of its section, or the failure's description.
struct AppState::Outcome
{
    std::optional<QString> failure;
    std::optional<HardwareInfo> hardware;
    std::optional<BatteryInfo> battery;
    QList<StorageVolume> volumes;
    QList<DeviceNode> devices;
};

namespace {

template <typename T>
std::optional<QString> failureOf(const Result<T> &result)
{
    return result.ok() ? std::nullopt : std::optional<QString>(result.failure().description());
}

} // namespace

AppState::AppState(Platform platform, QObject *parent) : QObject(parent), m_platform(std::move(platform))
{
    // Ten sections load side by side during a full load; the pool must not queue them.
    m_pool.setMaxThreadCount(int(AppSections::dataSections().size()));
}

AppState::~AppState()
{
    // Runs still waiting for the profiler tool are ended rather than waited for, so that
    // quitting never hangs and leaves no child process behind.
    m_pool.clear();
    if (m_pool.activeThreadCount() > 0 && m_platform.profiler)
        m_platform.profiler->cancelAll();
    m_pool.waitForDone();
}

std::optional<QString> AppState::failure(AppSection section) const
{
    const auto it = m_failures.constFind(section);
    return it == m_failures.constEnd() ? std::nullopt : std::optional<QString>(*it);
}

bool AppState::isLoading(AppSection section) const
{
    if (section == AppSection::overview || section == AppSection::diagnostics) {
        for (AppSection data : AppSections::dataSections()) {
            if (m_loading.contains(data))
                return true;
        }
        return false;
    }
    return m_loading.contains(section);
}

bool AppState::isCached(AppSection section) const
{
    switch (section) {
    case AppSection::hardware:
        return m_hardware.has_value();
    case AppSection::battery:
        // A machine without a battery has answered once that there is none.
        return m_batteryProbed;
    case AppSection::storage:
        return !m_volumes.isEmpty();
    default:
        return AppSections::isDeviceSection(section) && m_inventory.contains(section);
    }
}

QStringList AppState::loadingSections() const
{
    QStringList raw;
    for (AppSection section : AppSections::allCases()) {
        if (m_loading.contains(section))
            raw.append(AppSections::rawValue(section));
    }
    return raw;
}

AppState::Work AppState::collectorFor(AppSection section) const
{
    const Platform platform = m_platform;
    switch (section) {
    case AppSection::hardware:
        return [platform] {
            Result<HardwareInfo> result = HardwareService::load(platform);
            Outcome outcome{failureOf(result)};
            if (result.ok())
                outcome.hardware = std::move(result.value());
            return outcome;
        };
    case AppSection::battery:
        return [platform] {
            Outcome outcome;
            outcome.battery = BatteryService::load(platform);
            return outcome;
        };
    case AppSection::storage:
        return [platform] {
            Result<QList<StorageVolume>> result = InventoryService::storage(platform);
            Outcome outcome{failureOf(result)};
            if (result.ok())
                outcome.volumes = std::move(result.value());
            return outcome;
        };
    default:
        return [platform, section] {
            Result<QList<DeviceNode>> result = InventoryService::devices(platform, section);
            Outcome outcome{failureOf(result)};
            if (result.ok())
                outcome.devices = std::move(result.value());
            return outcome;
        };
    }
}

void AppState::offMainThread(Work work, std::function<void(Outcome)> deliver)
{
    QPointer<AppState> self(this);
    m_pool.start([self, work = std::move(work), deliver = std::move(deliver)]() mutable {
        Outcome outcome = work();
        if (!self)
            return;
        QMetaObject::invokeMethod(
            self.data(),
            [self, deliver = std::move(deliver), outcome = std::move(outcome)]() mutable {
                if (self)
                    deliver(std::move(outcome));
            },
            Qt::QueuedConnection);
    });
}

void AppState::load(AppSection section, bool force, std::function<void()> done)
{
    if (section == AppSection::overview || section == AppSection::diagnostics) {
        loadEverything(force, std::move(done));
        return;
    }
    // History is not loaded by itself, and a second request while one runs is dropped.
    const bool loadable = section == AppSection::hardware || section == AppSection::battery
        || section == AppSection::storage || AppSections::isDeviceSection(section);
    if (!loadable || (!force && isCached(section)) || m_loading.contains(section)) {
        if (done)
            done();
        return;
    }
    m_loading.insert(section);
    Q_EMIT loadingChanged();
    // A retry shows the loading state rather than the old message.
    if (m_failures.remove(section) > 0)
        Q_EMIT failuresChanged();

    offMainThread(collectorFor(section), [this, section, done = std::move(done)](Outcome outcome) {
        apply(section, std::move(outcome));
        if (done)
            done();
    });
}

void AppState::apply(AppSection section, Outcome outcome)
{
    if (outcome.failure) {
        // The section's previous data stays; nothing else is touched.
        m_failures.insert(section, *outcome.failure);
        m_loading.remove(section);
        Q_EMIT failuresChanged();
        Q_EMIT loadingChanged();
        return;
    }
    switch (section) {
    case AppSection::hardware:
        m_hardware = std::move(outcome.hardware);
        Q_EMIT hardwareChanged();
        break;
    case AppSection::battery:
        m_battery = std::move(outcome.battery);
        m_batteryProbed = true;
        Q_EMIT batteryChanged();
        break;
    case AppSection::storage:
        m_volumes = std::move(outcome.volumes);
        Q_EMIT volumesChanged();
        break;
    default:
        m_inventory.insert(section, std::move(outcome.devices));
        Q_EMIT inventoryChanged();
        break;
    }
    stampLastRefresh();
    m_loading.remove(section);
    Q_EMIT loadingChanged();
}

void AppState::loadEverything(bool force, std::function<void()> done)
{
    const QList<AppSection> sections = AppSections::dataSections();
    auto remaining = std::make_shared<int>(int(sections.size()));
    QPointer<AppState> self(this);
    auto childFinished = [self, remaining, done = std::move(done)] {
        if (--*remaining > 0 || !self)
            return;
        self->rebuildReport();
        self->stampLastRefresh();
        Q_EMIT self->everythingLoaded();
        if (done)
            done();
    };
    for (AppSection section : sections) {
        if (m_loading.contains(section)) {
            // Already running: this full load waits for that run rather than starting a
            // second one. Every profiler run has a time limit, so the wait always ends.
            auto connection = std::make_shared<QMetaObject::Connection>();
            *connection = connect(this, &AppState::loadingChanged, this, [this, section, connection, childFinished] {
                if (m_loading.contains(section))
                    return;
                disconnect(*connection);
                childFinished();
            });
            continue;
        }
        load(section, force, childFinished);
    }
}

void AppState::refresh(AppSection current, std::function<void()> done)
{
    if (current == AppSection::overview || current == AppSection::diagnostics) {
        loadEverything(true, std::move(done));
        return;
    }
    load(current, true, [this, done = std::move(done)] {
        rebuildReport();
        if (done)
            done();
    });
}

void AppState::rebuildReport()
{
    // Nothing to judge and nothing to say: the previous report, if any, stays.
    if (!m_hardware && m_volumes.isEmpty() && m_inventory.isEmpty() && m_failures.isEmpty())
        return;
    m_report = DiagnosticsService::build(m_platform, m_hardware, m_battery, m_volumes, m_inventory, m_failures);
    Q_EMIT reportChanged();
}

void AppState::stampLastRefresh()
{
    m_lastRefresh = m_platform.clock ? m_platform.clock->now() : QDateTime::currentDateTimeUtc();
    Q_EMIT lastRefreshChanged();
}
