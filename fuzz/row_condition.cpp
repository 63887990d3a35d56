#include "fuzz/support.h"
#include "platform/database/recordset.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

RecordsetPtr rowsOf(const QString &table)
{
    RecordsetPtr rows = Recordset::create();
    rows->open(u"select * from ["_s + table + u']', fuzz::seededStore(), CursorType::Static);
    return rows;
}

} // namespace

/// A text as the filter of a set, and as what is searched for in it.
FUZZ_HARNESS(row_condition)
{
    static const RecordsetPtr sets[] = {rowsOf(u"general"_s), rowsOf(u"members"_s)};
    const QString text = QString::fromUtf8(input);
    for (const RecordsetPtr &rows : sets) {
        rows->setFilter({});
        const int all = rows->recordCount();
        const auto notFound = fuzz::refusal([&] { rows->find(text); });
        const int found = rows->eof() ? 0 : rows->bookmark();
        const auto notFiltered = fuzz::refusal([&] { rows->setFilter(text); });
        fuzz::require(rows->recordCount() <= all, "a filter adds no rows");
        if (notFound)
            continue;
        fuzz::require(!notFiltered, "what can be searched for can be a filter");
        const int first = rows->eof() ? 0 : rows->bookmark();
        fuzz::require(first == found, "a search stops at the filter's first row");
    }
}
