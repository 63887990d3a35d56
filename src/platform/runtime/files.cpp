#include "platform/runtime/files.h"

#include "platform/runtime/runtime_error.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cerrno>
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

/// What was done to a folder's list of files is on the disk when the folder is.
void syncFolderOf(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        throw runtime_errors::pathAccess();
    const int failure = ::fsync(descriptor) == 0 ? 0 : errno;
    ::close(descriptor);
    if (failure != 0 && failure != EINVAL) // some network file systems know no sync of a folder
        throw runtime_errors::pathAccess();
}

void renameOver(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        throw runtime_errors::pathAccess();
    syncFolderOf(to);
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
    syncFolderOf(path);
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
