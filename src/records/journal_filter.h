#pragma once

#include "records/history_entry.h"

#include <QDate>
#include <QString>

#include <optional>

// What the journal screen and quillon-bilan --journal-csv select: the entries whose serial
// number, model name or identifier holds `text` (case and accents as typed), at a verdict
// level, between two dates (local, both included). An empty filter selects everything.
struct JournalFilter
{
    // The levels of an entry, from its counts: an anomaly, else a point to watch, else correct.
    enum class Level { any, correct, attention, anomaly };

    QString text;
    Level level = Level::any;
    std::optional<QDate> from;
    std::optional<QDate> to;

    bool isEmpty() const { return text.trimmed().isEmpty() && level == Level::any && !from && !to; }
    bool matches(const HistoryEntry &entry) const;

    // "anomalie", "attention", "correct" or "tout" (any); nothing for another word.
    static std::optional<Level> levelFromWord(const QString &word);

    friend bool operator==(const JournalFilter &, const JournalFilter &) = default;
};
