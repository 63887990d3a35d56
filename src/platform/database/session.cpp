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

sql::Parameter Session::first(const sql::Step &step)
{
    Run run(prepared(step.text), step.parameters);
    return run.next() ? run.column(0) : sql::Parameter();
}

int Session::compareTexts(const QString &left, const QString &right)
{
    const sql::Parameter order = first(
        {"select (?1 collate arabic > ?2) - (?1 collate arabic < ?2)", {left.toUtf8(), right.toUtf8()}});
    return int(std::get<qint64>(order));
}

void Session::run(const sql::Compiled &compiled)
{
    if (compiled.kind == sql::StatementKind::Select) {
        for (const sql::Step &step : compiled.steps)
            run(step);
        return;
    }
    atomically([&] {
        if (compiled.changesSchema) {
            m_prepared.clear();
            m_schemaChanged = true;
        }
        for (const sql::Step &step : compiled.steps)
            run(step);
    });
    if (compiled.changesSchema)
        readCatalog();
}

// --- transactions

bool Session::isLost() const noexcept
{
    return m_transaction == Transaction::Lost ||
           (m_transaction == Transaction::Active && m_engine.autocommit());
}

// A write behind a transaction that the engine has rolled back would stand alone.
void Session::requireWritable()
{
    if (isLost())
        throw data_errors::engineFailure(u"The transaction has been rolled back by an earlier failure."_s);
}

Session::Mark Session::openMark()
{
    requireWritable();
    if (m_transaction == Transaction::Active) {
        run(sql::Step{"savepoint work", {}});
        return Mark::Savepoint;
    }
    m_transaction = Transaction::None;
    run(sql::Step{"begin immediate", {}});
    return Mark::Transaction;
}

void Session::closeMark(Mark mark)
{
    run(sql::Step{mark == Mark::Savepoint ? "release work" : "commit", {}});
    if (mark == Mark::Transaction)
        m_schemaChanged = false;
}

void Session::undoMark(Mark mark) noexcept
{
    const bool schemaChanged = m_schemaChanged;
    ignoringErrors([&] {
        if (m_engine.autocommit()) {
            // The engine has rolled everything back already.
            if (mark == Mark::Savepoint)
                m_transaction = Transaction::Lost;
        } else if (mark == Mark::Savepoint) {
            m_engine.run("rollback to work");
            m_engine.run("release work");
        } else {
            m_engine.run("rollback");
        }
    });
    if (mark == Mark::Transaction)
        m_schemaChanged = false;
    if (schemaChanged)
        ignoringErrors([&] { readCatalog(); });
}

void Session::begin()
{
    if (inTransaction())
        throw data_errors::notAllowedInContext(); // one level
    run(sql::Step{"begin immediate", {}});
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
    const bool open = !m_engine.autocommit();
    if (m_transaction == Transaction::None)
        throw data_errors::noTransaction();
    m_transaction = Transaction::None;
    if (open)
        m_engine.run("rollback");
    if (m_schemaChanged)
        readCatalog();
    m_schemaChanged = false;
}

} // namespace database
