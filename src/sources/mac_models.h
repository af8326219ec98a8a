#pragma once

#include <QHash>
#include <QString>

#include <optional>

// Commercial names and years of Mac models, by model identifier, from a built-in table
// that the user's "Quillon/models.json" in the application-support folder can extend.
namespace MacModels {

struct Model
{
    QString name;
    int year = 0;

    friend bool operator==(const Model &, const Model &) = default;
};

const QHash<QString, Model> &table();
// Read once, on first use, and kept for the application's life.
const QHash<QString, Model> &overrides();

// Decodes an overrides file; nothing at all when any entry is malformed.
std::optional<QHash<QString, Model>> decodeOverrides(const QByteArray &json);
// The overrides file's path: "Quillon/models.json" in the user's application-support folder.
QString overridesPath();

std::optional<Model> model(const QString &identifier);
// "MacBook Pro 16″ M4 Pro/Max, 2024".
std::optional<QString> commercialName(const QString &identifier);

} // namespace MacModels
