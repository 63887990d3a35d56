#include "store/seed_rows.h"

#include "core/engine.h"
#include "platform/database/recordset.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"

#include <optional>
#include <span>

using namespace Qt::Literals::StringLiterals;

namespace
{

struct Word {
    QStringView arabic;
    QStringView english;
    std::optional<bool> credit = std::nullopt; ///< of `details` alone: revenue or expense
};

// The numbers of the rows follow from their order: 1 is a wife, 2 a son, 3 a daughter.
constexpr Word relations[] = {
    {u"زوجه", u"Wife"},
    {u"ولد", u"Son"},
    {u"بنت", u"Daughter"},
};

// 1 is male, 2 female.
constexpr Word sexes[] = {
    {u"ذكر", u"Male"},
    {u"أنثى", u"Female"},
};

// First the kinds of expense, then the kinds of revenue. "Travel" gets no credit value: its field keeps the
// store's default, and that is meant.
constexpr Word details[] = {
    {u"تلفون", u"Phone", false},
    {u"كهرباء", u"Electricity", false},
    {u"دراسه", u"Education", false},
    {u"تذاكر", u"Travel", std::nullopt},
    {u"أقساط", u"Fees", false},
    {u"مواصلات", u"Transportation", false},
    {u"معيشه", u"Food", false},
    {u"مصروف", u"Allowance", false},
    {u"أرباح", u"Earnings", false},
    {u"أخرى", u"Other", false},
    {u"إيجارات عقارات", u"Property Rentals", true},
    {u"بيع عقارات", u"Property Sale", true},
    {u"راتب", u"Salary", true},
    {u"تقاعد", u"Pension", true},
    {u"مكافأه", u"Reward", true},
    {u"بيع سياره", u"Car Sale", true},
    {u"إستثمار", u"Investment", true},
    {u"أسهم", u"Stocks and bonds", true},
    {u"أخرى", u"Other", true},
};

RecordsetPtr openTable(const QString &name, const ConnectionPtr &connection)
{
    RecordsetPtr table = Recordset::create();
    table->open(name, connection, CursorType::Keyset, LockType::Optimistic, CommandKind::Table);
    return table;
}

void writeWords(const ConnectionPtr &connection, const QString &table, const QString &column,
                std::span<const Word> words)
{
    const RecordsetPtr rows = openTable(table, connection);
    for (const Word &word : words) {
        rows->addNew(); // saves the row before
        rows->setValue(column + u"ar"_s, word.arabic.toString());
        rows->setValue(column + u"en"_s, word.english.toString());
        if (word.credit)
            rows->setValue(u"credit"_s, *word.credit);
    }
    rows->update();
    rows->close();
}

} // namespace

void writeSeedRows(const ConnectionPtr &connection)
{
    const RecordsetPtr settings = openTable(u"settings"_s, connection);
    settings->addNew();
    settings->setValue(u"desceased"_s, engine.isArabic ? u"غير معروف"_s : u"unknown"_s);
    settings->setValue(u"lastcompacted"_s, generalDate(today()));
    settings->setValue(u"sn"_s, 0);
    settings->update();
    settings->close();

    writeWords(connection, u"relations"_s, u"relation"_s, relations);
    writeWords(connection, u"sexes"_s, u"sex"_s, sexes);
    writeWords(connection, u"details"_s, u"detail"_s, details);
}
