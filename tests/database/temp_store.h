#pragma once

#include "platform/database/connection.h"
#include "platform/database/recordset.h"
#include "platform/database/store_file.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/runtime_error.h"
#include "support/child_process.h"
#include "support/failures.h"
#include "support/store_reading.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

inline QString connectionTo(const QString &path, const QString &password = u"romanqvlt"_s)
{
    return u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + path + u";Jet OLEDB:Database Password="_s +
           password;
}

/// "ok", or the number and the beginning of the text of the failure.
template <typename Work>
std::string outcome(Work &&work)
{
    try {
        work();
        return "ok";
    } catch (const RuntimeError &error) {
        return std::to_string(error.number()) + ' ' + error.description().left(24).toStdString();
    }
}

/// A folder with a store of two tables and an open connection. The folder's name holds what a connection
/// string has to be careful with.
class TempStore : public ::testing::Test
{
protected:
    TempStore()
    {
        QDir(m_folder.path()).mkdir(u"a;b=c"_s);
        path = m_folder.filePath(u"a;b=c/store.mdb"_s);
        StoreFile file = StoreFile::create(path, u"romanqvlt"_s);
        using Type = ColumnDefinition::Type;
        file.appendTable({u"people"_s,
                          {{u"id"_s, Type::Counter},
                           {u"name"_s, Type::Text, 10, false},
                           {u"note"_s, Type::Text, 100},
                           {u"rank"_s, Type::Byte},
                           {u"group"_s, Type::Long},
                           {u"amount"_s, Type::Money},
                           {u"valid"_s, Type::Boolean, 0, true, true},
                           {u"married"_s, Type::Boolean},
                           {u"dob"_s, Type::Date}},
                          {u"name"_s, u"group"_s}});
        file.appendTable({u"settings"_s, {{u"id"_s, Type::Long}, {u"sn"_s, Type::Long}}, {u"id"_s}});
        file.close();
        connection = Connection::create();
        connection->open(connectionTo(path));
    }

    RecordsetPtr opened(const QString &source, LockType lock = LockType::Optimistic,
                        CommandKind kind = CommandKind::Text) const
    {
        RecordsetPtr set = Recordset::create();
        set->open(source, connection, CursorType::Static, lock, kind);
        return set;
    }
    RecordsetPtr table(const QString &name = u"people"_s) const
    {
        return opened(name, LockType::Optimistic, CommandKind::Table);
    }

    static void addRow(Recordset &set, const QString &name)
    {
        set.addNew();
        set.setValue(u"name"_s, name);
        set.update();
    }

    /// Rows with those names and groups 1, 2, 3 ... ; every odd one is valid.
    void addPeople(const QStringList &names)
    {
        int group = 0;
        for (const QString &name : names) {
            ++group;
            connection->execute(u"insert into people (name,[group],amount,valid,dob) values('%1',%2,%2.5,%3,"
                                "'0%2/02/2004')"_s.arg(name)
                                    .arg(group)
                                    .arg(group % 2 ? u"true"_s : u"false"_s));
        }
    }

    /// The values of a select, blanks between fields and commas between rows; read by a connection of its
    /// own.
    std::string rows(const QString &sql) const
    {
        const RecordsetPtr set = Recordset::create();
        set->open(sql, connectionTo(path), CursorType::Static);
        return shown(*set);
    }
    static std::string shown(const Recordset &set)
    {
        return linesOf(set, u" "_s, u"null"_s).join(u',').toStdString();
    }

    QTemporaryDir m_folder;
    QString path;
    ConnectionPtr connection;
};
