#pragma once

#include <QColor>
#include <QHash>
#include <QObject>
#include <QPalette>
#include <QString>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <optional>

class DesktopLook;

// Colours by role and the type ramp, in one place. The roles are the ones the screens
// name: primary, secondary and tertiary label colours, the accent (tint), the three level
// colours, the card surface and the hairline. Light and dark values follow the macOS
// palette; which one applies follows the application palette (a dark window colour means
// the dark appearance). On a desktop that has a look of its own (macOS), the accent is the
// user's accent colour and "Increase contrast" raises the floor of every text colour from
// 4.5:1 to 7:1 and strengthens the lines; every colour of text is deepened (light) or
// lightened (dark) until it reads at the floor. Sizes are in points, drawn as logical pixels.
class Theme : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    // True when the dark appearance applies.
    Q_PROPERTY(bool isDark READ isDark NOTIFY appearanceChanged)
    // Text colours.
    Q_PROPERTY(QColor primary READ primary NOTIFY appearanceChanged)
    Q_PROPERTY(QColor secondary READ secondary NOTIFY appearanceChanged)
    Q_PROPERTY(QColor tertiary READ tertiary NOTIFY appearanceChanged)
    // The application's accent colour (the tint).
    Q_PROPERTY(QColor accent READ accent NOTIFY appearanceChanged)
    Q_PROPERTY(QColor green READ green NOTIFY appearanceChanged)
    Q_PROPERTY(QColor orange READ orange NOTIFY appearanceChanged)
    Q_PROPERTY(QColor red READ red NOTIFY appearanceChanged)
    // Background of cards (the platform's control background).
    Q_PROPERTY(QColor cardSurface READ cardSurface NOTIFY appearanceChanged)
    // Card borders: the primary colour at 8 % opacity.
    Q_PROPERTY(QColor hairline READ hairline NOTIFY appearanceChanged)
    // Divider lines.
    Q_PROPERTY(QColor separator READ separator NOTIFY appearanceChanged)
    // Backgrounds of the detail area and of the sidebar.
    Q_PROPERTY(QColor windowBackground READ windowBackground NOTIFY appearanceChanged)
    Q_PROPERTY(QColor sidebarBackground READ sidebarBackground NOTIFY appearanceChanged)
    // Text drawn on the accent colour (the selected sidebar row).
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY appearanceChanged)
    // The background of a selected row, under `onAccent` text.
    Q_PROPERTY(QColor selection READ selection NOTIFY appearanceChanged)
    // The palette of the standard controls for the current appearance, by role name
    // ("window", "base", "buttonText"…); see controlsPalette.
    Q_PROPERTY(QVariantMap controlColours READ controlColours NOTIFY appearanceChanged)

    // The type ramp, in points.
    Q_PROPERTY(int body READ body CONSTANT)
    Q_PROPERTY(int headline READ headline CONSTANT)
    Q_PROPERTY(int callout READ callout CONSTANT)
    Q_PROPERTY(int subheadline READ subheadline CONSTANT)
    Q_PROPERTY(int footnote READ footnote CONSTANT)
    Q_PROPERTY(int caption READ caption CONSTANT)
    Q_PROPERTY(int caption2 READ caption2 CONSTANT)

public:
    explicit Theme(QObject *parent = nullptr);
    ~Theme() override;

    // The desktop whose accent colour and contrast every theme follows, and whose symbol
    // drawings the symbol provider uses; null (the default) for the application's own look.
    // Set on the main thread before the first window opens.
    static void followDesktop(DesktopLook *desktop);
    static DesktopLook *desktop();

    // The lowest contrast ratio of text: 4.5, or 7 when the desktop asks for more contrast.
    double textContrastFloor() const;

    bool isDark() const { return m_dark; }
    QColor primary() const;
    QColor secondary() const;
    QColor tertiary() const;
    QColor accent() const;
    QColor green() const;
    QColor orange() const;
    QColor red() const;
    QColor cardSurface() const;
    QColor hairline() const;
    QColor separator() const;
    QColor windowBackground() const;
    QColor sidebarBackground() const;
    QColor onAccent() const { return QColor(Qt::white); }
    QColor selection() const;

    // The contrast ratio of text in `text` (blended by its opacity) over an opaque
    // `background`, from 1 (none) to 21 (black on white).
    static double contrastRatio(const QColor &text, const QColor &background);

    int body() const { return 13; }
    int headline() const { return 13; }
    int callout() const { return 12; }
    int subheadline() const { return 11; }
    int footnote() const { return 10; }
    int caption() const { return 10; }
    int caption2() const { return 10; }

    // The colour of a role named by the presentation helpers: "primary", "secondary",
    // "tertiary", "accent" (or "tint"), "green", "orange", "red". An unknown role reads as
    // primary.
    Q_INVOKABLE QColor colour(const QString &role) const;
    // `colour` with its opacity replaced by `opacity` ("the green at 15 % opacity").
    Q_INVOKABLE QColor faded(const QColor &colour, double opacity) const;
    // The image source of a symbol drawn in `colour` (see SymbolProvider).
    Q_INVOKABLE QString symbolSource(const QString &name, const QColor &colour) const;

    QVariantMap controlColours() const;

    // A Qt Quick Controls palette matching the light or dark appearance, for the
    // standard controls (text fields, buttons, menus) of the Fusion and Basic styles.
    static QPalette controlsPalette(bool dark);
    // Whether a palette reads as dark.
    static bool isDarkPalette(const QPalette &palette);

Q_SIGNALS:
    void appearanceChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QColor pick(QRgb light, QRgb dark) const { return QColor::fromRgba(m_dark ? dark : light); }
    // `colour` deepened in the light appearance, lightened in the dark one, until small text in
    // it reads at the floor on cards, on the window and on a pill of its own colour.
    QColor readable(const QColor &colour) const;
    // A label colour (black or white at opacity `alpha` of 255), more opaque when the desktop asks for
    // more contrast, until it reads at the floor on cards, the window and the sidebar.
    QColor label(int alpha) const;
    bool increasesContrast() const;
    std::optional<QColor> desktopAccent() const;

    void redraw();

    bool m_dark = false;
    // The colours `readable` made, by the colour it started from, until the look changes: a
    // pale accent takes dozens of steps, and every binding of every screen asks.
    mutable QHash<QRgb, QColor> m_readable;
};
