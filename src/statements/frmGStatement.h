#pragma once

#include "statements/statement_screen.h"

#include <memory>

namespace Ui
{
class frmGStatement;
}

/// The account of the family as a whole, over `general`.
class frmGStatement : public StatementScreen
{
    Q_OBJECT

public:
    frmGStatement();
    ~frmGStatement() override;

protected:
    void Form_Load() override;
    /// Enter in the list of archives takes what was typed there.
    bool Form_KeyDown(QKeyEvent *event) override;
    void Option1_Click(int index) override;
    void ArchivesList_Click() override;
    void cmdShow_Click() override;
    void cmdExcell_Click() override;
    void makeSql() override { MakeFamilySql(); }
    void forgetDates() override;

private:
    void MakeFamilySql();

    std::unique_ptr<Ui::frmGStatement> m_ui;
    QString m_statementSide; ///< "debit", "credit" or "both"
    QString m_statementTitle;
    QString m_generalTable;
    QString m_fileName; ///< of the last export: nothing else is proposed
};
