#pragma once

#include <QtCore/QString>

/// The connection string of a store file.
QString connectionStringOf(const QString &path, const QString &password);
