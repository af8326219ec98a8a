#pragma once

#include <QString>

// Who else may still control a Mac: remote management, the locks tied to an Apple Account,
// disk encryption and the system's integrity protection. Each fact is either read, with
// the system's answer in French words, or could not be told, with the reason.
struct LockFact
{
    enum class State { unknown, off, on };

    State state = State::unknown;
    // The answer in words ("Inscrit via DEP", "Activé"), or why it cannot be told.
    QString words;

    friend bool operator==(const LockFact &, const LockFact &) = default;
};

struct OwnershipFacts
{
    // Enrolled in a device-management service, or assigned to an organisation (DEP).
    LockFact management;
    LockFact activationLock;
    LockFact findMy;
    LockFact fileVault;
    // On means the protection is fully enabled.
    LockFact integrityProtection;
    // Only Intel Macs have a firmware password, and reading it needs administrator rights.
    bool isIntel = false;

    friend bool operator==(const OwnershipFacts &, const OwnershipFacts &) = default;
};
