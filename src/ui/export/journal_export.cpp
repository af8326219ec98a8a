#include "ui/export/journal_export.h"

#include "records/history.h"
#include "ui/export/report_export.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

JournalExport::JournalExport(QObject *parent) : QObject(parent), m_reveal(&ReportExport::revealInFileManager)
{
}

QString JournalExport::proposedFileName()
{
    return u"Quillon-journal.csv"_s;
}

QObject *JournalExport::history() const
{
    return m_history;
}

void JournalExport::setHistory(QObject *history)
{
    auto *journal = qobject_cast<History *>(history);
    if (journal == m_history)
        return;
    m_history = journal;
    Q_EMIT historyChanged();
}

QString JournalExport::proposedFolder() const
{
    if (!m_proposedFolder.isEmpty())
        return m_proposedFolder;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

void JournalExport::start()
{
    Q_EMIT saveRequested(QUrl::fromLocalFile(QDir(proposedFolder()).filePath(proposedFileName())));
}

void JournalExport::finish(const QUrl &file)
{
    if (!m_history)
        return;
    const QString path = file.isLocalFile() ? file.toLocalFile() : file.toString();
    const QString error = ReportExport::writeOwnerOnly(path, m_history->csv().toUtf8());
    if (!error.isEmpty()) {
        Q_EMIT exportFailed(error);
        return;
    }
    if (m_reveal)
        m_reveal(path);
}

void JournalExport::cancel()
{
}
