#include "platform/macos/mac_drive_health.h"

#include "platform/macos/apple_handles.h"
#include "platform/macos/cf_to_qvariant.h"

#include <IOKit/IOCFPlugIn.h>

#if __has_include(<IOKit/storage/nvme/NVMeSMARTLibExternal.h>)
#include <IOKit/storage/nvme/NVMeSMARTLibExternal.h>
#else
// The part of IOKit/storage/nvme/NVMeSMARTLibExternal.h this file uses, for SDKs without it:
// the plug-in's identifiers and the head of its interface, up to the call that reads the log.
#define kIONVMeSMARTUserClientTypeID                                                                                   \
    CFUUIDGetConstantUUIDWithBytes(nullptr, 0xAA, 0x0F, 0xA6, 0xF9, 0xC2, 0xD6, 0x45, 0x7F, 0xB1, 0x0B, 0x59, 0xA1,     \
                                   0x32, 0x53, 0x29, 0x2F)
#define kIONVMeSMARTInterfaceID                                                                                        \
    CFUUIDGetConstantUUIDWithBytes(nullptr, 0xCC, 0xD1, 0xDB, 0x19, 0xFD, 0x9A, 0x4D, 0xAF, 0xBF, 0x95, 0x12, 0x45,     \
                                   0x4B, 0x23, 0x0A, 0xB6)
#define kIOPropertyNVMeSMARTCapableKey "NVMe SMART Capable"
typedef struct NVMeSMARTData
{
    UInt8 bytes[512];
} NVMeSMARTData;
typedef struct IONVMeSMARTInterface
{
    IUNKNOWN_C_GUTS;
    UInt16 version;
    UInt16 revision;
    IOReturn (*SMARTReadData)(void *interface, NVMeSMARTData *data);
} IONVMeSMARTInterface;
#endif

#include <QString>

using namespace Qt::StringLiterals;

namespace {

static_assert(sizeof(NVMeSMARTData) == 512, "the NVMe health log page is 512 bytes");

// Releases a plug-in or an interface obtained through one.
template <typename Interface>
struct PlugInReleaser
{
    void operator()(Interface **object) const { (*object)->Release(object); }
};

template <typename Interface>
using PlugInHolder = std::unique_ptr<Interface *, PlugInReleaser<Interface>>;

QVariant property(io_service_t service, CFStringRef key)
{
    const CFHolder<CFTypeRef> value(IORegistryEntryCreateCFProperty(service, key, kCFAllocatorDefault, 0));
    return value ? CFConversion::toVariant(value.get()) : QVariant();
}

bool isInternal(io_service_t service)
{
    const QVariantMap protocol = property(service, CFSTR("Protocol Characteristics")).toMap();
    return protocol.value(u"Physical Interconnect Location"_s).toString() == u"Internal"_s;
}

QString modelOf(io_service_t service)
{
    const QVariantMap device = property(service, CFSTR("Device Characteristics")).toMap();
    return device.value(u"Product Name"_s).toString().trimmed();
}

DriveHealthLog readLog(io_service_t service)
{
    DriveHealthLog entry;
    entry.model = modelOf(service);
    IOCFPlugInInterface **rawPlugIn = nullptr;
    SInt32 score = 0;
    IOReturn status = IOCreatePlugInInterfaceForService(service, kIONVMeSMARTUserClientTypeID, kIOCFPlugInInterfaceID,
                                                        &rawPlugIn, &score);
    if (status != kIOReturnSuccess || !rawPlugIn) {
        entry.failure = u"le pilote du disque ne donne pas son journal de santé"_s;
        return entry;
    }
    const PlugInHolder<IOCFPlugInInterface> plugIn(rawPlugIn);
    IONVMeSMARTInterface **rawInterface = nullptr;
    const HRESULT found = (*rawPlugIn)->QueryInterface(rawPlugIn, CFUUIDGetUUIDBytes(kIONVMeSMARTInterfaceID),
                                                       reinterpret_cast<LPVOID *>(&rawInterface));
    if (found != S_OK || !rawInterface) {
        entry.failure = u"le pilote du disque ne donne pas son journal de santé"_s;
        return entry;
    }
    const PlugInHolder<IONVMeSMARTInterface> interface(rawInterface);
    NVMeSMARTData data{};
    status = (*rawInterface)->SMARTReadData(rawInterface, &data);
    if (status != kIOReturnSuccess) {
        entry.failure = u"lecture refusée par le pilote du disque"_s;
        return entry;
    }
    entry.log = QByteArray(reinterpret_cast<const char *>(&data), sizeof data);
    return entry;
}

} // namespace

QList<DriveHealthLog> MacDriveHealth::logs() const
{
    QList<DriveHealthLog> logs;
    io_iterator_t rawIterator = IO_OBJECT_NULL;
    if (IOServiceGetMatchingServices(defaultMainPort, IOServiceMatching("IOBlockStorageDevice"), &rawIterator)
        != KERN_SUCCESS)
        return logs;
    const IOObjectHolder iterator(rawIterator);
    while (const io_service_t rawService = IOIteratorNext(iterator.get())) {
        const IOObjectHolder service(rawService);
        const CFHolder<CFStringRef> capableKey(
            CFStringCreateWithCString(kCFAllocatorDefault, kIOPropertyNVMeSMARTCapableKey, kCFStringEncodingUTF8));
        if (!property(service.get(), capableKey.get()).toBool() || !isInternal(service.get()))
            continue;
        logs.append(readLog(service.get()));
    }
    return logs;
}
