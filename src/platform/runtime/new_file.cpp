#include "platform/runtime/new_file.h"

#include "platform/runtime/files.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>
#include <sys/file.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// How the names begin under which a file stands before it is in its place: like no file of a user's own.
constexpr QLatin1StringView hiddenName = ".quvana-unfinished-"_L1;

RuntimeError notWritten(const QString &place, const QString &why)
{
    return RuntimeError(75, u"Quvana"_s,
                        u"The file \"%1\" could not be written: %2"_s.arg(QFileInfo(place).fileName(), why));
}

/// A file that keeps its first failure; the toolkit's own forgets it with the next write.
class CheckedFile : public QFile
{
public:
    /// The number of the system's error; 0 for none.
    int failure() const { return m_failure; }
    /// Writes what is still kept back and makes it durable.
    void finish()
    {
        errno = 0;
        note(flush() && (::fsync(handle()) == 0 || errno == EINVAL));
    }

protected:
    qint64 writeData(const char *data, qint64 length) override
    {
        errno = 0;
        const qint64 written = QFile::writeData(data, length);
        note(written == length);
        return written;
    }

private:
    void note(bool success)
    {
        if (!success && m_failure == 0)
            m_failure = errno != 0 ? errno : EIO;
    }

    int m_failure = 0;
};

QByteArray nameOf(int descriptor)
{
    return "/proc/self/fd/" + QByteArray::number(descriptor);
}

/// A file without a name in a folder; below 0 where there are none.
int openNameless(const QByteArray &folder)
{
    const int descriptor = ::open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (descriptor >= 0 && ::access(nameOf(descriptor).constData(), W_OK) != 0) { // no /proc to name it by
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

/// A new file in a folder, under a hidden path that it gives; below 0 when none can be made.
int openHidden(const QByteArray &folder, QByteArray &path)
{
    path = folder + '/' + hiddenName.data() + "XXXXXX";
    return ::mkostemp(path.data(), O_CLOEXEC); // its mode is 0600
}

/// Removes what killed processes have left in a folder: nobody holds it locked. An empty file may be one that
/// somebody has just made and not locked yet.
void removeLeftovers(const QString &folder)
{
    const QFileInfoList found = QDir(folder).entryInfoList(
        {hiddenName + u'*'}, QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Unsorted);
    for (const QFileInfo &info : found) {
        const QByteArray path = QFile::encodeName(info.filePath());
        const int descriptor =
            info.size() > 0 ? ::open(path.constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC) : -1;
        if (descriptor < 0)
            continue;
        if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0)
            ::unlink(path.constData());
        ::close(descriptor);
    }
}

} // namespace

int openHelperFile(const QByteArray &folder)
{
    int descriptor = openNameless(folder);
    if (descriptor < 0) {
        QByteArray path;
        descriptor = openHidden(folder, path);
        if (descriptor >= 0)
            ::unlink(path.constData());
    }
    return descriptor;
}

struct NewFile::Private {
    QString place;
    QString path; ///< where it stands; empty as long as it has no name
    CheckedFile file;

    QString folder() const { return QFileInfo(place).absolutePath(); }
    bool linkAs(const QByteArray &name) const;
    void putInPlace();
};

/// Gives a file without a name one. False when something stands there.
bool NewFile::Private::linkAs(const QByteArray &name) const
{
    const QByteArray nameless = nameOf(file.handle());
    if (::linkat(AT_FDCWD, nameless.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0)
        return true;
    if (errno != EEXIST)
        throw notWritten(place, qt_error_string(errno));
    return false;
}

void NewFile::Private::putInPlace()
{
    const QByteArray target = QFile::encodeName(place);
    QByteArray hidden = QFile::encodeName(path);
    if (path.isEmpty()) {
        if (linkAs(target))
            return;
        // A file without a name can't replace another one, so it needs one for the moment up to the rename.
        do {
            path =
                folder() + u'/' + hiddenName + QString::number(QRandomGenerator::global()->generate64(), 36);
            hidden = QFile::encodeName(path);
        } while (!linkAs(hidden));
    }
    if (std::rename(hidden.constData(), target.constData()) != 0)
        throw notWritten(place, qt_error_string(errno));
    path.clear();
}

NewFile::NewFile(const QString &place) : d(std::make_unique<Private>())
{
    const QFileInfo info(place);
    d->place = info.isSymLink() && info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    if (info.exists() && !info.isFile())
        throw notWritten(place, qt_error_string(info.isDir() ? EISDIR : EEXIST));
    if (info.exists() && !info.isWritable())
        throw notWritten(place, qt_error_string(EACCES));

    removeLeftovers(d->folder());
    const QByteArray folder = QFile::encodeName(d->folder());
    int descriptor = openNameless(folder);
    if (descriptor < 0) {
        QByteArray unfinished;
        descriptor = openHidden(folder, unfinished);
        if (descriptor < 0)
            throw notWritten(place, qt_error_string(errno));
        d->path = QFile::decodeName(unfinished);
    }
    ::flock(descriptor, LOCK_EX | LOCK_NB); // no leftover as long as this process lives
    d->file.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle);
}

NewFile::~NewFile()
{
    d->file.close();
    if (!d->path.isEmpty())
        QFile::remove(d->path);
}

QIODevice &NewFile::device()
{
    return d->file;
}

QString NewFile::path() const
{
    return d->path.isEmpty() ? QFile::decodeName(nameOf(d->file.handle())) : d->path;
}

RuntimeError NewFile::failure(int systemError) const
{
    return notWritten(d->place, qt_error_string(systemError));
}

void NewFile::commit()
{
    d->file.finish();
    if (d->file.failure() != 0)
        throw failure(d->file.failure());
    d->putInPlace();
    d->file.close();
    if (const int error = syncFolderOf(d->place); error != 0)
        throw failure(error);
}
