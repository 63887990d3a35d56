#include "family/frmMembers.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/ui/application.h"
#include "presentation/vocabulary.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{

const auto unaskedEn = u"Do NOT make any changes of the information without hitting Edit first!"_s;
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
    void save(const QString &failure = {})
    {
        ScriptedDialogs dialogs;
        dialogs.expectYes(engine.textAreYouSure);
        if (!failure.isEmpty())
            dialogs.expectMessage(failure);
        click(screen, "cmdUpdate");
    }

    frmMembers screen;
};

class MembersInLanguage : public MembersTest, public testing::WithParamInterface<bool>
{
protected:
    MembersInLanguage() { setLanguage(GetParam()); }
    static QString told(const QString &ar, const QString &en) { return GetParam() ? ar : en; }
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

    control<QLineEdit>(screen, "txtFields_0").insert(u"x"_s); // as the mouse's paste does
    const auto unasked = told(u"لا تقم بإجراء تغييرات في المعلومات قبل الضغط على تعديل"_s, unaskedEn);
    dialogs.expectMessage(unasked);
    click(screen, "cmdNext");
    EXPECT_EQ(status(), u"Record: 2");
    control<QLineEdit>(screen, "txtFields_5").insert(u"x"_s); // a text that the field does not take
    dialogs.expectMessage(unasked);
    click(screen, "cmdPrevious");
    click(screen, "cmdNext");
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
    click(screen, "txtFields_3");
    choose(screen, "Combo1", translate(u"Daughter"_s));
    EXPECT_FALSE(isShown(screen, "Combo1"));
    click(screen, "txtFields_4");
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
    {
        ScriptedDialogs dialogs;
        dialogs.expectMessage(told(u"لم تقم بأي تعديل"_s, u"No change was made!"_s));
        click(screen, "cmdUpdate");
    }
    fill(screen, "txtFields_0", u"Aminah"_s);
    fill(screen, "txtFields_1", u"1"_s);
    pressKey(screen, Qt::Key_End); // no move in an edit
    save();
    EXPECT_EQ(audits(), QStringList{u"Amina|2|(null)|1|01/01/1940|1|True|15/03/2004 10:20:30|TEST|"_s +
                                    translate(u"edit"_s)});
    EXPECT_EQ(rows(u"select name from ledger"_s), QStringList{u"Amina"_s});
    EXPECT_EQ(boxes().section(u'|', 0, 1), u"Aminah|"_s + translate(u"Male"_s));
    EXPECT_FALSE(isOpenForChange());
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
    dialogs.expectMessage(told(u"لا تقم بإجراء تغييرات في المعلومات قبل الضغط على تعديل"_s,
                               unaskedEn)); // the flag that the delete left up
    pressKey(screen, Qt::Key_End);
    EXPECT_EQ(status(), u"Record: 3");
    click(screen, "cmdDelete");
    EXPECT_TRUE(audits().last().startsWith(u"Daoud|"_s));
}

INSTANTIATE_TEST_SUITE_P(Both, MembersInLanguage, testing::Bool(),
                         [](const auto &test) { return test.param ? "ar" : "en"; });

TEST_F(MembersTest, AFailedSaveTellsWhyAndStaysOpen)
{
    screen.load();
    const auto refused = [this](const char *box, const QString &text, const QString &failure) {
        click(screen, "cmdEdit");
        paste(screen, box, text);
        ScriptedDialogs dialogs;
        dialogs.expectAnyMessage();
        click(screen, "cmdUpdate");
        EXPECT_TRUE(dialogs.shown().back().text.startsWith(failure));
        EXPECT_TRUE(isOpenForChange());
        click(screen, "cmdCancel");
    };
    refused("txtFields_5", u"abc"_s, u"Multiple-step operation generated errors."_s);
    refused("txtFields_5", u"300"_s, u"Multiple-step operation generated errors."_s);
    refused("txtFields_0", QString(10000, u'n'), u"The field is too small to accept"_s);
    EXPECT_TRUE(audits().isEmpty());
    click(screen, "cmdEdit");
    fill(screen, "txtFields_0", u"badr "_s); // the same name to the store
    ScriptedDialogs dialogs;
    dialogs.expectYes(u"Are you sure? "_s);
    dialogs.expectAnyMessage();
    click(screen, "cmdUpdate");
    EXPECT_TRUE(dialogs.shown().back().text.contains(u"duplicate values"_s));
    EXPECT_TRUE(isOpenForChange());
    EXPECT_EQ(audits().size(), 1); // it was written before
    EXPECT_EQ(rows(nameOf).first(), u"Amina|2|1|1|True");

    click(screen, "cmdCancel");
    click(screen, "cmdEdit");
    fill(screen, "txtFields_0", u"O'Amina; drop table members"_s);
    dialogs.expectYes(u"Are you sure? "_s);
    click(screen, "cmdUpdate");
    EXPECT_EQ(rows(nameOf).last(), u"O'Amina; drop table members|2|1|1|True");
    dialogs.expectAnyMessage(); // the name breaks the ledger test's statement
    click(screen, "cmdDelete");
    EXPECT_EQ(audits().size(), 2);
}

TEST_F(MembersTest, AFaultyBoxTurnsRedAndTheCommandWaitsForTheEndOfTheProcess)
{
    screen.load();
    click(screen, "cmdAdd");
    const auto baseOf = [this](const char *box) { return control(screen, box).palette().base().color(); };
    const auto press = [this] { Q_EMIT control<QPushButton>(screen, "cmdUpdate").clicked(); };
    EXPECT_TRUE(processEnded(0, [&] {
        later([&] {
            EXPECT_EQ(baseOf("txtFields_0"), QColor(255, 0, 0));
            EXPECT_EQ(screen.focusWidget(), &control(screen, "txtFields_0"));
            fill(screen, "txtFields_0", u"Lina"_s);
            later([&] { // nested a second time, at the next fault
                EXPECT_EQ(baseOf("txtFields_0"), QColor(255, 255, 255));
                EXPECT_EQ(baseOf("txtFields_1"), QColor(255, 0, 0));
                fill(screen, "txtFields_1", u"2"_s);
                fill(screen, "txtFields_3", u"3"_s);
                fill(screen, "txtFields_4", u"7/5/99"_s);
                fill(screen, "txtFields_5", u"1"_s);
                save();
                EXPECT_FALSE(isOpenForChange());
                endProcess(0);
            });
            press();
        });
        press();
    }));
    EXPECT_TRUE(rows(nameOf).contains(u"Lina|2|3|1|True"_s));
    EXPECT_EQ(audits().size(), 1);
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
    screen.load();
    pressKey(screen, Qt::Key_Escape);
    EXPECT_FALSE(screen.isLoaded());
}

TEST_F(MembersTest, AsksForTheDeceasedUntilANameIsKnown)
{
    const auto stored = u"select desceased from settings"_s;
    const auto ask = [this](ScriptedDialogs &dialogs, const QString &typed, bool yes) {
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
    EXPECT_EQ(rows(stored), QStringList{u"Hamid"_s});
    EXPECT_EQ(engine.deceasedName, u"Hamid");
    ask(dialogs, u"Ha'mid"_s, true);
    dialogs.expectAnyMessage();
    EXPECT_TRUE(processEnded(1, [&] { control<QAction>(screen, "mnuDesceased").trigger(); }));
    EXPECT_EQ(engine.deceasedName, u"Hamid");
}
