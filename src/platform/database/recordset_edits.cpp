#include "platform/database/errors.h"
#include "platform/database/recordset_p.h"
#include "platform/database/sql/storage.h"

#include <QtCore/QScopedValueRollback>

// Changing rows: edits and new rows on their way to the store.

namespace
{

// A value as the field will give it back.
Value fitted(const Value &value, const FieldInfo &field)
{
    if (value.isNull() && field.type == FieldType::Boolean)
        return false; // a boolean is never Null
    Value result;
    try {
        result = sql::fromStorage(sql::toStorage(value, field.type), field.type);
    } catch (const RuntimeError &) { // the conversion's own failure has no place in this layer
        throw data_errors::multipleStep();
    }
    if (field.type == FieldType::Text && !sql::textFits(result.toText(), field.definedSize))
        throw data_errors::fieldTooSmall(true);
    return result;
}

} // namespace

void Recordset::announce(ChangeReason reason)
{
    RecordChange change{reason};
    {
        const QScopedValueRollback guard(d->inEvent, true);
        willChangeRecord.raise(change);
    }
    d->requireOpen(); // a handler may have closed the connection
    if (change.cancel)
        throw data_errors::operationCancelled();
}

void Recordset::setValue(int index, const Value &value)
{
    d->requireUpdatable();
    const auto keep = shared_from_this(); // a handler may let go of the set
    const FieldInfo &field = d->field(index);
    if (d->mode != EditMode::Add)
        d->currentRow();
    if (field.baseColumn.isEmpty() || (field.counter && d->mode != EditMode::Add))
        throw data_errors::multipleStep();
    const Value fit = fitted(value, field);
    if (d->mode == EditMode::None) {
        announce(ChangeReason::FirstChange);
        d->mode = EditMode::InProgress;
    }
    d->changes[index] = fit;
    fieldChanged.raise(index);
}

void Recordset::setValue(const QString &name, const Value &value)
{
    setValue(d->indexOf(name), value);
}

void Recordset::addNew()
{
    d->requireUpdatable();
    const auto keep = shared_from_this(); // a handler may let go of the set
    leaveRow();
    announce(ChangeReason::AddNew);
    std::vector<int> columns;
    const std::vector<Value> defaults = d->tableAccess(columns).defaults();
    d->blank.assign(columns.size(), Value());
    for (std::size_t index = 0; index < columns.size(); ++index) {
        if (columns[index] >= 0)
            d->blank[index] = defaults[std::size_t(columns[index])];
    }
    d->changes.clear();
    d->returnPosition = d->position;
    d->mode = EditMode::Add;
    moveComplete.raise();
}

void Recordset::update()
{
    d->requireIdle();
    const auto keep = shared_from_this(); // a handler may let go of the set
    if (d->mode == EditMode::None)
        return;
    announce(ChangeReason::Update);
    std::vector<int> columns;
    database::TableAccess access = d->tableAccess(columns);
    std::vector<database::TableAccess::Cell> cells;
    for (const auto &[index, value] : d->changes)
        cells.push_back({columns[std::size_t(index)], value});

    if (d->mode == EditMode::Add) {
        const auto [rowid, values] = access.insert(cells);
        if (d->unread) {
            d->addedRowid = rowid;
        } else {
            const int row = d->rows->append(rowid);
            d->takeValues(row, columns, values);
            if (d->view)
                d->view->push_back(row); // shown whether or not the filter would select it
            d->position = d->count() - 1;
        }
    } else {
        const int row = d->currentRow();
        access.update(d->keyOf(row, columns), cells);
        for (std::size_t index = 0; index < columns.size(); ++index) {
            // also a second field that shows the same column
            for (const database::TableAccess::Cell &cell : cells) {
                if (cell.column == columns[index])
                    d->rows->setValue(row, int(index), cell.value);
            }
        }
    }
    d->mode = EditMode::None;
    d->changes.clear();
    rowsChanged.raise();
}

void Recordset::cancelUpdate()
{
    d->requireIdle();
    const auto keep = shared_from_this(); // a handler may let go of the set
    if (d->mode == EditMode::None)
        return;
    const bool adding = d->mode == EditMode::Add;
    announce(adding ? ChangeReason::UndoAddNew : ChangeReason::UndoUpdate);
    const auto changes = std::exchange(d->changes, {});
    d->mode = EditMode::None;
    if (adding)
        return moveTo(d->returnPosition);
    for (const auto &[index, value] : changes)
        fieldChanged.raise(index);
}

void Recordset::updateBatch()
{
    update();
}

void Recordset::cancelBatch()
{
    cancelUpdate();
}

EditMode Recordset::editMode() const
{
    d->requireOpen();
    return d->mode;
}

bool Recordset::isUpdatable() const
{
    d->requireOpen();
    return d->isUpdatable();
}
