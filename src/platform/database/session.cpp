#include "platform/database/session.h"

#include "platform/database/errors.h"
#include "platform/database/sql/ddl.h"

using namespace Qt::Literals::StringLiterals;

namespace database
{

namespace
{
constexpr int cachedTexts = 128;
} // namespace

Session::Session(const QString &path, const QString &password)
    : m_engine(Engine::open(path, password)), m_compiled(cachedTexts), m_prepared(cachedTexts)
{
    readCatalog();
}

Session::~Session() = default; // the statements end before the engine's handle does; that rolls back

void Session::readCatalog()
{
    m_compiled.clear();
    m_prepared.clear();
    m_catalog = sql::readCatalog(m_engine.handle());
}

Session::CompiledPtr Session::compile(const QString &text)
{
    if (const CompiledPtr *known = m_compiled.object(text))
        return *known;
    auto compiled = std::make_shared<const sql::Compiled>(sql::compile(text, m_catalog));
    m_compiled.insert(text, new CompiledPtr(compiled));
    return compiled;
}

Session::CompiledPtr Session::compileTable(const QString &table)
{
    return std::make_shared<const sql::Compiled>(sql::compileTable(table, m_catalog));
}

Statement &Session::prepared(const QByteArray &text)
{
    if (Statement *known = m_prepared.object(text))
        return *known;
    auto statement = std::make_unique<Statement>(m_engine.handle(), text);
    Statement &result = *statement;
    m_prepared.insert(text, statement.release());
    return result;
}

void Session::run(const sql::Step &step)
{
    Run(prepared(step.text), step.parameters).next();
}

void Session::run(const sql::Compiled &compiled)
{
    if (compiled.kind == sql::StatementKind::Select) {
        run(compiled.steps.front());
        return;
    }
    if (!compiled.changesSchema) {
        write(compiled.steps);
        return;
    }
    m_prepared.clear();
    try {
        m_schemaChanged = true;
        write(compiled.steps);
    } catch (const RuntimeError &) {
        ignoringErrors([this] { readCatalog(); });
        throw;
    }
    readCatalog();
}

// --- transactions

// A write behind a transaction that the engine has rolled back would stand alone.
void Session::requireWritable() const
{
    if (isLost())
        throw data_errors::engineFailure(u"The transaction has been rolled back by an earlier failure."_s);
}

void Session::write(const std::vector<sql::Step> &steps)
{
    requireWritable();
    const bool inside = inTransaction();
    if (!inside)
        m_transaction = Transaction::None; // a failed commit is of the past
    if (steps.size() == 1)
        run(steps.front()); // the engine itself makes one statement whole
    else if (!inside)
        writeBetween("begin immediate", steps, "commit");
    else if (steps.size() == 2 && steps.front().text == sql::drawCounterStep({}).text)
        writeDrawn(steps);
    else
        writeBetween("savepoint work", steps, "release work");
}

void Session::writeBetween(const char *start, const std::vector<sql::Step> &steps, const char *end)
{
    run(sql::Step{start, {}});
    try {
        for (const sql::Step &step : steps)
            run(step);
        run(sql::Step{end, {}});
    } catch (const RuntimeError &) {
        undo();
        throw;
    }
}

// Undoes the work of writeBetween(), unless the engine has rolled everything back already.
void Session::undo() noexcept
{
    if (m_engine.autocommit())
        return;
    ignoringErrors([this] {
        if (inTransaction()) {
            m_engine.run("rollback to work");
            m_engine.run("release work");
        } else {
            m_engine.run("rollback");
        }
    });
}

// A new row behind the number drawn for it, inside a transaction. A savepoint would copy every page that the
// row touches and cost ten times the row itself; but only the number has to be given back when the row is
// refused.
void Session::writeDrawn(const std::vector<sql::Step> &steps)
{
    run(steps[0]);
    try {
        run(steps[1]);
    } catch (const RuntimeError &) {
        if (!m_engine.autocommit())
            run(sql::undrawCounterStep(steps[0]));
        throw;
    }
}

void Session::begin()
{
    if (inTransaction())
        throw data_errors::notAllowedInContext(); // one level
    try {
        run(sql::Step{"begin immediate", {}});
    } catch (const RuntimeError &) { // locked by somebody: the first statement inside tells it
        run(sql::Step{"begin", {}});
    }
    m_transaction = Transaction::Active;
    m_schemaChanged = false;
}

void Session::commit()
{
    if (!inTransaction())
        throw data_errors::noTransaction();
    try {
        requireWritable();
        run(sql::Step{"commit", {}});
        m_transaction = Transaction::None;
        m_schemaChanged = false;
    } catch (const RuntimeError &) {
        ignoringErrors([&] { rollback(); });
        m_transaction = Transaction::CommitFailed;
        throw;
    }
}

void Session::rollback()
{
    if (m_transaction == Transaction::None)
        throw data_errors::noTransaction();
    m_transaction = Transaction::None;
    if (!m_engine.autocommit())
        m_engine.run("rollback");
    if (m_schemaChanged)
        readCatalog();
    m_schemaChanged = false;
}

} // namespace database
