#pragma once

#include <QByteArray>
#include <QString>

// Writing an exported text and showing it to the user.
namespace ReportExport {

// Writes `bytes` to `filePath` atomically (a temporary file renamed into place), readable by
// its owner only: exports hold serial numbers. Returns the platform's description of the
// failure, or an empty text on success.
QString writeOwnerOnly(const QString &filePath, const QByteArray &bytes);
// The same for a text, in UTF-8.
QString writeText(const QString &filePath, const QString &text);

// Shows the file selected in the platform's file manager (its folder where the file
// manager cannot select a file).
void revealInFileManager(const QString &filePath);

} // namespace ReportExport
