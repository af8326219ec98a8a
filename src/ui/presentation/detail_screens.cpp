#include "ui/presentation/detail_screens.h"

#include "core/byte_format.h"
#include "live/cpu_monitor.h"
#include "live/lid_angle_monitor.h"
#include "records/history.h"
#include "state/app_state.h"
#include "ui/app/main_window_controller.h"
#include "ui/presentation/detail_presentation.h"
#include "ui/presentation/presentation.h"

#include <QUuid>
#include <QVariantMap>

using namespace Qt::StringLiterals;

// --- HardwareScreen ---

HardwareScreen::HardwareScreen(QObject *parent) : QObject(parent)
{
}

void HardwareScreen::setController(QObject *controller)
{
    if (controller == m_controller)
        return;
    for (const QObject *source : { static_cast<const QObject *>(m_state), static_cast<const QObject *>(m_processor),
             static_cast<const QObject *>(m_lidAngle.data()) }) {
        if (source)
            disconnect(source, nullptr, this, nullptr);
    }
    m_controller = controller;
    auto *window = qobject_cast<MainWindowController *>(controller);
    m_state = window ? &window->state() : nullptr;
    m_processor = window ? qobject_cast<CPUMonitor *>(window->processorMonitorObject()) : nullptr;
    m_lidAngle = window ? qobject_cast<LidAngleMonitor *>(window->lidAngleMonitorObject()) : nullptr;
    if (m_state)
        connect(m_state, &AppState::hardwareChanged, this, &HardwareScreen::componentsChanged);
    if (m_processor) {
        for (auto signal :
            { &CPUMonitor::loadChanged, &CPUMonitor::perCoreLoadChanged, &CPUMonitor::temperatureChanged })
            connect(m_processor, signal, this, &HardwareScreen::processorChanged);
    }
    if (m_lidAngle)
        connect(m_lidAngle, &LidAngleMonitor::angleChanged, this, &HardwareScreen::componentsChanged);
    Q_EMIT controllerChanged();
    Q_EMIT processorChanged();
    Q_EMIT componentsChanged();
}

QVariantList HardwareScreen::processorRows() const
{
    const std::optional<QString> load = m_processor ? m_processor->loadText() : std::nullopt;
    const std::optional<QString> temperature = m_processor ? m_processor->temperatureText() : std::nullopt;
    return Presentation::rowsForQml(DetailPresentation::processorRows(load, temperature));
}

QString HardwareScreen::processorAccessory() const
{
    const std::optional<QString> temperature = m_processor ? m_processor->temperatureText() : std::nullopt;
    return DetailPresentation::processorAccessory(temperature).value_or(QString());
}

QVariantList HardwareScreen::coreBars() const
{
    QVariantList bars;
    if (!m_processor)
        return bars;
    const QList<double> loads = m_processor->perCoreLoad();
    for (qsizetype core = 0; core < loads.size(); ++core) {
        const DetailPresentation::CoreBar bar = DetailPresentation::coreBar(loads.at(core));
        bars.append(QVariantMap {
            { u"number"_s, QString::number(core + 1) }, { u"opacity"_s, bar.opacity }, { u"height"_s, bar.height } });
    }
    return bars;
}

QString HardwareScreen::sheetSymbol() const
{
    const bool portable
        = m_state && m_state->hardware() && m_state->hardware()->components.isPortable;
    return portable ? u"laptopcomputer"_s : u"desktopcomputer"_s;
}

QString HardwareScreen::componentsAccessory() const
{
    if (!m_state || !m_state->hardware())
        return QString();
    return DetailPresentation::componentsAccessory(m_state->hardware()->components.sensorInterfaces);
}

