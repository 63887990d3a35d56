#include "users/frmUsers.h"

#include "core/engine.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/grid_page.h"
#include "platform/ui/twips.h"
#include "presentation/prepare_screen.h"
#include "presentation/vocabulary.h"
#include "ui_frmUsers.h"
#include "users/frmNewUser.h"

#include <QtCore/QScopedValueRollback>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollBar>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int cellPadding = 240; // of a grid column, in twips
constexpr int buttonRoom = 480;  // of the column with the button, in twips

} // namespace

frmUsers::frmUsers() : Screen(u"frmUsers"_s), m_ui(std::make_unique<Ui::frmUsers>())
{
    m_ui->setupUi(this);
    setFixedWidth(m_ui->surface->minimumWidth());
    BoundGrid *grid = m_ui->grdDataGrid;
    connect(grid, &BoundGrid::buttonClick, this, &frmUsers::grdDataGrid_ButtonClick);
    connect(grid, &BoundGrid::failed, this, &frmUsers::grdDataGrid_Error);
    connect(grid, &BoundGrid::rowColChange, this, &frmUsers::grdDataGrid_RowColChange);
    for (QScrollBar *bar : {grid->horizontalScrollBar(), grid->verticalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, &m_toTheEnd, [this] { hideRanks(); }); // its cell moves away
    connect(qApp, &QApplication::focusChanged, &m_toTheEnd,
            [this](const QWidget *, const QWidget *now) { followFocus(now); });
    connect(m_ui->ComboRank, &QComboBox::activated, this, &frmUsers::ComboRank_Click);
    connect(m_ui->cmdAdd, &QPushButton::clicked, this, &frmUsers::cmdAdd_Click);
    connect(m_ui->cmdDelete, &QPushButton::clicked, this, &frmUsers::cmdDelete_Click);
    connect(m_ui->cmdRefresh, &QPushButton::clicked, this, &frmUsers::cmdRefresh_Click);
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &frmUsers::cmdClose_Click);
    connect(m_ui->cmdFirst, &QPushButton::clicked, this, [this] { navigate(RecordMove::First); });
    connect(m_ui->cmdPrevious, &QPushButton::clicked, this, [this] { navigate(RecordMove::Previous); });
    connect(m_ui->cmdNext, &QPushButton::clicked, this, [this] { navigate(RecordMove::Next); });
    connect(m_ui->cmdLast, &QPushButton::clicked, this, [this] { navigate(RecordMove::Last); });
    connect(m_ui->mnuExit, &QAction::triggered, this, &frmUsers::mnuExit_Click);
}

frmUsers::~frmUsers() = default;

void frmUsers::showingFailures(const std::function<void()> &command)
{
    try {
        command();
    } catch (const RuntimeError &failure) {
        showFailure(failure);
    }
}

/// What a handler has refused is undone here, since nothing can be undone inside of the event.
void frmUsers::showFailure(const RuntimeError &failure)
{
    if (m_refused)
        undoRefused();
    else
        showMessage(failure.description());
}

// --- life

void frmUsers::Form_Load()
{
    PrepareScreen(*this);
    setAccessibleText(m_ui->grdDataGrid, caption());
    m_closeAllowed = true;
    engine.dbConnection->setCursorLocation(CursorLocation::Client);
    engine.strSql = u"select id,userid,name,rank,lastlogin,createdon,createdby from users where valid=true "
                    "Order by userid"_s;
    m_primary = Recordset::create();
    m_primary->willChangeRecord.connect(
        [this](RecordChange &change) { adoPrimaryRS_WillChangeRecord(change); });
    m_primary->open(engine.strSql, engine.dbConnection, CursorType::Static, LockType::Optimistic);
    bindGrid();
}

void frmUsers::bindGrid()
{
    BoundGrid &grid = *m_ui->grdDataGrid;
    grid.setDataSource(m_primary);
    for (const QString &name : {u"id"_s, u"userid"_s, u"lastlogin"_s, u"createdon"_s, u"createdby"_s})
        grid.setLocked(m_primary->fieldIndex(name), true);
    for (int column = 0; column < grid.columnCount(); ++column)
        grid.setCaption(column, translate(grid.caption(column)));

    m_ui->ComboRank->clear();
    for (int rank = 0; rank <= 9; ++rank)
        m_ui->ComboRank->addItem(QString::number(rank));
    hideRanks();
    for (int column = 0; column < grid.columnCount(); ++column)
        grid.setButton(column, grid.caption(column) == translate(u"rank"_s));
    fitColumns();
}

/// As wide as their texts, and the names take what is left.
void frmUsers::fitColumns()
{
    BoundGrid &grid = *m_ui->grdDataGrid;
    int rest = twipsFromPixels(grid.viewport()->width());
    for (int column = 0; column < grid.columnCount(); ++column) {
        int width = grid.textWidth(grid.caption(column));
        for (int row = 1; row <= grid.rowCount(); ++row)
            width = std::max(width, grid.textWidth(grid.cellText(column, row)));
        width += cellPadding + (m_primary->field(column).name == u"rank" ? buttonRoom : 0);
        grid.setColWidth(column, width);
        rest -= width;
    }
    const int name = m_primary->fieldIndex(u"name"_s);
    grid.setColWidth(name, grid.colWidth(name) + std::max(rest, 0));
}

