#pragma once

#include "platform/spreadsheet/workbook.h"
#include "support/store_reading.h"

/// What a reader that knows nothing of this program tells of a workbook's cells: a line for each cell that is
/// not empty. What it complains of comes in front.
inline QString toldBy(const QString &program, const QString &script, const QString &path)
{
    QProcess reader;
    reader.start(program, {QStringLiteral(QUVANA_READERS "/") + script, path});
    EXPECT_TRUE(reader.waitForFinished(300'000)) << reader.errorString().toStdString();
    const QByteArray complaints = reader.readAllStandardError();
    return QString::fromUtf8(complaints + reader.readAllStandardOutput());
}

/// By the reader of the Python library for that kind of file.
inline QString toldByPython(const QString &path)
{
    return toldBy(u"/usr/bin/python3"_s, u"read_workbook.py"_s, path);
}
inline QString toldByPerl(const QString &path)
{
    return toldBy(u"/usr/bin/perl"_s, u"read_workbook.pl"_s, path);
}
