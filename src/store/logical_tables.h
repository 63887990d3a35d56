#pragma once

#include <QtCore/QString>

/// The SELECT of a logical table over a physical one, with the looked-up words in the session's language. An
/// unknown name shows a message and gives all columns.
QString getstrsql(const QString &logicalName, const QString &sourceTable);
