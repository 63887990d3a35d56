#include "reporting.h"

#include "hand.h"
#include "platform/ui/controls.h"
#include "platform/ui/screen.h"
#include "player.h"
#include "story.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString preview = u"ReportPreview"_s;

/// Where the statements of a screen are shown from and saved to.
struct Place {
    QString screen;
    QString folder;
    QString pictures; ///< the beginning of their names
};

/// Shows the statement that is chosen, saves it as PDF, closes it and exports its rows.
void showAndSave(Player &player, const Place &place, const QString &name)
{
    player.click(place.screen, "cmdShow");
    player.click(preview, "cmdSave");
    player.saveAs(place.folder + u'/' + name + u".pdf"_s);
    const auto isSaved = [part = name + u".pdf"_s] {
        const Screen *screen = Player::screenOnTop(preview);
        return screen != nullptr && captionOf(hand::find(*screen, "lblStatus")).contains(part);
    };
    player.step(u"the saved "_s + name, isSaved, [&player, picture = place.pictures + name] {
        Screen &screen = *Player::screenOnTop(preview);
        player.picture(screen, picture);
        hand::click(screen, "cmdClose");
    });
    player.on(place.screen, [&player, picture = place.pictures + name + u"-shown"_s](Screen &screen) {
        player.picture(screen, picture);
        hand::click(screen, "cmdExcell");
    });
    player.saveAs(place.folder + u'/' + name + u".xls"_s);
    player.acceptMessage(u"Export complete"_s);
}

void byMonth(Player &player, const Place &place)
{
    player.on(place.screen, [](Screen &screen) { hand::chooseMenu(screen, "mnuType", "mnuMonthly"); });
}

} // namespace

void playStatements(Player &player, const Story &story, const QString &folder)
{
    player.click(u"frmMain"_s, "Command5");
    player.on(u"frmReports"_s, [&player, story](Screen &screen) {
        player.picture(screen, story.name + u"-frmReports"_s);
        hand::click(screen, "Command1");
    });
    const Place member{u"frmStatement"_s, folder, story.name + u'-'};
    player.on(member.screen, [name = story.ledger.front().name](Screen &screen) {
        hand::choose(screen, "Combo1", name);
        hand::click(screen, "Option1_2");
    });
    showAndSave(player, member, u"member"_s);
    byMonth(player, member);
    showAndSave(player, member, u"member-monthly"_s);
    player.click(member.screen, "Command3");

    const Place family{u"frmGStatement"_s, folder, story.name + u'-'};
    player.click(u"frmReports"_s, "Command2");
    player.click(family.screen, "Option1_2");
    showAndSave(player, family, u"family"_s);
    if (story.arabic) {
        byMonth(player, family);
        showAndSave(player, family, u"family-monthly"_s);
    }
    player.click(family.screen, "Command3");
    player.click(u"frmReports"_s, "Command3");
}
