#include "platform/database/sql/compiler.h"

#include "platform/database/sql/binder.h"
#include "platform/database/sql/emitter.h"
#include "platform/database/sql/parser.h"

namespace sql
{

Compiled compile(const QString &text, const Catalog &catalog)
{
    const syntax::Statement statement = parse(text);
    return emitStatement(bindStatement(statement, catalog));
}

Compiled compileTable(const QString &table, const Catalog &catalog)
{
    QStringView name = QStringView(table).trimmed();
    if (name.size() > 2 && name.front() == u'[' && name.back() == u']')
        name = name.sliced(1, name.size() - 2);
    syntax::Select select;
    select.from.name = name;
    select.items.emplace_back().star = true;
    return emitStatement(bindStatement(select, catalog));
}

} // namespace sql