QVariantList HardwareScreen::components() const
{
    QVariantList list;
    if (!m_state || !m_state->hardware())
        return list;
    const std::optional<QString> angle = m_lidAngle ? m_lidAngle->formatted() : std::nullopt;
    for (const BuiltInComponents::Listed &entry : m_state->hardware()->components.listed()) {
        list.append(QVariantMap {
            { u"title"_s, entry.title },
            { u"symbol"_s, entry.symbol },
            { u"present"_s, entry.component.present },
            { u"stateText"_s, DetailPresentation::componentStateText(entry, angle) },
            { u"rows"_s, Presentation::rowsForQml(DetailPresentation::componentRows(entry, angle)) },
        });
    }
    return list;
}

// --- StorageScreen ---

StorageScreen::StorageScreen(QObject *parent) : QObject(parent)
{
}

void StorageScreen::setController(QObject *controller)
{
    if (controller == m_controller)
        return;
    if (m_state)
        disconnect(m_state, nullptr, this, nullptr);
    m_controller = controller;
    auto *window = qobject_cast<MainWindowController *>(controller);
    m_state = window ? &window->state() : nullptr;
    if (m_state)
        connect(m_state, &AppState::volumesChanged, this, &StorageScreen::volumesChanged);
    Q_EMIT controllerChanged();
    Q_EMIT volumesChanged();
}

QVariantList StorageScreen::volumes() const
{
    QVariantList list;
    if (!m_state)
        return list;
    for (const StorageVolume &volume : m_state->volumes()) {
        const DetailPresentation::VolumeUsage usage
            = DetailPresentation::volumeUsage(volume.totalBytes, volume.freeBytes);
        const auto [totalValue, totalUnit] = ByteFormat::parts(volume.totalBytes);
        list.append(QVariantMap {
            { u"name"_s, volume.name },
            { u"symbol"_s, DetailPresentation::volumeSymbol(volume.isInternal) },
            { u"badge"_s, DetailPresentation::volumeBadge(volume.isInternal) },
            { u"totalValue"_s, totalValue },
            { u"totalUnit"_s, totalUnit },
            { u"percentText"_s, QString(QString::number(usage.percent) + u" %"_s) },
            { u"tintRole"_s, DetailPresentation::tintRole(usage.tint) },
            { u"usedFraction"_s, usage.usedFraction },
            { u"usedText"_s, ByteFormat::string(usage.usedBytes) },
            { u"freeText"_s, ByteFormat::string(volume.freeBytes) },
            { u"rows"_s, Presentation::rowsForQml(DetailPresentation::volumeRows(volume)) },
        });
    }
    return list;
}

double StorageScreen::gaugeBarWidth(double trackWidth, double usedFraction) const
{
    return DetailPresentation::gaugeBarWidth(trackWidth, usedFraction);
}

// --- JournalScreen ---

JournalScreen::JournalScreen(QObject *parent) : QObject(parent), m_entries(new JournalListModel(this))
{
}

QObject *JournalScreen::history() const
{
    return m_history;
}

void JournalScreen::setHistory(QObject *history)
{
    auto *journal = qobject_cast<History *>(history);
    if (journal == m_history)
        return;
    if (m_history)
        disconnect(m_history, nullptr, this, nullptr);
    m_history = journal;
    m_entries->setHistory(journal);
    if (m_history) {
        connect(m_history, &History::countChanged, this, &JournalScreen::countChanged);
        connect(m_history, &History::readingChanged, this, &JournalScreen::readingChanged);
    }
    Q_EMIT historyChanged();
    Q_EMIT countChanged();
    Q_EMIT readingChanged();
}

int JournalScreen::count() const
{
    return m_history ? m_history->count() : 0;
}

QString JournalScreen::countText() const
{
    return DetailPresentation::journalCountText(count());
}

QAbstractItemModel *JournalScreen::entries() const
{
    return m_entries;
}

bool JournalScreen::isReading() const
{
    return m_history && m_history->isReading();
}

void JournalScreen::remove(const QString &entryId)
{
    if (m_history)
        m_history->removeById(entryId);
}

void JournalScreen::clear()
{
    if (m_history)
        m_history->clear();
}

