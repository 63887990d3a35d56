#pragma once

#include "browser/filters.h"

#include <QtCore/QString>

#include <optional>

/// The title of the browser's report on a table, in Arabic in both languages: whose estate it is, and below
/// it what is shown by the credit menu's choice (nothing when none is checked). Nothing for a table that is
/// not printed.
std::optional<QString> reportTitle(const QString &tableName, std::optional<Filters::Credit> credit);

/// The title's last line for a range of days, in the session's language, with the line break in front.
QString dateRangeLine(const QString &from, const QString &to);
