#include "tutorial/tutorial_mode.h"

#include "core/engine.h"
#include "core/typed_input.h"
#include "family/check_family.h"
#include "platform/runtime/files.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/hourglass.h"
#include "store/create_store.h"
#include "tutorial/frmGenerateData.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

QString inLanguage(const QString &english, const QString &arabic)
{
    return engine.isArabic ? arabic : english;
}

/// Every row or none.
void copyMembers(Recordset &members)
{
    const ConnectionPtr store = Connection::create();
    store->open(engine.testConnectionString);
    const RecordsetPtr copies = Recordset::create();
    copies->open(u"members"_s, store, CursorType::Keyset, LockType::Optimistic, CommandKind::Table);
    store->beginTrans();
    for (; !members.eof(); members.moveNext()) {
        copies->addNew();
        for (int field = 0; field < members.fieldCount(); ++field)
            copies->setValue(members.field(field).name, members.value(field));
        copies->update();
    }
    store->commitTrans();
    copies->close();
    store->close();
}

/// Makes the test store of the family's valid members; False when it could not be made, which has been told.
bool makeTestStore(Recordset &members)
{
    const Hourglass hourglass;
    if (!CreateStore(u"testdb"_s, engine.storePassword)) {
        showMessage(inLanguage(u"db creation failed.. try again later"_s,
                               u"فشل البرنامج في إنشاء قاعدة البيانات!"_s));
        return false;
    }
    try {
        copyMembers(members);
    } catch (const RuntimeError &) {
        ignoringErrors([] { deleteFile(engine.testStorePath); }); // a store without its family is of no use
        throw;
    }
    return true;
}

void turnToTestStore(const std::function<void()> &modeChanged)
{
    engine.tutorialMode = true;
    modeChanged();
    try {
        const Hourglass hourglass;
        attachStore(engine.testConnectionString);
    } catch (const RuntimeError &) {
        engine.tutorialMode = false;
        modeChanged();
        throw;
    }
}

void offerGenerator()
{
    engine.noticeText =
        inLanguage(u"You can now generate data automatically "
                   "to practice the program, do you want to do it now?"_s,
                   u"تستطيع الآن تكوين معلومات وههميه بمساعدة البرنامج لكي تتعود على إستخدامه,\n"
                   "هل تريد القيام بذلك الآن؟                                              "_s);
    if (!askYesNo(engine.noticeText))
        return;
    if (CheckFamily()) {
        theScreen<frmGenerateData>().showModal();
    } else {
        showMessage(inLanguage(u"The family members information is not valid, please correct the problem!"_s,
                               u"معلومات أفراد العائله غير صحيحه أو ناقصه.  يجب إصلاح ذلك أولاً!ً"_s));
    }
}

void start(const std::function<void()> &modeChanged)
{
    if (!CheckFamily()) {
        showMessage(inLanguage(u"You have to create family members in order to use this exercise"_s,
                               u"يتوجًب عليك إدخال أفراد العائله لكي تبدأ هذا التمرين"_s));
        return;
    }
    const RecordsetPtr members = Recordset::create();
    members->setCursorLocation(CursorLocation::Client);
    members->open(u"select * from members where valid=true "_s, engine.dbConnection, CursorType::Static,
                  LockType::Optimistic);
    if (fileExists(engine.testStorePath) &&
        askYesNo(inLanguage(
            u"Do you want to delete the existing Tutorial database and creaet a new one from scratch?"_s,
            u"هل تريد حذف قاعدة البيانات التدريبيه الموجوده الآن وإنشاء قاعدة بيانات جديده بالكامل؟"_s)))
        deleteFile(engine.testStorePath);
    // A store that the user keeps stays as it is, with its old members and transactions.
    if (!fileExists(engine.testStorePath) && !makeTestStore(*members))
        return;
    members->close();
    turnToTestStore(modeChanged);
    offerGenerator();
}

} // namespace

void showTutorialIntroduction()
{
    const QStringList english{
        u"This tool will enable you to create automatically generated transactions that "_s,
        u"will enable you to examine this program and all of its functions.  You can  "_s,
        u"use this exercise to generate several hundreds of transactions after you have "_s,
        u"entered the family members information and when you have decided to enter valid"_s,
        u"transactions, you can stop the Tutorial.                                      "_s};
    const QStringList arabic{u"بإمكانك التدرًب على هذا البرنامج قبل الإستخدام الفعلي له عن طريق تكوين"_s,
                             u"معلومات وهميه سوف يقوم البرنامج بتكوينها لك بعد إدخال أفراد العائله "_s};
    showMessage((engine.isArabic ? arabic : english).join(u"\r\n"_s));
}

void startTutorial(const std::function<void()> &modeChanged)
{
    try {
        start(modeChanged);
    } catch (const RuntimeError &failure) {
        showMessage(QString::number(failure.number()) + u" -> "_s + failure.description());
    }
}

void generateData()
{
    if (engine.tutorialMode)
        theScreen<frmGenerateData>().showModeless();
    else
        showMessage(inLanguage(u"You have to Start the tutorial first!"_s, u"يجب أن تبدأ التمرين أولاً!"_s));
}

void stopTutorial(const std::function<void()> &modeChanged)
{
    const QList<Screen *> loaded = Screen::loadedScreens();
    for (Screen *screen : loaded) {
        if (qobject_cast<frmGenerateData *>(screen))
            screen->unload();
    }
    engine.tutorialMode = false;
    modeChanged();
    attachStore(engine.connectionString);
}

void attachStore(const QString &connectionString)
{
    saveTypedInput();
    Connection &store = *engine.dbConnection;
    const QString before = store.isOpen() ? store.connectionString() : QString();
    if (store.isOpen())
        store.close();
    try {
        store.open(connectionString);
    } catch (const RuntimeError &) {
        if (!before.isEmpty())
            ignoringErrors([&] { store.open(before); });
        throw;
    }
}
