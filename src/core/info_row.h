#pragma once

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// Rows that other screens look up by role.
enum class InfoRowKey { chargeLevel, powerState, nativeResolution };

// One label/value line of a two-column list. Every row gets a fresh identifier, so two
// rows built from the same data never compare equal.
struct InfoRow
{
    QUuid id = QUuid::createUuid();
    QString label;
    QString value;
    std::optional<InfoRowKey> key;

    InfoRow() = default;
    InfoRow(QString label, QString value, std::optional<InfoRowKey> key = std::nullopt)
        : label(std::move(label)), value(std::move(value)), key(key)
    {
    }

    friend bool operator==(const InfoRow &, const InfoRow &) = default;
};

size_t qHash(const InfoRow &row, size_t seed = 0);

// Appends a candidate row unless its value is absent or empty: rows are prepared from a
// fixed ordered list of candidates, and the ones without a value are dropped.
void appendRow(QList<InfoRow> &rows, const QString &label, const std::optional<QString> &value);
