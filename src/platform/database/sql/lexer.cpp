#include "platform/database/sql/lexer.h"

#include <QtCore/QChar>
#include <QtCore/QLatin1StringView>

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace sql
{

namespace
{

struct Word {
    QLatin1StringView text;
    Keyword keyword;
};

constexpr std::array words = {
    Word{"and"_L1, Keyword::And},       Word{"as"_L1, Keyword::As},
    Word{"asc"_L1, Keyword::Asc},       Word{"between"_L1, Keyword::Between},
    Word{"by"_L1, Keyword::By},         Word{"delete"_L1, Keyword::Delete},
    Word{"desc"_L1, Keyword::Desc},     Word{"distinct"_L1, Keyword::Distinct},
    Word{"drop"_L1, Keyword::Drop},     Word{"false"_L1, Keyword::False},
    Word{"from"_L1, Keyword::From},     Word{"group"_L1, Keyword::Group},
    Word{"insert"_L1, Keyword::Insert}, Word{"into"_L1, Keyword::Into},
    Word{"is"_L1, Keyword::Is},         Word{"not"_L1, Keyword::Not},
    Word{"null"_L1, Keyword::Null},     Word{"or"_L1, Keyword::Or},
    Word{"order"_L1, Keyword::Order},   Word{"select"_L1, Keyword::Select},
    Word{"set"_L1, Keyword::Set},       Word{"table"_L1, Keyword::Table},
    Word{"true"_L1, Keyword::True},     Word{"update"_L1, Keyword::Update},
    Word{"values"_L1, Keyword::Values}, Word{"where"_L1, Keyword::Where},
};

Keyword keywordOf(QStringView text)
{
    const char16_t first = text.front().unicode() | 0x20;
    for (const Word &word : words) {
        if (word.text.size() == text.size() && char16_t(word.text.front().unicode()) == first &&
            text.compare(word.text, Qt::CaseInsensitive) == 0)
            return word.keyword;
    }
    return Keyword::None;
}

bool isBlank(char16_t character)
{
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

bool isDigit(char16_t character)
{
    return character >= '0' && character <= '9';
}

bool beginsWord(char16_t character)
{
    if (character < 0x80)
        return (character | 0x20) >= 'a' && (character | 0x20) <= 'z';
    return QChar::isLetter(character);
}

bool continuesWord(char16_t character)
{
    // Marks are parts of words: vowel signs stand inside Arabic names.
    return beginsWord(character) || isDigit(character) || character == '_' ||
           (character >= 0x80 && (QChar::isMark(character) || QChar::isDigit(character)));
}

} // namespace

Token Lexer::next()
{
    while (isBlank(at(m_position)))
        ++m_position;
    if (m_position == m_text.size())
        return {.kind = TokenKind::End, .start = m_position, .text = m_text.sliced(m_position)};
    const char16_t first = at(m_position);
    if (beginsWord(first))
        return word();
    if (isDigit(first) || (first == '.' && isDigit(at(m_position + 1))))
        return number();
    switch (first) {
    case '\'':
    case '"':
        return enclosed(TokenKind::Text, first, true);
    case '[':
        return enclosed(TokenKind::Bracketed, ']', false);
    case '#':
        return enclosed(TokenKind::Date, '#', false);
    default:
        return symbol();
    }
}

Token Lexer::word()
{
    const qsizetype start = m_position;
    while (continuesWord(at(m_position)))
        ++m_position;
    const QStringView text = m_text.sliced(start, m_position - start);
    return {.kind = TokenKind::Name, .keyword = keywordOf(text), .start = start, .text = text};
}

Token Lexer::number()
{
    const qsizetype start = m_position;
    const auto digits = [this] {
        while (isDigit(at(m_position)))
            ++m_position;
    };
    digits();
    if (at(m_position) == '.') {
        ++m_position;
        digits();
    }
    if ((at(m_position) | 0x20) == 'e') {
        const char16_t sign = at(m_position + 1);
        const qsizetype exponent = m_position + (sign == '+' || sign == '-' ? 2 : 1);
        if (isDigit(at(exponent))) {
            m_position = exponent;
            digits();
        }
    }
    return {.kind = TokenKind::Number, .start = start, .text = m_text.sliced(start, m_position - start)};
}

Token Lexer::enclosed(TokenKind kind, char16_t close, bool doubling)
{
    const qsizetype start = m_position;
    Token token{.kind = kind, .symbol = at(start), .start = start, .text = {}};
    for (m_position = start + 1; m_position < m_text.size(); ++m_position) {
        if (at(m_position) != close)
            continue;
        if (doubling && at(m_position + 1) == close) {
            ++m_position;
            continue;
        }
        token.text = m_text.sliced(start + 1, m_position - start - 1);
        ++m_position;
        return token;
    }
    token.kind = TokenKind::Unfinished;
    token.text = m_text.sliced(start);
    return token;
}

Token Lexer::symbol()
{
    const qsizetype start = m_position++;
    Token token{.kind = TokenKind::Symbol, .symbol = at(start), .start = start, .text = {}};
    switch (token.symbol) {
    case '<':
        if (at(m_position) == '=' || at(m_position) == '>')
            token.symbol = at(m_position++) == '=' ? u'\u2264' : u'\u2260';
        break;
    case '>':
        if (at(m_position) == '=') {
            token.symbol = u'\u2265';
            ++m_position;
        }
        break;
    case '(':
    case ')':
    case ',':
    case '.':
    case ';':
    case '*':
    case '+':
    case '-':
    case '/':
    case '&':
    case '=':
        break;
    default:
        token.kind = TokenKind::Unknown;
    }
    token.text = m_text.sliced(start, m_position - start);
    return token;
}

} // namespace sql
