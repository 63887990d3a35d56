#include "browser_fixture.h"
#include "platform/report/preview_window.h"
#include "support/pdf_reading.h"

// What the browser prints and exports.

namespace
{

using Output = BrowserFixture;

// By way of the PDF that the preview saves, read by a program of another hand.
TEST_F(Output, PrintsTheRowsOfTheFilterOrOfTheRange)
{
    engine.deceasedName = u"سعد"_s;
    const QString path = folder() + u"/printed.pdf"_s;
    const auto printed = [&](const Screen &screen) {
        QFile::remove(path);
        dialogs.expectSaveFile({}, path).text.reset();
        onModal<PreviewWindow>([](PreviewWindow &window) {
            click(window, "cmdSave");
            click(window, "cmdClose");
        });
        click(screen, "btnPrint");
        return textOfPdf(path);
    };
    for (const bool arabic : {true, false}) {
        setLanguage(arabic);
        for (const QString &table : {u"ledger"_s, u"general"_s}) {
            SCOPED_TRACE(table.toStdString() + (arabic ? " Arabic" : " English"));
            const auto screen = browse(table);
            chooseMenu(*screen, "mnuRevenues");
            QString text = printed(*screen);
            EXPECT_TRUE(text.contains(u"رحمه الله"_s) && text.contains(u"سعد"_s)) << text.toStdString();
            EXPECT_TRUE(text.contains(u"كشف حساب جميع العوائد"_s)) << text.toStdString();
            EXPECT_EQ(text.count(u"note"_s), table == u"ledger" ? 2 : 1); // the valid ones
            EXPECT_TRUE(text.contains(QRegularExpression(either(u"المجموع.*350"_s, u"Total.*350"_s))));
            EXPECT_EQ(text.contains(QRegularExpression(either(u"\\sله\\s"_s, u"Revenue"_s))),
                      table == u"ledger");

            dialogs.expectAnyMessage();
            selectDates(*screen, u"31/12/2004"_s, u"31/12/2005"_s);
            text = printed(*screen);
            EXPECT_EQ(text.count(u"note"_s), table == u"ledger" ? 3 : 2);
            const auto line =
                QRegularExpression(either(u"من.*31/12/2004.*إلى.*31/12/2005|31/12/2005.*31/12/2004"_s,
                                          u"from 31/12/2004 to 31/12/2005"_s));
            EXPECT_TRUE(text.contains(line)) << text.toStdString();
        }
    }
}

TEST_F(Output, RefusesTablesWithoutRowsOrReport)
{
    for (const bool arabic : {true, false}) {
        setLanguage(arabic);
        const QString noTitle = either(u"فضلاً قم بتصدير المعلومات إلى اكسل وأطبع من هناك"_s,
                                       u"Please Export to Excel and print from there"_s);
        const QString noReport = either(u"فضلاً إستخدم تصديرإلى إكسل وقم بالطباعة من هناك"_s,
                                        u"Plese consider using Export to Excel and print from there.."_s);
        for (const auto &[table, columns, text] :
             {std::tuple(u"audit_general"_s, u"(transactionid) values (1)"_s, noReport),
              {u"audit_members"_s, u"(name) values ('x')"_s, noTitle},
              {u"audit_users"_s, u"(userid) values ('x')"_s, noTitle}}) {
            execute({u"delete from "_s + table});
            const auto screen = browse(table);
            tells(u"Sorry! There is none to show.  المعذره ولكن لا يوجد أي معلومات للإظهار"_s,
                  [&] { click(*screen, "btnPrint"); });
            tells(u"Sorry! There is none to show.  المعذره ولكن لا يوجد أي معلومات لللتصدير"_s,
                  [&] { click(*screen, "cmdExcell"); });
            execute({u"insert into "_s + table + columns});
            click(*screen, "cmdRefresh");
            tells(text, [&] { click(*screen, "btnPrint"); });
        }
    }
}

TEST_F(Output, ExportsFromTheRowFoundOnAndNamesTheArchive)
{
    execute({u"select * into [general1] from general where transactionid=4"_s,
             u"insert into archives ([table],[archive],[interval]) values ('general','general1','x')"_s});
    const QString path = folder() + u"/out.txt"_s;
    const auto exported = [&](const Screen &screen, const QString &proposed) { // the transactions' numbers
        QFile::remove(path);
        dialogs.expectSaveFile(proposed, path);
        tells(u"Export complete..   تم التصدير بنجاح"_s, [&] { click(screen, "cmdExcell"); });
        QStringList numbers;
        const QStringList lines = QString::fromUtf8(bytesOf(path)).split(u"\r\n"_s, Qt::SkipEmptyParts);
        for (const QString &each : lines)
            numbers << each.section(u'\t', 0, 0);
        return numbers.join(u' ').remove(QChar(0xFEFF));
    };
    const auto screen = browse(u"general"_s);
    fill(*screen, "txtNumber", u"3"_s);
    click(*screen, "btnSearch");
    EXPECT_EQ(exported(*screen, u"general.xls"_s), u"transactionid 3 4"_s);
    EXPECT_EQ(exported(*screen, u"general.xls"_s), u"transactionid"_s);
    dialogs.expectSaveFile(u"general.xls"_s, {});
    click(*screen, "cmdExcell"); // cancelled: without a word
    chooseMenu(*screen, "mnuRevenues");
    EXPECT_EQ(exported(*screen, u"general.xls"_s), u"transactionid 2"_s);

    dialogs.expectYes(
        u"Are you sure you want to load this archive?  هل أنت متأكد بأنك تريد مراجعة هذا الإرشيف؟"_s);
    choose(*screen, "ArchivesList", u"general1 : x"_s);
    EXPECT_EQ(exported(*screen, u"general1.xls"_s), u"transactionid 4"_s);
}

} // namespace
