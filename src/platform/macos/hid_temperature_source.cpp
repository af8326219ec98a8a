#include "platform/macos/apple_handles.h"
#include "platform/macos/macos_sensors.h"

#include <QString>

#include <dlfcn.h>

namespace {

// The event-system types are private: every handle is passed as a plain Core Foundation
// reference to functions looked up at run time.
using ClientCreate = CFTypeRef (*)(CFAllocatorRef allocator);
using ClientSetMatching = void (*)(CFTypeRef client, CFDictionaryRef matching);
using ClientCopyServices = CFTypeRef (*)(CFTypeRef client);
using ServiceCopyEvent = CFTypeRef (*)(CFTypeRef service, int64_t type, int32_t options, int64_t timestamp);
using EventGetFloatValue = double (*)(CFTypeRef event, int32_t field);
using ServiceCopyProperty = CFTypeRef (*)(CFTypeRef service, CFStringRef key);

constexpr int64_t temperatureEventType = 15;
// A field of an event is its event type shifted left by 16, plus the field's index.
constexpr int32_t temperatureLevelField = int32_t(temperatureEventType << 16);
constexpr int vendorUsagePage = 0xFF00;
constexpr int temperatureSensorUsage = 5;

struct EventSystemFunctions
{
    ClientCreate create = nullptr;
    ClientSetMatching setMatching = nullptr;
    ClientCopyServices copyServices = nullptr;
    ServiceCopyEvent copyEvent = nullptr;
    EventGetFloatValue floatValue = nullptr;
    ServiceCopyProperty copyProperty = nullptr;
};

template <typename Function>
bool lookUp(void *library, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

// Opens the I/O Kit library and looks up the six functions, in this order. The library
// handle is never closed: the functions are used for the life of the process.
std::optional<EventSystemFunctions> loadEventSystemFunctions()
{
    void *library = dlopen("/System/Library/Frameworks/IOKit.framework/IOKit", RTLD_LAZY);
    if (!library)
        return std::nullopt;
    EventSystemFunctions functions;
    if (!lookUp(library, "IOHIDEventSystemClientCreate", functions.create)
        || !lookUp(library, "IOHIDEventSystemClientSetMatching", functions.setMatching)
        || !lookUp(library, "IOHIDEventSystemClientCopyServices", functions.copyServices)
        || !lookUp(library, "IOHIDServiceClientCopyEvent", functions.copyEvent)
        || !lookUp(library, "IOHIDEventGetFloatValue", functions.floatValue)
        || !lookUp(library, "IOHIDServiceClientCopyProperty", functions.copyProperty))
        return std::nullopt;
    return functions;
}

class HidTemperatureEvents final : public TemperatureEventSource
{
public:
    HidTemperatureEvents(const EventSystemFunctions &functions, CFHolder<CFTypeRef> client, CFHolder<CFArrayRef> services)
        : m_functions(functions), m_client(std::move(client)), m_services(std::move(services))
    {
    }

    QList<std::optional<QString>> serviceProducts() const override
    {
        QList<std::optional<QString>> products;
        const CFIndex count = CFArrayGetCount(m_services.get());
        for (CFIndex index = 0; index < count; ++index) {
            const CFHolder<CFTypeRef> product(m_functions.copyProperty(service(index), CFSTR("Product")));
            if (const auto text = cfCast<CFStringRef>(product.get(), CFStringGetTypeID()))
                products.append(QString::fromCFString(text));
            else
                products.append(std::nullopt);
        }
        return products;
    }

    QList<std::optional<double>> temperatures(const QList<qsizetype> &serviceIndices) override
    {
        QList<std::optional<double>> readings;
        const CFIndex count = CFArrayGetCount(m_services.get());
        for (const qsizetype index : serviceIndices) {
            if (index < 0 || index >= count) {
                readings.append(std::nullopt);
                continue;
            }
            // The copied event belongs to us and is released once its value is read.
            const CFHolder<CFTypeRef> event(m_functions.copyEvent(service(index), temperatureEventType, 0, 0));
            if (!event)
                readings.append(std::nullopt);
            else
                readings.append(m_functions.floatValue(event.get(), temperatureLevelField));
        }
        return readings;
    }

private:
    // Borrowed from the service list, which keeps it alive.
    CFTypeRef service(CFIndex index) const { return CFArrayGetValueAtIndex(m_services.get(), index); }

    EventSystemFunctions m_functions;
    // Released after its services, when the monitor stops reading.
    CFHolder<CFTypeRef> m_client;
    CFHolder<CFArrayRef> m_services;
};

std::unique_ptr<TemperatureEventSource> makeHidTemperatureEvents()
{
    const std::optional<EventSystemFunctions> functions = loadEventSystemFunctions();
    if (!functions)
        return nullptr;
    // The client is kept by the source and released with it, after its services.
    CFHolder<CFTypeRef> client(functions->create(kCFAllocatorDefault));
    if (!client)
        return nullptr;
    const CFHolder<CFDictionaryRef> matching = hidUsageMatching(vendorUsagePage, temperatureSensorUsage);
    if (!matching)
        return nullptr;
    functions->setMatching(client.get(), matching.get());
    CFHolder<CFTypeRef> copied(functions->copyServices(client.get()));
    if (!cfCast<CFArrayRef>(copied.get(), CFArrayGetTypeID()))
        return nullptr;
    CFHolder<CFArrayRef> services(static_cast<CFArrayRef>(copied.release()));
    return std::make_unique<HidTemperatureEvents>(*functions, std::move(client), std::move(services));
}

} // namespace

TemperatureEventSourceFactory macTemperatureEvents()
{
    return &makeHidTemperatureEvents;
}
