#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

class AppState;

// The records of the application state as the section screens read them: label/value
// rows, presence flags and a few texts, published again whenever the state changes.
class ScreenData : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screen data belongs to the main window.")

    // Presence of the records.
    Q_PROPERTY(bool hasHardware READ hasHardware NOTIFY changed)
    Q_PROPERTY(bool hasBattery READ hasBattery NOTIFY changed)
    Q_PROPERTY(bool hasReport READ hasReport NOTIFY changed)
    // The machine's model name; empty before the hardware is known.
    Q_PROPERTY(QString modelName READ modelName NOTIFY changed)
    // The machine sheet, in display order.
    Q_PROPERTY(QVariantList hardwareRows READ hardwareRows NOTIFY changed)
    // The battery lines.
    Q_PROPERTY(QVariantList batteryRows READ batteryRows NOTIFY changed)
    // One line per volume: its name and its capacity.
    Q_PROPERTY(QVariantList storageRows READ storageRows NOTIFY changed)
    // One line per check, in report order: its title, and its level with its measurement.
    Q_PROPERTY(QVariantList checkRows READ checkRows NOTIFY changed)
    // The report's headline; empty without a report.
    Q_PROPERTY(QString headline READ headline NOTIFY changed)

public:
    explicit ScreenData(const AppState &state, QObject *parent = nullptr);

    bool hasHardware() const;
    bool hasBattery() const;
    bool hasReport() const;
    QString modelName() const;
    QVariantList hardwareRows() const;
    QVariantList batteryRows() const;
    QVariantList storageRows() const;
    QVariantList checkRows() const;
    QString headline() const;

Q_SIGNALS:
    void changed();

private:
    const AppState &m_state;
};
