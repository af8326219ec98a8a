#pragma once

#include "core/ownership_facts.h"
#include "sources/platform.h"

#include <QList>

// The system commands read for the ownership facts, and how their answers read. Every
// answer that is missing, failed or unknown gives a fact that cannot be told, with its
// reason; none is ever taken for a clear state.
namespace SecurityCommands {

// "profiles status -type enrollment": remote management and DEP assignment.
SystemCommand enrollment();
// "fdesetup status".
SystemCommand fileVault();
// "csrutil status".
SystemCommand integrityProtection();
// "nvram -p": the variables' names tell whether Find My Mac left its token.
SystemCommand nvramVariables();
QList<SystemCommand> all();

LockFact readEnrollment(const ProcessOutput &output);
LockFact readFileVault(const ProcessOutput &output);
LockFact readIntegrityProtection(const ProcessOutput &output);
LockFact readFindMy(const ProcessOutput &output);
// From the hardware report's "activation_lock_status" word, absent on Macs that do not say.
LockFact readActivationLock(const std::optional<QString> &statusWord);

// Keeps only the variables' names of an "nvram -p" answer: the values include the Find My
// token itself, which a capture must never carry.
QByteArray variableNamesOnly(const QByteArray &nvramAnswer);

} // namespace SecurityCommands
