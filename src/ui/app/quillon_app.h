#pragma once

#include "sources/platform.h"

#include <QObject>
#include <QSettings>
#include <QString>
#include <QUrl>

#include <memory>

class AppState;
class DesktopLook;
class BatteryMonitor;
class CPUMonitor;
class History;
class LidAngleMonitor;
class MainWindowController;
class QQmlApplicationEngine;
class QQmlEngine;
class WorkshopSettings;

// The application: the objects made once for its whole life (the application state, the
// three live monitors, the workshop settings and the journal) and its windows.
class QuillonApp : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        // The journal's folder; empty for the user's data folder.
        QString journalDirectory;
        // The preferences store of the workshop settings; null for the user's standard store.
        std::unique_ptr<QSettings> preferences;
        // The desktop whose title bar the main window merges with its toolbar; null for none.
        const DesktopLook *desktop = nullptr;
    };

    // The location of the main window's QML file in the application's module.
    static QUrl mainWindowUrl();
    static QUrl startupErrorUrl();

    // Prepares an engine for the application's QML module: its import path and the symbol
    // image provider.
    static void prepareEngine(QQmlEngine &engine);

    QuillonApp(Platform platform, Options options, QObject *parent = nullptr);
    ~QuillonApp() override;

    AppState &state() const { return *m_state; }
    History &history() const { return *m_history; }
    WorkshopSettings &workshop() const { return *m_workshop; }
    CPUMonitor &processorMonitor() const { return *m_processorMonitor; }
    BatteryMonitor &batteryMonitor() const { return *m_batteryMonitor; }
    LidAngleMonitor &lidAngleMonitor() const { return *m_lidAngleMonitor; }
    MainWindowController &mainWindow() const { return *m_mainWindow; }

    // Opens the main window (with its about and settings windows) in `engine`.
    // Returns false when the QML could not be loaded.
    bool openWindows(QQmlApplicationEngine &engine);

private:
    std::unique_ptr<AppState> m_state;
    std::unique_ptr<LidAngleMonitor> m_lidAngleMonitor;
    std::unique_ptr<CPUMonitor> m_processorMonitor;
    std::unique_ptr<BatteryMonitor> m_batteryMonitor;
    std::unique_ptr<WorkshopSettings> m_workshop;
    std::unique_ptr<History> m_history;
    std::unique_ptr<MainWindowController> m_mainWindow;
    const DesktopLook *m_desktop = nullptr;
};
