#pragma once

#include "core/ownership_facts.h"
#include "sources/platform.h"

#include <optional>

// Reads who else may control the Mac: the management and lock commands, and the
// activation-lock word of the hardware report.
namespace OwnershipService {

OwnershipFacts read(const Platform &platform, const std::optional<QString> &activationLockWord, bool isIntel);

} // namespace OwnershipService
