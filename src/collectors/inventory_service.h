#pragma once

#include "core/app_section.h"
#include "core/device_node.h"
#include "core/storage_volume.h"
#include "sources/platform.h"
#include "sources/system_profiler.h"

#include <QList>

// The stateless collector of the storage volumes and of the seven device sections. Each
// operation runs the system profiler once for its data type and builds fresh records (new
// identifiers every time); a profiler failure comes back unchanged, nothing else fails.
namespace InventoryService {

// The volumes that matter to a buyer: real disks, internal first, each APFS container once.
Result<QList<StorageVolume>> storage(const Platform &platform);

// One node per graphics processor, its displays as children.
Result<QList<DeviceNode>> displays(const Platform &platform);
// One node per bus, with hubs and devices as children.
Result<QList<DeviceNode>> usb(const Platform &platform);
// One node per bus, with devices and then ports as children.
Result<QList<DeviceNode>> thunderbolt(const Platform &platform);
// The controller, then connected devices, then the others.
Result<QList<DeviceNode>> bluetooth(const Platform &platform);
// One node per network service.
Result<QList<DeviceNode>> network(const Platform &platform);
// One node per audio device.
Result<QList<DeviceNode>> audio(const Platform &platform);
// One node per camera.
Result<QList<DeviceNode>> cameras(const Platform &platform);

// The device list of a section; a section that is not a device section gives an empty list
// without running anything.
Result<QList<DeviceNode>> devices(const Platform &platform, AppSection section);

} // namespace InventoryService
