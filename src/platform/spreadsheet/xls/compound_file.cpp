#include "platform/spreadsheet/xls/compound_file.h"

#include "platform/spreadsheet/refusal.h"
#include "platform/spreadsheet/xls/bytes.h"

#include <algorithm>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace spreadsheet::xls
{

namespace
{

constexpr qint64 sectorSize = 512;
constexpr qint64 headerSize = 512;
constexpr qint64 shortestStream = 4096; // a shorter one would have to lie in sectors of another size
constexpr quint32 numbersPerSector = sectorSize / sizeof(quint32);
constexpr quint32 tablesInHeader = 109;

// Marks in the place of a sector's number.
constexpr quint32 tableListSector = 0xFFFFFFFC;
constexpr quint32 tableSector = 0xFFFFFFFD;
constexpr quint32 endOfChain = 0xFFFFFFFE;
constexpr quint32 freeSector = 0xFFFFFFFF;

enum class EntryKind : quint8 { None = 0, Stream = 2, Root = 5 };

quint32 sectorsFor(quint32 count, quint32 perSector)
{
    return (count + perSector - 1) / perSector;
}

/// Where everything lies: the stream's sectors first, then the directory's one, the allocation table's, and
/// the list of the table's sectors that the header has no room for.
struct Layout {
    quint32 stream;
    quint32 directory;
    quint32 firstTable;
    quint32 tables = 1;
    quint32 firstList = 0;
    quint32 lists = 0;

    explicit Layout(quint32 streamSectors)
        : stream(streamSectors), directory(streamSectors), firstTable(streamSectors + 1)
    {
        // The table tells of its own sectors too.
        for (;;) {
            lists = tables > tablesInHeader ? sectorsFor(tables - tablesInHeader, numbersPerSector - 1) : 0;
            const quint32 needed = sectorsFor(firstTable + tables + lists, numbersPerSector);
            if (needed == tables)
                break;
            tables = needed;
        }
        firstList = firstTable + tables;
    }
};

void appendFree(QByteArray &bytes, qint64 size)
{
    while (bytes.size() < size)
        append(bytes, freeSector);
}

void appendChain(QByteArray &bytes, quint32 first, quint32 count)
{
    for (quint32 sector = first + 1; sector < first + count; ++sector)
        append(bytes, sector);
    append(bytes, endOfChain);
}

QByteArray tableOf(const Layout &layout)
{
    QByteArray bytes;
    appendChain(bytes, 0, layout.stream);
    appendChain(bytes, layout.directory, 1);
    for (quint32 i = 0; i < layout.tables; ++i)
        append(bytes, tableSector);
    for (quint32 i = 0; i < layout.lists; ++i)
        append(bytes, tableListSector);
    appendFree(bytes, layout.tables * sectorSize);
    return bytes;
}

QByteArray listsOf(const Layout &layout)
{
    QByteArray bytes;
    quint32 table = tablesInHeader;
    for (quint32 list = 0; list < layout.lists; ++list) {
        for (quint32 i = 0; i < numbersPerSector - 1; ++i, ++table)
            append(bytes, table < layout.tables ? layout.firstTable + table : freeSector);
        append(bytes, list + 1 < layout.lists ? layout.firstList + list + 1 : endOfChain);
    }
    return bytes;
}

QByteArray headerOf(const Layout &layout)
{
    QByteArray bytes("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
    bytes.append(16, '\0');
    for (const quint16 number : {0x003E, 3, 0xFFFE, 9, 6, 0, 0, 0}) // version 3, sectors of 2^9 and 2^6 bytes
        append(bytes, number);
    append(bytes, quint32(0));
    append(bytes, layout.tables);
    append(bytes, layout.directory);
    append(bytes, quint32(0));
    append(bytes, quint32(shortestStream));
    append(bytes, endOfChain); // there are no small sectors
    append(bytes, quint32(0));
    append(bytes, layout.lists > 0 ? layout.firstList : endOfChain);
    append(bytes, layout.lists);
    for (quint32 table = 0; table < std::min(layout.tables, tablesInHeader); ++table)
        append(bytes, layout.firstTable + table);
    appendFree(bytes, headerSize);
    return bytes;
}

QByteArray entryOf(const QString &name, EntryKind kind, quint32 child, quint32 sector, qint64 size)
{
    constexpr qsizetype nameRoom = 64;
    QByteArray bytes;
    for (const QChar c : name)
        append(bytes, c.unicode());
    bytes.append(nameRoom - bytes.size(), '\0');
    append(bytes, quint16(name.isEmpty() ? 0 : 2 * (name.size() + 1)));
    append(bytes, quint8(kind));
    append(bytes, quint8(1)); // black
    append(bytes, freeSector);
    append(bytes, freeSector);
    append(bytes, child);
    bytes.append(36, '\0'); // class, flags and times
    append(bytes, sector);
    append(bytes, quint32(size));
    append(bytes, quint32(0));
    return bytes;
}

QByteArray directoryOf(qint64 streamSize)
{
    const QByteArray none = entryOf({}, EntryKind::None, freeSector, 0, 0);
    return entryOf(u"Root Entry"_s, EntryKind::Root, 1, endOfChain, 0) +
           entryOf(u"Workbook"_s, EntryKind::Stream, freeSector, 0, streamSize) + none + none;
}

} // namespace

CompoundFile::CompoundFile(OutputFile &file) : m_file(file)
{
    m_file.write(QByteArray(headerSize, '\0'));
}

qint64 CompoundFile::position() const noexcept
{
    return m_file.position() - headerSize;
}

void CompoundFile::write(QByteArrayView bytes)
{
    if (position() + bytes.size() > std::numeric_limits<qint32>::max())
        throw refused(u"A .xls file holds 2 GB. Save as .xlsx."_s);
    m_file.write(bytes);
}

void CompoundFile::patch(qint64 position, QByteArrayView bytes)
{
    m_file.patch(headerSize + position, bytes);
}

void CompoundFile::finish()
{
    const qint64 size = std::max(position(), shortestStream);
    const auto sectors = quint32((size + sectorSize - 1) / sectorSize);
    m_file.write(QByteArray(sectors * sectorSize - position(), '\0'));
    const Layout layout(sectors);
    m_file.write(directoryOf(size));
    m_file.write(tableOf(layout));
    m_file.write(listsOf(layout));
    m_file.patch(0, headerOf(layout));
}

} // namespace spreadsheet::xls
