#pragma once

#include <QtCore/QByteArrayView>
#include <QtCore/QString>

#include <memory>

namespace spreadsheet
{

// What the file system refuses comes out of these as a std::system_error with its error number.

/// A folder of its own beside a file that is about to be saved, readable by its owner alone. What is in it
/// goes away with it, also when saving fails half-way.
class PrivateFolder
{
public:
    explicit PrivateFolder(const QString &parent);
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder &) = delete;
    PrivateFolder &operator=(const PrivateFolder &) = delete;

    const QString &path() const noexcept { return m_path; }

private:
    QString m_path;
};

/// A new file, readable by its owner alone, that is written from front to back.
class OutputFile
{
public:
    explicit OutputFile(const QString &path);
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    qint64 position() const noexcept { return m_flushed + m_used; }
    void write(QByteArrayView bytes);
    /// Overwrites bytes that were written before.
    void patch(qint64 position, QByteArrayView bytes);
    /// All of it is on the disk when this returns, also what another hand wrote into the file.
    void finish();

private:
    void flush();

    int m_descriptor;
    std::unique_ptr<char[]> m_buffer;
    qint64 m_used = 0; ///< of the buffer
    qint64 m_flushed = 0;
};

} // namespace spreadsheet
