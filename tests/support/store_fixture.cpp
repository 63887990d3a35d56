#include "support/store_fixture.h"

#include "core/navigation.h"
#include "core/program_place.h"
#include "platform/runtime/runtime_error.h"
#include "store/connection_strings.h"
#include "store/create_store.h"
#include "support/scripted_dialogs.h"

#include <QtCore/QFile>

#include <stdexcept>

namespace
{

/// A store fresh from CreateStore, made once for all tests of the program.
const QString &freshStore()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        const ScriptedDialogs none;
        const Engine session = engine;
        engine.appPath = folder.path();
        deriveSessionPaths();
        QString file = CreateStore(u"quvana"_s, engine.storePassword) ? engine.storeFilePath : QString();
        engine = session;
        return file;
    }();
    return path;
}

QString quoted(const QString &text)
{
    return text.isNull() ? u"null"_s : u"'"_s + QString(text).replace(u"'"_s, u"''"_s) + u"'"_s;
}

} // namespace

SessionFixture::SessionFixture()
{
    engine = {};
    navigation = {};
    setProgramPlace(m_folder.path(), u"quvana"_s, m_folder.path() + u"/quvana.ini"_s);
    locateProgram();
    deriveSessionPaths();
    engine.userFontName = u"Arial"_s;
    engine.userFontSize = 8;
    engine.userFontBold = true;
    setLanguage(false);
}

SessionFixture::~SessionFixture()
{
    engine = {};
    navigation = {};
    setClock({});
    setProgramPlace({}, {}, {});
}

void SessionFixture::setLanguage(bool arabic)
{
    engine.isArabic = arabic;
    engine.languageSuffix = arabic ? u"ar"_s : u"en"_s;
}

QStringList SessionFixture::rows(const QString &sql)
{
    const RecordsetPtr set = Recordset::create();
    set->open(sql, engine.connectionString, CursorType::Static);
    return linesOf(*set);
}

QStringList SessionFixture::shellRows(const QString &sql, const QString &path)
{
    return shellLines(path, sql);
}

StoreFixture::StoreFixture()
{
    if (!QFile::copy(freshStore(), engine.storeFilePath))
        throw std::runtime_error("no fresh store");
    engine.dbConnection = Connection::create();
    engine.dbConnection->open(engine.connectionString);
}

void StoreFixture::addMember(const TestMember &member)
{
    execute(
        {u"insert into members (name,sex,title,relation,dob,[group],valid) values (%1,%2,%3,%4,%5,%6,%7)"_s
             .arg(quoted(member.name), QString::number(member.sex), quoted(member.title),
                  QString::number(member.relation), quoted(member.dob), QString::number(member.group),
                  Value(member.valid).toText())});
}

void StoreFixture::addUser(const TestUser &user)
{
    execute(
        {u"insert into users (userid,[password],rank,[language],fontname,fontsize,fontbold,fontcolor,valid) "
         "values (%1,'secret',%2,'english','Arial','8','true',%3,%4)"_s.arg(
             quoted(user.userid), QString::number(user.rank), quoted(user.fontColor),
             Value(user.valid).toText())});
}

void StoreFixture::execute(const QStringList &statements)
{
    for (const QString &statement : statements)
        engine.dbConnection->execute(statement);
}
