#include "ui/app/quillon_app.h"

#include "live/battery_monitor.h"
#include "live/cpu_monitor.h"
#include "live/lid_angle_monitor.h"
#include "records/history.h"
#include "records/workshop_settings.h"
#include "state/app_state.h"
#include "ui/app/main_window_controller.h"
#include "ui/app/window_chrome.h"
#include "ui/symbols/symbol_provider.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QSettings>

using namespace Qt::StringLiterals;

QUrl QuillonApp::mainWindowUrl()
{
    return QUrl(u"qrc:/Quillon/Main.qml"_s);
}

QUrl QuillonApp::startupErrorUrl()
{
    return QUrl(u"qrc:/Quillon/StartupError.qml"_s);
}

void QuillonApp::prepareEngine(QQmlEngine &engine)
{
    engine.addImportPath(u"qrc:/"_s);
    engine.addImageProvider(QString::fromUtf16(SymbolProvider::providerId), new SymbolProvider);
}

QuillonApp::QuillonApp(Platform platform, Options options, QObject *parent)
    : QObject(parent),
      m_state(std::make_unique<AppState>(platform)),
      m_lidAngleMonitor(std::make_unique<LidAngleMonitor>(platform)),
      m_processorMonitor(std::make_unique<CPUMonitor>(platform)),
      m_batteryMonitor(std::make_unique<BatteryMonitor>(platform)),
      m_workshop(options.preferences ? std::make_unique<WorkshopSettings>(std::move(options.preferences))
                                     : std::make_unique<WorkshopSettings>()),
      m_history(std::make_unique<History>(platform.clock, options.journalDirectory, nullptr, History::Reading::inBackground)),
      m_desktop(options.desktop)
{
    m_mainWindow = std::make_unique<MainWindowController>(MainWindowController::Shared {
        *m_state, *m_history, *m_workshop, *m_processorMonitor, *m_batteryMonitor, *m_lidAngleMonitor });
}

QuillonApp::~QuillonApp()
{
    m_mainWindow.reset();
    m_lidAngleMonitor->stop();
    m_processorMonitor->stop();
    m_batteryMonitor->stop();
}

bool QuillonApp::openWindows(QQmlApplicationEngine &engine)
{
    engine.setInitialProperties({ { u"controller"_s, QVariant::fromValue(m_mainWindow.get()) } });
    engine.load(mainWindowUrl());
    if (engine.rootObjects().isEmpty())
        return false;
    if (auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst()); window && m_desktop)
        WindowChrome::merge(*m_desktop, *window);
    return true;
}
