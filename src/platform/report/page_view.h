#pragma once

#include "platform/report/report_pages.h"

#include <QtWidgets/QAbstractScrollArea>

/// Shows one page of a report on a grey ground and draws no other one. A page that can't be drawn shows a
/// message in its place.
class PageView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    PageView(ReportPages &pages, const QString &failureText);

    /// `pages` must live as long as they are shown.
    void setPages(ReportPages &pages);
    int page() const { return m_page; } ///< from 0
    void showPage(int page);            ///< one that is there; from its top
    void zoomIn() { zoomBy(zoomStep); }
    void zoomOut() { zoomBy(1 / zoomStep); }
    void fitWidth() { fit(Fit::Width); }
    void fitPage() { fit(Fit::Page); }
    /// The paper on the viewport.
    QRect sheet() const;

Q_SIGNALS:
    /// The wheel was turned beyond the page's end (1) or beginning (-1).
    void leftPage(int step);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    QSize sizeHint() const override { return {760, 560}; }

private:
    enum class Fit { None, Width, Page };
    static constexpr double zoomStep = 1.25;
    void zoomBy(double factor);
    void fit(Fit fit);
    void layOut();
    QSizeF paperSize() const;
    QSize sheetSize() const;

    ReportPages *m_pages;
    QString m_failureText;
    int m_page = 0;
    Fit m_fit = Fit::Width;
    double m_zoom = 1; ///< of the paper at 96 dpi
};
