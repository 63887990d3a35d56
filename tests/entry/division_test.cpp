#include "entry/revenue_fixture.h"

namespace
{

const auto shares = u"LBLShare"_s;

struct Division {
    const char *what;
    const Family *family;
    QString amount;
    QString shown;  ///< captions of LBLShare
    QString posted; ///< ledger.amount
    QString total;  ///< general.amount
};

class Divisions : public RevenueTest, public testing::WithParamInterface<Division>
{
};

} // namespace

TEST_P(Divisions, ShowsAndPostsTheIslamicShares)
{
    const Division &c = GetParam();
    open(*c.family);
    EXPECT_EQ(captions(shares), QStringList(qsizetype(c.family->size()), u"0.00"_s));
    click(screen, "cmdAll");
    fill(screen, "txtAmount", c.amount + u'\n');
    EXPECT_EQ(captions(shares).join(u' '), c.shown);
    post();
    EXPECT_EQ(rows(u"select amount from ledger order by id"_s).join(u' '), c.posted);
    EXPECT_EQ(rows(u"select distinct totalamount from ledger"_s).join(u' '), c.total);
    EXPECT_EQ(rows(u"select amount from general"_s).join(u' '), c.total);
}

INSTANTIATE_TEST_SUITE_P(
    Worked, Divisions,
    testing::Values(Division{"even", &oneWife, u"1000"_s, u"125.00 350.00 350.00 175.00"_s,
                             u"125 350 350 175"_s, u"1000"_s},
                    Division{"twoWives", &twoWives, u"1001.50"_s, u"62.00 62.00 584.21 292.10"_s,
                             u"62 62 584.2084 292.1042"_s, u"1001.5"_s},
                    Division{"halfUp", &oneWife, u"1004"_s, u"126.00 351.40 351.40 175.70"_s,
                             u"126 351.4 351.4 175.7"_s, u"1004"_s},
                    Division{"halfDown", &oneWife, u"996"_s, u"124.00 348.60 348.60 174.30"_s,
                             u"124 348.6 348.6 174.3"_s, u"996"_s},
                    Division{"noWife", &noWife, u"100"_s, u"66.67 33.33"_s, u"66.6666 33.3333"_s, u"100"_s},
                    Division{"separator", &oneWife, u"1,000"_s, u"0.00 0.35 0.35 0.18"_s,
                             u"0 0.35 0.35 0.175"_s, u"1000"_s},
                    Division{"nothing", &oneWife, u"0"_s, u"0.00 0.00 0.00 0.00"_s, u"0 0 0 0"_s, u"0"_s},
                    Division{"negative", &oneWife, u"-8"_s, u"-1.00 -2.80 -2.80 -1.40"_s,
                             u"-1 -2.8 -2.8 -1.4"_s, u"-8"_s},
                    Division{"halfAway", &oneWife, u"2.345"_s, u"0.00 0.82 0.82 0.41"_s,
                             u"0 0.8208 0.8208 0.4104"_s, u"2.35"_s},
                    Division{"arabicDigits", &oneWife, u"\u0661\u0660\u0660\u0660"_s,
                             u"125.00 350.00 350.00 175.00"_s, u"125 350 350 175"_s, u"1000"_s}),
    [](const auto &test) { return test.param.what; });

TEST_P(Languages, EqualModeShowsEqualSharesAndPostsIslamicOnes)
{
    open(oneWife);
    ScriptedDialogs dialogs;
    dialogs.expectMessage(
        told(u"المبالغ المدخله الآن ستقسم بالتساوي"_s, u"The amount will be divided equally"_s));
    chooseMenu(screen, "mnuSpecial");
    click(screen, "Check1_3");
    fill(screen, "txtAmount", u"1000\n"_s);
    EXPECT_EQ(captions(shares), QStringList({u"0.00"_s, u"0.00"_s, u"0.00"_s, u"1,000.00"_s}));
    dialogs.expectYes(engine.textAreYouSure);
    dialogs.expectMessage(success);
    click(screen, "cmdEntry");
    EXPECT_EQ(rows(u"select name,amount,totalamount from ledger"_s), QStringList{u"D girl|175|1000"_s});
    EXPECT_EQ(rows(u"select amount from general"_s), QStringList{u"1000"_s});

    // The posting put the Islamic rule back in force behind the menu's back.
    EXPECT_TRUE(control<QAction>(screen, "mnuSpecial").isChecked());
    EXPECT_FALSE(control<QAction>(screen, "mnuInheritance").isChecked());
    dialogs.expectMessage(told(allHeirsAr, allHeirsEn));
    click(screen, "cmdEntry");
    dialogs.expectMessage(told(u"المبالغ المدخله الآن ستقسم حسب الطريقه الإسلاميه"_s,
                               u"The amount will be divided islamically"_s));
    chooseMenu(screen, "mnuInheritance");
    EXPECT_FALSE(control<QAction>(screen, "mnuSpecial").isChecked());
}

