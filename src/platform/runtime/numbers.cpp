#include "platform/runtime/numbers.h"

#include "platform/runtime/decimal.h"
#include "platform/runtime/runtime_error.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr qint64 beyondEveryRange = 100'000; // as a power of ten

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isWhite(QChar c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

char ascii(QChar digit)
{
    return static_cast<char>(digit.unicode());
}

/// Reads number parts out of a text from the front; each routine consumes what it understood.
class Scanner
{
public:
    explicit Scanner(QStringView text) : m_text(text) {}

    bool atEnd() const { return m_at == m_text.size(); }
    /// U+0000 at the end, and where the text holds it.
    QChar peek(qsizetype ahead = 0) const
    {
        return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : QChar();
    }
    bool accept(char16_t wanted)
    {
        if (atEnd() || peek() != wanted)
            return false;
        ++m_at;
        return true;
    }
    void skipWhite()
    {
        while (!atEnd() && isWhite(peek()))
            ++m_at;
    }

    /// Digits, decimal point and exponent, without a sign. Nothing when no digit is there.
    std::optional<Decimal> decimal(bool thousands);
    /// `&H` or `&O` with digits of that base, without a sign.
    std::optional<Decimal> radix();

private:
    void skipThousandsSeparators();
    qint64 exponent();

    QStringView m_text;
    qsizetype m_at = 0;
};

void Scanner::skipThousandsSeparators()
{
    qsizetype commas = 0;
    while (peek(commas) == u',')
        ++commas;
    if (isDigit(peek(commas)))
        m_at += commas;
}

qint64 Scanner::exponent()
{
    const QChar letter = peek().toLower();
    if (letter != u'e' && letter != u'd')
        return 0;
    const bool negative = peek(1) == u'-';
    const qsizetype start = negative || peek(1) == u'+' ? 2 : 1;
    if (!isDigit(peek(start)))
        return 0;
    qint64 value = 0;
    for (m_at += start; isDigit(peek()); ++m_at)
        value = std::min(value * 10 + (ascii(peek()) - '0'), beyondEveryRange);
    return negative ? -value : value;
}

std::optional<Decimal> Scanner::decimal(bool thousands)
{
    Decimal result;
    while (isDigit(peek())) {
        result.digits += ascii(peek());
        ++m_at;
        if (thousands)
            skipThousandsSeparators();
    }
    result.point = static_cast<qint64>(result.digits.size());
    if (peek() == u'.' && (!result.digits.empty() || isDigit(peek(1)))) {
        for (++m_at; isDigit(peek()); ++m_at)
            result.digits += ascii(peek());
    }
    if (result.digits.empty())
        return std::nullopt;
    result.point += exponent();
    result.normalize();
    return result;
}

std::optional<Decimal> Scanner::radix()
{
    const QChar letter = peek(1).toLower();
    if (peek() != u'&' || (letter != u'h' && letter != u'o'))
        return std::nullopt;
    const int bits = letter == u'h' ? 4 : 3;
    const auto digitValue = [&](QChar c) {
        const QChar lower = c.toLower();
        const int value = isDigit(c)                       ? c.unicode() - u'0'
                          : lower >= u'a' && lower <= u'f' ? lower.unicode() - u'a' + 10
                                                           : 16;
        return value < (1 << bits) ? value : -1;
    };
    if (digitValue(peek(2)) < 0)
        return std::nullopt;
    quint64 value = 0;
    bool tooLarge = false;
    for (m_at += 2; digitValue(peek()) >= 0; ++m_at) {
        tooLarge = tooLarge || (value >> (64 - bits)) != 0;
        value = (value << bits) | static_cast<quint64>(digitValue(peek()));
    }
    Decimal result{false, tooLarge ? "1" : std::to_string(value), 0};
    result.point = tooLarge ? beyondEveryRange : static_cast<qint64>(result.digits.size());
    result.normalize();
    return result;
}

template <typename Integer>
Integer rounded(double value)
{
    const double whole = std::nearbyint(value);
    if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()))
        throw runtime_errors::overflow();
    return static_cast<Integer>(whole);
}
} // namespace

