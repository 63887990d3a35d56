#pragma once

#include <QtCore/QString>

#include <memory>

class QIODevice;

/// A file in the making: it stands beside its place, readable by its owner alone, and is put there in one
/// step when it is complete and durable. Until then, and when it is never committed, what stands at the place
/// stays; the unfinished file is removed.
class NewFile
{
public:
    /// @throws RuntimeError 75 with a clear description when nothing can be written beside the place or what
    /// stands there can't be replaced
    explicit NewFile(const QString &place);
    ~NewFile();
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    /// To write to. A write that fails is remembered; commit() tells of it.
    QIODevice &device();
    /// Where the unfinished file stands, for a library that opens files by their names itself.
    QString path() const;

    /// The last step. @throws RuntimeError 75 with a clear description when not everything could be written
    void commit();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
