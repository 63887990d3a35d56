#pragma once

#include "platform/database/rows.h"

#include <QtCore/QString>

#include <vector>

namespace database
{

/// A filter's text, or the criterion of a search, ready to be held against rows: `name op value` with the
/// operators < > <= >= <> = like, joined by and, or and parentheses. A value is a number, a text in single
/// quotes, a date between `#` (month first) or quotes (day first), true, false or null. Texts are compared as
/// the store compares them; Null fulfils nothing but `= null`.
class RowCondition
{
public:
    enum class Form {
        Filter,   ///< any nesting
        Criterion ///< one clause
    };
    enum class Comparison { Less, LessEqual, Equal, NotEqual, GreaterEqual, Greater, Like };

    /// @throws RuntimeError 3001 for a bad text, 3265 for an unknown field
    RowCondition(const QString &text, const std::vector<FieldInfo> &fields, Form form);

    /// Whether a row of a set with those fields fulfils the condition.
    bool matches(const Rows &rows, int row) const;

private:
    friend class ConditionParser;
    struct Clause {
        int field = 0;
        Comparison comparison = Comparison::Equal;
        Value value;       ///< of the kind that the field's values have; a double for every plain number
        qint64 number = 0; ///< the same as rows hold it, unless it is a double or a text
        /// Texts: the outcome by the text's number in its set, 0 while it is not known.
        mutable std::vector<signed char> outcomes;
    };
    struct Node {
        enum class Kind { All, Any, One } kind = Kind::One;
        std::vector<Node> parts; ///< of All and Any
        Clause clause;           ///< of One
    };
    static bool holds(const Node &node, const Rows &rows, int row);
    static bool holds(const Clause &clause, const Rows &rows, int row);
    static bool holdsText(const Clause &clause, const Rows &rows, int text);

    Node m_root;
};

} // namespace database
