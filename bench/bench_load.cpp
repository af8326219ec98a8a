#include "bench_load.h"

#include "collectors/battery_service.h"
#include "core/app_section.h"
#include "records/report_builder.h"
#include "state/app_state.h"

#include <QEventLoop>

Loaded fullLoad(const Platform &platform)
{
    AppState state(platform);
    QEventLoop loop;
    bool done = false;
    state.load(AppSection::overview, false, [&] {
        done = true;
        loop.quit();
    });
    if (!done)
        loop.exec();
    return { state.hardware(), state.battery(), state.volumes(), state.inventory(), state.report() };
}

QString reportText(const Platform &platform, const Loaded &loaded)
{
    ReportContents contents;
    contents.hardware = loaded.hardware;
    contents.battery = loaded.battery;
    contents.snapshot = BatteryService::liveSnapshot(platform);
    contents.volumes = loaded.volumes;
    contents.inventory = loaded.inventory;
    contents.report = loaded.report;
    return ReportBuilder::build(contents, ReportStamp::ofThisApplication(platform.clock->now()));
}

QString fullLoadAndReport(const Platform &platform)
{
    return reportText(platform, fullLoad(platform));
}
