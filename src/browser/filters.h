#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What of a browser's filter menus is chosen: the pieces in the filter syntax of the recordset, and what
/// they join to.
struct Filters {
    enum class Valid { Valid, Invalid, Both };
    enum class Credit { Revenues, Expenses, Both };

    // The checked items. All rows show after the load, although the first piece is chosen then: that is
    // meant.
    Valid valid = Valid::Valid;
    Credit credit = Credit::Both;

    QString validFilter = QStringLiteral("valid=true"); ///< this from the load until the first choice
    QString creditFilter;
    QString namesFilter; ///< empty when no name was ever chosen
    QString combinedFilter;

    /// Chooses an item and joins the pieces, its own in front. False, and nothing changes, when it is chosen
    /// already.
    bool choose(Valid item);
    bool choose(Credit item);
    /// Chooses names; False, and all pieces stay, when there are none. A name with an apostrophe breaks the
    /// text.
    bool choose(const QStringList &names);
};

/// The statement of the rows of `currentTable` in a range of days, both ends included; `from` and `to` are
/// short dates.
QString dateRangeStatement(const QString &browseTable, const QString &currentTable, const QString &from,
                           const QString &to);
