#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// A digest of every row of every table of a store, read without the program's record sets; "none" for a file
/// that is not there.
/// @throws RuntimeError when the file can't be opened or read, or its own check finds it damaged
QByteArray rowsDigest(const QString &path);
/// The same without what a cancel of a transaction changes: audit rows, `valid` and `lastupdate`.
QByteArray amountsDigest(const QString &path);

/// A digest of what the program's own record sets answer over every table.
/// @throws RuntimeError what the program would tell
QByteArray answersDigest(const QString &path);

/// A digest of a file's bytes; "none" for a file that is not there.
QByteArray bytesDigest(const QString &path);
