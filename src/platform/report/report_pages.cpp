#include "platform/report/report_pages.h"

#include "platform/report/report_band.h"
#include "platform/runtime/runtime_error.h"

#include <QtGui/QPainter>
#include <QtPrintSupport/QPrinterInfo>

#include <algorithm>
#include <array>
#include <optional>

namespace
{

constexpr double twipsPerPoint = 20;
constexpr int allRows = 1 << 30;

QRectF inTwips(const QRectF &points)
{
    return {points.topLeft() * twipsPerPoint, points.size() * twipsPerPoint};
}

/// What the report prints on: between its own margins at the sides, and the paper's above and below.
QRectF groundOf(const Report &report, const QPageLayout &paper)
{
    const QRectF sheet = inTwips(paper.fullRect(QPageLayout::Point));
    const QMarginsF least = paper.minimumMargins() * twipsPerPoint; // in points, as the layout's units are
    const QMarginsF set = paper.margins() * twipsPerPoint;
    QMarginsF margins(std::max(double(report.leftMargin), least.left()), set.top(),
                      std::max(double(report.rightMargin), least.right()), set.bottom());
    constexpr double inch = 1440;
    if (margins.left() + margins.right() > sheet.width() - inch) {
        margins.setLeft(0);
        margins.setRight(0);
    }
    if (margins.top() + margins.bottom() > sheet.height() - inch) {
        margins.setTop(0);
        margins.setBottom(0);
    }
    return sheet.marginsRemoved(margins);
}

QPageLayout inPoints(QPageLayout paper)
{
    paper.setUnits(QPageLayout::Point);
    return paper;
}

std::optional<QPageLayout> &chosenPaper()
{
    static std::optional<QPageLayout> paper;
    return paper;
}

} // namespace

QPageLayout reportPaper()
{
    std::optional<QPageLayout> &chosen = chosenPaper();
    if (!chosen) {
        QPageSize size = QPrinterInfo::defaultPrinter().defaultPageSize();
        if (!size.isValid())
            size = QPageSize(QPageSize::A4);
        constexpr double margin = 28; // points, as wide as most printers need
        chosen = QPageLayout(size, QPageLayout::Portrait, QMarginsF(margin, margin, margin, margin),
                             QPageLayout::Point);
    }
    return *chosen;
}

void setReportPaper(const QPageLayout &paper)
{
    chosenPaper() = inPoints(paper);
}

struct ReportPages::Private {
    using Kind = ReportSection::Kind;

    Private(const Report &shown, const QPageLayout &on);
    ReportBand *band(Kind kind) const { return bands[std::size_t(kind)].get(); }
    double leastHeight(Kind kind) const { return band(kind) ? band(kind)->leastHeight() : 0; }
    double height(Kind kind) const;
    double roomForRows(int page) const;
    double rowHeight(int row);
    void fit();
    void beginPage();
    PageNumbers numbers(ReportPages &pages, int page) const;

    Report report;
    QPageLayout paper;
    ReportValues values;
    ReportFonts fonts;
    std::array<std::unique_ptr<ReportBand>, 5> bands; ///< by their kind
    QRectF ground;                                    ///< twips of the paper
    double scale = 1;                                 ///< twips of the paper for one of the design
    double groundHeight = 0;                          ///< twips of the design
    std::array<double, 5> heights{};                  ///< of the bands that are as high on each page

    std::vector<int> beginnings{0}; ///< by the page, its first row; where no row stands, their number
    int nextRow = 0;
    double used = 0; ///< of the last page's room for rows
    bool allFound = false;
};

ReportPages::Private::Private(const Report &shown, const QPageLayout &on)
    : report(shown), paper(inPoints(on)), values(report), ground(groundOf(report, paper))
{
    for (const ReportSection &section : report.sections)
        bands[std::size_t(section.kind)] = std::make_unique<ReportBand>(report, section, values, fonts);
    fit();
}

double ReportPages::Private::height(Kind kind) const
{
    return heights[std::size_t(kind)];
}

void ReportPages::Private::fit()
{
    constexpr Kind fixed[] = {Kind::ReportHeader, Kind::PageHeader, Kind::PageFooter, Kind::ReportFooter};
    double width = 1;
    for (const Kind kind : fixed) { // as high on every page
        ReportBand *one = band(kind);
        if (!one)
            continue;
        heights[std::size_t(kind)] = one->height(0, {1, [] { return 1; }});
        one->holdLines();
    }
    for (const auto &one : bands)
        width = std::max(width, one ? one->width() : 0);
    const double onEachPage = height(Kind::PageHeader) + height(Kind::PageFooter);
    const double highest = onEachPage + std::max({height(Kind::ReportHeader), leastHeight(Kind::Detail),
                                                  height(Kind::ReportFooter)});
    scale = std::min({1.0, ground.width() / width, ground.height() / std::max(highest, 1.0)});
    groundHeight = ground.height() / scale;
    if (ReportBand *rows = band(Kind::Detail))
        rows->limitHeight(groundHeight - onEachPage);
}

