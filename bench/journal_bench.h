#pragma once

#include "bench_table.h"
#include "sources/platform.h"

// 5. The journal at its full size of 500 entries: a record with its save, the reading of the
// file at start, the spreadsheet text.
void benchJournal(BenchTable &table, const Platform &platform, int runs);

// A journal folder whose database holds `count` checks of the loaded machine, two hours
// apart, newest first, taken over from a former journal file as the application does once.
void writeJournal(const QString &directory, const Platform &platform, int count);
