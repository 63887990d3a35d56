#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/hijri_calendar.h"
#include "platform/runtime/numbers.h"

#include <algorithm>
#include <initializer_list>
#include <utility>
#include <vector>

using namespace Qt::Literals::StringLiterals;

// The reading of date texts: the text is cut into words, numbers and separators, the time is taken out, and
// what is left must be a date. A date of two or three parts is tried in several orders; the first valid one
// wins.

namespace
{
struct Token {
    enum class Kind { Number, Month, Mark, Separator };

    Kind kind = Kind::Separator;
    int value = 0;      ///< of a number; the month of a month name; 0 am and 1 pm for a mark
    int digits = 0;     ///< of a number
    QChar separator;    ///< of a separator; a blank when nothing else stands there
    bool blank = false; ///< blanks stand before this token
};

using Tokens = std::vector<Token>;

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// 1 to 12, or 0 for what is no month name.
int monthOfWord(const QString &word)
{
    if (currentCalendar() == hijriCalendar)
        return 0;
    // Spellings in use beside those that monthName() gives.
    static const std::pair<QString, int> otherSpellings[] = {
        {u"ابريل"_s, 4}, {u"اغسطس"_s, 8}, {u"اكتوبر"_s, 10}};
    for (const auto &[spelling, month] : otherSpellings)
        if (word == spelling)
            return month;
    for (int month = 1; month <= 12; ++month) {
        const QString english = monthName(month, false);
        if (word.compare(english, Qt::CaseInsensitive) == 0 ||
            word.compare(english.left(3), Qt::CaseInsensitive) == 0 || word == monthName(month, true))
            return month;
    }
    return 0;
}

std::optional<Token> wordToken(const QString &word)
{
    Token token;
    token.kind = Token::Kind::Mark;
    const QString lower = word.toLower();
    if (lower == u"am" || lower == u"a" || word == u"ص")
        return token;
    token.value = 1;
    if (lower == u"pm" || lower == u"p" || word == u"م")
        return token;
    token.kind = Token::Kind::Month;
    token.value = monthOfWord(word);
    if (token.value == 0)
        return std::nullopt;
    return token;
}

std::optional<Tokens> tokenize(const QString &text)
{
    constexpr int mostDigits = 4;
    Tokens tokens;
    bool blank = false;
    for (qsizetype at = 0; at < text.size();) {
        const QChar c = text[at];
        if (c == u' ') {
            blank = true;
            ++at;
            continue;
        }
        const qsizetype start = at;
        Token token;
        if (isDigit(c)) {
            token.kind = Token::Kind::Number;
            for (; at < text.size() && isDigit(text[at]); ++at) {
                if (++token.digits > mostDigits)
                    return std::nullopt;
                token.value = token.value * 10 + (text[at].unicode() - u'0');
            }
        } else if (c.isLetter()) {
            while (at < text.size() && text[at].isLetter())
                ++at;
            const auto word = wordToken(text.mid(start, at - start));
            if (!word)
                return std::nullopt;
            token = *word;
        } else if (c == u'/' || c == u'-' || c == u':' || c == u'.' || c == u',') {
            token.separator = c;
            ++at;
        } else {
            return std::nullopt;
        }
        token.blank = blank;
        blank = false;
        tokens.push_back(token);
    }
    return tokens;
}

bool isTimeSeparator(const Token &token)
{
    return token.kind == Token::Kind::Separator && (token.separator == u':' || token.separator == u'.');
}

/// Reads `h:m[:s]` and its mark from the token at `at` on, and moves `at` behind them. Nothing when there is
/// no such time.
std::optional<QTime> readTime(const Tokens &tokens, std::size_t &at)
{
    const QChar separator = tokens[at + 1].separator;
    int parts[3] = {0, 0, 0}; // hour, minute, second
    std::size_t count = 0;
    while (true) {
        if (at == tokens.size() || count == 3 || tokens[at].kind != Token::Kind::Number ||
            tokens[at].digits > 2)
            return std::nullopt;
        parts[count++] = tokens[at++].value;
        if (at == tokens.size() || !isTimeSeparator(tokens[at]))
            break;
        if (tokens[at++].separator != separator)
            return std::nullopt;
    }
    int &hour = parts[0];
    if (at < tokens.size() && tokens[at].kind == Token::Kind::Mark) {
        const bool afternoon = tokens[at++].value == 1;
        if (!afternoon && hour > 12)
            return std::nullopt;
        if (afternoon && hour < 12)
            hour += 12;
        else if (!afternoon && hour == 12)
            hour = 0;
    }
    const QTime time(hour, parts[1], parts[2]);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

/// Takes the time out of the tokens; midnight when there is none. Nothing when there is an impossible time,
/// or one that does not stand apart at the front or at the end.
std::optional<QTime> takeTime(Tokens &tokens)
{
    const auto separator = std::find_if(tokens.begin(), tokens.end(), isTimeSeparator);
    if (separator == tokens.end())
        return QTime(0, 0);
    if (separator == tokens.begin())
        return std::nullopt;
    const auto first = separator - 1;
    auto behind = static_cast<std::size_t>(first - tokens.begin());
    const auto time = readTime(tokens, behind);
    if (!time)
        return std::nullopt;
    const auto last = tokens.begin() + static_cast<std::ptrdiff_t>(behind);
    const bool atFront = first == tokens.begin() && (last == tokens.end() || last->blank);
    const bool atEnd = last == tokens.end() && first->blank;
    if (!atFront && !atEnd)
        return std::nullopt;
    tokens.erase(first, last);
    return time;
}

/// Numbers and at most one month name with one separator or blanks between two of them.
bool takeParts(const Tokens &tokens, Tokens &parts, bool &hasName)
{
    hasName = false;
    for (const Token &token : tokens) {
        if (token.kind == Token::Kind::Mark || (token.kind == Token::Kind::Month && hasName))
            return false;
        hasName = hasName || token.kind == Token::Kind::Month;
    }
    bool separated = false;
    for (const Token &token : tokens) {
        if (token.kind == Token::Kind::Separator) {
            // A comma belongs to the English way of writing: March 15, 2004.
            if (separated || parts.empty() || isTimeSeparator(token) || (token.separator == u',' && !hasName))
                return false;
            separated = true;
            continue;
        }
        parts.push_back(token);
        separated = false;
    }
    return !separated;
}

std::optional<QDate> dateOf(const Token &year, const Token &month, const Token &day)
{
    if (day.digits > 2 || month.digits > 2)
        return std::nullopt;
    const int fullYear = year.digits <= 2 ? yearWithCentury(year.value) : year.value;
    return dayOfCalendar({fullYear, month.value, day.value});
}

std::optional<QDate> firstOf(std::initializer_list<std::optional<QDate>> readings)
{
    for (const auto &reading : readings)
        if (reading)
            return reading;
    return std::nullopt;
}

Token numberToken(int value, int digits)
{
    Token token;
    token.kind = Token::Kind::Number;
    token.value = value;
    token.digits = digits;
    return token;
}

std::optional<QDate> dateOfThree(const Token &a, const Token &b, const Token &c)
{
    if (a.digits > 2)
        return firstOf({dateOf(a, b, c), dateOf(a, c, b)});
    if (c.digits > 2)
        return firstOf({dateOf(c, b, a), dateOf(c, a, b)});
    return firstOf({dateOf(c, b, a), dateOf(c, a, b), dateOf(a, b, c), dateOf(a, c, b)});
}

std::optional<QDate> dateOfTwo(const Token &a, const Token &b)
{
    const Token thisYear = numberToken(calendarDay(today().date()).year, 4);
    const Token firstDay = numberToken(1, 1);
    const auto yearFirst = a.digits > 2 ? dateOf(a, b, firstDay) : std::nullopt;
    return firstOf({dateOf(thisYear, b, a), dateOf(thisYear, a, b), dateOf(b, a, firstDay), yearFirst});
}

std::optional<QDate> dateWithName(const Tokens &parts)
{
    Token month;
    Tokens numbers;
    for (const Token &part : parts) {
        if (part.kind == Token::Kind::Month)
            month = part;
        else
            numbers.push_back(part);
    }
    if (numbers.size() == 1) {
        const Token thisYear = numberToken(calendarDay(today().date()).year, 4);
        return firstOf({dateOf(thisYear, month, numbers[0]), dateOf(numbers[0], month, numberToken(1, 1))});
    }
    if (numbers.size() != 2)
        return std::nullopt;
    if (numbers[0].digits > 2)
        return dateOf(numbers[0], month, numbers[1]);
    const auto yearFirst = numbers[1].digits <= 2 ? dateOf(numbers[0], month, numbers[1]) : std::nullopt;
    return firstOf({dateOf(numbers[1], month, numbers[0]), yearFirst});
}
} // namespace

std::optional<QDateTime> parseDate(const QString &text)
{
    auto tokens = tokenize(trimBlanks(text));
    if (!tokens || tokens->empty())
        return std::nullopt;
    const auto time = takeTime(*tokens);
    if (!time)
        return std::nullopt;
    if (tokens->empty())
        return QDateTime(QDate(1899, 12, 30), *time, Qt::UTC);

    Tokens parts;
    bool hasName = false;
    if (!takeParts(*tokens, parts, hasName))
        return std::nullopt;
    std::optional<QDate> day;
    if (hasName)
        day = dateWithName(parts);
    else if (parts.size() == 3)
        day = dateOfThree(parts[0], parts[1], parts[2]);
    else if (parts.size() == 2)
        day = dateOfTwo(parts[0], parts[1]);
    if (!day)
        return std::nullopt;
    return QDateTime(*day, *time, Qt::UTC);
}
