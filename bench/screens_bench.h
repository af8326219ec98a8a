#pragma once

#include "bench_table.h"
#include "sources/platform.h"

#include <QString>

// 6. The screens with long lists, each measured in a fresh application off screen: the
// journal screen with 500 and 10 000 entries, the USB section with 100 and 1 000 devices, a
// refresh of an unchanged section of 1 000 devices, the first frame over a 10 000-entry
// journal; peak resident memory of each run.
void benchScreens(BenchTable &table, const QString &probeProgram, const Platform &platform, int runs);
