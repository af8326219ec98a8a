#include "ui/presentation/screen_data.h"

#include "core/byte_format.h"
#include "state/app_state.h"
#include "ui/presentation/overview_presentation.h"
#include "ui/presentation/presentation.h"
#include "ui/presentation/verdict_presentation.h"

using namespace Qt::StringLiterals;

ScreenData::ScreenData(const AppState &state, QObject *parent)
    : QObject(parent),
      m_state(state),
      m_batteryFigures(new BatteryFigures(state, this)),
      m_checks(new CheckListModel(CheckListModel::Scope::allChecks, this)),
      m_tiles(new CheckListModel(CheckListModel::Scope::tiles, this)),
      m_ownership(new CheckListModel(CheckListModel::Scope::ownership, this))
{
    for (auto signal :
        { &AppState::hardwareChanged, &AppState::batteryChanged, &AppState::volumesChanged, &AppState::reportChanged })
        connect(&m_state, signal, this, &ScreenData::changed);
    // The screen resolution comes from the displays; the footer from the last analysis.
    for (auto signal : { &AppState::inventoryChanged, &AppState::lastRefreshChanged })
        connect(&m_state, signal, this, &ScreenData::changed);
    connect(&m_state, &AppState::reportChanged, this, &ScreenData::updateChecks);
    updateChecks();
}

void ScreenData::updateChecks()
{
    m_checks->setReport(m_state.report());
    m_tiles->setReport(m_state.report());
    m_ownership->setReport(m_state.report());
}

void ScreenData::setLive(const LiveValues &live)
{
    m_checks->setLive(live);
    m_tiles->setLive(live);
}

bool ScreenData::hasHardware() const
{
    return m_state.hardware().has_value();
}

bool ScreenData::hasBattery() const
{
    return m_state.battery().has_value();
}

bool ScreenData::hasReport() const
{
    return m_state.report().has_value();
}

QString ScreenData::modelName() const
{
    return m_state.hardware() ? m_state.hardware()->modelName : QString();
}

QVariantList ScreenData::hardwareRows() const
{
    return m_state.hardware() ? Presentation::rowsForQml(m_state.hardware()->rows) : QVariantList();
}

QVariantList ScreenData::batteryRows() const
{
    return m_state.battery() ? Presentation::rowsForQml(m_state.battery()->rows) : QVariantList();
}

QVariantList ScreenData::storageRows() const
{
    QList<InfoRow> rows;
    for (const StorageVolume &volume : m_state.volumes())
        rows.append(InfoRow(volume.name, ByteFormat::string(volume.totalBytes)));
    return Presentation::rowsForQml(rows);
}

QVariantList ScreenData::checkRows() const
{
    QList<InfoRow> rows;
    if (m_state.report()) {
        for (const HardwareCheck &check : m_state.report()->checks) {
            QString value = CheckStatuses::label(check.status);
            if (check.measurement)
                value += u" · "_s + *check.measurement;
            rows.append(InfoRow(check.title, value));
        }
    }
    return Presentation::rowsForQml(rows);
}

QString ScreenData::headline() const
{
    return m_state.report() ? m_state.report()->headline() : QString();
}

QString ScreenData::machineSymbol() const
{
    return Presentation::machineSymbol(hasBattery());
}

QString ScreenData::overviewTitle() const
{
    return Presentation::overviewTitle(m_state.hardware());
}

QString ScreenData::modelYear() const
{
    const std::optional<HardwareInfo> &hardware = m_state.hardware();
    return hardware && hardware->modelYear ? QString::number(*hardware->modelYear) : QString();
}

QString ScreenData::machineConfigurationLine() const
{
    return m_state.hardware() ? Presentation::machineConfigurationLine(*m_state.hardware()) : QString();
}

QString ScreenData::machineModelLine() const
{
    return m_state.hardware() ? Presentation::machineModelLine(*m_state.hardware()) : QString();
}

QVariantList ScreenData::configurationFigures() const
{
    QVariantList figures;
    if (!m_state.hardware())
        return figures;
    const QList<DeviceNode> displays = m_state.inventory().value(AppSection::displays);
    for (const Presentation::StatFigure &figure :
        Presentation::configurationFigures(*m_state.hardware(), m_state.volumes(), displays))
        figures.append(
            QVariantMap { { u"label"_s, figure.label }, { u"value"_s, figure.value }, { u"tint"_s, figure.tintRole } });
    return figures;
}

// The banner's level: the worst verdict, except that a bilan with failed reads never shows
// the green all-clear.
CheckStatus ScreenData::bannerLevel(const DiagnosticsReport &report)
{
    const CheckStatus worst = report.worst();
    return !report.failedReads.isEmpty() && worst == CheckStatus::ok ? CheckStatus::info : worst;
}

QString ScreenData::worstStatus() const
{
    return m_state.report() ? Presentation::checkStatusRawValue(bannerLevel(*m_state.report())) : QString();
}

QString ScreenData::worstColourRole() const
{
    return m_state.report() ? Presentation::levelColourRole(bannerLevel(*m_state.report())) : QString();
}

QString ScreenData::worstSymbol() const
{
    return m_state.report() ? CheckStatuses::symbol(bannerLevel(*m_state.report())) : QString();
}

QString ScreenData::detailLine() const
{
    return m_state.report() ? Presentation::verdictDetailLine(*m_state.report()) : QString();
}

QString ScreenData::coverageLine() const
{
    return m_state.report() ? Presentation::coverageLine(*m_state.report()) : QString();
}

QString ScreenData::reportLine() const
{
    return m_state.report() ? Presentation::reportLine(*m_state.report()) : QString();
}

QVariantList ScreenData::tallies() const
{
    QVariantList tallies;
    if (!m_state.report())
        return tallies;
    for (CheckStatus level : Presentation::talliedLevels())
        tallies.append(QVariantMap { { u"count"_s, m_state.report()->count(level) },
            { u"label"_s, CheckStatuses::label(level) }, { u"colourRole"_s, Presentation::levelColourRole(level) } });
    return tallies;
}

QString ScreenData::footerLine() const
{
    return Presentation::footerLine(m_state.lastRefresh()).value_or(QString());
}
