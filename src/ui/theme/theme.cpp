#include "ui/theme/theme.h"

#include "ui/symbols/symbol_provider.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QMetaEnum>

using namespace Qt::StringLiterals;

Theme::Theme(QObject *parent) : QObject(parent), m_dark(isDarkPalette(QGuiApplication::palette()))
{
    if (QCoreApplication *application = QCoreApplication::instance())
        application->installEventFilter(this);
}

bool Theme::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == QCoreApplication::instance() && event->type() == QEvent::ApplicationPaletteChange) {
        const bool dark = isDarkPalette(QGuiApplication::palette());
        if (dark != m_dark) {
            m_dark = dark;
            Q_EMIT appearanceChanged();
        }
    }
    return QObject::eventFilter(watched, event);
}

bool Theme::isDarkPalette(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < 128;
}

// Label colours are black or white at the platform's opacities.
QColor Theme::primary() const
{
    return pick(qRgba(0, 0, 0, 217), qRgba(255, 255, 255, 217));
}
QColor Theme::secondary() const
{
    return pick(qRgba(0, 0, 0, 140), qRgba(255, 255, 255, 140));
}
QColor Theme::tertiary() const
{
    return pick(qRgba(0, 0, 0, 66), qRgba(255, 255, 255, 64));
}
// The level colours are the system colours, a shade deeper in the light appearance so that
// small coloured text on white stays readable.
QColor Theme::accent() const
{
    return pick(qRgb(0, 110, 230), qRgb(10, 132, 255));
}
QColor Theme::green() const
{
    return pick(qRgb(30, 158, 58), qRgb(50, 215, 75));
}
QColor Theme::orange() const
{
    return pick(qRgb(235, 125, 0), qRgb(255, 159, 10));
}
QColor Theme::red() const
{
    return pick(qRgb(224, 48, 40), qRgb(255, 69, 58));
}
QColor Theme::cardSurface() const
{
    return pick(qRgb(255, 255, 255), qRgb(30, 30, 30));
}
QColor Theme::hairline() const
{
    return faded(primary(), 0.08);
}
QColor Theme::separator() const
{
    return faded(primary(), 0.12);
}
QColor Theme::windowBackground() const
{
    return pick(qRgb(242, 242, 244), qRgb(40, 40, 42));
}
QColor Theme::sidebarBackground() const
{
    return pick(qRgb(229, 229, 232), qRgb(50, 50, 53));
}

QColor Theme::colour(const QString &role) const
{
    if (role == u"secondary")
        return secondary();
    if (role == u"tertiary")
        return tertiary();
    if (role == u"accent" || role == u"tint")
        return accent();
    if (role == u"green")
        return green();
    if (role == u"orange")
        return orange();
    if (role == u"red")
        return red();
    return primary();
}

QColor Theme::faded(const QColor &colour, double opacity) const
{
    QColor result = colour;
    result.setAlphaF(float(qBound(0.0, opacity, 1.0)));
    return result;
}

QString Theme::symbolSource(const QString &name, const QColor &colour) const
{
    return SymbolProvider::source(name, colour);
}

QVariantMap Theme::controlColours() const
{
    // Role names as QML writes them: "window", "windowText", "toolTipBase"…
    const QPalette palette = controlsPalette(m_dark);
    const QMetaEnum roles = QMetaEnum::fromType<QPalette::ColorRole>();
    QVariantMap colours;
    for (int i = 0; i < roles.keyCount(); ++i) {
        const auto role = QPalette::ColorRole(roles.value(i));
        if (role >= QPalette::NColorRoles)
            continue;
        QString name = QString::fromLatin1(roles.key(i));
        name[0] = name[0].toLower();
        colours.insert(name, palette.color(role));
    }
    return colours;
}

QPalette Theme::controlsPalette(bool dark)
{
    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, QRgb light, QRgb darkColour, bool isDark) {
        palette.setColor(role, QColor::fromRgba(isDark ? darkColour : light));
    };
    set(QPalette::Window, qRgb(242, 242, 244), qRgb(40, 40, 42), dark);
    set(QPalette::WindowText, qRgb(30, 30, 30), qRgb(235, 235, 235), dark);
    set(QPalette::Base, qRgb(255, 255, 255), qRgb(30, 30, 30), dark);
    set(QPalette::AlternateBase, qRgb(245, 245, 245), qRgb(45, 45, 45), dark);
    set(QPalette::Text, qRgb(30, 30, 30), qRgb(235, 235, 235), dark);
    set(QPalette::PlaceholderText, qRgb(140, 140, 140), qRgb(130, 130, 130), dark);
    set(QPalette::Button, qRgb(250, 250, 250), qRgb(62, 62, 65), dark);
    set(QPalette::ButtonText, qRgb(30, 30, 30), qRgb(235, 235, 235), dark);
    set(QPalette::Highlight, qRgb(0, 110, 230), qRgb(10, 132, 255), dark);
    set(QPalette::HighlightedText, qRgb(255, 255, 255), qRgb(255, 255, 255), dark);
    set(QPalette::ToolTipBase, qRgb(255, 255, 240), qRgb(60, 60, 60), dark);
    set(QPalette::ToolTipText, qRgb(30, 30, 30), qRgb(235, 235, 235), dark);
    set(QPalette::Link, qRgb(0, 110, 230), qRgb(10, 132, 255), dark);
    set(QPalette::Light, qRgb(255, 255, 255), qRgb(80, 80, 84), dark);
    set(QPalette::Midlight, qRgb(230, 230, 230), qRgb(70, 70, 74), dark);
    set(QPalette::Mid, qRgb(190, 190, 190), qRgb(55, 55, 58), dark);
    set(QPalette::Dark, qRgb(160, 160, 160), qRgb(25, 25, 25), dark);
    set(QPalette::Shadow, qRgb(120, 120, 120), qRgb(0, 0, 0), dark);
    palette.setColor(QPalette::Disabled, QPalette::Text, dark ? QColor(120, 120, 120) : QColor(160, 160, 160));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, dark ? QColor(120, 120, 120) : QColor(160, 160, 160));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, dark ? QColor(120, 120, 120) : QColor(160, 160, 160));
    return palette;
}
