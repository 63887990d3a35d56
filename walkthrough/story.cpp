#include "story.h"

#include "hand.h"
#include "platform/ui/screen.h"
#include "player.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace
{

void addPerson(Player &player, const Story &story, const Person &person)
{
    player.on(u"frmMembers"_s, [person](Screen &screen) {
        hand::click(screen, "cmdAdd");
        hand::fill(screen, "txtFields_0", person.name);
        hand::click(screen, "txtFields_1");
        hand::choose(screen, "Combo1", person.sex);
        hand::fill(screen, "txtFields_2", person.title);
        hand::click(screen, "txtFields_3");
        hand::choose(screen, "Combo1", person.relation);
        hand::fill(screen, "txtFields_4", person.born);
        hand::fill(screen, "txtFields_5", person.group);
        hand::click(screen, "cmdUpdate");
    });
    player.acceptMessage(story.question());
}

/// What a family's first revenue and first expense come to, in either language.
struct Figures {
    QString revenue;
    QStringList shares; ///< of the revenue, in the order of the family
    QString expense;
    QString expenseShare;
    QString expenseAnew;
    QString shareAnew;
    QStringList amounts;
    Sums sums;
    Sums firstSums;
};

const Figures of1000And100{
    .revenue = u"1000"_s,
    .shares = {u"125"_s, u"350"_s, u"350"_s, u"175"_s},
    .expense = u"100"_s,
    .expenseShare = u"33.3333"_s,
    .expenseAnew = u"90"_s,
    .shareAnew = u"30"_s,
    .amounts = {u"33.33"_s, u"33.33"_s, u"33.33"_s, u"125.00"_s, u"175.00"_s, u"350.00"_s, u"350.00"_s},
    .sums = {u"1,000.00"_s, u"100.00"_s, u"900.00"_s},
    .firstSums = {u"350.00"_s, u"33.33"_s, u"316.67"_s}};
const Figures of1001And200{
    .revenue = u"1001.50"_s,
    .shares = {u"62"_s, u"62"_s, u"584.2084"_s, u"292.1042"_s},
    .expense = u"200"_s,
    .expenseShare = u"66.6667"_s,
    .expenseAnew = u"100.01"_s,
    .shareAnew = u"33.3367"_s,
    .amounts = {u"62.00"_s, u"62.00"_s, u"66.67"_s, u"66.67"_s, u"66.67"_s, u"292.10"_s, u"584.21"_s},
    .sums = {u"1,000.31"_s, u"200.00"_s, u"800.31"_s},
    .firstSums = {u"62.00"_s, u"66.67"_s, u" * -4.67"_s}};

/// The row of each member, by name.
std::vector<LedgerRow> revenueRows(const std::vector<Person> &family, const QStringList &shares)
{
    std::vector<LedgerRow> rows;
    for (std::size_t i = 0; i < family.size(); ++i)
        rows.push_back({1, family[i].name, shares[qsizetype(i)]});
    std::ranges::sort(rows, {}, &LedgerRow::name);
    return rows;
}

/// The same share for all of a transaction's rows but the last one.
std::vector<LedgerRow> expenseRows(int transaction, std::vector<LedgerRow> rows, const QString &share)
{
    rows.pop_back();
    for (LedgerRow &row : rows)
        row = {transaction, row.name, share};
    return rows;
}

Story storyOf(const QString &name, const Words &words, const QString &deceased,
              const std::vector<Person> &family, const Figures &figures)
{
    const std::vector<LedgerRow> revenue = revenueRows(family, figures.shares);
    std::vector<LedgerRow> ledger = revenue;
    std::ranges::copy(expenseRows(2, revenue, figures.expenseShare), std::back_inserter(ledger));
    return {.name = name,
            .arabic = name.startsWith(u"arabic"),
            .words = words,
            .deceased = deceased,
            .family = family,
            .revenue = figures.revenue,
            .revenueDate = u"15/03/2024"_s,
            .expense = figures.expense,
            .expenseDate = u"20/01/2025"_s,
            .expenseAnew = figures.expenseAnew,
            .ledger = ledger,
            .ledgerAnew = expenseRows(3, revenue, figures.shareAnew),
            .amounts = figures.amounts,
            .sums = figures.sums,
            .firstSums = figures.firstSums};
}

} // namespace

QString Story::question() const
{
    return arabic ? u"هل أنت متأكد"_s : u"Are you sure"_s;
}

