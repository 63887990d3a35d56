#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// The pieces of a browser's filter, in the filter syntax of the recordset, and what they join to.
struct Filters {
    enum class Valid { Valid, Invalid, Both };
    enum class Credit { Revenues, Expenses, Both };

    QString validFilter = QStringLiteral("valid=true"); ///< this from the load until the first choice
    QString creditFilter;
    QString namesFilter; ///< empty when no name was ever chosen
    QString combinedFilter;

    void choose(Valid choice);
    void choose(Credit choice);
    /// Sets `namesFilter`, which then is to be applied alone. Without a name all pieces stay. A name with an
    /// apostrophe breaks the text.
    void choose(const QStringList &names);
};

/// The statement of the rows of `currentTable` in a range of days, both ends included; `from` and `to` are
/// short dates.
QString dateRangeStatement(const QString &browseTable, const QString &currentTable, const QString &from,
                           const QString &to);
