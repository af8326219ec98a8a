#include "ui/theme/theme.h"

#include "ui/symbols/symbol_provider.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QMetaEnum>

#include <algorithm>
#include <cmath>

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
    return pick(qRgba(0, 0, 0, 150), qRgba(255, 255, 255, 140));
}
QColor Theme::tertiary() const
{
    return pick(qRgba(0, 0, 0, 66), qRgba(255, 255, 255, 64));
}
// The level colours are the system colours, deepened in the light appearance and lightened
// in the dark one until small text in them reads at 4.5:1 or more on a card, on the window
// and on a pill of their own colour.
QColor Theme::accent() const
{
    return pick(qRgb(0, 95, 200), qRgb(80, 165, 255));
}
QColor Theme::green() const
{
    return pick(qRgb(15, 115, 40), qRgb(50, 215, 75));
}
QColor Theme::orange() const
{
    return pick(qRgb(160, 70, 0), qRgb(255, 159, 10));
}
QColor Theme::red() const
{
    return pick(qRgb(190, 25, 20), qRgb(255, 110, 100));
}
// The background of a selected row, under white text.
QColor Theme::selection() const
{
    return pick(qRgb(0, 95, 200), qRgb(0, 88, 208));
}

double Theme::contrastRatio(const QColor &text, const QColor &background)
{
    const auto channel = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&channel](const QColor &colour) {
        return 0.2126 * channel(colour.redF()) + 0.7152 * channel(colour.greenF()) + 0.0722 * channel(colour.blueF());
    };
    // Translucent text is seen blended over its background.
    const double alpha = text.alphaF();
    const QColor seen = QColor::fromRgbF(float(text.redF() * alpha + background.redF() * (1 - alpha)),
                                         float(text.greenF() * alpha + background.greenF() * (1 - alpha)),
                                         float(text.blueF() * alpha + background.blueF() * (1 - alpha)));
    const double a = luminance(seen);
    const double b = luminance(background);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
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
