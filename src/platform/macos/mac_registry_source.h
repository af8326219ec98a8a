#pragma once

#include "sources/platform.h"

// The I/O registry of this Mac: services matched by class or by registry name, each read
// as a property dictionary. Nothing is cached; every call walks the registry afresh.
class MacRegistrySource final : public RegistrySource
{
public:
    QList<PropertyDictionary> servicesOfClass(const QString &className) const override;
    QList<PropertyDictionary> servicesNamed(const QString &name) const override;
};
