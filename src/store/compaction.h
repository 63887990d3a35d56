#pragma once

#include <QtCore/QString>

/// Rewrites a store file without gaps, through a temporary file beside it that replaces it in one step, so
/// that there is no moment without a store. Every connection to the file must be closed. Returns True on
/// success.
/// @throws RuntimeError with the failure's own number; it never returns False.
bool CompactStore(const QString &sourcePath, const QString &tempPath, const QString &password);
