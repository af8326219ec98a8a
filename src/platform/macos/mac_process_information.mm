#include "platform/macos/mac_process_information.h"

#import <Foundation/Foundation.h>

#include <unistd.h>

// Every call drains its own autorelease pool: the collectors call from worker threads that
// may drain none of their own.

// The kernel's host name: NSProcessInfo.hostName may ask the network's name service and
// wait seconds for it, and nothing here may wait.
QString MacProcessInformation::hostName() const
{
    char name[256] = {};
    if (gethostname(name, sizeof name - 1) != 0)
        return {};
    return QString::fromUtf8(name);
}

QString MacProcessInformation::operatingSystemVersion() const
{
    @autoreleasepool {
        return QString::fromNSString(NSProcessInfo.processInfo.operatingSystemVersionString);
    }
}

ThermalState MacProcessInformation::thermalState() const
{
    @autoreleasepool {
        switch (NSProcessInfo.processInfo.thermalState) {
        case NSProcessInfoThermalStateNominal:
            return ThermalState::nominal;
        case NSProcessInfoThermalStateFair:
            return ThermalState::fair;
        case NSProcessInfoThermalStateSerious:
            return ThermalState::serious;
        case NSProcessInfoThermalStateCritical:
            return ThermalState::critical;
        }
        return ThermalState::unknown;
    }
}
