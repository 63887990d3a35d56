#include "statements/statement_screen.h"

#include "core/engine.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/progress.h"
#include "presentation/session_font.h"
#include "statements/reports.h"
#include "utilities/frmSelectDates.h"

#include <QtGui/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

using namespace Qt::Literals::StringLiterals;

StatementScreen::StatementScreen(const QString &name) : Screen(name) {}

StatementScreen::~StatementScreen() = default;

void StatementScreen::setUp()
{
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    for (int i = 0; i < 3; ++i)
        connect(m_controls.options[size_t(i)], &QRadioButton::clicked, this, [this, i] { Option1_Click(i); });
    connect(m_controls.archives, &QComboBox::activated, this, &StatementScreen::ArchivesList_Click);
    connect(m_controls.dates, &QPushButton::clicked, this, &StatementScreen::btnDateSelect_Click);
    connect(m_controls.show, &QPushButton::clicked, this, &StatementScreen::cmdShow_Click);
    connect(m_controls.excell, &QPushButton::clicked, this, &StatementScreen::cmdExcell_Click);
    connect(m_controls.exit, &QPushButton::clicked, this, &StatementScreen::Command3_Click);
    connect(m_controls.monthly, &QAction::triggered, this, &StatementScreen::mnuMonthly_Click);
    connect(m_controls.font, &QAction::triggered, this, &StatementScreen::mnuFont_Click);
    connect(m_controls.mnuExit, &QAction::triggered, this, &StatementScreen::mnuExit_Click);
}

void StatementScreen::beginStatement()
{
    m_monthly = m_datesChosen = false;
    m_controls.monthly->setChecked(false);
    m_controls.dateFrom->setText(u"-"_s);
    m_controls.dateTo->setText(u"-"_s);
    m_rsStatement = Recordset::create();
}

void StatementScreen::Form_Unload()
{
    closeStatement();
    m_rsStatement.reset();
}

void StatementScreen::Command3_Click()
{
    unload();
}

void StatementScreen::mnuExit_Click()
{
    unload();
}

void StatementScreen::mnuFont_Click()
{
    ignoringErrors([] { chooseSessionFont(); });
}

void StatementScreen::mnuMonthly_Click()
{
    m_monthly = m_controls.monthly->isChecked(); // the menu has turned the tick
    makeSql();
}

// --- dates

void StatementScreen::btnDateSelect_Click()
{
    frmSelectDates dialog;
    dialog.showModal();
    if (dialog.datesAccepted) {
        m_controls.dateFrom->setText(shortDate(dialog.dateFromValue));
        m_controls.dateTo->setText(shortDate(dialog.dateToValue));
        m_datesChosen = true;
    } else if (m_datesChosen) {
        forgetDates();
        m_datesChosen = false;
    }
    makeSql();
}

std::optional<StatementDates> StatementScreen::dates() const
{
    if (!m_datesChosen)
        return {};
    return StatementDates{m_controls.dateFrom->text(), m_controls.dateTo->text()};
}

QString StatementScreen::rangeLine() const
{
    if (!m_datesChosen)
        return {};
    const QString from = m_controls.dateFrom->text();
    const QString to = m_controls.dateTo->text();
    return engine.isArabic ? u" من "_s + from + u" إلى "_s + to : u" From "_s + from + u" To "_s + to;
}

// --- rows

void StatementScreen::clearCount()
{
    m_controls.count->setText({});
}

void StatementScreen::closeStatement()
{
    if (m_rsStatement && m_rsStatement->isOpen())
        m_rsStatement->close();
}

bool StatementScreen::openStatement()
{
    readUnderLine(m_controls.count, {}, *m_rsStatement, [this] {
        m_rsStatement->open(engine.strSql, engine.dbConnection, CursorType::Static, LockType::ReadOnly);
    });
    const int count = m_rsStatement->recordCount();
    m_controls.count->setText(format(count, u"###,###,###"_s));
    if (count < 1)
        showMessage(u"Sorry! There is none to show.  المعذره ولكن لا يوجد أي معلومات للإظهار"_s);
    return count >= 1;
}

void StatementScreen::showStatement(Report report, const QString &caption, const QString &title)
{
    report.dataSource = m_rsStatement;
    report.caption = caption;
    report.rightToLeft = engine.isArabic;
    report.title = title;
    ReformatStatementReport(report, *m_rsStatement);
    showReport(report);
}

bool StatementScreen::mayExport()
{
    if (!m_rsStatement->isOpen()) {
        showMessage(u"You have to chose first.   يجب عليك الإطلاع على المحتوى أولاً"_s);
        m_controls.show->setFocus();
        return false;
    }
    if (m_rsStatement->recordCount() < 1) {
        showMessage(u"Sorry! There is none to show.  المعذره ولكن لا يوجد أي معلومات للتصدير"_s);
        return false;
    }
    return true;
}
