#pragma once

#include <QString>

// Writing an exported text and showing it to the user.
namespace ReportExport {

// Writes `text` to `filePath` as UTF-8, atomically (a temporary file renamed into place).
// Returns the platform's description of the failure, or an empty text on success.
QString writeText(const QString &filePath, const QString &text);

// Shows the file selected in the platform's file manager (its folder where the file
// manager cannot select a file).
void revealInFileManager(const QString &filePath);

} // namespace ReportExport
