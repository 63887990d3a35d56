#include "browser_fixture.h"
#include "journal_tables.h"
#include "platform/database/engine.h"
#include "platform/database/session.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>

// The moves of rows to archives and back, by the browser's commands.

namespace
{

class ArchiveCommands : public BrowserFixture, public testing::WithParamInterface<bool>
{
protected:
    ArchiveCommands()
    {
        setLanguage(GetParam());
        const QString columns = u"transactionid,amount,ddate,updatedon,updatetype"_s;
        for (int day = 1; day <= 6; ++day)
            execute({u"insert into audit_general (%1) values (%2,10,'0%2/02/2004','20/02/2004','x')"_s
                         .arg(columns)
                         .arg(day)});
    }
    static QString lines(const QStringList &texts) { return texts.join(u"\r\n"_s); }

    /// Archiving or merging up to one of its two questions, 0 or 1, which gets No; all the way for 2.
    void expectMove(const QString &first, const QStringList &notice, const QString &second, int until)
    {
        until == 0 ? dialogs.expectNo(first) : dialogs.expectYes(first);
        if (until == 0)
            return;
        dialogs.expectMessage(lines(notice));
        until == 1 ? dialogs.expectNo(second) : dialogs.expectYes(second);
    }
    void expectArchiving(int until = 2)
    {
        expectMove(
            u"Are you sure you want to do it?  هل أنت متأكد من أنك تريد إتمام الإختزال؟"_s,
            {u"This may take some time..  Please be patient.."_s,
             u"تحذير .. هذه العمليه دقيقه جداًوضروريه فقط عندما يكون فتح الصفحه بطيء جداً"_s,
             u"وتعتمد على القيام بإختزال السجل إلى العمليات الحديثه فقط ونقل القديمه إلى ملفات آخرى حسب التواريخ اللتي تحددها"_s},
            u"Are you sure you want to do it?  هل أنت متأكد من أنك لا تزال تريد إتمام الإختزال؟"_s, until);
    }
    void expectMerging(int until = 2)
    {
        expectMove(
            u"Are you sure you want to do it?  هل أنت متأكد من أنك تريد دمج هذا الإرشيف؟"_s,
            {u"This may take some time..  Please be patient.."_s, u"تحذير ..  هذه العمليه دقيقه جداً"_s,
             u"وتعتمد على القيام بدمج هذا الإرشيف مع الدفتر الأصلي وعليك الإنتظار حتى تنتهي تماماً"_s},
            u"Are you sure you want to do it?  هل أنت متأكد من أنك لا تزال تريد دمج وإستعادة هذا الإرشيف؟"_s,
            until);
    }
    void range(const Screen &screen, const QString &from, const QString &to)
    {
        dialogs.expectAnyMessage();
        selectDates(screen, from, to);
    }
    void archive(frmUniversalGrid &screen, const QString &from, const QString &to)
    {
        range(screen, u"01/01/2000"_s,
              u"01/01/2010"_s); // what is shown goes by `updatedon`, what is moved by `ddate`
        control<QLabel>(screen, "DateFromx").setText(from);
        control<QLabel>(screen, "DateTox").setText(to);
        expectArchiving();
        dialogs.expectMessage(u"Archiving Finished sucessfully..  تمت عملية الأرشفه بنجاح"_s);
        chooseMenu(screen, "mnuArchive");
    }
    void show(const Screen &screen, const QString &entry)
    {
        dialogs.expectYes(
            u"Are you sure you want to load this archive?  هل أنت متأكد بأنك تريد مراجعة هذا الإرشيف؟"_s);
        choose(screen, "ArchivesList", entry);
    }
    /// The list's text and entries, `-` in front of a hidden list; the caption; the transactions on show.
    static QString state(const Screen &screen)
    {
        const auto &list = control<QComboBox>(screen, "ArchivesList");
        QStringList entries;
        for (int i = 0; i < list.count(); ++i)
            entries << list.itemText(i);
        return (isShown(screen, "ArchivesList") ? QString() : u"-"_s) + list.currentText() + u'=' +
               entries.join(u',') + u'|' + screen.caption() + u'|' + column(screen, u"transactionid"_s);
    }
    const QString cancelled = u"Archiving was cancelled..  تم إلغاء الأرشفه"_s;
    const QString mergeCancelled = u"DeArchiving was cancelled..  تم إلغاء الدمج"_s;
    const QString merged = u"DeArchiving Finished sucessfully..  تمت عملية الدمج بنجاح"_s;
    const QString noMerge =
        lines({u"You have to know the details before you can start dearchiving"_s,
               u"يجب عليك معرفة التفاصيل لهذه الخطوه قبل القيام بها وعليك تفاديها أصلاً"_s});
};

TEST_P(ArchiveCommands, APeriodIsArchivedShownAndMergedBack)
{
    const auto audits = [] { // of all tables together
        QStringList lines;
        for (const QString &line : stored(journalTables().filter(u"audit_general"_s)))
            lines << line.section(u'|', 1);
        lines.sort();
        return lines;
    };
    const QStringList before = audits();
    const auto screen = browse(u"audit_general"_s);
    const QString base = u"audit_general=audit_general"_s;
    EXPECT_EQ(state(*screen), u"-"_s + base + u"|audit_general|1 2 3 4 5 6"_s);
    dialogs.expectMessage(noMerge);
    chooseMenu(*screen, "mnuDeArchive");

    archive(*screen, u"02/02/2004"_s, u"13/02/2004"_s); // to the 13th of February, but from the 2nd
    const QString entry = u"audit_general1 : 13/02/2004 - 02/02/2004"_s;
    EXPECT_EQ(state(*screen), base + u',' + entry + u"|audit_general|1"_s);
    EXPECT_EQ(textOf(*screen, "Label1") + textOf(*screen, "DateFromx"),
              either(u"المجموع 1"_s, u"Totals : 1"_s));
    EXPECT_FALSE(isShown(*screen, "DateFromx"));
    EXPECT_EQ(gridOf(*screen).y(), control(*screen, "ArchivesList").height());

    show(*screen, entry);
    EXPECT_EQ(state(*screen).section(u'|', 1), u"audit_general "_s + entry + u"|2 3 4 5 6"_s);
    show(*screen, entry); // once more: nothing to do
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    archive(*screen, u"02/01/2004"_s, u"02/01/2004"_s); // of the base table, though an archive is shown
    const QString second = u"audit_general2 : 02/01/2004 - 02/01/2004"_s;
    EXPECT_EQ(state(*screen), base + u',' + entry + u',' + second + u"|audit_general|"_s);
    EXPECT_EQ(audits(), before);
    EXPECT_EQ(shellRows(u"select * from archives"_s),
              QStringList({u"audit_general|audit_general1|13/02/2004 - 02/02/2004"_s,
                           u"audit_general|audit_general2|02/01/2004 - 02/01/2004"_s}));

    show(*screen, entry);
    for (const int refusedAt : {0, 1}) {
        expectMerging(refusedAt);
        chooseMenu(*screen, "mnuDeArchive");
    }
    range(*screen, u"01/01/2020"_s, u"01/01/2020"_s); // hides all rows; the merge takes them all
    EXPECT_EQ(textOf(*screen, "Label1"), either(u"المجموع 0"_s, u"Totals : 0"_s));
    expectMerging();
    dialogs.expectMessage(merged);
    chooseMenu(*screen, "mnuDeArchive");
    EXPECT_EQ(state(*screen), base + u',' + second + u"|audit_general|2 3 4 5 6"_s);
    EXPECT_EQ(audits(), before);
    EXPECT_FALSE(isShown(*screen, "DateFromx"));
    show(*screen, second);
    expectMerging();
    dialogs.expectMessage(merged);
    chooseMenu(*screen, "mnuDeArchive");
    EXPECT_EQ(state(*screen), u"-"_s + base + u"|audit_general|1 2 3 4 5 6"_s);
    EXPECT_EQ(gridOf(*screen).y(), 2); // 30 twips
    EXPECT_EQ(audits(), before);
    EXPECT_EQ(shellRows(u"select * from archives"_s), QStringList());
}

TEST_P(ArchiveCommands, WhatCannotBeArchivedStays)
{
    const QString noRange = lines({u"You have to select a date range before you can start archiving"_s,
                                   u"يجب عليك تحديد تواريخ قبل القيام بهذه العمليه وعليك تجنبها أصلاً"_s});
    const QString english = u"Sorry!  You are not permitted to perform this function."_s;
    const QString arabic = u"المعذره ولكنك الصلاحيات المسجله لك تجعلك غير مخول للقيام بهذه العمليه الدقيقه"_s;
    execute({u"insert into audit_users (userid,updatedon) values('u','05/02/2004')"_s,
             u"insert into audit_members (name,updatedon) values('son','05/02/2004')"_s});
    const QStringList before = stored();
    auto screen = browse(u"audit_general"_s);
    engine.userRank = 1;
    engine.topUserRank = 2;
    dialogs.expectMessage(either(arabic, english));
    chooseMenu(*screen, "mnuArchive");
    dialogs.expectMessage(lines({english, arabic}));
    chooseMenu(*screen, "mnuDeArchive");
    engine.topUserRank = 1;
    dialogs.expectMessage(noRange);
    chooseMenu(*screen, "mnuArchive");
    EXPECT_EQ(screen->focusWidget()->objectName(), u"btnDateSelect"_s);
    range(*screen, u"01/01/2020"_s, u"01/01/2020"_s);
    dialogs.expectMessage(lines({u"There is nothing to Archive! Please go back to main table"_s,
                                 u"لا يوجد ما يمكنك أرشفته!  فضلاً قم بإختيار الملف الأساسي"_s}));
    chooseMenu(*screen, "mnuArchive");
    range(*screen, u"01/01/2000"_s, u"01/01/2010"_s);
    for (const int refusedAt : {0, 1}) {
        expectArchiving(refusedAt);
        chooseMenu(*screen, "mnuArchive");
    }
    if (!GetParam()) { // the store can't be written at the commit alone: the list goes back too
        const ConnectionPtr reader = Connection::create();
        reader->open(engine.connectionString);
        reader->session().engine().run("begin");
        reader->session().engine().run("select count(*) from general");
        expectArchiving();
        dialogs.expectMessage(cancelled);
        chooseMenu(*screen, "mnuArchive");
        reader->close();
    }
    // An entry whose table was dropped by hand holds the name: the archive can't be entered.
    execute(
        {u"insert into archives ([table],[archive],[interval]) values('audit_general','AUDIT_GENERAL1','x')"_s});
    expectArchiving();
    dialogs.expectMessage(cancelled);
    chooseMenu(*screen, "mnuArchive");
    execute({u"delete from archives"_s});
    EXPECT_EQ(state(*screen), u"-audit_general=audit_general|audit_general|1 2 3 4 5 6"_s);
    EXPECT_TRUE(isShown(*screen, "DateFromx"));

    for (const QString &table : {u"ledger"_s, u"general"_s, u"audit_users"_s, u"audit_members"_s}) {
        screen = browse(table);
        range(*screen, u"01/01/2000"_s, u"01/01/2010"_s);
        expectArchiving();
        dialogs.expectMessage(cancelled);
        chooseMenu(*screen, "mnuArchive");
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
    EXPECT_EQ(stored(), before);
}

TEST_P(ArchiveCommands, ArchivesSpoiledByHandLoseNothing)
{
    execute(
        {u"insert into archives ([table],[archive],[interval]) values('audit_general','audit_general7','x')"_s,
         u"select * into [audit_general1] from [audit_general] where transactionid>4"_s,
         u"select * into [audit_general2] from [audit_general] where transactionid>9"_s,
         u"select * into [audit_general3] from [audit_general] where transactionid>5"_s,
         u"delete from [audit_general] where transactionid>4"_s});
    const QStringList before = stored();
    const auto screen = browse(u"audit_general"_s);
    const QString base = u"audit_general=audit_general"_s;
    // An entry without a table does nothing, a table without an entry is listed with its name alone.
    EXPECT_EQ(state(*screen).section(u'|', 0, 0), base + u",audit_general1,audit_general2,audit_general3"_s);

    execute({u"drop table [audit_general3]"_s});
    const QString gone =
        u"The database engine cannot find the input table or query 'audit_general3'. Make sure it "
        "exists and that its name is spelled correctly."_s;
    dialogs.expectYes(
        u"Are you sure you want to load this archive?  هل أنت متأكد بأنك تريد مراجعة هذا الإرشيف؟"_s);
    dialogs.expectMessage(gone);
    choose(*screen, "ArchivesList", u"audit_general3"_s);
    EXPECT_EQ(state(*screen).section(u'|', 1), u"audit_general|1 2 3 4"_s);

    // A key that is taken cancels the merge; the closed rows come back with the next refresh.
    show(*screen, u"audit_general1"_s);
    execute({u"insert into audit_general (idkey,transactionid) values (5,99)"_s});
    expectMerging();
    dialogs.expectMessage(mergeCancelled);
    chooseMenu(*screen, "mnuDeArchive");
    EXPECT_EQ(state(*screen), u"audit_general1="_s + base.section(u'=', 1) +
                                  u",audit_general1,audit_general2|audit_general audit_general1|5 6"_s);
    click(*screen, "cmdRefresh");
    EXPECT_EQ(textOf(*screen, "Label1"), either(u" المجموع 2"_s, u"Totals : 2"_s));
    execute({u"delete from audit_general where idkey=5"_s, u"drop table [audit_general1]"_s});
    dialogs.expectAnyMessage(); // it is gone meanwhile
    chooseMenu(*screen, "mnuDeArchive");

    // An empty one is dropped without a question, with the list's entry. The shown rows stay as they are.
    show(*screen, u"audit_general2"_s);
    dialogs.expectMessage(lines({u"There is nothing to DeArchive! Please go back to the tables list"_s,
                                 u"لا يوجد ما يمكنك دمجه!  فضلاً قم بإختيار الملف المطلوب"_s}));
    chooseMenu(*screen, "mnuDeArchive");
    EXPECT_EQ(state(*screen).section(u'|', 0, 0), base + u",audit_general1"_s);
    QStringList left = before;
    left.removeIf([](const QString &line) {
        return line.startsWith(u"audit_general1") || line.startsWith(u"audit_general3");
    });
    EXPECT_EQ(stored(), left);
}

INSTANTIATE_TEST_SUITE_P(Both, ArchiveCommands, testing::Bool(),
                         [](const auto &test) { return test.param ? "ar" : "en"; });

} // namespace
