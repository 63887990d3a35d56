#include "platform/ui/cell_text.h"

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QStyle>

#include <algorithm>

namespace
{
constexpr QChar leftToRightIsolate(0x2066);
constexpr QChar firstStrongIsolate(0x2068);
constexpr QChar popIsolate(0x2069);

bool isRightToLeftLetter(QChar c)
{
    return c.direction() == QChar::DirR || c.direction() == QChar::DirAL;
}
} // namespace

Qt::Alignment alignmentOf(FieldType type)
{
    const bool amount = type == FieldType::Double || type == FieldType::Money;
    return amount ? Qt::AlignRight | Qt::AlignAbsolute : Qt::AlignLeading;
}

Qt::Alignment absoluteAlignment(Qt::Alignment alignment, Qt::LayoutDirection direction)
{
    return QStyle::visualAlignment(direction, alignment) | Qt::AlignAbsolute | Qt::AlignVCenter;
}

QString isolated(const QString &text, Qt::LayoutDirection direction)
{
    if (text.isEmpty() || direction == Qt::LeftToRight)
        return text;
    const bool letters = std::any_of(text.cbegin(), text.cend(), isRightToLeftLetter);
    return (letters ? firstStrongIsolate : leftToRightIsolate) + text + popIsolate;
}

QString selectedTexts(const QAbstractItemView &grid)
{
    QModelIndexList cells = grid.selectionModel()->selectedIndexes();
    if (cells.isEmpty() && grid.currentIndex().isValid())
        cells << grid.currentIndex();
    std::sort(cells.begin(), cells.end());
    QString text;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0)
            text += cells[i].row() == cells[i - 1].row() ? u'\t' : u'\n';
        text += cells[i].data(Qt::AccessibleTextRole).toString();
    }
    return text;
}
