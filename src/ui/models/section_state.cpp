#include "ui/models/section_state.h"

#include "state/app_state.h"

SectionState::SectionState(AppSection section, const AppState &state, QObject *parent)
    : QObject(parent), m_section(section), m_state(state)
{
    if (isDeviceSection()) {
        m_devices = new DeviceListModel(this);
        m_devices->setRoots(m_state.inventory().value(m_section));
    }
    for (auto signal :
        { &AppState::hardwareChanged, &AppState::batteryChanged, &AppState::volumesChanged, &AppState::inventoryChanged,
            &AppState::reportChanged, &AppState::loadingChanged, &AppState::failuresChanged })
        connect(&m_state, signal, this, &SectionState::update);
}

bool SectionState::isLoading() const
{
    return m_state.isLoading(m_section);
}

std::optional<QString> SectionState::failure() const
{
    return m_state.failure(m_section);
}

bool SectionState::isEmpty() const
{
    return sectionIsEmpty(m_section, m_state);
}

bool SectionState::showsNoBatteryMessage() const
{
    return m_section == AppSection::battery && !m_state.battery() && !isLoading() && !failure();
}

void SectionState::update()
{
    if (m_devices)
        m_devices->setRoots(m_state.inventory().value(m_section));
    Q_EMIT changed();
}

bool sectionIsEmpty(AppSection section, const AppState &state)
{
    switch (section) {
    case AppSection::overview:
    case AppSection::hardware:
        return !state.hardware();
    case AppSection::diagnostics:
        return !state.report();
    case AppSection::battery:
        return !state.battery();
    case AppSection::storage:
        return state.volumes().isEmpty();
    case AppSection::history:
        return false;
    default:
        return state.inventory().value(section).isEmpty();
    }
}
