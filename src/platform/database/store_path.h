#pragma once

#include <QtCore/QString>

struct sqlite3;

/// The store file as a file: what can be told of it before its key is tried, and its making.
namespace database
{

/// @throws RuntimeError "Could not find file" when nothing stands at the path, "Unrecognized database format"
/// for a folder and the like, a clear failure for a file that may not be read or written.
void requireReachable(const QString &path);

/// Refuses a file that can't be a store whatever its key: empty, short, of a size that no store has, with
/// readable content. @throws RuntimeError "Unrecognized database format"
void requireStoreFormat(sqlite3 *handle, const QString &path);

/// Makes an empty file. @throws RuntimeError 58 when something stands at the path, 76 when its folder is
/// missing, 75 for anything else.
void createEmptyFile(const QString &path);

/// Brings a folder's list of files to the disk. @throws RuntimeError
void syncFolderOf(const QString &path);

} // namespace database
