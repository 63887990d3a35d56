#include "entry/entry_fixture.h"
#include "platform/database/engine.h"
#include "platform/database/session.h"

namespace
{

const auto amountFirst = u"Please enter the amount first\r\nلا يمكن أن يكون المبلغ خاليا أو غير رقمي "_s;
const auto askAmount = u"Please enter the amount then Enter  فضلاً أدخل المبلغ ثم إضغط إدخال"_s;
const auto nobodyToDivide = u"لا بد من إختيار على الأقل فرد واحد لإتمام التجزئه"_s;

class ExpenseTest : public EntryTest<frmExpense>
{
protected:
    ExpenseTest() : EntryTest({"Text1", "Text2", "Text3"}) {}
};

/// So many members, all of one group.
Family familyOf(int size)
{
    Family family;
    for (int i = 0; i < size; ++i)
        family.push_back({QString(QChar(u'A' + i)) + u" member"_s});
    return family;
}

} // namespace

TEST_F(ExpenseTest, ShowsWholeSharesAndPostsEqualOnes)
{
    const struct {
        int ticked;
        QString amount, shown, posted; ///< LBLShare; ledger.amount and totalamount in ten-thousandths
    } cases[] = {{3, u"100"_s, u"33.00"_s, u"333333|1000000"_s},
                 {4, u"10"_s, u"2.00"_s, u"25000|100000"_s},
                 {2, u"7"_s, u"4.00"_s, u"35000|70000"_s},
                 {8, u"0.25"_s, u"0.00"_s, u"312|2500"_s}, // 312.5 and 937.5 go to the even number
                 {8, u"0.75"_s, u"0.00"_s, u"938|7500"_s},
                 {2, u"1,000"_s, u"500.00"_s, u"5000000|10000000"_s},
                 {3, u"(10)"_s, u"-3.00"_s, u"-33333|-100000"_s},
                 {1, u"2.345"_s, u"2.00"_s, u"23500|23500"_s},
                 {4, u"0"_s, u"0.00"_s, u"0|0"_s},
                 {2, u"900000000000000.01"_s, u"450,000,000,000,000.00"_s,
                  u"4500000000000000000|9000000000000000100"_s}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.amount.toStdString());
        postAlone(familyOf(c.ticked + 1), c.amount, QStringList(u"0.00"_s) + QStringList(c.ticked, c.shown),
                  1);
        EXPECT_EQ(shellRows(u"select amount, totalamount from ledger"_s), QStringList(c.ticked, c.posted));
        EXPECT_EQ(shellRows(u"select amount from general"_s), QStringList(c.posted.section(u'|', 1)));
    }
}

TEST_F(ExpenseTest, WritesEveryFieldOfTheRows)
{
    prepare({{u"O'Hara"_s}, {u"B girl"_s, 3, 2}}); // an apostrophe does no harm on this road
    post();
    paste(screen, "Text2", u"  the owner's\n note "_s);
    choose(screen, "ComboGType", u"Travel"_s);
    click(screen, "Option1_1");
    fill(screen, "Text3", u" no. 7 "_s);
    post();
    click(screen, "Option1_2");
    fill(screen, "Text3", {});
    execute({u"delete from details where detailen='Travel'"_s});
    click(screen, "Check1_1");
    post();
    const QString day = u"|2004-03-15|2004-03-15 10:20:30|TEST|-1"_s;
    const QString note = u"شرح العمليه\r\n"_s, detail = u"تفاصيل الدفع\r\n"_s;
    const QString lines = u"the owner's\r\n note"_s;
    const QString updated = u"|2004-03-15 10:20:30"_s;
    const auto joined = [](const QString &sql) { return shellRows(sql).join(u'\n'); };
    EXPECT_EQ(
        joined(
            u"select transactionid, amount, ddate, enteredon, enteredby, valid, creditordebit, "
            "transactiondetail, paymentdetail, paymentmethod, gtype, lastupdate from general order by id"_s),
        QStringList({u"1|10000000"_s + day + u"|0|"_s + note + u'|' + detail + u"|نقداً|1"_s + updated,
                     u"2|10000000"_s + day + u"|0|  "_s + lines + u" | no. 7 |شيك|4"_s + updated,
                     u"3|10000000"_s + day + u"|0|  "_s + lines + u" ||بطاقة إئتمان|10"_s + updated})
            .join(u'\n'));
    EXPECT_EQ(joined(u"select name, transactionid, creditordebit, amount, gtype from ledger order by id"_s),
              u"B girl|1|0|5000000|1\nO'Hara|1|0|5000000|1\nB girl|2|0|5000000|4\nO'Hara|2|0|5000000|4\n"
              "B girl|3|0|10000000|10"_s);
}

