#include "family/frmMembers.h"

#include "core/engine.h"
#include "family/bound_boxes.h"
#include "family/deceased_name.h"
#include "family/member_records.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/grid_page.h"
#include "platform/ui/record_moves.h"
#include "presentation/prepare_screen.h"
#include "presentation/vocabulary.h"
#include "ui_frmMembers.h"

#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QStatusBar>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int cellPadding = 120; ///< of a grid column, in twips

const QStringList boundFields{u"name"_s, u"sex"_s,   u"title"_s,     u"relation"_s,
                              u"dob"_s,  u"group"_s, u"lastupdate"_s};

/// True for a key that would change the text of a box.
bool isTyping(const QKeyEvent *event)
{
    if (event->matches(QKeySequence::Paste) || event->matches(QKeySequence::Cut) ||
        event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo) ||
        event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete)
        return true;
    return !event->text().isEmpty() && event->text().front().isPrint() &&
           !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

} // namespace

frmMembers::frmMembers() : Screen(u"frmMembers"_s), m_ui(std::make_unique<Ui::frmMembers>())
{
    m_ui->setupUi(this);
    setFixedWidth(m_ui->surface->minimumWidth());
    m_ui->mnuShow->actions().at(2)->setObjectName(u"xSEP"_s);
    m_ui->FGrid->setFixedCols(0);

    m_txtFields = new BoundBoxes({m_ui->txtFields_0, m_ui->txtFields_1, m_ui->txtFields_2, m_ui->txtFields_3,
                                  m_ui->txtFields_4, m_ui->txtFields_5, m_ui->txtFields_6},
                                 boundFields, this);
    for (int i = 0; i < m_txtFields->count(); ++i) {
        QLineEdit *box = m_txtFields->box(i);
        takeAsciiDigits(box);
        box->installEventFilter(this);
        connect(box, &QLineEdit::textChanged, this, [this, i] { txtFields_Change(i); });
    }
    m_ui->DTPicker1->installEventFilter(this);
    hideChoosers();

    connect(m_ui->cmdAdd, &QPushButton::clicked, this, &frmMembers::cmdAdd_Click);
    connect(m_ui->cmdEdit, &QPushButton::clicked, this, &frmMembers::cmdEdit_Click);
    connect(m_ui->cmdUpdate, &QPushButton::clicked, this, &frmMembers::cmdUpdate_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmMembers::cmdCancel_Click);
    connect(m_ui->cmdDelete, &QPushButton::clicked, this, &frmMembers::cmdDelete_Click);
    connect(m_ui->cmdRefresh, &QPushButton::clicked, this, &frmMembers::cmdRefresh_Click);
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &frmMembers::cmdClose_Click);
    connect(m_ui->cmdFirst, &QPushButton::clicked, this, [this] { navigate(RecordMove::First); });
    connect(m_ui->cmdPrevious, &QPushButton::clicked, this, [this] { navigate(RecordMove::Previous); });
    connect(m_ui->cmdNext, &QPushButton::clicked, this, [this] { navigate(RecordMove::Next); });
    connect(m_ui->cmdLast, &QPushButton::clicked, this, [this] { navigate(RecordMove::Last); });
    connect(m_ui->Combo1, &QComboBox::activated, this, &frmMembers::Combo1_Click);
    connect(m_ui->DTPicker1, &DatePicker::closeUp, this, &frmMembers::DTPicker1_CloseUp);
    connect(m_ui->mnuDesceased, &QAction::triggered, this, &frmMembers::mnuDesceased_Click);
    connect(m_ui->mnuValid, &QAction::triggered, this, [this] { setFilter(u"valid=true"_s); });
    connect(m_ui->mnuInValid, &QAction::triggered, this, [this] { setFilter(u"valid=false"_s); });
    connect(m_ui->mnuBoth, &QAction::triggered, this, [this] { setFilter({}); });
    connect(m_ui->mnuInverse, &QAction::triggered, this, [this] { MirrorControls(*this); });
    connect(m_ui->mnuExit, &QAction::triggered, this, &frmMembers::mnuExit_Click);
}

frmMembers::~frmMembers() = default;

void frmMembers::showingFailures(const std::function<void()> &command)
{
    try {
        command();
    } catch (const RuntimeError &failure) {
        showMessage(failure.description());
    }
}

