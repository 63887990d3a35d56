#include "platform/report/report_band.h"

#include "platform/ui/color_number.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace
{

bool isText(const ReportControl &control)
{
    return control.type != ReportControl::Type::Line && control.type != ReportControl::Type::Image;
}

/// The text box of the rows that a heading stands above.
const ReportControl *columnBelow(const Report &report, const ReportControl &heading)
{
    for (const ReportSection &section : report.sections) {
        if (section.kind != ReportSection::Kind::Detail || heading.type != ReportControl::Type::Label)
            continue;
        for (const ReportControl &control : section.controls) {
            if (control.type == ReportControl::Type::TextBox && control.place.x() == heading.place.x() &&
                control.place.width() == heading.place.width())
                return &control;
        }
    }
    return nullptr;
}

/// Amounts end below each other on either page, and their heading with them.
Qt::Alignment sideOf(const Report &report, const ReportControl &control, const ReportValues &values)
{
    using Alignment = ReportControl::Alignment;
    if (control.alignment == Alignment::Center)
        return Qt::AlignHCenter;
    const ReportControl *column = columnBelow(report, control);
    const ReportControl &shown = column ? *column : control;
    const bool end = shown.alignment == Alignment::End;
    if (values.isAmount(shown) || (values.isNumber(shown) && end))
        return Qt::AlignRight;
    const bool rightToLeft = report.rightToLeft || control.rightToLeft;
    return (control.alignment == Alignment::End) == rightToLeft ? Qt::AlignLeft : Qt::AlignRight;
}

void drawImage(QPainter &painter, const QRectF &place, const QPixmap &image)
{
    if (image.isNull())
        return;
    QSizeF size = image.deviceIndependentSize();
    size.scale(place.size(), Qt::KeepAspectRatio);
    QRectF drawn(QPointF(), size);
    drawn.moveCenter(place.center());
    painter.drawPixmap(drawn, image, image.rect());
}

} // namespace

ReportBand::ReportBand(const Report &report, const ReportSection &section, ReportValues &values,
                       ReportFonts &fonts)
    : m_report(report), m_values(values), m_designHeight(section.height), m_limit(1e9)
{
    for (const ReportControl &control : section.controls) {
        Item item;
        item.control = &control;
        item.field = values.fieldOf(control);
        item.leastHeight = control.place.height();
        if (isText(control)) {
            item.font = control.fontName.isEmpty()
                            ? fonts.font(report.fontName, report.fontSize, report.fontBold)
                            : fonts.font(control.fontName, control.fontSize, control.fontBold);
            item.style.side = sideOf(report, control, values);
            item.style.leftToRight = values.isNumber(control);
            item.style.unbroken = !values.isWords(control);
            item.leastHeight = std::max(item.leastHeight, item.font->lineHeight());
        }
        m_width = std::max(m_width, double(control.place.x() + control.place.width()));
        m_items.push_back(std::move(item));
    }
    std::ranges::stable_sort(m_items, {}, &Item::designTop);
    for (Item &item : m_items)
        item.height = item.leastHeight;
    m_leastHeight = stack();
    m_height = m_leastHeight;
    limitHeight(m_limit);
}

void ReportBand::limitHeight(double limit)
{
    m_limit = std::max(limit, m_leastHeight);
    for (Item &item : m_items) {
        if (!item.font)
            continue;
        const double growth = item.control->canGrow ? m_limit - m_leastHeight : 0;
        const double room = std::min(item.leastHeight + growth, 1e6);
        item.style.lines = item.style.unbroken ? 1 : std::max(1, int(room / item.font->lineHeight() + 1e-6));
    }
}

/// Moves what stands below a grown control down by its growth, and gives the height of the whole.
double ReportBand::stack()
{
    double designBottom = 0;
    double bottom = 0;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        Item &item = m_items[i];
        double shift = 0;
        for (std::size_t above = 0; above < i; ++above) {
            const Item &other = m_items[above];
            if (other.designBottom() <= item.designTop())
                shift = std::max(shift, other.top + other.height - other.designBottom());
        }
        item.top = item.designTop() + shift;
        designBottom = std::max(designBottom, item.designBottom());
        bottom = std::max(bottom, item.top + item.height);
    }
    return std::max(m_designHeight, bottom + std::max(0.0, m_designHeight - designBottom));
}

double ReportBand::layOut(int row, const PageNumbers &pages, bool all)
{
    bool grown = false;
    for (Item &item : m_items) {
        const bool grows = item.style.lines > 1;
        if (!item.font || (!all && !grows))
            continue;
        item.text = m_values.textOf(*item.control, item.field, row, pages);
        const int lines = grows ? item.font->linesOf(item.text, item.control->place.width(), item.style) : 1;
        item.height = std::max(item.leastHeight, lines * item.font->lineHeight());
        grown = grown || item.height > item.leastHeight;
    }
    if (grown || m_grown)
        m_height = std::min(stack(), m_limit);
    m_grown = grown;
    return m_height;
}

double ReportBand::height(int row, const PageNumbers &pages)
{
    return layOut(row, pages, false);
}

void ReportBand::holdLines()
{
    for (Item &item : m_items) {
        if (item.font)
            item.style.lines = std::max(1, int(item.height / item.font->lineHeight() + 1e-6));
    }
}

double ReportBand::draw(QPainter &painter, double top, double groundWidth, int row, const PageNumbers &pages)
{
    const double height = layOut(row, pages, true);
    for (const Item &item : m_items) {
        const ReportControl &control = *item.control;
        const double width = control.place.width();
        const double left =
            m_report.rightToLeft ? groundWidth - control.place.x() - width : control.place.x();
        const QRectF place(left, top + item.top, width, item.height);
        if (item.font) {
            painter.setPen(colorOf(control.foreColor));
            item.font->draw(painter, place, item.text, item.style);
        } else if (control.type == ReportControl::Type::Image) {
            drawImage(painter, place, control.image);
        } else {
            constexpr double thickness = 15; // three quarters of a point
            painter.setPen(QPen(colorOf(control.foreColor), thickness));
            if (m_report.rightToLeft)
                painter.drawLine(place.topRight(), place.bottomLeft());
            else
                painter.drawLine(place.topLeft(), place.bottomRight());
        }
    }
    return height;
}
