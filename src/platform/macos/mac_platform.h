#pragma once

#include "sources/platform.h"

// The platform of the Mac the application runs on: the system profiler tool, kernel
// values, the I/O registry, the power-source list, the process information and the clock.
// The system profiler runs it starts are ended when the application quits (see
// MacProfilerSource::terminateAll).
Platform makeMacPlatform();
