#include "core/info_row.h"

#include <QHashFunctions>

size_t qHash(const InfoRow &row, size_t seed)
{
    return qHashMulti(seed, row.id, row.label, row.value, row.key ? int(*row.key) : -1);
}

void appendRow(QList<InfoRow> &rows, const QString &label, const std::optional<QString> &value)
{
    if (value && !value->isEmpty())
        rows.append(InfoRow(label, *value));
}
