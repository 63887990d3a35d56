#include "platform/database/recordset.h"

#include "platform/database/errors.h"
#include "platform/database/recordset_p.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

// --- the shared state

void Recordset::Private::requireOpen() const
{
    if (!rows)
        throw data_errors::objectClosed();
}

void Recordset::Private::requireIdle() const
{
    requireOpen();
    if (inEvent)
        throw data_errors::processingEvent();
}

void Recordset::Private::requireNotEditing() const
{
    requireIdle();
    if (mode != EditMode::None)
        throw data_errors::notAllowedInContext();
}

bool Recordset::Private::isUpdatable() const
{
    return lock != LockType::ReadOnly && !compiled->baseTable.isEmpty();
}

void Recordset::Private::requireUpdatable() const
{
    requireIdle();
    if (!isUpdatable())
        throw data_errors::notUpdatable();
}

int Recordset::Private::count()
{
    readAll();
    return view ? int(view->size()) : rows->count();
}

int Recordset::Private::currentRow()
{
    requireOpen();
    readAll(); // moves the position
    if (position < 0 || position >= count())
        throw data_errors::noCurrentRow();
    return rowAt(position);
}

int Recordset::Private::fieldIndex(const QString &name) const
{
    requireOpen();
    const auto &fields = compiled->columns;
    const auto found = std::ranges::find_if(
        fields, [&](const FieldInfo &info) { return info.name.compare(name, Qt::CaseInsensitive) == 0; });
    return found == fields.end() ? -1 : int(found - fields.begin());
}

int Recordset::Private::indexOf(const QString &name) const
{
    const int index = fieldIndex(name);
    return index >= 0 ? index : throw data_errors::noSuchItem();
}

const FieldInfo &Recordset::Private::field(int index) const
{
    requireOpen();
    if (index < 0 || index >= int(compiled->columns.size()))
        throw data_errors::noSuchItem();
    return compiled->columns[std::size_t(index)];
}

void Recordset::Private::readAll()
{
    if (!unread)
        return;
    *rows = std::move(*readRows()); // the same object: a caller may have its hand on it already
    unread = false;
    position = rows->count() > 0 ? 0 : eof;
    if (addedRowid) {
        int row = rows->count() - 1;
        while (row >= 0 && rows->rowid(row) != addedRowid)
            --row;
        position = row >= 0 ? row : eof;
    }
    if (mode == EditMode::Add)
        returnPosition = position;
}

std::shared_ptr<database::Rows> Recordset::Private::emptyRows() const
{
    return std::make_shared<database::Rows>(compiled->columns, !compiled->baseTable.isEmpty());
}

std::shared_ptr<database::Rows> Recordset::Private::readRows()
{
    database::Session &session = connection->session();
    auto result = emptyRows();
    const sql::Step &step = compiled->steps.front();
    database::Run run(session.prepared(step.text), step.parameters);
    result->read(run, readProgress);
    return result;
}

database::TableAccess Recordset::Private::tableAccess(std::vector<int> &columns) const
{
    database::TableAccess access(connection->session(), compiled->baseTable);
    for (const FieldInfo &info : rows->fields())
        columns.push_back(info.baseColumn.isEmpty() ? -1 : access.column(info.baseColumn));
    return access;
}

database::TableAccess::Key Recordset::Private::keyOf(int row, const std::vector<int> &columns) const
{
    database::TableAccess::Key key{*rows->rowid(row), {}};
    for (std::size_t index = 0; index < columns.size(); ++index) {
        if (columns[index] >= 0 && rows->fields()[index].counter)
            key.identity.push_back({columns[index], rows->value(row, int(index))});
    }
    return key;
}

void Recordset::Private::takeValues(int row, const std::vector<int> &columns,
                                    const std::vector<Value> &values) const
{
    for (std::size_t index = 0; index < columns.size(); ++index) {
        if (columns[index] >= 0)
            rows->setValue(row, int(index), values[std::size_t(columns[index])]);
    }
}

void Recordset::Private::select(const QString &text)
{
    readAll();
    if (text.trimmed().isEmpty()) {
        view.reset();
    } else {
        const database::RowCondition wanted(text, rows->fields(), database::RowCondition::Form::Filter);
        std::vector<int> selected;
        for (int row = 0; row < rows->count(); ++row) {
            if (wanted.matches(*rows, row))
                selected.push_back(row);
        }
        view = std::move(selected);
    }
    filter = text;
    position = count() > 0 ? 0 : eof;
}

void Recordset::Private::close()
{
    rows.reset();
    unread = false;
    addedRowid.reset();
    compiled.reset();
    connection.reset();
    view.reset();
    filter.clear();
    changes.clear();
    mode = EditMode::None;
    position = eof;
}

// --- opening

Recordset::Recordset() : d(std::make_unique<Private>()) {}

Recordset::~Recordset() = default; // a pending edit is dropped

std::shared_ptr<Recordset> Recordset::create()
{
    return std::shared_ptr<Recordset>(new Recordset);
}

