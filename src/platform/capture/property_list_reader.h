#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>

// Reads an Apple property list (XML or binary) into property values with their kinds kept
// apart (see sources/property_values.h). Any malformed input gives an error text instead.
namespace PropertyListReader {

struct Outcome
{
    QVariant root;
    QString error; // empty on success
};

Outcome read(const QByteArray &bytes);

// Nesting deeper than this is refused rather than followed.
constexpr int maximumDepth = 128;

} // namespace PropertyListReader
