#include "platform/ui/bound_grid.h"

#include "platform/runtime/runtime_error.h"
#include "platform/ui/bound_grid_model.h"
#include "platform/ui/cell_delegate.h"
#include "platform/ui/controls.h"
#include "platform/ui/process.h"

#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>

#include <algorithm>
#include <utility>

namespace
{
constexpr int refusedByHandler = 3712;
}

/// Takes the set along before another row becomes the current one.
class BoundGrid::Cursor : public QItemSelectionModel
{
public:
    explicit Cursor(BoundGrid *grid) : QItemSelectionModel(grid->model(), grid), m_grid(grid) {}

    void setCurrentIndex(const QModelIndex &index, SelectionFlags command) override
    {
        const QPersistentModelIndex wanted(index);
        if (m_grid->goTo(index) && wanted.isValid() == index.isValid())
            QItemSelectionModel::setCurrentIndex(wanted, command);
    }

private:
    BoundGrid *m_grid;
};

class BoundGrid::CellEditing : public CellDelegate
{
public:
    explicit CellEditing(BoundGrid *grid) : CellDelegate(grid), m_grid(grid) {}

    QLineEdit *editor() const { return m_editor; }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem cell = option;
        if (index == m_grid->currentIndex())
            cell.state |= QStyle::State_Selected;
        CellDelegate::paint(painter, cell, index);
    }
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &,
                          const QModelIndex &index) const override
    {
        m_editor = new QLineEdit(parent);
        m_editor->setFrame(false);
        m_editor->setFont(m_grid->font());
        m_editor->setAccessibleName(m_grid->caption(index.column()));
        m_editor->setAlignment(index.data(Qt::TextAlignmentRole).value<Qt::Alignment>());
        takeAsciiDigits(m_editor);
        return m_editor;
    }

private:
    BoundGrid *m_grid;
    mutable QPointer<QLineEdit> m_editor;
};

/// A text that the set did not take, until the user was told of it.
struct BoundGrid::RefusedEntry {
    QPersistentModelIndex cell;
    QString typed;
    RuntimeError error;
};

BoundGrid::BoundGrid(QWidget *parent)
    : DataGrid(std::make_unique<BoundGridModel>(), parent), m_rows(static_cast<BoundGridModel *>(&rows())),
      m_editing(new CellEditing(this)), m_button(new QToolButton(viewport()))
{
    m_rows->setRefused([this](const QModelIndex &cell, const QString &typed, const RuntimeError &error) {
        keepEntry(cell, typed, error);
    });
    setSelectionModel(new Cursor(this));
    setItemDelegate(m_editing);
    setSelectionMode(NoSelection); // the current cell is what there is to see
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(true);
    m_button->setArrowType(Qt::DownArrow);
    m_button->setFocusPolicy(Qt::NoFocus);
    m_button->hide();
    connect(m_button, &QToolButton::clicked, this, [this] { Q_EMIT buttonClick(col()); });
}

BoundGrid::~BoundGrid()
{
    disconnectSource();
    m_rows->setSource(nullptr);
}

// --- binding

void BoundGrid::setDataSource(const RecordsetPtr &source)
{
    if (source)
        source->fieldCount(); // throws for a closed one
    disconnectSource();
    m_refused.reset();
    m_rows->setSource(source);
    DataGrid::setDataSource(source);
    if (!source)
        return placeButton();
    m_moved = source->moveComplete.connect([this] { followSource(); });
    m_rowsChanged = source->rowsChanged.connect([this] { showRows(); });
    m_fieldChanged = source->fieldChanged.connect([this](int column) {
        const QModelIndex cell = m_rows->index(row(), column);
        if (m_rows->isCurrentRow(row()))
            Q_EMIT m_rows->dataChanged(cell, cell);
    });
    followSource();
}

void BoundGrid::disconnectSource()
{
    const RecordsetPtr &source = m_rows->source();
    if (!source)
        return;
    source->moveComplete.disconnect(m_moved);
    source->rowsChanged.disconnect(m_rowsChanged);
    source->fieldChanged.disconnect(m_fieldChanged);
}

void BoundGrid::showRows()
{
    if (m_rows->isLive()) {
        m_rows->setRows(m_rows->source()->rowsShown());
        followSource();
    }
    placeButton();
}

void BoundGrid::followSource()
{
    const int current = m_rows->source()->absolutePosition() - 1;
    if (current < 0 || current >= rowCount())
        return selectionModel()->clearCurrentIndex();
    setCurrentIndex(m_rows->index(current, std::max(col(), 0)));
}

bool BoundGrid::goTo(const QModelIndex &index)
{
    if (m_refused)
        return index.row() == row(); // first the user is told
    if (!index.isValid() || !m_rows->isLive() || m_rows->isCurrentRow(index.row()))
        return true;
    bool gone = false;
    runEventRoutine([&] {
        try {
            m_rows->source()->setAbsolutePosition(index.row() + 1);
            gone = true;
        } catch (const RuntimeError &error) {
            Q_EMIT failed(error);
        }
    });
    return gone;
}

// --- columns and the current cell

void BoundGrid::setLocked(int column, bool on)
{
    requireInside(column, columnCount());
    m_rows->column(column).locked = on;
}

