#include "managing_users.h"

#include "browser_view.h"
#include "hand.h"
#include "platform/ui/bound_grid.h"
#include "platform/ui/screen.h"
#include "player.h"
#include "story.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

void playNewUser(Player &player, const Story &story)
{
    player.click(u"frmUsers"_s, "cmdAdd");
    player.on(u"frmNewUser"_s, [story](Screen &screen) {
        hand::fill(screen, "txtUserid", u"secretary"_s);
        hand::fill(screen, "txtUsername", story.words.secretary);
        hand::fill(screen, "txtPassword1", u"letters"_s);
        hand::fill(screen, "txtPassword2", u"letters"_s);
        hand::choose(screen, "ComboRank", u"2"_s);
        hand::click(screen, "cmdOK");
    });
    player.acceptMessage(u"User added successfully"_s);
    player.click(u"frmNewUser"_s, "cmdCancel");
}

/// In the cell: leaving the row asks and writes it.
void playNewName(Player &player, const Story &story)
{
    player.on(u"frmUsers"_s, [story](Screen &screen) {
        hand::click(screen, "cmdRefresh");
        hand::click(screen, "cmdLast");
        auto &grid = dynamic_cast<BoundGrid &>(hand::reach(screen, "grdDataGrid"));
        grid.setFocus();
        for (int i = 0; i < 2; ++i)
            hand::pressKey(grid, Qt::Key_Tab);
        expect({grid.text()}, {story.words.secretary}, u"the name of the new user"_s);
        hand::pressKey(grid, Qt::Key_F2);
        hand::fill(*screen.focusWidget(), story.words.correctedSecretary);
        hand::pressKey(screen, Qt::Key_Return);
    });
    player.on(u"frmUsers"_s, [&player, story](Screen &screen) {
        player.picture(screen, story.name + u"-frmUsers"_s);
        hand::click(screen, "cmdFirst");
    });
    player.acceptMessage(story.question());
    player.click(u"frmUsers"_s, "cmdClose");
    player.click(u"frmChanges"_s, "Command5");
    player.onIdle(browser, [&player, story](Screen &screen) {
        expect(column(screen, u"userid"_s), {u"secretary"_s}, u"the audit row of the user"_s);
        expect(column(screen, u"name"_s), {story.words.secretary}, u"the name before"_s);
        player.picture(screen, story.name + u"-audit-users"_s);
    });
    closeBrowser(player);
}

void playNewPassword(Player &player, const Story &story)
{
    player.chooseMenu(u"frmChanges"_s, "mnuPasschange");
    player.on(u"frmChangePassword"_s, [&player, story](Screen &screen) {
        hand::fill(screen, "txtPassword", story.password());
        hand::fill(screen, "txtPassword1", u"n3w-s3cret"_s);
        hand::fill(screen, "txtPassword2", u"n3w-s3cret"_s);
        player.picture(screen, story.name + u"-frmChangePassword"_s);
        hand::click(screen, "cmdOK");
    });
    player.acceptMessage(u"Password changed successfull"_s);
    player.click(u"frmChangePassword"_s, "cmdCancel");
}

} // namespace

void playUsers(Player &player, const Story &story)
{
    player.click(u"frmMain"_s, "Command3");
    player.click(u"frmChanges"_s, "Command1");
    playNewUser(player, story);
    playNewName(player, story);
    playNewPassword(player, story);
    player.click(u"frmChanges"_s, "Command9");
}
