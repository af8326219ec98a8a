#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

// The application's name, version and web pages, as the brand block and the About window
// show them.
class AppIdentity : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    // The display name, else the bundle name, else "Quillon".
    Q_PROPERTY(QString name READ name CONSTANT)
    // "Version " followed by the version label.
    Q_PROPERTY(QString versionText READ versionText CONSTANT)
    // Whether the platform gives an application icon image (else the icon view draws its tile).
    Q_PROPERTY(bool hasIconImage READ hasIconImage CONSTANT)
    // The product's web page and its privacy policy.
    Q_PROPERTY(QUrl webPage READ webPage CONSTANT)
    Q_PROPERTY(QUrl privacyPage READ privacyPage CONSTANT)

public:
    explicit AppIdentity(QObject *parent = nullptr);

    QString name() const;
    QString versionText() const;
    bool hasIconImage() const;
    QUrl webPage() const;
    QUrl privacyPage() const;

    // Opens a web page in the user's browser.
    Q_INVOKABLE void open(const QUrl &page) const;
};
