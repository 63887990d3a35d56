#include "platform/report/preview_window.h"
#include "statements/frmGStatement.h"
#include "statements/frmReports.h"
#include "statements/frmStatement.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "utilities/frmSelectDates.h"

namespace
{

/// علي: expense 45 (1 January 2004), expense 20.5 and revenue 200 (15 March), revenue 600 cancelled, revenue
/// 1000 in an archive; Sara has no title and revenue 150 (15 March). The family has the four valid sums.
class StatementsTest : public StoreFixture
{
protected:
    StatementsTest()
    {
        engine.deceasedName = u"سعد"_s;
        addMember({.name = u"علي"_s, .title = u"السيد"_s});
        addMember({.name = u"Omar"_s, .valid = false});
        addMember({.name = u"Sara"_s});
        const QString rest =
            u"creditordebit,amount,ddate,valid,transactiondetail,paymentmethod,gtype) values ("_s;
        for (const QString &row :
             {u"'علي',1,false,45,'01/01/2004',true"_s, u"'علي',2,false,20.5,'15/03/2004',true"_s,
              u"'علي',3,true,200,'15/03/2004',true"_s, u"'Sara',3,true,150,'15/03/2004',true"_s,
              u"'علي',4,true,600,'15/03/2004',false"_s, u"'علي',5,true,1000,'01/01/2003',true"_s}) {
            const QString values = row + u",'note','cash',13)"_s;
            execute({u"insert into ledger (name,transactionid,"_s + rest + values,
                     u"insert into general (transactionid,"_s + rest + values.section(u',', 1)});
        }
        execute(
            {u"select * into [ledger1] from [ledger] where transactionid=5"_s,
             u"delete from ledger where transactionid=5"_s,
             u"insert into archives ([table],[archive],[interval]) values ('ledger','ledger1','31/12/2003 - 01/01/2003')"_s});
    }

    static QString range(const QString &from, const QString &to)
    {
        return engine.isArabic ? u" من "_s + from + u" إلى "_s + to : u" From "_s + from + u" To "_s + to;
    }
    static QString either(const QString &ar, const QString &en) { return engine.isArabic ? ar : en; }

    /// Empty texts cancel the dialog.
    static void selectDates(const Screen &screen, const QString &from, const QString &to)
    {
        onModal<frmSelectDates>([from, to](frmSelectDates &dialog) {
            if (from.isEmpty())
                return click(dialog, "cmdCancel");
            fill(dialog, "DateFromx", from);
            fill(dialog, "DateTox", to);
            click(dialog, "cmdOK");
        });
        click(screen, "btnDateSelect");
    }
    static QString datesOf(const Screen &screen)
    {
        return textOf(screen, "DateFrom") + u' ' + textOf(screen, "DateTo");
    }

