#pragma once

#include "platform/database/field.h"

#include <QtCore/QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace database
{
class Rows; // private to this folder
}

/// The rows that a record set showed at one moment: those of its filter, in their order, with their fields.
/// It does not keep the set or its connection open. Rows count from 0, fields from 0. A later update() of the
/// set shows through in the row that it wrote.
class RowsShown
{
public:
    /// `view`: the shown rows among `rows`, ascending; none for all.
    RowsShown(std::shared_ptr<const database::Rows> rows, std::optional<std::vector<int>> view);

    int count() const noexcept;
    const std::vector<FieldInfo> &fields() const noexcept;
    /// A row or field outside must not be asked for.
    Value value(int row, int field) const;

    /// The texts of a text field in the rows from `first` on, at most `count` of them, each text once for all
    /// rows that `met` has seen, in the order of their first appearance; Null is left out. `met` is empty at
    /// the first call and goes from call to call, so that a long set can be walked in pieces.
    QStringList distinctTexts(int field, int first, int count, std::vector<bool> &met) const;
    /// Calls `visit` for each row from `first` on, at most `count` of them, with the row and the number of a
    /// field that is no text and no double: money in ten-thousandths, a date in seconds since 1970, a Boolean
    /// as -1 or 0. Null is left out.
    void visitNumbers(int field, int first, int count,
                      const std::function<void(int row, qint64 number)> &visit) const;

private:
    int rowAt(int row) const;

    std::shared_ptr<const database::Rows> m_rows;
    std::optional<std::vector<int>> m_view;
    int m_count; ///< rows may be added to m_rows later
};
