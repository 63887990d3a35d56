#include "platform/report/preview_window.h"
#include "statements/frmGStatement.h"
#include "statements/frmStatement.h"
#include "support/select_dates.h"
#include "support/store_fixture.h"

namespace
{

const QString nothing = u"Sorry! There is none to show.  المعذره ولكن لا يوجد أي معلومات للإظهار"_s;
const QString archive = u"ledger1 : 31/12/2003 - 01/01/2003"_s;

class StatementsTest : public StoreFixture
{
protected:
    StatementsTest()
    {
        engine.deceasedName = u"سعد"_s;
        addMember({.name = u"علي"_s, .title = u"السيد"_s});
        addMember({.name = u"Omar"_s, .valid = false});
        addMember({.name = u"Sara"_s}); // without a title
        for (const QString &row :
             {u"'علي',false,45,'01/01/2004',true"_s, u"'علي',false,20.5,'15/03/2004',true"_s,
              u"'علي',true,200,'15/03/2004',true"_s, u"'Sara',true,150,'15/03/2004',true"_s,
              u"'علي',true,600,'15/03/2004',false"_s, u"'Nobody',true,1,'01/01/2003',true"_s,
              u"'علي',true,1000,'01/01/2003',true"_s}) {
            const QString rest = u"creditordebit,amount,ddate,valid,transactiondetail,gtype) values ("_s;
            execute({u"insert into ledger (name,"_s + rest + row + u",'note',13)"_s,
                     u"insert into general ("_s + rest + row.section(u',', 1) + u",'note',13)"_s});
        }
        execute(
            {u"select * into [ledger1] from [ledger] where amount=1000"_s,
             u"delete from ledger where amount=1000"_s,
             u"insert into archives ([table],[archive],[interval]) values ('ledger','ledger1','%1')"_s.arg(
                 archive.section(u" : "_s, 1))});
    }

    static QString either(const QString &ar, const QString &en) { return engine.isArabic ? ar : en; }
    static QString range(const QString &from, const QString &to)
    {
        return either(u" من "_s + from + u" إلى "_s + to, u" From "_s + from + u" To "_s + to);
    }
    static QString datesOf(const Screen &screen)
    {
        return textOf(screen, "DateFrom") + u' ' + textOf(screen, "DateTo");
    }
    static void chooseType(const Screen &screen, int type)
    {
        click(screen, QByteArray("Option1_" + QByteArray::number(type)).constData());
        EXPECT_EQ(textOf(screen, "Label3"), QString());
    }

    /// Presses Show. The report's title is what its file would be called: without slashes and colons, and not
    /// longer than 60; its caption is that of the window.
    void shows(const Screen &screen, const QString &title, const QString &caption, int rows)
    {
        SCOPED_TRACE(engine.strSql.toStdString());
        onModal<PreviewWindow>([=, this](PreviewWindow &preview) {
            EXPECT_EQ(preview.caption(), caption.simplified());
            EXPECT_EQ(preview.rightToLeft(), engine.isArabic);
            dialogs.expectSaveFile(QString(title).remove(u'/').left(60).trimmed() + u".pdf"_s, {});
            click(preview, "cmdSave");
            click(preview, "cmdClose");
        });
        click(screen, "cmdShow");
        EXPECT_EQ(textOf(screen, "Label3"), QString::number(rows));
    }
    void showsNothing(const Screen &screen, const QString &message = nothing)
    {
        dialogs.expectMessage(message);
        click(screen, "cmdShow");
        EXPECT_EQ(textOf(screen, "Label3"), QString());
    }
    /// What an exported text file holds.
    QString exported(const Screen &screen, const QString &proposed)
    {
        const QString path = folder() + u"/out.txt"_s;
        QFile::remove(path);
        dialogs.expectSaveFile(proposed, path);
        dialogs.expectMessage(u"Export complete..   تم التصدير بنجاح"_s);
        click(screen, "cmdExcell");
        return QString::fromUtf8(bytesOf(path))
            .remove(QChar::ByteOrderMark)
            .replace(u'\t', u'|')
            .remove(u'\r');
    }

