#include "platform/database/sql/ddl.h"

#include "platform/database/errors.h"

#include <sqlcipher/sqlite3.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace sql
{

namespace
{

QByteArray declaredType(const CatalogColumn &column, TableForm form)
{
    switch (column.type) {
    case FieldType::Long:
        return column.counter && form == TableForm::Full ? "counter" : "long";
    case FieldType::Byte:
        return "byte";
    case FieldType::Money:
        return "money";
    case FieldType::Boolean:
        return "boolean";
    case FieldType::Date:
        return "date";
    case FieldType::Double:
        return "double";
    case FieldType::Text:
        return "text(" + QByteArray::number(column.size) + ") collate arabic";
    }
    Q_UNREACHABLE();
}

QByteArray constraint(const CatalogColumn &column, const char *suffix, const QByteArray &condition)
{
    return " constraint " + quotedName(column.name + QLatin1StringView(suffix)) + " check (" + condition +
           ')';
}

// A text of at most that many UTF-16 units, told by the engine's own functions alone, so that every tool can
// write. Each character counts once, and once more when its UTF-8 form has four bytes, that is when it begins
// with F0 to F4. The engine counts characters up to a NUL only; a text with one must be short in bytes.
QByteArray sizeCondition(const QByteArray &name, int size)
{
    const QByteArray units = QByteArray::number(size);
    const QByteArray bytes = "cast(" + name + " as blob)";
    QByteArray rest = name;
    for (const char *lead : {"F0", "F1", "F2", "F3", "F4"})
        rest = "replace(" + rest + ", x'" + lead + "', '')";
    return "length(" + bytes + ") <= " + units + " or instr(" + bytes + ", x'00') = 0 and length(" + name +
           ") + length(" + bytes + ") - length(cast(" + rest + " as blob)) <= " + units;
}

QByteArray constraints(const CatalogColumn &column, TableForm form)
{
    const QByteArray name = quotedName(column.name);
    const auto integer = [&](const char *low, const char *high) {
        return name + " is null or typeof(" + name + ") = 'integer' and " + name + " between " + low +
               " and " + high;
    };
    switch (column.type) {
    case FieldType::Long:
        return constraint(column, "_range", integer("-2147483648", "2147483647"));
    case FieldType::Byte:
        return constraint(column, "_range", integer("0", "255"));
    case FieldType::Money:
        return constraint(column, "_range",
                          name + " is null or typeof(" + name + ") = 'integer'"); // also when a sum overflows
    case FieldType::Boolean:
        return constraint(column, "_boolean", name + " is -1 or " + name + " is 0");
    case FieldType::Date:
    case FieldType::Double:
        return {};
    case FieldType::Text: {
        QByteArray text = constraint(column, "_size", sizeCondition(name, column.size));
        if (form == TableForm::Full && !column.emptyTextAllowed)
            text += constraint(column, "_empty", "length(cast(" + name + " as blob)) > 0");
        return text;
    }
    }
    Q_UNREACHABLE();
}

Step counterStep(const QByteArray &text, const QString &table)
{
    return {text, {table.toUtf8()}};
}

struct Finalize {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

Statement prepare(sqlite3 *handle, const QByteArray &text)
{
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(handle, text.constData(), int(text.size()), &statement, nullptr) != SQLITE_OK)
        throw data_errors::engineFailure(QString::fromUtf8(sqlite3_errmsg(handle)));
    return Statement(statement);
}

bool nextRow(sqlite3 *handle, const Statement &statement)
{
    const int result = sqlite3_step(statement.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        throw data_errors::engineFailure(QString::fromUtf8(sqlite3_errmsg(handle)));
    return result == SQLITE_ROW;
}

QString columnText(const Statement &statement, int index)
{
    const void *text = sqlite3_column_text(statement.get(), index); // before the count of its bytes
    return QString::fromUtf8(static_cast<const char *>(text), sqlite3_column_bytes(statement.get(), index));
}

} // namespace

QByteArray quotedName(QStringView name)
{
    return '"' + name.toUtf8().replace('"', "\"\"") + '"';
}

QByteArray createTableText(const CatalogTable &table, TableForm form)
{
    QByteArray text = "create table " + quotedName(table.name) + " (";
    for (const CatalogColumn &column : table.columns) {
        if (&column != &table.columns.front())
            text += ", ";
        text += quotedName(column.name) + ' ' + declaredType(column, form);
        if (column.type == FieldType::Boolean)
            text += column.defaultTrue && form == TableForm::Full ? " default -1" : " default 0";
        text += constraints(column, form);
    }
    return text + ')';
}

std::vector<QByteArray> createIndexTexts(const CatalogTable &table, const std::vector<QString> &columns)
{
    std::vector<QByteArray> texts;
    for (const QString &column : columns) {
        QByteArray text = (texts.empty() ? "create unique index " : "create index ") +
                          quotedName(QString(table.name + u'_' + column)) + " on " + quotedName(table.name) +
                          " (" + quotedName(column) + ')';
        const CatalogColumn *found = table.find(column);
        if (found && found->type == FieldType::Text)
            text += " where " + quotedName(column) + " is not null";
        texts.push_back(text);
    }
    return texts;
}

QByteArray createCountersText()
{
    return QByteArray("create table ") + countersTable +
           " (table_name text primary key, last integer not null)";
}

Step startCounterStep(const QString &table)
{
    return counterStep("insert into system_counters (table_name, last) values (?1, 0)", table);
}

Step drawCounterStep(const QString &table)
{
    return counterStep("update system_counters set last = last + 1 where table_name = ?1", table);
}

Step undrawCounterStep(const Step &draw)
{
    return {"update system_counters set last = last - 1 where table_name = ?1", draw.parameters};
}

Step raiseCounterStep(const QString &table, const QString &column)
{
    const QByteArray largest = "(select max(" + quotedName(column) + ") from " + quotedName(table) + ')';
    return counterStep("update system_counters set last = " + largest + " where table_name = ?1 and last < " +
                           largest,
                       table);
}

Step dropCounterStep(const QString &table)
{
    return counterStep("delete from system_counters where table_name = ?1", table);
}

CatalogColumn columnFromDeclaration(const QString &name, const QString &declaredType,
                                    const QString &defaultText, const QString &tableText)
{
    const QString type = declaredType.toLower();
    CatalogColumn column{.name = name};
    const auto as = [&column](FieldType fieldType, int size) {
        column.type = fieldType;
        column.size = size;
    };
    if (type == "counter"_L1) {
        as(FieldType::Long, 4);
        column.counter = true;
    } else if (type == "byte"_L1) {
        as(FieldType::Byte, 1);
    } else if (type == "money"_L1) {
        as(FieldType::Money, 8);
    } else if (type == "boolean"_L1) {
        as(FieldType::Boolean, 2);
        column.defaultTrue = defaultText == "-1"_L1;
    } else if (type == "date"_L1) {
        as(FieldType::Date, 8);
    } else if (type == "double"_L1 || type == "real"_L1) {
        as(FieldType::Double, 8);
    } else if (type.startsWith("text"_L1)) {
        const int size = QStringView(type).mid(5, type.size() - 6).toInt();
        as(FieldType::Text, size > 0 ? size : 255);
        const QByteArray refusal = "constraint " + quotedName(QString(name + "_empty"_L1));
        column.emptyTextAllowed = !tableText.contains(QString::fromUtf8(refusal));
    } else {
        as(FieldType::Long, 4);
    }
    return column;
}

Catalog readCatalog(sqlite3 *handle)
{
    Catalog catalog;
    const Statement tables = prepare(handle, "select name, sql from sqlite_master where type = 'table' and "
                                             "name not like 'sqlite!_%' escape '!' order by rowid");
    while (nextRow(handle, tables)) {
        CatalogTable table;
        table.name = columnText(tables, 0);
        table.system = table.name.startsWith("system_"_L1, Qt::CaseInsensitive);
        const QString tableText = columnText(tables, 1);
        const Statement columns = prepare(handle, "pragma table_info(" + quotedName(table.name) + ')');
        while (nextRow(handle, columns)) {
            table.columns.push_back(columnFromDeclaration(columnText(columns, 1), columnText(columns, 2),
                                                          columnText(columns, 4), tableText));
        }
        catalog.add(std::move(table));
    }
    return catalog;
}

} // namespace sql
