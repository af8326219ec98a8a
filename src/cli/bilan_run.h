#pragma once

#include "cli/bilan_options.h"

#include <QTextStream>

// Runs quillon-bilan with parsed options; returns the exit status. Errors are one French
// line on `errors`; the report or the journal goes to `output` unless a file is named.
int runBilan(const BilanOptions &options, QTextStream &output, QTextStream &errors);
