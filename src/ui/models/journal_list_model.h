#pragma once

#include <QIdentityProxyModel>
#include <QtQml/qqmlregistration.h>

class History;

// The journal's entries as the journal screen's list draws them: the journal's own roles,
// plus each entry's rows, icon and headline colour, read from its row, never searched for.
class JournalListModel : public QIdentityProxyModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role { RowsRole = Qt::UserRole + 100, SymbolRole, HeadlineColourRole };

    explicit JournalListModel(QObject *parent = nullptr);

    void setHistory(History *history);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    History *m_history = nullptr;
};
