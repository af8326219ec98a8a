#pragma once

#include "live/live_values.h"
#include "ui/models/check_list_model.h"
#include "ui/presentation/battery_figures.h"

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

    // The overview's header: the machine icon, the title (model name, or the analysis in
    // progress), the model year ("" when unknown) and the two lines under the title ("" while
    // the machine is not known).
    Q_PROPERTY(QString machineSymbol READ machineSymbol NOTIFY changed)
    Q_PROPERTY(QString overviewTitle READ overviewTitle NOTIFY changed)
    Q_PROPERTY(QString modelYear READ modelYear NOTIFY changed)
    Q_PROPERTY(QString machineConfigurationLine READ machineConfigurationLine NOTIFY changed)
    Q_PROPERTY(QString machineModelLine READ machineModelLine NOTIFY changed)
    // The configuration card's figures: a list of {label, value, tint} maps, tint a colour role.
    Q_PROPERTY(QVariantList configurationFigures READ configurationFigures NOTIFY changed)
    // The battery card and screen, with the live reading.
    Q_PROPERTY(BatteryFigures *batteryFigures READ batteryFigures CONSTANT)

    // The report's worst level as a raw value ("ok"…), its colour role and icon.
    Q_PROPERTY(QString worstStatus READ worstStatus NOTIFY changed)
    Q_PROPERTY(QString worstColourRole READ worstColourRole NOTIFY changed)
    Q_PROPERTY(QString worstSymbol READ worstSymbol NOTIFY changed)
    // The overview banner's line: the checks that call for action, or the all-normal sentence.
    Q_PROPERTY(QString detailLine READ detailLine NOTIFY changed)
    // The line over the tiles: the applicable checks and those without object.
    Q_PROPERTY(QString coverageLine READ coverageLine NOTIFY changed)
    // The diagnostics banner's line: the applicable checks and the time of the report.
    Q_PROPERTY(QString reportLine READ reportLine NOTIFY changed)
    // The diagnostics banner's tallies: a list of {count, label, colourRole} maps.
    Q_PROPERTY(QVariantList tallies READ tallies NOTIFY changed)
    // Every check (the diagnostics rows) and the checks drawn as tiles on the overview.
    Q_PROPERTY(CheckListModel *checks READ checks CONSTANT)
    Q_PROPERTY(CheckListModel *tiles READ tiles CONSTANT)
    // Who else may control the Mac, on the hardware screen.
    Q_PROPERTY(CheckListModel *ownershipChecks READ ownershipChecks CONSTANT)
    // "Analyse de … · ⌘R pour relancer"; empty before the first analysis.
    Q_PROPERTY(QString footerLine READ footerLine NOTIFY changed)

public:
    // The banner's level: the worst verdict, but never the all-clear when reads failed.
    static CheckStatus bannerLevel(const DiagnosticsReport &report);
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

    QString machineSymbol() const;
    QString overviewTitle() const;
    QString modelYear() const;
    QString machineConfigurationLine() const;
    QString machineModelLine() const;
    QVariantList configurationFigures() const;
    BatteryFigures *batteryFigures() const { return m_batteryFigures; }
    QString worstStatus() const;
    QString worstColourRole() const;
    QString worstSymbol() const;
    QString detailLine() const;
    QString coverageLine() const;
    QString reportLine() const;
    QVariantList tallies() const;
    CheckListModel *checks() const { return m_checks; }
    CheckListModel *tiles() const { return m_tiles; }
    CheckListModel *ownershipChecks() const { return m_ownership; }
    QString footerLine() const;

    // The live readings shown on the checks tied to them.
    void setLive(const LiveValues &live);

Q_SIGNALS:
    void changed();

private:
    void updateChecks();

    const AppState &m_state;
    BatteryFigures *m_batteryFigures = nullptr;
    CheckListModel *m_checks = nullptr;
    CheckListModel *m_tiles = nullptr;
    CheckListModel *m_ownership = nullptr;
};
