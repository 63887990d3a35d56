#include "platform/database/sql/functions.h"

#include "platform/database/errors.h"
#include "platform/database/sql/collation.h"
#include "platform/database/sql/lookup.h"
#include "platform/database/sql/storage.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"
#include "platform/runtime/numbers.h"

#include <sqlcipher/sqlite3.h>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace sql
{

namespace
{

// --- arguments and results

Parameter argument(sqlite3_value *value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return qint64(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return sqlite3_value_double(value);
    default: {
        const void *text = sqlite3_value_blob(value); // before the count of its bytes
        return QByteArray(static_cast<const char *>(text), sqlite3_value_bytes(value));
    }
    }
}

QString textArgument(sqlite3_value *value)
{
    const void *text = sqlite3_value_text(value);
    return QString::fromUtf8(static_cast<const char *>(text), sqlite3_value_bytes(value));
}

FieldType typeArgument(sqlite3_value *value)
{
    return FieldType(sqlite3_value_int(value));
}

QDateTime dateArgument(sqlite3_value *value)
{
    return fromStorage(argument(value), FieldType::Date).toDate();
}

bool isNull(sqlite3_value *value)
{
    return sqlite3_value_type(value) == SQLITE_NULL;
}

void giveText(sqlite3_context *context, const QByteArray &text)
{
    sqlite3_result_text(context, text.constData(), int(text.size()), SQLITE_TRANSIENT);
}

void give(sqlite3_context *context, const Parameter &result)
{
    if (const auto *number = std::get_if<qint64>(&result))
        sqlite3_result_int64(context, *number);
    else if (const auto *real = std::get_if<double>(&result))
        sqlite3_result_double(context, *real);
    else if (const auto *text = std::get_if<QByteArray>(&result))
        giveText(context, *text);
    else
        sqlite3_result_null(context);
}

using Function = void (*)(sqlite3_context *, int, sqlite3_value **);

/// What the engine calls: no exception gets through it.
template <Function function>
void guarded(sqlite3_context *context, int count, sqlite3_value **arguments) noexcept
{
    try {
        function(context, count, arguments);
    } catch (const RuntimeError &error) {
        if (error.number() == 13 || error.number() == data_errors::multipleStep().number())
            sqlite3_result_error_code(context, SQLITE_MISMATCH);
        else
            sqlite3_result_error(context, error.description().toUtf8().constData(), -1);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

// --- the functions

/// q_cast(value, from, to): a stored value of one type as another type stores it.
void cast(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (isNull(arguments[0]))
        return;
    const Value value = fromStorage(argument(arguments[0]), typeArgument(arguments[1]));
    give(context, toStorage(value, typeArgument(arguments[2])));
}

/// q_number(text): a text beside a number. An empty text is no number and matches nothing.
void number(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (isNull(arguments[0]))
        return;
    const QString text = textArgument(arguments[0]);
    if (!text.isEmpty())
        sqlite3_result_double(context, readDouble(text));
}

/// q_join(text, text, ...): Null counts as empty; Null when all are.
void join(sqlite3_context *context, int count, sqlite3_value **arguments)
{
    if (std::all_of(arguments, arguments + count, isNull))
        return;
    QByteArray result;
    for (int index = 0; index < count; ++index) {
        const void *text = sqlite3_value_text(arguments[index]); // numbers give their digits
        if (text != nullptr)
            result.append(static_cast<const char *>(text), sqlite3_value_bytes(arguments[index]));
    }
    giveText(context, result);
}

/// q_format(value, type, pattern)
void formatted(sqlite3_context *context, int, sqlite3_value **arguments)
{
    const Value value = fromStorage(argument(arguments[0]), typeArgument(arguments[1]));
    giveText(context, format(value, textArgument(arguments[2])).toUtf8());
}

/// q_datepart(date, part): 0 to 5 for year, month, day, hour, minute, second.
void datePart(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (isNull(arguments[0]))
        return;
    const QDateTime date = dateArgument(arguments[0]);
    const std::array parts = {date.date().year(), date.date().month(),  date.date().day(),
                              date.time().hour(), date.time().minute(), date.time().second()};
    sqlite3_result_int(context, parts.at(size_t(sqlite3_value_int(arguments[1]))));
}

/// q_days(from, to): midnights between two dates.
void days(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (isNull(arguments[0]) || isNull(arguments[1]))
        return;
    sqlite3_result_int64(context, daysBetween(dateArgument(arguments[0]), dateArgument(arguments[1])));
}

/// q_divide(a, b), of doubles
void divide(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (isNull(arguments[0]) || isNull(arguments[1]))
        return;
    const double divisor = sqlite3_value_double(arguments[1]);
    if (divisor == 0)
        throw runtime_errors::divisionByZero();
    sqlite3_result_double(context, sqlite3_value_double(arguments[0]) / divisor);
}

/// q_exact(count): what has left the integers on the way is beyond all money.
void exact(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (sqlite3_value_type(arguments[0]) == SQLITE_FLOAT)
        throw runtime_errors::overflow();
    sqlite3_result_value(context, arguments[0]);
}

struct Registration {
    const char *name;
    int arguments;
    void (*function)(sqlite3_context *, int, sqlite3_value **);
};

constexpr std::array registrations = {
    Registration{"q_cast", 3, guarded<cast>},         Registration{"q_number", 1, guarded<number>},
    Registration{"q_join", -1, guarded<join>},        Registration{"q_format", 3, guarded<formatted>},
    Registration{"q_datepart", 2, guarded<datePart>}, Registration{"q_days", 2, guarded<days>},
    Registration{"q_divide", 2, guarded<divide>},     Registration{"q_exact", 1, guarded<exact>},
    Registration{"q_lookup", 2, guarded<lookup>},
};

} // namespace

void registerFunctions(sqlite3 *handle)
{
    for (const Registration &entry : registrations) {
        const int result = sqlite3_create_function_v2(handle, entry.name, entry.arguments,
                                                      SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                                      entry.function, nullptr, nullptr, nullptr);
        if (result != SQLITE_OK)
            throw data_errors::engineFailure(QString::fromUtf8(sqlite3_errmsg(handle)));
    }
    registerCollation(handle);
}

} // namespace sql