TEST_P(Languages, DividesOnEnterWithoutATestAndOnTheButtonsWithOne)
{
    open(oneWife);
    ScriptedDialogs dialogs;
    fill(screen, "txtAmount", u"800\n"_s); // nobody ticked: no message, captions stay
    EXPECT_EQ(captions(shares), QStringList(4, u"0.00"_s));
    for (const char *button : {"cmdDivide", "cmdReDivide"}) {
        dialogs.expectMessage(told(selectOneAr, selectOneEn));
        click(screen, button);
    }
    click(screen, "Check1_1");
    click(screen, "cmdDivide");
    EXPECT_EQ(captions(shares), QStringList({u""_s, u"280.00"_s, u""_s, u""_s}));
    fill(screen, "txtAmount", u"abc\n"_s); // letters read as 0
    EXPECT_EQ(captions(shares), QStringList({u""_s, u"0.00"_s, u""_s, u""_s}));
    for (const char *button : {"cmdDivide", "cmdReDivide"}) {
        dialogs.expectMessage(u"Please enter the amount then Enter  فضلاً أدخل المبلغ ثم إضغط إدخال"_s);
        click(screen, button);
        EXPECT_EQ(screen.focusWidget(), &control(screen, "txtAmount"));
    }
    EXPECT_EQ(captions(shares).at(1), u"0.00");
    click(screen, "cmdClear");
    EXPECT_EQ(ticks(), u"----");
    EXPECT_EQ(captions(shares), QStringList(4, u""_s));
}

TEST_F(RevenueTest, TicksStayAtTheirIndexWhenTheListChangesItsOrder)
{
    open({{u"Zayd"_s}, {u"Amal"_s, 3, 2}});
    EXPECT_EQ(captions(u"LBLName"_s), QStringList({u"Amal"_s, u"Zayd"_s}));
    click(screen, "Check1_0");
    addMember({u"Badr"_s});
    fill(screen, "txtAmount", u"50\n"_s);
    EXPECT_EQ(captions(u"LBLName"_s), QStringList({u"Zayd"_s, u"Amal"_s, u"Badr"_s}));
    EXPECT_EQ(ticks(), u"x--");
    EXPECT_EQ(captions(shares), QStringList({u"20.00"_s, u"0.00"_s, u""_s}));
}

TEST_F(RevenueTest, AGroupButtonTicksItsMembersAlone)
{
    open(oneWife);
    EXPECT_EQ(textOf(screen, "cmdGroup_0"), u"1");
    EXPECT_EQ(textOf(screen, "cmdGroup_1"), u"2");
    EXPECT_GT(control(screen, "cmdGroup_0").x(), control(screen, "cmdGroup_1").x());
    click(screen, "Check1_0");
    click(screen, "cmdGroup_1");
    EXPECT_EQ(ticks(), u"-xx-");
}

TEST_F(RevenueTest, ManyMembersWithLongNamesStayInReach)
{
    Family many;
    for (int i = 0; i < 100; ++i)
        many.push_back({QString::number(1000 + i) + QString(46, u'W'), 2, 1, i});
    open(many);
    screen.showModeless();
    EXPECT_LE(screen.frameGeometry().height(), screen.screen()->availableGeometry().height());
    click(screen, "cmdAll");
    EXPECT_EQ(ticks(), QString(100, u'x'));
    EXPECT_EQ(textOf(screen, "LBLName_99"), many[99].name);
    EXPECT_GT(control(screen, "Check1_0").x(), control(screen, "Check1_2").x());
    EXPECT_EQ(control(screen, "Check1_0").x(), control(screen, "Check1_3").x());
    screen.unload();
}

TEST_F(RevenueTest, AFamilyWithoutAChildEndsTheRun)
{
    ScriptedDialogs dialogs;
    dialogs.expectUntrapped(u"11"_s, u"Division by zero"_s);
    EXPECT_TRUE(processEnded(1, [&] { open({{u"A wife"_s, 1, 2}, {u"B wife"_s, 1, 2}}); }));
}
