#pragma once

#include <QtCore/QStringView>

namespace sql
{

enum class TokenKind : quint8 {
    End,
    Name,      ///< a bare word; `keyword` tells when it is one of the dialect's words
    Bracketed, ///< `[name]`; the text is what stands inside
    Number,
    Text,       ///< '...' or "..."; the text is what stands inside, doubled quotes still doubled
    Date,       ///< #...#; the text is what stands inside
    Symbol,     ///< one of ( ) , . ; * + - / & and the comparison signs
    Unfinished, ///< a quote, bracket or # that is never closed; the text goes to the end
    Unknown     ///< a character that begins nothing
};

enum class Keyword : quint8 {
    None,
    And,
    As,
    Asc,
    Between,
    By,
    Delete,
    Desc,
    Distinct,
    Drop,
    False,
    From,
    Group,
    Insert,
    Into,
    Is,
    Not,
    Null,
    Or,
    Order,
    Select,
    Set,
    Table,
    True,
    Update,
    Values,
    Where
};

struct Token {
    TokenKind kind = TokenKind::End;
    Keyword keyword = Keyword::None;
    char16_t symbol = 0; ///< of a Symbol; `<=`, `>=` and `<>` stand as U+2264, U+2265 and U+2260. Of a Text
                         ///< and an Unfinished its opening character.
    qsizetype start = 0; ///< offset of its first character in the whole text
    QStringView text;
};

/// Cuts a statement text into tokens, one at each call. The tokens view the text and never copy it.
class Lexer
{
public:
    explicit Lexer(QStringView text) : m_text(text) {}
    Token next();

private:
    Token word();
    Token number();
    Token enclosed(TokenKind kind, char16_t close, bool doubling);
    Token symbol();
    char16_t at(qsizetype position) const
    {
        return position < m_text.size() ? m_text[position].unicode() : 0;
    }

    QStringView m_text;
    qsizetype m_position = 0;
};

} // namespace sql
