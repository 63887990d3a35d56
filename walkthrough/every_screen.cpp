#include "every_screen.h"

#include "browser/frmUniversalGrid.h"
#include "core/engine.h"
#include "entry/frmExpense.h"
#include "entry/frmRevenue.h"
#include "family/frmMembers.h"
#include "hand.h"
#include "platform/ui/controls.h"
#include "platform/ui/wait.h"
#include "player.h"
#include "presentation/prepare_screen.h"
#include "shell/frmLogin.h"
#include "shell/frmMain.h"
#include "statements/frmGStatement.h"
#include "statements/frmReports.h"
#include "statements/frmStatement.h"
#include "tutorial/frmGenerateData.h"
#include "tutorial/tutorial_mode.h"
#include "users/frmChangePassword.h"
#include "users/frmChanges.h"
#include "users/frmNewUser.h"
#include "users/frmUsers.h"
#include "utilities/frmAbout.h"
#include "utilities/frmDateConversion.h"
#include "utilities/frmInformation.h"
#include "utilities/frmSelectDates.h"
#include "utilities/guide_window.h"

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QTimer>

using namespace Qt::Literals::StringLiterals;

namespace
{

void visitShown(Screen &screen, const Visit &visit, const QString &variant = {})
{
    serveEvents();
    visit(screen, screen.objectName() + variant);
}

/// Loads an instance of its own and drops it without unloading: the main screen's unload would close the
/// store.
template <typename Class>
void visitScreen(const Visit &visit, const QString &variant = {})
{
    Class screen;
    screen.load();
    screen.showModeless();
    visitShown(screen, visit, variant);
}

/// Fills the tables of the browsers so far that scroll bars stand.
void addRows()
{
    const auto add = [](const QString &table, const QString &columns, const QString &values) {
        engine.dbConnection->execute(u"insert into %1 (%2) values (%3)"_s.arg(table, columns, values));
    };
    const QString note = engine.isArabic ? u"إصلاح سقف العمارة رقم 14 (الدور 2)"_s
                                         : u"Repair of the roof of house 14 (2nd floor)"_s;
    double amount = 0.5;
    for (int i = 0; i < 40; ++i, amount *= 1.5) {
        const QString entry =
            u"%1,%2,%3,%4,'%5/11/2025 %6','21/11/2025 00:30:00','وكيل العائلة','%7','Bank 12/7','شيك',%8"_s
                .arg(QString::number(i + 3), i % 3 ? u"true"_s : u"false"_s, i % 5 ? u"true"_s : u"false"_s,
                     QString::number(amount, 'f', 4))
                .arg(i % 28 + 1)
                .arg(i % 4 ? u"00:00:00"_s : u"13:05:09"_s, note)
                .arg(i % 19 + 1);
        const QString columns = u"transactionid,creditordebit,valid,amount,ddate,enteredon,enteredby,"
                                "transactiondetail,paymentdetail,paymentmethod,gtype"_s;
        add(u"general"_s, columns, entry);
        add(u"ledger"_s, u"name,totalamount,"_s + columns,
            u"'%1',%2,%3"_s.arg(i % 2 ? u"عبد الرحمن بن صالح"_s : u"Abdulrahman"_s,
                                QString::number(amount, 'f', 4), entry));
        add(u"audit_members"_s,
            u"name,sex,title,relation,dob,[group],valid,lastupdate,updatedon,updatedby,updatetype"_s,
            u"'عبد الرحمن',1,'السيد',2,'04/07/1980',1,true,'20/11/2025 13:05:09','21/11/2025 "
            u"08:00:00','root',"
            "'update'"_s);
    }
}

/// Browsers of the given tables on more rows than the store has: those are taken back.
void visitBrowsers(const Visit &visit)
{
    engine.dbConnection->beginTrans();
    addRows();
    for (const QString &table :
         {u"ledger"_s, u"general"_s, u"audit_members"_s, u"audit_users"_s, u"audit_general"_s}) {
        engine.browseTable = table;
        visitScreen<frmUniversalGrid>(visit, u'-' + table);
    }
    engine.dbConnection->rollbackTrans();
}

/// At a page with pictures, asked for by the screen that it tells about.
void visitGuide(const Visit &visit)
{
    frmMembers asking;
    asking.load();
    asking.show();
    showGuide(asking);
    auto &guide = theScreen<GuideWindow>();
    visitShown(guide, visit);
    guide.unload();
}

/// With more users than the store has: those are taken back.
void visitUsers(const Visit &visit)
{
    engine.dbConnection->beginTrans();
    int rank = 1;
    for (const QString &user : {u"abdullah','عبد الله بن صالح"_s, u"noura','نورة بنت أحمد"_s,
                                u"bookkeeper','Bookkeeper of the family"_s})
        engine.dbConnection->execute(
            u"insert into users (userid,name,rank,lastlogin,createdon,createdby,valid) values ('%1',%2,"
            "'21/11/2025 08:00:00','20/11/2025 13:05:09','root',true)"_s.arg(user)
                .arg(rank++));
    visitScreen<frmUsers>(visit);
    engine.dbConnection->rollbackTrans();
}

/// What a statement's screen shows of its rows.
void visitPreview(const Visit &visit)
{
    frmGStatement statement;
    statement.load();
    statement.showModeless();
    hand::click(statement, "Option1_2");
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        Screen *preview = Player::screenOnTop(u"ReportPreview"_s);
        if (preview == nullptr)
            return;
        look.stop();
        visitShown(*preview, visit);
        hand::click(*preview, "cmdClose");
    });
    look.start(10);
    hand::click(statement, "cmdShow");
}