void frmMembers::Form_Load()
{
    PrepareScreen(*this);
    setAccessibleText(m_ui->FGrid, caption());
    m_changedUnasked = false;
    if (engine.deceasedName.isEmpty())
        mnuDesceased_Click();

    engine.dbConnection->setCursorLocation(CursorLocation::Client);
    m_sexNames = codeNames(u"sex"_s);
    m_relationNames = codeNames(u"relation"_s);
    m_txtFields->setCodes(fieldSex, m_sexNames);
    m_txtFields->setCodes(fieldRelation, m_relationNames);

    m_primary = Recordset::create();
    m_primary->willChangeRecord.connect(
        [this](RecordChange &change) { adoPrimaryRS_WillChangeRecord(change); });
    m_primary->open(u"select name,sex,title,relation,"
                    "dob,group,valid,lastupdate from members Order by dob"_s,
                    engine.dbConnection, CursorType::Static, LockType::Optimistic);
    m_txtFields->bind(m_primary);
    m_primary->moveComplete.connect([this] { adoPrimaryRS_MoveComplete(); });
    m_ui->txtFields_6->setEnabled(false);
    m_ui->txtFields_6->setLayoutDirection(Qt::LeftToRight); // the date before the time, as in the grids
    m_ui->DTPicker1->setAlignment(m_ui->txtFields_4->alignment()); // over that box

    bindGrid();
    setButtons(true);
    adoPrimaryRS_MoveComplete();
}

void frmMembers::Form_Unload()
{
    if (!m_primary->isOpen())
        return;
    ignoringErrors([this] { m_primary->cancelUpdate(); });
    m_primary->close();
}

void frmMembers::bindGrid()
{
    m_primary->rowsChanged.disconnect(m_gridFormat);
    m_ui->FGrid->setDataSource(m_primary);
    // Behind the grid's own handler, which loads the raw texts first.
    m_gridFormat = m_primary->rowsChanged.connect([this] { formatGrid(); });
    formatGrid();
}

void frmMembers::formatGrid()
{
    if (!m_primary->isOpen())
        return;
    FlexGrid &grid = *m_ui->FGrid;
    grid.setRedraw(false);
    QStringList headings;
    for (int column = 0; column < m_primary->fieldCount(); ++column)
        headings << translate(m_primary->field(column).name);
    grid.setFormatString(headings.join(u'|'));

    for (int column = 0; column < m_primary->fieldCount(); ++column) {
        const QString field = m_primary->field(column).name;
        grid.setColFormat(column, {[field](const Value &value) { return memberCellText(field, value); }});
        const int widest = grid.widestText(column, [] { return true; }).value_or(0);
        const int width = std::max(widest, grid.textWidth(headings[column]));
        grid.setColWidth(column, width + cellPadding);
    }
    for (int row = 1; row < m_primary->rowCount(); row += 2)
        grid.setRowBackColor(row + grid.fixedRows(), QColor(0xC0, 0xC0, 0xC0));
    grid.setRedraw(true);
}

void frmMembers::Form_Resize()
{
    layOutGridPage(*m_ui->FGrid,
                   {m_ui->cmdFirst, m_ui->cmdPrevious, m_ui->cmdNext, m_ui->cmdLast, m_ui->lblStatus},
                   {m_ui->cmdAdd, m_ui->cmdEdit, m_ui->cmdUpdate, m_ui->cmdCancel, m_ui->cmdDelete,
                    m_ui->cmdRefresh, m_ui->cmdClose});
}

// --- browsing

void frmMembers::adoPrimaryRS_MoveComplete()
{
    m_ui->lblStatus->setText(u"Record: "_s + QString::number(m_primary->absolutePosition()));
    if (m_primary->absolutePosition() > 0)
        m_ui->FGrid->setCell(m_primary->absolutePosition() - 1 + m_ui->FGrid->fixedRows(), 0);
}

void frmMembers::adoPrimaryRS_WillChangeRecord(RecordChange &change)
{
    if (change.reason == ChangeReason::FirstChange)
        m_changedUnasked = isBrowsing();
}

/// Shows the current row in the boxes, also where a box shows its code already.
void frmMembers::showRow()
{
    m_txtFields->show();
    for (int i = 0; i < m_txtFields->count(); ++i)
        txtFields_Change(i);
}

const QStringList *frmMembers::namesOf(int index) const
{
    return index == fieldSex ? &m_sexNames : index == fieldRelation ? &m_relationNames : nullptr;
}

void frmMembers::txtFields_Change(int index)
{
    const QStringList *names = namesOf(index);
    QLineEdit *box = m_txtFields->box(index);
    if (!names || !isBrowsing() || !isNumeric(box->text()))
        return;
    const double code = readDouble(box->text());
    if (code >= 1 && code <= double(names->size()))
        box->setText(names->at(int(code) - 1));
}

bool frmMembers::txtFields_KeyPress(QKeyEvent *event)
{
    if (!isBrowsing() || !isTyping(event))
        return false;
    showMessage(
        engine.isArabic
            ? u"لكي تقوم بالإضافه أو التعديل يجب أن تقوم بضغط الخيار في أسفل الصفحه قبل البدأ في الطباعه"_s
            : u"To Add a new record or modify an existing record, you must click on the option in the lower part of the page before you start typing!"_s);
    return true;
}

