#pragma once

#include <QString>

#include <utility>

// Byte counts as macOS writes file sizes in French: decimal multiples, one unit among
// Mo, Go and To, a decimal comma.
namespace ByteFormat {

QString string(double byteCount);
// The same for a whole count, taken exactly: the largest counts do not survive a double
// (the signed 64-bit maximum becomes 2^63, outside the range).
QString string(qint64 byteCount);

// The same text split at its last whitespace character, for layouts that show the
// number and the unit in different sizes: (value, unit).
std::pair<QString, QString> parts(double byteCount);
std::pair<QString, QString> splitAtLastSpace(const QString &text);

} // namespace ByteFormat
