#include "platform/macos/macos_sensors.h"

#include <mach/mach.h>

namespace {

// The processor-load array that host_processor_info hands out, given back to the kernel
// when the holder goes.
class ProcessorInfoArray
{
public:
    ProcessorInfoArray(processor_info_array_t array, mach_msg_type_number_t wordCount)
        : m_array(array), m_wordCount(wordCount)
    {
    }
    ~ProcessorInfoArray()
    {
        if (m_array)
            vm_deallocate(mach_task_self(), vm_address_t(m_array), vm_size_t(m_wordCount) * sizeof(integer_t));
    }
    ProcessorInfoArray(const ProcessorInfoArray &) = delete;
    ProcessorInfoArray &operator=(const ProcessorInfoArray &) = delete;

    processor_info_array_t get() const { return m_array; }
    mach_msg_type_number_t wordCount() const { return m_wordCount; }

private:
    processor_info_array_t m_array;
    mach_msg_type_number_t m_wordCount;
};

class MachProcessorTicks final : public ProcessorTickSource
{
public:
    // mach_host_self() gives a send right of our own: it is given back with the reader.
    MachProcessorTicks() : m_host(mach_host_self()) {}
    ~MachProcessorTicks() override { mach_port_deallocate(mach_task_self(), m_host); }

    QList<ProcessorTickCounters> read() override
    {
        natural_t processorCount = 0;
        processor_info_array_t array = nullptr;
        mach_msg_type_number_t wordCount = 0;
        const kern_return_t result =
            host_processor_info(m_host, PROCESSOR_CPU_LOAD_INFO, &processorCount, &array, &wordCount);
        if (result != KERN_SUCCESS || !array)
            return {};
        const ProcessorInfoArray held(array, wordCount);
        if (processorCount == 0 || wordCount < processorCount * PROCESSOR_CPU_LOAD_INFO_COUNT)
            return {};

        const auto *loads = reinterpret_cast<const processor_cpu_load_info_data_t *>(held.get());
        QList<ProcessorTickCounters> counters;
        counters.reserve(processorCount);
        for (natural_t processor = 0; processor < processorCount; ++processor) {
            const unsigned int *ticks = loads[processor].cpu_ticks;
            counters.append(ProcessorTickCounters{ticks[CPU_STATE_USER], ticks[CPU_STATE_SYSTEM],
                                                  ticks[CPU_STATE_IDLE], ticks[CPU_STATE_NICE]});
        }
        return counters;
    }

private:
    mach_port_t m_host;
};

} // namespace

ProcessorTickSourceFactory macProcessorTicks()
{
    return [] { return std::make_unique<MachProcessorTicks>(); };
}
