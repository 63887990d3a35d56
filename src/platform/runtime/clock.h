#pragma once

#include <QtCore/QDateTime>

#include <functional>

/// The present wall-clock time in the form that dates.h describes: the day and time that the clock shows
/// here, cut to whole seconds and relabelled as UTC, not converted to it.
QDateTime now();
/// Midnight of the present day.
QDateTime today();

/// Replaces the clock; an empty function restores the machine's. Its date and time are taken as they stand,
/// whatever their time zone. For tests and the walk-through; not to be called while another thread asks for
/// the time.
void setClock(std::function<QDateTime()> clock);
