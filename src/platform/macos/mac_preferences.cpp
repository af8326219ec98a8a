#include "platform/macos/mac_preferences.h"

#include "platform/macos/apple_handles.h"

#include <CoreFoundation/CoreFoundation.h>

namespace {

// The identifier of Quillon.app, for the programs that run outside it.
constexpr char defaultDomain[] = "fr.quillon.Quillon";

CFHolder<CFStringRef> cfString(const QString &text)
{
    return CFHolder<CFStringRef>(text.toCFString());
}

} // namespace

MacPreferences::MacPreferences()
{
    const CFBundleRef bundle = CFBundleGetMainBundle();
    const CFStringRef identifier = bundle ? CFBundleGetIdentifier(bundle) : nullptr;
    m_domain = identifier ? QString::fromCFString(identifier) : QString::fromLatin1(defaultDomain);
}

std::optional<QString> MacPreferences::text(const QString &key) const
{
    const CFHolder<CFPropertyListRef> value(CFPreferencesCopyAppValue(cfString(key).get(), cfString(m_domain).get()));
    if (!value || CFGetTypeID(value.get()) != CFStringGetTypeID())
        return std::nullopt;
    return QString::fromCFString(static_cast<CFStringRef>(value.get()));
}

void MacPreferences::setText(const QString &key, const QString &value)
{
    const CFHolder<CFStringRef> domain = cfString(m_domain);
    CFPreferencesSetAppValue(cfString(key).get(), cfString(value).get(), domain.get());
    CFPreferencesAppSynchronize(domain.get());
}
