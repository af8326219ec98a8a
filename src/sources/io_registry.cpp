#include "sources/io_registry.h"

namespace IORegistry {

QList<PropertyDictionary> entriesOfClass(const RegistrySource &registry, const QString &className)
{
    return registry.servicesOfClass(className);
}

std::optional<PropertyDictionary> first(const RegistrySource &registry, const QString &ofClass)
{
    const QList<PropertyDictionary> entries = registry.servicesOfClass(ofClass);
    if (entries.isEmpty())
        return std::nullopt;
    return entries.first();
}

std::optional<ClassMatch> firstAvailable(const RegistrySource &registry, const QStringList &ofClasses)
{
    for (const QString &candidate : ofClasses) {
        const QList<PropertyDictionary> byClass = registry.servicesOfClass(candidate);
        if (!byClass.isEmpty())
            return ClassMatch{candidate, byClass.first()};
        const QList<PropertyDictionary> byName = registry.servicesNamed(candidate);
        if (!byName.isEmpty())
            return ClassMatch{candidate, byName.first()};
    }
    return std::nullopt;
}

} // namespace IORegistry
