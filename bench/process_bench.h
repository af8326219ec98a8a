#pragma once

#include "bench_table.h"

#include <QString>

// 3. quillon-bilan --capture DIR as a whole process: wall time and peak memory.
void benchBilan(BenchTable &table, const QString &bilanProgram, const QString &captureDir, int runs);

// 4. The application off screen: time to the first frame showing the verdicts, processor
// time while the overview stays open (its three monitors running) and while another section
// is shown, peak resident memory. `windowSecs` is the measured time on each screen.
void benchApplication(BenchTable &table, const QString &probeProgram, int runs, int windowSecs);
