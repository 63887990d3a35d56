#include "platform/ui/flex_grid_model.h"

#include "platform/ui/cell_text.h"

#include <utility>

FlexGrid::Model::Model(FlexGrid *grid, std::function<void()> reloaded)
    : m_grid(grid), m_reloaded(std::move(reloaded))
{
    growTo(m_fixedCols + 1);
}

FlexGrid::Model::~Model()
{
    unbind();
}

void FlexGrid::Model::unbind()
{
    if (m_source)
        m_source->rowsChanged.disconnect(m_connection);
    m_source.reset();
}

void FlexGrid::Model::bind(const RecordsetPtr &source)
{
    unbind();
    if (!source)
        return;
    m_source = source;
    m_connection = source->rowsChanged.connect([this] { reload(); });
    reload();
}

void FlexGrid::Model::setFixedCols(int count)
{
    beginResetModel();
    m_fixedCols = qBound(0, count, 1);
    m_headings.clear();
    m_fieldNames.clear();
    m_alignments.clear();
    endResetModel();
    growTo(m_fixedCols + 1);
}

void FlexGrid::Model::reload()
{
    if (!m_source->isOpen())
        return;
    RecordsetPtr rows = m_source->clone();
    if (!m_source->filter().isEmpty())
        rows->setFilter(m_source->filter());

    beginResetModel();
    m_rows = std::move(rows);
    m_rowCount = qMax(1, m_rows->rowCount());
    m_texts.clear();
    m_cellColors.clear();
    m_fieldNames = QStringList(m_fixedCols);
    m_alignments = QList<Qt::Alignment>(m_fixedCols, Qt::AlignLeading);
    for (int i = 0; i < m_rows->fieldCount(); ++i) {
        const FieldInfo &field = m_rows->field(i);
        m_fieldNames << field.name;
        m_alignments << alignmentOf(field.type);
    }
    m_headings = m_fieldNames;
    keepTexts();
    endResetModel();
    m_reloaded();
}

void FlexGrid::Model::keepTexts()
{
    constexpr qint64 mostCells = 20000;
    const int fields = m_rows->fieldCount();
    if (qint64(m_rows->rowCount()) * fields > mostCells)
        return;
    for (int row = 0; row < m_rows->rowCount(); ++row) {
        for (int field = 0; field < fields; ++field)
            m_texts.insert({row, field + m_fixedCols}, m_rows->valueAt(row, field).toText());
    }
    m_rows.reset();
}

QString FlexGrid::Model::text(int row, int column) const
{
    const auto set = m_texts.constFind({row, column});
    if (set != m_texts.constEnd())
        return *set;
    const int field = column - m_fixedCols;
    if (!m_rows || !m_rows->isOpen() || field < 0 || field >= m_rows->fieldCount() ||
        row >= m_rows->rowCount())
        return {};
    return m_rows->valueAt(row, field).toText();
}

void FlexGrid::Model::setText(int row, int column, const QString &text)
{
    m_texts.insert({row, column}, text);
    Q_EMIT dataChanged(index(row, column), index(row, column));
}

void FlexGrid::Model::setHeading(int column, const QString &heading)
{
    m_headings[column] = heading;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

void FlexGrid::Model::growTo(int columns)
{
    const int before = columnCount();
    if (columns <= before)
        return;
    beginInsertColumns({}, before, columns - 1);
    for (int column = before; column < columns; ++column) {
        m_headings << QString();
        m_fieldNames << QString();
        m_alignments << Qt::AlignLeading;
    }
    endInsertColumns();
}

void FlexGrid::Model::setAlignment(int column, Qt::Alignment alignment)
{
    m_alignments[column] = alignment;
}

void FlexGrid::Model::setRowColor(int row, const QColor &color)
{
    if (color.isValid())
        m_rowColors.insert(row, color);
    else
        m_rowColors.remove(row);
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void FlexGrid::Model::setCellColor(int row, int column, const QColor &color)
{
    if (color.isValid())
        m_cellColors.insert({row, column}, color);
    else
        m_cellColors.remove({row, column});
    Q_EMIT dataChanged(index(row, column), index(row, column));
}

int FlexGrid::Model::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rowCount;
}

int FlexGrid::Model::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_headings.size());
}

QString FlexGrid::Model::shown(const QString &text) const
{
    return isolated(text, m_grid->layoutDirection());
}

QVariant FlexGrid::Model::shownAlignment(int column) const
{
    // Absolute: headings are drawn without regard to the grid's own direction.
    return QVariant::fromValue(absoluteAlignment(m_alignments[column], m_grid->layoutDirection()));
}

QVariant FlexGrid::Model::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int row = index.row();
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return shown(text(row, column));
    case Qt::AccessibleTextRole:
        return text(row, column);
    case Qt::TextAlignmentRole:
        return shownAlignment(column);
    case Qt::BackgroundRole:
        if (column < m_fixedCols)
            return m_grid->palette().color(QPalette::Button);
        if (const QColor cell = m_cellColors.value({row, column}); cell.isValid())
            return cell;
        if (const QColor line = m_rowColors.value(row); line.isValid())
            return line;
        return {};
    default:
        return {};
    }
}

QVariant FlexGrid::Model::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section >= columnCount())
        return {};
    if (role == Qt::DisplayRole)
        return shown(m_headings[section]);
    if (role == Qt::TextAlignmentRole)
        return shownAlignment(section);
    return {};
}
