#include "browser/frmUniversalGrid.h"

#include "browser/grid_formatting.h"
#include "core/engine.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/progress.h"
#include "platform/ui/twips.h"
#include "platform/ui/wait.h"
#include "presentation/prepare_screen.h"
#include "presentation/session_font.h"
#include "presentation/vocabulary.h"
#include "presentation/work_name.h"
#include "store/logical_tables.h"
#include "ui_frmUniversalGrid.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int columnDragDistance = 50; // twips
constexpr int scrollAllowance = 220;   // twips, of the bar beside the rows: cells stand that far from it

void letGo(RecordsetPtr &rows)
{
    if (rows && rows->isOpen())
        rows->close();
    rows.reset();
}

} // namespace

frmUniversalGrid::frmUniversalGrid()
    : Screen(u"frmUniversalGrid"_s), m_ui(std::make_unique<Ui::frmUniversalGrid>())
{
    m_ui->setupUi(this);
    m_mnuName << m_ui->mnuName_0;
    m_ui->mnuPopup->actions().at(2)->setObjectName(u"xxxxsep"_s);
    m_ui->mnuPopup->actions().at(4)->setObjectName(u"xxxsep"_s);
    takeAsciiDigits(m_ui->txtNumber);
    m_ui->FGrid->setColumnDragging(columnDragDistance);
    m_ui->FGrid->verticalScrollBar()->setFixedWidth(pixelsFromTwips(scrollAllowance));
    QPalette colors = m_ui->FGrid->palette(); // a picked cell stays readable where the selection has left it
    colors.setColor(QPalette::Highlight, QColor(176, 206, 240));
    colors.setColor(QPalette::HighlightedText, Qt::black);
    m_ui->FGrid->setPalette(colors);
    connectCommands();
}

frmUniversalGrid::~frmUniversalGrid() = default;

