#include "family/check_family.h"
#include "family/frmMembers.h"
#include "platform/ui/process.h"
#include "platform/ui/wait.h"
#include "presentation/vocabulary.h"
#include "support/hostile.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtWidgets/QLineEdit>

#include <algorithm>

namespace
{

const auto nameOf = u"select name,sex,relation,[group],valid from members order by name"_s;

/// The members screen over three members, oldest first: Amina, Badr, Daoud.
class MembersTest : public StoreFixture
{
protected:
    MembersTest()
    {
        setClock([] { return makeDate(2004, 3, 15, 10, 20, 30); });
        engine.deceasedName = u"Hamid"_s;
        addMember({u"Badr"_s, 2, 1, 1, u"02/02/1970"_s});
        addMember({u"Amina"_s, 1, 2, 1, u"01/01/1940"_s});
        addMember({u"Daoud"_s, 2, 1, 2, u"03/03/1990"_s, false});
    }

    QString boxes() const
    {
        QStringList texts;
        for (int i = 0; i < 7; ++i)
            texts << textOf(screen, ("txtFields_" + std::to_string(i)).c_str());
        return texts.join(u'|');
    }
    QString status() const { return textOf(screen, "lblStatus"); }
    bool isOpenForChange() const { return isShown(screen, "cmdUpdate") && !isShown(screen, "cmdEdit"); }

    static QStringList audits()
    {
        return rows(u"select name,sex,title,relation,dob,group,valid,updatedon,updatedby,updatetype "
                    "from audit_members order by idkey"_s);
    }

    /// Presses cmdUpdate and answers Yes.
    void save()
    {
        ScriptedDialogs dialogs;
        dialogs.expectYes(engine.textAreYouSure);
        click(screen, "cmdUpdate");
    }

    frmMembers screen;
};

class MembersInLanguage : public MembersTest, public testing::WithParamInterface<bool>
{
protected:
    MembersInLanguage() { setLanguage(GetParam()); }
    static QString told(const QString &ar, const QString &en) { return GetParam() ? ar : en; }
    const QString unasked = told(u"لا تقم بإجراء تغييرات في المعلومات قبل الضغط على تعديل"_s,
                                 u"Do NOT make any changes of the information without hitting Edit first!"_s);
};

} // namespace

TEST_P(MembersInLanguage, ShowsTheRegisterInWords)
{
    ScriptedDialogs none; // words in place of codes are no change
    screen.load();
    const auto &grid = control<FlexGrid>(screen, "FGrid");
    const auto row = [&grid](int index) {
        QStringList texts;
        for (int column = 0; column < grid.cols(); ++column)
            texts << grid.textMatrix(index, column);
        return texts.join(u'|');
    };
    const auto words = [](const QString &keys) {
        QStringList texts = keys.split(u'|');
        std::ranges::transform(texts, texts.begin(), translate);
        return texts.join(u'|');
    };
    EXPECT_EQ(row(0), words(u"name|sex|title|relation|dob|group|valid|lastupdate"_s));
    EXPECT_EQ(row(1), words(u"Amina|Female||Wife|1940/01/01|1|YES|"_s));
    EXPECT_EQ(row(3), words(u"Daoud|Male||Son|1990/03/03|2|NO|"_s));
    EXPECT_EQ(boxes(), words(u"Amina|Female||Wife|01/01/1940|1|"_s));
    EXPECT_EQ(GetParam(), control(screen, "txtFields_0").x() > control(screen, "txtFields_1").x());
    EXPECT_LT(control(screen, "cmdFirst").x(), control(screen, "cmdNext").x());

    for (const auto &[filter, count] : {std::pair{"mnuValid", 2}, {"mnuInValid", 1}, {"mnuBoth", 3}}) {
        chooseMenu(screen, filter);
        EXPECT_EQ(grid.rows() - 1, count);
        EXPECT_EQ(row(0).section(u'|', 0, 0), translate(u"name"_s));
        EXPECT_EQ(row(count).section(u'|', 6, 6), translate(count == 2 ? u"YES"_s : u"NO"_s));
    }
    click(screen, "cmdRefresh");
    EXPECT_EQ(row(2).section(u'|', 3, 3), translate(u"Son"_s));
}

