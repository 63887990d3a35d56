#include "platform/report/report_output.h"
#include "statements/report_designs.h"
#include "statements/reports.h"
#include "store/logical_tables.h"
#include "support/pdf_reading.h"
#include "support/screens.h"
#include "support/store_fixture.h"

namespace
{

/// The first line that has the words, each behind the other as the language reads; empty without one.
QString lineOf(const QString &page, QStringList words)
{
    if (engine.isArabic)
        std::ranges::reverse(words);
    for (QString &word : words)
        word = QRegularExpression::escape(word);
    const QRegularExpression line(u"^.*"_s + words.join(u".*"_s) + u".*$"_s,
                                  QRegularExpression::MultilineOption);
    return line.match(page).captured();
}

// Saved as a PDF file and read back by a program of another hand.
TEST_F(StoreFixture, PrintsTheRowsOfTheBrowserInBothLanguages)
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
    // A revenue of 1234.5 and 59 expenses of 1000, with a long note here and there.
    const QString longNote = u"إيجار شقة العليا عن الربع الأول مع رسوم التحويل، received by the agent"_s;
    for (int i = 0; i < 60; ++i)
        execute({u"insert into ledger (name,amount,creditordebit,gtype,transactiondetail,ddate,valid,"
                 "paymentmethod) values ('علي',%1,'%2','%3/03/2004',true,'cash')"_s.arg(
                     i ? u"1000,false,2"_s : u"1234.5,true,13"_s, i % 7 == 3 ? longNote : u"note"_s,
                     QString::number(i % 28 + 1))});
    const QString path = folder() + u"/report.pdf"_s;
    for (const auto &each : cases) {
        setLanguage(each.arabic);
        Report report = ledgerAllReport();
        report.dataSource = Recordset::create();
        report.dataSource->open(getstrsql(u"ledger"_s, u"ledger"_s), engine.dbConnection, CursorType::Static);
        report.rightToLeft = each.arabic;
        report.title = u"كوفانا الشيخ/ سعد"_s + u"\r\n"_s + u" كشف حساب جميع العوائد "_s;
        ReformatReport(report);
        saveReportAsPdf(report, path);
        const QStringList pages = textOfPdf(path).split(u'\f', Qt::SkipEmptyParts);
        EXPECT_EQ(pages.join(u' ').count(u"2004/03/"_s), 60);
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

} // namespace
