#pragma once

#include "bench_table.h"
#include "sources/platform.h"

#include <QString>
#include <QStringList>

// The eleven data types the collectors ask the system profiler for.
QStringList profilerDataTypes();

// 1. The full load of the application state and the text report, in process, with the
// profiler's answers already in memory; then the cost of each data type's parsing and of
// each section's collector, of the rules and of the report text.
void benchCore(BenchTable &table, const Platform &platform, int runs);

// 2. The same full load with each answer held back for the tool's run time on a real Mac:
// the load's wall time over the slowest single delay.
void benchConcurrency(BenchTable &table, const Platform &platform, int runs);

// Where the delays of benchConcurrency come from, one line per data type.
QStringList concurrencyDelaySources();
