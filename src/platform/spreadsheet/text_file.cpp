#include "platform/spreadsheet/text_file.h"

#include <algorithm>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace spreadsheet
{

namespace
{

QString fieldOf(const Value &value)
{
    if (value.kind() == Value::Kind::Boolean)
        return value.toBool() ? u"TRUE"_s : u"FALSE"_s;
    QString text = value.toText();
    const auto needsQuotes = [](QChar c) { return c == u'\t' || c == u'\r' || c == u'\n' || c == u'"'; };
    if (std::none_of(text.cbegin(), text.cend(), needsQuotes))
        return text;
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

} // namespace

void writeText(const Contents &contents, OutputFile &file)
{
    file.write("\xEF\xBB\xBF");
    const Sheet all = contents.sheets(std::numeric_limits<int>::max()).front();
    for (int row = 0; row < all.rows; ++row) {
        QStringList fields;
        for (int column = 0; column < contents.columns(); ++column)
            fields << fieldOf(contents.value(all, row, column));
        file.write((fields.join(u'\t') + u"\r\n"_s).toUtf8());
    }
}

} // namespace spreadsheet
