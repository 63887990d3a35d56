#include "platform/spreadsheet/workbook.h"

#include "platform/runtime/files.h"
#include "platform/spreadsheet/contents.h"
#include "platform/spreadsheet/failures.h"
#include "platform/spreadsheet/output_file.h"
#include "platform/spreadsheet/text_file.h"
#include "platform/spreadsheet/xls/xls_file.h"
#include "platform/spreadsheet/xlsx_file.h"
#include "platform/ui/dialogs.h"

#include <QtCore/QFileInfo>

#include <system_error>

using namespace Qt::Literals::StringLiterals;

namespace
{

enum class Form { Xls, Xlsx, Text };

RuntimeError declined()
{
    return RuntimeError(1004, u"Workbook"_s, u"Method 'SaveAs' of object '_Workbook' failed"_s);
}

Form formOf(const QString &path)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == u"xls")
        return Form::Xls;
    if (extension == u"xlsx")
        return Form::Xlsx;
    if (extension == u"txt")
        return Form::Text;
    throw spreadsheet::notSaved(path, u"its name must end in .xls, .xlsx or .txt"_s);
}

/// What a file's name stands for, so that a link goes on pointing at the file.
QString placeOf(const QString &path)
{
    const QString place = QFileInfo(path).canonicalFilePath();
    return place.isEmpty() ? QFileInfo(path).absoluteFilePath() : place;
}

void write(const spreadsheet::Contents &contents, Form form, const QString &path, const QString &folder)
{
    spreadsheet::OutputFile file(path);
    switch (form) {
    case Form::Xls:
        spreadsheet::writeXls(contents, file);
        break;
    case Form::Xlsx:
        spreadsheet::writeXlsx(contents, path, folder);
        break;
    case Form::Text:
        spreadsheet::writeText(contents, file);
        break;
    }
    file.finish();
}

void putInPlace(const QString &made, const QString &place, bool replaces)
{
    if (replaces && fileExists(place)) // it may have gone while the new one was written
        replaceFile(made, place);
    else
        renameFile(made, place);
}

} // namespace

struct Workbook::Private {
    spreadsheet::Contents contents;
};

Workbook::Workbook() : d(std::make_unique<Private>()) {}
Workbook::~Workbook() = default;

void Workbook::setCell(int row, int column, const Value &value)
{
    d->contents.setCell(row - 1, column - 1, value);
}

void Workbook::setBold(int row, int firstColumn, int lastColumn)
{
    d->contents.setBold(row - 1, firstColumn - 1, lastColumn - 1);
}

void Workbook::copyFromRecordset(int row, Recordset &rows)
{
    if (rows.eof())
        return;
    const int position = rows.absolutePosition();
    d->contents.copy(row - 1, rows.rowsShown(), position == positionBof ? 0 : position - 1);
    rows.moveLast();
    rows.moveNext();
}

void Workbook::saveAs(const QString &path)
{
    const Form form = formOf(path);
    const QString place = placeOf(path);
    const QFileInfo present(place);
    if (present.exists() && !present.isFile())
        throw spreadsheet::notSaved(path, u"its name is that of a folder or a device"_s);
    if (present.exists() &&
        !askYesNo(u"The file already exists. Replace it?  الملف موجود مسبقاً. هل تريد استبداله؟"_s))
        throw declined();
    if (present.exists() && !present.isWritable())
        throw spreadsheet::notSaved(path, u"the present file is write-protected"_s);
    try {
        const spreadsheet::PrivateFolder folder(present.absolutePath());
        const QString made = folder.path() + u"/workbook"_s;
        write(d->contents, form, made, folder.path());
        putInPlace(made, place, present.exists());
    } catch (const std::system_error &failure) {
        throw spreadsheet::notSaved(path, failure.code().value());
    }
}
