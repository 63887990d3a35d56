#include "platform/spreadsheet/xls/styles.h"

#include "platform/spreadsheet/formats.h"
#include "platform/spreadsheet/xls/record.h"

using namespace Qt::Literals::StringLiterals;

namespace spreadsheet::xls
{

namespace
{

// Readers count on fifteen formats of styles and the plain cell's one in front.
constexpr quint16 styleFormats = 15;
constexpr quint16 firstNumberFormat = 164;
constexpr quint16 plainFont = 0;
constexpr quint16 boldFont = 1;

void writeFont(CompoundFile &stream, bool bold)
{
    const QString name = u"Arial"_s;
    Record record(RecordType::Font);
    record.number(quint16(200)).number(quint16(0)).number(quint16(0x7FFF)); // 10 points, automatic colour
    record.number(quint16(bold ? 700 : 400)).number(quint16(0));
    record.number(quint32(0)).number(quint8(name.size())).text(name);
    stream.write(record.whole());
}

void writeCellFormat(CompoundFile &stream, quint16 font, quint16 numberFormat, bool isStyle)
{
    constexpr quint16 style = 0xFFF5;
    constexpr quint16 cellOfStyle0 = 0x0001; // locked, as cells are while nobody protects the sheet
    Record record(RecordType::Xf);
    record.number(font).number(numberFormat).number(isStyle ? style : cellOfStyle0);
    record.number(quint8(0x20)).number(quint8(0)).number(quint8(0)); // at the bottom, not turned
    const bool own = !isStyle && (font != plainFont || numberFormat != 0);
    record.number(quint8(own ? 0x0C : 0)); // number format and font of its own
    record.number(quint32(0)).number(quint32(0)).number(quint16(0x20C0));
    stream.write(record.whole());
}

quint16 numberFormatOf(Format format)
{
    return formatText(format) ? quint16(firstNumberFormat + quint16(format)) : quint16(0);
}

} // namespace

void writeStyles(CompoundFile &stream)
{
    for (const bool bold : {false, true, false, false}) // readers count on four
        writeFont(stream, bold);
    for (std::size_t i = 0; i < formatCount; ++i) {
        if (!formatText(Format(i)))
            continue;
        const QString text = QString::fromLatin1(formatText(Format(i)));
        Record record(RecordType::Format);
        record.number(numberFormatOf(Format(i))).number(quint16(text.size())).text(text);
        stream.write(record.whole());
    }
    for (int i = 0; i < styleFormats; ++i)
        writeCellFormat(stream, plainFont, 0, true);
    for (std::size_t i = 0; i < formatCount; ++i) {
        for (const quint16 font : {plainFont, boldFont})
            writeCellFormat(stream, font, numberFormatOf(Format(i)), false);
    }
    Record normal(RecordType::Style);
    normal.number(quint16(0x8000)).number(quint8(0)).number(quint8(0xFF));
    stream.write(normal.whole());
}

quint16 styleOf(Format format, bool bold)
{
    return quint16(styleFormats + 2 * quint16(format) + (bold ? 1 : 0));
}

} // namespace spreadsheet::xls
