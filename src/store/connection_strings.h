#pragma once

#include <QtCore/QString>

/// The connection string of a store file.
QString connectionStringOf(const QString &path, const QString &password);

/// Fills the session's paths, password, connection strings and defaults (user "TEST" of rank 10) from
/// `engine.appPath` and `engine.exeName`.
void deriveSessionPaths();
