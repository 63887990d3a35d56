#pragma once

#include <QtCore/QString>

/// Writes the store of one connection string anew, without gaps, into the file of another (where nothing may
/// stand). The password is that of the target's string; counters go on where they were. The target is
/// complete on the disk when this returns; when it throws, the source is untouched.
/// @throws RuntimeError as Connection::open() for the source, 58, 76 or 75 as StoreFile::create() for the
/// target, -2147467259 for a copy that is not complete
void compactStoreFile(const QString &sourceConnectionString, const QString &targetConnectionString);