TEST_F(ExpenseTest, LoadsInBothLanguages)
{
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        open(arabic ? Family()
                    : Family{{u"Zayd"_s, 1, 2, 7}, {u"Amal"_s, 1, 2, 3}}); // no child: no matter here
        EXPECT_EQ(captions(u"LBLName"_s), QStringList({u"Amal"_s, u"Zayd"_s}));
        EXPECT_EQ(captions() + QStringList(ticks()), QStringList({u"0.00"_s, u"0.00"_s, u"--"_s}));
        EXPECT_GT(control(screen, "Command4_0").x(), control(screen, "Command4_1").x());
        const auto &kinds = control<QComboBox>(screen, "ComboGType");
        EXPECT_EQ(kinds.count(), 10);
        EXPECT_EQ(kinds.currentText(), arabic ? u"تلفون"_s : u"Phone"_s);
        EXPECT_EQ(control(screen, "Text1").layoutDirection(), arabic ? Qt::RightToLeft : Qt::LeftToRight);
        EXPECT_EQ(textOf(screen, "DTPicker1"), u"15/03/2004"_s);
        for (const auto &[option, enabled] : {std::pair("Option1_1", true), {"Option1_0", false}}) {
            click(screen, option);
            EXPECT_EQ(isEnabled(screen, "Text3"), enabled) << option;
        }
        chooseMenu(screen, "mnuExit");
        EXPECT_FALSE(screen.isLoaded());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    execute({u"delete from members"_s});
    screen.load();
    EXPECT_FALSE(isShown(screen, "Command4_0"));
}

TEST_F(ExpenseTest, DividesAmongTheTickedOfTheListAsItWasLoaded)
{
    open({{u"Zayd"_s, 2, 1, 7}, {u"Amal"_s, 3, 2, 3}, {u"Badr"_s, 2, 1, 3}});
    addMember({u"Adam"_s, 2, 1, 3});
    click(screen, "Check1_2");
    fill(screen, "Text1", u"40\n"_s);
    EXPECT_EQ(captions(), QStringList({u"0.00"_s, u"0.00"_s, u"40.00"_s}));
    click(screen, "Command4_0"); // number 3
    EXPECT_EQ(ticks(), u"xx-");
    click(screen, "cmdDivide"); // the old share stays
    EXPECT_EQ(captions(), QStringList({u"20.00"_s, u"20.00"_s, u"40.00"_s}));
    click(screen, "cmdReDivide");
    EXPECT_EQ(captions(), QStringList({u"20.00"_s, u"20.00"_s, u""_s}));
    click(screen, "cmdClear");
    EXPECT_EQ(captions(), QStringList(3, u""_s));
    EXPECT_EQ(ticks(), u"---");
    click(screen, "cmdDivide");
    click(screen, "cmdReDivide");
    EXPECT_EQ(told(), QStringList(2, nobodyToDivide));
    fill(screen, "Text1", u"abc\n"_s);
    click(screen, "cmdDivide");
    click(screen, "cmdReDivide");
    EXPECT_EQ(told(), QStringList({amountFirst, askAmount, askAmount}));
    EXPECT_EQ(screen.focusWidget(), &control(screen, "Text1"));
}

TEST_F(ExpenseTest, TellsTheFirstFaultOfAnEntryAndWritesNothing)
{
    fillBoxesAsTold(amountFirst);
    click(screen, "cmdEntry");
    EXPECT_EQ(told(), QStringList({nobodyToDivide, nobodyToDivide,
                                   u"لا بد من إختيار على الأقل فرد واحد لإتمام الإدخال"_s}));
    click(screen, "Check1_0");
    refuse();
    EXPECT_EQ(captions().first(), u"1,000.00");
}

TEST_F(ExpenseTest, AFailedPostingLeavesNothing)
{
    execute({u"insert into details (detailar,detailen,credit) values ('x','Owner''s',false)"_s});
    prepare();
    fill(screen, "Text2", QString(101, u'n'));
    fail(u"-2147217887 "_s);
    fill(screen, "Text2", QString(100, u'n'));
    choose(screen, "ComboGType", u"Owner's"_s); // in the question for its id
    fail(u"-2147217900 Syntax error"_s);
    EXPECT_EQ(state(), u"0|0|0");
    choose(screen, "ComboGType", u"Phone"_s);
    execute({u"update settings set sn=2147483647"_s});
    fail(u"-2147217887 "_s);
    EXPECT_EQ(state(), u"2147483647|0|0");
    execute({u"drop table ledger"_s}); // the row of general is written by then
    execute({u"update settings set sn=5"_s});
    fail(u"-2147217865 "_s);
    EXPECT_EQ(rows(u"select sn,(select count(*) from general) as g from settings"_s), QStringList(u"5|0"_s));
    execute({u"delete from settings"_s}); // not repaired, unlike a revenue's
    fail(u"3021 "_s);
    EXPECT_EQ(rows(u"select sn from settings"_s), QStringList());
    const ConnectionPtr other = Connection::create();
    other->open(engine.connectionString);
    other->session().engine().run("begin exclusive");
    engine.dbConnection->session().engine().run("pragma busy_timeout = 1");
    fail(u"-2147467259 database is locked"_s);
    other->close();
    engine.dbConnection->close(); // the failure path is armed once the transaction has begun
    EXPECT_TRUE(processEnded(1, [&] { click(screen, "cmdEntry"); }));
    EXPECT_EQ(told().last(),
              u"Run-time error '3704':\n\nOperation is not allowed when the object is closed.");
}

TEST_F(ExpenseTest, PostsWhatTheBoxesShowOrNothing)
{
    prepare();
    postHostileTexts();
}
