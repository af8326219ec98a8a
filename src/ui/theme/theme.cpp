#include "ui/theme/theme.h"

#include "sources/desktop_look.h"
#include "ui/symbols/symbol_provider.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QMetaEnum>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

DesktopLook *followedDesktop = nullptr;
// Every theme alive, told when the desktop's look changes (main thread only).
QList<Theme *> &themes()
{
    static QList<Theme *> alive;
    return alive;
}

// Small text in a colour seen over a pill of that colour at 15 % on a card.
QColor pillUnder(const QColor &text, const QColor &card)
{
    const double a = 0.15 * text.alphaF();
    return QColor::fromRgbF(float(text.redF() * a + card.redF() * (1 - a)), float(text.greenF() * a + card.greenF() * (1 - a)),
                            float(text.blueF() * a + card.blueF() * (1 - a)));
}

} // namespace

Theme::Theme(QObject *parent) : QObject(parent), m_dark(isDarkPalette(QGuiApplication::palette()))
{
    if (QCoreApplication *application = QCoreApplication::instance())
        application->installEventFilter(this);
    themes().append(this);
}

Theme::~Theme()
{
    themes().removeOne(this);
}

void Theme::followDesktop(DesktopLook *desktop)
{
    followedDesktop = desktop;
    if (desktop)
        desktop->watch([] {
            for (Theme *theme : std::as_const(themes()))
                theme->redraw();
        });
    for (Theme *theme : std::as_const(themes()))
        theme->redraw();
}

void Theme::redraw()
{
    m_readable.clear();
    Q_EMIT appearanceChanged();
}

DesktopLook *Theme::desktop()
{
    return followedDesktop;
}

bool Theme::increasesContrast() const
{
    return followedDesktop && followedDesktop->increasesContrast();
}

double Theme::textContrastFloor() const
{
    return increasesContrast() ? 7.0 : 4.5;
}

std::optional<QColor> Theme::desktopAccent() const
{
    if (!followedDesktop)
        return std::nullopt;
    const std::optional<std::uint32_t> rgb = followedDesktop->accentColour();
    return rgb ? std::optional(QColor::fromRgb(QRgb(*rgb))) : std::nullopt;
}

QColor Theme::readable(const QColor &colour) const
{
    if (const auto made = m_readable.constFind(colour.rgba()); made != m_readable.cend())
        return *made;
    const double floor = textContrastFloor();
    const auto reads = [&](const QColor &text) {
        return contrastRatio(text, cardSurface()) >= floor && contrastRatio(text, windowBackground()) >= floor
            && contrastRatio(text, pillUnder(text, cardSurface())) >= floor;
    };
    if (reads(colour))
        return m_readable.insert(colour.rgba(), colour).value();
    QColor result = colour.toHsl();
    // Lightness moves one step at a time, towards black or white, keeping the hue.
    for (int step = 0; step < 255 && !reads(result); ++step) {
        result.setHsl(result.hslHue(), result.hslSaturation(), std::clamp(result.lightness() + (m_dark ? 1 : -1), 0, 255));
    }
    return m_readable.insert(colour.rgba(), result.toRgb()).value();
}

QColor Theme::label(int alpha) const
{
    QColor colour = m_dark ? QColor(Qt::white) : QColor(Qt::black);
    colour.setAlpha(alpha);
    if (!increasesContrast())
        return colour;
    const double floor = textContrastFloor();
    while (colour.alphaF() < 1.0
           && (contrastRatio(colour, cardSurface()) < floor || contrastRatio(colour, windowBackground()) < floor
               || contrastRatio(colour, sidebarBackground()) < floor))
        colour.setAlpha(std::min(255, colour.alpha() + 5));
    return colour;
}

bool Theme::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == QCoreApplication::instance() && event->type() == QEvent::ApplicationPaletteChange) {
        const bool dark = isDarkPalette(QGuiApplication::palette());
        if (dark != m_dark) {
            m_dark = dark;
            redraw();
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
    return label(217);
}
QColor Theme::secondary() const
{
    return label(m_dark ? 140 : 150);
}
QColor Theme::tertiary() const
{
    return label(m_dark ? 64 : 66);
}
// The level colours start from the system colours, already deepened in the light appearance
// and lightened in the dark one so that they read at 4.5:1.
QColor Theme::accent() const
{
    return readable(desktopAccent().value_or(pick(qRgb(0, 95, 200), qRgb(80, 165, 255))));
}
QColor Theme::green() const
{
    return readable(pick(qRgb(15, 115, 40), qRgb(50, 215, 75)));
}
QColor Theme::orange() const
{
    return readable(pick(qRgb(160, 70, 0), qRgb(255, 159, 10)));
}
QColor Theme::red() const
{
    return readable(pick(qRgb(190, 25, 20), qRgb(255, 110, 100)));
}
// The background of a selected row, under white text: the accent, deepened in both
// appearances until white reads on it at the floor.
QColor Theme::selection() const
{
    const QColor base = desktopAccent().value_or(pick(qRgb(0, 95, 200), qRgb(0, 88, 208)));
    if (contrastRatio(onAccent(), base) >= textContrastFloor())
        return base;
    QColor result = base.toHsl();
    while (result.lightness() > 0 && contrastRatio(onAccent(), result) < textContrastFloor())
        result.setHsl(result.hslHue(), std::max(0, result.hslSaturation()), result.lightness() - 1);
    return result.toRgb();
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
// Lines are stronger when the desktop asks for more contrast.
QColor Theme::hairline() const
{
    return faded(primary(), increasesContrast() ? 0.3 : 0.08);
}
QColor Theme::separator() const
{
    return faded(primary(), increasesContrast() ? 0.35 : 0.12);
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
