#include "collectors/inventory_service.h"

namespace InventoryService {

Result<QList<DeviceNode>> devices(const Platform &platform, AppSection section)
{
    switch (section) {
    case AppSection::displays:
        return displays(platform);
    case AppSection::usb:
        return usb(platform);
    case AppSection::thunderbolt:
        return thunderbolt(platform);
    case AppSection::bluetooth:
        return bluetooth(platform);
    case AppSection::network:
        return network(platform);
    case AppSection::audio:
        return audio(platform);
    case AppSection::camera:
        return cameras(platform);
    case AppSection::overview:
    case AppSection::diagnostics:
    case AppSection::history:
    case AppSection::hardware:
    case AppSection::battery:
    case AppSection::storage:
        break;
    }
    return QList<DeviceNode>();
}

} // namespace InventoryService
