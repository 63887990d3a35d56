#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <ostream>

// Texts and dates in GoogleTest's messages. QString prints as one text, not as a list of characters.

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QDateTime &value, std::ostream *out)
{
    *out << value.toString(Qt::ISODate).toStdString();
}