/// The statements over more rows than the store has, that of a member with an archive to choose from: all of
/// that is taken back.
void visitStatements(const Visit &visit)
{
    engine.browseTable = u"ledger"_s;
    engine.dbConnection->beginTrans();
    addRows();
    engine.dbConnection->execute(u"select * into [ledger1] from [ledger]"_s);
    engine.dbConnection->execute(u"insert into archives ([table],[archive],[interval]) "
                                 "values ('ledger','ledger1','31/12/2003 - 01/01/2003')"_s);
    visitScreen<frmStatement>(visit);
    visitScreen<frmGStatement>(visit);
    visitPreview(visit);
    engine.dbConnection->rollbackTrans();
}

/// The main screen with the tutorial's marks, and the generator in the middle of a run: on a copy of the
/// store, which goes again.
void visitTutorial(const Visit &visit)
{
    QFile::copy(engine.activeStorePath, engine.testStorePath);
    engine.tutorialMode = true;
    visitScreen<frmMain>(visit, u"-tutorial"_s);
    {
        frmGenerateData screen;
        screen.load();
        screen.showModeless();
        for (const char *label : {"Label3", "Label4"})
            setCaption(hand::find(screen, label), u"2000"_s);
        visitShown(screen, visit);
        screen.unload();
    }
    engine.tutorialMode = false;
    attachStore(engine.connectionString);
    QFile::remove(engine.testStorePath);
}

/// The login screen chooses Arabic by itself when it loads: for an English picture its own captions are put
/// back.
void visitLogin(const Visit &visit, bool arabic)
{
    frmLogin screen;
    QHash<QObject *, QString> captions;
    for (QObject *control : controlsOf(screen))
        captions.insert(control, captionOf(control));
    screen.load();
    if (!arabic) {
        engine.isArabic = false;
        for (auto it = captions.cbegin(); it != captions.cend(); ++it)
            setCaption(it.key(), it.value());
        MirrorControls(screen);
        PrepareScreen(screen);
    }
    screen.showModeless();
    visitShown(screen, visit);
}

} // namespace

void visitEveryScreen(const Look &look, const Visit &visit)
{
    const Engine before = engine; // frmLogin also sets the user: all of it is put back at the end
    engine.isArabic = look.arabic;
    engine.userFontName = u"Arial"_s;
    engine.userFontSize = look.points;
    engine.userFontBold = look.bold;
    visitLogin(visit, look.arabic);
    visitScreen<frmMain>(visit);
    visitScreen<frmNewUser>(visit);
    visitScreen<frmChanges>(visit);
    visitScreen<frmChangePassword>(visit);
    visitUsers(visit);
    visitScreen<frmMembers>(visit);
    visitScreen<frmExpense>(visit);
    visitScreen<frmRevenue>(visit);
    visitScreen<frmSelectDates>(visit);
    visitScreen<frmDateConversion>(visit);
    visitScreen<frmAbout>(visit);
    visitScreen<frmInformation>(visit);
    visitGuide(visit);
    visitScreen<frmReports>(visit);
    visitStatements(visit);
    visitBrowsers(visit);
    visitTutorial(visit);
    engine = before;
}