    ScriptedDialogs dialogs;
};

TEST_F(StatementsTest, BeginsWithTheExpensesOfTheFirstMember)
{
    for (const auto &[browseTable, last] :
         {std::pair(u""_s, archive), {u"ledger"_s, archive}, {u"general"_s, u""_s}}) {
        engine.browseTable = browseTable;
        engine.strSql = u"stale"_s;
        frmStatement screen;
        screen.showModeless();
        EXPECT_EQ(isShown(screen, "ArchivesList"), !last.isEmpty()); // not with one entry
        EXPECT_EQ(control<QComboBox>(screen, "ArchivesList").itemText(1), last);
        EXPECT_EQ(control<QComboBox>(screen, "Combo1").count(), 2);
        EXPECT_EQ(datesOf(screen), u"- -"_s);
        EXPECT_EQ(engine.strSql, u"stale"_s);
        shows(screen, u"expenses السيد علي"_s, {}, 2);
        pressKey(screen, Qt::Key_Escape);
        EXPECT_FALSE(screen.isLoaded());
    }
}

TEST_F(StatementsTest, ShowsTheSidesOfAMember)
{
    const QString day = u"15/03/2004"_s;
    const QString first = u"01/01/2004"_s;
    const QString last = u"31/12/2004"_s;
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        frmStatement screen;
        screen.load();
        const QString sides[] = {either(u"المصاريف"_s, u"expenses"_s), either(u"العوائد"_s, u"revenues"_s),
                                 either(u"العوائد و المصاريف"_s, u"Revenues & Expenses"_s)};
        const QString ali = u" السيد علي"_s;
        for (const bool monthly : {false, true}) {
            const int found[] = {2, 1, 3}; // as many months and sides as rows
            for (int type : {2, 0, 1}) {
                chooseType(screen, type);
                shows(screen, sides[type] + ali, {}, found[type]);
            }
            selectDates(screen, day, day);
            shows(screen, sides[1] + ali + range(day, day), range(day, day), 1);
            selectDates(screen, first, last);
            if (monthly)
                shows(screen, sides[1] + ali + range(first, last), range(first, last), 1);
            else
                showsNothing(screen); // the range runs backwards
            selectDates(screen);
            EXPECT_EQ(datesOf(screen), first + u" -"_s); // one of them stays
            shows(screen, sides[1] + ali, {}, 1);
            chooseMenu(screen, "mnuMonthly");
        }
        choose(screen, "Combo1", u"Sara"_s);
        EXPECT_TRUE(engine.strSql.contains(u"(name='Sara')"_s));
        shows(screen, sides[1] + u" Sara"_s, {}, 1);
        choose(screen, "Combo1", u"علي"_s);
        EXPECT_TRUE(engine.strSql.contains(u"(name='Sara')"_s)); // the first entry's turn comes with Show
        choose(screen, "ArchivesList", archive);
        shows(screen, sides[1] + ali, {}, 1);
        EXPECT_TRUE(engine.strSql.contains(u" from [ledger1] "_s));
        fill(screen, "Combo1", u"Nobody"_s);
        showsNothing(screen);
        choose(screen, "ArchivesList", u"ledger"_s);
        shows(screen, sides[1] + u" Unknown Nobody"_s, {}, 1);
    }
}

TEST_F(StatementsTest, ShowsTheSidesOfTheFamily)
{
    const QString day = u"15/03/2004"_s;
    const QString first = u"01/10/2003"_s; // of a month without a zero
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        frmGStatement screen;
        screen.load();
        const QString heading = either(u"كوفانا الشيخ سعد رحمه الله "_s,
                                       u"Quvana Accounting the revered سعد God bless his soul "_s);
        const QString sides[] = {
            either(u"كشف حساب المصاريف"_s, u"Statement of Expenses"_s),
            either(u"كشف حساب العوائد"_s, u"Statement of Revenues"_s),
            either(u"كشف حساب العوائد و المصاريف"_s, u"Statement of Revenues & Expenses"_s)};
        shows(screen, heading + sides[0], sides[0], 2);
        for (const int type : {2, 0, 1}) {
            const int found[] = {2, 4, 6};
            chooseType(screen, type);
            shows(screen, heading + sides[type], sides[type], found[type]);
        }
        selectDates(screen, day, day);
        const QString dated = sides[1] + range(day, day);
        shows(screen, heading + dated, dated, 2);
        shows(screen, heading + dated + range(day, day), dated + range(day, day), 2); // and once more
        selectDates(screen);
        EXPECT_EQ(datesOf(screen), u"- -"_s);
        chooseType(screen, 1);
        engine.strSql = u"select * from general where id=0"_s; // what another command left is run
        showsNothing(screen);
        for (const QString &typed : {u"general"_s, u""_s}) {
            dialogs.expectMessage(
                u"You are not supposed to change the archive name, just make a selection from the damn list!!\r\nلا تقم بتغيير إسم الإرشيف!!  فقط قم بإختيار المطلوب من القائمه"_s);
            fill(screen, "ArchivesList", typed);
            pressKey(control(screen, "ArchivesList"), Qt::Key_Return);
        }
        chooseMenu(screen, "mnuMonthly");
        selectDates(screen, first, u"31/12/2004"_s);
        const QString months = sides[1] + range(first, u"31/12/2004"_s);
        if (arabic) // the engine refuses a report with a field that is not there
            shows(screen, heading + months, months, 1);
        else
            dialogs.expectUntrapped(u"8526"_s, u"The data field can't be found."_s);
        EXPECT_TRUE(arabic || processEnded(1, [&] { click(screen, "cmdShow"); }));
        chooseMenu(screen, "mnuExit");
        EXPECT_FALSE(screen.isLoaded());
    }
}

