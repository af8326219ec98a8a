#include "platform/macos/mac_registry_source.h"

#include "platform/macos/apple_handles.h"
#include "platform/macos/cf_to_qvariant.h"

#include <IOKit/IOKitLib.h>

namespace {

// All the properties of one service, or nothing when they cannot be read.
std::optional<PropertyDictionary> serviceProperties(io_registry_entry_t service)
{
    CFMutableDictionaryRef raw = nullptr;
    const kern_return_t status = IORegistryEntryCreateCFProperties(service, &raw, kCFAllocatorDefault, kNilOptions);
    if (status != KERN_SUCCESS)
        return std::nullopt;
    const CFHolder<CFMutableDictionaryRef> properties(raw);
    return CFConversion::toDictionary(properties.get());
}

// Every service the iterator still yields, in its order; unreadable ones are left out.
QList<PropertyDictionary> readServices(io_iterator_t iterator)
{
    QList<PropertyDictionary> services;
    while (const io_object_t rawService = IOIteratorNext(iterator)) {
        const IOObjectHolder service(rawService);
        if (std::optional<PropertyDictionary> properties = serviceProperties(service.get()))
            services.append(std::move(*properties));
    }
    return services;
}

// The services that the matching dictionary selects, in the iterator's order. A failed
// query gives an empty list.
QList<PropertyDictionary> matchingServices(CFHolder<CFMutableDictionaryRef> matching)
{
    if (!matching)
        return {};
    io_iterator_t rawIterator = IO_OBJECT_NULL;
    // The query consumes the matching dictionary's reference whatever its outcome.
    const kern_return_t status = IOServiceGetMatchingServices(defaultMainPort, matching.release(), &rawIterator);
    if (status != KERN_SUCCESS)
        return {};
    const IOObjectHolder iterator(rawIterator);
    if (!iterator)
        return {};
    // A service that comes or goes during the walk invalidates the iterator, which then
    // stops early: start again from the beginning, a few times at most.
    QList<PropertyDictionary> services = readServices(iterator.get());
    for (int restart = 0; restart < 3 && !IOIteratorIsValid(iterator.get()); ++restart) {
        IOIteratorReset(iterator.get());
        services = readServices(iterator.get());
    }
    return services;
}

} // namespace

QList<PropertyDictionary> MacRegistrySource::servicesOfClass(const QString &className) const
{
    return matchingServices(CFHolder<CFMutableDictionaryRef>(IOServiceMatching(className.toUtf8().constData())));
}

QList<PropertyDictionary> MacRegistrySource::servicesNamed(const QString &name) const
{
    return matchingServices(CFHolder<CFMutableDictionaryRef>(IOServiceNameMatching(name.toUtf8().constData())));
}