void frmUniversalGrid::connectCommands()
{
    const auto onMenu = [this](QAction *item, void (frmUniversalGrid::*command)()) {
        connect(item, &QAction::triggered, this,
                [this, command] { run([this, command] { (this->*command)(); }); });
    };
    const auto onButton = [this](QPushButton *button, void (frmUniversalGrid::*command)()) {
        connect(button, &QPushButton::clicked, this,
                [this, command] { run([this, command] { (this->*command)(); }); });
    };
    onMenu(m_ui->mnuValid, &frmUniversalGrid::mnuValid_Click);
    onMenu(m_ui->mnuInValid, &frmUniversalGrid::mnuInValid_Click);
    onMenu(m_ui->mnuBothValid, &frmUniversalGrid::mnuBothValid_Click);
    onMenu(m_ui->mnuRevenues, &frmUniversalGrid::mnuRevenues_Click);
    onMenu(m_ui->mnuExpenses, &frmUniversalGrid::mnuExpenses_Click);
    onMenu(m_ui->mnuBothCreditOrDebit, &frmUniversalGrid::mnuBothCreditOrDebit_Click);
    onMenu(m_ui->mnuAll, &frmUniversalGrid::mnuAll_Click);
    onMenu(m_ui->mnuNone, &frmUniversalGrid::mnuNone_Click);
    onMenu(m_ui->mnuSelect, &frmUniversalGrid::mnuSelect_Click);
    onMenu(m_ui->mnuTotal, &frmUniversalGrid::mnuTotal_Click);
    onMenu(m_ui->mnuTotals, &frmUniversalGrid::mnuTotals_Click);
    onMenu(m_ui->mnuDetails, &frmUniversalGrid::mnuDetails_Click);
    onMenu(m_ui->mnuDelete, &frmUniversalGrid::mnuDelete_Click);
    onMenu(m_ui->mnuModify, &frmUniversalGrid::mnuModify_Click);
    onMenu(m_ui->mnuArchive, &frmUniversalGrid::mnuArchive_Click);
    onMenu(m_ui->mnuDeArchive, &frmUniversalGrid::mnuDeArchive_Click);
    onMenu(m_ui->mnuFont, &frmUniversalGrid::mnuFont_Click);
    onButton(m_ui->btnSearch, &frmUniversalGrid::btnSearch_Click);
    onButton(m_ui->btnDateSelect, &frmUniversalGrid::btnDateSelect_Click);
    onButton(m_ui->cmdRefresh, &frmUniversalGrid::cmdRefresh_Click);
    onButton(m_ui->cmdAdd, &frmUniversalGrid::cmdAdd_Click);
    onButton(m_ui->btnPrint, &frmUniversalGrid::btnPrint_Click);
    onButton(m_ui->cmdExcell, &frmUniversalGrid::cmdExcell_Click);
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &frmUniversalGrid::cmdClose_Click);
    connect(m_ui->mnuExit, &QAction::triggered, this, &frmUniversalGrid::mnuExit_Click);
    connect(m_ui->txtNumber, &QLineEdit::returnPressed, this, [this] { run([this] { btnSearch_Click(); }); });
    connect(m_ui->ArchivesList, &QComboBox::activated, this,
            [this] { run([this] { ArchivesList_Click(); }); });
    connect(m_ui->ArchivesList->lineEdit(), &QLineEdit::returnPressed, this, [this] {
        if (m_ui->ArchivesList->findText(m_ui->ArchivesList->currentText()) < 0) // else it is picked
            run([this] { ArchivesList_Click(); });
    });
    connect(m_ui->FGrid, &FlexGrid::reloaded, this, [this] {
        ++m_formatRun;
        m_ui->DGrid->hide(); // the row above it may be another one
        leaveEditor();       // and so may its cell
    });
    for (const QScrollBar *bar : {m_ui->FGrid->verticalScrollBar(), m_ui->FGrid->horizontalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, &m_toTheEnd, [this] { placeEditor(); });
    connect(qApp, &QApplication::focusChanged, &m_toTheEnd,
            [this](const QWidget *, const QWidget *now) { followFocus(now); });
    connect(m_ui->FGrid->horizontalHeader(), &QHeaderView::sectionMoved, &m_toTheEnd,
            [this](int, int from, int to) { followColumn(from, to); });
    connect(m_ui->FGrid, &FlexGrid::cellClicked, this,
            [this](int row, int column) { run([&] { FGrid_Click(row, column); }); });
    connect(m_ui->FGrid, &FlexGrid::cellDoubleClicked, this,
            [this](int row, int column) { run([&] { FGrid_DblClick(row, column); }); });
    connect(m_ui->FGrid, &FlexGrid::headingDoubleClicked, this,
            [this](int column) { run([&] { FGrid_DblClick(0, column); }); });
    connect(m_ui->FGrid, &FlexGrid::contextMenuWanted, this,
            [this](int, int, const QPoint &position) { FGrid_MouseUp(position); });
    connect(m_ui->DGrid, &DataGrid::focusLost, this, &frmUniversalGrid::DGrid_LostFocus);
    connect(m_ui->DGrid, &DataGrid::changed, this, &frmUniversalGrid::DGrid_Change);
}

void frmUniversalGrid::run(const std::function<void()> &command)
{
    const InUse inUse(this);
    if (!m_primary)
        return;
    try {
        closeEditor();
        command();
    } catch (const RuntimeError &failure) {
        showMessage(failure.description(), MessageIcon::Critical);
    }
}

// --- loading and closing

void frmUniversalGrid::Form_Load()
{
    try {
        loadRows();
    } catch (const RuntimeError &failure) {
        showMessage(failure.description(), MessageIcon::Critical);
        unload();
    }
}

void frmUniversalGrid::loadRows()
{
    m_ui->Text1->hide();
    m_filters = {};
    m_sortCol = m_sortType = 0;
    m_cellPicked = m_rowChanged = m_rowDirty = false;
    m_ui->mnuModify->setChecked(false);
    // Before any event is served: another command may set `browseTable` then, and the menus can be opened.
    m_tableName = m_currentTable = engine.browseTable;
    PrepareScreen(*this);
    setModes();
    setRange({}, {});
    setCaption(translate(m_tableName));
    setAccessibleText(m_ui->FGrid, caption());
    m_ui->FGrid->setFocus();
    showModeless(); // so that reading can tell how far it is, and the first rows show before the rest is
                    // fitted
    serveEvents();
    if (!isLoaded())
        return;

    // No filter is set, although the valid rows are marked as chosen: that is meant.
    bind(openRows(getstrsql(m_tableName, m_tableName)));
    showMarks();
    m_ui->FGrid->setHeadingBold(true);
    fillArchivesList();
    m_normalBackColor = m_ui->FGrid->palette().color(QPalette::Base);
    ::setRightToLeft(m_ui->Text1, m_ui->FGrid->isRightToLeft());
    buildNamesMenu();
    showRows();
}

