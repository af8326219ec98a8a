#include "ui/app/main_window_controller.h"

#include "core/texts.h"
#include "live/battery_monitor.h"
#include "live/cpu_monitor.h"
#include "live/lid_angle_monitor.h"
#include "live/live_values.h"
#include "records/history.h"
#include "records/report_builder.h"
#include "records/workshop_settings.h"
#include "state/app_state.h"
#include "records/report_pdf.h"
#include "ui/export/report_export.h"
#include "ui/presentation/presentation.h"

#include <QCoreApplication>
#include <QDir>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>

MainWindowController::MainWindowController(Shared shared, QObject *parent)
    : QObject(parent),
      m_state(shared.state),
      m_history(shared.history),
      m_workshop(shared.workshop),
      m_processorMonitor(shared.processorMonitor),
      m_batteryMonitor(shared.batteryMonitor),
      m_lidAngleMonitor(shared.lidAngleMonitor),
      m_sections(new SectionListModel(this)),
      m_data(new ScreenData(shared.state, this)),
      m_reveal(&ReportExport::revealInFileManager),
      m_openCapture([](const QString &folder) {
          QProcess::startDetached(QCoreApplication::applicationFilePath(), { QStringLiteral("--capture"), folder });
      })
{
    for (AppSection section : AppSections::allCases())
        m_sectionStates.insert(section, new SectionState(section, m_state, this));
    connect(&m_state, &AppState::loadingChanged, this, &MainWindowController::refreshingChanged);
    connect(&m_state, &AppState::lastRefreshChanged, this, &MainWindowController::recordInJournal);
    // The live figures follow the monitors without any refresh of the report.
    connect(&m_lidAngleMonitor, &LidAngleMonitor::angleChanged, this, &MainWindowController::updateLive);
    connect(&m_processorMonitor, &CPUMonitor::loadChanged, this, &MainWindowController::updateLive);
    connect(&m_processorMonitor, &CPUMonitor::temperatureChanged, this, &MainWindowController::updateLive);
    connect(&m_batteryMonitor, &BatteryMonitor::snapshotChanged, this,
        [this] { m_data->batteryFigures()->setSnapshot(m_batteryMonitor.snapshot()); });
    updateLive();
    m_data->batteryFigures()->setSnapshot(m_batteryMonitor.snapshot());
}

void MainWindowController::updateLive()
{
    const LiveValues current
        = liveValues(m_lidAngleMonitor.angle(), m_processorMonitor.load(), m_processorMonitor.temperature());
    if (current == m_live)
        return;
    m_live = current;
    m_data->setLive(m_live);
    Q_EMIT liveChanged();
}

QVariantMap MainWindowController::liveMap() const
{
    QVariantMap map;
    if (m_live.lidAngle)
        map.insert(QStringLiteral("lidAngle"), *m_live.lidAngle);
    if (m_live.processorLoad)
        map.insert(QStringLiteral("processorLoad"), *m_live.processorLoad);
    if (m_live.processorLoadFraction)
        map.insert(QStringLiteral("processorLoadFraction"), *m_live.processorLoadFraction);
    if (m_live.processorTemperature)
        map.insert(QStringLiteral("processorTemperature"), *m_live.processorTemperature);
    return map;
}

void MainWindowController::openSection(const QString &rawValue)
{
    if (const std::optional<AppSection> section = AppSections::fromRawValue(rawValue))
        setSelection(*section);
}

void MainWindowController::setSelection(std::optional<AppSection> selection)
{
    if (selection == m_selection)
        return;
    m_selection = selection;
    Q_EMIT selectionChanged();
    Q_EMIT refreshingChanged();
    if (m_isVisible)
        applySelection();
}

QString MainWindowController::selectionRawValue() const
{
    return m_selection ? AppSections::rawValue(*m_selection) : QString();
}

void MainWindowController::setSelectionRawValue(const QString &rawValue)
{
    setSelection(AppSections::fromRawValue(rawValue));
}

SectionState *MainWindowController::section(const QString &rawValue) const
{
    const std::optional<AppSection> parsed = AppSections::fromRawValue(rawValue);
    return parsed ? section(*parsed) : nullptr;
}

QString MainWindowController::title() const
{
    return AppSections::title(shownSection());
}

bool MainWindowController::isRefreshing() const
{
    return m_state.isLoading(shownSection());
}

bool MainWindowController::showsSampleData() const
{
    return m_state.platform().isReplay;
}

QString MainWindowController::sampleDataLabel() const
{
    return showsSampleData() ? localized("Données d'exemple") : QString();
}

