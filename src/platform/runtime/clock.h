#pragma once

#include <QtCore/QDateTime>

#include <functional>

/// The present wall-clock time in whole seconds, in the form that dates.h describes.
QDateTime now();
/// Midnight of the present day.
QDateTime today();

/// Replaces the clock; an empty function restores the machine's. For tests and the walk-through.
void setClock(std::function<QDateTime()> clock);
