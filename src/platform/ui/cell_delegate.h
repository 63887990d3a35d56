#pragma once

#include <QtWidgets/QStyledItemDelegate>

/// Paints the cells of a table of texts. The toolkit's own delegate lays each text out several times, for
/// decorations, check boxes and lines of text that no table of the program has.
class CellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
