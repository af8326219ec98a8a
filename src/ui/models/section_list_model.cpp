#include "ui/models/section_list_model.h"

SectionListModel::SectionListModel(QObject *parent) : QAbstractListModel(parent), m_sections(AppSections::allCases())
{
}

int SectionListModel::indexOf(const QString &section) const
{
    const std::optional<AppSection> parsed = AppSections::fromRawValue(section);
    return parsed ? int(m_sections.indexOf(*parsed)) : -1;
}

QString SectionListModel::sectionAt(int row) const
{
    return row >= 0 && row < count() ? AppSections::rawValue(m_sections.at(row)) : QString();
}

int SectionListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant SectionListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const AppSection section = m_sections.at(index.row());
    switch (role) {
    case SectionRole:
        return AppSections::rawValue(section);
    case TitleRole:
    case Qt::DisplayRole:
        return AppSections::title(section);
    case SymbolRole:
        return AppSections::symbol(section);
    default:
        return {};
    }
}

QHash<int, QByteArray> SectionListModel::roleNames() const
{
    return { { SectionRole, "section" }, { TitleRole, "title" }, { SymbolRole, "symbol" } };
}
