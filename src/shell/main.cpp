#include "shell/main.h"

#include "core/engine.h"
#include "core/program_icon.h"
#include "core/program_place.h"
#include "platform/database/errors.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/files.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/process.h"
#include "presentation/vocabulary.h"
#include "shell/frmLogin.h"
#include "shell/frmMain.h"
#include "shell/maintenance.h"
#include "shell/openers.h"
#include "store/connection_strings.h"
#include "store/create_store.h"

#include <QtWidgets/QApplication>

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString programKey = u"Software\\Lomvex\\quvana"_s;
constexpr qint64 daysBetweenCompactions = 30;

void rollBackOpenTransaction()
{
    if (engine.dbConnection && engine.dbConnection->inTransaction())
        ignoringErrors([] { engine.dbConnection->rollbackTrans(); });
}

void createStoreOrEnd()
{
    if (engine.dbConnection->isOpen())
        engine.dbConnection->close();
    if (CreateStore(engine.exeName, engine.storePassword))
        return;
    showMessage(engine.isArabic ? u"فشل البرنامج في إنشاء قاعدة البيانات!"_s
                                : u"db creation failed.. try again later"_s);
    endProcess(1);
}

/// A new store where none is. False when the user wants none in the place of a lost one.
bool provideStore(bool firstRun)
{
    if (fileExists(engine.storeFilePath))
        return true;
    if (firstRun) {
        createStoreOrEnd();
        // The start opens the connection once more behind this, and so ends here: that is meant.
        engine.dbConnection->open(engine.connectionString);
        return true;
    }
    showMessage(u"Database CANNOT BE FOUND! CANNOT continue "_s + u"\r\n"_s +
                u"قاعدة البيانات ليست في مكانها المعهود   حصل خطأ جسيم ولن يستطيع البرنامج الإكمال"_s);
    if (!askYesNo(
            u"Do you want to create a new Database from scratch?  هل ترغب في إنشاء قاعدة بيانات جديده ؟"_s))
        return false;
    createStoreOrEnd();
    return true;
}

/// Without a date of the last compaction today's is taken and the row is repaired.
void repairLastCompacted(bool hasRow)
{
    engine.lastCompacted = today();
    const QString stamp = generalDate(engine.lastCompacted);
    if (hasRow)
        engine.dbConnection->execute(u"update settings set lastcompacted='"_s + stamp + u"'"_s);
    else
        // The number begins with 1 here and with 0 in a store that is made whole: both are meant.
        engine.dbConnection->execute(u"insert into settings (lastcompacted,desceased,sn) values ('"_s +
                                     stamp + u"','غير معروف',1)"_s);
}

void openSettings(const QString &statement)
{
    engine.rsShared = Recordset::create();
    engine.rsShared->setCursorType(CursorType::Static);
    engine.rsShared->open(statement, engine.connectionString, CursorType::Static);
}

/// Opens `rsShared` on the settings. A date of the last compaction that another program has spoiled would
/// fail the reading of the whole row: it is repaired first.
void openSettings()
{
    try {
        openSettings(u"select * from settings"_s);
    } catch (const RuntimeError &) {
        try {
            openSettings(u"select lastcompacted from settings"_s);
        } catch (const RuntimeError &failure) {
            if (failure.number() != data_errors::multipleStep().number())
                throw;
            repairLastCompacted(true);
            return openSettings(u"select * from settings"_s);
        }
        throw; // something else is unreadable
    }
}

void readSettings()
{
    openSettings();
    const bool hasRow = engine.rsShared->recordCount() > 0;
    Value lastCompacted;
    if (hasRow) {
        engine.deceasedName = engine.rsShared->value(u"desceased"_s).toText();
        lastCompacted = engine.rsShared->value(u"lastcompacted"_s);
    }
    if (lastCompacted.isNull())
        repairLastCompacted(hasRow);
    else
        engine.lastCompacted = lastCompacted.toDate();
    engine.rsShared->close();
    engine.rsShared.reset();
}

void logIn()
{
    frmLogin login;
    login.showModal();
    if (!login.LoginSucceeded)
        endProcess();
    login.unload();
}

} // namespace

void Main()
{
    setUntrappedHook(rollBackOpenTransaction);
    installOpeners();
    QApplication::setWindowIcon(programIcon());
    locateProgram();
    deriveSessionPaths();
    engine.dbConnection = Connection::create();
    const bool firstRun = !KeyExists(programKey);
    if (!provideStore(firstRun))
        return;
    engine.dbConnection->open(engine.connectionString);
    if (firstRun)
        CreateProgramKey(programKey);
    if (engine.isArabic)
        setProgramTitle(translate(programTitle()));
    readSettings();
    if (daysBetween(engine.lastCompacted, today()) >= daysBetweenCompactions)
        maintainStore();
    logIn();
    auto *mainScreen = new frmMain;
    engine.mainScreen = mainScreen;
    mainScreen->load();
    mainScreen->showModeless();
}
