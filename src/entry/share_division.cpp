#include "entry/share_division.h"

#include "platform/runtime/format.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

const auto amountPattern = u"#,###,##0.00"_s;

double quotient(Money amount, int members)
{
    if (members == 0)
        throw runtime_errors::divisionByZero();
    return amount.toDouble() / members;
}

} // namespace

IslamicDivision divideIslamically(double amount, const HeirCounts &heirs)
{
    IslamicDivision division;
    if (heirs.wives > 0) {
        division.wivesPortion = toMoney(amount * (1.0 / 8));
        division.childrenPortion = toMoney(amount * (7.0 / 8));
    } else {
        division.childrenPortion = toMoney(amount);
    }
    const double units = 2.0 * heirs.sons + heirs.daughters;
    if (units == 0)
        throw runtime_errors::divisionByZero();
    division.unitShare = toMoney(division.childrenPortion.toDouble() / units);
    return division;
}

std::optional<Money> islamicShare(qint32 relation, const IslamicDivision &division, const HeirCounts &heirs)
{
    switch (relation) {
    case relationWife:
        if (heirs.wives == 0)
            throw runtime_errors::divisionByZero();
        return Money::fromUnits(toLong(division.wivesPortion) / heirs.wives);
    case relationSon:
        return division.unitShare * 2;
    case relationDaughter:
        return division.unitShare;
    default:
        return std::nullopt;
    }
}

Money equalShare(Money amount, int members)
{
    return toMoney(quotient(amount, members));
}

Money wholeShare(Money amount, int members)
{
    return toMoney(roundHalfEven(quotient(amount, members)));
}

Money enteredAmount(const QString &amountText)
{
    return isNumeric(amountText) ? readMoney(amountText) : Money();
}

Money postedTotal(const QString &amountText)
{
    return readMoney(format(amountText, amountPattern));
}

QString shareCaption(Money share)
{
    return format(share, amountPattern);
}
