#include "platform/ui/wait.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "utilities/frmAbout.h"
#include "utilities/frmDateConversion.h"
#include "utilities/frmSelectDates.h"
#include "utilities/guide_window.h"

#include <QtGui/QTextBlock>
#include <QtGui/QWindow>
#include <QtTest/QtTest>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTextBrowser>

namespace
{

class GuideTest : public SessionFixture
{
protected:
    GuideTest() { Screen::setHelp(showGuide); }
    ~GuideTest() override { Screen::setHelp({}); }

    static Screen *guide()
    {
        for (Screen *screen : Screen::loadedScreens()) {
            if (screen->objectName() == u"GuideWindow"_s)
                return screen;
        }
        return nullptr;
    }
    static QTextBrowser &page() { return control<QTextBrowser>(*guide(), "page"); }
    static QString pageName() { return page().source().path(); }
};

TEST_F(GuideTest, OpensAtTheScreensPageInItsLanguageAndGoesOnFromThere)
{
    for (const bool arabic : {false, true}) {
        setLanguage(arabic);
        const QString folder = arabic ? u"/guide/ar/"_s : u"/guide/en/"_s;
        frmDateConversion screen;
        screen.showModeless();
        pressKey(screen, Qt::Key_F1);
        ASSERT_NE(guide(), nullptr);
        EXPECT_EQ(pageName(), folder + u"dates.md"_s);
        EXPECT_EQ(guide()->rightToLeft(), arabic);
        const QTextDocument &text = *page().document();
        EXPECT_EQ(text.firstBlock().text(), arabic ? u"تحويل التواريخ"_s : u"Converting dates"_s);
        for (QTextBlock block = text.begin(); block.isValid(); block = block.next())
            EXPECT_EQ(block.textDirection() == Qt::RightToLeft, arabic) << qPrintable(block.text());

        fill(*guide(), "txtFind", u"30/02/1425\n"_s);
        EXPECT_EQ(page().textCursor().selectedText(), u"30/02/1425"_s);
        click(*guide(), "cmdContents");
        EXPECT_EQ(pageName(), folder + u"index.md"_s);
        click(*guide(), "cmdBack");
        EXPECT_EQ(pageName(), folder + u"dates.md"_s);
        pressKey(*guide(), Qt::Key_F1);
        EXPECT_EQ(pageName(), folder + u"index.md"_s);
        if (arabic)
            pressKey(*guide(), Qt::Key_Escape);
        else // left open, it turns with the session's language
            EXPECT_TRUE(guide()->isVisible());
        screen.unload();
    }
    EXPECT_EQ(guide(), nullptr);
}

TEST_F(GuideTest, TakesInputBesideAModalScreenAndThenBesideTheOthers)
{
    frmAbout about;
    about.showModeless();
    chooseMenu(about, "mnuGuide");
    onModal<frmSelectDates>([](frmSelectDates &dates) {
        pressKey(dates, Qt::Key_F1);
        EXPECT_EQ(pageName(), u"/guide/en/browsing.md"_s);
        for (const int width : {900, 650}) { // its pictures are wider
            guide()->resize(width, 400);
            serveEvents();
            EXPECT_EQ(page().horizontalScrollBar()->maximum(), 0);
        }
        // Through the window, as the system would: a modal screen keeps that from the others.
        const auto &contents = control<QPushButton>(*guide(), "cmdContents");
        QTest::mouseClick(guide()->windowHandle(), Qt::LeftButton, {},
                          contents.mapTo(guide(), contents.rect().center()));
        EXPECT_EQ(pageName(), u"/guide/en/index.md"_s);
        click(dates, "cmdCancel");
    });
    frmSelectDates dates;
    dates.showModal();
    pressKey(about, Qt::Key_F1);
    EXPECT_EQ(guide()->windowHandle()->transientParent(), nullptr);
    click(*guide(), "cmdClose");
    click(about, "cmdOK");
}

} // namespace