QString MainWindowController::sampleDescription() const
{
    return showsSampleData() ? m_state.platform().description : QString();
}

QObject *MainWindowController::workshopObject() const
{
    return &m_workshop;
}

QObject *MainWindowController::historyObject() const
{
    return &m_history;
}

QObject *MainWindowController::processorMonitorObject() const
{
    return &m_processorMonitor;
}

QObject *MainWindowController::batteryMonitorObject() const
{
    return &m_batteryMonitor;
}

QObject *MainWindowController::lidAngleMonitorObject() const
{
    return &m_lidAngleMonitor;
}

void MainWindowController::appear()
{
    m_isVisible = true;
    applySelection();
}

void MainWindowController::disappear()
{
    m_isVisible = false;
    m_lidAngleMonitor.stop();
    m_processorMonitor.stop();
    m_batteryMonitor.stop();
}

void MainWindowController::applySelection()
{
    // Loads already running for an earlier selection still finish and update the state.
    m_state.load(shownSection(), false);
    applyMonitors(shownSection());
}

void MainWindowController::applyMonitors(AppSection section)
{
    const Presentation::MonitorPlan plan = Presentation::monitorsFor(section);
    plan.lidAngle ? m_lidAngleMonitor.start() : m_lidAngleMonitor.stop();
    plan.processor ? m_processorMonitor.start() : m_processorMonitor.stop();
    plan.battery ? m_batteryMonitor.start() : m_batteryMonitor.stop();
}

void MainWindowController::refresh()
{
    if (isRefreshing())
        return;
    m_state.refresh(shownSection());
}

void MainWindowController::recordInJournal()
{
    m_history.record(m_state.hardware(), m_state.battery(), m_state.volumes(), m_state.report());
}

void MainWindowController::startExport()
{
    if (m_isExporting)
        return;
    setExporting(true);
    // Every data section not loaded yet is loaded first; loaded ones are not refreshed.
    const QPointer<MainWindowController> self(this);
    m_state.load(AppSection::diagnostics, false, [self] {
        if (!self)
            return;
        self->m_pendingReport = self->buildReport();
        const QDateTime now = self->m_state.platform().clock->now();
        const QString name = ReportBuilder::suggestedFileName(self->m_state.hardware(), now);
        Q_EMIT self->saveRequested(QUrl::fromLocalFile(QDir(self->proposedFolder()).filePath(name)));
    });
}

QString MainWindowController::proposedFolder() const
{
    if (!m_proposedFolder.isEmpty())
        return m_proposedFolder;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

ReportOutline MainWindowController::buildReport() const
{
    ReportContents contents;
    contents.hardware = m_state.hardware();
    contents.battery = m_state.battery();
    contents.snapshot = m_batteryMonitor.snapshot();
    contents.volumes = m_state.volumes();
    contents.inventory = m_state.inventory();
    contents.report = m_state.report();
    contents.live = liveValues(m_lidAngleMonitor.angle(), m_processorMonitor.load(), m_processorMonitor.temperature());
    contents.workshop = m_workshop.header();
    const QDateTime now = m_state.platform().clock->now();
    if (contents.hardware && contents.report)
        contents.sinceLastVisit = m_history.changesSincePreviousVisit(
            History::entryFor(*contents.hardware, contents.battery, contents.volumes, *contents.report, now));
    return ReportBuilder::outline(contents, ReportStamp::ofThisApplication(m_state.platform().clock->now()));
}

void MainWindowController::finishExport(const QUrl &file)
{
    if (!m_isExporting)
        return;
    const QString path = file.isLocalFile() ? file.toLocalFile() : file.toString();
    // A PDF unless the name asks for the text form.
    const QString error = path.endsWith(QStringLiteral(".txt"), Qt::CaseInsensitive)
        ? ReportExport::writeText(path, ReportBuilder::build(m_pendingReport.value_or(ReportOutline())))
        : ReportPdf::write(m_pendingReport.value_or(ReportOutline()), path);
    m_pendingReport.reset();
    if (error.isEmpty()) {
        if (m_reveal)
            m_reveal(path);
    } else {
        Q_EMIT exportFailed(error);
    }
    setExporting(false);
}

void MainWindowController::openCapture(const QUrl &folder)
{
    if (folder.isLocalFile() && m_openCapture)
        m_openCapture(folder.toLocalFile());
}

void MainWindowController::cancelExport()
{
    m_pendingReport.reset();
    setExporting(false);
}

void MainWindowController::setExporting(bool exporting)
{
    if (exporting == m_isExporting)
        return;
    m_isExporting = exporting;
    Q_EMIT isExportingChanged();
}