std::vector<Story> stories()
{
    const Words arabicWords{
        u"إيجار الدكان"_s, u"فاتورة الكهرباء"_s, u"إيجار العمارة"_s,  u"نعم"_s, u"لا"_s, u"تعديل"_s,
        u"حذف"_s,          u"سكرتير العائلة"_s,  u"أمين سر العائلة"_s};
    const Words englishWords{u"Rent of the shop"_s,
                             u"The electricity bill"_s,
                             u"Rent of the house"_s,
                             u"YES"_s,
                             u"NO"_s,
                             u"Modified"_s,
                             u"Deleted"_s,
                             u"The secretary"_s,
                             u"Secretary of the family"_s};
    return {
        storyOf(u"arabic-1"_s, arabicWords, u"عبد الرحمن بن صالح"_s,
                {{u"فاطمة"_s, u"أنثى"_s, u"السيدة"_s, u"زوجه"_s, u"12/03/1958"_s, u"1"_s},
                 {u"أحمد"_s, u"ذكر"_s, u"السيد"_s, u"ولد"_s, u"04/07/1980"_s, u"1"_s},
                 {u"صالح"_s, u"ذكر"_s, u"السيد"_s, u"ولد"_s, u"21/11/1984"_s, u"2"_s},
                 {u"مريم"_s, u"أنثى"_s, u"الآنسة"_s, u"بنت"_s, u"30/01/1990"_s, u"2"_s}},
                of1000And100),
        storyOf(u"arabic-2"_s, arabicWords, u"إبراهيم بن خالد"_s,
                {{u"حصة"_s, u"أنثى"_s, u"السيدة"_s, u"زوجه"_s, u"02/02/1950"_s, u"1"_s},
                 {u"نورة"_s, u"أنثى"_s, u"السيدة"_s, u"زوجه"_s, u"15/09/1962"_s, u"1"_s},
                 {u"خالد"_s, u"ذكر"_s, u"السيد"_s, u"ولد"_s, u"08/05/1979"_s, u"2"_s},
                 {u"سارة"_s, u"أنثى"_s, u"الآنسة"_s, u"بنت"_s, u"19/12/1987"_s, u"2"_s}},
                of1001And200),
        storyOf(u"english-1"_s, englishWords, u"Abdulrahman ibn Salih"_s,
                {{u"Fatima"_s, u"Female"_s, u"Mrs"_s, u"Wife"_s, u"12/03/1958"_s, u"1"_s},
                 {u"Ahmad"_s, u"Male"_s, u"Mr"_s, u"Son"_s, u"04/07/1980"_s, u"1"_s},
                 {u"Salih"_s, u"Male"_s, u"Mr"_s, u"Son"_s, u"21/11/1984"_s, u"2"_s},
                 {u"Maryam"_s, u"Female"_s, u"Miss"_s, u"Daughter"_s, u"30/01/1990"_s, u"2"_s}},
                of1000And100),
        storyOf(u"english-2"_s, englishWords, u"Ibrahim ibn Khalid"_s,
                {{u"Hissa"_s, u"Female"_s, u"Mrs"_s, u"Wife"_s, u"02/02/1950"_s, u"1"_s},
                 {u"Noura"_s, u"Female"_s, u"Mrs"_s, u"Wife"_s, u"15/09/1962"_s, u"1"_s},
                 {u"Khalid"_s, u"Male"_s, u"Mr"_s, u"Son"_s, u"08/05/1979"_s, u"2"_s},
                 {u"Sara"_s, u"Female"_s, u"Miss"_s, u"Daughter"_s, u"19/12/1987"_s, u"2"_s}},
                of1001And200),
    };
}

void playFirstStart(Player &player)
{
    player.acceptMessage(u"'3705'"_s);
}

void playFirstUser(Player &player, const Story &story)
{
    const QString name = story.name;
    player.acceptMessage(u"You have to create a user SOON!"_s);
    player.on(u"frmNewUser"_s, [&player, name](Screen &screen) {
        hand::fill(screen, "txtUsername", u"وكيل العائلة"_s);
        hand::fill(screen, "txtPassword1", Story::password());
        hand::fill(screen, "txtPassword2", Story::password());
        player.picture(screen, name + u"-frmNewUser"_s);
        hand::click(screen, "cmdOK");
    });
    player.acceptMessage(u"User added successfully"_s);
    player.click(u"frmNewUser"_s, "cmdCancel");
    player.click(u"frmLogin"_s, "cmdOK");
    player.on(u"frmMain"_s, [story](Screen &screen) {
        if (!story.arabic)
            hand::chooseMenu(screen, "mnuHelp", "mnuEnglish");
    });
    player.chooseMenu(u"frmMain"_s, "mnuExit");
}

