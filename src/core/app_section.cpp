#include "core/app_section.h"

#include "core/texts.h"

#include <QHashFunctions>

#include <array>

namespace {

struct SectionText
{
    AppSection section;
    const char *rawValue;
    const char *title;
    bool localizable;
    const char *symbol;
};

// "USB", "Thunderbolt", "Bluetooth" and "Audio" are brand and technical words, never translated.
constexpr std::array<SectionText, 13> sectionTexts{{
    {AppSection::overview, "overview", "Vue d'ensemble", true, "square.grid.2x2"},
    {AppSection::diagnostics, "diagnostics", "Bilan", true, "checklist"},
    {AppSection::history, "history", "Journal", true, "clock.arrow.circlepath"},
    {AppSection::hardware, "hardware", "Matériel", true, "cpu"},
    {AppSection::battery, "battery", "Batterie", true, "battery.100"},
    {AppSection::storage, "storage", "Stockage", true, "internaldrive"},
    {AppSection::displays, "displays", "Écrans", true, "display"},
    {AppSection::usb, "usb", "USB", false, "cable.connector"},
    {AppSection::thunderbolt, "thunderbolt", "Thunderbolt", false, "bolt.horizontal"},
    {AppSection::bluetooth, "bluetooth", "Bluetooth", false, "dot.radiowaves.right"},
    {AppSection::network, "network", "Réseau", true, "network"},
    {AppSection::audio, "audio", "Audio", false, "speaker.wave.2"},
    {AppSection::camera, "camera", "Caméra", true, "camera"},
}};

const SectionText &textsOf(AppSection section)
{
    return sectionTexts[size_t(section)];
}

} // namespace

namespace AppSections {

QList<AppSection> allCases()
{
    QList<AppSection> all;
    for (const SectionText &texts : sectionTexts)
        all.append(texts.section);
    return all;
}

QList<AppSection> dataSections()
{
    return {AppSection::hardware, AppSection::battery, AppSection::storage,   AppSection::displays,
            AppSection::usb,      AppSection::thunderbolt, AppSection::bluetooth, AppSection::network,
            AppSection::audio,    AppSection::camera};
}

bool isDeviceSection(AppSection section)
{
    switch (section) {
    case AppSection::displays:
    case AppSection::usb:
    case AppSection::thunderbolt:
    case AppSection::bluetooth:
    case AppSection::network:
    case AppSection::audio:
    case AppSection::camera:
        return true;
    default:
        return false;
    }
}

QString rawValue(AppSection section)
{
    return QString::fromLatin1(textsOf(section).rawValue);
}

std::optional<AppSection> fromRawValue(const QString &rawValue)
{
    for (const SectionText &texts : sectionTexts) {
        if (rawValue == QLatin1StringView(texts.rawValue))
            return texts.section;
    }
    return std::nullopt;
}

QString title(AppSection section)
{
    const SectionText &texts = textsOf(section);
    return texts.localizable ? localized(texts.title) : QString::fromUtf8(texts.title);
}

QString symbol(AppSection section)
{
    return QString::fromLatin1(textsOf(section).symbol);
}

QString emptyMessage(AppSection section)
{
    switch (section) {
    case AppSection::usb:
        return localized("Aucun périphérique USB branché.");
    case AppSection::thunderbolt:
        return localized("Aucun appareil Thunderbolt détecté.");
    case AppSection::bluetooth:
        return localized("Aucun appareil Bluetooth appairé.");
    case AppSection::camera:
        return localized("Aucune caméra détectée.");
    default:
        return localized("Aucune donnée disponible.");
    }
}

} // namespace AppSections

size_t qHash(AppSection section, size_t seed)
{
    return qHash(int(section), seed);
}
