#include "ui/app/app_identity.h"

#include "collectors/app_info.h"
#include "records/report_builder.h"
#include "ui/presentation/presentation.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QIcon>

using namespace Qt::StringLiterals;

AppIdentity::AppIdentity(QObject *parent) : QObject(parent)
{
}

QString AppIdentity::name() const
{
    return Presentation::applicationName([](const QString &key) { return AppInfo::string(key); });
}

QString AppIdentity::versionText() const
{
    return Presentation::versionText(AppInfo::versionLabel());
}

bool AppIdentity::hasIconImage() const
{
    return !QGuiApplication::windowIcon().isNull();
}

QUrl AppIdentity::webPage() const
{
    return QUrl(ReportBuilder::webAddress());
}

QUrl AppIdentity::privacyPage() const
{
    return QUrl(ReportBuilder::webAddress() + u"/confidentialite"_s);
}

void AppIdentity::open(const QUrl &page) const
{
    QDesktopServices::openUrl(page);
}
