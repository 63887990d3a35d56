#pragma once

#include "platform/database/recordset.h"
#include "platform/database/store_file.h"

#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

/// Three rows of a text, an amount, a Boolean and a date, for the grids: `set` stands on them.
class RowsFixture : public testing::Test
{
protected:
    RowsFixture()
    {
        using Type = ColumnDefinition::Type;
        const QString path = m_folder.filePath(u"store.mdb"_s);
        StoreFile file = StoreFile::create(path, u"pw"_s);
        file.appendTable({u"rows"_s,
                          {{u"n"_s, Type::Long},
                           {u"name"_s, Type::Text, 50},
                           {u"amount"_s, Type::Money},
                           {u"valid"_s, Type::Boolean},
                           {u"dob"_s, Type::Date}},
                          {u"n"_s}});
        file.close();
        connection->open(u"Provider=x;Data Source="_s + path + u";Jet OLEDB:Database Password=pw"_s);
        const QString fields = u"name,amount,valid,dob"_s;
        openRows(fields, fields,
                 {u"'a',-5.5,true,'03/04/2004'"_s, u"'مرى 7',null,false,null"_s, u"'c',null,true,null"_s});
    }

    /// Opens `set` on `fields` of these rows alone, which are told as the values of `told`; n counts them.
    void openRows(const QString &fields, const QString &told, const QStringList &rows)
    {
        connection->execute(u"delete from rows"_s);
        connection->beginTrans();
        for (int i = 0; i < rows.size(); ++i)
            connection->execute(u"insert into rows (n,%1) values(%2,%3)"_s.arg(told).arg(i + 1).arg(rows[i]));
        connection->commitTrans();
        set = Recordset::create();
        set->open(u"select "_s + fields + u" from rows"_s, connection, CursorType::Static,
                  LockType::Optimistic);
    }
    /// The same on n, name, amount and dob; rows are told as `name,amount,dob`.
    void openCells(const QStringList &rows) { openRows(u"n,name,amount,dob"_s, u"name,amount,dob"_s, rows); }

    QTemporaryDir m_folder;
    ConnectionPtr connection = Connection::create();
    RecordsetPtr set;
};
