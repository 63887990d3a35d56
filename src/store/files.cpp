#include "store/files.h"

#include "platform/runtime/runtime_error.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace
{

void needFile(const QString &path)
{
    if (!fileExists(path))
        throw runtime_errors::fileNotFound();
}

/// A rename is on the disk when its folder is. A file system that can't flush a folder keeps its own order.
void flushFolderOf(const QString &path)
{
    const int folder =
        open(QFile::encodeName(QFileInfo(path).absolutePath()).constData(), O_RDONLY | O_DIRECTORY);
    if (folder < 0)
        return;
    fsync(folder);
    ::close(folder);
}

void renameOver(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        throw runtime_errors::pathAccess();
    flushFolderOf(to);
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
    QFile::setPermissions(from, QFile::permissions(to));
    renameOver(from, to);
}
