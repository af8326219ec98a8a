#pragma once

#include "diagnostics/diagnostics_report.h"
#include "live/live_values.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <optional>

// The checks of the report as the screens draw them, in report order: every check (the
// diagnostics screen's rows) or only those that are not highlighted (the overview's tiles).
// The live readings change the measurement of the checks tied to them, row by row, without
// rebuilding the list.
class CheckListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Check lists belong to the screen data.")

    // Number of checks listed.
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum class Scope { allChecks, tiles, ownership };

    enum Role {
        TitleRole = Qt::UserRole + 1,
        SummaryRole,
        SymbolRole,
        // The level's raw value ("ok"…), its label, icon and colour role.
        StatusRole,
        StatusLabelRole,
        StatusSymbolRole,
        ColourRoleRole,
        // The row's measurement: live reading, else stored measurement; empty for none.
        MeasurementRole,
        // The tile's value, its colour role, gauge (hasProgress, progress), caption and tone.
        ValueRole,
        ValueColourRole,
        HasProgressRole,
        ProgressRole,
        CaptionRole,
        ToneRole,
        // The section that shows the details, as a raw value; empty when there is none.
        SectionRole,
    };

    explicit CheckListModel(Scope scope, QObject *parent = nullptr);

    void setReport(const std::optional<DiagnosticsReport> &report);
    void setLive(const LiveValues &live);

    int count() const { return int(m_checks.size()); }
    const QList<HardwareCheck> &checks() const { return m_checks; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    bool belongs(const HardwareCheck &check) const;

    const Scope m_scope;
    QList<HardwareCheck> m_checks;
    LiveValues m_live;
};
