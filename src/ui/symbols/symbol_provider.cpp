#include "ui/symbols/symbol_provider.h"

#include "sources/desktop_look.h"
#include "ui/symbols/symbol_table.h"
#include "ui/theme/theme.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QtDebug>

using namespace Qt::StringLiterals;

namespace {

// Icons are drawn in a 16-point grid; without a requested size they are drawn at twice that.
constexpr int defaultPixels = 32;

} // namespace

SymbolProvider::SymbolProvider() : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QString SymbolProvider::source(const QString &name, const QColor &colour)
{
    const QString argb = colour.name(QColor::HexArgb).mid(1);
    return u"image://"_s + QString::fromUtf16(providerId) + u'/' + argb + u'/' + name;
}

QImage SymbolProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const qsizetype slash = id.indexOf(u'/');
    const QColor colour = slash > 0 ? QColor(u'#' + id.left(slash)) : QColor(Qt::black);
    const QString name = slash > 0 ? id.mid(slash + 1) : id;
    QSize pixels = requestedSize;
    if (pixels.width() <= 0 && pixels.height() <= 0)
        pixels = QSize(defaultPixels, defaultPixels);
    else if (pixels.width() <= 0)
        pixels.setWidth(pixels.height());
    else if (pixels.height() <= 0)
        pixels.setHeight(pixels.width());
    const QImage image = render(name, pixels, colour.isValid() ? colour : QColor(Qt::black));
    if (size)
        *size = image.size();
    return image;
}

// The desktop's own drawing of the symbol, centred in the requested box; a null image when
// there is no desktop look or it does not know the name.
QImage SymbolProvider::renderFromDesktop(const QString &name, const QSize &size, const QColor &colour)
{
    const DesktopLook *desktop = Theme::desktop();
    const int side = qMin(size.width(), size.height());
    const std::optional<DesktopLook::Drawing> drawing = desktop ? desktop->drawSymbol(name, side, colour.rgba()) : std::nullopt;
    if (!drawing || drawing->width <= 0 || drawing->height <= 0
        || drawing->rgba.size() != std::size_t(drawing->width) * std::size_t(drawing->height) * 4)
        return {};
    const QImage drawn(drawing->rgba.data(), drawing->width, drawing->height, drawing->width * 4,
                       QImage::Format_RGBA8888_Premultiplied);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.drawImage(QPointF((size.width() - drawing->width) / 2.0, (size.height() - drawing->height) / 2.0), drawn);
    painter.end();
    return image.copy();
}

QImage SymbolProvider::render(const QString &name, const QSize &size, const QColor &colour)
{
    if (QImage fromDesktop = renderFromDesktop(name, size, colour); !fromDesktop.isNull())
        return fromDesktop;
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const std::optional<QString> path = SymbolTable::resourcePath(name);
    if (!path) {
        qWarning("No drawing for the symbol \"%s\"", qUtf8Printable(name));
        return image;
    }
    QSvgRenderer renderer(*path);
    if (!renderer.isValid()) {
        qWarning("The drawing of the symbol \"%s\" cannot be read", qUtf8Printable(name));
        return image;
    }
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    // Square drawings centred in the requested box.
    const int side = qMin(size.width(), size.height());
    const QRectF box((size.width() - side) / 2.0, (size.height() - side) / 2.0, side, side);
    renderer.render(&painter, box);
    // Keep the drawing's coverage, replace its colours by the tint.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), colour);
    painter.end();
    // An image that was painted on keeps its paint engine, with the stroker's buffers, for as
    // long as it lives; the image cache keeps what it is given. Hand over the pixels alone.
    return image.copy();
}
