#include "platform/ui/cell_text.h"

#include <QtWidgets/QStyle>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr QChar leftToRightIsolate(0x2066);
constexpr QChar firstStrongIsolate(0x2068);
constexpr QChar popIsolate(0x2069);

bool isRightToLeftLetter(QChar c)
{
    return c.direction() == QChar::DirR || c.direction() == QChar::DirAL;
}
} // namespace

Qt::Alignment alignmentOf(FieldType type)
{
    const bool amount = type == FieldType::Double || type == FieldType::Money;
    return amount ? Qt::AlignRight | Qt::AlignAbsolute : Qt::AlignLeading;
}

Qt::Alignment absoluteAlignment(Qt::Alignment alignment, Qt::LayoutDirection direction)
{
    return QStyle::visualAlignment(direction, alignment) | Qt::AlignAbsolute | Qt::AlignVCenter;
}

QString isolated(const QString &text, Qt::LayoutDirection direction)
{
    if (text.isEmpty() || direction == Qt::LeftToRight)
        return text;
    const bool letters = std::any_of(text.cbegin(), text.cend(), isRightToLeftLetter);
    return (letters ? firstStrongIsolate : leftToRightIsolate) + text + popIsolate;
}

QVariant rowHeading(int row, int role)
{
    return role == Qt::AccessibleTextRole ? QString::number(row + 1) : QVariant();
}

QString inOneLine(const QString &text)
{
    const auto breaks = [](QChar c) {
        return c == u'\n' || c == u'\r' || c == u'\t' || c == QChar::LineSeparator ||
               c == QChar::ParagraphSeparator;
    };
    if (std::none_of(text.cbegin(), text.cend(), breaks))
        return text;
    QString line = text;
    line.replace(u"\r\n"_s, u" "_s);
    std::replace_if(line.begin(), line.end(), breaks, u' ');
    return line;
}
