#include "platform/database/store_file.h"

#include "platform/database/engine.h"
#include "platform/database/errors.h"
#include "platform/database/sql/ddl.h"
#include "platform/database/store_path.h"

#include <QtCore/QFile>

#include <optional>

struct StoreFile::Private {
    QString path;
    std::optional<database::Engine> engine; // none: closed
};

namespace
{

int fieldSize(const ColumnDefinition &column)
{
    using Type = ColumnDefinition::Type;
    switch (column.type) {
    case Type::Text:
        return column.size;
    case Type::Byte:
        return 1;
    case Type::Boolean:
        return 2;
    case Type::Long:
    case Type::Counter:
        return 4;
    case Type::Money:
    case Type::Date:
        return 8;
    }
    Q_UNREACHABLE();
}

FieldType fieldType(ColumnDefinition::Type type)
{
    using Type = ColumnDefinition::Type;
    switch (type) {
    case Type::Text:
        return FieldType::Text;
    case Type::Byte:
        return FieldType::Byte;
    case Type::Boolean:
        return FieldType::Boolean;
    case Type::Long:
    case Type::Counter:
        return FieldType::Long;
    case Type::Money:
        return FieldType::Money;
    case Type::Date:
        return FieldType::Date;
    }
    Q_UNREACHABLE();
}

} // namespace

StoreFile::StoreFile() : d(std::make_unique<Private>()) {}
StoreFile::StoreFile(StoreFile &&) noexcept = default;

StoreFile &StoreFile::operator=(StoreFile &&other) noexcept
{
    if (d)
        ignoringErrors([this] { close(); });
    d = std::move(other.d);
    return *this;
}

StoreFile::~StoreFile()
{
    if (d)
        ignoringErrors([this] { close(); });
}

StoreFile StoreFile::create(const QString &path, const QString &password)
{
    database::createEmptyFile(path);
    StoreFile file;
    file.d->path = path;
    try {
        file.d->engine = database::Engine::initialize(path, password);
        // One transaction from here to close(): a store appears whole.
        file.d->engine->run("begin immediate");
        file.d->engine->stampCollation("main");
        file.d->engine->run(sql::createCountersText());
    } catch (...) {
        file.d->engine.reset();
        QFile::remove(path);
        throw;
    }
    return file;
}

void StoreFile::appendTable(const TableDefinition &table)
{
    if (!d->engine)
        throw data_errors::objectClosed();
    sql::CatalogTable entry;
    entry.name = table.name;
    bool hasCounter = false;
    for (const ColumnDefinition &column : table.columns) {
        const bool counter = column.type == ColumnDefinition::Type::Counter;
        hasCounter = hasCounter || counter;
        entry.columns.push_back({.name = column.name,
                                 .type = fieldType(column.type),
                                 .size = fieldSize(column),
                                 .counter = counter,
                                 .emptyTextAllowed = column.emptyTextAllowed,
                                 .defaultTrue = column.defaultTrue});
    }
    d->engine->run(sql::createTableText(entry));
    for (const QByteArray &text : sql::createIndexTexts(entry, table.indexes))
        d->engine->run(text);
    if (hasCounter)
        d->engine->run(sql::startCounterStep(table.name));
}

void StoreFile::close()
{
    if (!d->engine)
        return;
    std::optional<database::Engine> engine;
    engine.swap(d->engine); // closed, whatever comes
    engine->run("commit");
    engine.reset();
    database::makeFolderDurable(d->path);
}
