#pragma once

#include "platform/report/report_font.h"
#include "platform/report/report_values.h"

#include <memory>
#include <vector>

class QPainter;

/// One section of a report, laid out on any row and page. All lengths are twips.
class ReportBand
{
public:
    /// `report` and `values` must live as long.
    ReportBand(const Report &report, const ReportSection &section, ReportValues &values, ReportFonts &fonts);

    double width() const { return m_width; }             ///< that the controls take
    double leastHeight() const { return m_leastHeight; } ///< with one line in each text
    /// Lets no text make the band higher than that, so that each row fits on a page.
    void limitHeight(double limit);
    double height(int row, const PageNumbers &pages);
    /// Lets no text take more lines than in the row whose height was asked for last.
    void holdLines();
    /// Draws it on a ground of that width, and returns its height.
    double draw(QPainter &painter, double top, double groundWidth, int row, const PageNumbers &pages);

private:
    struct Item {
        const ReportControl *control = nullptr;
        int field = -1;
        std::shared_ptr<ReportFont> font; ///< null for what is no text
        TextStyle style;
        double leastHeight = 0;
        // In the row that is laid out:
        QString text;
        double top = 0;
        double height = 0;

        double designTop() const { return control->place.y(); }
        double designBottom() const { return control->place.y() + control->place.height(); }
    };
    double stack();
    double layOut(int row, const PageNumbers &pages, bool all);

    const Report &m_report;
    ReportValues &m_values;
    double m_designHeight;
    double m_limit;
    double m_width = 0;
    double m_leastHeight = 0;
    double m_height = 0; ///< of the row that is laid out
    bool m_grown = false;
    std::vector<Item> m_items; ///< from the top downwards
};
