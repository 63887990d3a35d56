#include "statements/frmGStatement.h"

#include "core/engine.h"
#include "platform/ui/dialogs.h"
#include "presentation/prepare_screen.h"
#include "presentation/vocabulary.h"
#include "statements/export_rows.h"
#include "statements/report_designs.h"
#include "store/archive_tables.h"
#include "ui_frmGStatement.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QLineEdit>

using namespace Qt::Literals::StringLiterals;

frmGStatement::frmGStatement()
    : StatementScreen(u"frmGStatement"_s), m_ui(std::make_unique<Ui::frmGStatement>())
{
    m_ui->setupUi(this);
    takeControls(*m_ui);
}

frmGStatement::~frmGStatement() = default;

void frmGStatement::Form_Load()
{
    PrepareScreen(*this);
    beginStatement();
    m_rsStatement->setCursorType(CursorType::Static);
    m_ui->ArchivesList->lineEdit()->setPlaceholderText(translate(u"Archives"_s)); // nothing fills it
    m_generalTable = u"general"_s;
    m_fileName.clear();
    m_statementSide = u"debit"_s;
    Option1_Click(0);
}

bool frmGStatement::Form_KeyDown(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || focusWidget() != m_ui->ArchivesList)
        return false;
    ArchivesList_Click();
    return true;
}

// --- what the statement selects

void frmGStatement::MakeFamilySql()
{
    engine.strSql = statementSql(FamilyStatement{m_statementSide, m_monthly, m_generalTable, dates()});
}

void frmGStatement::Option1_Click(int index)
{
    struct Side {
        QString statementSide, arabicTitle, englishTitle;
    };
    const Side sides[] = {
        {u"debit"_s, u" كشف حساب المصاريف "_s, u"Statement of Expenses"_s},
        {u"credit"_s, u" كشف حساب العوائد "_s, u"Statement of Revenues"_s},
        {u"both"_s, u" كشف حساب العوائد و المصاريف"_s, u"Statement of Revenues & Expenses"_s},
    };
    clearCount();
    const Side &side = sides[index];
    m_statementSide = side.statementSide;
    m_statementTitle = engine.isArabic ? side.arabicTitle : side.englishTitle;
    MakeFamilySql();
}

void frmGStatement::forgetDates()
{
    m_ui->DateFrom->setText(u"-"_s);
    m_ui->DateTo->setText(u"-"_s);
}

void frmGStatement::ArchivesList_Click()
{
    const QString entry = m_ui->ArchivesList->currentText();
    if (m_ui->ArchivesList->findText(entry) < 0)
        return showMessage(
            u"You are not supposed to change the archive name, just make a selection from the damn list!!"_s +
            u"\r\n"_s + u"لا تقم بتغيير إسم الإرشيف!!  فقط قم بإختيار المطلوب من القائمه"_s);
    m_generalTable = archiveTableOf(entry);
}

// --- showing and exporting

void frmGStatement::cmdShow_Click()
{
    if (m_statementSide.isEmpty())
        return showMessage(u"You have to select statement type يجب إختيار نوع كشف الحساب"_s);
    closeStatement();
    if (!openStatement()) // of the statement that the last command left, whatever it is: that is meant
        return closeStatement();
    const QString heading =
        engine.isArabic
            ? u"كوفانا الشيخ/ "_s + u' ' + engine.deceasedName + u" رحمه الله"_s
            : u"Quvana Accounting the revered "_s + engine.deceasedName + u" God bless his soul"_s;
    if (m_datesChosen) // once more with each Show, until a side is chosen anew: that is meant
        m_statementTitle += u"\r\n"_s + rangeLine();
    showStatement(m_monthly ? monthlyGeneralReport() : generalReport(), m_statementTitle,
                  heading + u"\r\n"_s + m_statementTitle);
}

void frmGStatement::cmdExcell_Click()
{
    if (mayExport())
        m_fileName = exportRows(*m_rsStatement, m_fileName, ExportFailure::Told);
}