void BoundGrid::setButton(int column, bool on)
{
    requireInside(column, columnCount());
    m_rows->column(column).button = on;
    placeButton();
}

int BoundGrid::row() const
{
    return currentIndex().row();
}

int BoundGrid::col() const
{
    return currentIndex().column();
}

QRect BoundGrid::cellRect() const
{
    return visualRect(currentIndex()).translated(viewport()->pos()) & viewport()->geometry();
}

QString BoundGrid::text() const
{
    return currentIndex().isValid() ? m_rows->text(row(), col()) : QString();
}

bool BoundGrid::setText(const QString &text)
{
    if (!currentIndex().isValid())
        return false;
    try {
        m_rows->write(col(), text);
    } catch (const RuntimeError &error) {
        Q_EMIT failed(error);
        return false;
    }
    return true;
}

void BoundGrid::placeButton()
{
    const QModelIndex cell = currentIndex();
    const bool wanted =
        cell.isValid() && m_rows->isLive() && m_rows->column(cell.column()).button && state() != EditingState;
    m_button->setVisible(wanted);
    if (!wanted)
        return;
    const QRect place = visualRect(cell);
    const QSize size(std::min(place.height(), place.width()), place.height());
    m_button->setGeometry(
        QStyle::alignedRect(layoutDirection(), Qt::AlignRight | Qt::AlignVCenter, size, place));
    m_button->setAccessibleName(caption(cell.column()));
}

void BoundGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    DataGrid::currentChanged(current, previous);
    viewport()->update();
    placeButton();
    Q_EMIT rowColChange();
}

void BoundGrid::updateEditorGeometries()
{
    DataGrid::updateEditorGeometries();
    placeButton();
}

void BoundGrid::scrollContentsBy(int dx, int dy)
{
    DataGrid::scrollContentsBy(dx, dy);
    placeButton();
}

// --- editing

bool BoundGrid::isRowEdited() const
{
    return m_rows->isLive() && m_rows->source()->editMode() != EditMode::None;
}

bool BoundGrid::isEditing() const
{
    return state() == EditingState || m_refused || isRowEdited();
}

bool BoundGrid::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    // The current cell is another one than was clicked when the set refused to go there.
    const bool opened = index == currentIndex() && DataGrid::edit(index, trigger, event);
    placeButton();
    return opened;
}

void BoundGrid::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    const bool back = hint == QAbstractItemDelegate::EditPreviousItem;
    const bool onward = hint == QAbstractItemDelegate::EditNextItem ||   // Tab
                        hint == QAbstractItemDelegate::SubmitModelCache; // Enter
    DataGrid::closeEditor(editor, QAbstractItemDelegate::NoHint);
    placeButton();
    if ((back || onward) && !m_refused)
        step(back ? -1 : 1);
}

bool BoundGrid::saveRow()
{
    if (state() == EditingState && m_editing->editor()) {
        QWidget *editor = m_editing->editor();
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
    if (m_refused) {
        offerEntry();
        return false;
    }
    if (!isRowEdited())
        return true;
    try {
        m_rows->source()->update();
    } catch (const RuntimeError &error) {
        Q_EMIT failed(error);
        return false;
    }
    return true;
}

void BoundGrid::cancelRow()
{
    runEventRoutine([this] {
        try {
            m_rows->source()->cancelUpdate();
        } catch (const RuntimeError &error) {
            Q_EMIT failed(error);
        }
    });
}

void BoundGrid::keepEntry(const QModelIndex &cell, const QString &typed, const RuntimeError &error)
{
    m_refused = std::make_unique<RefusedEntry>(RefusedEntry{cell, typed, error});
    // Not here, where the toolkit is closing the cell.
    QMetaObject::invokeMethod(
        this, [this] { runEventRoutine([this] { offerEntry(); }); }, Qt::QueuedConnection);
}

void BoundGrid::offerEntry()
{
    const auto refused = std::exchange(m_refused, nullptr);
    if (!refused)
        return;
    const QPointer<BoundGrid> self(this);
    Q_EMIT failed(refused->error);
    if (!self || refused->error.number() == refusedByHandler || refused->cell != currentIndex() ||
        !edit(refused->cell, AllEditTriggers, nullptr))
        return;
    m_editing->editor()->setText(refused->typed);
    m_editing->editor()->selectAll();
}

bool BoundGrid::step(int cells)
{
    const int next = row() * columnCount() + col() + cells;
    if (!currentIndex().isValid() || next < 0 || next >= rowCount() * columnCount())
        return false;
    setCurrentIndex(m_rows->index(next / columnCount(), next % columnCount()));
    return true;
}

void BoundGrid::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (state() != EditingState) // else the cell is closed by it
            step(1);
        return event->accept();
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return event->setAccepted(step(event->key() == Qt::Key_Tab ? 1 : -1));
    case Qt::Key_Escape:
        if (!isRowEdited())
            return event->ignore();
        cancelRow();
        return event->accept();
    case Qt::Key_F4:
        if (m_button->isVisible())
            m_button->click();
        return event->accept();
    default:
        return DataGrid::keyPressEvent(event);
    }
}
