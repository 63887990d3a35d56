#include "platform/database/connection_string.h"

#include "platform/database/errors.h"

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace database
{

namespace
{

std::optional<QString> property(const QString &text, QLatin1StringView key)
{
    const QString padded = u';' + text;
    const qsizetype start = padded.indexOf(key, 0, Qt::CaseInsensitive);
    if (start < 0)
        return std::nullopt;
    const qsizetype begin = start + key.size();
    const qsizetype end = padded.indexOf(";Jet OLEDB:"_L1, begin, Qt::CaseInsensitive);
    return padded.mid(begin, end < 0 ? -1 : end - begin);
}

} // namespace

ConnectionString ConnectionString::parse(const QString &text)
{
    const std::optional<QString> path = property(text, ";Data Source="_L1);
    if (!path)
        throw data_errors::wrongArguments();
    return {*path, property(text, ";Jet OLEDB:Database Password="_L1).value_or(QString())};
}

} // namespace database
