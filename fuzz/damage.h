#pragma once

#include "platform/database/connection.h"

#include <QtCore/QByteArrayView>

namespace fuzz
{

/// The small store with an input's changes, each of them: a page's number, the place in it (two bytes, the
/// low one first), how many bytes, and the bytes. They go below the cipher; with the number's highest bit set
/// into the bytes on the disk, where no bytes cut the file at that place.
QByteArray damagedStore(QByteArrayView changes);

/// Lets every statement end after a million steps of the engine: pages that name each other as their children
/// have rows without end.
void limitWork(const ConnectionPtr &store);

} // namespace fuzz
