#pragma once

#include <QtCore/QString>

struct sqlite3;

/// The order of the store's texts: ICU's for Arabic, where letter case and trailing blanks do not count.
namespace sql
{

/// Below, at or above 0 as the left text comes before, with or behind the right one.
/// @throws RuntimeError when ICU has no order for Arabic.
int compareTexts(const QString &left, const QString &right);

/// Bytes whose order is that of the texts; equal for texts that compare equal.
/// @throws RuntimeError as compareTexts()
QByteArray sortKey(const QString &text);

/// Makes the order known to an engine handle under the name `arabic`. @throws RuntimeError as compareTexts()
void registerCollation(sqlite3 *handle);

/// The version of ICU's order, never 0. An index on a text column serves only the version that wrote it.
/// @throws RuntimeError as compareTexts()
qint32 collationVersion();

} // namespace sql
