#pragma once

#include "platform/runtime/runtime_error.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>

class QIODevice;

/// A file in the making on the file system of its place, readable by its owner alone. It is put there in one
/// step when it is complete and durable; until then, and when it is never committed, what stands at the place
/// stays.
///
/// It has no name before that step where the system can make such files, so that nothing is left of it even
/// when the process is killed. Elsewhere it stands beside its place under a hidden name and is removed. To
/// replace another file it needs a hidden name in any case: between two system calls, when it is complete.
/// What a killed process leaves under such names goes with the next file that is made in the folder.
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
    /// A name for the unfinished file, for a library in this process that opens files by their names itself.
    QString path() const;
    /// What such a library met, by the system's number, in the words of commit().
    RuntimeError failure(int systemError) const;

    /// The last step. @throws RuntimeError 75 with a clear description when not everything could be written
    void commit();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// Opens a file for a library in this process to read and write, in a folder, for its owner alone. It has no
/// name, or none any more, and is gone when its descriptor is closed. Below 0 when the system refuses, which
/// `errno` tells.
int openHelperFile(const QByteArray &folder);
