#pragma once

#include <QtCore/QString>

/// The connection string of a store file; `options` (";name=value") stand before the password.
QString connectionStringOf(const QString &path, const QString &password, const QString &options = {});

/// Fills the session's paths, password, connection strings and defaults (user "TEST" of rank 10) from
/// `engine.appPath` and `engine.exeName`.
void deriveSessionPaths();
