#pragma once

#include "cli/bilan_options.h"
#include "sources/platform.h"

#include <QTextStream>

// Runs quillon-bilan with parsed options; returns the exit status. Errors are one French
// line on `errors`; the report or the journal goes to `output` unless a file is named.
int runBilan(const BilanOptions &options, QTextStream &output, QTextStream &errors);

// The same on a platform already opened. While it runs, SIGINT or SIGTERM ends the profiler
// runs in flight and the program with one French line and the status 128 + the signal.
int runBilan(const BilanOptions &options, const Platform &platform, QTextStream &output, QTextStream &errors);
