#pragma once

#include <QtCore/QString>

struct sqlite3;

/// The store file as a file: what can be told of it without its key, and its making. Where a routine takes a
/// handle it reads the file through that, since closing another descriptor on the file would drop the locks
/// that this process holds on it by other connections.
namespace database
{

/// @throws RuntimeError "Could not find file" when nothing stands at the path, "Unrecognized database format"
/// for a folder and the like, a clear failure for a file that may not be read or written.
void requireReachable(const QString &path);

/// Refuses a file that can't be a store whatever its key: empty, short, of a size that no store has.
/// @throws RuntimeError "Unrecognized database format"
void requireStoreSize(sqlite3 *handle, const QString &path);

/// The file's own path: where the path that was opened leads through links.
QString fileOf(sqlite3 *handle);

/// Whether a journal stands beside the file: what a crash has left of a transaction, or one that is going on.
bool hasJournal(sqlite3 *handle);

/// Whether the first page could be a store's under some key. It is only asked to find the words for a file
/// that the password does not open.
bool looksEncrypted(sqlite3 *handle);

/// Copies the file, and the journal beside it, to another path. @throws RuntimeError
void copyWithJournal(sqlite3 *handle, const QString &target);

/// Makes an empty file. @throws RuntimeError 58 when something stands at the path, 76 when its folder is
/// missing, 75 for anything else.
void createEmptyFile(const QString &path);

/// Brings the list of files in which a path stands to the disk. @throws RuntimeError
void makeFolderDurable(const QString &path);

} // namespace database
