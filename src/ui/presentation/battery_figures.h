#pragma once

#include "core/battery_info.h"

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <optional>

class AppState;

// The battery record joined with the battery monitor's latest reading, as the overview's
// battery card and the battery screen show it. Published again when either changes, so
// the live figures move with the monitor. Every text is empty without a battery.
class BatteryFigures : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Battery figures belong to the screen data.")

    // The battery symbol ("battery.75", "battery.100.bolt"…).
    Q_PROPERTY(QString symbol READ symbol NOTIFY changed)
    // The remaining time; empty when none is known.
    Q_PROPERTY(QString remainingTime READ remainingTime NOTIFY changed)
    // The maximum capacity without its sign ("87", "—"), whether it is known, and as a fraction.
    Q_PROPERTY(QString healthText READ healthText NOTIFY changed)
    Q_PROPERTY(bool hasHealth READ hasHealth NOTIFY changed)
    Q_PROPERTY(double healthFraction READ healthFraction NOTIFY changed)
    // The capacity's colour role on the overview card (primary when unknown) and on the
    // battery screen (accent when unknown).
    Q_PROPERTY(QString cardHealthColourRole READ cardHealthColourRole NOTIFY changed)
    Q_PROPERTY(QString screenHealthColourRole READ screenHealthColourRole NOTIFY changed)
    // The condition word, "—" when unknown.
    Q_PROPERTY(QString conditionText READ conditionText NOTIFY changed)
    // The card's three figures and the colour role of the power state.
    Q_PROPERTY(QString cycleCountText READ cycleCountText NOTIFY changed)
    Q_PROPERTY(QString chargeText READ chargeText NOTIFY changed)
    Q_PROPERTY(QString powerStateText READ powerStateText NOTIFY changed)
    Q_PROPERTY(QString powerColourRole READ powerColourRole NOTIFY changed)
    // The battery screen's line under the capacity, and whether it warns of wear.
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY changed)
    Q_PROPERTY(bool showsReplacementWarning READ showsReplacementWarning NOTIFY changed)
    // The battery lines with the live charge level and power state.
    Q_PROPERTY(QVariantList rows READ rows NOTIFY changed)

public:
    explicit BatteryFigures(const AppState &state, QObject *parent = nullptr);

    // The battery monitor's latest reading.
    void setSnapshot(const std::optional<BatterySnapshot> &snapshot);

    QString symbol() const;
    QString remainingTime() const;
    QString healthText() const;
    bool hasHealth() const;
    double healthFraction() const;
    QString cardHealthColourRole() const;
    QString screenHealthColourRole() const;
    QString conditionText() const;
    QString cycleCountText() const;
    QString chargeText() const;
    QString powerStateText() const;
    QString powerColourRole() const;
    QString subtitle() const;
    bool showsReplacementWarning() const;
    QVariantList rows() const;

Q_SIGNALS:
    void changed();

private:
    const AppState &m_state;
    std::optional<BatterySnapshot> m_snapshot;
};
