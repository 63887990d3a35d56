#include "platform/database/connection.h"

#include "platform/database/connection_string.h"
#include "platform/database/errors.h"
#include "platform/database/recordset.h"
#include "platform/database/session.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

struct Connection::Private {
    QString connectionString;
    std::unique_ptr<database::Session> session; // none: closed
    CursorLocation cursorLocation = CursorLocation::Server;
    std::vector<std::weak_ptr<Recordset>> recordsets; // those that were opened on this connection
};

Connection::Connection() : d(std::make_unique<Private>()) {}

Connection::~Connection() = default; // an open transaction is rolled back

std::shared_ptr<Connection> Connection::create()
{
    return std::shared_ptr<Connection>(new Connection);
}

void Connection::open(const QString &connectionString)
{
    if (d->session)
        throw data_errors::objectOpen();
    const auto parts = database::ConnectionString::parse(connectionString);
    d->session = std::make_unique<database::Session>(parts.path, parts.password);
    d->connectionString = connectionString;
}

void Connection::close()
{
    if (session().inTransaction())
        throw data_errors::closedInTransaction();
    std::vector<RecordsetPtr> recordsets;
    for (const auto &entry : std::exchange(d->recordsets, {})) {
        if (const RecordsetPtr recordset = entry.lock())
            recordsets.push_back(recordset);
    }
    for (const RecordsetPtr &recordset : recordsets)
        recordset->connectionClosed();
    d->session.reset();
    for (const RecordsetPtr &recordset : recordsets) // behind the close: a handler may open anew
        recordset->rowsChanged.raise();
}

int Connection::state() const noexcept
{
    return d->session ? stateOpen : stateClosed;
}

const QString &Connection::connectionString() const noexcept
{
    return d->connectionString;
}

void Connection::execute(const QString &sql)
{
    session().run(*session().compile(sql));
}

void Connection::beginTrans()
{
    session().begin();
}

void Connection::commitTrans()
{
    session().commit();
}

void Connection::rollbackTrans()
{
    session().rollback();
}

bool Connection::inTransaction() const noexcept
{
    return d->session && d->session->inTransaction();
}

CursorLocation Connection::cursorLocation() const noexcept
{
    return d->cursorLocation;
}

void Connection::setCursorLocation(CursorLocation location) noexcept
{
    d->cursorLocation = location;
}

std::vector<SchemaTable> Connection::schemaTables()
{
    database::Run run(session().prepared("select name, name like 'sqlite!_%' escape '!' or "
                                         "name like 'system!_%' escape '!' as helper "
                                         "from sqlite_master where type = 'table' "
                                         "order by helper desc, name collate nocase"),
                      {});
    std::vector<SchemaTable> tables;
    while (run.next()) {
        const bool helper = run.column(1) == sql::Parameter(qint64(1));
        tables.push_back({QString::fromUtf8(run.text(0)), helper ? u"SYSTEM TABLE"_s : u"TABLE"_s});
    }
    return tables;
}

database::Session &Connection::session()
{
    if (!d->session)
        throw data_errors::objectClosed();
    return *d->session;
}

void Connection::attach(const std::shared_ptr<Recordset> &recordset)
{
    std::erase_if(d->recordsets, [&](const auto &entry) {
        const auto other = entry.lock();
        return !other || other == recordset;
    });
    d->recordsets.push_back(recordset);
}
