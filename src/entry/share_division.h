#pragma once

#include "platform/runtime/money.h"

#include <QtCore/QString>

#include <optional>

/// Relations of a member to the deceased; the codes are fixed.
enum Relation : qint32 { relationWife = 1, relationSon = 2, relationDaughter = 3 };

/// The valid members of each relation.
struct HeirCounts {
    qint32 wives = 0;
    qint32 sons = 0;
    qint32 daughters = 0;
};

/// What one revenue leaves for each kind of heir. All amounts in money units of 1/10,000.
struct IslamicDivision {
    Money wivesPortion;    ///< an eighth of the amount; 0 without a wife
    Money childrenPortion; ///< what is left for sons and daughters
    Money unitShare;       ///< one daughter's share; a son has twice this
};

/// Divides an amount by the shares of wives and children, half to even at the fourth decimal.
/// @throws RuntimeError 11 when there is neither a son nor a daughter, also for an amount of 0; 6 when the
/// amount leaves the money range.
IslamicDivision divideIslamically(double amount, const HeirCounts &heirs);

/// One heir's share: a wife has whole units only (her part of the portion taken to whole units, the fraction
/// dropped), a son twice the unit share, a daughter the unit share. Nothing for any other relation. What the
/// roundings leave over goes to nobody; that is meant.
/// @throws RuntimeError 6 for a wife when the wives' portion leaves the 32-bit range, 11 when none is
/// counted.
std::optional<Money> islamicShare(qint32 relation, const IslamicDivision &division, const HeirCounts &heirs);

/// An amount divided by a number of members in double arithmetic, half to even at the fourth decimal.
/// @throws RuntimeError 11 when `members` is 0.
Money equalShare(Money amount, int members);

/// The same to a whole number of units, half to even.
/// @throws RuntimeError 11 when `members` is 0, 6 when the result leaves the money range.
Money wholeShare(Money amount, int members);

/// The full money reading of an amount's text, 0 for a text that is not numeric.
Money enteredAmount(const QString &amountText);

/// The total that a posting writes: the text rounded to two decimals, halves away from zero.
/// @throws RuntimeError 13 for a text that is not numeric.
Money postedTotal(const QString &amountText);

/// A share as the screens show it: `1,000.00`.
QString shareCaption(Money share);
