#include "core/navigation.h"
#include "platform/ui/controls.h"
#include "shell/frmMain.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "users/frmChanges.h"

#include <QtGui/QAction>
#include <QtGui/QStatusTipEvent>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStatusBar>

namespace
{

class MainScreenTest : public StoreFixture
{
protected:
    MainScreenTest()
    {
        engine.currentUser = u"agent"_s;
        addUser();
        screen.load();
    }
    frmMain screen;
};

TEST_F(MainScreenTest, OpensTheEntryOverAFitFamilyOnly)
{
    QString opened;
    navigation.showRevenue = [&] { opened += u"revenue "_s; };
    navigation.showExpense = [&] { opened += u"expense "_s; };
    navigation.showChanges = [&] { opened += u"changes "_s; };
    ScriptedDialogs dialogs;
    dialogs.expectMessage(u"The family members information is not valid, please correct the problem!"_s)
        .rightAligned(false);
    click(screen, "Command1");
    engine.isArabic = true;
    dialogs.expectMessage(u"معلومات أفراد العائله غير صحيحه أو ناقصه.  يجب إصلاح ذلك أولاً!ً"_s)
        .withIcon(MessageIcon::Critical)
        .rightAligned();
    click(screen, "Command2");
    addMember({.name = u"Ahmad"_s});
    addMember({.name = u"Salih"_s});
    for (const char *button : {"Command1", "Command2", "Command3", "Command5"})
        click(screen, button); // reports come with a later version
    EXPECT_EQ(opened, u"expense revenue changes "_s);
}

TEST_F(MainScreenTest, ChangesItsWordsWithTheLanguageButNotItsPlaces)
{
    const auto *statusText = control<QStatusBar>(screen, "StatusBar1").findChild<QLabel *>();
    // Direction, check and words, in both languages.
    const auto look = [&] {
        EXPECT_EQ(control<QAction>(screen, "mnuArabic").isChecked(), engine.isArabic);
        EXPECT_EQ(control<QAction>(screen, "mnuEnglish").isChecked(), !engine.isArabic);
        for (const QObject *object : controlsOf(screen)) {
            EXPECT_TRUE(!object->isWidgetType() || rightToLeftOf(object) == engine.isArabic)
                << object->objectName().toStdString();
        }
        EXPECT_EQ(screen.rightToLeft(), engine.isArabic);
        return QStringList{screen.caption(), textOf(screen, "Command1"), textOf(screen, "mnuHelp"),
                           textOf(screen, "mnuCompact"), statusText->text()}
            .join(u'|');
    };
    const QString english = u"Main Menu|Expenses|Help|Compact Database|User: agent"_s;
    const QString arabic = u"صفحة الإختيارات|المصاريف|مساعده|صيانة قاعدة البيانات|المستخدم: agent"_s;
    const QPoint place = control(screen, "Command1").pos();
    frmChanges other; // keeps its language until it is loaded again
    other.load();
    QStatusTipEvent hover((QString())); // as on the way through a menu
    QCoreApplication::sendEvent(&screen, &hover);
    EXPECT_EQ(look(), english);

    execute({u"update users set [language]='other'"_s});
    chooseMenu(screen, "mnuEnglish"); // in force already: nothing is written
    EXPECT_EQ(rows(u"select [language] from users"_s), QStringList(u"other"_s));
    for (int round = 0; round < 2; ++round) {
        chooseMenu(screen, "mnuArabic");
        EXPECT_EQ(look(), arabic);
        EXPECT_EQ(rows(u"select [language] from users"_s), QStringList(u"arabic"_s));
        EXPECT_EQ(textOf(other, "Command2"), u"Family Members"_s);
        EXPECT_FALSE(other.rightToLeft() || control(other, "Command2").isRightToLeft());
        chooseMenu(screen, "mnuEnglish");
        EXPECT_EQ(look(), english);
        EXPECT_EQ(rows(u"select [language] from users"_s), QStringList(u"english"_s));
    }
    EXPECT_EQ(Screen::loadedScreens(), (QList<Screen *>{&screen, &other})) << "a second instance stayed";
    EXPECT_EQ(control(screen, "Command1").pos(), place);
    engine.currentUser = u"nobody's"_s; // the statement fails: ignored
    chooseMenu(screen, "mnuArabic");
    EXPECT_EQ(textOf(screen, "Command1"), u"المصاريف"_s);
    EXPECT_EQ(engine.languageSuffix, u"ar"_s);
}

TEST_F(MainScreenTest, StoresTheChosenFontAndHoldsTheSessionAtTwelve)
{
    ScriptedDialogs dialogs;
    dialogs.expectFont(std::nullopt); // cancelled: silent
    chooseMenu(screen, "mnuFont");
    dialogs.expectFont(FontChoice{u"Tahoma"_s, 12, false, 255});
    chooseMenu(screen, "mnuFont");
    dialogs.expectFont(FontChoice{u"It's"_s, 9, true, 0});
    dialogs.expectAnyMessage(); // the statement's failure, trapped
    chooseMenu(screen, "mnuFont");
    EXPECT_EQ(rows(u"select fontname,fontsize,fontbold,fontcolor from users"_s),
              QStringList(u"Tahoma|12|False|255"_s));
    dialogs.expectFont(FontChoice{u"Tahoma"_s, 13, true, 0});
    dialogs.expectMessage(
        u"You have chosen a font size that is too large! 12 is good\r\nلقد إخترت مقاساً كبيراً جداً للحرف وسيصعٍب القرآه أي مقاس أكبر من 12"_s);
    chooseMenu(screen, "mnuFont");
    EXPECT_EQ(engine.userFontSize, 12);
    EXPECT_EQ(rows(u"select fontsize,fontbold from users"_s), QStringList(u"13|True"_s));
}

TEST_F(MainScreenTest, CompactsAndStamps)
{
    setClock([] { return makeDate(2004, 3, 15, 13, 5); });
    ScriptedDialogs dialogs;
    const QString wait =
        u"Please wait..  database is being maintained\r\n\r\nفضلا إنتظر قليلا حتى تتم صيانة قاعدة البيانات"_s;
    dialogs.expectMessage(wait);
    dialogs.expectMessage(u"Successful\r\nتمت العمليه بنجاح"_s);
    chooseMenu(screen, "mnuCompact");
    EXPECT_EQ(rows(u"select lastcompacted from settings"_s), QStringList(u"15/03/2004"_s));
    engine.compactTempPath = folder() + u"/none/x.mdb"_s;
    dialogs.expectMessage(wait);
    dialogs.expectUntrapped(u"76"_s, u"Path not found"_s);
    EXPECT_TRUE(processEnded(1, [&] { chooseMenu(screen, "mnuCompact"); }));
}

/// Asked for what was typed, it looks whether the store can still take it.
class TypedScreen : public Screen
{
public:
    using Screen::Screen;
    void saveTyped() override { saved = engine.dbConnection != nullptr; }
    bool saved = false;
};

TEST_F(MainScreenTest, AsksForWhatWasTypedAndClosesEverything)
{
    TypedScreen other(u"frmOther"_s);
    other.load();
    engine.dbConnection->beginTrans(); // closing fails now: ignored
    click(screen, "Command4");
    EXPECT_EQ(engine.dbConnection, nullptr);
    EXPECT_TRUE(other.saved && Screen::loadedScreens().isEmpty());
}

} // namespace
