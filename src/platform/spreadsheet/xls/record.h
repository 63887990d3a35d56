#pragma once

#include <QtCore/QByteArrayView>
#include <QtCore/QStringView>
#include <QtCore/QtEndian>

#include <array>
#include <bit>
#include <cstring>

namespace spreadsheet::xls
{

/// The longest content of one record.
inline constexpr qsizetype recordRoom = 8224;

/// The types of records that are written.
enum class RecordType : quint16 {
    Eof = 0x000A,
    Date1904 = 0x0022,
    Font = 0x0031,
    Continue = 0x003C,
    Window1 = 0x003D,
    CodePage = 0x0042,
    ColumnInfo = 0x007D,
    BoundSheet = 0x0085,
    Xf = 0x00E0,
    Sst = 0x00FC,
    LabelSst = 0x00FD,
    Dimensions = 0x0200,
    Number = 0x0203,
    BoolErr = 0x0205,
    Window2 = 0x023E,
    Rk = 0x027E,
    Style = 0x0293,
    Format = 0x041E,
    Bof = 0x0809
};

/// Whether each character of a text goes into one byte.
inline bool isNarrow(QStringView text)
{
    char16_t all = 0;
    for (const QChar c : text)
        all |= c.unicode();
    return all <= 0xFF;
}

/// One record, filled from front to back. The caller sees to it that the content fits.
class Record
{
public:
    explicit Record(RecordType type) { number(quint16(type)).number(quint16(0)); }

    template <typename Number>
    Record &number(Number value)
    {
        qToLittleEndian(value, m_bytes.data() + m_size);
        m_size += sizeof value;
        return *this;
    }
    Record &real(double value) { return number(std::bit_cast<quint64>(value)); }
    Record &bytes(QByteArrayView content)
    {
        std::memcpy(m_bytes.data() + m_size, content.data(), std::size_t(content.size()));
        m_size += content.size();
        return *this;
    }
    /// The characters alone, one or two bytes each.
    Record &characters(QStringView text, bool narrow)
    {
        for (const QChar c : text) {
            if (narrow)
                number(quint8(c.unicode()));
            else
                number(c.unicode());
        }
        return *this;
    }
    /// The flag that tells how wide the characters are, and the characters.
    Record &text(QStringView text)
    {
        const bool narrow = isNarrow(text);
        return number(quint8(narrow ? 0 : 1)).characters(text, narrow);
    }

    qsizetype size() const noexcept { return m_size - headerSize; }
    qsizetype room() const noexcept { return recordRoom - size(); }
    /// The whole record, header included.
    QByteArrayView whole()
    {
        qToLittleEndian(quint16(size()), m_bytes.data() + 2);
        return {m_bytes.data(), m_size};
    }

private:
    static constexpr qsizetype headerSize = 4;
    std::array<char, headerSize + recordRoom> m_bytes;
    qsizetype m_size = 0;
};

} // namespace spreadsheet::xls
