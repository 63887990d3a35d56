#pragma once

#include <QtCore/QString>

namespace database
{

/// What a connection string names: `Provider=...;Data Source=PATH;Jet OLEDB:Database Password=PW`, with
/// further `;Jet OLEDB:` properties that are ignored. A path or a password may hold `;` and `=`: either ends
/// at the next `;Jet OLEDB:`.
struct ConnectionString {
    QString path;
    QString password;

    /// @throws RuntimeError 3001 without a Data Source.
    static ConnectionString parse(const QString &text);
};

} // namespace database