    /// Presses Show. The report's title is what its file would be called, its caption is the window's.
    void shows(const Screen &screen, const QString &title, const QString &caption, int rows)
    {
        SCOPED_TRACE(engine.strSql.toStdString());
        onModal<PreviewWindow>([=, this](PreviewWindow &preview) {
            EXPECT_EQ(preview.caption(), caption.simplified());
            EXPECT_EQ(preview.rightToLeft(), engine.isArabic);
            dialogs.expectSaveFile(title + u".pdf"_s, {});
            click(preview, "cmdSave");
            click(preview, "cmdClose");
        });
        click(screen, "cmdShow");
        EXPECT_EQ(textOf(screen, "Label3"), QString::number(rows));
    }
    void showsNothing(const Screen &screen)
    {
        dialogs.expectMessage(u"Sorry! There is none to show.  المعذره ولكن لا يوجد أي معلومات للإظهار"_s);
        click(screen, "cmdShow");
        EXPECT_EQ(textOf(screen, "Label3"), QString());
    }
    /// The lines of an exported text file.
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
    const struct {
        QString browseTable, archives;
    } cases[] = {{{}, u"ledger,ledger1 : 31/12/2003 - 01/01/2003"_s},
                 {u"ledger"_s, u"ledger,ledger1 : 31/12/2003 - 01/01/2003"_s},
                 {u"general"_s, {}}}; // one entry: the list is not shown
    for (const auto &c : cases) {
        engine.browseTable = c.browseTable;
        engine.strSql = u"stale"_s;
        frmStatement screen;
        screen.load();
        const auto &archives = control<QComboBox>(screen, "ArchivesList");
        QStringList entries;
        for (int i = 0; i < archives.count() && isShown(screen, "ArchivesList"); ++i)
            entries << archives.itemText(i);
        EXPECT_EQ(entries.join(u','), c.archives);
        EXPECT_EQ(textOf(screen, "Combo1"), u"علي"_s);
        EXPECT_EQ(control<QComboBox>(screen, "Combo1").count(), 2);
        EXPECT_EQ(datesOf(screen), u"- -"_s);
        EXPECT_EQ(engine.strSql, u"stale"_s);
        shows(screen, u"expenses السيد علي"_s, {}, 2);
    }
}

TEST_F(StatementsTest, ShowsTheSidesOfAMember)
{
    const QString day = u"15/03/2004"_s;
    const QString dayInTitle = u"15032004"_s; // a file's name has no slashes
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        frmStatement screen;
        screen.load();
        const QString headings[] = {
            either(u"المصاريف السيد علي"_s, u"expenses السيد علي"_s),
            either(u"العوائد السيد علي"_s, u"revenues السيد علي"_s),
            either(u"العوائد و المصاريف السيد علي"_s, u"Revenues & Expenses السيد علي"_s)};
        for (const bool monthly : {false, true}) {
            const int found[] = {2, 1, 3}; // as many months and sides as rows
            for (int type : {2, 0, 1}) {
                click(screen, ("Option1_" + std::to_string(type)).c_str());
                EXPECT_EQ(textOf(screen, "Label3"), QString());
                shows(screen, headings[type], {}, found[type]);
            }
            selectDates(screen, day, day);
            shows(screen, headings[1] + range(dayInTitle, dayInTitle), range(day, day), 1);
            selectDates(screen, u"01/01/2004"_s, u"31/12/2004"_s);
            if (monthly) // by rows a range runs backwards
                shows(screen, headings[1] + range(u"01012004"_s, u"31122004"_s),
                      range(u"01/01/2004"_s, u"31/12/2004"_s), 1);
            else
                showsNothing(screen);
            selectDates(screen, {}, {});
            EXPECT_EQ(datesOf(screen), u"01/01/2004 -"_s); // one of them stays
            selectDates(screen, {}, {});
            shows(screen, headings[1], {}, 1);
            chooseMenu(screen, "mnuMonthly");
        }
        choose(screen, "Combo1", u"Sara"_s);
        EXPECT_TRUE(engine.strSql.contains(u"(name='Sara')"_s));
        shows(screen, headings[1].section(u' ', 0, 0) + u" Sara"_s, {}, 1);
        choose(screen, "Combo1", u"علي"_s);
        EXPECT_TRUE(engine.strSql.contains(u"(name='Sara')"_s)); // the first entry's turn comes with Show
        choose(screen, "ArchivesList", u"ledger1 : 31/12/2003 - 01/01/2003"_s);
        shows(screen, headings[1], {}, 1);
        EXPECT_TRUE(engine.strSql.contains(u" from [ledger1] "_s));
        fill(screen, "Combo1", u"Nobody"_s);
        showsNothing(screen);
        choose(screen, "ArchivesList", u"ledger"_s);
        execute(
            {u"insert into ledger (name,creditordebit,amount,valid,ddate) values ('Nobody',true,1,true,'01/01/2004')"_s});
        shows(screen, headings[1].section(u' ', 0, 0) + u" Unknown Nobody"_s, {}, 1);
        execute({u"delete from ledger where name='Nobody'"_s});
    }
}

