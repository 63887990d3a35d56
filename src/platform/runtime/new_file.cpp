#include "platform/runtime/new_file.h"

#include "platform/runtime/files.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

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

} // namespace

struct NewFile::Private {
    QString place;
    QString path; ///< where it stands; empty as long as it has no name
    CheckedFile file;

    QString beside(const QString &name) const { return QFileInfo(place).absolutePath() + u'/' + name; }
    void giveName();
};

/// Beside its place, since a file without a name can't replace another one.
void NewFile::Private::giveName()
{
    do {
        path = beside(u".quvana-"_s + QString::number(QRandomGenerator::global()->generate64(), 36));
        if (::linkat(AT_FDCWD, nameOf(file.handle()).constData(), AT_FDCWD,
                     QFile::encodeName(path).constData(), AT_SYMLINK_FOLLOW) == 0)
            return;
    } while (errno == EEXIST);
    path.clear();
    throw notWritten(place, qt_error_string(errno));
}

NewFile::NewFile(const QString &place) : d(std::make_unique<Private>())
{
    const QFileInfo info(place);
    d->place = info.isSymLink() && info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    if (info.exists() && !info.isFile())
        throw notWritten(place, qt_error_string(info.isDir() ? EISDIR : EEXIST));
    if (info.exists() && !info.isWritable())
        throw notWritten(place, qt_error_string(EACCES));

    int descriptor = openNameless(QFile::encodeName(d->beside({})));
    if (descriptor < 0) {
        QByteArray unfinished = QFile::encodeName(d->beside(u".quvana-XXXXXX"_s));
        descriptor = ::mkstemp(unfinished.data()); // its mode is 0600
        if (descriptor < 0)
            throw notWritten(place, qt_error_string(errno));
        d->path = QFile::decodeName(unfinished);
    }
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
    if (d->path.isEmpty())
        d->giveName();
    d->file.close();
    if (fileExists(d->place))
        replaceFile(d->path, d->place);
    else
        renameFile(d->path, d->place);
    d->path.clear();
}
