#include "platform/macos/mac_process_information.h"

#import <Foundation/Foundation.h>

// Every call drains its own autorelease pool: the collectors call from worker threads that
// may drain none of their own.

QString MacProcessInformation::hostName() const
{
    @autoreleasepool {
        return QString::fromNSString(NSProcessInfo.processInfo.hostName);
    }
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
