#include "core/program_icon.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "utilities/frmAbout.h"
#include "utilities/frmInformation.h"

#include <QtWidgets/QPlainTextEdit>

namespace
{

class AboutTest : public SessionFixture
{
};

TEST_F(AboutTest, TellsThePlainFactsInBothLanguages)
{
    const struct {
        bool arabic;
        QString title, ok, menu, heading, practice, excel;
    } cases[] = {
        {false, u"Quvana"_s, u"OK"_s, u"Brief Intro"_s,
         u"             ***          Brief Description        ***            "_s,
         u"need to spend some time to get familiar with it.                    "_s,
         u"Reporting and exporting to Excell is also available.               "_s},
        {true, u"كوفانا"_s, u"موافق"_s, u"شرح بسيط"_s,
         u"                 ***          شرح موجز          ***                "_s,
         u" اللتي يحتوي عليها بنفسك و محاولة فهم طريقة إستخدامه مع مرور الوقت.  "_s,
         u" يقوم البرنامج بتمكينك من تسجيل جميع العمليات الماليه من دخل أو إنفاق "_s},
    };
    for (const auto &c : cases) {
        setLanguage(c.arabic);
        frmAbout about;
        about.load();
        EXPECT_EQ(about.rightToLeft(), c.arabic);
        EXPECT_EQ(textOf(about, "Label1") + textOf(about, "Label2"), c.title + c.title);
        EXPECT_EQ(textOf(about, "cmdOK") + textOf(about, "mnuInformation"), c.ok + c.menu);
        EXPECT_TRUE(
            textOf(about, "lblVersion").contains(QRegularExpression(u"^Version \\d+\\.\\d+\\.\\d+$"_s)));

        ScriptedDialogs dialogs;
        dialogs.expectAnyMessage().rightAligned(c.arabic);
        chooseMenu(about, "mnuInformation");
        const QStringList lines = dialogs.shown().at(0).text.split(u"\r\n"_s);
        ASSERT_EQ(lines.size(), 21); // each of the 20 has an end
        EXPECT_EQ(lines.at(0), c.heading);
        EXPECT_TRUE(lines.contains(c.practice) && lines.contains(c.excel) && lines.at(20).isEmpty());
        for (int i = 0; i < 20; ++i)
            EXPECT_FALSE(lines.at(i).isEmpty()) << i;
        click(about, "cmdOK");
        EXPECT_FALSE(about.isLoaded());

        frmInformation information;
        information.showModeless();
        const auto &text = control<QPlainTextEdit>(information, "Text1");
        const QString shown = text.toPlainText();
        EXPECT_TRUE(text.isReadOnly() && shown.startsWith(c.heading) &&
                    shown.trimmed().endsWith(c.practice.trimmed()));
        EXPECT_LE(shown.count(u'\n'), 50);
        information.resize(900, 500);
        serveEvents();
        const QSize surface = information.surface()->size();
        EXPECT_TRUE(text.width() > surface.width() - 80 && text.height() > surface.height() - 80);
        chooseMenu(information, "mnuExit");
        EXPECT_FALSE(information.isLoaded());
    }
}

TEST_F(AboutTest, HasAPictureForEverySizeOfTheIcon)
{
    for (const int side : {16, 24, 32, 48, 64, 128, 256})
        EXPECT_EQ(programIcon().pixmap(side).size(), QSize(side, side));
    EXPECT_EQ(programPicture().size(), QSize(256, 256));
}

} // namespace
