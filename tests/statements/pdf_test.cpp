#include "platform/report/report_output.h"
#include "statements/report_designs.h"
#include "statements/reports.h"
#include "statements/statement_sql.h"
#include "store/logical_tables.h"
#include "support/pdf_reading.h"
#include "support/screens.h"
#include "support/store_fixture.h"

namespace
{

/// Reports as PDF files, read back by a program of another hand.
class PdfTest : public StoreFixture
{
protected:
    /// A revenue of 1234.5 and then expenses of 1000, all of March 2004, with a long note here and there.
    static void post(int rows)
    {
        const QString longNote = u"إيجار شقة العليا عن الربع الأول مع رسوم التحويل، received by the agent"_s;
        const QString insert = u"insert into ledger (name,amount,creditordebit,gtype,transactiondetail,ddate,"
                               "valid,paymentmethod) values ('علي',%1,'%2','%3/03/2004',true,'cash')"_s;
        for (int i = 0; i < rows; ++i)
            execute({insert.arg(i ? u"1000,false,2"_s : u"1234.5,true,13"_s,
                                i % 7 == 3 ? longNote : u"note"_s, QString::number(i % 28 + 1))});
    }

    /// The text of each page, laid out in lines, with Arabic letters in their plain forms.
    QStringList pagesOf(Report report, const QString &sql, bool isStatement)
    {
        report.dataSource = Recordset::create();
        report.dataSource->open(sql, engine.dbConnection, CursorType::Static);
        report.rightToLeft = engine.isArabic;
        report.title = u"كوفانا الشيخ/ سعد"_s + u"\r\n"_s + u" كشف حساب جميع العوائد "_s;
        isStatement ? ReformatStatementReport(report, *report.dataSource) : ReformatReport(report);
        const QString path = folder() + u"/report.pdf"_s;
        saveReportAsPdf(report, path);
        return textOfPdf(path).split(u'\f', Qt::SkipEmptyParts);
    }

    /// The first line that has the words, each behind the other as the language reads; empty without one.
    static QString lineOf(const QString &page, QStringList words)
    {
        if (engine.isArabic)
            std::ranges::reverse(words);
        for (QString &word : words)
            word = QRegularExpression::escape(word);
        const QRegularExpression line(u"^.*"_s + words.join(u".*"_s) + u".*$"_s,
                                      QRegularExpression::MultilineOption);
        return line.match(page).captured();
    }
};

TEST_F(PdfTest, ShowsTheRowsOfTheBrowserInBothLanguages)
{
    const struct {
        bool arabic;
        QString headings, firstRow, day, total;
    } cases[] = {{true, u"الرقم|الإسم|ملاحظه|معلومات إضافيه|طريقة الدفع|المبلغ|له:عليه|التاريخ"_s,
                  u"1|علي|note|راتب|cash|1,235|له|2004/03/01"_s, u"التاريخ"_s, u"المجموع"_s},
                 {false, u"Number|Name|Note|Information|Method|Amount|CR/DR|Date"_s,
                  u"1|علي|note|Salary|cash|1,235|Revenue|2004/03/01"_s, u"Date"_s, u"Total"_s}};
    // The reader turns the sign's letters in a line of English, and leaves out the mark behind it.
    const QRegularExpression sign(u"ر.*س|س.*ر"_s);
    post(60);
    for (const auto &each : cases) {
        setLanguage(each.arabic);
        const QStringList pages = pagesOf(ledgerAllReport(), getstrsql(u"ledger"_s, u"ledger"_s), false);
        EXPECT_GT(pages.size(), 1);
        for (qsizetype i = 0; i < pages.size(); ++i) {
            EXPECT_TRUE(pages[i].contains(u"كشف حساب جميع العوائد"_s));
            EXPECT_NE(lineOf(pages[i], each.headings.split(u'|')), QString());
            EXPECT_NE(lineOf(pages[i], {each.day, QString::number(i + 1)}), QString())
                << pages[i].toStdString();
        }
        EXPECT_TRUE(lineOf(pages[0], each.firstRow.split(u'|')).contains(sign)) << pages[0].toStdString();
        const QString total = lineOf(pages.last(), {each.total});
        EXPECT_TRUE(total.contains(u"60,235"_s) && total.contains(sign)) << pages.last().toStdString();
    }
}

TEST_F(PdfTest, ShowsOneRowAndTenThousand)
{
    static const QRegularExpression day(u"2004/03/.."_s);
    const QString member = statementSql(MemberStatement{u"both"_s, false, u"ledger"_s, u"علي"_s});
    post(1);
    const QStringList one = pagesOf(ledgerReport(), member, true);
    EXPECT_EQ(one.size(), 1);
    EXPECT_TRUE(lineOf(one[0], {u"Total"_s}).contains(u"1,235"_s));

    execute({u"delete from ledger"_s});
    post(10);
    const QString some = u"name,amount,creditordebit,gtype,transactiondetail,ddate,valid,paymentmethod"_s;
    for (const QString &copy : {u"a"_s, u"b"_s, u"c"_s}) {
        execute({u"select * into [%1] from ledger"_s.arg(copy)});
        for (int i = 1; i < 10; ++i)
            execute({u"insert into ledger (%1) select %1 from [%2]"_s.arg(some, copy)});
    }
    const QStringList pages = pagesOf(ledgerReport(), member, true);
    EXPECT_EQ(pages.join(u' ').count(day), 10000);
    EXPECT_TRUE(lineOf(pages.last(), {u"Total"_s}).contains(u"-7,765,500"_s)); // 1000 * (1234.5 - 9 * 1000)
}

} // namespace
