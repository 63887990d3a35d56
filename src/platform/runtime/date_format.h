#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>

/// A date through a pattern of date codes; see format(). For the run-time's own routines.
QString formatDate(const QDateTime &value, const QString &pattern, bool arabicMonths);
