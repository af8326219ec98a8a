#pragma once

#include "platform/macos/apple_handles.h"
#include "sources/sensor_sources.h"

// The live sensors of the Mac the application runs on. Each factory gives a fresh reader,
// or null when this Mac cannot provide that sensor.

// The HID event system's temperature services, reached through functions looked up by name
// in the I/O Kit library.
TemperatureEventSourceFactory macTemperatureEvents();
// The HID sensor device that reports the screen hinge angle, opened through the HID manager.
LidAngleReportSourceFactory macLidAngleReports();
// The kernel's per-processor tick counters.
ProcessorTickSourceFactory macProcessorTicks();

// The HID matching dictionary {"PrimaryUsagePage": usagePage, "PrimaryUsage": usage}, or null
// when it cannot be made.
CFHolder<CFDictionaryRef> hidUsageMatching(int usagePage, int usage);
