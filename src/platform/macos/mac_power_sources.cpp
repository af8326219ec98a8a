#include "platform/macos/mac_power_sources.h"

#include "platform/macos/apple_handles.h"
#include "platform/macos/cf_to_qvariant.h"

#include <IOKit/ps/IOPowerSources.h>

QList<PropertyDictionary> MacPowerSources::descriptions() const
{
    const CFHolder<CFTypeRef> info(IOPSCopyPowerSourcesInfo());
    if (!info)
        return {};
    const CFHolder<CFArrayRef> list(IOPSCopyPowerSourcesList(info.get()));
    const auto sources = cfCast<CFArrayRef>(list.get(), CFArrayGetTypeID());
    if (!sources)
        return {};
    QList<PropertyDictionary> descriptions;
    const CFIndex count = CFArrayGetCount(sources);
    for (CFIndex index = 0; index < count; ++index) {
        const CFTypeRef source = CFArrayGetValueAtIndex(sources, index); // borrowed
        // Borrowed as well: the description lives as long as `info`, which releases it.
        const CFDictionaryRef description = IOPSGetPowerSourceDescription(info.get(), source);
        if (std::optional<PropertyDictionary> converted = CFConversion::toDictionary(description))
            descriptions.append(std::move(*converted));
    }
    return descriptions;
}
