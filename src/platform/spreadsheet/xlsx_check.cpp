#include "platform/spreadsheet/xlsx_check.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <minizip/unzip.h>

#include <algorithm>
#include <cerrno>
#include <functional>
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

/// Unpacks the part that the package stands on, which compares its checksum, and hands it over piece by
/// piece.
bool unpack(unzFile package, const std::function<void(QByteArrayView piece)> &take)
{
    if (unzOpenCurrentFile(package) != UNZ_OK)
        return false;
    QByteArray piece(pieceSize, Qt::Uninitialized);
    int size = 0;
    while ((size = unzReadCurrentFile(package, piece.data(), pieceSize)) > 0)
        take(QByteArrayView(piece).first(size));
    return unzCloseCurrentFile(package) == UNZ_OK && size == 0;
}

bool isWholePart(unzFile package)
{
    QByteArray part;
    return unpack(package, [&](QByteArrayView piece) { part += piece; }) && part.trimmed().endsWith('>');
}

/// Whether a sheet is what stands before its rows, these, and what stands behind, by its checksum.
bool isWholeSheet(unzFile package, const SheetRows &rows, quint32 checksum)
{
    constexpr QByteArrayView opening = "<sheetData>"; // in the first piece; there is none without rows
    QByteArray before;
    QByteArray behind;
    qint64 position = 0;
    const bool unpacked = unpack(package, [&](QByteArrayView piece) {
        if (position == 0)
            before = piece.first(rows.size > 0 ? piece.indexOf(opening) + opening.size() : 0).toByteArray();
        const qint64 toGo = before.size() + rows.size - position;
        behind += piece.sliced(std::clamp<qint64>(toGo, 0, piece.size()));
        position += piece.size();
    });
    const uLong wanted =
        crc32_combine(crc32_combine(crcOf(0, before), rows.crc, rows.size), crcOf(0, behind), behind.size());
    return unpacked && behind.endsWith("</worksheet>") && wanted == checksum;
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
        unz_file_info64 info{};
        unzGetCurrentFileInfo64(package.get(), &info, name.data(), uLong(name.size()), nullptr, 0, nullptr,
                                0);
        const bool isSheet = name.startsWith(sheetFolder); // they come in their order
        if (isSheet && met == sheets.size())
            return false;
        if (!(isSheet ? isWholeSheet(package.get(), sheets[met++], quint32(info.crc))
                      : isWholePart(package.get())))
            return false;
    }
    return code == UNZ_END_OF_LIST_OF_FILE && met == sheets.size();
}

} // namespace spreadsheet
