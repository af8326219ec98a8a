#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonDocument>
#include <QMutex>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <variant>

// A capture folder: the raw answers of one Mac at one moment (format 1). Every file in it
// is untrusted: reading never crashes and names the file that was wrong.
class CaptureFolder
{
public:
    // Opens the folder at `path` (a resource path such as ":/captures/sample" works too).
    // Fails with a French sentence naming the folder when it is not a capture.
    static std::variant<std::shared_ptr<CaptureFolder>, QString> open(const QString &path);

    QString path() const { return m_path; }
    QDateTime capturedAt() const { return m_capturedAt; }
    QString description() const { return m_description; }

    // The bytes of a file inside the folder, or nothing when it is absent. A file that
    // exists but cannot be read, or is too large, is noted as a problem and reads as absent.
    std::optional<QByteArray> read(const QString &relativePath) const;
    // A JSON file's document, or nothing when it is absent or malformed (malformed is noted).
    std::optional<QJsonDocument> readJson(const QString &relativePath) const;

    // Notes a problem with one of the folder's files, once per file.
    void noteProblem(const QString &relativePath, const QString &what) const;
    // Problems met so far, each a French line naming the file.
    QStringList problems() const;

    // Files larger than this are refused.
    static constexpr qint64 maximumFileSize = 64 * 1024 * 1024;

private:
    CaptureFolder() = default;

    QString m_path;
    QDateTime m_capturedAt;
    QString m_description;
    mutable QMutex m_problemsMutex;
    mutable QStringList m_problems;
};

// A file name taken from a data type, class or registry name, or nothing when the name
// could escape the folder or is not a plain name.
std::optional<QString> safeFileStem(const QString &name);
