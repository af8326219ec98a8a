#include "live/processor_load.h"

#include <algorithm>

namespace ProcessorLoad {

QList<Ticks> sample(ProcessorTickSource *source)
{
    if (!source)
        return {};
    QList<Ticks> ticks;
    for (const ProcessorTickCounters &counters : source->read()) {
        // Each counter is 32 bits; the sum is taken in 64 bits so that it cannot wrap.
        const quint64 busy = quint64(counters.user) + quint64(counters.system) + quint64(counters.nice);
        ticks.append(Ticks{busy, quint64(counters.idle)});
    }
    return ticks;
}

QList<double> usage(const QList<Ticks> &from, const QList<Ticks> &to)
{
    const qsizetype count = std::min(from.size(), to.size());
    QList<double> fractions;
    fractions.reserve(count);
    for (qsizetype index = 0; index < count; ++index) {
        // Differences are taken as wrapping unsigned 64-bit subtractions, then as doubles.
        const double busy = double(to.at(index).busy - from.at(index).busy);
        const double idle = double(to.at(index).idle - from.at(index).idle);
        const double total = busy + idle;
        fractions.append(total > 0 ? std::clamp(busy / total, 0.0, 1.0) : 0.0);
    }
    return fractions;
}

} // namespace ProcessorLoad
