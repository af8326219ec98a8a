#include "ui/export/report_export.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace ReportExport {

QString writeOwnerOnly(const QString &filePath, const QByteArray &bytes)
{
    constexpr QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    QSaveFile file(filePath);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    // The temporary file gets the owner-only rights before its first byte.
    file.setPermissions(ownerOnly);
    if (file.write(bytes) != bytes.size()) {
        const QString error = file.errorString();
        file.cancelWriting();
        return error;
    }
    if (!file.commit())
        return file.errorString();
    QFile::setPermissions(filePath, ownerOnly);
    return QString();
}

QString writeText(const QString &filePath, const QString &text)
{
    return writeOwnerOnly(filePath, text.toUtf8());
}

void revealInFileManager(const QString &filePath)
{
    const QString absolute = QFileInfo(filePath).absoluteFilePath();
#if defined(Q_OS_MACOS)
    if (QProcess::startDetached(u"/usr/bin/open"_s, { u"-R"_s, absolute }))
        return;
#elif defined(Q_OS_WIN)
    if (QProcess::startDetached(u"explorer.exe"_s, { u"/select,"_s + QDir::toNativeSeparators(absolute) }))
        return;
#else
    // The freedesktop file-manager interface selects the file where a file manager offers
    // it; when no file manager answers, the folder is opened instead.
    const QString dbusSend = QStandardPaths::findExecutable(u"dbus-send"_s);
    if (!dbusSend.isEmpty() && qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) {
        auto *process = new QProcess(QCoreApplication::instance());
        QObject::connect(
            process, &QProcess::finished, process, [process, absolute](int exitCode, QProcess::ExitStatus status) {
                if (status != QProcess::NormalExit || exitCode != 0)
                    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(absolute).absolutePath()));
                process->deleteLater();
            });
        process->start(dbusSend,
            { u"--session"_s, u"--print-reply"_s, u"--reply-timeout=5000"_s, u"--dest=org.freedesktop.FileManager1"_s,
                u"/org/freedesktop/FileManager1"_s, u"org.freedesktop.FileManager1.ShowItems"_s,
                u"array:string:"_s + QUrl::fromLocalFile(absolute).toString(), u"string:"_s });
        return;
    }
#endif
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(absolute).absolutePath()));
}

} // namespace ReportExport
