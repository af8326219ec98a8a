#include "records/report_pdf.h"

#include "core/texts.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

// Print colours: dark enough to read on paper, the same hues as the application's levels.
QColor levelColour(CheckStatus status)
{
    switch (status) {
    case CheckStatus::ok:
        return QColor(0x1B, 0x7F, 0x3A);
    case CheckStatus::attention:
        return QColor(0xB3, 0x59, 0x00);
    case CheckStatus::alerte:
        return QColor(0xC6, 0x28, 0x28);
    case CheckStatus::info:
        return QColor(0x1F, 0x5F, 0xBF);
    case CheckStatus::nonApplicable:
        break;
    }
    return QColor(0x6B, 0x6B, 0x6B);
}

const QColor ink(0x1D, 0x1D, 0x1F);
const QColor secondaryInk(0x5F, 0x63, 0x68);
const QColor ruleInk(0xD0, 0xD0, 0xD4);

// One piece of the page that is never cut: its height, and how it draws itself at a top edge.
struct Block
{
    qreal height = 0;
    std::function<void(QPainter &, qreal top)> draw;
    // A heading stays on the page of the block that follows it.
    bool keepsWithNext = false;
};

class Layout
{
public:
    Layout(QPdfWriter &pdf, qreal width) : m_pdf(pdf), m_width(width) {}

    QFont font(qreal points, bool bold = false) const
    {
        QFont made(u"sans-serif"_s);
        made.setPointSizeF(points);
        made.setBold(bold);
        return made;
    }
    // Millimetres in the writer's pixels.
    qreal mm(qreal millimetres) const { return millimetres * m_pdf.resolution() / 25.4; }
    qreal advance(const QFont &font, const QString &text) const { return QFontMetricsF(font, &m_pdf).horizontalAdvance(text); }
    qreal textHeight(const QFont &font, const QString &text, qreal width) const
    {
        return QFontMetricsF(font, &m_pdf).boundingRect(QRectF(0, 0, width, 1e7), Qt::TextWordWrap, text).height();
    }

    void text(const QString &words, const QFont &font, const QColor &colour, qreal indent = 0, qreal after = 0)
    {
        const qreal width = m_width - indent;
        const qreal height = textHeight(font, words, width);
        m_blocks.append({height + after, [=](QPainter &painter, qreal top) {
                             painter.setFont(font);
                             painter.setPen(colour);
                             painter.drawText(QRectF(indent, top, width, height), Qt::TextWordWrap, words);
                         }});
    }
    void space(qreal height) { m_blocks.append({height, [](QPainter &, qreal) {}}); }
    void heading(const QString &title)
    {
        const QFont bold = font(10.5, true);
        const qreal height = textHeight(bold, title, m_width);
        const qreal gap = mm(5);
        m_blocks.append({gap + height + mm(2.5),
                         [=, this, width = m_width](QPainter &painter, qreal top) {
                             painter.setFont(bold);
                             painter.setPen(ink);
                             painter.drawText(QRectF(0, top + gap, width, height), Qt::TextWordWrap, title);
                             painter.setPen(QPen(ruleInk, mm(0.25)));
                             painter.drawLine(QPointF(0, top + gap + height + mm(1)), QPointF(width, top + gap + height + mm(1)));
                         },
                         true});
    }
    void row(const QString &label, const QString &value, qreal labelWidth)
    {
        const QFont normal = font(9.5);
        const qreal valueWidth = m_width - labelWidth - mm(4);
        const qreal height = std::max(textHeight(normal, label, labelWidth), textHeight(normal, value, valueWidth));
        m_blocks.append({height + mm(1.2), [=, this](QPainter &painter, qreal top) {
                             painter.setFont(normal);
                             painter.setPen(secondaryInk);
                             painter.drawText(QRectF(0, top, labelWidth, height), Qt::TextWordWrap, label);
                             painter.setPen(ink);
                             painter.drawText(QRectF(labelWidth + mm(4), top, valueWidth, height), Qt::TextWordWrap, value);
                         }});
    }
    void check(const ReportCheckLine &line)
    {
        const QFont pillFont = font(7.5, true);
        const QFont title = font(9.5, true);
        const QFont sentence = font(8.5);
        const qreal pillWidth = mm(24);
        const qreal textLeft = pillWidth + mm(4);
        const qreal textWidth = m_width - textLeft;
        const qreal titleHeight = textHeight(title, line.heading, textWidth);
        const qreal sentenceHeight = textHeight(sentence, line.summary, textWidth);
        const QColor colour = levelColour(line.status);
        m_blocks.append({titleHeight + sentenceHeight + mm(2.6), [=, this](QPainter &painter, qreal top) {
                             const QRectF pill(0, top + mm(0.3), pillWidth, mm(4.6));
                             painter.setPen(Qt::NoPen);
                             painter.setBrush(QColor(colour.red(), colour.green(), colour.blue(), 36));
                             painter.drawRoundedRect(pill, mm(2.3), mm(2.3));
                             painter.setFont(pillFont);
                             painter.setPen(colour);
                             painter.drawText(pill, Qt::AlignCenter, CheckStatuses::label(line.status));
                             painter.setFont(title);
                             painter.setPen(ink);
                             painter.drawText(QRectF(textLeft, top, textWidth, titleHeight), Qt::TextWordWrap, line.heading);
                             painter.setFont(sentence);
                             painter.setPen(secondaryInk);
                             painter.drawText(QRectF(textLeft, top + titleHeight, textWidth, sentenceHeight),
                                              Qt::TextWordWrap, line.summary);
                         }});
    }

