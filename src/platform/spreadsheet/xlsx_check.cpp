#include "platform/spreadsheet/xlsx_check.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <minizip/unzip.h>

#include <cerrno>
#include <system_error>
#include <unistd.h>
#include <zlib.h>

namespace spreadsheet
{

namespace
{

constexpr int pieceSize = 64 * 1024;
constexpr QByteArrayView sheetFolder = "xl/worksheets/sheet";

struct ClosePackage {
    void operator()(void *package) const { unzClose(package); }
};
using Package = std::unique_ptr<void, ClosePackage>;

quint32 crcOf(quint32 before, QByteArrayView bytes)
{
    return quint32(crc32(before, reinterpret_cast<const Bytef *>(bytes.data()), uInt(bytes.size())));
}

/// Takes a part piece by piece: where it is a sheet, adds its rows up.
class PartReader
{
public:
    explicit PartReader(const SheetRows *wanted) : m_wanted(wanted) {}

    void take(QByteArrayView piece)
    {
        if (m_wanted && m_wanted->size > 0)
            takeRows(piece);
        m_end = (m_end + piece.last(std::min(piece.size(), endSize)).toByteArray()).right(endSize);
    }
    bool isWhole() const
    {
        if (!m_wanted)
            return m_end.trimmed().endsWith('>');
        return m_end.endsWith("</worksheet>") && m_rows.size == m_wanted->size && m_rows.crc == m_wanted->crc;
    }

private:
    void takeRows(QByteArrayView piece)
    {
        constexpr QByteArrayView opening = "<sheetData>";
        if (!m_inRows) { // it stands in the first piece
            const qsizetype at = piece.indexOf(opening);
            if (at < 0)
                return;
            m_inRows = true;
            piece = piece.sliced(at + opening.size());
        }
        const QByteArrayView rows = piece.first(std::min(qint64(piece.size()), m_wanted->size - m_rows.size));
        m_rows.crc = crcOf(m_rows.crc, rows);
        m_rows.size += rows.size();
    }

    static constexpr qsizetype endSize = 32;
    const SheetRows *m_wanted;
    SheetRows m_rows;
    bool m_inRows = false;
    QByteArray m_end;
};

bool isWholePart(unzFile package, PartReader reader)
{
    if (unzOpenCurrentFile(package) != UNZ_OK)
        return false;
    QByteArray piece(pieceSize, Qt::Uninitialized);
    int size = 0;
    while ((size = unzReadCurrentFile(package, piece.data(), pieceSize)) > 0)
        reader.take(QByteArrayView(piece).first(size));
    return unzCloseCurrentFile(package) == UNZ_OK && size == 0 && reader.isWhole();
}

} // namespace

SheetRows sheetRowsOf(std::FILE *file)
{
    SheetRows rows;
    QByteArray piece(pieceSize, Qt::Uninitialized);
    ssize_t size = 0;
    while ((size = ::pread(fileno(file), piece.data(), pieceSize, rows.size)) > 0) {
        rows.crc = crcOf(rows.crc, QByteArrayView(piece).first(size));
        rows.size += size;
    }
    if (size < 0)
        throw std::system_error(errno, std::generic_category());
    return rows;
}

bool isWholePackage(const QString &path, const std::vector<SheetRows> &sheets)
{
    const Package package(unzOpen64(QFile::encodeName(path).constData()));
    if (!package)
        return false;
    std::size_t met = 0;
    int code = unzGoToFirstFile(package.get());
    for (; code == UNZ_OK; code = unzGoToNextFile(package.get())) {
        QByteArray name(256, '\0');
        unzGetCurrentFileInfo64(package.get(), nullptr, name.data(), uLong(name.size()), nullptr, 0, nullptr,
                                0);
        const bool isSheet = name.startsWith(sheetFolder); // they come in their order
        if (isSheet && met == sheets.size())
            return false;
        if (!isWholePart(package.get(), PartReader(isSheet ? &sheets[met++] : nullptr)))
            return false;
    }
    return code == UNZ_END_OF_LIST_OF_FILE && met == sheets.size();
}

} // namespace spreadsheet
