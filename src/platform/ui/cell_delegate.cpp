#include "platform/ui/cell_delegate.h"

#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionFocusRect>
#include <QtWidgets/QWidget>

namespace
{
constexpr int sideMargin = 3; // pixels

QPalette::ColorGroup colorGroupOf(const QStyleOptionViewItem &option)
{
    if (!option.state.testFlag(QStyle::State_Enabled))
        return QPalette::Disabled;
    return option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
}

void paintFocus(QPainter *painter, const QStyleOptionViewItem &option)
{
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(option);
    focus.state |= QStyle::State_KeyboardFocusChange | QStyle::State_Item;
    focus.backgroundColor = option.palette.color(QPalette::Base);
    option.widget->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
}
} // namespace

void CellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    const QPalette::ColorGroup group = colorGroupOf(option);
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const QVariant ownGround = index.data(Qt::BackgroundRole);
    const QVariant ownInk = index.data(Qt::ForegroundRole);
    if (selected)
        painter->fillRect(option.rect, option.palette.color(group, QPalette::Highlight));
    else if (ownGround.isValid())
        painter->fillRect(option.rect, ownGround.value<QColor>());

    if (selected)
        painter->setPen(option.palette.color(group, QPalette::HighlightedText));
    else
        painter->setPen(ownInk.isValid() ? ownInk.value<QColor>()
                                         : option.palette.color(group, QPalette::Text));
    painter->setFont(option.font);
    painter->setLayoutDirection(option.direction);
    const auto alignment = index.data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    painter->drawText(option.rect.adjusted(sideMargin, 0, -sideMargin, 0),
                      int(alignment | Qt::TextSingleLine), index.data(Qt::DisplayRole).toString());
    if (option.state.testFlag(QStyle::State_HasFocus))
        paintFocus(painter, option);
}
