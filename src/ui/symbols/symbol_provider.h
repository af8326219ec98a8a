#pragma once

#include <QColor>
#include <QImage>
#include <QQuickImageProvider>
#include <QString>

// The image provider "symbol": draws a symbol name at the requested size in one colour, with
// the desktop's own symbol images where the theme follows a desktop that has them (macOS),
// and otherwise, or for a name that desktop lacks, the SVG mapped to the name (SymbolTable),
// tinted. Image sources read
// "image://symbol/<AARRGGBB>/<name>", as `source` writes them.
class SymbolProvider : public QQuickImageProvider
{
public:
    static constexpr char16_t providerId[] = u"symbol";

    SymbolProvider();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

    // The image source of `name` drawn in `colour`.
    static QString source(const QString &name, const QColor &colour);

    // The drawing of `name` at `size` pixels in `colour`; a transparent image for a name
    // without a mapping.
    static QImage render(const QString &name, const QSize &size, const QColor &colour);

private:
    static QImage renderFromDesktop(const QString &name, const QSize &size, const QColor &colour);
};
