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

void makeFolderDurable(const QString &path)
{
    if (syncFolderOf(path) != 0)
        throw runtime_errors::pathAccess();
}

void renameOver(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        throw runtime_errors::pathAccess();
    makeFolderDurable(to);
}

} // namespace

bool fileExists(const QString &path)
{
    return QFileInfo(path).isFile();
}

int syncFolderOf(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return errno;
    const int error = ::fsync(descriptor) == 0 ? 0 : errno;
    ::close(descriptor);
    return error == EINVAL ? 0 : error; // some network file systems know no sync of a folder
}

void deleteFile(const QString &path)
{
    needFile(path);
    if (!QFile::remove(path))
        throw runtime_errors::permissionDenied();
    makeFolderDurable(path);
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
