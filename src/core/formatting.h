#pragma once

#include <QDateTime>
#include <QString>

// Numbers and dates written the way macOS writes them in French. Every choice that had
// to be decided lives here, so that it changes in one place.
namespace Format {

// A printf-style "%.Nf": decimal point, exact binary value rounded with ties to even.
QString fixed(double value, int decimals);

// Rounding to the nearest integer, halves away from zero.
qint64 roundedPercent(double value);

// The shortest decimal text that reads back as the same double ("12.5", "1e+21", "12").
QString shortestNumber(double value);

// Rounds a decimal text (digits, optional point) half up to `decimals` digits; the
// result has no trailing zeros and no trailing point.
QString roundDecimalText(const QString &digits, int decimals);

// Groups the integer digits by three with a narrow no-break space from four digits up.
QString groupThousands(const QString &integerDigits);

QString frenchMonthName(int month);
QString frenchAbbreviatedMonthName(int month);

// "16 novembre 2026 à 09:05" (local time).
QString longDateShortTime(const QDateTime &moment);
// "16 nov. 2026 à 09:05" (local time), the hour in two digits as a French Mac writes it.
QString abbreviatedDateShortTime(const QDateTime &moment);
// "09:05:07" (local time).
QString standardTime(const QDateTime &moment);
// "2026-11-16T08:05:07Z".
QString iso8601Utc(const QDateTime &moment);
// "2026-11-16": the calendar date in UTC.
QString utcCalendarDate(const QDateTime &moment);

} // namespace Format
