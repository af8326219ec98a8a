#pragma once

#include "core/app_section.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

// The thirteen sections of the sidebar, in their fixed order: raw value, title and symbol.
class SectionListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The sidebar's sections are fixed.")

    // Number of sections.
    Q_PROPERTY(int count READ count CONSTANT)

public:
    enum Role { SectionRole = Qt::UserRole + 1, TitleRole, SymbolRole };
    Q_ENUM(Role)

    explicit SectionListModel(QObject *parent = nullptr);

    int count() const { return int(m_sections.size()); }
    // The row of a section given by its raw value, or -1.
    Q_INVOKABLE int indexOf(const QString &section) const;
    // The raw value of the section at a row, or an empty text.
    Q_INVOKABLE QString sectionAt(int row) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    QList<AppSection> m_sections;
};
