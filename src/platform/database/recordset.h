#pragma once

#include "platform/database/connection.h"
#include "platform/database/event.h"
#include "platform/database/field.h"
#include "platform/database/rows_shown.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// Why a row is about to change. The numbers are the data objects' own.
enum class ChangeReason {
    AddNew = 1,
    Delete = 2,
    Update = 3,
    UndoUpdate = 4,
    UndoAddNew = 5,
    FirstChange = 11
};

/// Handed to the handlers of willChangeRecord.
struct RecordChange {
    ChangeReason reason;
    bool cancel = false; ///< a handler that sets this refuses the change: the caller gets an "operation was
                         ///< cancelled" error
};

enum class EditMode { None = 0, InProgress = 1, Add = 2 };

inline constexpr int positionUnknown = -1;
inline constexpr int positionBof = -2;
inline constexpr int positionEof = -3;

/// Rows of a statement or of a whole table, with a current row, a filter and updates.
///
/// The rows are a snapshot, read completely at open() and held column-wise: writes of others are not seen
/// until requery() or resync(). A whole table that is open for writing is read when its rows are first looked
/// at, since most such sets only add a row. A set over one table without grouping or distinct, opened with a
/// lock other than read-only, is updatable: writes go to the store at update() and change the snapshot with
/// it. A transaction's roll-back does not reach the snapshot; requery() does. A row that an edit takes out of
/// the filter, and a new row outside it, stay shown until the filter is set again.
///
/// Field names are found without regard to case; the first of two equal names is taken. Unless said otherwise
/// a routine throws RuntimeError 3704 on a closed set, 3021 without a current row, 3265 for an unknown field,
/// and 3710 when called from inside willChangeRecord for anything but reading.
class Recordset : public std::enable_shared_from_this<Recordset>
{
public:
    static std::shared_ptr<Recordset> create();
    ~Recordset();
    Recordset(const Recordset &) = delete;
    Recordset &operator=(const Recordset &) = delete;

    // --- opening

    /// Opens a statement text, or a table's name with CommandKind::Table (a name in brackets is taken too).
    /// The first row becomes current. On a connection of cursor location client every set is static.
    /// @throws RuntimeError 3705 when open, 3709 on a closed connection, and what the statement itself gives.
    void open(const QString &source, const ConnectionPtr &connection,
              CursorType cursor = CursorType::ForwardOnly, LockType lock = LockType::ReadOnly,
              CommandKind kind = CommandKind::Text);
    /// The same on a connection of its own to the store that the connection string names; it holds no lock
    /// there once the rows are read.
    void open(const QString &source, const QString &connectionString,
              CursorType cursor = CursorType::ForwardOnly, LockType lock = LockType::ReadOnly,
              CommandKind kind = CommandKind::Text);
    /// @throws RuntimeError 3219 while a row is being edited or added.
    void close();
    int state() const noexcept;
    bool isOpen() const noexcept { return state() == stateOpen; }
    const QString &source() const noexcept;                   ///< the statement's text or the table's name
    void setCursorLocation(CursorLocation location) noexcept; ///< before open(); else the connection's
    void setCursorType(CursorType cursor) noexcept;           ///< kept for an open() without one

    // --- rows and the current row

    /// The rows of the filter in force; -1 for a forward-only set.
    int recordCount() const;
    bool bof() const;
    bool eof() const;
    void moveFirst();
    void moveLast();
    void moveNext();
    void movePrevious();
    /// 1-based among the rows of the filter in force, or positionBof, positionEof, positionUnknown.
    int absolutePosition() const;
    void setAbsolutePosition(int position);
    /// The row's ordinal from 1 in the order of fetching; a filter does not renumber it.
    int bookmark() const;
    void setBookmark(int bookmark);

    /// Shows only the rows that the text selects (`name op value` joined by and, or and parentheses); an
    /// empty text shows all. The first row becomes current. @throws RuntimeError 3001 for a bad text, 3265
    /// for an unknown field.
    void setFilter(const QString &filter);
    const QString &filter() const noexcept;
    /// Moves to the first row that fulfils `name op value`, from the current row on, it included; at no hit
    /// to EOF.
    void find(const QString &criterion);
    /// A second view of the same rows with its own current row and no filter.
    std::shared_ptr<Recordset> clone();
    /// Runs the statement again. The filter stays in force; the first row becomes current.
    /// @throws RuntimeError 3219 while a row is being edited or added.
    void requery();
    /// Reads the rows that are present anew from the store; rows that others have added are not seen, and one
    /// that was removed stays as it was read. @throws RuntimeError 3219 while a row is being edited or added,
    /// 3251 when the rows are not those of one table.
    void resync();

    // --- fields

    int fieldCount() const;
    const FieldInfo &field(int index) const;
    const FieldInfo &field(const QString &name) const;
    /// -1 when there is none. Never throws 3265.
    int fieldIndex(const QString &name) const;

    Value value(int index) const;
    Value value(const QString &name) const;
    /// The value last read from the store.
    Value originalValue(int index) const;
    Value originalValue(const QString &name) const;
    /// Starts an edit of the current row if none is open. The value is converted to the field's type.
    /// @throws RuntimeError -2147217887 for a value that does not fit the field, for a field that shows no
    /// column and for the counter of a row that has its number; 3712 when a handler refused,
    /// 3251 on a set that is not updatable. What only the store can tell (a duplicate, a refused empty text)
    /// comes with update().
    void setValue(int index, const Value &value);
    void setValue(const QString &name, const Value &value);

    // --- changing rows

    /// Starts a new row; an open new row or edit is saved first. It holds the columns' defaults, and stands
    /// behind the last row once it is saved. @throws RuntimeError 3251 on a set that is not updatable
    void addNew();
    /// Writes the edited or new row to the store, which is durable then (or with the transaction). Without a
    /// change it does nothing. On a failure the edit stays open and the store is as before.
    void update();
    void cancelUpdate();
    void updateBatch(); ///< acts on the current row, as update()
    void cancelBatch(); ///< acts on the current row, as cancelUpdate()
    EditMode editMode() const;
    bool isUpdatable() const;

    // --- reading without moving, for grids and reports

    /// The value of a field in the row at a 0-based position among the rows of the filter in force. A new row
    /// that is not saved yet does not count.
    Value valueAt(int position, int index) const;
    int rowCount() const; ///< rows of the filter in force, also for a forward-only set
    /// The rows of the filter in force as they stand now; they stay when the set is closed, requeried or
    /// filtered anew.
    std::shared_ptr<const RowsShown> rowsShown() const;

    /// Called now and then while open() and requery() read many rows, with the rows read so far. It must not
    /// use the set or its connection, and must not serve events.
    void setReadProgress(std::function<void(int rows)> progress);

    // --- events

    Event<RecordChange &> willChangeRecord;
    Event<> moveComplete;    ///< after every move of the current row, and after open()
    Event<> rowsChanged;     ///< the rows shown are others now: open, filter, requery, resync, update, close
    Event<int> fieldChanged; ///< setValue() or a cancelled change gave the field of this index another value

private:
    Recordset();
    friend class Connection;
    void connectionClosed(); // closes without a word, pending edits or not
    void moveTo(int position);
    void leaveRow(); // saves an open edit or new row
    void announce(ChangeReason reason);
    struct Private;
    std::unique_ptr<Private> d;
};

using RecordsetPtr = std::shared_ptr<Recordset>;
