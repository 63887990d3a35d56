#include "store/connection_strings.h"

#include "core/engine.h"

using namespace Qt::Literals::StringLiterals;

QString connectionStringOf(const QString &path, const QString &password, const QString &options)
{
    return u"Provider=Microsoft.Jet.OLEDB.4.0"_s + u";Data Source="_s + path + options +
           u";Jet OLEDB:Database Password="_s + password;
}

void deriveSessionPaths()
{
    engine.testStorePath = engine.appPath + u"/testdb.mdb"_s;
    engine.storeFilePath = engine.appPath + u'/' + engine.exeName + u".mdb"_s;
    engine.storePassword = u"romanqvlt"_s;
    engine.activeStorePath = engine.storeFilePath;
    engine.currentUser = u"TEST"_s;
    engine.userRank = 10;
    engine.compactTempPath = engine.appPath + u'/' + engine.exeName + u"x.mdb"_s;
    engine.connectionString = connectionStringOf(engine.activeStorePath, engine.storePassword);
    engine.testConnectionString = connectionStringOf(engine.testStorePath, engine.storePassword);
}
