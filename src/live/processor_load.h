#pragma once

#include "sources/sensor_sources.h"

#include <QList>

// Per-processor load from the kernel's cumulative tick counters: one reading alone says
// nothing, two successive readings give each processor's busy share in between.
namespace ProcessorLoad {

// One logical processor's ticks since boot.
struct Ticks
{
    quint64 busy = 0; // user + system + nice
    quint64 idle = 0;

    friend bool operator==(const Ticks &, const Ticks &) = default;
};

// The current ticks of every processor, in kernel order; empty when there is no source or
// the kernel call failed.
QList<Ticks> sample(ProcessorTickSource *source);

// The busy share of each processor between two readings, from 0 to 1, over the shorter of
// the two lists. A processor whose counters did not move reads 0.
QList<double> usage(const QList<Ticks> &from, const QList<Ticks> &to);

} // namespace ProcessorLoad
