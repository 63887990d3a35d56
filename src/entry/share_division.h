#pragma once

#include "platform/runtime/money.h"

#include <QtCore/QString>

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
/// @throws RuntimeError 11 when there is neither a son nor a daughter, also for an amount of 0.
IslamicDivision divideIslamically(double amount, const HeirCounts &heirs);
