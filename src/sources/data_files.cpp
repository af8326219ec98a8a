#include "sources/data_files.h"

#include <QFile>
#include <QXmlStreamReader>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace DataFiles {

namespace {

// Closes the descriptor however the read ends.
struct Descriptor
{
    int fd = -1;
    ~Descriptor()
    {
        if (fd >= 0)
            ::close(fd);
    }
};

} // namespace

std::variant<QByteArray, QString> read(const QString &path, qint64 largestBytes)
{
    // A file compiled into the program (the built-in sample) is no file of the system.
    if (path.startsWith(u':')) {
        QFile resource(path);
        if (!resource.open(QIODevice::ReadOnly))
            return u"fichier introuvable"_s;
        QByteArray bytes = resource.read(largestBytes + 1);
        if (bytes.size() > largestBytes)
            return u"trop volumineux (plus de %1 Mo)"_s.arg(largestBytes / (1024 * 1024));
        return bytes;
    }
    Descriptor file;
    // Non-blocking: opening a pipe with no writer, or reading a kernel file with nothing to
    // say, returns at once instead of waiting.
    file.fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file.fd < 0)
        return errno == ENOENT ? u"fichier introuvable"_s : u"illisible (accès refusé ou fichier inaccessible)"_s;
    struct stat status {};
    if (::fstat(file.fd, &status) != 0 || !S_ISREG(status.st_mode))
        return u"n’est pas un fichier ordinaire"_s;
    QByteArray bytes;
    char chunk[65536];
    for (;;) {
        const ssize_t got = ::read(file.fd, chunk, sizeof chunk);
        if (got == 0)
            return bytes;
        if (got < 0) {
            if (errno == EINTR)
                continue;
            return errno == EAGAIN ? u"ne donne rien sans attendre (ce n’est pas un fichier de données)"_s
                                   : u"illisible (erreur de lecture)"_s;
        }
        if (bytes.size() + got > largestBytes)
            return u"trop volumineux (plus de %1 Mo)"_s.arg(largestBytes / (1024 * 1024));
        bytes.append(chunk, got);
    }
}

QString jsonError(const QJsonParseError &error)
{
    QString what;
    switch (error.error) {
    case QJsonParseError::UnterminatedObject:
        what = u"objet non terminé"_s;
        break;
    case QJsonParseError::MissingNameSeparator:
        what = u"deux-points manquant après un nom"_s;
        break;
    case QJsonParseError::UnterminatedArray:
        what = u"liste non terminée"_s;
        break;
    case QJsonParseError::MissingValueSeparator:
        what = u"virgule manquante"_s;
        break;
    case QJsonParseError::IllegalValue:
        what = u"valeur inattendue"_s;
        break;
    case QJsonParseError::TerminationByNumber:
        what = u"fin du texte au milieu d’un nombre"_s;
        break;
    case QJsonParseError::IllegalNumber:
        what = u"nombre invalide"_s;
        break;
    case QJsonParseError::IllegalEscapeSequence:
        what = u"séquence d’échappement invalide"_s;
        break;
    case QJsonParseError::IllegalUTF8String:
        what = u"texte qui n’est pas de l’UTF-8"_s;
        break;
    case QJsonParseError::UnterminatedString:
        what = u"texte non terminé"_s;
        break;
    case QJsonParseError::MissingObject:
        what = u"objet ou liste attendu"_s;
        break;
    case QJsonParseError::DeepNesting:
        what = u"imbrication trop profonde"_s;
        break;
    case QJsonParseError::DocumentTooLarge:
        what = u"document trop volumineux"_s;
        break;
    case QJsonParseError::GarbageAtEnd:
        what = u"texte en trop après la fin"_s;
        break;
    case QJsonParseError::NoError:
        return {};
    }
    return u"JSON illisible à l’octet %1 : %2"_s.arg(error.offset).arg(what);
}

QString xmlError(const QXmlStreamReader &reader)
{
    QString what;
    switch (reader.error()) {
    case QXmlStreamReader::NoError:
        return {};
    case QXmlStreamReader::PrematureEndOfDocumentError:
        what = u"fin du document avant sa dernière balise"_s;
        break;
    case QXmlStreamReader::NotWellFormedError:
        what = u"document mal formé"_s;
        break;
    case QXmlStreamReader::UnexpectedElementError:
        what = u"élément inattendu"_s;
        break;
    case QXmlStreamReader::CustomError:
        what = u"contenu inattendu"_s;
        break;
    }
    return u"XML illisible ligne %1, colonne %2 : %3"_s.arg(reader.lineNumber()).arg(reader.columnNumber()).arg(what);
}

} // namespace DataFiles
