#include "platform/database/sql/catalog.h"

#include <utility>

namespace sql
{

namespace
{

// A schema has a dozen tables of at most twenty columns: a scan that compares lengths first beats a hash.
template <typename Entry>
const Entry *findByName(const std::vector<Entry> &entries, QStringView name)
{
    for (const Entry &entry : entries) {
        if (entry.name.size() == name.size() && name.compare(entry.name, Qt::CaseInsensitive) == 0)
            return &entry;
    }
    return nullptr;
}

} // namespace

const CatalogColumn *CatalogTable::find(QStringView column) const
{
    return findByName(columns, column);
}

void Catalog::add(CatalogTable table)
{
    m_tables.push_back(std::move(table));
}

const CatalogTable *Catalog::find(QStringView table) const
{
    return findByName(m_tables, table);
}

} // namespace sql