std::optional<Decimal> readDecimal(const QString &text)
{
    Scanner scanner{text};
    scanner.skipWhite();
    if (auto number = scanner.radix()) {
        scanner.skipWhite();
        return scanner.atEnd() ? number : std::nullopt;
    }

    bool negative = false;
    bool hasSign = false; // a sign, or parentheses in its place
    bool open = false;
    bool hasCurrency = false;
    const auto acceptAdornment = [&] {
        scanner.skipWhite();
        if (!hasSign && (scanner.peek() == u'+' || scanner.peek() == u'-')) {
            negative = scanner.peek() == u'-';
            hasSign = true;
            return scanner.accept(scanner.peek().unicode());
        }
        if (!hasCurrency && scanner.accept(u'$')) {
            hasCurrency = true;
            return true;
        }
        return false;
    };

    while (true) {
        if (acceptAdornment())
            continue;
        if (hasSign || !scanner.accept(u'('))
            break;
        negative = hasSign = open = true;
    }
    auto number = scanner.decimal(true);
    if (!number)
        return std::nullopt;
    while (true) {
        if (acceptAdornment())
            continue;
        if (!open || !scanner.accept(u')'))
            break;
        open = false;
    }
    if (open || !scanner.atEnd())
        return std::nullopt;
    number->negative = negative;
    return number;
}

bool isNumeric(const QString &text)
{
    const auto number = readDecimal(text);
    return number && number->toMoney();
}

Money readMoney(const QString &text)
{
    const auto number = readDecimal(text);
    if (!number)
        throw runtime_errors::typeMismatch();
    const auto amount = number->toMoney();
    if (!amount)
        throw runtime_errors::overflow();
    return *amount;
}

double readDouble(const QString &text)
{
    const auto number = readDecimal(text);
    if (!number)
        throw runtime_errors::typeMismatch();
    const auto value = number->toDouble();
    if (!value)
        throw runtime_errors::overflow();
    return *value;
}

double readLeadingNumber(const QString &text)
{
    QString dense = text;
    dense.removeIf([](QChar c) { return c == u' ' || c == u'\t' || c == u'\n'; });
    Scanner scanner{dense};
    auto number = scanner.radix();
    if (!number) {
        const bool negative = scanner.accept(u'-');
        if (!negative)
            scanner.accept(u'+');
        number = scanner.decimal(false);
        if (!number)
            return 0.0;
        number->negative = negative;
    }
    const auto value = number->toDouble();
    if (!value)
        throw runtime_errors::overflow();
    return *value;
}

double roundHalfEven(double value)
{
    return std::nearbyint(value);
}

qint16 toInteger(double value)
{
    return rounded<qint16>(value);
}

qint16 toInteger(const QString &text)
{
    return toInteger(readDouble(text));
}

qint32 toLongInteger(double value)
{
    return rounded<qint32>(value);
}

qint32 toLongInteger(const QString &text)
{
    return toLongInteger(readDouble(text));
}

bool toBoolean(const QString &text)
{
    if (text.compare(u"True"_s, Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(u"False"_s, Qt::CaseInsensitive) == 0)
        return false;
    const auto number = readDecimal(text);
    if (!number)
        throw runtime_errors::typeMismatch();
    return !number->isZero();
}

QString numberText(double value)
{
    if (!std::isfinite(value))
        return QString::number(value);
    const Decimal number = Decimal::fromDouble(value);
    const qint64 exponent = number.point - 1;
    if (number.isZero() || (exponent >= -4 && exponent <= 14))
        return number.toPlainText();
    QString text = QString::fromStdString(number.digits);
    if (text.size() > 1)
        text.insert(1, u'.');
    const QString power = u"%1"_s.arg(std::abs(exponent), 2, 10, QLatin1Char('0'));
    return (number.negative ? u"-"_s : QString()) + text + (exponent < 0 ? u"E-"_s : u"E+"_s) + power;
}

QString asciiDigits(const QString &text)
{
    QString result = text;
    for (QChar &c : result) {
        if (c >= u'\u0660' && c <= u'\u0669')
            c = QChar(c.unicode() - u'\u0660' + u'0');
        else if (c >= u'\u06F0' && c <= u'\u06F9')
            c = QChar(c.unicode() - u'\u06F0' + u'0');
    }
    return result;
}

QString trimBlanks(const QString &text)
{
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text[first] == u' ')
        ++first;
    while (last > first && text[last - 1] == u' ')
        --last;
    return text.mid(first, last - first);
}
