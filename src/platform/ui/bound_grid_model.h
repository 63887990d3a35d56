#pragma once

#include "platform/database/recordset.h"
#include "platform/ui/data_grid_model.h"

class RuntimeError;

/// The rows of a set with what is being changed in its current one.
class BoundGridModel : public DataGridModel
{
    Q_OBJECT

public:
    /// Told of a text that the set does not take. It must not throw.
    using Refused = std::function<void(const QModelIndex &cell, const QString &text, const RuntimeError &)>;

    void setSource(RecordsetPtr source) { m_source = std::move(source); }
    const RecordsetPtr &source() const { return m_source; }
    void setRefused(Refused refused) { m_refused = std::move(refused); }
    /// There is a set and it is open.
    bool isLive() const { return m_source && m_source->isOpen(); }
    bool isCurrentRow(int row) const { return isLive() && m_source->absolutePosition() == row + 1; }
    /// @throws RuntimeError as the set does
    void write(int column, const QString &text);

    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

protected:
    Value value(int row, int column) const override;

private:
    RecordsetPtr m_source;
    Refused m_refused;
};
