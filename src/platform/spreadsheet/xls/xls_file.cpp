#include "platform/spreadsheet/xls/xls_file.h"

#include "platform/spreadsheet/refusal.h"
#include "platform/spreadsheet/xls/bytes.h"
#include "platform/spreadsheet/xls/compound_file.h"
#include "platform/spreadsheet/xls/record.h"
#include "platform/spreadsheet/xls/shared_strings.h"
#include "platform/spreadsheet/xls/styles.h"

#include <cmath>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace spreadsheet
{

namespace
{

using xls::Record;
using xls::RecordType;

constexpr int rowsPerSheet = 65536;
constexpr int columnsPerSheet = 256;
constexpr qint64 recordHeader = 4;

enum class StreamPart : quint16 { Globals = 0x0005, Sheet = 0x0010 };

/// A number in the 30 bits of a short cell, as a whole number or as one of hundredths; nothing when these do
/// not hold it exactly.
std::optional<quint32> shortNumber(double number)
{
    constexpr double limit = 1 << 29;
    constexpr quint32 whole = 2;
    constexpr quint32 hundredths = 3;
    if (std::abs(number) >= limit || (number == 0 && std::signbit(number)))
        return std::nullopt;
    if (number == std::trunc(number))
        return quint32(qint32(number)) << 2 | whole;
    const double hundredfold = std::nearbyint(number * 100);
    if (std::abs(hundredfold) < limit && hundredfold / 100 == number)
        return quint32(qint32(hundredfold)) << 2 | hundredths;
    return std::nullopt;
}

class Writer
{
public:
    Writer(const Contents &contents, OutputFile &file)
        : m_contents(contents), m_stream(file), m_sheets(contents.sheets(rowsPerSheet))
    {
    }
    void write();

private:
    void put(Record &record) { m_stream.write(record.whole()); }
    void put(Record &&record) { put(record); }
    void writeBegin(StreamPart part);
    void writeGlobals();
    void writeTexts();
    void writeSheet(std::size_t index);
    void writeFrame(const Sheet &sheet);
    void writeCell(int row, int column, const Cell &cell, bool bold);
    template <typename Visit>
    void visitCells(const Sheet &sheet, Visit &&visit) const;

    const Contents &m_contents;
    xls::CompoundFile m_stream;
    const std::vector<Sheet> m_sheets;
    std::vector<qint64> m_sheetStarts; ///< where a sheet's position is to be filled in
    xls::TextNumbers m_numbers;
};

template <typename Visit>
void Writer::visitCells(const Sheet &sheet, Visit &&visit) const
{
    const int columns = m_contents.columns();
    for (int row = 0; row < sheet.rows; ++row) {
        for (int column = 0; column < columns; ++column)
            visit(row, column, cellOf(m_contents.value(sheet, row, column)));
    }
}

void Writer::write()
{
    writeGlobals();
    for (std::size_t index = 0; index < m_sheets.size(); ++index)
        writeSheet(index);
    m_stream.finish();
}

void Writer::writeBegin(StreamPart part)
{
    constexpr quint16 version = 0x0600;
    put(Record(RecordType::Bof)
            .number(version)
            .number(quint16(part))
            .number(quint16(0x0DBB)) // build and year of the first program that wrote this version
            .number(quint16(1996))
            .number(quint32(0x0041))
            .number(quint32(6)));
}

void Writer::writeGlobals()
{
    writeBegin(StreamPart::Globals);
    put(Record(RecordType::CodePage).number(quint16(1200)));
    Record window(RecordType::Window1);
    for (const quint16 number : {0, 0, 16000, 9000, 0x38, 0, 0, 1, 600}) // place, size, bars, tabs
        window.number(number);
    put(window);
    put(Record(RecordType::Date1904).number(quint16(0)));
    xls::writeStyles(m_stream);
    for (std::size_t index = 0; index < m_sheets.size(); ++index) {
        m_sheetStarts.push_back(m_stream.position() + recordHeader);
        const QString name = u"Sheet%1"_s.arg(index + 1);
        put(Record(RecordType::BoundSheet)
                .number(quint32(0))
                .number(quint16(0))
                .number(quint8(name.size()))
                .text(name));
    }
    writeTexts();
    put(Record(RecordType::Eof));
}

void Writer::writeTexts()
{
    xls::SharedStrings strings(m_stream);
    for (const Sheet &sheet : m_sheets) {
        visitCells(sheet, [&](int, int, const Cell &cell) {
            if (const auto *text = std::get_if<QString>(&cell.content))
                strings.add(*text);
        });
    }
    strings.finish();
}

void Writer::writeSheet(std::size_t index)
{
    QByteArray start;
    xls::append(start, quint32(m_stream.position()));
    m_stream.patch(m_sheetStarts[index], start);

    const Sheet &sheet = m_sheets[index];
    writeBegin(StreamPart::Sheet);
    writeFrame(sheet);
    visitCells(sheet, [&](int row, int column, const Cell &cell) {
        writeCell(row, column, cell, m_contents.isBold(row, column));
    });
    constexpr quint16 shown = 0x00B6;
    constexpr quint16 selectedAndShown = 0x06B6;
    put(Record(RecordType::Window2)
            .number(index == 0 ? selectedAndShown : shown)
            .number(quint32(0))
            .number(quint32(0x40)) // colour of the grid
            .number(quint32(0))
            .number(quint32(0)));
    put(Record(RecordType::Eof));
}

void Writer::writeFrame(const Sheet &sheet)
{
    quint16 column = 0;
    for (const int width : m_contents.columnWidths()) {
        put(Record(RecordType::ColumnInfo)
                .number(column)
                .number(column)
                .number(quint16(width * 256))
                .number(xls::styleOf(Format::General, false))
                .number(quint32(0)));
        ++column;
    }
    put(Record(RecordType::Dimensions)
            .number(quint32(0))
            .number(quint32(sheet.rows))
            .number(quint16(0))
            .number(quint16(m_contents.columns()))
            .number(quint16(0)));
}

void Writer::writeCell(int row, int column, const Cell &cell, bool bold)
{
    const auto place = [&](RecordType type) {
        Record record(type);
        record.number(quint16(row)).number(quint16(column)).number(xls::styleOf(cell.format, bold));
        return record;
    };
    if (const auto *number = std::get_if<double>(&cell.content)) {
        if (const auto packed = shortNumber(*number))
            put(place(RecordType::Rk).number(*packed));
        else
            put(place(RecordType::Number).real(*number));
    } else if (const auto *text = std::get_if<QString>(&cell.content)) {
        put(place(RecordType::LabelSst).number(m_numbers.of(*text).number));
    } else if (const auto *truth = std::get_if<bool>(&cell.content)) {
        put(place(RecordType::BoolErr).number(quint8(*truth ? 1 : 0)).number(quint8(0)));
    }
}

} // namespace

void writeXls(const Contents &contents, OutputFile &file)
{
    if (contents.columns() > columnsPerSheet)
        throw refused(u"A sheet of a .xls file has %1 columns. Save as .xlsx."_s.arg(columnsPerSheet));
    Writer(contents, file).write();
}

} // namespace spreadsheet