void Recordset::open(const QString &source, const ConnectionPtr &connection, CursorType cursor, LockType lock,
                     CommandKind kind)
{
    if (d->rows)
        throw data_errors::objectOpen();
    if (!connection || !connection->isOpen())
        throw data_errors::invalidConnection();
    database::Session &session = connection->session();
    auto compiled = kind == CommandKind::Table ? session.compileTable(source) : session.compile(source);
    if (compiled->kind != sql::StatementKind::Select) { // without rows there is nothing to open
        session.run(*compiled);
        return;
    }
    d->connection = connection;
    d->source = source;
    d->kind = kind;
    d->lock = lock;
    const CursorType type = cursor == CursorType::ForwardOnly ? d->cursorWanted.value_or(cursor) : cursor;
    d->forwardOnly = type == CursorType::ForwardOnly &&
                     d->locationWanted.value_or(connection->cursorLocation()) == CursorLocation::Server;
    d->compiled = std::move(compiled);
    if (kind == CommandKind::Table && d->isUpdatable()) {
        d->rows = d->emptyRows();
        d->unread = true;
        d->position = 0;
    } else {
        try {
            d->rows = d->readRows();
        } catch (...) {
            d->close();
            throw;
        }
        d->select({});
    }
    const auto keep = shared_from_this(); // a handler may let go of the set
    connection->attach(keep);
    rowsChanged.raise();
    moveComplete.raise();
}

void Recordset::open(const QString &source, const QString &connectionString, CursorType cursor, LockType lock,
                     CommandKind kind)
{
    if (d->rows)
        throw data_errors::objectOpen();
    const ConnectionPtr own = Connection::create();
    own->open(connectionString);
    open(source, own, cursor, lock, kind);
}

void Recordset::close()
{
    d->requireNotEditing();
    const auto keep = shared_from_this();
    d->close();
    rowsChanged.raise();
}

void Recordset::connectionClosed()
{
    d->close();
}

int Recordset::state() const noexcept
{
    return d->rows ? stateOpen : stateClosed;
}

const QString &Recordset::source() const noexcept
{
    return d->source;
}

void Recordset::setCursorLocation(CursorLocation location) noexcept
{
    d->locationWanted = location;
}

void Recordset::setCursorType(CursorType cursor) noexcept
{
    d->cursorWanted = cursor;
}

std::shared_ptr<Recordset> Recordset::clone()
{
    d->requireIdle();
    d->readAll();
    auto copy = create();
    copy->d->connection = d->connection;
    copy->d->source = d->source;
    copy->d->kind = d->kind;
    copy->d->forwardOnly = d->forwardOnly;
    copy->d->lock = d->lock;
    copy->d->compiled = d->compiled;
    copy->d->rows = d->rows;
    copy->d->select({});
    d->connection->attach(copy);
    return copy;
}

void Recordset::requery()
{
    d->requireNotEditing();
    const auto keep = shared_from_this();
    database::Session &session = d->connection->session();
    const bool isTable = d->kind == CommandKind::Table;
    auto compiledBefore = d->compiled;
    auto rowsBefore = d->rows;
    const bool unreadBefore = d->unread;
    d->compiled = isTable ? session.compileTable(d->source) : session.compile(d->source);
    try {
        d->rows = d->readRows();
        d->unread = false;
        d->select(d->filter); // may name a column that is gone
    } catch (...) {           // the old rows stay
        d->compiled = std::move(compiledBefore);
        d->rows = std::move(rowsBefore);
        d->unread = unreadBefore;
        throw;
    }
    rowsChanged.raise();
    moveComplete.raise();
}

void Recordset::resync()
{
    d->requireNotEditing();
    if (d->compiled->baseTable.isEmpty())
        throw data_errors::notUpdatable();
    const auto keep = shared_from_this();
    d->readAll();
    std::vector<int> columns;
    database::TableAccess access = d->tableAccess(columns);
    for (int row = 0; row < d->rows->count(); ++row) {
        const auto values = access.read(d->keyOf(row, columns));
        if (values) // else removed by somebody; what was read of it stays
            d->takeValues(row, columns, *values);
    }
    rowsChanged.raise();
}

std::shared_ptr<const RowsShown> Recordset::rowsShown() const
{
    d->requireOpen();
    d->readAll();
    return std::make_shared<const RowsShown>(d->rows, d->view);
}

void Recordset::setReadProgress(std::function<void(int rows)> progress)
{
    d->readProgress = std::move(progress);
}

// --- fields

int Recordset::fieldCount() const
{
    d->requireOpen();
    return int(d->rows->fields().size());
}

const FieldInfo &Recordset::field(int index) const
{
    return d->field(index);
}

const FieldInfo &Recordset::field(const QString &name) const
{
    return d->field(d->indexOf(name));
}

int Recordset::fieldIndex(const QString &name) const
{
    return d->fieldIndex(name);
}

Value Recordset::value(int index) const
{
    d->field(index);
    const auto change = d->changes.find(index);
    if (change != d->changes.end())
        return change->second;
    if (d->mode == EditMode::Add)
        return d->blank[std::size_t(index)];
    return d->rows->value(d->currentRow(), index);
}

Value Recordset::value(const QString &name) const
{
    return value(d->indexOf(name));
}

Value Recordset::originalValue(int index) const
{
    d->field(index);
    return d->mode == EditMode::Add ? Value() : d->rows->value(d->currentRow(), index);
}

Value Recordset::originalValue(const QString &name) const
{
    return originalValue(d->indexOf(name));
}

Value Recordset::valueAt(int position, int index) const
{
    d->field(index);
    if (position < 0 || position >= d->count())
        throw data_errors::noCurrentRow();
    if (d->mode == EditMode::InProgress && position == d->position)
        return value(index);
    return d->rows->value(d->rowAt(position), index);
}