    const QList<Block> &blocks() const { return m_blocks; }
    qreal width() const { return m_width; }

private:
    QPdfWriter &m_pdf;
    qreal m_width;
    QList<Block> m_blocks;
};

void lay(Layout &layout, const ReportOutline &outline)
{
    if (outline.workshop) {
        layout.text(outline.workshop->name.toUpper(), layout.font(15, true), ink);
        if (outline.workshop->details)
            layout.text(*outline.workshop->details, layout.font(9.5), secondaryInk);
        layout.space(layout.mm(5));
    }
    layout.text(outline.title, layout.font(17, true), ink, 0, layout.mm(1));
    layout.text(outline.stamp, layout.font(9), secondaryInk, 0, layout.mm(4));
    if (outline.worst) {
        layout.text(outline.verdict, layout.font(14, true), levelColour(*outline.worst), 0, layout.mm(1));
        layout.text(outline.tally, layout.font(9.5), secondaryInk);
        if (outline.sinceLastVisit)
            layout.text(*outline.sinceLastVisit, layout.font(9.5, true), ink);
        for (const QString &failed : outline.failedReads)
            layout.text(failed, layout.font(9), levelColour(CheckStatus::attention));
    }
    for (const ReportPart &part : outline.parts) {
        layout.heading(part.title);
        // The labels' column as wide as the longest label, at most two fifths of the page.
        qreal labelWidth = layout.mm(20);
        for (const InfoRow &row : part.rows)
            labelWidth = std::max(labelWidth, layout.advance(layout.font(9.5), row.label) + layout.mm(1));
        for (const InfoRow &row : part.rows)
            layout.row(row.label, row.value, std::min(labelWidth, layout.width() * 0.4));
        for (const ReportCheckLine &check : part.checks)
            layout.check(check);
        for (const auto &[line, depth] : part.lines)
            layout.text(line, layout.font(depth <= 1 ? 9.5 : 8.5, depth <= 1 && line.startsWith(u"• "_s)),
                        depth <= 2 ? ink : secondaryInk, layout.mm(4) * (depth - 1), layout.mm(0.8));
    }
    layout.space(layout.mm(6));
    for (const QString &line : outline.footer)
        layout.text(line, layout.font(8), secondaryInk);
}

// Each page's blocks with their top edges: a block that does not fit goes whole to the next
// page, and so does a heading whose next block does not fit under it.
QList<QList<std::pair<qsizetype, qreal>>> paginate(const QList<Block> &blocks, qreal pageHeight)
{
    QList<QList<std::pair<qsizetype, qreal>>> pages(1);
    qreal top = 0;
    for (qsizetype i = 0; i < blocks.size(); ++i) {
        const qreal needed = blocks.at(i).height + (blocks.at(i).keepsWithNext && i + 1 < blocks.size() ? blocks.at(i + 1).height : 0);
        if (top > 0 && top + needed > pageHeight) {
            pages.append(QList<std::pair<qsizetype, qreal>>());
            top = 0;
        }
        pages.last().append({i, top});
        top += blocks.at(i).height;
    }
    return pages;
}

} // namespace

namespace ReportPdf {

QString write(const ReportOutline &outline, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    {
        QPdfWriter pdf(&file);
        pdf.setResolution(300);
        pdf.setPageSize(QPageSize(QPageSize::A4));
        pdf.setPageMargins(QMarginsF(18, 16, 18, 14), QPageLayout::Millimeter);
        pdf.setTitle(outline.title);
        pdf.setCreator(u"Quillon"_s);
        const QRectF page = pdf.pageLayout().paintRectPixels(pdf.resolution());
        Layout layout(pdf, page.width());
        lay(layout, outline);
        const qreal footerHeight = layout.mm(8);
        const auto pages = paginate(layout.blocks(), page.height() - footerHeight);
        QPainter painter;
        if (!painter.begin(&pdf))
            return localized("le PDF n’a pas pu être commencé");
        painter.setRenderHint(QPainter::Antialiasing);
        for (qsizetype number = 0; number < pages.size(); ++number) {
            if (number > 0)
                pdf.newPage();
            for (const auto &[index, top] : pages.at(number))
                layout.blocks().at(index).draw(painter, top);
            painter.setFont(layout.font(7.5));
            painter.setPen(secondaryInk);
            const QRectF footer(0, page.height() - footerHeight / 2, page.width(), footerHeight / 2);
            painter.drawText(footer, Qt::AlignLeft | Qt::AlignVCenter, outline.title);
            painter.drawText(footer, Qt::AlignRight | Qt::AlignVCenter,
                             localized("Page %1 sur %2").arg(number + 1).arg(pages.size()));
        }
        painter.end();
    }
    if (!file.commit())
        return file.errorString();
    return {};
}

} // namespace ReportPdf
