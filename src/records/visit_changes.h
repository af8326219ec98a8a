#pragma once

#include "records/history_entry.h"

#include <QList>
#include <QString>

#include <optional>

#include "diagnostics/diagnostics_report.h"

// What changed on a Mac between two visits to the workshop, from their journal entries.
namespace VisitChanges {

// The word a journal entry keeps for a verdict's level ("ok", "attention"…).
QString levelWord(CheckStatus status);

// The latest visit of the same machine before `current`: the same serial number, at least
// an hour earlier (a check within the hour is the same visit). A Mac without a serial number
// is never matched. `journal` is newest first.
std::optional<HistoryEntry> previousVisit(const QList<HistoryEntry> &journal, const HistoryEntry &current);

// "Depuis le 9 novembre 2026 : +120 cycles, santé −4 points, usure du SSD +2 points,
// +1,2 To écrits, 20 Go libres de moins ; Batterie : Correct → À surveiller.", or
// "Depuis le 9 novembre 2026 : rien n’a changé."
QString since(const HistoryEntry &previous, const HistoryEntry &current);

} // namespace VisitChanges
