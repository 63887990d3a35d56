#pragma once

#include <QtCore/QString>

/// File steps with the run-time's failures. The system's own rename replaces silently and its delete takes
/// files that are in use; these routines look first. Each is durable when it returns.

/// True when a file, not a folder, stands at the path.
bool fileExists(const QString &path);

/// @throws RuntimeError 53 when no file stands there, 70 when it may not be deleted.
void deleteFile(const QString &path);

/// Never replaces.
/// @throws RuntimeError 53 when no file stands at `from`, 58 when anything stands at `to`, 75 when the
/// folder can't be changed.
void renameFile(const QString &from, const QString &to);

/// Puts the file `from` in the place of the file `to` in one step: at every moment one of the two is whole
/// at `to`.
/// @throws RuntimeError 53 when one of the two is no file, 75 when the folder can't be changed.
void replaceFile(const QString &from, const QString &to);

/// Makes durable what was done to the list of files in which a path stands. The number of the system's error;
/// 0 for none.
int syncFolderOf(const QString &path);
