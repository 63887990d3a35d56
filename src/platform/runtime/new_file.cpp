#include "platform/runtime/new_file.h"

#include "platform/runtime/files.h"
#include "platform/runtime/runtime_error.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cerrno>
#include <cstdlib>
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
        close();
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

} // namespace

struct NewFile::Private {
    QString place;
    QString path;
    CheckedFile file;
};

NewFile::NewFile(const QString &place) : d(std::make_unique<Private>())
{
    const QFileInfo info(place);
    d->place = info.isSymLink() && info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    if (info.exists() && !info.isFile())
        throw notWritten(place, qt_error_string(info.isDir() ? EISDIR : EEXIST));
    if (info.exists() && !info.isWritable())
        throw notWritten(place, qt_error_string(EACCES));

    QByteArray unfinished = QFile::encodeName(QFileInfo(d->place).absolutePath() + u"/.quvana-XXXXXX"_s);
    const int descriptor = ::mkstemp(unfinished.data()); // its mode is 0600
    if (descriptor < 0)
        throw notWritten(place, qt_error_string(errno));
    d->path = QFile::decodeName(unfinished);
    d->file.setFileName(d->path);
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
    return d->path;
}

void NewFile::commit()
{
    d->file.finish();
    if (d->file.failure() != 0)
        throw notWritten(d->place, qt_error_string(d->file.failure()));
    if (fileExists(d->place))
        replaceFile(d->path, d->place);
    else
        renameFile(d->path, d->place);
    d->path.clear();
}
