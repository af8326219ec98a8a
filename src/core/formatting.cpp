#include "core/formatting.h"

#include <QTimeZone>

#include <array>
#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace Format {

QString fixed(double value, int decimals)
{
    std::array<char, 400> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    if (result.ec != std::errc())
        return {};
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
}

qint64 roundedPercent(double value)
{
    return qint64(std::round(value));
}

QString shortestNumber(double value)
{
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    if (result.ec != std::errc())
        return {};
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
}

QString roundDecimalText(const QString &digits, int decimals)
{
    const qsizetype point = digits.indexOf(u'.');
    QString integerPart = point < 0 ? digits : digits.left(point);
    QString fraction = point < 0 ? QString() : digits.mid(point + 1);
    const bool roundUp = fraction.size() > decimals && fraction.at(decimals) >= u'5';
    fraction.truncate(decimals);
    QString all = integerPart + fraction;
    if (roundUp) {
        qsizetype i = all.size() - 1;
        for (; i >= 0; --i) {
            if (all[i] == u'9') {
                all[i] = u'0';
            } else {
                all[i] = QChar(all[i].unicode() + 1);
                break;
            }
        }
        if (i < 0) {
            all.prepend(u'1');
            integerPart.prepend(u'0');
        }
    }
    integerPart = all.left(integerPart.size());
    fraction = all.mid(integerPart.size());
    while (fraction.endsWith(u'0'))
        fraction.chop(1);
    return fraction.isEmpty() ? integerPart : integerPart + u'.' + fraction;
}

QString groupThousands(const QString &integerDigits)
{
    if (integerDigits.size() < 4)
        return integerDigits;
    QString grouped;
    const qsizetype size = integerDigits.size();
    for (qsizetype i = 0; i < size; ++i) {
        if (i > 0 && (size - i) % 3 == 0)
            grouped += QChar(0x202F);
        grouped += integerDigits.at(i);
    }
    return grouped;
}

QString frenchMonthName(int month)
{
    static const std::array<const char *, 12> names{"janvier", "février", "mars",      "avril",   "mai",      "juin",
                                                    "juillet", "août",    "septembre", "octobre", "novembre", "décembre"};
    return month >= 1 && month <= 12 ? QString::fromUtf8(names[size_t(month - 1)]) : QString();
}

QString frenchAbbreviatedMonthName(int month)
{
    static const std::array<const char *, 12> names{"janv.", "févr.", "mars",  "avr.", "mai",  "juin",
                                                    "juil.", "août",  "sept.", "oct.", "nov.", "déc."};
    return month >= 1 && month <= 12 ? QString::fromUtf8(names[size_t(month - 1)]) : QString();
}

static QString twoDigits(int value)
{
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

// Apple's French data joins the date and the time with " à ".
QString longDateShortTime(const QDateTime &moment)
{
    const QDateTime local = moment.toLocalTime();
    const QDate date = local.date();
    return QString::number(date.day()) + u' ' + frenchMonthName(date.month()) + u' ' + QString::number(date.year())
        + u" à "_s + twoDigits(local.time().hour()) + u':' + twoDigits(local.time().minute());
}

QString abbreviatedDateShortTime(const QDateTime &moment)
{
    const QDateTime local = moment.toLocalTime();
    const QDate date = local.date();
    return QString::number(date.day()) + u' ' + frenchAbbreviatedMonthName(date.month()) + u' '
        + QString::number(date.year()) + u" à "_s + twoDigits(local.time().hour()) + u':'
        + twoDigits(local.time().minute());
}

QString standardTime(const QDateTime &moment)
{
    const QTime time = moment.toLocalTime().time();
    return twoDigits(time.hour()) + u':' + twoDigits(time.minute()) + u':' + twoDigits(time.second());
}

QString iso8601Utc(const QDateTime &moment)
{
    return moment.toUTC().toString(u"yyyy-MM-dd'T'HH:mm:ss'Z'"_s);
}

QString utcCalendarDate(const QDateTime &moment)
{
    return moment.toUTC().date().toString(u"yyyy-MM-dd"_s);
}

} // namespace Format