bool frmMembers::eventFilter(QObject *watched, QEvent *event)
{
    for (int i = 0; i < m_txtFields->count(); ++i) {
        if (watched != m_txtFields->box(i))
            continue;
        if (event->type() == QEvent::KeyPress && txtFields_KeyPress(static_cast<QKeyEvent *>(event)))
            return true;
        const bool openedByKey =
            event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_F4;
        if (event->type() == QEvent::MouseButtonRelease || openedByKey)
            txtFields_Click(i);
    }
    if (watched == m_ui->DTPicker1 && event->type() == QEvent::KeyPress &&
        (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Return ||
         static_cast<QKeyEvent *>(event)->key() == Qt::Key_Enter)) {
        m_ui->DTPicker1->interpretText();
        DTPicker1_CloseUp();
        return true;
    }
    return Screen::eventFilter(watched, event);
}

bool frmMembers::Form_KeyDown(QKeyEvent *event)
{
    // Only while the row of buttons is enabled: a move would save an open edit silently.
    if (!isBrowsing())
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

/// A change that nobody asked for is cancelled before the row is left.
void frmMembers::refuseUnaskedChange()
{
    if (isBrowsing() && m_primary->isOpen() && m_txtFields->hasUnwritten()) {
        ignoringErrors([this] { m_txtFields->writeAll(); });
        m_changedUnasked = true; // also when the field did not take the text
    }
    if (!m_changedUnasked)
        return;
    if (m_primary->isOpen() && m_primary->editMode() != EditMode::None)
        m_primary->cancelUpdate();
    showRow();
    m_changedUnasked = false;
    showMessage(engine.isArabic
                    ? u"لا تقم بإجراء تغييرات في المعلومات قبل الضغط على تعديل"_s
                    : u"Do NOT make any changes of the information without hitting Edit first!"_s);
}

/// Before a command other than a move leaves the row: what is really pending would be saved without an audit
/// row.
void frmMembers::dropUnaskedEdit()
{
    if (isBrowsing() && (m_txtFields->hasUnwritten() || m_primary->editMode() != EditMode::None))
        refuseUnaskedChange();
}

void frmMembers::navigate(RecordMove move)
{
    showingFailures([&] {
        refuseUnaskedChange();
        moveRecord(*m_primary, move);
    });
}

void frmMembers::setFilter(const QString &filter)
{
    showingFailures([&] {
        dropUnaskedEdit();
        m_primary->setFilter(filter);
        m_ui->mnuValid->setChecked(filter == u"valid=true");
        m_ui->mnuInValid->setChecked(filter == u"valid=false");
        m_ui->mnuBoth->setChecked(filter.isEmpty());
    });
}

// --- the row of buttons

void frmMembers::setButtons(bool browsing)
{
    for (QWidget *button : {m_ui->cmdAdd, m_ui->cmdEdit, m_ui->cmdDelete, m_ui->cmdClose, m_ui->cmdRefresh})
        button->setVisible(browsing);
    for (QWidget *button : {m_ui->cmdUpdate, m_ui->cmdCancel})
        button->setVisible(!browsing);
    for (QWidget *button : {m_ui->cmdNext, m_ui->cmdFirst, m_ui->cmdLast, m_ui->cmdPrevious})
        button->setEnabled(browsing);
    m_ui->mnuShow->setEnabled(browsing); // a filter would leave the row and save it
}

void frmMembers::cmdRefresh_Click()
{
    showingFailures([this] {
        dropUnaskedEdit();
        m_ui->FGrid->setDataSource(nullptr);
        try {
            m_primary->requery();
        } catch (const RuntimeError &) {
            bindGrid();
            throw;
        }
        bindGrid();
    });
}

void frmMembers::cmdClose_Click()
{
    mnuExit_Click();
}

void frmMembers::saveTyped()
{
    if (!m_primary->isOpen())
        return;
    refuseUnaskedChange();
    ignoringErrors([this] { m_txtFields->writeAll(); });
    const EditMode mode = m_primary->editMode();
    const bool hasRows = m_primary->recordCount() > 0 || mode == EditMode::Add; // a new row counts
    if (!hasRows || (mode == EditMode::None && !m_txtFields->hasUnwritten()))
        return;
    if (askYesNo(engine.isArabic ? u"هل تريد حفظ التغييرات!!؟"_s : u"Do you want to save changes!!?"_s))
        cmdUpdate_Click();
    else
        cmdCancel_Click();
}

void frmMembers::mnuExit_Click()
{
    saveTyped();
    unload();
    setHourglass(false);
}

void frmMembers::closeEvent(QCloseEvent *event)
{
    if (!isLoaded())
        return Screen::closeEvent(event);
    event->ignore();
    mnuExit_Click();
}

void frmMembers::mnuDesceased_Click()
{
    recordDeceasedName();
}
