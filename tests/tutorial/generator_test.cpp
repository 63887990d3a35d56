#include "platform/runtime/runtime_error.h"
#include "platform/ui/process.h"
#include "shell/frmMain.h"
#include "tutorial_fixture.h"

#include <QtCore/QTimer>

#include <algorithm>

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
    static void start(Screen &screen, const QString &count)
    {
        fill(screen, "Text1", count);
        click(screen, "cmdStart");
    }
    /// Runs an action in the division of the third transaction of a run.
    static void inTheThird(QTimer &timer, const Screen &screen, std::function<void()> action)
    {
        QObject::connect(&timer, &QTimer::timeout, &timer, [&timer, &screen, action = std::move(action)] {
            if (textOf(screen, "Label4") != u"3"_s)
                return;
            timer.stop();
            EXPECT_FALSE(isEnabled(screen, "cmdExit") || isEnabled(screen, "mnuExit"));
            EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
            action();
        });
        timer.start(0);
    }
};

TEST(GeneratorDraws, ReachBothEndsOfTheirRanges)
{
    const auto drawn = [](double value) {
        const Invention got = drawInvention([value] { return value; }, 9, generatorWords(false));
        return u"%1 %2 %3 %4"_s.arg(shortDate(got.date)).arg(got.amount).arg(got.kind).arg(got.payment);
    };
    EXPECT_EQ(drawn(0), u"01/02/1995 200 1 Check"_s);
    EXPECT_EQ(drawn(0.5), u"06/12/2001 100200 5 Cash"_s);
    EXPECT_EQ(drawn(std::nextafter(1.0, 0.0)), u"09/10/2008 200199 8 Credit Card"_s);
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
        QString shares; // of a wife, a son, a daughter
    } cases[] = {
        {{3, 1, 2, 2}, 1000, {2, 2, 0}, u"62.5 437.5 218.75 "_s},
        {{1, 2, 2}, 210, {2, 1, 0}, u"13.13 183.75 91.88 "_s}, // 13.125 and 91.875: away from zero
        {{2, 3, 3, 3}, 1000, {0, 2, 2}, u"!11 291.67 145.83 "_s},
        {{1, 3}, 200199, {2, 0, 0}, u"12512.44 !11 !11 "_s},
    };
    for (const auto &c : cases) {
        setFamily(c.relations);
        const GeneratorFamily family = readGeneratorFamily();
        EXPECT_EQ(family.relationCount, c.heads);
        QString shares;
        for (const int relation : {1, 2, 3}) {
            try {
                shares += generatedRevenueShare(c.amount, relation, family)->toText() + u' ';
            } catch (const RuntimeError &failure) {
                shares += u"!%1 "_s.arg(failure.number());
            }
        }
        EXPECT_EQ(shares, c.shares);
        EXPECT_FALSE(generatedRevenueShare(c.amount, 4, family));
    }
    EXPECT_EQ(generatedExpenseShare(201, 8).toText(), u"25.13"_s);
}

