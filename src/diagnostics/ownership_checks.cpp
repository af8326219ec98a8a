#include "diagnostics/diagnostics_rules.h"

#include "core/texts.h"

using namespace Qt::StringLiterals;

namespace {

HardwareCheck ownershipCheck(const QString &title, CheckStatus status, const QString &measurement, const QString &summary)
{
    return {.title = title,
            .symbol = u"lock.shield"_s,
            .status = status,
            .summary = summary,
            .measurement = measurement,
            .section = AppSection::hardware,
            .group = CheckGroup::ownership};
}

// A fact that could not be told is never a clear state: it says why, as information.
HardwareCheck unverifiable(const QString &title, const LockFact &fact)
{
    return ownershipCheck(title, CheckStatus::info, localized("Non vérifiable"),
                          localized("Non vérifiable — %1.").arg(fact.words));
}

HardwareCheck managementCheck(const LockFact &fact)
{
    const QString title = localized("Gestion à distance");
    switch (fact.state) {
    case LockFact::State::on:
        return ownershipCheck(title, CheckStatus::alerte, localized("Géré"),
                              localized("%1 — géré par une organisation : à faire libérer avant la vente, car il se réinscrit après effacement.")
                                  .arg(fact.words));
    case LockFact::State::off:
        return ownershipCheck(title, CheckStatus::ok, localized("Non géré"), fact.words + u"."_s);
    case LockFact::State::unknown:
        break;
    }
    return unverifiable(title, fact);
}

// Activation Lock and Find My: on means the owner has to switch it off before the sale.
HardwareCheck ownerLockCheck(const QString &title, const LockFact &fact)
{
    switch (fact.state) {
    case LockFact::State::on:
        return ownershipCheck(title, CheckStatus::attention, fact.words,
                              localized("%1 : le propriétaire doit le désactiver avant la vente.").arg(fact.words));
    case LockFact::State::off:
        return ownershipCheck(title, CheckStatus::ok, fact.words, fact.words + u"."_s);
    case LockFact::State::unknown:
        break;
    }
    return unverifiable(title, fact);
}

HardwareCheck fileVaultCheck(const LockFact &fact)
{
    const QString title = u"FileVault"_s;
    if (fact.state == LockFact::State::unknown)
        return unverifiable(title, fact);
    const QString meaning = fact.state == LockFact::State::on ? localized("le disque interne est chiffré")
                                                              : localized("le disque interne n'est pas chiffré");
    return ownershipCheck(title, CheckStatus::info, fact.words, fact.words + u" : "_s + meaning + u"."_s);
}

HardwareCheck integrityCheck(const LockFact &fact)
{
    const QString title = localized("Protection de l'intégrité du système");
    switch (fact.state) {
    case LockFact::State::on:
        return ownershipCheck(title, CheckStatus::ok, fact.words, fact.words + u"."_s);
    case LockFact::State::off:
        return ownershipCheck(title, CheckStatus::attention, localized("Désactivée"),
                              localized("%1 : à réactiver depuis la récupération de macOS.").arg(fact.words));
    case LockFact::State::unknown:
        break;
    }
    return unverifiable(title, fact);
}

} // namespace

namespace DiagnosticsService {

QList<HardwareCheck> ownershipChecks(const std::optional<HardwareInfo> &hardware)
{
    OwnershipFacts facts = hardware ? hardware->ownership : OwnershipFacts();
    if (!hardware) {
        const QString notRead = localized("informations matérielles non lues");
        for (LockFact *fact : {&facts.management, &facts.activationLock, &facts.findMy, &facts.fileVault,
                               &facts.integrityProtection})
            fact->words = notRead;
    }
    QList<HardwareCheck> checks{managementCheck(facts.management),
                                ownerLockCheck(localized("Verrouillage d'activation"), facts.activationLock),
                                ownerLockCheck(localized("Localiser mon Mac"), facts.findMy),
                                fileVaultCheck(facts.fileVault), integrityCheck(facts.integrityProtection)};
    if (facts.isIntel) {
        checks.append(ownershipCheck(localized("Mot de passe du firmware"), CheckStatus::info,
                                     localized("Non vérifiable"), localized("Mot de passe du firmware non vérifiable sans droits administrateur.")));
    }
    return checks;
}

} // namespace DiagnosticsService
