#include "core/program_icon.h"
#include "platform/ui/wait.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "utilities/frmAbout.h"
#include "utilities/frmInformation.h"

#include <QtWidgets/QPlainTextEdit>

namespace
{

using AboutTest = SessionFixture;

TEST_F(AboutTest, TellsThePlainFactsInBothLanguages)
{
    const struct {
        bool arabic;
        QString name, heading, practice, excel;
    } cases[] = {
        {false, u"Quvana"_s, u"             ***          Brief Description        ***            "_s,
         u"need to spend some time to get familiar with it.                    "_s,
         u"Reporting and exporting to Excell is also available.               "_s},
        {true, u"كوفانا"_s, u"                 ***          شرح موجز          ***                "_s,
         u" اللتي يحتوي عليها بنفسك و محاولة فهم طريقة إستخدامه مع مرور الوقت.  "_s,
         u" يقوم البرنامج بتمكينك من تسجيل جميع العمليات الماليه من دخل أو إنفاق "_s},
    };
    for (const auto &c : cases) {
        setLanguage(c.arabic);
        frmAbout about;
        about.load();
        EXPECT_EQ(about.rightToLeft(), c.arabic);
        EXPECT_EQ(textOf(about, "Label1") + textOf(about, "Label2"), c.name + c.name);
        EXPECT_TRUE(
            textOf(about, "lblVersion").contains(QRegularExpression(u"^Version \\d+\\.\\d+\\.\\d+$"_s)));

        ScriptedDialogs dialogs;
        dialogs.expectAnyMessage().rightAligned(c.arabic);
        chooseMenu(about, "mnuInformation");
        const QStringList lines = dialogs.shown().at(0).text.split(u"\r\n"_s);
        ASSERT_EQ(lines.size(), 21); // each of the 20 has an end
        EXPECT_EQ(lines.at(0), c.heading);
        EXPECT_TRUE(lines.contains(c.practice) && lines.contains(c.excel) && lines.at(20).isEmpty());
        EXPECT_EQ(lines.count(QString()), 1);
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
