#include "store/files.h"

#include "platform/database/store_path.h"
#include "platform/runtime/runtime_error.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cstdio>

namespace
{

void needFile(const QString &path)
{
    if (!fileExists(path))
        throw runtime_errors::fileNotFound();
}

void renameOver(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        throw runtime_errors::pathAccess();
    database::syncFolderOf(to); // a rename is on the disk when its folder is
}

} // namespace

bool fileExists(const QString &path)
{
    return QFileInfo(path).isFile();
}

void deleteFile(const QString &path)
{
    needFile(path);
    if (!QFile::remove(path))
        throw runtime_errors::permissionDenied();
}

void renameFile(const QString &from, const QString &to)
{
    needFile(from);
    if (QFileInfo::exists(to))
        throw runtime_errors::fileExists();
    renameOver(from, to);
}

void replaceFile(const QString &from, const QString &to)
{
    needFile(from);
    needFile(to);
    renameOver(from, to);
}
