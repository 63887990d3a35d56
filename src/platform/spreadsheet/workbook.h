#pragma once

#include "platform/database/recordset.h"

#include <QtCore/QString>

#include <functional>
#include <memory>

/// Told now and then while a workbook is saved; false stops that.
using SaveProgress = std::function<bool(int done, int all)>;

/// A workbook of one sheet, filled in memory and written by saveAs(). Rows and columns count from 1. What is
/// copied from a record set stays in the set's own compact form until it is written.
class Workbook
{
public:
    Workbook();
    ~Workbook(); ///< what was not saved is dropped
    Workbook(const Workbook &) = delete;
    Workbook &operator=(const Workbook &) = delete;

    void setCell(int row, int column, const Value &value);
    /// The cells of that row from one column to another, both included.
    void setBold(int row, int firstColumn, int lastColumn);
    /// Copies the values of the rows from the set's current row to its last one, without field names, to the
    /// rows from `row` on; the set then stands at EOF. At EOF it copies nothing. Only one set can be copied
    /// in, and nothing is set behind it.
    /// @throws RuntimeError 3704 for a closed set
    void copyFromRecordset(int row, Recordset &rows);

    /// Writes the workbook. The extension of the name chooses the form: `.xls` the binary one of 1997 to
    /// 2003, `.xlsx`, `.txt` tab-separated UTF-8 with a byte order mark; any other is refused. Money and
    /// counts are written as numbers, dates as date cells, Booleans as Booleans, Null as an empty cell. Days
    /// before 1 March 1900, on whose numbers programs do not agree, are written as text. `.xlsx` holds 16
    /// digits of a number. Rows that a sheet has no room for go on in further sheets, each with the rows
    /// above the copied ones as its heading.
    ///
    /// Asks before it replaces a file. The file is written beside its place, readable by its owner alone, and
    /// put there in one step when it is complete and durable: on a failure what stood there stays.
    /// @throws RuntimeError 1004 when the user does not want the file replaced; 32755 when `progress` stops
    /// it; one with a clear description for an unknown extension, for what no cell or sheet of the form can
    /// hold (a text of more than 32,767 characters) and for whatever the file system refuses
    void saveAs(const QString &path, const SaveProgress &progress = {});

private:
    struct Private;
    std::unique_ptr<Private> d;
};
