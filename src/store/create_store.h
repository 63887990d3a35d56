#pragma once

#include <QtCore/QString>

/// Builds a new store file from nothing and writes the seed rows; an earlier file is kept as the backup.
/// `storeName` is the file's base name without folder or extension. `engine.dbConnection` is not used and
/// must not stand on the file. Returns False when the user keeps an old backup, or after a failure, which it
/// has shown in a message box; the half-built file is then gone and the earlier store lies in the backup.
bool CreateStore(const QString &storeName, const QString &password);
