#include "correcting.h"

#include "browser_view.h"
#include "hand.h"
#include "platform/runtime/clock.h"
#include "platform/ui/flex_grid.h"
#include "platform/ui/screen.h"
#include "player.h"
#include "story.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int revenueRow = 1;
constexpr int expenseRow = 2;

int noteColumn(const Screen &screen)
{
    return gridOf(screen).columnOf(u"transactiondetail"_s);
}

/// Types the corrected note over the cell and picks the other row, which asks whether to save.
void playCorrection(Player &player, const Story &story)
{
    chooseInBrowser(player, "mnuPopup", "mnuModify");
    player.acceptMessage(story.arabic ? u"تستطيع الآن القيام بتعديلات على المعلومات"_s
                                      : u"You can make changes now"_s);
    player.onIdle(browser, [=, &player](Screen &screen) {
        hand::clickCell(screen, "FGrid", revenueRow, noteColumn(screen));
        hand::doubleClickCell(screen, "FGrid", revenueRow, noteColumn(screen));
        hand::fill(screen, "Text1", story.words.correctedNote);
        player.picture(screen, story.name + u"-general-editor"_s);
        hand::clickCell(screen, "FGrid", expenseRow, noteColumn(screen));
    });
    player.acceptMessage(story.arabic ? u"هل تريد حفظ هذه التحديثات؟"_s
                                      : u"Do you want to save the changes?"_s);
    player.acceptMessage(u"Update successful  تمت عملية التحديث بنجاح"_s);
}

void playCancellation(Player &player, const Story &story)
{
    player.onIdle(browser, [](Screen &screen) {
        hand::clickCell(screen, "FGrid", expenseRow, noteColumn(screen), Qt::RightButton);
        hand::choosePopup(screen, "mnuDelete");
    });
    player.acceptMessage(u"Do you want to delete??  سوف يتم إلغاء هذه العمليه "_s);
    player.onIdle(browser, [=](Screen &screen) {
        const Words &words = story.words;
        expect(column(screen, u"transactiondetail"_s), {words.correctedNote, words.expenseNote},
               u"the notes behind the correction"_s);
        expect(column(screen, u"valid"_s), {words.yes, words.no}, u"the cancelled expense"_s);
    });
}

/// The rows as they were before; `updatetype` stands in a range of dates only. The range holds the days of
/// the audit rows, by which it selects, and those of the entries, by which they are archived.
void playAuditRows(Player &player, const Story &story)
{
    const Words &words = story.words;
    const auto expectRows = [=](const Screen &screen) {
        expect(column(screen, u"transactiondetail"_s), {words.revenueNote, words.expenseNote},
               u"the notes in the audit rows"_s);
    };
    player.onIdle(browser, [=](Screen &screen) {
        expectRows(screen);
        expect(column(screen, u"valid"_s), {words.yes, words.yes}, u"both were valid before"_s);
        hand::click(screen, "btnDateSelect");
    });
    player.on(u"frmSelectDates"_s, [=](Screen &screen) {
        hand::fill(screen, "DateFromx", story.revenueDate); // to the end of this year
        hand::click(screen, "cmdOK");
    });
    player.acceptMessage(u"You can Select Dates and cancel"_s);
    player.onIdle(browser, [=, &player](Screen &screen) {
        expectRows(screen);
        expect(column(screen, u"updatetype"_s), {words.modified, words.deleted}, u"what was done"_s);
        FlexGrid &grid = gridOf(screen);
        grid.setFocus();
        hand::pressKey(grid, Qt::Key_End); // to the column of what was done
        player.picture(screen, story.name + u"-audit-rows"_s);
    });
}

void playArchiving(Player &player)
{
    chooseInBrowser(player, "mnuArchiving", "mnuArchive");
    player.acceptMessage(u"Are you sure you want to do it?  هل أنت متأكد من أنك تريد إتمام الإختزال؟"_s);
    player.acceptMessage(u"تحذير .. هذه العمليه دقيقه جداًوضروريه فقط عندما يكون فتح الصفحه بطيء جداً"_s);
    player.acceptMessage(
        u"Are you sure you want to do it?  هل أنت متأكد من أنك لا تزال تريد إتمام الإختزال؟"_s);
    player.acceptMessage(u"Archiving Finished sucessfully..  تمت عملية الأرشفه بنجاح"_s);
}

void playArchive(Player &player, const Story &story)
{
    const QString entry =
        u"audit_general1 : 31/12/%1 - %2"_s.arg(today().date().year()).arg(story.revenueDate);
    player.onIdle(browser, [entry](Screen &screen) {
        expect(column(screen, u"transactionid"_s), {QString()}, u"all archived: one blank row"_s);
        hand::choose(screen, "ArchivesList", entry);
    });
    player.acceptMessage(
        u"Are you sure you want to load this archive?  هل أنت متأكد بأنك تريد مراجعة هذا الإرشيف؟"_s);
    player.onIdle(browser, [=, &player](Screen &screen) {
        expect(column(screen, u"transactionid"_s), {u"1"_s, u"2"_s}, u"the archive"_s);
        player.picture(screen, story.name + u"-archive"_s);
    });
}

void playMerging(Player &player)
{
    chooseInBrowser(player, "mnuArchiving", "mnuDeArchive");
    player.acceptMessage(u"Are you sure you want to do it?  هل أنت متأكد من أنك تريد دمج هذا الإرشيف؟"_s);
    player.acceptMessage(u"تحذير ..  هذه العمليه دقيقه جداً"_s);
    player.acceptMessage(
        u"Are you sure you want to do it?  هل أنت متأكد من أنك لا تزال تريد دمج وإستعادة هذا الإرشيف؟"_s);
    player.acceptMessage(u"DeArchiving Finished sucessfully..  تمت عملية الدمج بنجاح"_s);
    player.onIdle(browser, [](Screen &screen) {
        expect(column(screen, u"transactionid"_s), {u"1"_s, u"2"_s}, u"the audit rows are back"_s);
    });
}

} // namespace

void playCorrections(Player &player, const Story &story)
{
    player.click(u"frmMain"_s, "Command3");
    player.click(u"frmChanges"_s, "Command3");
    playCorrection(player, story);
    playCancellation(player, story);
    closeBrowser(player);
    player.click(u"frmChanges"_s, "Command7");
    playAuditRows(player, story);
    playArchiving(player);
    playArchive(player, story);
    playMerging(player);
    closeBrowser(player);
    player.click(u"frmChanges"_s, "Command9");
}
