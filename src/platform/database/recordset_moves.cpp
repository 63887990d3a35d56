#include "platform/database/errors.h"
#include "platform/database/recordset_p.h"

#include <algorithm>

// The current row: where it stands, how it moves, what the filter shows.

int Recordset::recordCount() const
{
    d->requireOpen();
    return d->forwardOnly ? -1 : d->count();
}

int Recordset::rowCount() const
{
    d->requireOpen();
    return d->count();
}

bool Recordset::bof() const
{
    d->requireOpen();
    return d->mode != EditMode::Add && (d->count() == 0 || d->position == Private::bof);
}

bool Recordset::eof() const
{
    d->requireOpen();
    return d->mode != EditMode::Add && (d->count() == 0 || d->position == Private::eof);
}

void Recordset::moveTo(int position)
{
    const auto keep = shared_from_this();
    d->position = position;
    moveComplete.raise();
}

void Recordset::leaveRow()
{
    d->requireIdle();
    if (d->mode == EditMode::None)
        return;
    update();
    d->requireOpen(); // a handler may have closed the set
}

void Recordset::moveFirst()
{
    leaveRow();
    if (d->count() == 0)
        throw data_errors::noCurrentRow();
    moveTo(0);
}

void Recordset::moveLast()
{
    leaveRow();
    if (d->count() == 0)
        throw data_errors::noCurrentRow();
    moveTo(d->count() - 1);
}

void Recordset::moveNext()
{
    leaveRow();
    if (eof())
        throw data_errors::noCurrentRow();
    const int next = d->position + 1; // from BOF to the first row
    moveTo(next < d->count() ? next : Private::eof);
}

void Recordset::movePrevious()
{
    leaveRow();
    if (bof())
        throw data_errors::noCurrentRow();
    const int previous = (d->position == Private::eof ? d->count() : d->position) - 1;
    moveTo(previous >= 0 ? previous : Private::bof);
}

int Recordset::absolutePosition() const
{
    d->requireOpen();
    if (d->mode == EditMode::Add)
        return positionUnknown;
    d->readAll();
    if (d->position >= 0 && d->position < d->count())
        return d->position + 1;
    return d->position == Private::bof ? positionBof : positionEof;
}

void Recordset::setAbsolutePosition(int position)
{
    leaveRow();
    d->readAll();
    if (position == positionBof)
        return moveTo(Private::bof);
    if (position == positionEof)
        return moveTo(Private::eof);
    if (position < 1 || position > d->count())
        throw data_errors::wrongArguments();
    moveTo(position - 1);
}

int Recordset::bookmark() const
{
    d->requireOpen();
    d->readAll();
    return (d->mode == EditMode::Add ? d->rows->count() : d->currentRow()) + 1;
}

void Recordset::setBookmark(int bookmark)
{
    leaveRow();
    const int row = bookmark - 1;
    if (!d->view) {
        if (row < 0 || row >= d->count())
            throw data_errors::noCurrentRow();
        return moveTo(row);
    }
    const auto found = std::ranges::lower_bound(*d->view, row);
    if (found == d->view->end() || *found != row) // hidden by the filter
        throw data_errors::noCurrentRow();
    moveTo(int(found - d->view->begin()));
}

void Recordset::setFilter(const QString &filter)
{
    leaveRow();
    const auto keep = shared_from_this();
    d->select(filter);
    rowsChanged.raise();
    moveComplete.raise();
}

const QString &Recordset::filter() const noexcept
{
    return d->filter;
}

void Recordset::find(const QString &criterion)
{
    leaveRow();
    const database::RowCondition wanted(criterion, d->rows->fields(),
                                        database::RowCondition::Form::Criterion);
    d->currentRow(); // without one there is nothing to start from
    int position = d->position;
    while (position < d->count() && !wanted.matches(*d->rows, d->rowAt(position)))
        ++position;
    moveTo(position < d->count() ? position : Private::eof);
}
