#include "entry/revenue_fixture.h"

#include <QtWidgets/QPushButton>
#include <sys/resource.h>
#include <sys/wait.h>

#include <csignal>
#include <unistd.h>

namespace
{

class PostingTest : public RevenueTest
{
protected:
    void prepare(const Family &family = oneWife)
    {
        open(family);
        click(screen, "cmdAll");
        fill(screen, "txtAmount", u"1000"_s);
    }

    /// A posting that ends in the failure path.
    void fail(
        const QString &failure, const std::function<void()> &meanwhile = [] {})
    {
        ScriptedDialogs dialogs;
        dialogs.expectYes(engine.textAreYouSure).meanwhile(meanwhile);
        dialogs.expectMessage(aborted);
        dialogs.expectAnyMessage();
        click(screen, "cmdEntry");
        EXPECT_TRUE(dialogs.shown().back().text.startsWith(failure))
            << dialogs.shown().back().text.toStdString();
    }

    /// Nothing was written, the screen keeps its input, and a posting behind it gets the first number.
    void postBehind()
    {
        EXPECT_EQ(state(), u"0/0/0");
        EXPECT_EQ(textOf(screen, "txtAmount") + ticks(), u"1000xxxx");
        fill(screen, "txtNote", u"rent"_s);
        post();
        EXPECT_EQ(state(), u"1/1/4");
    }
};

} // namespace

TEST_F(PostingTest, WritesEveryFieldOfTheRows)
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
    const QString stamp = u"15/03/2004 10:20:30"_s;
    const QString head = u"|True|True|1000|15/03/2004|"_s + stamp + u"|TEST|"_s;
    const QString note = u"  two lines\r\n of note "_s;
    const QString trimmed = u"two lines\r\n of note"_s;
    const QString prompt = u"تفاصيل الدفع\r\n"_s;
    EXPECT_EQ(rows(u"select * from general order by id"_s),
              QStringList({u"1|1"_s + head + note + u'|' + prompt + u"|نقداً|10|"_s + stamp,
                           u"2|2"_s + head + note + u"| no. 7 |شيك|13|"_s + stamp}));
    const QString tail = u"|1000|True|15/03/2004|"_s + stamp + u"|TEST|"_s + trimmed + u'|';
    EXPECT_EQ(rows(u"select * from ledger order by id"_s),
              QStringList({u"1|A son|1|True|666.6666"_s + tail + prompt + u"|نقداً|10"_s,
                           u"2|B girl|1|True|333.3333"_s + tail + prompt + u"|نقداً|10"_s,
                           u"3|A son|2|True|666.6666"_s + tail + u"no. 7|شيك|13"_s,
                           u"4|B girl|2|True|333.3333"_s + tail + u"no. 7|شيك|13"_s}));
}

TEST_F(PostingTest, RepairsAStoreWithoutItsSettings)
{
    engine.lastCompacted = makeDate(2004, 1, 2);
    execute({u"delete from settings"_s});
    prepare();
    fill(screen, "txtNote", u"\u202Erent; drop table general"_s);
    post();
    EXPECT_EQ(rows(u"select sn,lastcompacted,desceased from settings"_s),
              QStringList{u"1|02/01/2004|غير معروف"_s});
    EXPECT_EQ(state(), u"1/1/4");
}

TEST_F(PostingTest, AFailedPostingLeavesNothing)
{
    prepare();
    const QString tooLong = u"-2147217833 The field is too small to accept the amount of data"_s;
    for (const auto &[note, failure] : std::initializer_list<std::pair<QString, QString>>{
             {u"the heirs' rent"_s, u"-2147217900 "_s},
             {u"x','y','z',10,'1/1/2004'); delete from general"_s, u"-2147217900 "_s},
             {QString(101, u'n'), tooLong},
             {QString(10000, QChar(0x0646)), tooLong}}) {
        paste(screen, "txtNote", note);
        fail(failure);
    }
    postBehind();
}

TEST_F(PostingTest, ADiskThatTakesNothingMoreLeavesNothing)
{
    prepare();
    signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    fail(u"-2147467259 "_s, [&] {
        const rlimit full{1024, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
    });
    setrlimit(RLIMIT_FSIZE, &before);
    postBehind();
}

TEST_F(PostingTest, AProcessKilledInThePostingLeavesNothing)
{
    {
        ScriptedDialogs dialogs;
        dialogs.expectMessage(badRelation);
        prepare({{u"A son"_s}, {u"B cousin"_s, 4}});
    }
    const pid_t child = fork();
    if (child == 0) {
        ScriptedDialogs dialogs;
        dialogs.expectMessage(badRelation);
        dialogs.expectYes(engine.textAreYouSure);
        // The first ledger row is written; the second is being asked for.
        dialogs.expectMessage(badRelation).meanwhile([] {
            if (engine.dbConnection->inTransaction())
                raise(SIGKILL);
        });
        click(screen, "cmdEntry");
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    EXPECT_EQ(state(), u"0/0/0");

    ScriptedDialogs dialogs;
    dialogs.expectMessage(badRelation);
    dialogs.expectYes(engine.textAreYouSure);
    dialogs.expectMessage(badRelation);
    dialogs.expectMessage(success);
    click(screen, "cmdEntry");
    EXPECT_EQ(rows(u"select transactionid,name,amount from ledger"_s),
              QStringList({u"1|A son|1000"_s, u"1|B cousin|0"_s}));
}

TEST_F(PostingTest, AFailureBeforeTheTransactionEndsTheRun)
{
    prepare();
    fill(screen, "txtAmount", u"20000000000"_s); // an eighth leaves the 32-bit range
    ScriptedDialogs dialogs;
    dialogs.expectUntrapped(u"-2147168242 (8004d00e)"_s, u"No transaction is active."_s);
    EXPECT_TRUE(processEnded(1, [&] { Q_EMIT control<QPushButton>(screen, "cmdEntry").clicked(); }));
    EXPECT_EQ(state(), u"0/0/0");
}

TEST_P(Languages, TellsTheFirstFaultOfAnEntryAndWritesNothing)
{
    open(oneWife);
    click(screen, "Option1_1");
    fill(screen, "txtNote", {});
    fill(screen, "txtRevenueDetail", {});
    const auto refused = [this](const QString &message, const char *box = nullptr) {
        ScriptedDialogs dialogs;
        dialogs.expectMessage(message);
        click(screen, "cmdEntry");
        EXPECT_TRUE(!box || screen.focusWidget() == &control(screen, box)) << box;
    };
    for (const QString &amount : {u""_s, u"5 Help"_s, QString(10000, u'9')}) {
        paste(screen, "txtAmount", amount);
        refused(u"لا يمكن أن يكون المبلغ خاليا أو غير رقمي "_s, "txtAmount");
    }
    fill(screen, "txtAmount", u"1000"_s);
    refused(u"يجب صياغة شرح لهذا الإدخال "_s, "txtNote");
    fill(screen, "txtNote", u"rent"_s);
    refused(u"يجب إدخال معلومات الشيك"_s, "txtRevenueDetail");
    fill(screen, "txtRevenueDetail", u"no. 7"_s);
    refused(told(selectOneAr, selectOneEn));
    click(screen, "cmdAll");
    click(screen, "Check1_0");
    refused(told(allHeirsAr, allHeirsEn));
    click(screen, "Check1_0");
    ScriptedDialogs dialogs;
    dialogs.expectNo(engine.textAreYouSure);
    click(screen, "cmdEntry");
    EXPECT_EQ(state(), u"0/0/0");
}

INSTANTIATE_TEST_SUITE_P(Both, Languages, testing::Bool(), languageName);
