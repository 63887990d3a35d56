#include "platform/spreadsheet/xlsx_file.h"

#include "platform/runtime/clock.h"
#include "platform/spreadsheet/formats.h"
#include "platform/spreadsheet/refusal.h"
#include "platform/spreadsheet/xlsx_check.h"

#include <QtCore/QFile>

#include <array>
#include <cerrno>
#include <system_error>
#include <xlsxwriter.h>

using namespace Qt::Literals::StringLiterals;

/// Stands in for the library's own function, whose files have a name until they are open: a process that is
/// killed then leaves them.
extern "C" __attribute__((visibility("default"))) std::FILE *lxw_tmpfile(char *folder)
{
    const int descriptor = openHelperFile(folder);
    return descriptor < 0 ? nullptr : ::fdopen(descriptor, "w+b");
}

namespace spreadsheet
{

namespace
{

constexpr int rowsPerSheet = LXW_ROW_MAX;
constexpr int columnsPerSheet = LXW_COL_MAX;
constexpr std::size_t bufferSize = std::size_t(64) * 1024;

[[noreturn]] void fail(int systemError)
{
    throw std::system_error(systemError != 0 ? systemError : EIO, std::generic_category());
}

void check(lxw_error code)
{
    if (code != LXW_NO_ERROR)
        fail(errno);
}

bool isHexDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

/// Whether `_x005F_`, which readers of the format take for a character's code, begins there.
bool isCode(const QString &text, qsizetype at)
{
    return text.size() >= at + 7 && text[at + 1] == u'x' && text[at + 6] == u'_' &&
           std::all_of(text.cbegin() + at + 2, text.cbegin() + at + 6, isHexDigit);
}

/// Whether XML has a way to write the character at a place; a high surrogate is looked at with its low one.
bool isXmlCharacter(const QString &text, qsizetype at)
{
    const QChar c = text[at];
    if (c.isHighSurrogate())
        return at + 1 < text.size() && text[at + 1].isLowSurrogate();
    if (c.isLowSurrogate())
        return at > 0 && text[at - 1].isHighSurrogate();
    return c >= u' ' ? c < QChar(0xFFFE) : c == u'\t' || c == u'\n';
}

/// The text in the format's own terms: what XML can't hold as the code of the character.
QByteArray stringOf(const QString &text)
{
    const auto needsCode = [&](qsizetype at) {
        return text[at] == u'_' ? isCode(text, at) : !isXmlCharacter(text, at);
    };
    qsizetype at = 0;
    while (at < text.size() && !needsCode(at))
        ++at;
    if (at == text.size())
        return text.toUtf8();
    QString coded = text.first(at);
    for (; at < text.size(); ++at) {
        if (needsCode(at))
            coded +=
                u"_x"_s + QString::number(text[at].unicode(), 16).rightJustified(4, u'0').toUpper() + u'_';
        else
            coded += text[at];
    }
    return coded.toUtf8();
}

class Writer
{
public:
    Writer(const Contents &contents, const QByteArray &path, QByteArray folder);
    ~Writer();
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    void writeSheet(const Sheet &sheet);
    /// The rows of the sheets, as the package should have them.
    std::vector<SheetRows> finish();

private:
    lxw_format *formatOf(Format format, bool bold) const
    {
        return m_formats[std::size_t(format)][bold ? 1 : 0];
    }
    void writeCell(lxw_worksheet *page, int row, int column, const Cell &cell, bool bold);

    const Contents &m_contents;
    lxw_workbook *m_book;
    std::array<std::array<lxw_format *, 2>, formatCount> m_formats{};
    std::vector<std::unique_ptr<char[]>> m_buffers; ///< of the sheets' helper files
    std::vector<SheetRows> m_written;
};

Writer::Writer(const Contents &contents, const QByteArray &path, QByteArray folder) : m_contents(contents)
{
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = folder.data();
    m_book = workbook_new_opt(path.constData(), &options);
    if (!m_book)
        fail(ENOMEM);
    lxw_doc_properties properties{};
    // By the program's clock, which the library does not know.
    properties.created = QDateTime(now().date(), now().time()).toSecsSinceEpoch();
    check(workbook_set_properties(m_book, &properties));
    for (std::size_t format = 0; format < formatCount; ++format) {
        for (const bool bold : {false, true}) {
            const char *numbers = formatText(Format(format));
            if (!numbers && !bold)
                continue;
            lxw_format *made = m_formats[format][bold ? 1 : 0] = workbook_add_format(m_book);
            if (bold)
                format_set_bold(made);
            if (numbers)
                format_set_num_format(made, numbers);
        }
    }
}

Writer::~Writer()
{
    if (m_book)
        workbook_close(m_book); // writes for nothing, but frees everything and closes its files
}

void Writer::writeSheet(const Sheet &sheet)
{
    errno = 0;
    lxw_worksheet *page = workbook_add_worksheet(m_book, nullptr);
    if (!page || !page->optimize_tmpfile)
        fail(errno);
    m_buffers.push_back(std::make_unique_for_overwrite<char[]>(bufferSize));
    std::setvbuf(page->optimize_tmpfile, m_buffers.back().get(), _IOFBF, bufferSize);
    int number = 0;
    for (const int width : m_contents.columnWidths()) {
        const auto column = lxw_col_t(number++);
        check(worksheet_set_column(page, column, column, width, nullptr));
    }
    for (int row = 0; row < sheet.rows; ++row) {
        for (int column = 0; column < m_contents.columns(); ++column)
            writeCell(page, row, column, cellOf(m_contents.value(sheet, row, column)),
                      m_contents.isBold(row, column));
        if (std::ferror(page->optimize_tmpfile))
            fail(errno);
    }
    lxw_worksheet_write_single_row(page); // the last one is still held back
    if (std::fflush(page->optimize_tmpfile) != 0 || std::ferror(page->optimize_tmpfile))
        fail(errno);
    m_written.push_back(sheetRowsOf(page->optimize_tmpfile));
}

void Writer::writeCell(lxw_worksheet *page, int row, int column, const Cell &cell, bool bold)
{
    const auto r = lxw_row_t(row);
    const auto c = lxw_col_t(column);
    lxw_format *format = formatOf(cell.format, bold);
    if (const auto *number = std::get_if<double>(&cell.content))
        check(worksheet_write_number(page, r, c, *number, format));
    else if (const auto *text = std::get_if<QString>(&cell.content))
        check(worksheet_write_string(page, r, c, stringOf(*text).constData(), format));
    else if (const auto *truth = std::get_if<bool>(&cell.content))
        check(worksheet_write_boolean(page, r, c, *truth ? 1 : 0, format));
}

std::vector<SheetRows> Writer::finish()
{
    errno = 0;
    check(workbook_close(std::exchange(m_book, nullptr)));
    return m_written;
}

} // namespace

void writeXlsx(const Contents &contents, NewFile &file, const QString &folder)
{
    if (contents.columns() > columnsPerSheet)
        throw refused(u"A sheet has %1 columns."_s.arg(columnsPerSheet));
    try {
        Writer writer(contents, QFile::encodeName(file.path()), QFile::encodeName(folder));
        for (const Sheet &sheet : contents.sheets(rowsPerSheet))
            writer.writeSheet(sheet);
        if (!isWholePackage(file.path(), writer.finish()))
            fail(ENOSPC); // what makes the library lose bytes without a word
    } catch (const std::system_error &failure) {
        throw file.failure(failure.code().value());
    }
}

} // namespace spreadsheet