TEST_P(MembersInLanguage, RefusesChangesOutsideAnEdit)
{
    screen.load();
    ScriptedDialogs dialogs;
    dialogs.expectMessage(told(
        u"لكي تقوم بالإضافه أو التعديل يجب أن تقوم بضغط الخيار في أسفل الصفحه قبل البدأ في الطباعه"_s,
        u"To Add a new record or modify an existing record, you must click on the option in the lower part of the page before you start typing!"_s));
    typeText(screen, "txtFields_0", u"x"_s);
    EXPECT_EQ(textOf(screen, "txtFields_0"), u"Amina");

    // As the mouse's paste does; the second text is one that its field does not take.
    for (const char *box : {"txtFields_0", "txtFields_5"}) {
        for (const char *command : {"cmdNext", "cmdPrevious", "cmdRefresh", "cmdAdd"}) {
            control<QLineEdit>(screen, box).insert(u"x"_s);
            dialogs.expectMessage(unasked);
            click(screen, command);
            EXPECT_FALSE(textOf(screen, box).contains(u'x')) << command;
        }
        click(screen, "cmdCancel");
    }
    EXPECT_EQ(rows(nameOf),
              QStringList({u"Amina|2|1|1|True"_s, u"Badr|1|2|1|True"_s, u"Daoud|1|2|2|False"_s}));
}

TEST_P(MembersInLanguage, AddsAMemberByTheChoosers)
{
    screen.load();
    click(screen, "cmdAdd");
    EXPECT_EQ(status(), u"Add record");
    EXPECT_EQ(boxes(), u"||||||");
    fill(screen, "txtFields_0", u"Lina"_s);
    click(screen, "txtFields_1");
    EXPECT_EQ(textOf(screen, "Combo1"), translate(u"Male"_s));
    choose(screen, "Combo1", translate(u"Female"_s));
    EXPECT_FALSE(isShown(screen, "Combo1"));
    fill(screen, "txtFields_3", translate(u"Daughter"_s)); // typed, not chosen
    pressKey(control(screen, "txtFields_4"), Qt::Key_F4);
    EXPECT_EQ(textOf(screen, "DTPicker1"), u"15/03/2004");
    pressKey(screen, Qt::Key_Return);
    fill(screen, "txtFields_5", u"\u0667"_s); // an Arabic seven
    save();
    EXPECT_EQ(audits(), QStringList{u"Lina|2|(null)|3|15/03/2004|7|True|15/03/2004 10:20:30|TEST|"_s +
                                    translate(u"add"_s)});
    EXPECT_EQ(textOf(screen, "txtFields_3"), translate(u"Daughter"_s));
    EXPECT_EQ(textOf(screen, "txtFields_6"), u"15/03/2004 10:20:30");
    EXPECT_EQ(status(), u"Record: 4");
    EXPECT_TRUE(rows(nameOf).contains(u"Lina|2|3|7|True"_s));
}

TEST_P(MembersInLanguage, AnEditKeepsWhatWasThereBefore)
{
    execute({u"insert into ledger (name,transactionid) values ('Amina',1)"_s});
    screen.load();
    click(screen, "cmdEdit");
    EXPECT_EQ(status(), u"Edit record");
    ScriptedDialogs dialogs;
    dialogs.expectMessage(told(u"لم تقم بأي تعديل"_s, u"No change was made!"_s));
    click(screen, "cmdUpdate");
    fill(screen, "txtFields_0", u"Aminah"_s);
    fill(screen, "txtFields_1", u"1"_s);
    pressKey(screen, Qt::Key_End); // no move in an edit
    save();
    EXPECT_EQ(audits(), QStringList{u"Amina|2|(null)|1|01/01/1940|1|True|15/03/2004 10:20:30|TEST|"_s +
                                    translate(u"edit"_s)});
    EXPECT_EQ(rows(u"select name from ledger"_s), QStringList{u"Amina"_s});
    EXPECT_EQ(boxes().section(u'|', 0, 1), u"Aminah|"_s + translate(u"Male"_s));
}

TEST_P(MembersInLanguage, ADeleteMarksTheRowBehind)
{
    screen.load();
    ScriptedDialogs dialogs;
    execute({u"select * into [ledger3] from [ledger]"_s,
             u"insert into ledger3 (name,transactionid) values ('Amina',1)"_s});
    dialogs.expectMessage(told(
        u"لا تستطيع إلغاء عضو عندما يكون مسجل بإسمه أو إسمها عمليات دخل أو مصاريف"_s,
        u"You CANNOT delete a member with an outstanding revenue or expense transactions.  You must delete pending transactions first"_s));
    click(screen, "cmdDelete");
    execute({u"drop table [ledger3]"_s});
    click(screen, "cmdDelete");
    EXPECT_EQ(rows(nameOf),
              QStringList({u"Amina|2|1|1|True"_s, u"Badr|1|2|1|False"_s, u"Daoud|1|2|2|False"_s}));
    EXPECT_EQ(audits(), QStringList{u"Badr|1|(null)|2|02/02/1970|1|False|15/03/2004 10:20:30|TEST|"_s +
                                    translate(u"delete"_s)});
    dialogs.expectMessage(unasked); // the flag that the delete left up
    pressKey(screen, Qt::Key_End);
    EXPECT_EQ(status(), u"Record: 3");
    click(screen, "cmdDelete");
    EXPECT_TRUE(audits().last().startsWith(u"Daoud|"_s));
}

