#pragma once

#include "platform/database/field.h"
#include "platform/ui/flex_grid.h"

#include <QtCore/QString>

#include <functional>
#include <optional>

/// The word for the value of a Boolean field in the totals, in the session's language.
QString ReformatBoolean(const QString &fieldName, bool value);
/// Whether a column shows a looked-up text in place of a stored code.
bool DeCodedColumn(const QString &fieldName);

/// Heads each column of the set's fields with the translated name; no column becomes narrower.
void FgridHeading(FlexGrid &grid, const Recordset &rows);

/// How the browser writes the values of a field; without a text for fields that are written as they are.
ColumnFormat columnFormatOf(const FieldInfo &field);

/// Writes all columns by their fields' formats and makes them as wide as their headings and the first
/// screenful of rows ask for. Returns the width of all columns in twips.
int setColumnFormats(FlexGrid &grid, const Recordset &rows);
/// Makes each column as wide as its heading or its widest text, with 120 twips around it. `goOn` is called
/// often, with the percentage done, and may serve events; once it gives False, nothing is returned and
/// the grid is not touched any more. Returns the width of all columns in twips.
std::optional<int> fitColumns(FlexGrid &grid, const std::function<bool(int percent)> &goOn);
/// Makes a column wide enough for a text that was typed into it, but not wider than what is seen of the grid.
/// Returns the width added, in twips.
int widenFor(FlexGrid &grid, int column, const QString &text);
