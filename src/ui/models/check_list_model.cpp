#include "ui/models/check_list_model.h"

#include "ui/presentation/verdict_presentation.h"

using namespace Qt::StringLiterals;

CheckListModel::CheckListModel(Scope scope, QObject *parent) : QAbstractListModel(parent), m_scope(scope)
{
}

// Highlighted checks are shown by the overview's cards, and who controls the Mac by the
// hardware screen's own card, not by tiles.
bool CheckListModel::belongs(const HardwareCheck &check) const
{
    switch (m_scope) {
    case Scope::allChecks:
        return true;
    case Scope::tiles:
        return !check.isHighlighted && check.group == CheckGroup::components;
    case Scope::ownership:
        return check.group == CheckGroup::ownership;
    }
    return false;
}

void CheckListModel::setReport(const std::optional<DiagnosticsReport> &report)
{
    const int before = count();
    beginResetModel();
    m_checks.clear();
    if (report) {
        for (const HardwareCheck &check : report->checks) {
            if (belongs(check))
                m_checks.append(check);
        }
    }
    endResetModel();
    if (count() != before)
        Q_EMIT countChanged();
}

void CheckListModel::setLive(const LiveValues &live)
{
    if (live == m_live)
        return;
    const LiveValues previous = m_live;
    m_live = live;
    for (int row = 0; row < count(); ++row) {
        const HardwareCheck &check = m_checks.at(row);
        if (Presentation::liveMeasurement(check, previous) != Presentation::liveMeasurement(check, live)
            || Presentation::liveProgress(check, previous) != Presentation::liveProgress(check, live))
            Q_EMIT dataChanged(index(row), index(row));
    }
}

int CheckListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant CheckListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const HardwareCheck &check = m_checks.at(index.row());
    const auto tile = [&] {
        return Presentation::tileFace(
            check, Presentation::liveMeasurement(check, m_live), Presentation::liveProgress(check, m_live));
    };
    switch (role) {
    case TitleRole:
        return check.title;
    case SummaryRole:
        return check.summary;
    case SymbolRole:
        return check.symbol;
    case StatusRole:
        return Presentation::checkStatusRawValue(check.status);
    case StatusLabelRole:
        return CheckStatuses::label(check.status);
    case StatusSymbolRole:
        return CheckStatuses::symbol(check.status);
    case ColourRoleRole:
        return Presentation::levelColourRole(check.status);
    case MeasurementRole:
        return Presentation::rowMeasurement(check, m_live).value_or(QString());
    case ValueRole:
        return tile().value;
    case ValueColourRole:
        return tile().valueColourRole;
    case HasProgressRole:
        return tile().progress.has_value();
    case ProgressRole:
        return tile().progress.value_or(0);
    case CaptionRole:
        return tile().caption.value_or(QString());
    case ToneRole:
        return tile().tone;
    case SectionRole:
        return check.section ? AppSections::rawValue(*check.section) : QString();
    default:
        return {};
    }
}

QHash<int, QByteArray> CheckListModel::roleNames() const
{
    return {
        { TitleRole, "title" },
        { SummaryRole, "summary" },
        { SymbolRole, "symbol" },
        { StatusRole, "status" },
        { StatusLabelRole, "statusLabel" },
        { StatusSymbolRole, "statusSymbol" },
        { ColourRoleRole, "colourRole" },
        { MeasurementRole, "measurement" },
        { ValueRole, "value" },
        { ValueColourRole, "valueColourRole" },
        { HasProgressRole, "hasProgress" },
        { ProgressRole, "progress" },
        { CaptionRole, "caption" },
        { ToneRole, "tone" },
        { SectionRole, "section" },
    };
}
