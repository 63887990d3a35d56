#pragma once

#include <QtCore/QString>

class QComboBox;

/// The name of the next archive of a table: the table's name and one more than the highest number behind that
/// name in the schema list. Empty for an empty name.
/// @throws RuntimeError 6 when that number leaves 16 bits
QString NextArchiveName(const QString &table);

/// Fills the list with the table itself and its archives in the order of the schema list, each archive with
/// " : " and its interval when `archives` knows it. The first entry becomes the list's text. An empty name
/// leaves the list empty.
/// @throws RuntimeError as the store does
void FillArchivesList(const QString &table, QComboBox *list);

/// The table of an entry of such a list: what stands in front of the blank and the colon, or the whole entry.
/// @throws RuntimeError 5 for an entry that begins with the colon
QString archiveTableOf(const QString &entry);
