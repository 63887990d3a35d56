#include "platform/spreadsheet/failures.h"

#include <cerrno>
#include <cstring>

using namespace Qt::Literals::StringLiterals;

namespace spreadsheet
{

namespace
{

constexpr qint32 invalidCallNumber = 5;
constexpr qint32 diskFullNumber = 61;
constexpr qint32 permissionDeniedNumber = 70;
constexpr qint32 pathAccessNumber = 75;
constexpr qint32 pathNotFoundNumber = 76;

RuntimeError failure(qint32 number, const QString &description)
{
    return RuntimeError(number, u"Workbook"_s, description);
}

RuntimeError notSaved(qint32 number, const QString &path, const QString &reason)
{
    return failure(number, u"%1 could not be saved: %2. Nothing was changed."_s.arg(path, reason));
}

} // namespace

RuntimeError notSaved(const QString &path, int systemError)
{
    switch (systemError) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return notSaved(diskFullNumber, path, u"the disk is full"_s);
    case EACCES:
    case EPERM:
    case EROFS:
        return notSaved(permissionDeniedNumber, path, u"the folder may not be written"_s);
    case ENOENT:
    case ENOTDIR:
        return notSaved(pathNotFoundNumber, path, u"there is no such folder"_s);
    default:
        return notSaved(path, QString::fromLocal8Bit(std::strerror(systemError)));
    }
}

RuntimeError notSaved(const QString &path, const QString &reason)
{
    return notSaved(pathAccessNumber, path, reason);
}

RuntimeError doesNotFit(const QString &reason)
{
    return failure(invalidCallNumber, reason);
}

} // namespace spreadsheet