void frmUsers::Form_Resize()
{
    layOutGridPage(*m_ui->grdDataGrid,
                   {m_ui->cmdFirst, m_ui->cmdPrevious, m_ui->cmdNext, m_ui->cmdLast, m_ui->lblStatus},
                   {m_ui->cmdAdd, m_ui->cmdDelete, m_ui->cmdRefresh, m_ui->cmdClose});
    hideRanks();
}

/// A window that goes away with an unsaved edit asks whether to save it, and stays when that fails.
bool frmUsers::Form_QueryUnload()
{
    if (!m_primary->isOpen()) // closed with the store, the edit dropped
        return true;
    m_declined = false;
    const QScopedValueRollback closing(m_closing, true);
    return m_ui->grdDataGrid->saveRow() || m_declined;
}

void frmUsers::saveTyped()
{
    Form_QueryUnload();
}

void frmUsers::Form_Unload()
{
    m_ui->grdDataGrid->setDataSource(nullptr);
    if (!m_primary->isOpen())
        return;
    ignoringErrors([this] { m_primary->cancelUpdate(); });
    m_primary->close();
}

void frmUsers::cmdClose_Click()
{
    if (m_closeAllowed || !m_primary->isOpen())
        return unload();
    QApplication::beep();
    m_ui->grdDataGrid->setFocus(); // the row that is still to be saved
}

void frmUsers::mnuExit_Click()
{
    unload();
}

// --- the grid

void frmUsers::grdDataGrid_RowColChange()
{
    const int row = m_ui->grdDataGrid->row();
    m_ui->lblStatus->setText(row < 0 ? QString() : u"Record: "_s + QString::number(row + 1));
}

void frmUsers::grdDataGrid_ButtonClick()
{
    const BoundGrid &grid = *m_ui->grdDataGrid;
    QComboBox &ranks = *m_ui->ComboRank;
    const QRect cell = grid.cellRect().translated(grid.pos());
    const QSize size = cell.size().expandedTo(ranks.sizeHint());
    const int left = std::max(cell.right() + 1 - size.width(), grid.x());
    ranks.setGeometry({QPoint(left, cell.top() - (size.height() - cell.height()) / 2), size});
    ranks.setLayoutDirection(grid.layoutDirection());
    ranks.setCurrentIndex(ranks.findText(grid.text()));
    ranks.show();
    ranks.raise();
    ranks.setFocus();
}

void frmUsers::ComboRank_Click()
{
    m_ui->grdDataGrid->setText(m_ui->ComboRank->currentText());
    hideRanks();
}

void frmUsers::hideRanks()
{
    if (m_ui->ComboRank->hasFocus())
        m_ui->grdDataGrid->setFocus();
    m_ui->ComboRank->hide();
}

/// Its own list is another window.
void frmUsers::followFocus(const QWidget *now)
{
    if (now && now->window() == this && now != m_ui->ComboRank)
        m_ui->ComboRank->hide();
}

bool frmUsers::Form_KeyDown(QKeyEvent *event)
{
    if (m_ui->ComboRank->isVisible()) {
        const bool escape = event->key() == Qt::Key_Escape;
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (escape || (enter && m_ui->ComboRank->currentIndex() < 0)) // of an empty rank nothing is chosen
            hideRanks();
        else if (enter)
            ComboRank_Click();
        return escape || enter;
    }
    if (m_ui->grdDataGrid->isEditing())
        return false;
    if (event->key() == Qt::Key_Escape) {
        cmdClose_Click();
        return true;
    }
    const std::optional<RecordMove> move = recordMoveOf(*event);
    if (move)
        navigate(*move);
    return move.has_value();
}

// --- commands

void frmUsers::navigate(RecordMove move)
{
    showingFailures([&] {
        if (m_ui->grdDataGrid->saveRow())
            moveRecord(*m_primary, move);
    });
}

void frmUsers::cmdAdd_Click()
{
    frmNewUser newUser;
    newUser.showModal();
}

void frmUsers::cmdRefresh_Click()
{
    showingFailures([this] {
        if (!m_ui->grdDataGrid->saveRow())
            return;
        m_ui->grdDataGrid->setDataSource(nullptr);
        try {
            m_primary->requery();
        } catch (const RuntimeError &) {
            if (m_primary->isOpen())
                bindGrid(); // to the rows as they were
            throw;
        }
        bindGrid();
    });
}

void frmUsers::cmdDelete_Click()
{
    showingFailures([this] {
        if (m_ui->grdDataGrid->row() >= 0 && m_ui->grdDataGrid->saveRow())
            deleteUser();
    });
}
