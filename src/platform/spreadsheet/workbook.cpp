#include "platform/spreadsheet/workbook.h"

#include "platform/runtime/files.h"
#include "platform/runtime/new_file.h"
#include "platform/spreadsheet/contents.h"
#include "platform/spreadsheet/output_file.h"
#include "platform/spreadsheet/refusal.h"
#include "platform/spreadsheet/text_file.h"
#include "platform/spreadsheet/xls/xls_file.h"
#include "platform/spreadsheet/xlsx_file.h"
#include "platform/ui/dialogs.h"

#include <QtCore/QFileInfo>

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
    throw spreadsheet::refused(u"The name of a workbook ends in .xls, .xlsx or .txt."_s);
}

void write(const spreadsheet::Contents &contents, Form form, NewFile &file, const QString &folder)
{
    if (form == Form::Xlsx)
        return spreadsheet::writeXlsx(contents, file, folder);
    spreadsheet::OutputFile output(file);
    if (form == Form::Xls)
        spreadsheet::writeXls(contents, output);
    else
        spreadsheet::writeText(contents, output);
    output.flush();
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
    if (rows.editMode() == EditMode::Add)
        rows.update(); // as leaving the row does; only then has it a position
    if (rows.eof())
        return;
    const int position = rows.absolutePosition();
    d->contents.copy(row - 1, rows.rowsShown(), position == positionBof ? 0 : position - 1);
    rows.moveLast();
    rows.moveNext();
}

void Workbook::saveAs(const QString &path, const SaveProgress &progress)
{
    const Form form = formOf(path);
    if (fileExists(path) &&
        !askYesNo(u"The file already exists. Replace it?  الملف موجود مسبقاً. هل تريد استبداله؟"_s))
        throw declined();
    if (progress) {
        // Tables are read twice, or packed when they are read.
        const int all = d->contents.rows() * (form == Form::Text ? 1 : 2);
        d->contents.watchReading([progress, all](int rows) {
            if (!progress(rows, all))
                throw runtime_errors::cancelled();
        });
    }
    NewFile file(path);
    write(d->contents, form, file, QFileInfo(path).absolutePath());
    file.commit();
}
