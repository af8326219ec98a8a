#include "records/visit_changes.h"

#include "core/byte_format.h"
#include "core/formatting.h"
#include "core/texts.h"
#include "diagnostics/diagnostics_report.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 sameVisitMSecs = 3600 * 1000;

// "+120", "−4" (with the minus sign), "0".
QString signedNumber(qint64 value)
{
    return value > 0 ? u"+"_s + QString::number(value) : value < 0 ? u"\u2212"_s + QString::number(-value) : u"0"_s;
}

template <typename T> std::optional<T> difference(const std::optional<T> &before, const std::optional<T> &after)
{
    if (!before || !after || *before == *after)
        return std::nullopt;
    return *after - *before;
}

QString levelLabel(const QString &word)
{
    for (const CheckStatus status : CheckStatuses::allCases()) {
        if (VisitChanges::levelWord(status) == word)
            return CheckStatuses::label(status);
    }
    return word;
}

// "Batterie : Correct → À surveiller" for each verdict both visits judged differently.
QStringList changedLevels(const QString &before, const QString &after)
{
    const QJsonObject old = QJsonDocument::fromJson(before.toUtf8()).object();
    const QJsonObject now = QJsonDocument::fromJson(after.toUtf8()).object();
    QStringList changed;
    for (auto it = now.constBegin(); it != now.constEnd(); ++it) {
        const QString was = old.value(it.key()).toString();
        if (!was.isEmpty() && was != it.value().toString())
            changed.append(u"%1 : %2 → %3"_s.arg(it.key(), levelLabel(was), levelLabel(it.value().toString())));
    }
    return changed;
}

QString dayText(const QDateTime &moment)
{
    const QDate day = moment.toLocalTime().date();
    return u"%1 %2 %3"_s.arg(day.day()).arg(Format::frenchMonthName(day.month())).arg(day.year());
}

} // namespace

namespace VisitChanges {

QString levelWord(CheckStatus status)
{
    static const char *const words[] = {"ok", "attention", "alerte", "info", "nonApplicable"};
    return QString::fromLatin1(words[int(status)]);
}

std::optional<HistoryEntry> previousVisit(const QList<HistoryEntry> &journal, const HistoryEntry &current)
{
    if (!current.serialNumber || current.serialNumber->isEmpty())
        return std::nullopt;
    for (const HistoryEntry &entry : journal) {
        if (entry.id != current.id && entry.serialNumber == current.serialNumber
            && entry.date.msecsTo(current.date) >= sameVisitMSecs)
            return entry;
    }
    return std::nullopt;
}

QString since(const HistoryEntry &previous, const HistoryEntry &current)
{
    QStringList figures;
    if (const auto cycles = difference(previous.batteryCycles, current.batteryCycles))
        figures << localized("%1 cycles").arg(signedNumber(*cycles));
    if (const auto health = difference(previous.batteryHealth, current.batteryHealth))
        figures << localized("santé %1 points").arg(signedNumber(*health));
    if (const auto wear = difference(previous.ssdWearPercent, current.ssdWearPercent))
        figures << localized("usure du SSD %1 points").arg(signedNumber(*wear));
    if (const auto written = difference(previous.ssdWrittenBytes, current.ssdWrittenBytes); written && *written > 0)
        figures << localized("+%1 écrits").arg(ByteFormat::string(*written));
    if (const auto free = difference(previous.freeBytes, current.freeBytes)) {
        figures << (*free > 0 ? localized("%1 libres de plus") : localized("%1 libres de moins"))
                       .arg(ByteFormat::string(std::abs(*free)));
    }
    QString changes = figures.join(u", "_s);
    const QStringList levels = changedLevels(previous.levels, current.levels);
    if (!levels.isEmpty())
        changes += (changes.isEmpty() ? QString() : u" ; "_s) + levels.join(u" ; "_s);
    if (changes.isEmpty())
        changes = localized("rien n’a changé");
    return localized("Depuis le %1 : %2.").arg(dayText(previous.date), changes);
}

} // namespace VisitChanges
