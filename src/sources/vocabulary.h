#pragma once

#include <QHash>
#include <QString>

#include <optional>

// The French wording of the profiler's code words ("spdisplays_yes", "Verified"...).
namespace Vocabulary {

const QHash<QString, QString> &table();

// Absent in, absent out; a known word gives its wording, an unknown word of the
// profiler's prefixes its capitalised last part, anything else comes back unchanged.
std::optional<QString> humanize(const std::optional<QString> &value);

} // namespace Vocabulary
