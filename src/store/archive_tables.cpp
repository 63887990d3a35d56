#include "store/archive_tables.h"

#include "core/engine.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"

#include <QtWidgets/QComboBox>

using namespace Qt::Literals::StringLiterals;

namespace
{

bool isTableOrArchive(const QString &name, const QString &table)
{
    return name.startsWith(table, Qt::CaseInsensitive) &&
           (name.size() == table.size() || isNumeric(name.sliced(table.size())));
}

QStringList tableAndArchives(const QString &table)
{
    QStringList names;
    for (const SchemaTable &row : engine.dbConnection->schemaTables()) {
        if (row.tableType == u"TABLE"_s && isTableOrArchive(row.tableName, table))
            names << row.tableName;
    }
    return names;
}

} // namespace

QString NextArchiveName(const QString &table)
{
    if (table.isEmpty())
        return {};
    qint16 highest = 0;
    for (const SchemaTable &row : engine.dbConnection->schemaTables()) {
        // Without regard to case, as the store compares names: the new one must not be taken.
        if (!row.tableName.startsWith(table, Qt::CaseInsensitive) ||
            trimBlanks(row.tableName).size() <= table.size())
            continue;
        const double number = readLeadingNumber(row.tableName.sliced(table.size()));
        if (number > highest)
            highest = toInteger(number);
    }
    return table + QString::number(toInteger(highest + 1.0));
}

void FillArchivesList(const QString &table, QComboBox *list)
{
    list->clear();
    if (table.isEmpty())
        return;
    QStringList entries = tableAndArchives(table);
    const auto archives = Recordset::create();
    archives->open(u"select table,archive,[interval] from archives where table='"_s + table + u"'"_s,
                   engine.dbConnection);
    for (; !archives->eof(); archives->moveNext()) {
        const QString archive = archives->value(u"archive"_s).toText();
        for (QString &entry : entries) {
            if (entry == archive)
                entry += u" : "_s + archives->value(u"interval"_s).toText();
        }
    }
    archives->close();
    list->addItems(entries);
    list->setCurrentIndex(0);
}

QString archiveTableOf(const QString &entry)
{
    const qsizetype colon = entry.indexOf(u':');
    if (colon == 0)
        throw runtime_errors::invalidCall();
    return colon < 0 ? entry : entry.left(colon - 1);
}
