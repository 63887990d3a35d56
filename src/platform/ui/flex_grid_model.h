#pragma once

#include "platform/ui/flex_grid.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>
#include <QtCore/QStringList>

#include <functional>

/// The grid's texts and looks. Its rows are the rows of data: grid row 1 is model row 0.
class FlexGrid::Model : public QAbstractTableModel
{
public:
    /// `reloaded` is called after each reload, once the model stands.
    Model(FlexGrid *grid, std::function<void()> reloaded);
    ~Model() override;

    void bind(const RecordsetPtr &source);
    void setFixedCols(int count);
    int fixedCols() const { return m_fixedCols; }

    QString text(int row, int column) const;
    void setText(int row, int column, const QString &text);
    const QString &heading(int column) const { return m_headings[column]; }
    void setHeading(int column, const QString &heading);
    const QStringList &fieldNames() const { return m_fieldNames; }
    /// Adds columns without a field until there are so many.
    void growTo(int columns);
    void setAlignment(int column, Qt::Alignment alignment);
    void setRowColor(int row, const QColor &color);
    void setCellColor(int row, int column, const QColor &color);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void unbind();
    void reload();
    /// Keeps all texts of a set that is not too large, which then stay when it is closed.
    void keepTexts();
    /// The text with the marks that keep it as it is written inside a line from right to left.
    QString shown(const QString &text) const;
    QVariant shownAlignment(int column) const;

    FlexGrid *m_grid;
    std::function<void()> m_reloaded;
    RecordsetPtr m_source;
    int m_connection = 0;
    RecordsetPtr m_rows; ///< a view of its own of the source's rows; null when all texts are kept
    int m_rowCount = 1;
    int m_fixedCols = 1;
    QStringList m_headings;
    QStringList m_fieldNames;
    QList<Qt::Alignment> m_alignments;
    QHash<std::pair<int, int>, QString> m_texts; ///< those that were set or are kept
    QHash<int, QColor> m_rowColors;
    QHash<std::pair<int, int>, QColor> m_cellColors;
};
