#include "entry/elided_label.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolTip>

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const QString whole = shownText() == text() ? QString() : text().toHtmlEscaped();
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), whole, this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    // The frame alone: the text is painted below. NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QFrame::paintEvent(event);
    QPainter painter(this);
    // Placed by the language of the screen, written in the direction of the text itself.
    const Qt::Alignment place = QStyle::visualAlignment(layoutDirection(), alignment()) | Qt::AlignAbsolute;
    painter.setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    style()->drawItemText(&painter, contentsRect().adjusted(margin(), 0, -margin(), 0), int(place), palette(),
                          isEnabled(), shownText(), foregroundRole());
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width() - 2 * margin());
}
