#include "records/journal_filter.h"

using namespace Qt::StringLiterals;

namespace {

JournalFilter::Level levelOf(const HistoryEntry &entry)
{
    if (entry.faultCount > 0)
        return JournalFilter::Level::anomaly;
    if (entry.warningCount > 0)
        return JournalFilter::Level::attention;
    return JournalFilter::Level::correct;
}

} // namespace

bool JournalFilter::matches(const HistoryEntry &entry) const
{
    if (level != Level::any && levelOf(entry) != level)
        return false;
    const QDate day = entry.date.toLocalTime().date();
    if ((from && day < *from) || (to && day > *to))
        return false;
    const QString wanted = text.trimmed();
    if (wanted.isEmpty())
        return true;
    return entry.serialNumber.value_or(QString()).contains(wanted, Qt::CaseInsensitive)
        || entry.modelName.contains(wanted, Qt::CaseInsensitive)
        || entry.modelIdentifier.contains(wanted, Qt::CaseInsensitive);
}

std::optional<JournalFilter::Level> JournalFilter::levelFromWord(const QString &word)
{
    if (word == u"anomalie"_s)
        return Level::anomaly;
    if (word == u"attention"_s)
        return Level::attention;
    if (word == u"correct"_s)
        return Level::correct;
    if (word == u"tout"_s || word.isEmpty())
        return Level::any;
    return std::nullopt;
}
