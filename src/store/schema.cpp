#include "store/schema.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

using Type = ColumnDefinition::Type;
using Columns = std::vector<ColumnDefinition>;

ColumnDefinition counter(const QString &name)
{
    return {.name = name, .type = Type::Counter};
}
ColumnDefinition longNumber(const QString &name)
{
    return {.name = name, .type = Type::Long};
}
ColumnDefinition byte(const QString &name)
{
    return {.name = name, .type = Type::Byte};
}
ColumnDefinition money(const QString &name)
{
    return {.name = name, .type = Type::Money};
}
ColumnDefinition boolean(const QString &name)
{
    return {.name = name, .type = Type::Boolean};
}
ColumnDefinition date(const QString &name)
{
    return {.name = name, .type = Type::Date};
}
/// A text that may have a length of zero.
ColumnDefinition looseText(const QString &name, int size)
{
    return {.name = name, .type = Type::Text, .size = size, .emptyTextAllowed = true};
}
/// A text that may not.
ColumnDefinition text(const QString &name, int size)
{
    return {.name = name, .type = Type::Text, .size = size, .emptyTextAllowed = false};
}

Columns operator+(Columns left, const Columns &right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

/// The end of an entry's row, in `ledger` and `general`.
Columns entryColumns()
{
    return {date(u"ddate"_s),
            date(u"enteredon"_s),
            text(u"enteredby"_s, 20),
            looseText(u"transactiondetail"_s, 100),
            looseText(u"paymentdetail"_s, 100),
            text(u"paymentmethod"_s, 15),
            longNumber(u"gtype"_s)};
}

Columns generalColumns(const ColumnDefinition &id)
{
    return Columns{id, longNumber(u"transactionid"_s), boolean(u"valid"_s), boolean(u"creditordebit"_s),
                   money(u"amount"_s)} +
           entryColumns() + Columns{date(u"lastupdate"_s)};
}

Columns memberColumns(const ColumnDefinition &valid)
{
    return {
        text(u"name"_s, 50), byte(u"sex"_s), looseText(u"title"_s, 10), byte(u"relation"_s), date(u"dob"_s),
        byte(u"group"_s),    valid,          date(u"lastupdate"_s)};
}

Columns userColumns(const ColumnDefinition &password)
{
    return {counter(u"id"_s),        text(u"userid"_s, 20),    password,
            text(u"name"_s, 50),     byte(u"rank"_s),          date(u"lastlogin"_s),
            date(u"createdon"_s),    text(u"createdby"_s, 20), boolean(u"valid"_s),
            date(u"lastupdate"_s),   text(u"language"_s, 10),  text(u"fontname"_s, 50),
            text(u"fontsize"_s, 50), text(u"fontbold"_s, 50),  text(u"fontcolor"_s, 50)};
}

/// An audit table keeps the columns of the table that it shadows between its own key and the mark of the
/// change.
Columns audited(const ColumnDefinition &key, const Columns &columns)
{
    return Columns{key} + columns +
           Columns{date(u"updatedon"_s), text(u"updatedby"_s, 20), text(u"updatetype"_s, 10)};
}

/// A list of words in both languages.
Columns wordColumns(const QString &word, int size)
{
    return {counter(u"id"_s), text(word + u"ar"_s, size), text(word + u"en"_s, size)};
}

std::vector<TableDefinition> makeTables()
{
    ColumnDefinition memberValid = boolean(u"valid"_s);
    memberValid.defaultTrue = true;

    return {
        {u"archives"_s,
         {text(u"table"_s, 30), text(u"archive"_s, 30), text(u"interval"_s, 30)},
         {u"archive"_s}},
        {u"settings"_s,
         {longNumber(u"id"_s), text(u"desceased"_s, 50), date(u"lastcompacted"_s), longNumber(u"sn"_s)},
         {u"id"_s}},
        {u"ledger"_s,
         Columns{counter(u"id"_s), text(u"name"_s, 50), longNumber(u"transactionid"_s),
                 boolean(u"creditordebit"_s), money(u"amount"_s), money(u"totalamount"_s),
                 boolean(u"valid"_s)} +
             entryColumns(),
         {u"id"_s, u"name"_s, u"transactionid"_s, u"creditordebit"_s, u"gtype"_s}},
        {u"members"_s, memberColumns(memberValid), {u"name"_s}},
        {u"audit_members"_s,
         audited(counter(u"idkey"_s), memberColumns(boolean(u"valid"_s))),
         {u"idkey"_s, u"name"_s}},
        {u"relations"_s, wordColumns(u"relation"_s, 20), {u"id"_s}},
        {u"sexes"_s, wordColumns(u"sex"_s, 20), {u"id"_s}},
        {u"details"_s, wordColumns(u"detail"_s, 20) + Columns{boolean(u"credit"_s)}, {u"id"_s}},
        {u"users"_s, userColumns(looseText(u"password"_s, 20)), {u"id"_s, u"userid"_s}},
        // Here the copied id is the counter and the row's own key is not: that is meant.
        {u"audit_users"_s,
         audited(longNumber(u"idkey"_s), userColumns(text(u"password"_s, 20))),
         {u"idkey"_s, u"id"_s, u"userid"_s}},
        {u"general"_s,
         generalColumns(counter(u"id"_s)),
         {u"id"_s, u"transactionid"_s, u"creditordebit"_s, u"gtype"_s}},
        {u"audit_general"_s,
         audited(counter(u"idkey"_s), generalColumns(longNumber(u"id"_s))),
         {u"idkey"_s, u"id"_s, u"transactionid"_s}},
    };
}

} // namespace

const std::vector<TableDefinition> &storeTables()
{
    static const std::vector<TableDefinition> tables = makeTables();
    return tables;
}