double ReportPages::Private::roomForRows(int page) const
{
    return groundHeight - height(Kind::PageHeader) - height(Kind::PageFooter) -
           (page == 0 ? height(Kind::ReportHeader) : 0);
}

double ReportPages::Private::rowHeight(int row)
{
    return band(Kind::Detail) ? band(Kind::Detail)->height(row, {}) : 0;
}

void ReportPages::Private::beginPage()
{
    beginnings.push_back(nextRow);
    used = 0;
}

PageNumbers ReportPages::Private::numbers(ReportPages &pages, int page) const
{
    return {page + 1, [&pages] { return pages.count(); }};
}

ReportPages::ReportPages(const Report &report, const QPageLayout &paper)
    : d(std::make_unique<Private>(report, paper))
{
}

ReportPages::~ReportPages() = default;

const QPageLayout &ReportPages::paper() const
{
    return d->paper;
}

void ReportPages::findPages(int rows)
{
    constexpr double hair = 1e-6;
    const int last = int(std::min<qint64>(d->values.rowCount(), qint64(d->nextRow) + rows));
    for (; d->nextRow < last; ++d->nextRow) {
        const double height = d->rowHeight(d->nextRow);
        if (d->used + height > d->roomForRows(pagesFound() - 1) + hair)
            d->beginPage();
        d->used += height;
    }
    if (d->allFound || d->nextRow < d->values.rowCount())
        return;
    if (d->used + d->height(Private::Kind::ReportFooter) > d->roomForRows(pagesFound() - 1) + hair)
        d->beginPage();
    d->allFound = true;
}

int ReportPages::pagesFound() const
{
    return int(d->beginnings.size());
}

bool ReportPages::allFound() const
{
    return d->allFound;
}

bool ReportPages::hasPage(int page)
{
    while (page >= pagesFound() && !d->allFound)
        findPages(100);
    return page >= 0 && page < pagesFound();
}

int ReportPages::count()
{
    findPages(allRows);
    return pagesFound();
}

void ReportPages::draw(QPainter &painter, int page, const QRectF &sheet)
{
    if (!hasPage(page))
        throw runtime_errors::invalidCall();
    using Kind = Private::Kind;
    const int firstRow = d->beginnings[std::size_t(page)];
    const int endOfRows = hasPage(page + 1) ? d->beginnings[std::size_t(page) + 1] : d->values.rowCount();
    const bool isLast = page + 1 == pagesFound();
    const PageNumbers numbers = d->numbers(*this, page);
    const QSizeF paperSize = d->paper.fullRect(QPageLayout::Point).size() * twipsPerPoint;
    const double width = d->ground.width() / d->scale;

    struct Saved {
        explicit Saved(QPainter &saved) : p(saved) { p.save(); }
        ~Saved() { p.restore(); }
        QPainter &p;
    } const saved(painter);
    painter.translate(sheet.topLeft());
    painter.scale(sheet.width() / paperSize.width(), sheet.height() / paperSize.height());
    painter.translate(d->ground.topLeft());
    painter.scale(d->scale, d->scale);

    const bool clipped = painter.hasClipping();
    const QRectF clip = clipped ? painter.clipBoundingRect() : QRectF();
    double y = 0;
    const auto drawBand = [&](Kind kind, int row) {
        ReportBand *band = d->band(kind);
        if (!band)
            return;
        const double height = clipped ? band->height(row, numbers) : 0;
        if (clipped && (y > clip.bottom() || y + height < clip.top()))
            y += height;
        else
            y += band->draw(painter, y, width, row, numbers);
    };
    if (page == 0)
        drawBand(Kind::ReportHeader, firstRow);
    drawBand(Kind::PageHeader, firstRow);
    for (int row = firstRow; row < endOfRows; ++row)
        drawBand(Kind::Detail, row);
    if (isLast)
        drawBand(Kind::ReportFooter, 0);
    y = d->groundHeight - d->height(Kind::PageFooter);
    drawBand(Kind::PageFooter, firstRow);
}