TEST_F(GeneratorTest, WritesTwoThousandRevenuesInEnglishAndExpensesInArabic)
{
    const QString general = u"g.amount between 2000000 and 2001990000 and g.amount % 10000 = 0 and g.ddate "
                            u"between '1995-02-01' and "
                            "'2008-10-09' and g.enteredon = '2004-03-15' and g.lastupdate = '2004-03-15' and "
                            "g.enteredby||'' = 'SYSTEM' "
                            "and g.valid = -1 and "_s;
    QString ledger = u"l.totalamount = g.amount and l.enteredby||'' = 'system' and "_s;
    for (const char *field : {"ddate", "enteredon", "valid", "creditordebit", "gtype", "paymentmethod",
                              "transactiondetail", "paymentdetail"})
        ledger += u"g.%1||'' = l.%1||'' and "_s.arg(QLatin1StringView(field));
    const QString parts = u"(select count(*) from ledger p where p.transactionid = g.transactionid)"_s;
    // By hand, in cents: with the heads 2, 1, 0 a revenue's shares are a sixteenth, seven eighths and seven
    // sixteenths.
    const struct {
        bool arabic;
        const char *kind;
        QString message, general, share, alone, last;
    } cases[] = {
        {false, "Option1_0", u"finished creating 2000 records.."_s,
         u"g.transactiondetail||g.paymentdetail = 'Sale of buildingAgreed to wait on payment' and g.creditordebit = -1 and %1 = 3"_s,
         u"case l.name||'' when 'Fatima' then (g.amount/10000*50+4)/8 when 'Omar' then "
         u"(g.amount/10000*175+1)/2 else "
         "(g.amount/10000*350+4)/8 end"_s,
         u"Fatima,Omar,Sara"_s, u"1|8|Cash,Check,Credit Card"_s},
        {true, "Option1_1", u" تم إدخال 2000 عمليه "_s,
         u"g.transactiondetail||g.paymentdetail||'.' = '.' and g.creditordebit = 0 and %1 between 1 and 3"_s,
         u"(g.amount/10000*200+%1)/(2*%1)"_s, u"Fatima"_s, // an expense takes only the first so many members
         u"1|9|بطاقة إئتمانً,شيك,نقداً"_s}};
    for (const auto &c : cases) {
        setLanguage(c.arabic);
        renewTestStore();
        frmGenerateData screen;
        screen.load();
        click(screen, c.kind);
        ScriptedDialogs dialogs;
        dialogs.expectMessage(c.message);
        start(screen, u"2000"_s);
        EXPECT_EQ(textOf(screen, "Label3") + textOf(screen, "Label4"), u"20002000"_s);
        const auto withParts = [&](QString sql) { return sql.replace(u"%1"_s, parts); };
        const QString least = c.arabic ? u"1"_s : u"3"_s;
        EXPECT_EQ(
            testRows(
                u"select count(*) from general g where ("_s + general + withParts(c.general) +
                u") is not 1; select count(*) from ledger l left join general g using (transactionid) "
                "where ("_s +
                ledger + u"l.amount = 100*("_s + withParts(c.share) +
                u")) is not 1; "
                "select count(*), min(transactionid), max(transactionid), count(distinct transactionid), "
                "(select sn from settings) from general; select group_concat(n) from (select distinct "
                "l.name||'' as n from ledger l join general g using (transactionid) where "_s +
                parts + u" = "_s + least +
                u" order by 1); select min(k), max(k), group_concat(distinct m) from "
                "(select gtype as k, paymentmethod||'' as m from general order by 2)"_s),
            (QStringList{u"0"_s, u"0"_s, u"2000|1|2000|2000|2000"_s, c.alone, c.last}));
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
        QTimer timer;
        inTheThird(timer, screen, [&] { click(screen, "cmdStop"); });
        if (!c.told.isEmpty())
            dialogs.expectMessage(c.told).meanwhile([&] { timer.stop(); });
        dialogs.expectMessage(u"finished creating %1 records.."_s.arg(c.made)).meanwhile([&] {
            timer.stop();
        });
        control<QLabel>(screen, "Label4").clear();
        start(screen, c.count);
        made += c.made;
        EXPECT_EQ(testRows(u"select sn, (select count(*) from general) from settings"_s),
                  QStringList{u"%1|%1"_s.arg(made)});
        EXPECT_TRUE(isEnabled(screen, "cmdExit") && isEnabled(screen, "mnuExit"));
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
}

TEST_F(GeneratorTest, IsClosedInTheMiddleWithoutHarm)
{
    execute({u"update settings set lastcompacted='%1'"_s.arg(generalDate(today()))});
    const QStringList before = realRows();
    engine.tutorialMode = true;
    frmMain main;
    main.load();
    const auto interrupted = [&](int made, const std::function<void()> &action) {
        auto *screen = new frmGenerateData;
        screen->showModeless();
        QTimer timer;
        inTheThird(timer, *screen, action);
        runGuarded([&] { control<QPushButton>(*screen, "cmdStart").click(); });
        EXPECT_FALSE(timer.isActive());
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(
            testRows(u"select sn, (select count(*) from general), (select count(distinct transactionid) from "
                     "ledger) from settings"_s),
            QStringList{u"%1|%1|%1"_s.arg(made)});
        EXPECT_EQ(realRows(), before);
    };
    ScriptedDialogs dialogs;
    interrupted(2, [] { Screen::loadedScreens().last()->close(); });
    interrupted(4, [&] { chooseMenu(main, "mnuStopTutorial"); });
    EXPECT_EQ(engine.dbConnection->connectionString(), engine.connectionString);
    // Compacted, the real store stands under it; the next start is on the test store again.
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
    ScriptedDialogs dialogs;
    for (int i = 0; i < 3; ++i)
        dialogs.expectMessage(u"11 :-> Division by zero"_s);
    dialogs.expectMessage(u"finished creating 3 records.."_s); // the refusal passes in silence
    start(screen, u"3"_s);
    EXPECT_EQ(
        testRows(u"select group_concat(transactionid) from general; select name||'', count(distinct "
                 "transactionid) from ledger group by 1; select count(*) from ledger w join ledger d on "
                 "w.transactionid = d.transactionid and w.amount = d.amount and w.id < d.id"_s),
        (QStringList{u"1,3"_s, u"m0|3"_s, u"m1|3"_s, u"3"_s})); // the daughter has the wife's share

    // As on a full disk the store rolls back by itself: nothing of the run is there, and it can be left.
    shellRows(u"create trigger loss before insert on ledger when new.transactionid = 5 begin select "
              "raise(rollback, 'lost'); end"_s,
              engine.testStorePath);
    click(screen, "Option1_1");
    dialogs.expectMessage(u"finished creating 0 records.."_s);
    start(screen, u"3"_s);
    EXPECT_EQ(testRows(u"select count(*) from general"_s), QStringList{u"2"_s});
    attachStore(engine.connectionString);
}

} // namespace
