#include "platform/capture/capture_folder.h"

#include "sources/data_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

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

    const QString headerPath = folder->m_path + u"/capture.json"_s;
    if (!QFileInfo::exists(headerPath))
        return notACapture(path, u"capture.json manque"_s);
    const std::variant<QByteArray, QString> bytes = DataFiles::read(headerPath, maximumFileSize);
    if (const QString *why = std::get_if<QString>(&bytes))
        return notACapture(path, u"capture.json "_s + *why);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(std::get<QByteArray>(bytes), &error);
    if (error.error != QJsonParseError::NoError)
        return notACapture(path, u"capture.json : "_s + DataFiles::jsonError(error));
    if (!document.isObject())
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
    const QString path = m_path + u'/' + relativePath;
    if (!QFileInfo::exists(path) && !QFileInfo(path).isSymLink())
        return std::nullopt;
    std::variant<QByteArray, QString> bytes = DataFiles::read(path, maximumFileSize);
    if (const QString *why = std::get_if<QString>(&bytes)) {
        noteProblem(relativePath, *why);
        return std::nullopt;
    }
    return std::get<QByteArray>(std::move(bytes));
}

std::optional<QJsonDocument> CaptureFolder::readJson(const QString &relativePath) const
{
    const std::optional<QByteArray> bytes = read(relativePath);
    if (!bytes)
        return std::nullopt;
    QJsonParseError error;
    QJsonDocument document = QJsonDocument::fromJson(*bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        noteProblem(relativePath, DataFiles::jsonError(error));
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
