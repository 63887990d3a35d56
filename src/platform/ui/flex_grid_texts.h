#pragma once

#include "platform/ui/flex_grid.h"
#include "platform/ui/text_widths.h"

#include <QtCore/QHash>

#include <vector>

/// What the cells of a column show: the values of a field by a format, and texts that were written over some
/// of them. Rows count from 0 as the set has them.
struct ColumnTexts {
    std::shared_ptr<const RowsShown> rows = nullptr;
    int field = -1; ///< -1: none, as in a column that a format string added
    ColumnFormat format = {};
    QHash<int, QString> written = {}; ///< by row

    FieldType type() const { return rows->fields()[size_t(field)].type; }
    bool hasField() const { return rows && field >= 0; }
    QString textOf(const Value &value) const { return format.text ? format.text(value) : value.toText(); }
    QString text(int row) const;
};

/// The width of the widest text in pixels, as FlexGrid::widestText() tells it. The texts are a copy: nothing
/// else of the grid is used while `goOn` runs.
std::optional<int> widestPixels(ColumnTexts texts, std::shared_ptr<WidthBounds> bounds,
                                const std::function<bool()> &goOn);

/// Puts rows into the order of their texts, as FlexGrid::sort() tells it.
void sortRows(std::vector<int> &rows, const ColumnTexts &texts, Qt::SortOrder order);