TEST_F(StatementsTest, ShowsTheSidesOfTheFamily)
{
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        frmGStatement screen;
        screen.load();
        const QString heading = either(u"كوفانا الشيخ سعد رحمه الله "_s,
                                       u"Quvana Accounting the revered سعد God bless his soul "_s);
        const QString titles[] = {
            either(u"كشف حساب المصاريف"_s, u"Statement of Expenses"_s),
            either(u"كشف حساب العوائد"_s, u"Statement of Revenues"_s),
            either(u"كشف حساب العوائد و المصاريف"_s, u"Statement of Revenues & Expenses"_s)};
        const auto title = [&](int type) { return (heading + titles[type]).left(60).trimmed(); };
        shows(screen, title(0), titles[0], 2);
        for (const int type : {2, 0, 1}) {
            const int found[] = {2, 3, 5};
            click(screen, ("Option1_" + std::to_string(type)).c_str());
            shows(screen, title(type), titles[type], found[type]);
        }
        const QString line = range(u"15/03/2004"_s, u"15/03/2004"_s);
        selectDates(screen, u"15/03/2004"_s, u"15/03/2004"_s);
        shows(screen, (title(1) + range(u"15032004"_s, u"15032004"_s)).left(60).trimmed(), titles[1] + line,
              2);
        onModal<PreviewWindow>([&](PreviewWindow &preview) { // the line comes once more with each Show
            EXPECT_EQ(preview.caption(), titles[1] + line + line);
            click(preview, "cmdClose");
        });
        click(screen, "cmdShow");
        selectDates(screen, {}, {});
        EXPECT_EQ(datesOf(screen), u"- -"_s);
        click(screen, "Option1_1");
        engine.strSql = u"select * from general where id=0"_s; // what another command left is run
        showsNothing(screen);
        for (const auto &typed : {u"general"_s, u""_s}) {
            dialogs.expectMessage(
                u"You are not supposed to change the archive name, just make a selection from the damn list!!\r\nلا تقم بتغيير إسم الإرشيف!!  فقط قم بإختيار المطلوب من القائمه"_s);
            fill(screen, "ArchivesList", typed);
            pressKey(control(screen, "ArchivesList"), Qt::Key_Return);
        }
        selectDates(screen, u"01/10/2003"_s, u"31/12/2004"_s);
        chooseMenu(screen, "mnuMonthly");
        if (arabic) {
            shows(screen, (title(1) + range(u"01102003"_s, u"31122004"_s)).left(60).trimmed(),
                  titles[1] + range(u"01/10/2003"_s, u"31/12/2004"_s), 1);
        } else {
            dialogs.expectUntrapped(u"8526"_s, u"The data field can't be found."_s);
            EXPECT_TRUE(processEnded(1, [&] { click(screen, "cmdShow"); }));
        }
    }
}

TEST_F(StatementsTest, ExportsWhatWasShown)
{
    const QString none = u"Sorry! There is none to show.  المعذره ولكن لا يوجد أي معلومات للتصدير"_s;
    const QString first = u"You have to chose first.   يجب عليك الإطلاع على المحتوى أولاً"_s;
    frmStatement member;
    frmGStatement family;
    for (Screen *screen : {static_cast<Screen *>(&member), static_cast<Screen *>(&family)}) {
        screen->load();
        dialogs.expectMessage(first);
        click(*screen, "cmdExcell");
        EXPECT_EQ(screen->focusWidget()->objectName(), u"cmdShow"_s);
        selectDates(*screen, u"01/01/2004"_s, u"02/01/2004"_s);
        showsNothing(*screen);
        dialogs.expectMessage(screen == &member ? none : first); // the family's rows are closed again
        click(*screen, "cmdExcell");
        selectDates(*screen, {}, {});
    }
    click(member, "Option1_2");
    shows(member, u"Revenues & Expenses السيد علي"_s, {}, 3);
    const QString headings =
        u"id|transactionid|ddate|amount|transactiondetail|creditordebit|gtype|paymentmethod\n"_s;
    EXPECT_EQ(exported(member, u"_علي.xls"_s), headings + u"1|1|01/01/2004|-45|note|FALSE|Salary|cash\n"
                                                          "2|2|15/03/2004|-20.5|note|FALSE|Salary|cash\n"
                                                          "3|3|15/03/2004|200|note|TRUE|Salary|cash\n"_s);
    EXPECT_EQ(exported(member, u"_علي.xls"_s), headings); // from where the rows stand
    click(family, "Option1_1");
    onModal<PreviewWindow>([](PreviewWindow &preview) { click(preview, "cmdClose"); });
    click(family, "cmdShow");
    EXPECT_EQ(exported(family, {}).count(u'\n'), 4);
    dialogs.expectSaveFile(folder() + u"/out.txt"_s, {}); // its name stays
    click(family, "cmdExcell");
}

