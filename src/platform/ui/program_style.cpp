#include "platform/ui/program_style.h"

#include <QtGui/QTextLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyleOption>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int markAir = 6; ///< beside the mark of an option or a check box on its opaque ground, in pixels

/// By how many pixels the toolkit puts the line of a box too high: it centres the whole line, and then takes
/// off once more what the letters of a fallback font stand higher than the box's own.
int raisedBy(const QLineEdit &box)
{
    QTextLayout text(box.displayText(), box.font());
    text.beginLayout();
    const QTextLine line = text.createLine();
    text.endLayout(); // lays the line out
    return line.isValid() ? qMax(0, qRound(line.ascent()) - box.fontMetrics().ascent()) : 0;
}
} // namespace

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

QSize ProgramStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                     const QWidget *widget) const
{
    const QSize needed = QProxyStyle::sizeFromContents(type, option, size, widget);
    return type == CT_RadioButton || type == CT_CheckBox ? needed + QSize(2 * markAir, 0) : needed;
}

void ProgramStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    if ((element != CE_RadioButton && element != CE_CheckBox) || !button || button->text.isEmpty())
        return QProxyStyle::drawControl(element, option, painter, widget);
    QStyleOptionButton inner = *button;
    inner.rect.adjust(markAir, 0, -markAir, 0);
    QProxyStyle::drawControl(element, &inner, painter, widget);
}

QRect ProgramStyle::subElementRect(SubElement element, const QStyleOption *option,
                                   const QWidget *widget) const
{
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    const auto *box = qobject_cast<const QLineEdit *>(widget);
    // The room grows below by twice that, so that its middle goes down and its top cuts nothing off.
    return element == SE_LineEditContents && box ? rect.adjusted(0, 0, 0, 2 * raisedBy(*box)) : rect;
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
