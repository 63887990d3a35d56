#include "platform/runtime/format.h"
#include "platform/ui/flex_grid.h"
#include "platform/ui/fonts.h"
#include "rows_fixture.h"

#include <algorithm>
#include <random>

namespace
{
using GridWidthsTest = RowsFixture;

TEST_F(GridWidthsTest, TheWidestTextIsThatOfPlainMeasuring)
{
    constexpr int number = 1, text = 2, amount = 3, day = 4;
    // The pairs of the last font's letters and digits stand closer than each alone.
    const QFont fonts[] = {readableFont({}, 10, false), readableFont(u"Noto Kufi Arabic"_s, 13, true),
                           readableFont(u"DejaVu Serif"_s, 9, false),
                           readableFont(u"Liberation Serif"_s, 14, true)};
    const QString latin = u"abcfijklTVAWY\u00E9 "_s;
    const QString arabic = u"اللمرهيءسصعىة "_s;
    const QString digits = u"0123456789017"_s;
    const QString signs = u" .,:/-+()%"_s;
    const QString others = u"\u064E\u0651\u060C\u0663\u0301\u200D\u200F\u0600\U0001F600"_s;
    constexpr int ofEach = 50;
    std::mt19937 random{1}; // the same texts in each run
    const auto next = [&random](const QString &letters, int length) {
        QString text;
        while (text.size() < length)
            text += letters[qsizetype(random() % size_t(letters.size()))];
        return text;
    };
    QStringList rows;
    for (const QString &letters :
         {latin, arabic, digits + signs, latin + digits + signs, arabic + digits + digits + signs,
          arabic + latin + digits + signs + others}) {
        for (int i = 0; i < ofEach; ++i)
            rows << u"'%1',%2,%3"_s.arg(next(letters, 8 + i % 5), next(u"1234567890"_s, 1 + i % 6),
                                        i % 5 == 0 ? u"null"_s : u"'%1/03/2004'"_s.arg(1 + i % 31));
    }
    rows << u"null,-1111.11,null"_s << u"'WWW',null,null"_s;
    openCells(rows);
    const auto money = [](const Value &value) { return format(value, u"#,##0.00"_s); };
    const auto digitsOf = [](qint64 tenThousandths) {
        return int(QString::number(tenThousandths / 10000).size()) * (tenThousandths < 0 ? -1 : 1);
    };
    const auto nothing = [](const Value &value) {
        return value.isNull() ? u"nothing at all is told"_s : value.toText();
    };
    for (const QFont &font : fonts) {
        FlexGrid grid;
        grid.setFont(font);
        grid.setDataSource(set);
        const auto expectPlain = [&](const char *what) {
            for (int column = 0; column < grid.cols(); ++column) {
                int widest = 0;
                for (int row = 1; row < grid.rows(); ++row)
                    widest = std::max(widest, grid.textWidth(grid.textMatrix(row, column)));
                EXPECT_EQ(grid.widestText(column, [] { return true; }), widest) << what << column;
            }
        };
        expectPlain("values");
        grid.setColFormat(amount, {money});
        grid.setColFormat(number, {[](const Value &value) { return u"no. "_s + value.toText(); }});
        grid.setColFormat(day, {nothing, [](qint64) { return 0; }});
        expectPlain("formats");
        grid.setColFormat(amount, {money, digitsOf});
        grid.setColFormat(text, {nothing});
        grid.sort(amount, Qt::DescendingOrder);
        grid.moveColumn(text, amount);
        expectPlain("patterns");
        for (int row = 1; row < 20; ++row)
            grid.setTextMatrix(row, text, u"1"_s); // where the amounts stand now, the widest on top
        grid.setTextMatrix(1, number, u"the number is not known"_s);
        expectPlain("cells of their own");
        for (int first = 1; first < rows.size(); first += ofEach) { // of one kind each
            set->setFilter(u"n>=%1 and n<%2"_s.arg(first).arg(first + ofEach));
            expectPlain("a filter");
        }
        set->setFilter(u"n=0"_s);
        grid.setTextMatrix(1, 1, u"no rows"_s);
        expectPlain("a text without rows");
        set->setFilter({});
        EXPECT_EQ(grid.widestText(text, [] { return false; }), std::nullopt); // called off
    }
}

} // namespace
