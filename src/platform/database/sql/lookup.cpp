#include "platform/database/sql/lookup.h"

#include "platform/database/errors.h"

#include <memory>
#include <new>
#include <unordered_map>

namespace sql
{

namespace
{

struct Release {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    void operator()(sqlite3_value *value) const { sqlite3_value_free(value); }
};
using Answer = std::unique_ptr<sqlite3_value, Release>; ///< none for Null

/// The answers of one select.
class Lookup
{
public:
    Lookup(sqlite3 *handle, sqlite3_value *text) : m_handle(handle)
    {
        sqlite3_stmt *statement = nullptr;
        const auto *bytes = reinterpret_cast<const char *>(sqlite3_value_text(text));
        check(sqlite3_prepare_v2(handle, bytes, -1, &statement, nullptr));
        m_statement.reset(statement);
    }

    const Answer &answer(qint64 key)
    {
        const auto known = m_answers.find(key);
        if (known != m_answers.end())
            return known->second;
        if (m_answers.size() == mostAnswers)
            m_answers.clear();
        return m_answers.emplace(key, read(key)).first->second;
    }

private:
    static constexpr std::size_t mostAnswers = 65'536;

    Answer read(qint64 key)
    {
        sqlite3_stmt *statement = m_statement.get();
        check(sqlite3_bind_int64(statement, 1, key));
        Answer answer;
        if (sqlite3_step(statement) == SQLITE_ROW)
            answer.reset(sqlite3_value_dup(sqlite3_column_value(statement, 0)));
        check(sqlite3_reset(statement));
        return answer;
    }

    void check(int result) const
    {
        if (result != SQLITE_OK)
            throw data_errors::engineFailure(QString::fromUtf8(sqlite3_errmsg(m_handle)));
    }

    sqlite3 *m_handle;
    std::unique_ptr<sqlite3_stmt, Release> m_statement;
    std::unordered_map<qint64, Answer> m_answers;
};

} // namespace

void lookup(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (sqlite3_value_type(arguments[1]) == SQLITE_NULL)
        return;
    if (sqlite3_get_auxdata(context, 0) == nullptr) {
        sqlite3_set_auxdata(context, 0, new Lookup(sqlite3_context_db_handle(context), arguments[0]),
                            [](void *kept) { delete static_cast<Lookup *>(kept); });
    }
    auto *known = static_cast<Lookup *>(sqlite3_get_auxdata(context, 0));
    if (known == nullptr)
        throw std::bad_alloc();
    if (const Answer &answer = known->answer(sqlite3_value_int64(arguments[1])))
        sqlite3_result_value(context, answer.get());
}

} // namespace sql