void playLogin(Player &player, const Story &story)
{
    const QString name = story.name;
    player.on(u"frmLogin"_s, [&player, name](Screen &screen) {
        hand::fill(screen, "txtPassword", Story::password());
        player.picture(screen, name + u"-frmLogin"_s);
        hand::click(screen, "cmdOK");
    });
}

void playFamily(Player &player, const Story &story)
{
    const QString name = story.name;
    player.on(u"frmMain"_s, [&player, name](Screen &screen) {
        player.picture(screen, name + u"-frmMain"_s);
        hand::click(screen, "Command3");
    });
    player.on(u"frmChanges"_s, [&player, name](Screen &screen) {
        player.picture(screen, name + u"-frmChanges"_s);
        hand::click(screen, "Command2");
    });
    player.chooseMenu(u"frmMembers"_s, "mnuDesceased");
    player.answerInput(story.deceased);
    player.acceptMessage(story.question());
    for (const Person &person : story.family)
        addPerson(player, story, person);
    player.on(u"frmMembers"_s, [&player, name](Screen &screen) {
        hand::click(screen, "cmdRefresh");
        player.picture(screen, name + u"-frmMembers"_s);
        hand::click(screen, "cmdClose");
    });
    player.click(u"frmChanges"_s, "Command9");
}

void playRevenue(Player &player, const Story &story)
{
    player.click(u"frmMain"_s, "Command2");
    player.on(u"frmRevenue"_s, [&player, story](Screen &screen) {
        hand::fill(screen, "txtAmount", story.revenue);
        hand::click(screen, "cmdAll");
        hand::pressKey(hand::reach(screen, "txtAmount"), Qt::Key_Return);
        hand::fill(screen, "DTPicker1", story.revenueDate);
        hand::fill(screen, "txtNote", story.words.revenueNote);
        player.picture(screen, story.name + u"-frmRevenue"_s);
        hand::click(screen, "cmdEntry");
    });
    player.acceptMessage(story.question());
    player.acceptMessage(u"Successful Entry"_s);
    player.chooseMenu(u"frmRevenue"_s, "mnuExit");
}

void playExpense(Player &player, const Story &story, const QString &amount)
{
    player.click(u"frmMain"_s, "Command1");
    player.on(u"frmExpense"_s, [&player, story, amount](Screen &screen) {
        hand::fill(screen, "Text1", amount);
        hand::choose(screen, "ComboGType", story.arabic ? u"كهرباء"_s : u"Electricity"_s);
        hand::click(screen, "cmdAll");
        hand::click(screen, "Check1_3");
        hand::pressKey(hand::reach(screen, "Text1"), Qt::Key_Return);
        hand::fill(screen, "DTPicker1", story.expenseDate);
        hand::fill(screen, "Text2", story.words.expenseNote);
        player.picture(screen, story.name + u"-frmExpense"_s);
        hand::click(screen, "cmdEntry");
    });
    player.acceptMessage(story.question());
    player.acceptMessage(u"Successful Entry"_s);
    player.chooseMenu(u"frmExpense"_s, "mnuExit");
}

void playConversion(Player &player)
{
    player.on(u"frmMain"_s, [](Screen &screen) { hand::chooseMenu(screen, "mnuTour", "mnuDateConversion"); });
    player.on(u"frmDateConversion"_s, [&player](Screen &screen) {
        hand::fill(screen, "Text1", u"28/07/2016"_s);
        hand::click(screen, "cmdHijri");
        player.picture(screen, screen.rightToLeft() ? u"conversion-arabic"_s : u"conversion-english"_s);
        screen.close();
    });
    player.on(u"frmMain"_s, [](Screen &screen) { hand::chooseMenu(screen, "mnuHelp", "mnuAbout"); });
    player.chooseMenu(u"frmAbout"_s, "mnuInformation");
    player.acceptMessage({}, u"brief-description"_s);
    player.click(u"frmAbout"_s, "cmdOK");
}

void playEnd(Player &player, const std::function<void()> &lastly)
{
    player.on(u"frmMain"_s, [lastly](Screen &screen) {
        if (lastly)
            lastly();
        hand::click(screen, "Command4");
    });
}
