#pragma once

#include "platform/database/recordset.h"
#include "platform/database/row_condition.h"
#include "platform/database/rows.h"
#include "platform/database/session.h"
#include "platform/database/table_access.h"

#include <map>

/// The state of a record set. A set that is closed has no rows.
struct Recordset::Private {
    static constexpr int bof = -1;
    static constexpr int eof = -2;

    ConnectionPtr connection;
    QString source;
    CommandKind kind = CommandKind::Text;
    std::optional<CursorType> cursorWanted;
    std::optional<CursorLocation> locationWanted;
    bool forwardOnly = false;
    LockType lock = LockType::ReadOnly;
    std::shared_ptr<const sql::Compiled> compiled;
    std::shared_ptr<database::Rows> rows; ///< shared by the clones
    /// A whole table that is open for writing is read when its rows are first looked at: most such sets only
    /// add a row, and the table may be long. Until then `rows` has only its fields.
    bool unread = false;
    std::optional<qint64> addedRowid; ///< the row that was added last while unread: it is the current one

    QString filter;
    std::optional<std::vector<int>> view; ///< the rows that the filter selects, ascending; none: all
    int position = eof;                   ///< among the rows of the view

    EditMode mode = EditMode::None;
    std::map<int, Value> changes; ///< of the current or new row, by field
    std::vector<Value> blank;     ///< a new row before anything was set
    int returnPosition = eof;     ///< from before the new row
    bool inEvent = false;
    std::function<void(int rows)> readProgress;

    /// Throws unless the set is open, and not inside willChangeRecord.
    void requireOpen() const;
    void requireIdle() const;
    void requireNotEditing() const;
    void requireUpdatable() const;
    bool isUpdatable() const;

    /// Reads what is still unread.
    void readAll();
    int count();
    /// The row at a position of the view.
    int rowAt(int at) const { return view ? (*view)[std::size_t(at)] : at; }
    /// The current row, which is none of the new ones. @throws RuntimeError 3021
    int currentRow();
    /// The first field of that name, or -1.
    int fieldIndex(const QString &name) const;
    /// @throws RuntimeError 3265
    int indexOf(const QString &name) const;
    const FieldInfo &field(int index) const;

    /// The table that the rows are of; `columns` gets each field's place in it, -1 for an expression.
    database::TableAccess tableAccess(std::vector<int> &columns) const;
    database::TableAccess::Key keyOf(int row, const std::vector<int> &columns) const;
    /// Gives a row the values of its row in the table.
    void takeValues(int row, const std::vector<int> &columns, const std::vector<Value> &values) const;
    std::shared_ptr<database::Rows> emptyRows() const;
    std::shared_ptr<database::Rows> readRows();
    void select(const QString &text);
    void close();
};
