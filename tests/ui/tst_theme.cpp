#include "ui_test_support.h"

#include "ui/theme/theme.h"

#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

// A colour seen over another: `colour` at its own opacity times `opacity`, on `below`.
QColor blended(const QColor &colour, double opacity, const QColor &below)
{
    const double a = colour.alphaF() * opacity;
    return QColor::fromRgbF(float(colour.redF() * a + below.redF() * (1 - a)),
                            float(colour.greenF() * a + below.greenF() * (1 - a)),
                            float(colour.blueF() * a + below.blueF() * (1 - a)));
}

QColor background(const Theme &theme, const QString &name, const QColor &text)
{
    if (name == u"card")
        return theme.cardSurface();
    if (name == u"window")
        return theme.windowBackground();
    if (name == u"sidebar")
        return theme.sidebarBackground();
    if (name == u"selection")
        return theme.selection();
    // A pill or a banner: the text's own colour at 15 % on a card.
    return blended(text, 0.15, theme.cardSurface());
}

} // namespace

// Small text must read at 4.5:1 or more wherever the screens put it, in both appearances,
// and at 7:1 when the desktop asks for more contrast, whatever its accent colour.
class TestTheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { Theme::followDesktop(nullptr); }

    void smallTextContrast_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("on");
        for (const QString &text : { u"primary"_s, u"secondary"_s })
            for (const QString &on : { u"card"_s, u"window"_s, u"sidebar"_s })
                QTest::addRow("%s on %s", qPrintable(text), qPrintable(on)) << text << on;
        for (const QString &text : { u"accent"_s, u"green"_s, u"orange"_s, u"red"_s })
            for (const QString &on : { u"card"_s, u"window"_s, u"pill"_s })
                QTest::addRow("%s on %s", qPrintable(text), qPrintable(on)) << text << on;
        QTest::newRow("selected row") << u"onAccent"_s << u"selection"_s;
    }

    void smallTextContrast()
    {
        QFETCH(QString, text);
        QFETCH(QString, on);
        // The application's own look, then desktops with a pale accent (yellow, which reads
        // at 1.6:1 on white), and with a pink one and more contrast.
        struct Look { const char *name; std::optional<std::uint32_t> accent; bool moreContrast; double floor; };
        for (const Look &look : { Look { "own", std::nullopt, false, 4.5 }, Look { "yellow accent", 0xFFC600, false, 4.5 },
                                  Look { "pink accent, more contrast", 0xF74F9E, true, 7.0 } }) {
            UiTest::StandInDesktop desktop;
            desktop.accent = look.accent;
            desktop.moreContrast = look.moreContrast;
            Theme::followDesktop(look.accent ? &desktop : nullptr);
            for (const bool dark : { false, true }) {
                QGuiApplication::setPalette(Theme::controlsPalette(dark));
                const Theme theme;
                QCOMPARE(theme.isDark(), dark);
                const QColor colour = text == u"onAccent" ? theme.onAccent() : theme.colour(text);
                const double ratio = Theme::contrastRatio(colour, background(theme, on, colour));
                if (ratio < look.floor)
                    QFAIL(qPrintable(u"%1, %2 appearance: %3:1"_s.arg(QString::fromLatin1(look.name),
                                                                     dark ? u"dark"_s : u"light"_s).arg(ratio, 0, 'f', 2)));
            }
        }
    }

    // The accent keeps the hue the user chose, and every theme redraws when it changes.
    void accentFollowsTheDesktop()
    {
        QGuiApplication::setPalette(Theme::controlsPalette(false));
        UiTest::StandInDesktop desktop;
        desktop.accent = 0xF74F9E;
        const Theme theme;
        QCOMPARE(theme.accent(), QColor(0, 95, 200));
        QSignalSpy redraws(&theme, &Theme::appearanceChanged);
        Theme::followDesktop(&desktop);
        QCOMPARE(theme.accent().hslHue(), QColor(0xF7, 0x4F, 0x9E).hslHue());
        desktop.accent = 0x8C8C8C;
        desktop.changed();
        QCOMPARE(redraws.size(), 2);
        QCOMPARE(theme.accent().hslSaturation(), 0);
    }

    // Known pairs, worked out by hand from the sRGB luminance formula.
    void contrastRatioOfKnownPairs()
    {
        QCOMPARE(Theme::contrastRatio(Qt::black, Qt::white), 21.0);
        QCOMPARE(Theme::contrastRatio(Qt::white, Qt::white), 1.0);
        // Grey 119 (luminance 0.1845) on white: 1.05 / 0.2345.
        QVERIFY(qAbs(Theme::contrastRatio(QColor(119, 119, 119), Qt::white) - 4.48) < 0.01);
        // Black at opacity 128/255 on white is seen as grey 127 (luminance 0.2122).
        QVERIFY(qAbs(Theme::contrastRatio(QColor(0, 0, 0, 128), Qt::white) - 4.00) < 0.01);
    }
};

QUILLON_UI_TEST_MAIN(TestTheme)
#include "tst_theme.moc"