TEST_F(StatementsTest, ExportsWhatWasShown)
{
    const QString none = u"Sorry! There is none to show.  المعذره ولكن لا يوجد أي معلومات للتصدير"_s;
    const QString before = u"You have to chose first.   يجب عليك الإطلاع على المحتوى أولاً"_s;
    frmStatement member;
    frmGStatement family;
    for (Screen *screen : {static_cast<Screen *>(&member), static_cast<Screen *>(&family)}) {
        screen->load();
        dialogs.expectMessage(before);
        click(*screen, "cmdExcell");
        EXPECT_EQ(screen->focusWidget()->objectName(), u"cmdShow"_s);
        selectDates(*screen, u"01/01/2004"_s, u"02/01/2004"_s);
        showsNothing(*screen);
        dialogs.expectMessage(screen == &member ? none : before); // the family's rows are closed again
        click(*screen, "cmdExcell");
        selectDates(*screen);
    }
    chooseType(member, 2);
    shows(member, u"Revenues & Expenses السيد علي"_s, {}, 3);
    const QString headings =
        u"id|transactionid|ddate|amount|transactiondetail|creditordebit|gtype|paymentmethod\n"_s;
    EXPECT_EQ(exported(member, u"_علي.xls"_s), headings + u"1||01/01/2004|-45|note|FALSE|Salary|\n"
                                                          "2||15/03/2004|-20.5|note|FALSE|Salary|\n"
                                                          "3||15/03/2004|200|note|TRUE|Salary|\n"_s);
    EXPECT_EQ(exported(member, u"_علي.xls"_s), headings); // from where the rows stand
    chooseType(family, 1);
    shows(family, u"Quvana Accounting the revered سعد God bless his soul Statement of Revenues"_s,
          u"Statement of Revenues"_s, 4);
    EXPECT_EQ(exported(family, {}).count(u'\n'), 5);
    dialogs.expectSaveFile(folder() + u"/out.txt"_s, {}); // its name stays
    click(family, "cmdExcell");
}

TEST_F(StatementsTest, TellsWhatCannotBeShown)
{
    const QString missing =
        u"error The database engine cannot find the input table or query '%1'. Make sure it exists and that its name is spelled correctly."_s;
    frmStatement screen;
    screen.load();
    execute({u"drop table ledger1"_s});
    choose(screen, "ArchivesList", archive);
    showsNothing(screen, missing.arg(u"ledger1"_s));
    choose(screen, "ArchivesList", u"ledger"_s);
    fill(screen, "Combo1", u"O'Hara"_s);
    dialogs.expectAnyMessage();
    click(screen, "cmdShow");
    EXPECT_TRUE(dialogs.shown().back().text.startsWith(
        u"error Syntax error (missing operator) in query expression"_s));
    screen.unload();

    execute({u"delete from members"_s}); // now what another screen left is run
    for (const auto &[stale, answer] : {std::pair(u"select * from nosuch"_s, missing.arg(u"nosuch"_s)),
                                        {u"select * from ledger where id=0"_s, nothing}}) {
        engine.strSql = stale;
        screen.load();
        chooseType(screen, 2);
        EXPECT_EQ(engine.strSql, stale);
        showsNothing(screen, answer);
        screen.unload();
    }
    addMember({.name = u"O'Hara"_s});
    screen.load();
    EXPECT_EQ(textOf(screen, "Combo1"), u"O'Hara"_s);
    dialogs.expectFont(FontChoice{u"DejaVu Sans"_s, 11});
    chooseMenu(screen, "mnuFont");
    EXPECT_EQ(engine.userFontSize, 11);
}

} // namespace
