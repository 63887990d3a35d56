#pragma once

#include "support/store_reading.h"

#include <QtCore/QRegularExpression>

/// The text of a PDF, its lines laid out as on the page and its pages parted by form feeds, as a program of
/// another hand reads it: Arabic letters in their plain forms, without marks of direction.
inline QString textOfPdf(const QString &path)
{
    static const QRegularExpression directions(u"[\u200E\u200F\u202A-\u202E\u2066-\u2069]"_s);
    return outputOf(u"pdftotext"_s, {u"-layout"_s, path, u"-"_s})
        .normalized(QString::NormalizationForm_KC)
        .remove(directions);
}
