#include "collectors/ownership_service.h"

#include "core/texts.h"
#include "sources/security_commands.h"

namespace OwnershipService {

OwnershipFacts read(const Platform &platform, const std::optional<QString> &activationLockWord, bool isIntel)
{
    const auto run = [&platform](const SystemCommand &command) {
        if (platform.commands)
            return platform.commands->run(command);
        ProcessOutput none;
        none.startError = localized("aucune commande sur ce système");
        return none;
    };
    OwnershipFacts facts;
    facts.management = SecurityCommands::readEnrollment(run(SecurityCommands::enrollment()));
    facts.activationLock = SecurityCommands::readActivationLock(activationLockWord);
    facts.findMy = SecurityCommands::readFindMy(run(SecurityCommands::nvramVariables()));
    facts.fileVault = SecurityCommands::readFileVault(run(SecurityCommands::fileVault()));
    facts.integrityProtection = SecurityCommands::readIntegrityProtection(run(SecurityCommands::integrityProtection()));
    facts.isIntel = isIntel;
    return facts;
}

} // namespace OwnershipService
