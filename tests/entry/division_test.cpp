#include "entry/entry_fixture.h"

TEST_F(RevenueTest, ShowsAndPostsTheIslamicShares)
{
    const struct {
        Family family;
        QString amount, shown, posted, total; ///< captions of LBLShare, ledger.amount, general.amount
    } cases[] = {
        {oneWife, u"1000"_s, u"125.00 350.00 350.00 175.00"_s, u"125 350 350 175"_s, u"1000"_s},
        {twoWives, u"1001.50"_s, u"62.00 62.00 584.21 292.10"_s, u"62 62 584.2084 292.1042"_s, u"1001.5"_s},
        {oneWife, u"1004"_s, u"126.00 351.40 351.40 175.70"_s, u"126 351.4 351.4 175.7"_s, u"1004"_s},
        {oneWife, u"996"_s, u"124.00 348.60 348.60 174.30"_s, u"124 348.6 348.6 174.3"_s, u"996"_s},
        {noWife, u"100"_s, u"66.67 33.33"_s, u"66.6666 33.3333"_s, u"100"_s},
        {oneWife, u"1,000"_s, u"0.00 0.35 0.35 0.18"_s, u"0 0.35 0.35 0.175"_s, u"1000"_s},
        {oneWife, u"0"_s, u"0.00 0.00 0.00 0.00"_s, u"0 0 0 0"_s, u"0"_s},
        {oneWife, u"-8"_s, u"-1.00 -2.80 -2.80 -1.40"_s, u"-1 -2.8 -2.8 -1.4"_s, u"-8"_s},
        {noWife, u"2.345"_s, u"1.56 0.78"_s, u"1.5634 0.7817"_s, u"2.35"_s},
        {noWife, u"(12)"_s, u"0.00 0.00"_s, u"0 0"_s, u"-12"_s},
        {noWife, u"900000000000000.01"_s, u"600,000,000,000,000.00 300,000,000,000,000.00"_s,
         u"600000000000000 300000000000000"_s, u"900000000000000.01"_s},
        {noWife, u"\u0663\u06F0"_s, u"20.00 10.00"_s, u"20 10"_s, u"30"_s}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.amount.toStdString());
        postAlone(c.family, c.amount, c.shown.split(u' '));
        EXPECT_EQ(rows(u"select amount from ledger order by id"_s).join(u' '), c.posted);
        EXPECT_EQ(rows(u"select distinct totalamount,(select amount from general) as g from ledger"_s),
                  QStringList{c.total + u'|' + c.total});
    }
}

TEST_P(Languages, EqualModeShowsEqualSharesAndPostsIslamicOnes)
{
    open(oneWife);
    chooseMenu(screen, "mnuSpecial");
    EXPECT_EQ(told().first(),
              either(u"المبالغ المدخله الآن ستقسم بالتساوي"_s, u"The amount will be divided equally"_s));
    click(screen, "Check1_3");
    fill(screen, "txtAmount", u"1000\n"_s);
    EXPECT_EQ(captions(), QStringList({u"0.00"_s, u"0.00"_s, u"0.00"_s, u"1,000.00"_s}));
    post();
    EXPECT_EQ(rows(u"select name,amount,totalamount from ledger"_s), QStringList{u"D girl|175|1000"_s});

    // The posting put the Islamic rule back in force behind the menu's back.
    EXPECT_TRUE(control<QAction>(screen, "mnuSpecial").isChecked());
    click(screen, "cmdEntry");
    EXPECT_EQ(told(), QStringList{selectAll});
    chooseMenu(screen, "mnuInheritance");
    EXPECT_EQ(told().first(), either(u"المبالغ المدخله الآن ستقسم حسب الطريقه الإسلاميه"_s,
                                     u"The amount will be divided islamically"_s));
    EXPECT_FALSE(control<QAction>(screen, "mnuSpecial").isChecked());
}

TEST_P(Languages, DividesOnEnterWithoutATestAndOnTheButtonsWithOne)
{
    open(oneWife);
    const auto divide = [this] {
        click(screen, "cmdDivide");
        click(screen, "cmdReDivide");
        return told();
    };
    fill(screen, "txtAmount", u"800\n"_s); // nobody ticked: no message, captions stay
    EXPECT_EQ(captions(), QStringList(4, u"0.00"_s));
    EXPECT_EQ(divide(), QStringList(2, selectOne));
    click(screen, "Check1_1");
    EXPECT_EQ(divide(), QStringList());
    EXPECT_EQ(captions(), QStringList({u""_s, u"280.00"_s, u""_s, u""_s}));
    fill(screen, "txtAmount", u"abc\n"_s); // letters read as 0
    EXPECT_EQ(captions().at(1), u"0.00");
    EXPECT_EQ(divide(),
              QStringList(2, u"Please enter the amount then Enter  فضلاً أدخل المبلغ ثم إضغط إدخال"_s));
    EXPECT_EQ(screen.focusWidget(), &control(screen, "txtAmount"));
    click(screen, "cmdClear");
    EXPECT_EQ(ticks(), u"----");
    EXPECT_EQ(captions(), QStringList(4, u""_s));
}

TEST_F(RevenueTest, TicksStayAtTheirIndexWhenTheListChangesItsOrder)
{
    open({{u"Zayd"_s, 2, 1, 7}, {u"Amal"_s, 3, 2, 3}});
    EXPECT_EQ(captions(u"LBLName"_s), QStringList({u"Amal"_s, u"Zayd"_s}));
    EXPECT_GT(control(screen, "cmdGroup_0").x(), control(screen, "cmdGroup_1").x());
    click(screen, "Check1_1");
    click(screen, "cmdGroup_0"); // number 3
    EXPECT_EQ(ticks(), u"x-");
    addMember({u"Badr"_s});
    fill(screen, "txtAmount", u"50\n"_s);
    EXPECT_EQ(captions(u"LBLName"_s), QStringList({u"Zayd"_s, u"Amal"_s, u"Badr"_s}));
    EXPECT_EQ(ticks(), u"x--");
    EXPECT_EQ(captions(), QStringList({u"20.00"_s, u"0.00"_s, u""_s}));
    EXPECT_EQ(textOf(screen, "cmdGroup_0"), u"1");
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
    EXPECT_EQ(control(screen, "Check1_0").x(), control(screen, "Check1_3").x());
    screen.unload();
}

TEST_F(RevenueTest, AFamilyWithoutAChildEndsTheRun)
{
    EXPECT_TRUE(processEnded(1, [&] { open({{u"A wife"_s, 1, 2}, {u"B wife"_s, 1, 2}}); }));
    EXPECT_EQ(told(), QStringList{u"Run-time error '11':\n\nDivision by zero"_s});
}
