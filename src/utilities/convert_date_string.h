#pragma once

#include <QtCore/QString>

/// The date of a text in another calendar: the text is read under `fromCalendar`, written under `toCalendar`
/// (numbers as in hijri_calendar.h) and given the named form, "Short Date" or "Long Date". The calendar in
/// force stays what it was.
/// @throws RuntimeError 13 when the text is no date of `fromCalendar`, 5 when `toCalendar` has no such day.
QString ConvertDateString(const QString &text, int fromCalendar, int toCalendar, const QString &formatName);
