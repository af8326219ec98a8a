#include "ui/screen_data.h"

#include "core/app_state.h"
#include "core/byte_format.h"
#include "ui/presentation.h"

using namespace Qt::StringLiterals;

ScreenData::ScreenData(const AppState &state, QObject *parent) : QObject(parent), m_state(state)
{
    for (auto signal :
        { &AppState::hardwareChanged, &AppState::batteryChanged, &AppState::volumesChanged, &AppState::reportChanged })
        connect(&m_state, signal, this, &ScreenData::changed);
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
