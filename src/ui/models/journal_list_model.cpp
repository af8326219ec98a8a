#include "ui/models/journal_list_model.h"

#include "core/texts.h"
#include "records/history.h"
#include "ui/presentation/detail_presentation.h"
#include "ui/presentation/presentation.h"

JournalListModel::JournalListModel(QObject *parent) : QIdentityProxyModel(parent)
{
}

void JournalListModel::setHistory(History *history)
{
    m_history = history;
    setSourceModel(history);
}

QVariant JournalListModel::data(const QModelIndex &index, int role) const
{
    if (role < RowsRole || !m_history || !index.isValid())
        return QIdentityProxyModel::data(index, role);
    const HistoryEntry &entry = m_history->selected().at(mapToSource(index).row());
    switch (role) {
    case RowsRole: {
        QList<InfoRow> rows = DetailPresentation::journalEntryRows(entry);
        if (const std::optional<QString> changes = m_history->changesSincePreviousVisit(entry))
            rows.append(InfoRow(localized("Évolution"), *changes));
        return Presentation::rowsForQml(rows);
    }
    case SymbolRole:
        return DetailPresentation::journalEntrySymbol(entry.warningCount, entry.faultCount, entry.failedReadCount);
    case HeadlineColourRole:
        return DetailPresentation::journalHeadlineRole(entry.warningCount, entry.faultCount, entry.failedReadCount);
    default:
        return {};
    }
}

QHash<int, QByteArray> JournalListModel::roleNames() const
{
    QHash<int, QByteArray> names = QIdentityProxyModel::roleNames();
    names.insert(RowsRole, "rows");
    names.insert(SymbolRole, "symbol");
    names.insert(HeadlineColourRole, "headlineColour");
    return names;
}
