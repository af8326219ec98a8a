#pragma once

#include "sources/platform.h"
#include "sources/property_values.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// Queries over the I/O registry, the kernel's tree of hardware services. Each call asks
// the registry afresh; nothing is cached. No query fails: a service that cannot be read
// is simply missing from the answer.
namespace IORegistry {

// The property dictionaries of every service of that class, in registry order.
QList<PropertyDictionary> entriesOfClass(const RegistrySource &registry, const QString &className);

// The first service of that class, or nothing.
std::optional<PropertyDictionary> first(const RegistrySource &registry, const QString &ofClass);

// The candidate name that matched and the properties of its first service.
struct ClassMatch
{
    QString className;
    PropertyDictionary properties;

    friend bool operator==(const ClassMatch &, const ClassMatch &) = default;
};

// Tries each candidate in turn, first by class and then by registry name; an earlier
// candidate wins over a later one even when the later one matches by class. The name
// returned is the caller's candidate, not the service's own class.
std::optional<ClassMatch> firstAvailable(const RegistrySource &registry, const QStringList &ofClasses);

} // namespace IORegistry
