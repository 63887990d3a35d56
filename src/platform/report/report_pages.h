#pragma once

#include "platform/report/report.h"

#include <QtGui/QPageLayout>

#include <memory>
#include <vector>

class QPainter;

/// The pages of a report on a paper. Where a page begins is found only when somebody asks for it, so that the
/// first one is there at once, whatever the number of rows. A design that is wider than the paper has room
/// for, or whose bands are too high for it, is drawn smaller as a whole. Pages count from 0.
class ReportPages
{
public:
    /// `paper` gives the size, and the margins above and below; those at the sides are the report's own,
    /// unless the printer reaches less far.
    /// @throws RuntimeError 8526 when a text box or function has a field that the rows have not, 3704 for a
    /// set that is not open, 91 without one
    ReportPages(const Report &report, const QPageLayout &paper);
    ~ReportPages();
    ReportPages(const ReportPages &) = delete;
    ReportPages &operator=(const ReportPages &) = delete;

    const QPageLayout &paper() const;

    /// Looks at the next rows, at most so many, for the beginnings of pages.
    void findPages(int rows);
    /// At least 1.
    int pagesFound() const;
    bool allFound() const;
    /// Looks as far as needed.
    bool hasPage(int page);
    int count();

    /// Draws a page that is there, paper and margins and all, into a rectangle of the painter's coordinates.
    /// @throws RuntimeError what a value's format or the sum of a function gives; the painter is as before
    void draw(QPainter &painter, int page, const QRectF &sheet);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// The paper that reports are laid out on: what was last chosen for printing, else what the printer in use is
/// set to, else A4.
QPageLayout reportPaper();
void setReportPaper(const QPageLayout &paper);
