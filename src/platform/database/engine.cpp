#include "platform/database/engine.h"

#include "platform/database/connection.h"
#include "platform/database/errors.h"
#include "platform/database/sql/collation.h"
#include "platform/database/sql/functions.h"
#include "platform/database/store_path.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <sqlcipher/sqlite3.h>

#include <functional>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace database
{

namespace
{

constexpr int busyMilliseconds = 3000;     // somebody else's backup may be reading
constexpr int stepsBetweenCalls = 500'000; // of the engine's program, some hundredths of a second

// Each value spelled out, so that a file is the same whatever the library's own defaults are.
constexpr const char *cipherSettings[] = {
    "cipher_page_size = 4096",
    "kdf_iter = 64000",
    "cipher_use_hmac = ON",
    "cipher_hmac_algorithm = HMAC_SHA1",
    "cipher_kdf_algorithm = PBKDF2_HMAC_SHA1",
    "cipher_plaintext_header_size = 0",
};

constexpr const char *journalSettings[] = {
    "journal_mode = DELETE", "synchronous = EXTRA",
    "cache_size = -65536", // KiB
};

std::function<void()> statementProgress;

int tellProgress(void *)
{
    if (statementProgress)
        statementProgress();
    return 0; // goes on
}

QString message(sqlite3 *handle)
{
    return QString::fromUtf8(sqlite3_errmsg(handle));
}

} // namespace

// --- Statement and Run

void Statement::Finalize::operator()(sqlite3_stmt *statement) const noexcept
{
    sqlite3_finalize(statement);
}

Statement::Statement(sqlite3 *handle, const QByteArray &text) : m_handle(handle)
{
    sqlite3_stmt *statement = nullptr;
    const int result = sqlite3_prepare_v2(handle, text.constData(), int(text.size()), &statement, nullptr);
    m_statement.reset(statement);
    if (result != SQLITE_OK)
        throw engineError(handle);
}

Run::Run(Statement &statement, const std::vector<sql::Parameter> &parameters) : m_owner(statement)
{
    sqlite3_stmt *target = statement.m_statement.get();
    int index = 0;
    for (const sql::Parameter &parameter : parameters) {
        ++index;
        int result = SQLITE_OK;
        if (const auto *integer = std::get_if<qint64>(&parameter))
            result = sqlite3_bind_int64(target, index, *integer);
        else if (const auto *number = std::get_if<double>(&parameter))
            result = sqlite3_bind_double(target, index, *number);
        else if (const auto *text = std::get_if<QByteArray>(&parameter))
            result = sqlite3_bind_text(target, index, text->constData(), int(text->size()), SQLITE_TRANSIENT);
        else
            result = sqlite3_bind_null(target, index);
        if (result != SQLITE_OK) {
            const RuntimeError error = engineError(statement.m_handle);
            sqlite3_clear_bindings(target);
            throw error;
        }
    }
}

Run::~Run()
{
    sqlite3_reset(m_owner.m_statement.get());
    sqlite3_clear_bindings(m_owner.m_statement.get());
}

bool Run::next()
{
    const int result = sqlite3_step(m_owner.m_statement.get());
    if (result == SQLITE_ROW)
        return true;
    if (result == SQLITE_DONE)
        return false;
    throw engineError(m_owner.m_handle);
}

sql::Parameter Run::column(int index) const
{
    sqlite3_stmt *statement = m_owner.m_statement.get();
    switch (sqlite3_column_type(statement, index)) {
    case SQLITE_INTEGER:
        return qint64(sqlite3_column_int64(statement, index));
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, index);
    case SQLITE_NULL:
        return {};
    default: {
        const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement, index));
        return QByteArray(bytes ? bytes : "", sqlite3_column_bytes(statement, index));
    }
    }
}

std::optional<qint64> Run::integer(int index) const
{
    sqlite3_value *value = sqlite3_column_value(m_owner.m_statement.get(), index);
    if (sqlite3_value_type(value) != SQLITE_INTEGER)
        return std::nullopt;
    return sqlite3_value_int64(value);
}

QByteArrayView Run::text(int index) const
{
    sqlite3_value *value = sqlite3_column_value(m_owner.m_statement.get(), index);
    if (sqlite3_value_type(value) != SQLITE_TEXT)
        return {};
    const void *bytes = sqlite3_value_text(value); // before the count of its bytes
    return {static_cast<const char *>(bytes), sqlite3_value_bytes(value)};
}

// --- Engine

void Engine::Close::operator()(sqlite3 *handle) const noexcept
{
    sqlite3_close_v2(handle);
}

Engine::Engine(const QString &path, Access access)
{
    QByteArray name = QFile::encodeName(path);
    int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX; // the program has one thread
    if (access == Access::Still) {
        name = "file:" + name.toPercentEncoding("/") + "?immutable=1";
        flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_URI;
    }
    sqlite3 *handle = nullptr;
    const int result = sqlite3_open_v2(name.constData(), &handle, flags, nullptr);
    m_handle.reset(handle);
    if (result != SQLITE_OK)
        throw data_errors::engineFailure(u"Cannot open '%1': %2"_s.arg(path, message(handle)));
    sqlite3_extended_result_codes(handle, 1);
    sqlite3_busy_timeout(handle, busyMilliseconds);
    sqlite3_progress_handler(handle, stepsBetweenCalls, tellProgress, nullptr);
    sql::registerFunctions(handle);
}

Engine Engine::open(const QString &path, const QString &password)
{
    requireReachable(path);
    Engine engine(path);
    requireStoreSize(engine.handle(), path);
    engine.key(password);
    if ((hasJournal(engine.handle()) && !engine.keyFitsAside(password)) || !engine.keyFits()) {
        if (looksEncrypted(engine.handle()))
            throw data_errors::wrongPassword();
        throw data_errors::unrecognizedFormat(path);
    }
    engine.setUp("main");
    engine.renewTextIndexes();
    return engine;
}

