#pragma once

#include "sources/platform.h"

// Runs the short system commands (profiles, fdesetup, csrutil, nvram) the way the profiler
// tool is run: directly, time-limited, ended when the application quits.
class MacCommands final : public CommandSource
{
public:
    ProcessOutput run(const SystemCommand &command) const override;
};
