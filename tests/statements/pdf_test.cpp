#include "platform/report/report_output.h"
#include "statements/report_designs.h"
#include "statements/reports.h"
#include "statements/statement_sql.h"
#include "store/logical_tables.h"
#include "support/failures.h"
#include "support/pdf_reading.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtCore/QDir>

namespace
{

/// Reports as PDF files, read back by a program of another hand. With QUVANA_PICTURES the files are kept
/// there.
class PdfTest : public StoreFixture
{
protected:
    /// A revenue of 1234.5 and then expenses of 1000, all of March 2004, with a long note here and there.
    static void post(int rows)
    {
        const QString longNote = u"إيجار شقة العليا عن الربع الأول مع رسوم التحويل، received by the agent"_s;
        const QString columns = u"transactionid,amount,creditordebit,gtype,transactiondetail,ddate,valid,"
                                "enteredon,paymentdetail,paymentmethod"_s;
        for (int i = 0; i < rows; ++i) {
            const QString values = u"%1,%2,'%3','%4/03/2004',true,'05/01/2004','by transfer','cash')"_s.arg(
                QString::number(i + 1), i ? u"1000,false,2"_s : u"1234.5,true,13"_s,
                i % 7 == 3 ? longNote : u"note"_s, QString::number(i % 28 + 1));
            execute({u"insert into general (%1) values (%2"_s.arg(columns, values),
                     u"insert into ledger (name,%1) values ('علي',%2"_s.arg(columns, values)});
        }
    }

    static QString member(bool monthly)
    {
        return statementSql(MemberStatement{u"both"_s, monthly, u"ledger"_s, u"علي"_s});
    }
    static QString family(bool monthly)
    {
        return statementSql(FamilyStatement{u"both"_s, monthly, u"general"_s});
    }

    /// The text of each page, laid out in lines, with Arabic letters in their plain forms.
    QStringList pagesOf(Report report, const QString &sql, const QString &name)
    {
        report.dataSource = Recordset::create();
        report.dataSource->open(sql, engine.dbConnection, CursorType::Static);
        report.rightToLeft = engine.isArabic;
        report.title = u"كوفانا الشيخ/ سعد"_s + u"\r\n"_s + u" كشف حساب جميع العوائد "_s;
        name == u"ledgerall" ? ReformatReport(report) : ReformatStatementReport(report, *report.dataSource);
        const QString path = QDir(qEnvironmentVariable("QUVANA_PICTURES", folder()))
                                 .filePath(name + (engine.isArabic ? u"-arabic.pdf"_s : u"-english.pdf"_s));
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

TEST_F(PdfTest, ShowsEachReportInBothLanguages)
{
    const struct {
        bool arabic;
        QString name;
        Report (*design)();
        std::function<QString()> sql;
        QString headings, firstRow, sum;
    } cases[] = {
        {true, u"ledger"_s, ledgerReport, [] { return member(false); },
         u"الرقم|ملاحظه|معلومات إضافيه|طريقة الدفع|المبلغ|له:عليه|التاريخ"_s,
         u"1|note|راتب|cash|1,235|له|2004/03/01"_s, u"-57,766"_s},
        {false, u"ledger"_s, ledgerReport, [] { return member(false); },
         u"Number|Note|Information|Method|Amount|CR/DR|Date"_s, u"1|note|Salary|cash|1,235|+|2004/03/01"_s,
         u"-57,766"_s},
        {true, u"MonthlyLedger"_s, monthlyLedgerReport, [] { return member(true); },
         u"الشهر|له أو عليه|المبلغ"_s, u"2004/03|له|1,235"_s, u"-57,766"_s},
        {false, u"MonthlyLedger"_s, monthlyLedgerReport, [] { return member(true); },
         u"Month|creditordebit|Amount"_s, u"2004/03|+|1,235"_s, u"-57,766"_s},
        {true, u"general"_s, generalReport, [] { return family(false); },
         u"الرقم|التاريخ|المبلغ|طريقة الدفع|ملاحظه|معلومات إضافيه|Type"_s,
         u"1|2004/03/01|1,235|cash|note|by transfer|راتب"_s, u"-57,766"_s},
        {false, u"general"_s, generalReport, [] { return family(false); },
         u"Number|Date|Amount|Method|Note|Information|Type"_s,
         u"1|2004/03/01|1,235|cash|note|by transfer|Salary"_s, u"-57,766"_s},
        {true, u"MonthlyGeneral"_s, monthlyGeneralReport, [] { return family(true); },
         u"الشهر|له أو عليه|المبلغ"_s, u"2004/03|لكم|1,235"_s, u"-57,766"_s},
        {true, u"ledgerall"_s, ledgerAllReport, [] { return getstrsql(u"ledger"_s, u"ledger"_s); },
         u"الرقم|الإسم|ملاحظه|معلومات إضافيه|طريقة الدفع|المبلغ|له:عليه|التاريخ"_s,
         u"1|علي|note|راتب|cash|1,235|له|2004/03/01"_s, u"60,235"_s},
        {false, u"ledgerall"_s, ledgerAllReport, [] { return getstrsql(u"ledger"_s, u"ledger"_s); },
         u"Number|Name|Note|Information|Method|Amount|CR/DR|Date"_s,
         u"1|علي|note|Salary|cash|1,235|Revenue|2004/03/01"_s, u"60,235"_s},
    };
    // The reader turns the sign's letters in a line of English, and leaves out the mark behind it.
    const QRegularExpression sign(u"ر.*س|س.*ر"_s);
    post(60);
    for (const auto &each : cases) {
        SCOPED_TRACE((each.name + (each.arabic ? u" Arabic"_s : u" English"_s)).toStdString());
        setLanguage(each.arabic);
        const QStringList pages = pagesOf(each.design(), each.sql(), each.name);
        EXPECT_EQ(pages.size() > 1, !each.name.contains(u"Monthly"_s));
        for (qsizetype i = 0; i < pages.size(); ++i) {
            EXPECT_TRUE(pages[i].contains(u"كشف حساب جميع العوائد"_s));
            EXPECT_NE(lineOf(pages[i], each.headings.split(u'|')), QString());
            EXPECT_NE(lineOf(pages[i], {each.arabic ? u"التاريخ"_s : u"Date"_s, QString::number(i + 1)}),
                      QString())
                << pages[i].toStdString();
        }
        const QString row = lineOf(pages[0], each.firstRow.split(u'|'));
        EXPECT_TRUE(row.contains(sign)) << pages[0].toStdString();
        const QString total = lineOf(pages.last(), {each.arabic ? u"المجموع"_s : u"Total"_s});
        EXPECT_TRUE(total.contains(each.sum) && total.contains(sign)) << pages.last().toStdString();
    }
    setLanguage(false); // without the column of the sides
    EXPECT_EQ(failureOf([&] { pagesOf(monthlyGeneralReport(), family(true), u"MonthlyGeneral"_s); }), 8526);
}

TEST_F(PdfTest, ShowsOneRowAndTenThousand)
{
    static const QRegularExpression day(u"2004/03/.."_s);
    post(1);
    const QStringList one = pagesOf(ledgerReport(), member(false), u"one"_s);
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
    const QStringList pages = pagesOf(ledgerReport(), member(false), u"long"_s);
    EXPECT_EQ(pages.join(u' ').count(day), 10000);
    EXPECT_TRUE(lineOf(pages.last(), {u"Total"_s}).contains(u"-7,765,500"_s)); // 1000 * (1234.5 - 9 * 1000)
}

} // namespace
