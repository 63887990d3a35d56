#include "place.h"

#include "core/engine.h"
#include "store/connection_strings.h"
#include "store/create_store.h"

#include <QtCore/QFile>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

const QString benchPassword = u"romanqvlt"_s;

SilentDialogs::SilentDialogs()
{
    installDialogService(this);
}

SilentDialogs::~SilentDialogs()
{
    installDialogService(nullptr);
}

MessageAnswer SilentDialogs::message(const MessageRequest &request)
{
    return request.buttons == MessageButtons::YesNo ? MessageAnswer::Yes : MessageAnswer::Ok;
}

Place::Place(const QString &folder, const QString &store, const QStringList &members)
{
    engine = {};
    engine.appPath = folder;
    engine.storeFilePath = folder + u'/' + store + u".mdb"_s;
    engine.connectionString = connectionStringOf(engine.storeFilePath, benchPassword);
    engine.currentUser = u"agent"_s;
    engine.userRank = 1;
    engine.languageSuffix = u"en"_s;
    const bool isThere = QFile::exists(engine.storeFilePath);
    if (!isThere && !CreateStore(store, benchPassword))
        throw std::runtime_error("the store could not be made");
    engine.dbConnection = Connection::create();
    engine.dbConnection->open(engine.connectionString);
    if (isThere)
        return;
    for (const QString &member : members) {
        engine.dbConnection->execute(u"insert into members (name,sex,relation,[group],valid) values('"_s +
                                     member + u"',1,2,1,true)"_s);
    }
}

Place::~Place()
{
    if (engine.dbConnection->isOpen())
        engine.dbConnection->close();
    engine = {};
}

void Place::reopen() const
{
    if (engine.dbConnection->isOpen())
        engine.dbConnection->close();
    engine.dbConnection->open(engine.connectionString);
}

int countOf(const QString &table)
{
    const auto rows = Recordset::create();
    rows->open(u"select count(*) as x from ["_s + table + u']', engine.dbConnection);
    return rows->value(0).toInt();
}