void frmUniversalGrid::Form_Unload()
{
    ++m_formatRun;
    saveTyped();
    letGo(m_saved);
    letGo(m_primary);
    letGo(m_detail);
}

void frmUniversalGrid::saveTyped()
{
    closeEditor();
    if (m_rowDirty && m_primary && m_primary->isOpen())
        AskToSaveRow();
}

void frmUniversalGrid::cmdClose_Click()
{
    unload();
}

void frmUniversalGrid::mnuExit_Click()
{
    unload();
}

void frmUniversalGrid::setModes()
{
    const bool general = m_tableName == u"general"_s;
    const bool ledger = m_tableName == u"ledger"_s;
    const bool people = m_tableName == u"members"_s || m_tableName == u"users"_s; // no command opens them
    m_ui->cmdAdd->setEnabled(general);
    m_ui->cmdAdd->setVisible(general);
    m_ui->mnuDelete->setEnabled(general);
    m_ui->mnuDelete->setVisible(general);
    m_ui->mnuModify->setEnabled(general);
    m_ui->mnuDetails->setEnabled(general);
    m_ui->mnuTotal->setEnabled(general || ledger);
    m_ui->mnuDeletes->setEnabled(general || ledger || people);
    m_ui->mnuCredit->setEnabled(general || ledger);
    m_ui->mnuCredit->menuAction()->setVisible(m_tableName.contains(u"general"_s) ||
                                              m_tableName.contains(u"ledger"_s));
    m_ui->mnuArchiving->setEnabled(!people);
    const bool names = m_tableName.contains(u"ledger"_s);
    m_ui->mnuNames->menuAction()->setVisible(names);
    m_ui->mnuNames->setEnabled(names);
    m_ui->DGrid->hide();
}

void frmUniversalGrid::buildNamesMenu()
{
    while (m_mnuName.size() > 1)
        delete m_mnuName.takeLast();
    m_ui->mnuName_0->setChecked(false);
    if (!m_tableName.contains(u"ledger"_s))
        return;
    engine.rsShared = Recordset::create();
    engine.rsShared->open(u"select distinct name from members where valid=true "_s, engine.dbConnection);
    for (int i = 0; !engine.rsShared->eof(); engine.rsShared->moveNext(), ++i) {
        if (i == m_mnuName.size()) {
            m_mnuName << m_ui->mnuSelection->addAction(QString());
            m_mnuName.last()->setObjectName(u"mnuName_"_s + QString::number(i));
            m_mnuName.last()->setCheckable(true);
        }
        m_mnuName[i]->setText(engine.rsShared->value(0).toText().replace(u'&', u"&&"_s));
        m_mnuName[i]->setChecked(true);
    }
    engine.rsShared->close();
}

// --- the rows on show

RecordsetPtr frmUniversalGrid::openRows(const QString &statement)
{
    engine.strSql = statement;
    RecordsetPtr rows = Recordset::create();
    rows->setCursorLocation(CursorLocation::Client);
    readUnderLine(m_ui->Label1, workName(Work::Reading), *rows, [&rows] {
        rows->open(engine.strSql, engine.dbConnection, CursorType::Static, LockType::Optimistic);
    });
    return rows;
}

void frmUniversalGrid::bind(const RecordsetPtr &rows)
{
    m_primary = rows;
    m_ui->FGrid->setDataSource(rows);
}

