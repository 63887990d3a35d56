#include "entry/entry_fixture.h"

TEST_F(RevenueTest, WritesEveryFieldOfTheRows)
{
    prepare(noWife);
    paste(screen, "txtNote", u"  two lines\n of note "_s);
    choose(screen, "ComboGType", u"Other"_s); // the expense of that name comes first
    post();
    click(screen, "Option1_1");
    EXPECT_EQ(screen.focusWidget(), &control(screen, "txtRevenueDetail"));
    fill(screen, "txtRevenueDetail", u" no. 7 "_s);
    choose(screen, "ComboGType", u"Salary"_s);
    post();
    const QString stamp = u"15/03/2004|15/03/2004 10:20:30|TEST|"_s;
    const QString head = u"|True|True|1000|"_s + stamp + u"  two lines\r\n of note |"_s;
    const QString prompt = u"تفاصيل الدفع\r\n"_s;
    EXPECT_EQ(rows(u"select * from general order by id"_s),
              QStringList({u"1|1"_s + head + prompt + u"|نقداً|10|15/03/2004 10:20:30"_s,
                           u"2|2"_s + head + u" no. 7 |شيك|13|15/03/2004 10:20:30"_s}));
    const QString tail = u"|1000|True|"_s + stamp + u"two lines\r\n of note|"_s;
    EXPECT_EQ(rows(u"select * from ledger order by id"_s),
              QStringList({u"1|A son|1|True|666.6666"_s + tail + prompt + u"|نقداً|10"_s,
                           u"2|B girl|1|True|333.3333"_s + tail + prompt + u"|نقداً|10"_s,
                           u"3|A son|2|True|666.6666"_s + tail + u"no. 7|شيك|13"_s,
                           u"4|B girl|2|True|333.3333"_s + tail + u"no. 7|شيك|13"_s}));
}

TEST_F(RevenueTest, RepairsAStoreWithoutItsSettings)
{
    engine.lastCompacted = makeDate(2004, 1, 2);
    execute({u"delete from settings"_s});
    prepare();
    fill(screen, "DTPicker1", u"31/12/9999"_s);
    post();
    fill(screen, "DTPicker1", u"01/01/1601"_s);
    post();
    EXPECT_EQ(rows(u"select sn,lastcompacted,desceased from settings"_s),
              QStringList{u"2|02/01/2004|غير معروف"_s});
    EXPECT_EQ(rows(u"select distinct transactionid,ddate from ledger"_s),
              QStringList({u"1|31/12/9999"_s, u"2|01/01/1601"_s}));
}

TEST_F(RevenueTest, AFailedPostingLeavesNothing)
{
    prepare({{u"O'Hara"_s}, {u"B girl"_s, 3, 2}});
    fail(u"-2147217900 Syntax error"_s); // the name, in the question for its share
    EXPECT_EQ(state(), u"0|0|0");
    execute({u"update settings set sn=2147483647"_s});
    fail(u"6 Overflow"_s);
    EXPECT_EQ(state(), u"2147483647|0|0");
    EXPECT_EQ(textOf(screen, "txtAmount") + ticks(), u"1000xx");
}

TEST_F(RevenueTest, AnUnknownRelationIsToldAndGetsNothing)
{
    prepare({{u"A son"_s}, {u"B cousin"_s, 4}});
    told();
    click(screen, "cmdEntry");
    EXPECT_EQ(told(), QStringList({badRelation, engine.textAreYouSure, badRelation, success}));
    EXPECT_EQ(rows(u"select transactionid,name,amount from ledger"_s),
              QStringList({u"1|A son|1000"_s, u"1|B cousin|0"_s}));
}

TEST_F(RevenueTest, PostsWhatTheBoxesShowOrNothing)
{
    prepare();
    postHostileTexts();
}

TEST_F(RevenueTest, AFailureBeforeTheTransactionEndsTheRun)
{
    prepare();
    fill(screen, "txtAmount", u"20000000000"_s); // an eighth leaves the 32-bit range
    EXPECT_TRUE(processEnded(1, [&] { click(screen, "cmdEntry"); }));
    engine.dbConnection->close();
    EXPECT_TRUE(processEnded(1, [&] { click(screen, "cmdEntry"); }));
    EXPECT_EQ(
        told(),
        QStringList({u"Run-time error '-2147168242 (8004d00e)':\n\nNo transaction is active."_s,
                     u"Run-time error '3704':\n\nOperation is not allowed when the object is closed."_s}));
    EXPECT_EQ(state(), u"0|0|0");
}

TEST_P(Languages, TellsTheFirstFaultOfAnEntryAndWritesNothing)
{
    const QString badAmount = u"لا يمكن أن يكون المبلغ خاليا أو غير رقمي "_s;
    fillBoxesAsTold(badAmount);
    const auto refused = [this](const QString &message) {
        click(screen, "cmdEntry");
        EXPECT_EQ(told(), QStringList{message});
    };
    refused(selectOne);
    click(screen, "cmdAll");
    click(screen, "Check1_0");
    refused(selectAll);
    fill(screen, "txtAmount", u"5 Help"_s);
    refused(badAmount);
    fill(screen, "txtAmount", u"1000"_s);
    click(screen, "Check1_0");
    refuse();
}

INSTANTIATE_TEST_SUITE_P(Both, Languages, testing::Bool(), languageName);