Engine Engine::initialize(const QString &path, const QString &password)
{
    Engine engine(path);
    engine.key(password);
    engine.setUp("main");
    return engine;
}

void Engine::run(const QByteArray &text)
{
    run(sql::Step{text, {}});
}

void Engine::run(const sql::Step &step)
{
    Statement statement(handle(), step.text);
    Run(statement, step.parameters).next();
}

sql::Parameter Engine::first(const QByteArray &text, const std::vector<sql::Parameter> &parameters)
{
    Statement statement(handle(), text);
    Run run(statement, parameters);
    return run.next() ? run.column(0) : sql::Parameter();
}

bool Engine::autocommit() const noexcept
{
    return sqlite3_get_autocommit(handle()) != 0;
}

int Engine::changes() const noexcept
{
    return sqlite3_changes(handle());
}

qint64 Engine::lastRowid() const noexcept
{
    return sqlite3_last_insert_rowid(handle());
}

void Engine::key(const QString &password)
{
    const QByteArray bytes = password.toUtf8();
    if (bytes.isEmpty()) // the engine would take it for a file that is not encrypted
        throw data_errors::wrongPassword();
    if (sqlite3_key(handle(), bytes.constData(), int(bytes.size())) != SQLITE_OK)
        throw engineError(handle());
    if (first("pragma cipher_version") == sql::Parameter())
        throw data_errors::engineFailure(u"The store engine cannot encrypt."_s);
    for (const char *setting : cipherSettings)
        run(QByteArray("pragma ") + setting);
}

bool Engine::keyFits() const
{
    sqlite3_stmt *statement = nullptr;
    int result = sqlite3_prepare_v2(handle(), "pragma user_version", -1, &statement, nullptr);
    if (result == SQLITE_OK) {
        sqlite3_step(statement);
        result = sqlite3_finalize(statement);
    }
    if ((result & 0xff) == SQLITE_BUSY) // it has waited long enough
        throw engineError(handle());
    return result != SQLITE_NOTADB && result != SQLITE_ERROR; // what else is wrong comes out later
}

// The engine undoes what a crash has left before it knows whether the key fits. So the key is tried on the
// file as it stands first. There the first page may be in pieces: then on a copy, where it can be restored.
bool Engine::keyFitsAside(const QString &password) const
{
    Engine still(fileOf(handle()), Access::Still);
    still.key(password);
    if (still.keyFits())
        return true;
    const QTemporaryDir folder;
    const QString copy = folder.filePath(u"store"_s);
    copyWithJournal(handle(), copy);
    Engine trial(copy);
    trial.key(password);
    return trial.keyFits();
}

void Engine::setUp(const QByteArray &schema)
{
    for (const char *setting : journalSettings)
        run("pragma " + schema + '.' + setting);
}

void Engine::attach(const QString &path, const QString &password, const QByteArray &name)
{
    run(sql::Step{"attach database ?1 as " + name + " key ?2", {QFile::encodeName(path), password.toUtf8()}});
    for (const char *setting : cipherSettings)
        run("pragma " + name + '.' + setting);
    setUp(name);
}

void Engine::stampCollation(const QByteArray &schema)
{
    run("pragma " + schema + ".user_version = " + QByteArray::number(sql::collationVersion()));
}

void Engine::renewTextIndexes()
{
    if (first("pragma user_version") == sql::Parameter(qint64(sql::collationVersion())))
        return;
    run("begin immediate");
    try {
        run("reindex arabic");
        stampCollation("main");
        run("commit");
    } catch (const RuntimeError &error) {
        if (!autocommit())
            run("rollback");
        // Texts that differed are equal now. Nobody could mend that in a store that does not open, so the
        // indexes stay as they are, and the next opening tries again.
        if (error.description() != data_errors::duplicateKey().description())
            throw;
    }
}

// --- failures

RuntimeError engineError(sqlite3 *handle)
{
    const QString text = message(handle);
    switch (sqlite3_extended_errcode(handle)) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
        return data_errors::duplicateKey();
    case SQLITE_CONSTRAINT_CHECK: {
        // "CHECK constraint failed: <column>_<rule>"
        const QString name = text.section(u": "_s, 1);
        const qsizetype cut = name.lastIndexOf(u'_');
        const QStringView rule = QStringView(name).mid(cut + 1);
        if (rule == u"size")
            return data_errors::fieldTooSmall(false);
        if (rule == u"empty")
            return data_errors::zeroLength(name.left(cut));
        if (rule == u"range")
            return runtime_errors::overflow();
        if (rule == u"boolean")
            return data_errors::typeMismatch();
        break;
    }
    case SQLITE_MISMATCH: // a function of the dialect could not convert a value
        return data_errors::typeMismatch();
    case SQLITE_ERROR: // or failed in the run-time's words
        for (const RuntimeError &known : {runtime_errors::overflow(), runtime_errors::divisionByZero()}) {
            if (text == known.description())
                return known;
        }
        if (text == u"integer overflow") // of a sum
            return runtime_errors::overflow();
        if (text.startsWith(u"no such table: "_s)) // another program has dropped it
            return data_errors::unknownTable(text.section(u": "_s, 1).section(u'.', -1));
        if (text == u"parser stack overflow") // a hundred symbols, whose use the dialect does not count
            return data_errors::syntax(u"The query is too complex."_s);
        break;
    default:
        break;
    }
    return data_errors::engineFailure(text);
}

} // namespace database

void setStatementProgress(std::function<void()> progress)
{
    database::statementProgress = std::move(progress);
}
