#pragma once

#include "records/history_entry.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <functional>

class History;

// The journal's spreadsheet export, in three steps: `start` asks the window for a file
// (saveRequested, proposing "Quillon-journal.csv"); the window's save dialog then calls
// `finish` with the chosen file, or `cancel`, which writes nothing. A written file is shown
// in the file manager; a failure is reported with its description (exportFailed).
class JournalExport : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    // The journal to export.
    Q_PROPERTY(QObject *history READ history WRITE setHistory NOTIFY historyChanged)

public:
    explicit JournalExport(QObject *parent = nullptr);

    // The file name the save dialog proposes.
    static QString proposedFileName();

    QObject *history() const;
    void setHistory(QObject *history);

    // The folder where the save dialog proposes the file: the user's documents folder by
    // default (the home folder when there is none).
    void setProposedFolder(const QString &folder) { m_proposedFolder = folder; }
    QString proposedFolder() const;

    // Shows a written file to the user; the file manager by default.
    void setFileRevealer(std::function<void(const QString &)> revealer) { m_reveal = std::move(revealer); }

    Q_INVOKABLE void start();
    Q_INVOKABLE void finish(const QUrl &file);
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void historyChanged();
    // The window shows its save dialog proposing this file.
    void saveRequested(const QUrl &proposedFile);
    // Writing failed: the window shows the "Export impossible" alert with this text.
    void exportFailed(const QString &description);

private:
    QPointer<History> m_history;
    QString m_proposedFolder;
    std::function<void(const QString &)> m_reveal;
};
