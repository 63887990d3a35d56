#pragma once

#include <QtCore/QStringList>

#include <functional>
#include <vector>

class Player;

/// One person of a family as the agent types it.
struct Person {
    QString name;
    QString sex; ///< as the list shows it in the session's language
    QString title;
    QString relation; ///< the same
    QString born;     ///< dd/MM/yyyy
    QString group;
};

/// A ledger row that the story must leave.
struct LedgerRow {
    int transaction;
    QString name;
    QString amount;

    bool operator==(const LedgerRow &) const = default;
};

/// Sums as the totals show them, a negative net with its mark.
struct Sums {
    QString revenues;
    QString expenses;
    QString net;
};

/// What the story types into the entries and what the browsers say, in the story's language.
struct Words {
    QString revenueNote;
    QString expenseNote;
    QString correctedNote; ///< the revenue's, later
    QString yes;           ///< of a valid row
    QString no;
    QString modified;  ///< in the audit row of the correction
    QString deleted;   ///< in that of the cancellation
    QString secretary; ///< a second user
    QString correctedSecretary;
};

/// One family's first revenue and first expense, in one language; the one is corrected and the other
/// cancelled and entered anew.
struct Story {
    QString name; ///< of the folder that the store lies in
    bool arabic = true;
    Words words;
    QString deceased;
    std::vector<Person> family;
    QString revenue;
    QString revenueDate;           ///< dd/MM/yyyy
    QString expense;               ///< among all members but the last one by name
    QString expenseDate;           ///< in a later year
    QString expenseAnew;           ///< in its place, among the same
    std::vector<LedgerRow> ledger; ///< of the first two, by transaction and name
    std::vector<LedgerRow> ledgerAnew;
    QStringList amounts; ///< of the ledger as the browser shows them, ascending
    Sums sums;           ///< of the whole ledger
    Sums firstSums;      ///< of the member whose row stands first in `ledger`

    /// What the program asks before it writes.
    QString question() const;
    static QString password() { return QStringLiteral("s3cret"); } ///< of the first user
};

/// The four stories: two families, each in Arabic and in English.
std::vector<Story> stories();

/// Plays the very first start, which makes the store and ends by itself.
void playFirstStart(Player &player);
/// Plays the start on the empty store: a first user is made, the language chosen.
void playFirstUser(Player &player, const Story &story);

// What follows is played in one start, in this order; each but the first begins and ends on the main screen.

void playLogin(Player &player, const Story &story);
/// The deceased's name and the register.
void playFamily(Player &player, const Story &story);
void playRevenue(Player &player, const Story &story);
/// `amount` is in the place of `Story::expense`.
void playExpense(Player &player, const Story &story, const QString &amount);
/// Converts a date and reads the about box.
void playConversion(Player &player);
/// Closes the main screen; `lastly` is called on it before.
void playEnd(Player &player, const std::function<void()> &lastly);
