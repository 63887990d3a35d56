#include "fuzz/support.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/value.h"

namespace
{

template <typename Reading>
int failureOf(Reading &&reading)
{
    const auto refused = fuzz::refusal(reading);
    fuzz::require(!refused || refused->number() == 6 || refused->number() == 13, "6 or 13 tells why");
    return refused ? refused->number() : 0;
}

} // namespace

/// A text through every reading of numbers, and each number through its own text.
FUZZ_HARNESS(number_reading)
{
    const QString text = QString::fromUtf8(input);
    Money money;
    double number = 0;
    const int noMoney = failureOf([&] { money = readMoney(text); });
    const int noNumber = failureOf([&] { number = readDouble(text); });
    fuzz::require(isNumeric(text) == (noMoney == 0), "numeric is what reads as money");
    fuzz::require((noMoney == 13) == (noNumber == 13), "both readings know the same numbers");
    fuzz::require(noMoney != 0 || noNumber == 0, "money is within the range of a double");
    fuzz::require(noMoney != 0 || readMoney(money.toText()) == money, "money reads back from its text");
    if (noNumber == 0)
        fuzz::require(numberText(readDouble(numberText(number))) == numberText(number), "so does a double");
    failureOf([&] { toMoney(number); });
    failureOf([&] { toLongInteger(text); });
    failureOf([&] { toInteger(text); });
    failureOf([&] { toBoolean(text); });
    fuzz::require(failureOf([&] { readLeadingNumber(text); }) != 13, "nothing readable is 0");
    fuzz::require(failureOf([&] { toInteger(text); }) != 0 || toInteger(text) == toLongInteger(text),
                  "a short whole number is a long one");
    asciiDigits(trimBlanks(text));
}
