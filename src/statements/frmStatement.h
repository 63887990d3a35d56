#pragma once

#include "statements/statement_screen.h"

#include <memory>

namespace Ui
{
class frmStatement;
}

/// The account of one member over `ledger` or an archive of it. It has no balance carried forward: it is the
/// rows that its statement selects, and their sum.
class frmStatement : public StatementScreen
{
    Q_OBJECT

public:
    frmStatement();
    ~frmStatement() override;

protected:
    void Form_Load() override;
    void Option1_Click(int index) override;
    void ArchivesList_Click() override;
    void cmdShow_Click() override;
    void cmdExcell_Click() override;
    void makeSql() override { MakeStatementSql(); }
    void forgetDates() override;

private:
    void Combo1_Change();
    void Combo1_Click();

    /// Leaves `engine.strSql` as it is when no member is listed, so that it is then another screen's: that is
    /// meant.
    void MakeStatementSql();
    void makeStatement();

    std::unique_ptr<Ui::frmStatement> m_ui;
    QString m_statementType; ///< "expenses", "revenues" or "both"
    QString m_ledgerTable;
    QString m_memberTitle;
};
