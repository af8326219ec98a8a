#include "sources/security_commands.h"

#include "core/texts.h"

using namespace Qt::StringLiterals;

namespace {

LockFact known(LockFact::State state, const QString &words)
{
    return {state, words};
}

LockFact unverifiable(const QString &reason)
{
    return {LockFact::State::unknown, reason};
}

QString commandLine(const SystemCommand &command)
{
    return (QStringList{command.program.section(u'/', -1)} + command.arguments).join(u' ');
}

// The lines of a command that ran and succeeded, or why its answer cannot be used.
std::variant<QStringList, LockFact> answerLines(const ProcessOutput &output, const SystemCommand &command)
{
    const QString name = commandLine(command);
    if (output.stoppedAfterSeconds)
        return unverifiable(localized("%1 ne répond pas après %2 s").arg(name).arg(*output.stoppedAfterSeconds));
    if (!output.started)
        return unverifiable(localized("%1 n'a pas pu être lancé (%2)").arg(name, output.startError));
    if (output.exitStatus != 0)
        return unverifiable(localized("%1 a échoué (code %2)").arg(name).arg(output.exitStatus));
    QStringList lines;
    for (const QString &line : QString::fromUtf8(output.standardOutput).split(u'\n'))
        if (!line.trimmed().isEmpty())
            lines.append(line.trimmed());
    return lines;
}

LockFact unknownAnswer(const QStringList &lines, const SystemCommand &command)
{
    if (lines.isEmpty())
        return unverifiable(localized("%1 n'a rien répondu").arg(commandLine(command)));
    QString first = lines.first();
    if (first.size() > 60)
        first = first.left(59) + u'…';
    return unverifiable(localized("réponse inconnue de %1 : « %2 »").arg(commandLine(command), first));
}

// "Yes", "Yes (User Approved)" or "No" after the label; nothing when the line is absent or
// says something else.
std::optional<bool> yesNoAfter(const QStringList &lines, const QString &label)
{
    for (const QString &line : lines) {
        if (!line.startsWith(label))
            continue;
        const QString answer = line.mid(label.size()).trimmed();
        if (answer == u"Yes"_s || answer.startsWith(u"Yes "_s))
            return true;
        if (answer == u"No"_s)
            return false;
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace

namespace SecurityCommands {

SystemCommand enrollment()
{
    return {u"profiles-enrollment"_s, u"/usr/bin/profiles"_s, {u"status"_s, u"-type"_s, u"enrollment"_s}};
}

SystemCommand fileVault()
{
    return {u"fdesetup-status"_s, u"/usr/bin/fdesetup"_s, {u"status"_s}};
}

SystemCommand integrityProtection()
{
    return {u"csrutil-status"_s, u"/usr/bin/csrutil"_s, {u"status"_s}};
}

SystemCommand nvramVariables()
{
    return {u"nvram-variables"_s, u"/usr/sbin/nvram"_s, {u"-p"_s}};
}

QList<SystemCommand> all()
{
    return {enrollment(), fileVault(), integrityProtection(), nvramVariables()};
}

LockFact readEnrollment(const ProcessOutput &output)
{
    const auto answer = answerLines(output, enrollment());
    if (const auto *fact = std::get_if<LockFact>(&answer))
        return *fact;
    const QStringList &lines = std::get<QStringList>(answer);
    const std::optional<bool> dep = yesNoAfter(lines, u"Enrolled via DEP:"_s);
    const std::optional<bool> mdm = yesNoAfter(lines, u"MDM enrollment:"_s);
    if (!dep && !mdm)
        return unknownAnswer(lines, enrollment());
    if (dep.value_or(false) && mdm.value_or(false))
        return known(LockFact::State::on, localized("Inscrit via DEP et géré par un MDM"));
    if (dep.value_or(false))
        return known(LockFact::State::on, localized("Inscrit via DEP"));
    if (mdm.value_or(false))
        return known(LockFact::State::on, localized("Géré par un MDM"));
    // One answer alone saying "No" cannot clear the other.
    if (!dep || !mdm)
        return unknownAnswer(lines, enrollment());
    return known(LockFact::State::off, localized("Aucune gestion à distance"));
}

LockFact readFileVault(const ProcessOutput &output)
{
    const auto answer = answerLines(output, fileVault());
    if (const auto *fact = std::get_if<LockFact>(&answer))
        return *fact;
    const QStringList &lines = std::get<QStringList>(answer);
    const QString first = lines.value(0);
    if (first == u"FileVault is On."_s)
        return known(LockFact::State::on, localized("Activé"));
    if (first == u"FileVault is Off."_s)
        return known(LockFact::State::off, localized("Désactivé"));
    if (first.startsWith(u"FileVault is Off, but will be enabled"_s))
        return known(LockFact::State::off, localized("Désactivé, activation au prochain démarrage"));
    if (first.startsWith(u"FileVault is On"_s))
        return known(LockFact::State::on, localized("Activé, chiffrement en cours"));
    return unknownAnswer(lines, fileVault());
}

LockFact readIntegrityProtection(const ProcessOutput &output)
{
    const auto answer = answerLines(output, integrityProtection());
    if (const auto *fact = std::get_if<LockFact>(&answer))
        return *fact;
    const QStringList &lines = std::get<QStringList>(answer);
    const QString label = u"System Integrity Protection status:"_s;
    const QString first = lines.value(0);
    if (!first.startsWith(label))
        return unknownAnswer(lines, integrityProtection());
    const QString status = first.mid(label.size()).trimmed();
    if (status == u"enabled."_s)
        return known(LockFact::State::on, localized("Activée"));
    if (status == u"disabled."_s)
        return known(LockFact::State::off, localized("Désactivée"));
    if (status.startsWith(u"unknown (Custom Configuration)"_s) || status.startsWith(u"enabled (Custom Configuration)"_s))
        return known(LockFact::State::off, localized("Configuration personnalisée, en partie désactivée"));
    return unknownAnswer(lines, integrityProtection());
}

LockFact readFindMy(const ProcessOutput &output)
{
    const auto answer = answerLines(output, nvramVariables());
    if (const auto *fact = std::get_if<LockFact>(&answer))
        return *fact;
    const QStringList &lines = std::get<QStringList>(answer);
    if (lines.isEmpty())
        return unknownAnswer(lines, nvramVariables());
    for (const QString &line : lines) {
        if (line.section(u'\t', 0, 0).section(u' ', 0, 0) == u"fmm-mobileme-token-FMM"_s)
            return known(LockFact::State::on, localized("Activé"));
    }
    return known(LockFact::State::off, localized("Désactivé"));
}

LockFact readActivationLock(const std::optional<QString> &statusWord)
{
    if (!statusWord)
        return unverifiable(localized("macOS ne l'indique pas pour ce Mac"));
    if (*statusWord == u"activation_lock_enabled"_s)
        return known(LockFact::State::on, localized("Activé"));
    if (*statusWord == u"activation_lock_disabled"_s)
        return known(LockFact::State::off, localized("Désactivé"));
    return unverifiable(localized("réponse inconnue de system_profiler : « %1 »").arg(statusWord->left(60)));
}

QByteArray variableNamesOnly(const QByteArray &nvramAnswer)
{
    QByteArray names;
    for (const QByteArray &line : nvramAnswer.split('\n')) {
        const QByteArray name = line.split('\t').value(0).trimmed();
        if (!name.isEmpty())
            names += name + '\n';
    }
    return names;
}

} // namespace SecurityCommands
