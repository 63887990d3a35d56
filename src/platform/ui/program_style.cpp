#include "platform/ui/program_style.h"

#include <QtWidgets/QStyleOption>

using namespace Qt::Literals::StringLiterals;

ProgramStyle::ProgramStyle() : QProxyStyle(u"Fusion"_s) {}

int ProgramStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    constexpr int headerMargin = 3; // as beside the text of a cell
    return metric == PM_HeaderMargin ? headerMargin : QProxyStyle::pixelMetric(metric, option, widget);
}

int ProgramStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                            QStyleHintReturn *more) const
{
    return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0
                                                       : QProxyStyle::styleHint(hint, option, widget, more);
}

QRect ProgramStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                                   const QWidget *widget) const
{
    QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
    const auto *frame = qstyleoption_cast<const QStyleOptionGroupBox *>(option);
    if (control != CC_GroupBox || part != SC_GroupBoxLabel || !frame)
        return rect;
    // Letters of a fallback font can stand higher than the frame's own: their line goes up by what it is
    // taller, so that the title stays above the frame.
    constexpr int air = 8;
    const int line = frame->fontMetrics.size(Qt::TextShowMnemonic, frame->text).height();
    const int taller = qMax(0, line - frame->fontMetrics.height());
    rect.translate(option->direction == Qt::RightToLeft ? -air : air, -taller / 2);
    rect.setHeight(qMax(rect.height(), line));
    return rect;
}
