#pragma once

#include <QtWidgets/QProxyStyle>

/// The look of all windows, the same on every desktop: the toolkit's own, with air around the headings of
/// grids, the titles of frames and the marks of options, and words alone on the buttons of dialogs.
class ProgramStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ProgramStyle();
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *more) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                           const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption *option,
                         const QWidget *widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                         const QWidget *widget) const override;
};
