#pragma once

#include <QByteArray>
#include <QJsonParseError>
#include <QString>

#include <variant>

class QXmlStreamReader;

// Reading the data files Quillon is handed (capture files, the model list of the workshop):
// untrusted, and possibly links to something that is no file at all.
namespace DataFiles {

// The bytes of the file at `path`, at most `largestBytes` of them, or why it was not read,
// in French. Links are followed; anything but a regular file is refused, and nothing ever
// waits: a pipe, a device or a kernel file that has nothing to give is not read, and a file
// that claims to be small but never ends stops at the limit.
std::variant<QByteArray, QString> read(const QString &path, qint64 largestBytes);

// A JSON parse error in French, with the byte where it was found:
// "JSON illisible à l’octet 12 : virgule manquante".
QString jsonError(const QJsonParseError &error);
// The same for an XML reader that stopped: "XML illisible ligne 3, colonne 8 : …".
QString xmlError(const QXmlStreamReader &reader);

} // namespace DataFiles
