#pragma once

#include "platform/database/recordset.h"
#include "platform/database/store_file.h"

#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

/// Three rows of a text, an amount, a Boolean and a date, for the grids: `set` stands on them.
class RowsFixture : public testing::Test
{
protected:
    RowsFixture()
    {
        using namespace Qt::Literals::StringLiterals;
        using Type = ColumnDefinition::Type;
        const QString path = m_folder.filePath(u"store.mdb"_s);
        StoreFile file = StoreFile::create(path, u"pw"_s);
        file.appendTable({u"rows"_s,
                          {{u"name"_s, Type::Text, 50},
                           {u"amount"_s, Type::Money},
                           {u"valid"_s, Type::Boolean},
                           {u"dob"_s, Type::Date}},
                          {u"name"_s}});
        file.appendTable({u"cells"_s,
                          {{u"n"_s, Type::Long},
                           {u"t"_s, Type::Text, 50},
                           {u"amount"_s, Type::Money},
                           {u"day"_s, Type::Date}},
                          {}});
        file.close();
        connection->open(u"Provider=x;Data Source="_s + path + u";Jet OLEDB:Database Password=pw"_s);
        for (const QString &values : {u"'a',-5.5,true,'03/04/2004'"_s,
                                      u"'\u0645\u0631\u0649 7',null,false,null"_s, u"'c',null,true,null"_s})
            connection->execute(u"insert into rows (name,amount,valid,dob) values("_s + values + u")"_s);
        set->open(u"select name,amount,valid,dob from rows"_s, connection, CursorType::Static,
                  LockType::Optimistic);
    }

    /// Opens `set` on rows of a number from 1 on, a text, an amount and a date, told as `text,amount,date`.
    void openCells(const QStringList &rows)
    {
        using namespace Qt::Literals::StringLiterals;
        set->close();
        connection->beginTrans();
        for (int i = 0; i < rows.size(); ++i)
            connection->execute(u"insert into cells (n,t,amount,day) values(%1,"_s.arg(i + 1) + rows[i] +
                                u")"_s);
        connection->commitTrans();
        set->open(u"select n,t,amount,day from cells"_s, connection, CursorType::Static,
                  LockType::Optimistic);
    }

    QTemporaryDir m_folder;
    ConnectionPtr connection = Connection::create();
    RecordsetPtr set = Recordset::create();
};
