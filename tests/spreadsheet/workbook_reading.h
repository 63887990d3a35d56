#pragma once

#include "platform/spreadsheet/workbook.h"
#include "support/store_reading.h"

// What readers that know nothing of this program tell of a workbook's cells: a line for each cell that is not
// empty.

/// By the reader of the Python library for that kind of file.
inline QString toldByPython(const QString &path)
{
    return outputOf(u"/usr/bin/python3"_s, {QStringLiteral(QUVANA_READERS "/read_workbook.py"), path});
}
inline QString toldByPerl(const QString &path)
{
    return outputOf(u"/usr/bin/perl"_s, {QStringLiteral(QUVANA_READERS "/read_workbook.pl"), path});
}