bool frmUniversalGrid::showRows(const QString &arabicPrefix)
{
    // Headings and count first: fitting the columns serves events.
    if (engine.isArabic)
        FgridHeading(*m_ui->FGrid, *m_primary);
    m_ui->Label1->setText((engine.isArabic ? arabicPrefix : u"Totals : "_s) +
                          QString::number(m_primary->recordCount()));
    return FormatFlexGrid();
}

bool frmUniversalGrid::FormatFlexGrid()
{
    const int run = ++m_formatRun;
    ProgressLine fitting(m_ui->Label1, workName(Work::Fitting));
    m_totalWidth = setColumnFormats(*m_ui->FGrid, *m_primary);
    placeGrid();
    const auto total = fitColumns(*m_ui->FGrid, [&](int percent) {
        fitting.tell(percent, u" %"_s);
        serveEvents();
        return isLoaded() && run == m_formatRun;
    });
    if (!total)
        return false;
    m_totalWidth = *total;
    placeGrid();
    return true;
}

void frmUniversalGrid::mnuFont_Click()
{
    ignoringErrors([] { chooseSessionFont(); });
}

// --- layout

void frmUniversalGrid::Form_Resize()
{
    placeButtons();
    placeGrid();
    if (m_ui->DGrid->isVisible())
        placeDetailsGrid();
}

void frmUniversalGrid::placeButtons()
{
    constexpr int gap = 8;
    const int lineHeight = m_ui->btnSearch->height();
    const int stripHeight = 2 * lineHeight + 3 * gap;
    QWidget &strip = *m_ui->picButtons;
    strip.setGeometry(0, m_ui->surface->height() - stripHeight, m_ui->surface->width(), stripHeight);
    m_ui->ArchivesList->move(gap, 0);

    const auto place = [&](QWidget *control, int line, int left, int width) {
        const int x = rightToLeft() ? strip.width() - left - width : left;
        control->setGeometry(x, gap + line * (lineHeight + gap), width, lineHeight);
    };
    int left = gap;
    for (QWidget *control : {static_cast<QWidget *>(m_ui->Label1), static_cast<QWidget *>(m_ui->DateFromx),
                             static_cast<QWidget *>(m_ui->Label3), static_cast<QWidget *>(m_ui->DateTox)}) {
        place(control, 0, left, control->width());
        left += control->width() + gap;
    }
    const int searchWidth = m_ui->btnSearch->width();
    place(m_ui->btnSearch, 0, strip.width() - gap - searchWidth, searchWidth);
    place(m_ui->txtNumber, 0, strip.width() - 2 * (gap + searchWidth), searchWidth);

    QList<QWidget *> buttons{m_ui->btnDateSelect, m_ui->cmdRefresh, m_ui->cmdAdd,
                             m_ui->btnPrint,      m_ui->cmdExcell,  m_ui->cmdClose};
    if (m_ui->cmdAdd->isHidden())
        buttons.removeOne(m_ui->cmdAdd);
    const auto startOf = [&](qsizetype i) { return gap + int(i * (strip.width() - gap) / buttons.size()); };
    for (qsizetype i = 0; i < buttons.size(); ++i)
        place(buttons[i], 1, startOf(i), startOf(i + 1) - gap - startOf(i));
}

void frmUniversalGrid::placeGrid()
{
    constexpr int margins = 240; // twips, at both sides together
    FlexGrid &grid = *m_ui->FGrid;
    const int inner = scaleWidth();
    const int top = pixelsFromTwips(m_listHeight);
    const int height = m_ui->picButtons->y() - top;
    int width = inner - margins;
    if (inner >= m_totalWidth + margins / 2) {
        // Beside the columns of data stand the fixed one, the frame and perhaps the scroll bar.
        const int rowsHeight = grid.horizontalHeader()->sizeHint().height() + grid.verticalHeader()->length();
        const int bar = rowsHeight > height ? grid.verticalScrollBar()->sizeHint().width() : 0;
        width = qMin(width, m_totalWidth + grid.colWidth(0) + twipsFromPixels(2 * grid.frameWidth() + bar));
    }
    grid.setGeometry(pixelsFromTwips((inner - width) / 2), top, pixelsFromTwips(width), height);
    if (m_editor) {
        grid.scrollTo(grid.currentIndex());
        placeEditor();
    }
}
