#include "platform/capture/capture_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

// Only regular files are read: opening a named pipe blocks, and a device such as
// /dev/zero never ends (QFileInfo follows symbolic links).
bool isRegularFile(const QString &path)
{
    return QFileInfo(path).isFile();
}

QString notACapture(const QString &path, const QString &why)
{
    return u"« %1 » n’est pas une capture lisible : %2."_s.arg(QDir::toNativeSeparators(path), why);
}

} // namespace

std::variant<std::shared_ptr<CaptureFolder>, QString> CaptureFolder::open(const QString &path)
{
    if (!QFileInfo(path).isDir())
        return notACapture(path, u"dossier introuvable"_s);
    std::shared_ptr<CaptureFolder> folder(new CaptureFolder);
    folder->m_path = QDir::cleanPath(path);

    QFile file(folder->m_path + u"/capture.json"_s);
    if (!isRegularFile(file.fileName()) || !file.open(QIODevice::ReadOnly))
        return notACapture(path, u"capture.json manque"_s);
    if (file.size() > maximumFileSize)
        return notACapture(path, u"capture.json est trop volumineux"_s);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return notACapture(path, u"capture.json n’est pas un objet JSON"_s);
    const QJsonObject header = document.object();
    if (header.value(u"format"_s).toDouble() != 1)
        return notACapture(path, u"format inconnu (seul le format 1 est lu)"_s);
    folder->m_capturedAt = QDateTime::fromString(header.value(u"capturedAt"_s).toString(), Qt::ISODate);
    if (!folder->m_capturedAt.isValid())
        return notACapture(path, u"date « capturedAt » absente ou invalide"_s);
    folder->m_capturedAt = folder->m_capturedAt.toUTC();
    folder->m_description = header.value(u"description"_s).toString();
    return folder;
}

std::optional<QByteArray> CaptureFolder::read(const QString &relativePath) const
{
    QFile file(m_path + u'/' + relativePath);
    if (!file.exists())
        return std::nullopt;
    if (!isRegularFile(file.fileName())) {
        noteProblem(relativePath, u"n’est pas un fichier ordinaire"_s);
        return std::nullopt;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        noteProblem(relativePath, u"illisible"_s);
        return std::nullopt;
    }
    if (file.size() > maximumFileSize) {
        noteProblem(relativePath, u"trop volumineux"_s);
        return std::nullopt;
    }
    return file.readAll();
}

std::optional<QJsonDocument> CaptureFolder::readJson(const QString &relativePath) const
{
    const std::optional<QByteArray> bytes = read(relativePath);
    if (!bytes)
        return std::nullopt;
    QJsonParseError error;
    QJsonDocument document = QJsonDocument::fromJson(*bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        noteProblem(relativePath, u"JSON illisible (%1)"_s.arg(error.errorString()));
        return std::nullopt;
    }
    return document;
}

void CaptureFolder::noteProblem(const QString &relativePath, const QString &what) const
{
    const QString line = u"%1 : %2"_s.arg(relativePath, what);
    QMutexLocker lock(&m_problemsMutex);
    if (!m_problems.contains(line))
        m_problems.append(line);
}

QStringList CaptureFolder::problems() const
{
    QMutexLocker lock(&m_problemsMutex);
    return m_problems;
}

std::optional<QString> safeFileStem(const QString &name)
{
    if (name.isEmpty() || name.size() > 200 || name.startsWith(u'.'))
        return std::nullopt;
    for (const QChar c : name) {
        const bool plain = c.isLetterOrNumber() || c == u'_' || c == u'-' || c == u'.' || c == u' ' || c == u',';
        if (!plain || c.unicode() > 0x7E)
            return std::nullopt;
    }
    return name;
}
