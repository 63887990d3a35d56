#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>

/// The id in `details` of a kind of transaction in the session's language; 10 when no row fits; the first row
/// when two do. Overwrites `engine.strSql` and `engine.rsShared`.
qint16 LookupDetailId(const QString &detailText);

/// `yyyy/mm/dd hh:mm:ss` when the hour is above 0, else `yyyy/mm/dd`: a time in the first hour after midnight
/// is not shown.
QString FormatStamp(const QDateTime &value);

/// Serves events until a value that stays 0 equals `ticks`: returns at once for 0 and otherwise ends only
/// with the process.
void Pause(int ticks);
