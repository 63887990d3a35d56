#include "platform/runtime/dates.h"
#include "support/failures.h"
#include "support/hostile.h"
#include "ui/rows_fixture.h"
#include "workbook_reading.h"

#include <QtCore/QFileInfo>

namespace
{

struct WorkbookTest : RowsFixture {
    QString path(const QString &name) const { return m_folder.filePath(name); }
    Workbook book;
};

/// Where two long tellings part, so that a failure does not print them all.
testing::AssertionResult same(const QString &told, const QString &wanted)
{
    if (told == wanted)
        return testing::AssertionSuccess();
    const auto apart = std::ranges::mismatch(told, wanted);
    const auto from = std::max<qsizetype>(apart.in1 - told.begin() - 60, 0);
    return testing::AssertionFailure()
           << "told " << told.sliced(from).left(160).toStdString() << "\nwanted "
           << wanted.sliced(std::min(from, wanted.size())).left(160).toStdString();
}

TEST_F(WorkbookTest, ReadersSeeEveryKindOfValue)
{
    const std::vector<std::pair<Value, QString>> cases{
        {{}, {}},
        {true, u"truth 1"_s},
        {false, u"truth 0"_s},
        {0, u"number 0"_s},
        {-2147483647 - 1, u"number -2147483648"_s},
        {536870911, u"number 536870911"_s},
        {536870912, u"number 536870912"_s},
        {-536870912, u"number -536870912"_s},
        {0.1, u"number 0.10000000000000001"_s},
        {1e300, u"number 1.0000000000000001e+300"_s},
        {std::numeric_limits<double>::infinity(), u"text inf"_s},
        {Money::fromTenThousandths(-55000), u"number -5.5"_s},
        {Money::fromTenThousandths(-123400), u"number -12.34"_s},
        {Money::fromTenThousandths(333333), u"number 33.333300000000001"_s},
        {Money::fromTenThousandths(99999999999999), u"number 9999999999.9999008"_s},
        {makeDate(2004, 3, 15), u"date 2004-03-15 00:00:00"_s},
        {makeDate(2004, 3, 15, 23, 59, 59), u"date 2004-03-15 23:59:59"_s},
        {makeDate(9999, 12, 31), u"date 9999-12-31 00:00:00"_s},
        {makeDate(1900, 3, 1), u"date 1900-03-01 00:00:00"_s},
        {makeDate(1900, 2, 28), u"text 28/02/1900"_s},
        {makeDate(1899, 12, 30, 10), u"text 10:00:00"_s},
        {u""_s, {}},
        {u"=1+1"_s, u"text =1+1"_s},
        {u"0012"_s, u"text 0012"_s},
        {u" two  blanks "_s, u"text  two  blanks "_s},
        {u"caf\u00E9 _x0041_"_s, u"text caf\u00E9 _x0041_"_s},
        {u"\u0645\u0631\u0649 <&> 7"_s, u"text \u0645\u0631\u0649 <&> 7"_s},
    };
    QString wanted;
    auto add = [&, row = 0](const Value &value, const QString &told) mutable {
        book.setCell(++row, 2, value);
        if (!told.isEmpty())
            wanted += u"Sheet1 %1 1 "_s.arg(row - 1) + told + (row % 3 == 0 ? u" bold\n"_s : u"\n"_s);
        if (row % 3 == 0)
            book.setBold(row, 1, 2);
    };
    for (const auto &[value, told] : cases)
        add(value, told);
    for (const QString &text : hostileTexts()) {
        if (text.isValidUtf16()) // a lone half is no text for these readers
            add(text, u"text "_s + text);
    }
    // Texts that meet the ends of the records at every offset, in one and in two bytes for a character. The
    // file is so large that the list of its sectors' tables leaves the header.
    for (int i = 0; i < 200; ++i) {
        QString text;
        for (int c = 0; c < (i < 50 ? 4080 + i : 32767); ++c)
            text += QChar((i % 2 == 0 ? u'!' : 0x0621) + (c + i) % 80);
        add(text, u"text "_s + text);
    }
    book.saveAs(path(u"values.xls"_s));
    book.saveAs(path(u"values.xlsx"_s));
    EXPECT_TRUE(same(toldByPython(path(u"values.xls"_s)), wanted));
    EXPECT_TRUE(same(toldByPerl(path(u"values.xls"_s)), wanted));
    EXPECT_TRUE(same(toldByPython(path(u"values.xlsx"_s)), wanted));
    EXPECT_EQ(QFileInfo(path(u"values.xls"_s)).permissions() & ~QFile::ReadUser & ~QFile::WriteUser,
              QFile::ReadOwner | QFile::WriteOwner);
}

TEST_F(WorkbookTest, LongSetsGoOnInFurtherSheets)
{
    connection->execute(u"delete from rows"_s);
    connection->execute(u"insert into rows (n) values(1)"_s);
    for (int count = 1; count < 200'000; count *= 2)
        connection->execute(u"insert into rows (n) select n+%1 from rows"_s.arg(count));
    connection->execute(u"update rows set name='\u0645 ' & n, amount=n/4"_s);
    struct Case {
        QString fields;
        int rows;
        QString form;
        int rowsOfSheet; ///< below the heading
    };
    for (const Case &c :
         {Case{u"name,amount"_s, 1, u"xls"_s, 65535}, Case{u"name"_s, 65535, u"xls"_s, 65535},
          Case{u"amount"_s, 65536, u"xls"_s, 65535}, Case{u"amount"_s, 200'000, u"xls"_s, 65535},
          Case{u"name"_s, 200'000, u"xlsx"_s, 1048575}}) {
        SCOPED_TRACE(QString(c.fields + u' ' + c.form).toStdString() + std::to_string(c.rows));
        set->close();
        set->open(u"select %1 from rows where n<=%2 order by n"_s.arg(c.fields).arg(c.rows), connection);
        const QStringList fields = c.fields.split(u',');
        Workbook long_;
        for (int field = 0; field < fields.size(); ++field)
            long_.setCell(1, field + 1, fields[field]);
        long_.setBold(1, 1, int(fields.size()));
        long_.copyFromRecordset(2, *set);
        const QString file = path(u"rows%1."_s.arg(c.rows) + c.form);
        long_.saveAs(file);

        QString wanted;
        for (int n = 1; n <= c.rows; ++n) {
            const QString sheet = u"Sheet%1 "_s.arg((n - 1) / c.rowsOfSheet + 1);
            const int row = (n - 1) % c.rowsOfSheet + 1;
            for (int field = 0; row == 1 && field < fields.size(); ++field)
                wanted += sheet + u"0 %1 text %2 bold\n"_s.arg(field).arg(fields[field]);
            for (int field = 0; field < fields.size(); ++field) {
                wanted += sheet + u"%1 %2 "_s.arg(row).arg(field);
                wanted += fields[field] == u"name" ? u"text \u0645 %1\n"_s.arg(n)
                                                   : u"number %1\n"_s.arg(n / 4.0, 0, 'g', 17);
            }
        }
        EXPECT_TRUE(same(toldByPython(file), wanted));
        if (c.form == u"xls") {
            EXPECT_TRUE(same(toldByPerl(file), wanted));
        }
    }
}

TEST_F(WorkbookTest, TextIsTabSeparatedInOneList)
{
    openRows(u"name,amount,valid,dob"_s, u"name,amount,valid,dob"_s,
             {u"'first',1,true,null"_s, u"'\u0645\u0631\u0649',-5.5,true,'03/04/2004 10:30:00'"_s,
              u"'a\tb \"c\"\r\nd',null,false,null"_s});
    set->moveNext();
    book.setCell(1, 1, u"=1+1"_s);
    book.setCell(1, 3, 7);
    book.copyFromRecordset(2, *set);
    EXPECT_TRUE(set->eof());
    EXPECT_EQ(failureOf([&] { book.setCell(2, 1, 1); }), 5); // among the copied rows
    Workbook second;
    second.setCell(1, 1, u"name"_s);
    second.copyFromRecordset(2, *set); // at its end already
    set->close();
    EXPECT_EQ(failureOf([&] { second.copyFromRecordset(2, *set); }), 3704);
    book.saveAs(path(u"x.TXT"_s));
    second.saveAs(path(u"y.txt"_s));
    EXPECT_EQ(bytesOf(path(u"x.TXT"_s)),
              "\xEF\xBB\xBF=1+1\t\t7\t\r\n\xD9\x85\xD8\xB1\xD9\x89\t-5.5\tTRUE\t03/04/"
              "2004 10:30:00\r\n\"a\tb \"\"c\"\"\r\nd\"\t\tFALSE\t\r\n");
    EXPECT_EQ(bytesOf(path(u"y.txt"_s)), "\xEF\xBB\xBFname\r\n");
}

} // namespace
