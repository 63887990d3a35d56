#pragma once

#include <QtGui/QColor>

/// A colour as the program keeps it: one number, 0xBBGGRR.
inline qint32 colorNumber(const QColor &color)
{
    return color.blue() << 16 | color.green() << 8 | color.red();
}

/// The colour that such a number stands for; what is above 24 bits does not count.
inline QColor colorOf(qint32 number)
{
    return QColor(number & 0xFF, number >> 8 & 0xFF, number >> 16 & 0xFF);
}
