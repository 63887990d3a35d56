#include "platform/runtime/runtime_error.h"
#include "platform/ui/application.h"
#include "shell/frmMain.h"
#include "tutorial_fixture.h"

#include <QtCore/QTimer>
#include <QtWidgets/QLineEdit>

#include <algorithm>
#include <cmath>

namespace
{

class GeneratorTest : public TutorialFixture
{
protected:
    GeneratorTest()
    {
        setClock([] { return makeDate(2004, 3, 15, 13, 5, 9); });
        renewTestStore();
    }
    static void renewTestStore()
    {
        QFile::remove(engine.testStorePath);
        QFile::copy(engine.storeFilePath, engine.testStorePath);
    }
    static void setFamily(const std::vector<int> &relations)
    {
        execute({u"delete from members"_s});
        for (std::size_t i = 0; i < relations.size(); ++i)
            addMember({.name = u"m%1"_s.arg(int(i)), .relation = relations[i]});
    }
};

TEST(GeneratorDraws, ReachBothEndsOfTheirRanges)
{
    const auto drawn = [](double value) {
        const Invention got = drawInvention([value] { return value; }, 9, generatorWords(false));
        return QStringList{shortDate(got.date), QString::number(got.amount), QString::number(got.kind),
                           got.payment}
            .join(u'|');
    };
    EXPECT_EQ(drawn(0), u"01/02/1995|200|1|Check"_s);
    EXPECT_EQ(drawn(0.5), u"06/12/2001|100200|5|Cash"_s);
    EXPECT_EQ(drawn(std::nextafter(1.0, 0.0)), u"09/10/2008|200199|8|Credit Card"_s);
    std::vector<double> values(100'000);
    std::ranges::generate(values, clockSeededSource());
    const auto [low, high] = std::ranges::minmax(values);
    EXPECT_TRUE(low >= 0 && low < 0.001 && high > 0.999 && high < 1) << low << ' ' << high;
}

TEST_F(GeneratorTest, CountsTheHeadsUnevenlyAndDividesByThem)
{
    const struct {
        std::vector<int> relations;
        qint32 amount;
        std::array<int, 3> heads;
        QStringList shares; // of a wife, a son, a daughter
    } cases[] = {
        {{3, 1, 2, 2}, 1000, {2, 2, 0}, {u"62.5"_s, u"437.5"_s, u"218.75"_s}},
        {{1, 2, 2},
         210,
         {2, 1, 0},
         {u"13.13"_s, u"183.75"_s, u"91.88"_s}}, // 13.125 and 91.875: away from zero
        {{2, 3, 3, 3}, 1000, {0, 2, 2}, {u"!11"_s, u"291.67"_s, u"145.83"_s}},
        {{1, 3}, 200199, {2, 0, 0}, {u"12512.44"_s, u"!11"_s, u"!11"_s}},
    };
    for (const auto &c : cases) {
        setFamily(c.relations);
        const GeneratorFamily family = readGeneratorFamily();
        EXPECT_EQ(family.relationCount, c.heads);
        QStringList shares;
        for (const int relation : {1, 2, 3}) {
            try {
                shares += generatedRevenueShare(c.amount, relation, family)->toText();
            } catch (const RuntimeError &failure) {
                shares += u'!' + QString::number(failure.number());
            }
        }
        EXPECT_EQ(shares, c.shares);
        EXPECT_FALSE(generatedRevenueShare(c.amount, 4, family));
    }
    EXPECT_EQ(generatedExpenseShare(201, 8).toText(), u"25.13"_s);
    EXPECT_EQ(generatedExpenseShare(200199, 1).toText(), u"200199"_s);
}

TEST_F(GeneratorTest, WritesTwoThousandRevenuesAndExpensesInEachLanguage)
{
    // What a general row `g` of a run must be, and a ledger row `l` beside it.
    const QString general = u"g.amount between 2000000 and 2001990000 and g.amount % 10000 = 0 and g.ddate "
                            u"between '1995-02-01' and "
                            "'2008-10-09' and g.enteredon = '2004-03-15' and g.lastupdate = '2004-03-15' and "
                            "g.enteredby||'' = 'SYSTEM' "
                            "and g.valid = -1"_s;
    const QString ledger = u"l.totalamount = g.amount and l.enteredby||'' = 'system'"_s;
    QString shared; // joined by `and`
    for (const char *field : {"ddate", "enteredon", "valid", "creditordebit", "gtype", "paymentmethod",
                              "transactiondetail", "paymentdetail"})
        shared += u" and g.%1||'' = l.%1||''"_s.arg(QLatin1StringView(field));
    // Shares by hand, in cents: with the heads 2, 1, 0 a sixteenth, seven eighths and seven sixteenths.
    const QString revenueShare =
        u"100*case l.name||'' when 'Fatima' then (g.amount/10000*50+4)/8 when 'Omar' then "
        "(g.amount/10000*175+1)/2 else (g.amount/10000*350+4)/8 end"_s;
    const QString parts = u"(select count(*) from ledger p where p.transactionid = g.transactionid)"_s;
    const QString expenseShare = u"100*((g.amount/10000*200+%1)/(2*%1))"_s.arg(parts);
    ScriptedDialogs dialogs;
    frmGenerateData screen;
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        for (const bool expense : {false, true}) {
            renewTestStore();
            screen.load();
            click(screen, expense ? "Option1_1" : "Option1_0");
            const QString count = expense == arabic ? u"2000"_s : u"60"_s;
            fill(screen, "Text1", count);
            dialogs.expectMessage(arabic ? u" تم إدخال "_s + count + u" عمليه "_s
                                         : u"finished creating "_s + count + u" records.."_s);
            click(screen, "cmdStart");
            EXPECT_EQ(textOf(screen, "Label3") + textOf(screen, "Label4"), count + count);
            screen.unload();

            const QString texts = arabic ? u"g.transactiondetail||g.paymentdetail||'.' = '.'"_s
                                         : u"g.transactiondetail||g.paymentdetail = "
                                           "'Sale of buildingAgreed to wait on payment'"_s;
            const QString kinds = u"g.gtype between 1 and %1 and g.creditordebit = %2"_s.arg(
                expense ? u"9 and %1 between 1 and 3"_s.arg(parts) : u"8 and %1 = 3"_s.arg(parts),
                expense ? u"0"_s : u"-1"_s);
            const QString bad =
                u"select count(*) from general g where (%1 and %2 and %3) is not 1;"
                "select count(*) from ledger l left join general g using (transactionid) where "
                "(%4%5 and l.amount = %6) is not 1"_s;
            EXPECT_EQ(testRows(bad.arg(general, texts, kinds, ledger, shared,
                                       expense ? expenseShare : revenueShare)),
                      (QStringList{u"0"_s, u"0"_s}));
            EXPECT_EQ(testRows(u"select count(*), min(transactionid), max(transactionid), count(distinct "
                               "transactionid), (select sn from settings) from general"_s),
                      QStringList{u"%1|1|%1|%1|%1"_s.arg(count)});
            // An expense takes only the first so many members.
            EXPECT_EQ(
                testRows(
                    u"select distinct l.name||'' from ledger l join general g using (transactionid) where "
                    "%1 = %2 order by 1"_s.arg(parts, expense ? u"1"_s : u"3"_s)),
                expense ? QStringList{u"Fatima"_s} : (QStringList{u"Fatima"_s, u"Omar"_s, u"Sara"_s}));
            if (count == u"2000"_s) {
                EXPECT_EQ(
                    testRows(u"select min(k), max(k), group_concat(distinct m) from (select gtype as k, "
                             "paymentmethod||'' as m from general order by 2)"_s),
                    QStringList{arabic ? u"1|9|بطاقة إئتمانً,شيك,نقداً"_s : u"1|8|Cash,Check,Credit Card"_s});
            }
        }
    }
}

TEST_F(GeneratorTest, CanBeStoppedAndTakesEveryCount)
{
    const struct {
        QString count, told;
        int made;
    } cases[] = {{u"20"_s, {}, 3},
                 {u"10000000"_s, {}, 3},
                 {u"٢"_s, {}, 2},
                 {u"-5"_s, {}, 0},
                 {u"2147483648"_s, u"6 :-> Overflow"_s, 0},
                 {u""_s, u"13 :-> Type mismatch"_s, 0},
                 {u"many"_s, u"13 :-> Type mismatch"_s, 0}};
    frmGenerateData screen;
    screen.showModeless();
    ScriptedDialogs dialogs;
    int made = 0;
    for (const auto &c : cases) {
        QTimer hand;
        QObject::connect(&hand, &QTimer::timeout, &screen, [&] {
            EXPECT_FALSE(isEnabled(screen, "cmdExit") || isEnabled(screen, "mnuExit"));
            EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
            if (textOf(screen, "Label4") != u"3"_s)
                return;
            hand.stop();
            click(screen, "cmdStop");
            EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        });
        hand.start(0);
        fill(screen, "Text1", c.count);
        if (!c.told.isEmpty())
            dialogs.expectMessage(c.told);
        dialogs.expectMessage(u"finished creating %1 records.."_s.arg(c.made)).meanwhile([&] {
            hand.stop();
        });
        control<QLabel>(screen, "Label4").clear();
        control<QPushButton>(screen, "cmdStart").click();
        made += c.made;
        EXPECT_EQ(testRows(u"select sn, (select count(*) from general) from settings"_s),
                  QStringList{u"%1|%1"_s.arg(made)});
        EXPECT_TRUE(isEnabled(screen, "cmdExit") && isEnabled(screen, "mnuExit"));
    }
}

TEST_F(GeneratorTest, IsClosedInTheMiddleWithoutHarm)
{
    QStringList before = realRows();
    const auto interrupted = [&](int made, const std::function<void()> &action) {
        auto *screen = new frmGenerateData;
        screen->showModeless();
        QTimer hand;
        QObject::connect(&hand, &QTimer::timeout, &hand, [&] {
            if (textOf(*screen, "Label4") != u"3"_s)
                return;
            hand.stop();
            action();
        });
        hand.start(0);
        runGuarded([&] { control<QPushButton>(*screen, "cmdStart").click(); });
        EXPECT_FALSE(hand.isActive());
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(
            testRows(u"select sn, (select count(*) from general), (select count(distinct transactionid) from "
                     "ledger) from settings"_s),
            QStringList{u"%1|%1|%1"_s.arg(made)});
        EXPECT_EQ(realRows(), before);
    };
    engine.tutorialMode = true;
    frmMain main;
    main.load();
    ScriptedDialogs dialogs;
    interrupted(2, [] { Screen::loadedScreens().last()->close(); });
    interrupted(4, [&] { chooseMenu(main, "mnuStopTutorial"); });
    EXPECT_EQ(engine.dbConnection->connectionString(), engine.connectionString);
    // Compacted, the real store stands under it; the next start is on the test store again.
    execute({u"update settings set lastcompacted='%1'"_s.arg(generalDate(today()))});
    before = realRows();
    dialogs.expectAnyMessage();
    dialogs.expectAnyMessage();
    dialogs.expectMessage(u"3704 :-> Operation is not allowed when the object is closed."_s);
    dialogs.expectMessage(u"finished creating 2 records.."_s);
    interrupted(6, [&] { chooseMenu(main, "mnuCompact"); });
    dialogs.expectMessage(u"finished creating 20 records.."_s);
    click(*Screen::loadedScreens().last(), "cmdStart");
    EXPECT_EQ(realRows(), before);
    Screen::loadedScreens().last()->unload();
    interrupted(28, [&] { click(main, "Command4"); });
    EXPECT_TRUE(Screen::loadedScreens().isEmpty());
}

TEST_F(GeneratorTest, GoesOnBehindAFailure)
{
    setFamily({1, 3});
    renewTestStore();
    shellRows(u"create trigger refusal before insert on general when new.transactionid = 2 begin select "
              u"raise(abort, "
              "'refused'); end"_s,
              engine.testStorePath);
    frmGenerateData screen;
    screen.load();
    click(screen, "Option1_0");
    fill(screen, "Text1", u"3"_s);
    ScriptedDialogs dialogs;
    for (int i = 0; i < 3; ++i)
        dialogs.expectMessage(u"11 :-> Division by zero"_s);
    dialogs.expectMessage(u"finished creating 3 records.."_s); // the refusal passes in silence
    click(screen, "cmdStart");
    EXPECT_EQ(
        testRows(u"select group_concat(transactionid) from general; select name||'', count(distinct "
                 "transactionid) from ledger group by 1; select count(*) from ledger w join ledger d on "
                 "w.transactionid = d.transactionid and w.amount = d.amount and w.id < d.id"_s),
        (QStringList{u"1,3"_s, u"m0|3"_s, u"m1|3"_s, u"3"_s})); // the daughter has the wife's share

    attachStore(engine.connectionString);
    setFamily(std::vector<int>(101, 2));
    renewTestStore();
    dialogs.expectUntrapped(u"9"_s, u"Subscript out of range"_s);
    EXPECT_TRUE(processEnded(1, [] { frmGenerateData().load(); }));
}

} // namespace