INSTANTIATE_TEST_SUITE_P(Both, MembersInLanguage, testing::Bool(),
                         [](const auto &test) { return test.param ? "ar" : "en"; });

TEST_F(MembersTest, ADuplicateNameIsRefusedAndOnlyCancelLeaves)
{
    screen.load();
    click(screen, "cmdEdit");
    fill(screen, "txtFields_0", u"badr "_s); // the same name to the store
    // The first try leaves its audit row behind and uses up the word for the second one's.
    for (const QString &failure : {u"duplicate values"_s, u"cannot be a zero-length string"_s}) {
        ScriptedDialogs dialogs;
        dialogs.expectYes(engine.textAreYouSure);
        dialogs.expectAnyMessage();
        click(screen, "cmdUpdate");
        EXPECT_TRUE(dialogs.shown().back().text.contains(failure));
        EXPECT_TRUE(isOpenForChange());
        EXPECT_EQ(audits().size(), 1);
    }
    click(screen, "cmdCancel");
    EXPECT_FALSE(isOpenForChange());
    EXPECT_EQ(rows(nameOf).first(), u"Amina|2|1|1|True");
}

TEST_F(MembersTest, TakesOrRefusesInWordsWhateverIsTyped)
{
    screen.load();
    Agreeing dialogs;
    const auto dump = [] { return dumpOf(engine.dbConnection, {u"members"_s, u"audit_members"_s}); };
    for (const char *box :
         {"txtFields_0", "txtFields_1", "txtFields_2", "txtFields_3", "txtFields_4", "txtFields_5"}) {
        for (const QString &text : hostileTexts() + QStringList{u"300"_s, u"cousin"_s}) {
            SCOPED_TRACE(std::string(box) + ' ' + text.left(20).toStdString());
            const QStringList before = dump();
            dialogs.told.clear();
            click(screen, "cmdFirst");
            click(screen, "cmdEdit");
            paste(screen, box, text);
            const QString typed = QString::fromUtf8(textOf(screen, box).toUtf8());
            EXPECT_TRUE(processEnded(0, [&] { // a validation that fails waits
                later([] { endProcess(0); });
                click(screen, "cmdUpdate");
                serveEvents();
            }));
            const bool refused = isOpenForChange();
            EXPECT_EQ(refused, dump() == before);
            EXPECT_EQ(dialogs.told.size(), refused && box[10] == '4' ? 0 : 1);
            EXPECT_TRUE(refused || dump().join(u'\n').contains(typed));
            if (refused)
                click(screen, "cmdCancel");
        }
    }
}

TEST_F(MembersTest, AFaultyBoxTurnsRedAndTheCommandWaitsForTheEndOfTheProcess)
{
    ScriptedDialogs dialogs;
    setEndsWithLastScreen(true);
    const QPointer<frmMembers> members = new frmMembers;
    members->load();
    click(*members, "cmdAdd");
    const auto baseOf = [&](const char *box) { return control(*members, box).palette().base().color(); };
    const auto repair = [&] { // at the second fault, in a second wait
        EXPECT_EQ(baseOf("txtFields_0"), QColor(255, 255, 255));
        EXPECT_EQ(baseOf("txtFields_1"), QColor(255, 0, 0));
        fill(*members, "txtFields_1", u"2"_s);
        fill(*members, "txtFields_3", u"3"_s);
        fill(*members, "txtFields_4", u"7/5/99"_s);
        fill(*members, "txtFields_5", u"1"_s);
        dialogs.expectYes(engine.textAreYouSure);
        click(*members, "cmdUpdate");
        EXPECT_TRUE(isShown(*members, "cmdEdit"));
        click(*members, "cmdClose"); // the last screen: the process ends, and nothing runs behind the waits
        EXPECT_TRUE(members && !members->isLoaded());
    };
    EXPECT_TRUE(processEnded(0, [&] {
        later([&] {
            EXPECT_EQ(baseOf("txtFields_0"), QColor(255, 0, 0));
            EXPECT_EQ(members->focusWidget(), &control(*members, "txtFields_0"));
            fill(*members, "txtFields_0", u"Lina"_s);
            later(repair);
            click(*members, "cmdUpdate");
        });
        click(*members, "cmdUpdate");
    }));
    QCoreApplication::processEvents();
    EXPECT_FALSE(members);
    EXPECT_TRUE(rows(nameOf).contains(u"Lina|2|3|1|True"_s));
}

