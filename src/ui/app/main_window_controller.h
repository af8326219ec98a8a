#pragma once

#include "records/report_builder.h"

#include "core/app_section.h"
#include "live/live_values.h"
#include "ui/models/section_list_model.h"
#include "ui/models/section_state.h"
#include "ui/presentation/screen_data.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <optional>

class AppState;
class BatteryMonitor;
class CPUMonitor;
class History;
class LidAngleMonitor;
class WorkshopSettings;

// The main window's own state and its contract with the shared objects: the selected
// section (none counts as the overview), which section loads and which live monitors run
// when the selection changes or the window appears and disappears, the journal line written
// after every refresh, and the export of the text report.
class MainWindowController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The main window's controller is made by the application.")

    // The selected section's raw value; empty while nothing is selected.
    Q_PROPERTY(QString selection READ selectionRawValue WRITE setSelectionRawValue NOTIFY selectionChanged)
    // The section on screen: the selection, or the overview while nothing is selected.
    Q_PROPERTY(SectionState *current READ current NOTIFY selectionChanged)
    // The title of the section on screen.
    Q_PROPERTY(QString title READ title NOTIFY selectionChanged)
    // The section on screen is loading: the refresh button waits.
    Q_PROPERTY(bool isRefreshing READ isRefreshing NOTIFY refreshingChanged)
    // An export is running: the export button waits.
    Q_PROPERTY(bool isExporting READ isExporting NOTIFY isExportingChanged)
    // The sidebar's sections.
    Q_PROPERTY(SectionListModel *sections READ sections CONSTANT)
    // The records as the screens read them.
    Q_PROPERTY(ScreenData *data READ data CONSTANT)
    // Recorded answers are shown instead of this Mac: the window says so, with the
    // recording's description.
    Q_PROPERTY(bool showsSampleData READ showsSampleData CONSTANT)
    Q_PROPERTY(QString sampleDataLabel READ sampleDataLabel CONSTANT)
    Q_PROPERTY(QString sampleDescription READ sampleDescription CONSTANT)
    // The shared objects, for the screens and the settings window.
    Q_PROPERTY(QObject *workshop READ workshopObject CONSTANT)
    Q_PROPERTY(QObject *history READ historyObject CONSTANT)
    Q_PROPERTY(QObject *processorMonitor READ processorMonitorObject CONSTANT)
    Q_PROPERTY(QObject *batteryMonitor READ batteryMonitorObject CONSTANT)
    Q_PROPERTY(QObject *lidAngleMonitor READ lidAngleMonitorObject CONSTANT)
    // The live readings the monitors publish now: lidAngle, processorLoad,
    // processorLoadFraction and processorTemperature, each left out while unknown.
    Q_PROPERTY(QVariantMap live READ liveMap NOTIFY liveChanged)

public:
    struct Shared
    {
        AppState &state;
        History &history;
        WorkshopSettings &workshop;
        CPUMonitor &processorMonitor;
        BatteryMonitor &batteryMonitor;
        LidAngleMonitor &lidAngleMonitor;
    };

    explicit MainWindowController(Shared shared, QObject *parent = nullptr);

    std::optional<AppSection> selection() const { return m_selection; }
    void setSelection(std::optional<AppSection> selection);
    QString selectionRawValue() const;
    void setSelectionRawValue(const QString &rawValue);
    // The section on screen.
    AppSection shownSection() const { return m_selection.value_or(AppSection::overview); }

    // The application state the screens draw.
    const AppState &state() const { return m_state; }

    SectionState *current() const { return section(shownSection()); }
    SectionState *section(AppSection section) const { return m_sectionStates.value(section); }
    Q_INVOKABLE SectionState *section(const QString &rawValue) const;
    QString title() const;
    bool isRefreshing() const;
    bool isExporting() const { return m_isExporting; }
    SectionListModel *sections() const { return m_sections; }
    ScreenData *data() const { return m_data; }
    bool showsSampleData() const;
    QString sampleDataLabel() const;
    QString sampleDescription() const;
    QObject *workshopObject() const;
    QObject *historyObject() const;
    QObject *processorMonitorObject() const;
    QObject *batteryMonitorObject() const;
    QObject *lidAngleMonitorObject() const;
    // The live values of the lid-angle and processor monitors, kept up to date as they publish.
    const LiveValues &live() const { return m_live; }
    QVariantMap liveMap() const;

    // A verdict was clicked: its section is shown; a verdict without a section (empty raw
    // value) changes nothing.
    Q_INVOKABLE void openSection(const QString &rawValue);

    // The window appeared: load the section on screen and start its monitors.
    Q_INVOKABLE void appear();
    // The window disappeared: stop every monitor.
    Q_INVOKABLE void disappear();
    // The refresh command of the section on screen.
    Q_INVOKABLE void refresh();

    // The export, in three steps: `startExport` loads what is missing, builds the text and
    // asks for a file (saveRequested); the window's save dialog then calls `finishExport`
    // with the chosen file, or `cancelExport`.
    Q_INVOKABLE void startExport();
    Q_INVOKABLE void finishExport(const QUrl &file);
    Q_INVOKABLE void cancelExport();
    // The text waiting for its file while the save dialog is open.

    // The folder where the save dialog proposes the report: the user's documents folder
    // by default (the home folder when there is none).
    void setProposedFolder(const QString &folder) { m_proposedFolder = folder; }
    QString proposedFolder() const;

    // Shows a written file to the user; the file manager by default.
    void setFileRevealer(std::function<void(const QString &)> revealer) { m_reveal = std::move(revealer); }

    // "Ouvrir une capture…": the recorded Mac of that folder opens in a window of its own, a
    // second run of the application, so that this Mac's window stays as it is.
    Q_INVOKABLE void openCapture(const QUrl &folder);
    // Starts that second run; a detached run of this program with --capture by default.
    void setCaptureOpener(std::function<void(const QString &)> opener) { m_openCapture = std::move(opener); }

Q_SIGNALS:
    void selectionChanged();
    void refreshingChanged();
    void isExportingChanged();
    void liveChanged();
    // The report text is ready: the window shows its save dialog proposing this file (the
    // report's file name in the user's documents folder).
    void saveRequested(const QUrl &proposedFile);
    // Writing the report failed: the window shows the "Export impossible" alert with this text.
    void exportFailed(const QString &description);

private:
    void applySelection();
    void applyMonitors(AppSection section);
    void recordInJournal();
    void setExporting(bool exporting);
    void updateLive();
    ReportOutline buildReport() const;

    AppState &m_state;
    History &m_history;
    WorkshopSettings &m_workshop;
    CPUMonitor &m_processorMonitor;
    BatteryMonitor &m_batteryMonitor;
    LidAngleMonitor &m_lidAngleMonitor;

    std::optional<AppSection> m_selection;
    LiveValues m_live;
    bool m_isVisible = false;
    bool m_isExporting = false;
    // The report being exported, from the moment everything is loaded to the file's choice.
    std::optional<ReportOutline> m_pendingReport;
    QString m_proposedFolder;
    QHash<AppSection, SectionState *> m_sectionStates;
    SectionListModel *m_sections = nullptr;
    ScreenData *m_data = nullptr;
    std::function<void(const QString &)> m_reveal;
    std::function<void(const QString &)> m_openCapture;
};