TEST_F(StatementsTest, TellsWhatCannotBeShown)
{
    frmStatement screen;
    screen.load();
    execute({u"drop table ledger1"_s});
    choose(screen, "ArchivesList", u"ledger1 : 31/12/2003 - 01/01/2003"_s);
    dialogs.expectMessage(
        u"error The database engine cannot find the input table or query 'ledger1'. Make sure it exists and that its name is spelled correctly."_s);
    click(screen, "cmdShow");
    dialogs.expectUntrapped(u"-2147217900 (80040e14)"_s, u"x"_s).text.reset();
    EXPECT_TRUE(processEnded(1, [&] { fill(screen, "Combo1", u"O'Hara"_s); }));
    screen.unload();

    execute({u"delete from members"_s});
    frmStatement empty;
    for (
        const auto &[stale, answer] :
        {std::pair(
             u"select * from nosuch"_s,
             u"error The database engine cannot find the input table or query 'nosuch'. Make sure it exists and that its name is spelled correctly."_s),
         std::pair(u"select * from ledger where id=0"_s,
                   u"Sorry! There is none to show.  المعذره ولكن لا يوجد أي معلومات للإظهار"_s)}) {
        engine.strSql = stale;
        empty.load();
        click(empty, "Option1_2");
        EXPECT_EQ(engine.strSql, stale);
        dialogs.expectMessage(answer);
        click(empty, "cmdShow");
        empty.unload();
    }
    addMember({.name = u"O'Hara"_s});
    dialogs.expectAnyMessage();
    frmStatement refused;
    EXPECT_TRUE(processEnded(1, [&] { refused.load(); }));
}

TEST_F(StatementsTest, TakesAFontForTheSession)
{
    frmGStatement screen;
    screen.load();
    dialogs.expectFont({});
    chooseMenu(screen, "mnuFont");
    EXPECT_EQ(engine.userFontSize, 8);
    dialogs.expectFont(FontChoice{u"DejaVu Sans"_s, 11, false, 0xFF});
    chooseMenu(screen, "mnuFont");
    EXPECT_EQ(QStringList({engine.userFontName, QString::number(engine.userFontSize),
                           QString::number(engine.userFontColor)})
                  .join(u' '),
              u"DejaVu Sans 11 255"_s);
    chooseMenu(screen, "mnuExit");
    EXPECT_FALSE(screen.isLoaded());
}

TEST_F(StatementsTest, OpensFromTheirMenu)
{
    setLanguage(true);
    frmReports menu;
    menu.load();
    EXPECT_EQ(menu.caption() + textOf(menu, "Label1"), u"كشوفاتتقارير وكشوفات"_s);
    onModal<frmStatement>([](frmStatement &screen) {
        EXPECT_EQ(screen.caption(), u"كشف فردي"_s);
        pressKey(screen, Qt::Key_Escape);
    });
    click(menu, "Command1");
    onModal<frmGStatement>([](frmGStatement &screen) {
        EXPECT_EQ(screen.caption(), u"كشف عام"_s);
        click(screen, "Command3");
    });
    click(menu, "Command2");
    click(menu, "Command3");
    EXPECT_FALSE(menu.isLoaded());
}

} // namespace
