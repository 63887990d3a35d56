#include "browser/grid_formatting.h"

#include "core/engine.h"
#include "platform/runtime/format.h"
#include "platform/ui/twips.h"
#include "presentation/vocabulary.h"
#include "store/data_helpers.h"

#include <QtWidgets/QHeaderView>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int cellPadding = 120; // twips
constexpr int screenfulOfRows = 60;
constexpr int secondsOfHour = 3600;
constexpr int hoursOfDay = 24;

QString chosen(bool value, const QString &ifTrue, const QString &ifFalse)
{
    return value ? ifTrue : ifFalse;
}

int digitsOf(qint64 number)
{
    int digits = 1;
    while ((number /= 10) != 0)
        ++digits;
    return digits;
}

/// Digits and sign of an amount as it is shown, with two decimals.
int moneyPattern(qint64 tenThousandths)
{
    const qint64 hundredths = tenThousandths / 100 + tenThousandths % 100 / 50; // half away from zero
    const int digits = std::max(3, digitsOf(hundredths));
    return tenThousandths < 0 ? -digits : digits;
}

/// Whether the time of day is shown.
int datePattern(qint64 seconds)
{
    const qint64 hour = seconds / secondsOfHour - (seconds % secondsOfHour < 0 ? 1 : 0);
    return hour % hoursOfDay != 0 ? 1 : 0;
}

/// The words that the grid shows; none for other fields.
std::optional<std::pair<QString, QString>> wordsOf(const QString &fieldName)
{
    if (fieldName == u"valid"_s)
        return std::pair(translate(u"YES"_s), translate(u"NO"_s));
    if (fieldName == u"creditordebit"_s)
        return std::pair(translate(u"Credit"_s), translate(u"Debit"_s));
    return {};
}

/// In the font of the headings, which may be the only bold one.
int widthOfHeading(const FlexGrid &grid, int column)
{
    const QFontMetrics metrics = grid.horizontalHeader()->fontMetrics();
    return twipsFromPixels(metrics.horizontalAdvance(translate(grid.fieldName(column))));
}

int widthOfColumns(const FlexGrid &grid)
{
    int total = 0;
    for (int column = grid.fixedCols(); column < grid.cols(); ++column)
        total += grid.colWidth(column);
    return total;
}

} // namespace

QString ReformatBoolean(const QString &fieldName, bool value)
{
    const bool arabic = engine.isArabic;
    if (fieldName == u"creditordebit"_s)
        return arabic ? chosen(value, u"عوائد"_s, u"مصاريف"_s) : chosen(value, u"revenues"_s, u"expenses"_s);
    if (fieldName == u"valid"_s) // True and False in English, unlike the others: that is meant
        return arabic ? chosen(value, u"ساري"_s, u"ملغي"_s) : chosen(value, u"True"_s, u"False"_s);
    return arabic ? chosen(value, u"صحيح"_s, u"غيرصحيح"_s) : chosen(value, u"Valid"_s, u"Invalid"_s);
}

bool DeCodedColumn(const QString &fieldName)
{
    return fieldName == u"gtype"_s;
}

void FgridHeading(FlexGrid &grid, const Recordset &rows)
{
    QString headings;
    for (int field = 0; field < rows.fieldCount(); ++field)
        headings += u'|' + translate(rows.field(field).name);
    QList<int> widths;
    for (int column = 0; column < grid.cols(); ++column)
        widths << grid.colWidth(column);
    grid.setFormatString(headings);
    for (int column = 0; column < widths.size(); ++column)
        grid.setColWidth(column, std::max(widths[column], grid.colWidth(column)));
}

ColumnFormat columnFormatOf(const FieldInfo &field)
{
    switch (field.type) {
    case FieldType::Money:
        return {[](const Value &value) { return format(value, u"#,###,##0.00"_s); }, moneyPattern};
    case FieldType::Date:
        return {[](const Value &value) { return value.isNull() ? QString() : FormatStamp(value.toDate()); },
                datePattern};
    case FieldType::Boolean:
        if (const auto words = wordsOf(field.name))
            return {[words](const Value &value) {
                        return value.isNull() ? QString()
                                              : chosen(value.toBool(), words->first, words->second);
                    },
                    {}};
        return {};
    default:
        return {};
    }
}

int setColumnFormats(FlexGrid &grid, const Recordset &rows)
{
    const int lastRow = std::min(grid.rows(), screenfulOfRows);
    for (int column = grid.fixedCols(); column < grid.cols(); ++column) {
        if (ColumnFormat format = columnFormatOf(rows.field(grid.fieldName(column))); format.text)
            grid.setColFormat(column, std::move(format));
        int widest = widthOfHeading(grid, column);
        for (int row = grid.fixedRows(); row < lastRow; ++row)
            widest = std::max(widest, grid.textWidth(grid.textMatrix(row, column)));
        grid.setColWidth(column, widest + cellPadding);
    }
    return widthOfColumns(grid);
}

std::optional<int> fitColumns(FlexGrid &grid, const std::function<bool(int percent)> &goOn)
{
    if (!goOn(0))
        return {};
    QStringList names;
    for (int column = grid.fixedCols(); column < grid.cols(); ++column)
        names << grid.fieldName(column);
    QList<int> widths;
    while (widths.size() < names.size()) {
        const QString &name = names[widths.size()];
        const int column = grid.columnOf(name);
        bool ended = false;
        const auto widest = grid.widestText(column, [&] {
            ended = !goOn(int(100 * widths.size() / names.size()));
            return !ended && grid.fieldName(column) == name; // it may be dragged away meanwhile
        });
        if (ended)
            return {};
        if (widest) // else once more, where it stands now
            widths << std::max(*widest, widthOfHeading(grid, column)) + cellPadding;
    }
    // All at once, so that the grid is drawn once more at the most.
    for (qsizetype i = 0; i < names.size(); ++i)
        grid.setColWidth(grid.columnOf(names[i]), widths[i]);
    return widthOfColumns(grid);
}

int widenFor(FlexGrid &grid, int column, const QString &text)
{
    const int before = grid.colWidth(column);
    const int seen = twipsFromPixels(grid.viewport()->width());
    grid.setColWidth(column, std::max(before, std::min(grid.textWidth(text) + cellPadding, seen)));
    return grid.colWidth(column) - before;
}
