#pragma once

#include "sources/preference_store.h"

// The preferences in the defaults domain of the application's bundle identifier, through
// Core Foundation's preferences, under the keys as they are ("workshop.name"); the same
// domain for quillon-bilan, which has no bundle of its own.
class MacPreferences final : public PreferenceStore
{
public:
    MacPreferences();

    std::optional<QString> text(const QString &key) const override;
    void setText(const QString &key, const QString &value) override;

private:
    QString m_domain;
};
