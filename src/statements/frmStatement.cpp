#include "statements/frmStatement.h"

#include "core/engine.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "presentation/prepare_screen.h"
#include "presentation/vocabulary.h"
#include "statements/export_rows.h"
#include "statements/report_designs.h"
#include "store/archive_tables.h"
#include "ui_frmStatement.h"

#include <QtWidgets/QLineEdit>

using namespace Qt::Literals::StringLiterals;

frmStatement::frmStatement() : StatementScreen(u"frmStatement"_s), m_ui(std::make_unique<Ui::frmStatement>())
{
    m_ui->setupUi(this);
    takeControls(*m_ui);
    connect(m_ui->Combo1, &QComboBox::editTextChanged, this, &frmStatement::Combo1_Change);
    connect(m_ui->Combo1, &QComboBox::activated, this, &frmStatement::Combo1_Click);
}

frmStatement::~frmStatement() = default;

void frmStatement::Form_Load()
{
    PrepareScreen(*this);
    m_ui->Combo1->lineEdit()->setAlignment((engine.isArabic ? Qt::AlignRight : Qt::AlignLeft) |
                                           Qt::AlignAbsolute); // names of the other language too
    setAccessibleText(m_ui->Combo1, translate(u"Name"_s));
    beginStatement();
    m_ledgerTable = u"ledger"_s;
    // The table that a browser was opened on last, whatever it is: that is meant.
    const QString archiveBase = engine.browseTable.isEmpty() ? u"ledger"_s : engine.browseTable;
    FillArchivesList(archiveBase, m_ui->ArchivesList);
    m_ui->ArchivesList->setVisible(m_ui->ArchivesList->count() >= 2);
    m_ui->Combo1->clear();
    m_memberTitle = u"Unknown"_s;
    Option1_Click(0);

    const RecordsetPtr members = Recordset::create();
    members->open(u"select name from members where valid=true"_s, engine.dbConnection, CursorType::Keyset);
    for (; !members->eof(); members->moveNext())
        m_ui->Combo1->addItem(members->value(u"Name"_s).toText());
    m_ui->Combo1->setCurrentIndex(0);
    members->close();
}

// --- the member

void frmStatement::Combo1_Change()
{
    m_memberTitle = u"Unknown"_s;
    ignoringErrors([this] { // of an apostrophe, at each letter behind it: Show tells it, with the same name
        const RecordsetPtr rsMember = Recordset::create();
        rsMember->open(u"select * from members where name='"_s + m_ui->Combo1->currentText() + u"'"_s,
                       engine.dbConnection, CursorType::Keyset);
        if (!rsMember->eof())
            m_memberTitle = rsMember->value(u"Title"_s).toText();
    });
}

void frmStatement::Combo1_Click()
{
    Combo1_Change();
    if (m_ui->Combo1->currentIndex() >= 1)
        MakeStatementSql();
}

// --- what the statement selects

void frmStatement::MakeStatementSql()
{
    if (m_ui->Combo1->count() == 0)
        return;
    engine.strSql = statementSql(
        MemberStatement{m_statementType, m_monthly, m_ledgerTable, m_ui->Combo1->currentText(), dates()});
}

void frmStatement::Option1_Click(int index)
{
    clearCount();
    const QString types[] = {u"expenses"_s, u"revenues"_s, u"both"_s};
    m_statementType = types[index];
    MakeStatementSql();
}

void frmStatement::forgetDates()
{
    m_ui->DateTo->setText(u"-"_s); // the other date stays: that is meant
}

void frmStatement::ArchivesList_Click()
{
    m_ledgerTable = archiveTableOf(m_ui->ArchivesList->currentText());
}

// --- showing and exporting

void frmStatement::cmdShow_Click()
{
    try {
        makeStatement();
    } catch (const RuntimeError &failure) {
        showMessage(u"error "_s + failure.description());
    }
}

void frmStatement::makeStatement()
{
    closeStatement();
    MakeStatementSql();
    if (!openStatement())
        return;
    QString heading;
    if (m_statementType != u"both")
        heading = translate(m_statementType);
    else if (engine.isArabic)
        heading = translate(u"revenues"_s) + u" و "_s + translate(u"expenses"_s);
    else
        heading = u"Revenues & Expenses"_s;
    heading += u' ' + m_memberTitle + u' ' + m_ui->Combo1->currentText();
    const QString range = rangeLine();
    showStatement(m_monthly ? monthlyLedgerReport() : ledgerReport(), range, heading + u"\r\n"_s + range);
}

void frmStatement::cmdExcell_Click()
{
    if (m_statementType.isEmpty()) {
        showMessage(u"You have to select statement type يجب إختيار نوع كشف الحساب"_s);
        return m_ui->Option1_0->setFocus();
    }
    if (mayExport())
        exportRows(*m_rsStatement, u'_' + m_ui->Combo1->currentText() + u".xls"_s, ExportFailure::Told);
}
