#include "platform/macos/macos_sensors.h"

namespace {

CFHolder<CFNumberRef> makeNumber(int value)
{
    return CFHolder<CFNumberRef>(CFNumberCreate(kCFAllocatorDefault, kCFNumberIntType, &value));
}

} // namespace

CFHolder<CFDictionaryRef> hidUsageMatching(int usagePage, int usage)
{
    const CFHolder<CFNumberRef> pageNumber = makeNumber(usagePage);
    const CFHolder<CFNumberRef> usageNumber = makeNumber(usage);
    if (!pageNumber || !usageNumber)
        return nullptr;
    const void *keys[] = {CFSTR("PrimaryUsagePage"), CFSTR("PrimaryUsage")};
    const void *values[] = {pageNumber.get(), usageNumber.get()};
    return CFHolder<CFDictionaryRef>(CFDictionaryCreate(kCFAllocatorDefault, keys, values, 2,
                                                        &kCFTypeDictionaryKeyCallBacks,
                                                        &kCFTypeDictionaryValueCallBacks));
}
