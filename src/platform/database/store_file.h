#pragma once

#include "platform/database/connection.h"

#include <QtCore/QString>

#include <memory>
#include <vector>

/// One column of a table that is to be made.
struct ColumnDefinition {
    QString name;
    enum class Type { Text, Byte, Long, Money, Boolean, Date, Counter } type = Type::Text;
    int size = 0;                 ///< of a text, in UTF-16 units
    bool emptyTextAllowed = true; ///< of a text: False makes the store refuse a text of length zero
    bool defaultTrue = false;     ///< of a boolean: its default is True instead of False
};

/// One table that is to be made, with its indexes: each on one column and named as it.
struct TableDefinition {
    QString name;
    std::vector<ColumnDefinition> columns;
    std::vector<QString>
        indexes; ///< the first one is unique (and takes any number of Nulls), the others are plain
};

/// A store file in the making. Nothing of it is promised to be on the disk before close().
class StoreFile
{
public:
    /// Makes an encrypted file without tables at a path where nothing stands.
    /// @throws RuntimeError 58 when something stands there, 76 when the folder is missing, 75 when it can't
    /// be written.
    static StoreFile create(const QString &path, const QString &password);
    StoreFile(StoreFile &&) noexcept;
    StoreFile &operator=(StoreFile &&) noexcept;
    ~StoreFile(); ///< closes; errors are dropped

    /// Makes one table with its indexes and counters.
    /// @throws RuntimeError 3704 behind close(), and what the engine gives
    void appendTable(const TableDefinition &table);
    /// All tables are on the disk when this returns; nothing happens when it was called before.
    /// @throws RuntimeError as the engine and the file system do; then no table is there
    void close();

private:
    StoreFile();
    struct Private;
    std::unique_ptr<Private> d;
};
