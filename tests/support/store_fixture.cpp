#include "support/store_fixture.h"

#include "core/navigation.h"
#include "core/program_place.h"
#include "platform/database/recordset.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/runtime_error.h"
#include "store/connection_strings.h"
#include "store/schema.h"
#include "support/scripted_dialogs.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

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

QByteArray SessionFixture::bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

QStringList SessionFixture::rows(const QString &sql)
{
    const RecordsetPtr set = Recordset::create();
    set->open(sql, engine.connectionString, CursorType::Static);
    QStringList lines;
    for (; !set->eof(); set->moveNext()) {
        QStringList values;
        for (int field = 0; field < set->fieldCount(); ++field) {
            const Value value = set->value(field);
            values += value.isNull() ? u"(null)"_s : value.toText();
        }
        lines += values.join(u'|');
    }
    set->close();
    return lines;
}

QStringList SessionFixture::shellRows(const QString &sql, const QString &path)
{
    QProcess shell;
    shell.start(u"sqlcipher"_s,
                {u"-batch"_s, u"-init"_s, u"/dev/null"_s, u"-nullvalue"_s, u"(null)"_s, path});
    const QString script = u"PRAGMA key = 'romanqvlt';\nPRAGMA cipher_page_size = 4096;\n"
                           "PRAGMA kdf_iter = 64000;\nPRAGMA cipher_hmac_algorithm = HMAC_SHA1;\n"
                           "PRAGMA cipher_kdf_algorithm = PBKDF2_HMAC_SHA1;\n"_s +
                           sql + u";\n"_s;
    shell.write(script.toUtf8());
    shell.closeWriteChannel();
    if (!shell.waitForFinished() || shell.exitCode() != 0)
        ADD_FAILURE() << "sqlcipher: " << shell.readAllStandardError().toStdString();
    QStringList lines = QString::fromUtf8(shell.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    lines.removeAll(u"ok"_s); // what a newer shell answers to the key
    return lines;
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