TEST_F(MembersTest, TheKeysMoveAndLeave)
{
    screen.load();
    ScriptedDialogs dialogs;
    const QStringList keys = u"Up Down End PgDown PgUp Home Ctrl+PgDown Ctrl+Up"_s.split(u' ');
    const QStringList records = u"1 2 3 3 2 1 3 1"_s.split(u' ');
    for (int i = 0; i < keys.size(); ++i) {
        const QKeyCombination key = QKeySequence(keys[i])[0];
        pressKey(screen, key.key(), key.keyboardModifiers());
        EXPECT_EQ(status(), u"Record: "_s + records[i]);
    }
    click(screen, "cmdEdit");
    fill(screen, "txtFields_2", u"Mrs"_s);
    pressKey(screen, Qt::Key_Escape);
    EXPECT_TRUE(isOpenForChange());
    dialogs.expectYes(u"Do you want to save changes!!?"_s);
    dialogs.expectYes(u"Are you sure? "_s);
    screen.close();
    EXPECT_FALSE(screen.isLoaded());
    EXPECT_EQ(rows(u"select title from members where name='Amina'"_s), QStringList{u"Mrs"_s});
    execute({u"update members set name='O''Amina' where name='Amina'"_s});
    screen.load();
    dialogs.expectAnyMessage(); // the name breaks the ledger test's statement
    click(screen, "cmdDelete");
    EXPECT_EQ(audits().size(), 1); // of the edit
    pressKey(screen, Qt::Key_Escape);
    EXPECT_FALSE(screen.isLoaded());

    execute({u"delete from members"_s});
    screen.load();
    click(screen, "cmdAdd"); // a row that nobody saved counts as well
    dialogs.expectNo(u"Do you want to save changes!!?"_s);
    screen.close();
    EXPECT_FALSE(screen.isLoaded());
}

TEST_F(MembersTest, AsksForTheDeceasedUntilANameIsKnown)
{
    const auto stored = u"select desceased from settings"_s;
    const auto ask = [](ScriptedDialogs &dialogs, const QString &typed, bool yes) {
        dialogs.expectInput(u"فضلاً أدخل إسم المورٍث"_s, typed)
            .withTitle(u"تسجيل إسم الأب الذي إنتقل إلى رحمة الله"_s)
            .withDefault(engine.deceasedName);
        yes ? dialogs.expectYes(u"Are you sure? "_s) : dialogs.expectNo(u"Are you sure? "_s);
    };
    ScriptedDialogs dialogs;
    engine.deceasedName.clear();
    ask(dialogs, {}, true);
    screen.load();
    ask(dialogs, u"Hamid"_s, false);
    chooseMenu(screen, "mnuDesceased");
    EXPECT_EQ(rows(stored), QStringList{u"unknown"_s});
    ask(dialogs, u"Hamid"_s, true);
    chooseMenu(screen, "mnuDesceased");
    EXPECT_EQ(engine.deceasedName, u"Hamid");
    Agreeing typing;
    for (const QString &text : hostileTexts()) {
        typing.typed = text;
        const QString before = engine.deceasedName;
        const bool refused(processEnded(1, [&] { chooseMenu(screen, "mnuDesceased"); }));
        EXPECT_EQ(refused, typing.told.last().startsWith(u"Run-time error '-2147217"_s));
        EXPECT_EQ(engine.deceasedName, refused ? before : text);
        EXPECT_EQ(rows(stored).first(), QString::fromUtf8(engine.deceasedName.toUtf8()));
    }
}

TEST_F(StoreFixture, AFamilyIsUsableWithTwoSoundValidMembers)
{
    EXPECT_FALSE(CheckFamily());
    for (const QString &spoiled : {u"relation=4"_s, u"relation=0"_s, u"relation=null"_s, u"sex=3"_s,
                                   u"sex=null"_s, u"[group]=null"_s, u"name=null"_s, u"valid=false"_s}) {
        execute({u"delete from members"_s});
        addMember({u"A"_s, 1, 2, 0});
        addMember({u"out"_s, 9, 9, 1, u"01/01/1980"_s, false});
        addMember({u"B"_s, 1, 2});
        EXPECT_TRUE(CheckFamily());
        execute({u"update members set "_s + spoiled + u" where name='B'"_s});
        EXPECT_FALSE(CheckFamily()) << spoiled.toStdString();
    }
}
