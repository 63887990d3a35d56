#include "platform/spreadsheet/xls/shared_strings.h"

#include "platform/spreadsheet/xls/bytes.h"

#include <algorithm>

namespace spreadsheet::xls
{

TextNumbers::Numbered TextNumbers::of(const QString &text)
{
    constexpr qint64 memory = qint64(16) * 1024 * 1024;
    constexpr qint64 bytesOfEntry = 96;
    const auto found = m_numbers.constFind(text);
    if (found != m_numbers.cend())
        return {*found, false};
    const qint64 bytes = bytesOfEntry + text.size() * qint64(sizeof(QChar));
    if (m_rememberedBytes + bytes > memory) {
        m_numbers.clear();
        m_rememberedBytes = 0;
    }
    m_rememberedBytes += bytes;
    m_numbers.insert(text, m_next);
    return {m_next++, true};
}

SharedStrings::SharedStrings(CompoundFile &stream) : m_stream(stream), m_start(stream.position())
{
    m_record.number(m_cells).number(m_texts); // filled in at the end
}

void SharedStrings::add(const QString &text)
{
    ++m_cells;
    if (m_numbers.of(text).isNew) {
        ++m_texts;
        append(text);
    }
}

/// A text's length and flag stay together with its first character. Where its characters go on in another
/// record, the flag stands there again.
void SharedStrings::append(const QString &text)
{
    constexpr qsizetype headSize = 3;
    const bool narrow = isNarrow(text);
    const auto flag = quint8(narrow ? 0 : 1);
    const qsizetype width = narrow ? 1 : 2;
    if (m_record.room() < headSize + width)
        beginContinuation();
    m_record.number(quint16(text.size())).number(flag);
    QStringView rest = text;
    for (;;) {
        const QStringView piece = rest.first(std::min(rest.size(), m_record.room() / width));
        m_record.characters(piece, narrow);
        rest = rest.sliced(piece.size());
        if (rest.isEmpty())
            return;
        beginContinuation();
        m_record.number(flag);
    }
}

void SharedStrings::beginContinuation()
{
    m_stream.write(m_record.whole());
    m_record = Record(RecordType::Continue);
}

void SharedStrings::finish()
{
    m_stream.write(m_record.whole());
    QByteArray counts;
    xls::append(counts, m_cells);
    xls::append(counts, m_texts);
    constexpr qint64 recordHeader = 4;
    m_stream.patch(m_start + recordHeader, counts);
}

} // namespace spreadsheet::xls
