#include "core/byte_format.h"

#include "core/formatting.h"

#include <QtGlobal>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

struct Unit
{
    double divisor;
    int decimals;
    QString name;
};

// The shortest digits that read back as the same double, always in positional notation:
// a byte in megabytes is 0.000001, never 1e-06.
QString shortestPositional(double value)
{
    std::array<char, 400> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
}

// The decimal text of count / divisor, rounded half up on its shortest decimal form
// (1 135 000 000 bytes is 1.135 GB and reads 1,14 Go).
QString roundedAmount(quint64 count, double divisor, int decimals)
{
    return Format::roundDecimalText(shortestPositional(double(count) / divisor), decimals);
}

QString frenchNumber(const QString &decimalText)
{
    const qsizetype point = decimalText.indexOf(u'.');
    const QString integerPart = point < 0 ? decimalText : decimalText.left(point);
    const QString fraction = point < 0 ? QString() : decimalText.mid(point + 1);
    return fraction.isEmpty() ? Format::groupThousands(integerPart)
                              : Format::groupThousands(integerPart) + u',' + fraction;
}

} // namespace

namespace ByteFormat {

QString string(double byteCount)
{
    if (!std::isfinite(byteCount) || byteCount >= 9223372036854775808.0 || byteCount < -9223372036854775808.0)
        qFatal("ByteFormat: byte count out of range");
    return string(qint64(byteCount)); // truncation toward zero
}

QString string(qint64 count)
{
    const QChar noBreakSpace(0x00A0);
    if (count == 0)
        return u"Zéro"_s + noBreakSpace + u"Ko"_s;

    const quint64 magnitude = count < 0 ? 0 - quint64(count) : quint64(count);
    const QString sign = count < 0 ? u"-"_s : QString();
    const Unit units[] = {{1e6, 1, u"Mo"_s}, {1e9, 2, u"Go"_s}, {1e12, 2, u"To"_s}};
    for (const Unit &unit : units) {
        const QString amount = roundedAmount(magnitude, unit.divisor, unit.decimals);
        if (unit.name == u"To"_s || amount.toDouble() < 1000)
            return sign + frenchNumber(amount) + noBreakSpace + unit.name;
    }
    return {};
}

std::pair<QString, QString> splitAtLastSpace(const QString &text)
{
    for (qsizetype i = text.size() - 1; i >= 0; --i) {
        if (text.at(i).isSpace())
            return {text.left(i), text.mid(i + 1)};
    }
    return {text, QString()};
}

std::pair<QString, QString> parts(double byteCount)
{
    return splitAtLastSpace(string(byteCount));
}

} // namespace ByteFormat
