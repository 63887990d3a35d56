#include "platform/ui/bound_grid_model.h"

#include "platform/runtime/runtime_error.h"
#include "platform/ui/process.h"

#include <QtGui/QColor>

void BoundGridModel::write(int column, const QString &text)
{
    const bool isText = m_source->field(column).type == FieldType::Text;
    m_source->setValue(column, text.isEmpty() && !isText ? Value() : Value(text));
}

Qt::ItemFlags BoundGridModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = DataGridModel::flags(index);
    const bool free = index.isValid() && isCurrentRow(index.row()) && m_source->isUpdatable() &&
                      !column(index.column()).locked;
    return free ? flags | Qt::ItemIsEditable : flags;
}

QVariant BoundGridModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::EditRole)
        return text(index.row(), index.column());
    if (role == Qt::BackgroundRole && isCurrentRow(index.row()))
        return QColor(222, 232, 247);
    return DataGridModel::data(index, role);
}

bool BoundGridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const QString typed = value.toString();
    if (role != Qt::EditRole || !flags(index).testFlag(Qt::ItemIsEditable) ||
        typed == text(index.row(), index.column()))
        return false;
    bool written = false;
    runEventRoutine([&] {
        try {
            write(index.column(), typed);
            written = true;
        } catch (const RuntimeError &error) {
            m_refused(index, typed, error);
        }
    });
    return written;
}

Value BoundGridModel::value(int row, int column) const
{
    const bool changing = isCurrentRow(row) && m_source->editMode() == EditMode::InProgress;
    return changing ? m_source->value(column) : DataGridModel::value(row, column);
}
