#include "practising.h"

#include "hand.h"
#include "platform/ui/screen.h"
#include "player.h"
#include "story.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

void generate(Player &player, const Story &story, const char *kind, const QString &count)
{
    player.on(u"frmGenerateData"_s, [kind, count](Screen &screen) {
        hand::fill(screen, "Text1", count);
        hand::click(screen, kind);
        hand::click(screen, "cmdStart");
    });
    player.acceptMessage(story.arabic ? u" تم إدخال "_s + count : u"finished creating "_s + count);
    player.on(u"frmGenerateData"_s, [&player, story](Screen &screen) {
        player.picture(screen, story.name + u"-frmGenerateData"_s);
        hand::click(screen, "cmdExit");
    });
}

} // namespace

void playPractice(Player &player, const Story &story)
{
    player.on(u"frmMain"_s, [](Screen &screen) { hand::chooseMenu(screen, "mnuTour", "mnuTutorial"); });
    player.acceptMessage(
        story.arabic ? u"بإمكانك التدرًب على هذا البرنامج قبل الإستخدام الفعلي له عن طريق تكوين"_s
                     : u"entered the family members information and when you have decided to enter valid"_s,
        story.name + u"-tutorial"_s);
    player.on(u"frmMain"_s, [](Screen &screen) { hand::chooseMenu(screen, "mnuTour", "mnuStartTutorial"); });
    player.acceptMessage(
        story.arabic
            ? u"تستطيع الآن تكوين معلومات وههميه بمساعدة البرنامج لكي تتعود على إستخدامه,"_s
            : u"You can now generate data automatically to practice the program, do you want to do it now?"_s,
        story.name + u"-tutorial-offer"_s);
    generate(player, story, "Option1_1", u"20"_s);
    player.on(u"frmMain"_s, [&player, story](Screen &screen) {
        player.picture(screen, story.name + u"-frmMain-tutorial"_s);
        hand::chooseMenu(screen, "mnuTour", "mnuGenerateData");
    });
    generate(player, story, "Option1_0", u"7"_s);
    player.on(u"frmMain"_s, [](Screen &screen) { hand::chooseMenu(screen, "mnuTour", "mnuStopTutorial"); });
}
