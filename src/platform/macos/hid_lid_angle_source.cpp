#include "platform/macos/apple_handles.h"
#include "platform/macos/macos_sensors.h"

#include <IOKit/hid/IOHIDDevice.h>
#include <IOKit/hid/IOHIDManager.h>

#include <QByteArray>

#include <algorithm>
#include <vector>

namespace {

constexpr int sensorUsagePage = 0x20;
constexpr int hingeAngleUsage = 0x8A;

// A HID manager that was opened, closed (with no options) before it is released.
struct OpenManager
{
    CFHolder<IOHIDManagerRef> manager;

    OpenManager(const OpenManager &) = delete;
    OpenManager &operator=(const OpenManager &) = delete;
    explicit OpenManager(CFHolder<IOHIDManagerRef> opened) : manager(std::move(opened)) {}
    ~OpenManager() { IOHIDManagerClose(manager.get(), kIOHIDOptionsTypeNone); }
};

// A HID device that was opened, closed (with no options) before it is released.
struct OpenDevice
{
    CFHolder<IOHIDDeviceRef> device;

    OpenDevice(const OpenDevice &) = delete;
    OpenDevice &operator=(const OpenDevice &) = delete;
    explicit OpenDevice(CFHolder<IOHIDDeviceRef> opened) : device(std::move(opened)) {}
    ~OpenDevice() { IOHIDDeviceClose(device.get(), kIOHIDOptionsTypeNone); }
};

class HidLidAngleReports final : public LidAngleReportSource
{
public:
    HidLidAngleReports(std::unique_ptr<OpenManager> manager, std::unique_ptr<OpenDevice> device)
        : m_manager(std::move(manager)), m_device(std::move(device))
    {
    }

    // The device is closed first, then the manager.
    ~HidLidAngleReports() override
    {
        m_device.reset();
        m_manager.reset();
    }

    HidReport featureReport(int reportId, qsizetype capacity) override
    {
        std::vector<uint8_t> buffer(size_t(std::max<qsizetype>(capacity, 0)), 0);
        CFIndex length = CFIndex(buffer.size());
        const IOReturn status = IOHIDDeviceGetReport(m_device->device.get(), kIOHIDReportTypeFeature,
                                                     CFIndex(reportId), buffer.data(), &length);
        if (status != kIOReturnSuccess)
            return HidReport{int(status), {}};
        length = std::clamp<CFIndex>(length, 0, CFIndex(buffer.size()));
        return HidReport{0, QByteArray(reinterpret_cast<const char *>(buffer.data()), qsizetype(length))};
    }

private:
    std::unique_ptr<OpenManager> m_manager;
    std::unique_ptr<OpenDevice> m_device;
};

// One device of the set: the first in the set's own order.
CFHolder<IOHIDDeviceRef> firstDevice(CFSetRef devices)
{
    const CFIndex count = CFSetGetCount(devices);
    if (count <= 0)
        return nullptr;
    std::vector<const void *> values(size_t(count), nullptr);
    CFSetGetValues(devices, values.data());
    if (!values.front() || CFGetTypeID(values.front()) != IOHIDDeviceGetTypeID())
        return nullptr;
    // The set only lends the device: keep a reference of our own.
    const auto device = static_cast<IOHIDDeviceRef>(const_cast<void *>(values.front()));
    CFRetain(device);
    return CFHolder<IOHIDDeviceRef>(device);
}

std::unique_ptr<LidAngleReportSource> makeHidLidAngleReports()
{
    CFHolder<IOHIDManagerRef> manager(IOHIDManagerCreate(kCFAllocatorDefault, kIOHIDOptionsTypeNone));
    const CFHolder<CFDictionaryRef> matching = hidUsageMatching(sensorUsagePage, hingeAngleUsage);
    if (!manager || !matching)
        return nullptr;
    IOHIDManagerSetDeviceMatching(manager.get(), matching.get());
    if (IOHIDManagerOpen(manager.get(), kIOHIDOptionsTypeNone) != kIOReturnSuccess)
        return nullptr;
    auto openManager = std::make_unique<OpenManager>(std::move(manager));

    const CFHolder<CFTypeRef> devices(IOHIDManagerCopyDevices(openManager->manager.get()));
    const auto deviceSet = cfCast<CFSetRef>(devices.get(), CFSetGetTypeID());
    if (!deviceSet)
        return nullptr;
    CFHolder<IOHIDDeviceRef> device = firstDevice(deviceSet);
    if (!device || IOHIDDeviceOpen(device.get(), kIOHIDOptionsTypeNone) != kIOReturnSuccess)
        return nullptr;
    auto openDevice = std::make_unique<OpenDevice>(std::move(device));
    return std::make_unique<HidLidAngleReports>(std::move(openManager), std::move(openDevice));
}

} // namespace

LidAngleReportSourceFactory macLidAngleReports()
{
    return &makeHidLidAngleReports;
}
