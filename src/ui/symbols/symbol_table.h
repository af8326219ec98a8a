#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The icons of the application. Screens and records name icons by system symbol names
// ("battery.100.bolt", "checkmark.circle.fill"…); this table gives, for each name, the
// bundled SVG drawn for it. The SVGs are compiled into the application on every platform:
// most come from GNOME's Adwaita symbolic icons, the rest were drawn for Quillon in the
// same 16 × 16 grid. All are single-colour shapes that the symbol provider tints.
namespace SymbolTable {

// The resource path of the SVG drawn for `name`, or nothing for a name without a mapping.
std::optional<QString> resourcePath(const QString &name);

// Every symbol name that has a mapping.
QStringList names();

} // namespace SymbolTable
