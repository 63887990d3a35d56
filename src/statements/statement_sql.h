#pragma once

#include <QtCore/QString>

#include <optional>

/// A range of dates as a statement's screen shows it: two short dates, the first not the later one.
struct StatementDates {
    QString from;
    QString to;
};

/// What a statement of one member selects.
struct MemberStatement {
    QString statementType; ///< "expenses", "revenues" or "both"
    bool monthly = false;  ///< sums by month and side in place of rows
    QString ledgerTable;   ///< `ledger` or an archive of it
    QString name;          ///< goes into the text as it stands
    std::optional<StatementDates> dates = {};
};

/// What a statement of the family selects.
struct FamilyStatement {
    QString statementSide; ///< "debit", "credit" or "both"
    bool monthly = false;
    QString generalTable;
    std::optional<StatementDates> dates = {};
};

/// The SELECT of a statement, with its words in the session's language. Expenses are negative in "both".
/// @throws RuntimeError 13 for monthly sums of a range that holds no dates
QString statementSql(const MemberStatement &statement);
QString statementSql(const FamilyStatement &statement);
