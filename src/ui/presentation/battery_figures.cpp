#include "ui/presentation/battery_figures.h"

#include "state/app_state.h"
#include "ui/presentation/battery_presentation.h"
#include "ui/presentation/presentation.h"

using namespace Qt::StringLiterals;

BatteryFigures::BatteryFigures(const AppState &state, QObject *parent) : QObject(parent), m_state(state)
{
    connect(&m_state, &AppState::batteryChanged, this, &BatteryFigures::changed);
}

void BatteryFigures::setSnapshot(const std::optional<BatterySnapshot> &snapshot)
{
    // The monitor publishes every reading, changed or not.
    if (snapshot == m_snapshot)
        return;
    m_snapshot = snapshot;
    Q_EMIT changed();
}

QString BatteryFigures::symbol() const
{
    return m_state.battery() ? Presentation::batterySymbol(*m_state.battery(), m_snapshot) : QString();
}

QString BatteryFigures::remainingTime() const
{
    return m_state.battery() ? Presentation::remainingTime(*m_state.battery(), m_snapshot).value_or(QString())
                             : QString();
}

QString BatteryFigures::healthText() const
{
    return m_state.battery() ? Presentation::healthText(*m_state.battery()) : QString();
}

bool BatteryFigures::hasHealth() const
{
    return m_state.battery() && m_state.battery()->healthPercent;
}

double BatteryFigures::healthFraction() const
{
    return m_state.battery() ? Presentation::healthFraction(*m_state.battery()) : 0;
}

QString BatteryFigures::cardHealthColourRole() const
{
    return Presentation::healthColourRole(
        m_state.battery() ? m_state.battery()->healthPercent : std::nullopt, u"primary"_s);
}

QString BatteryFigures::screenHealthColourRole() const
{
    return Presentation::healthColourRole(
        m_state.battery() ? m_state.battery()->healthPercent : std::nullopt, u"accent"_s);
}

QString BatteryFigures::conditionText() const
{
    return m_state.battery() ? Presentation::conditionText(*m_state.battery()) : QString();
}

QString BatteryFigures::cycleCountText() const
{
    return m_state.battery() ? Presentation::cycleCountText(*m_state.battery()) : QString();
}

QString BatteryFigures::chargeText() const
{
    return m_state.battery() ? Presentation::chargeText(*m_state.battery(), m_snapshot) : QString();
}

QString BatteryFigures::powerStateText() const
{
    return m_state.battery() ? Presentation::powerStateText(m_snapshot) : QString();
}

QString BatteryFigures::powerColourRole() const
{
    return m_state.battery() ? Presentation::powerColourRole(*m_state.battery(), m_snapshot) : u"primary"_s;
}

QString BatteryFigures::subtitle() const
{
    return m_state.battery() ? Presentation::batterySubtitle(*m_state.battery(), m_snapshot) : QString();
}

bool BatteryFigures::showsReplacementWarning() const
{
    return m_state.battery() && Presentation::showsReplacementWarning(*m_state.battery());
}

QVariantList BatteryFigures::rows() const
{
    return m_state.battery() ? Presentation::rowsForQml(Presentation::liveBatteryRows(*m_state.battery(), m_snapshot))
                             : QVariantList();
}
