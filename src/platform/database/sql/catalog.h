#pragma once

#include "platform/database/field.h"

#include <QtCore/QString>

#include <vector>

namespace sql
{

struct CatalogColumn {
    QString name;
    FieldType type = FieldType::Text;
    int size = 0; ///< as FieldInfo::definedSize
    bool counter = false;
    bool emptyTextAllowed = true;
    bool defaultTrue = false;
};

struct CatalogTable {
    QString name;
    bool system = false;
    std::vector<CatalogColumn> columns;
    const CatalogColumn *find(QStringView column) const; ///< without regard to case; null when there is none
};

/// The tables of one store, as the binder sees them. Plain data: whoever owns the store file fills it.
class Catalog
{
public:
    void add(CatalogTable table);
    const CatalogTable *find(QStringView table) const; ///< without regard to case; null when there is none
    const std::vector<CatalogTable> &tables() const { return m_tables; }

private:
    std::vector<CatalogTable> m_tables;
};

} // namespace sql
