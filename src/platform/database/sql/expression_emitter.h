#pragma once

#include "platform/database/sql/bound.h"

namespace sql
{

/// The half of the emitter that writes expressions down, with the step that both halves write.
class ExpressionEmitter
{
protected:
    using Expression = bound::Expression;

    // Operands that bind less tightly than the place they stand at are put into parentheses, and only those:
    // the engine's parser has a stack of a hundred entries.
    enum Level {
        LevelAny,
        LevelOr,
        LevelAnd,
        LevelNot,
        LevelCompare,
        LevelOperand,
        LevelAdd,
        LevelMultiply,
        LevelJoin,
        LevelAtom
    };

    /// With a target, columns of source 0 are written with that table's name: the engine knows no alias
    /// there.
    explicit ExpressionEmitter(const CatalogTable *target) : m_target(target) { m_step.text.reserve(512); }
    virtual ~ExpressionEmitter() = default;

    virtual void subselect(const bound::Select &select) = 0;

    void write(const char *text) { m_step.text += text; }
    void write(const QByteArray &text) { m_step.text += text; }
    /// The alias of a table, and what stands behind it.
    void source(int number, const char *behind);
    /// Equal literals share a parameter, so that an expression written twice is one expression to the engine.
    void parameter(Parameter value);

    /// The expression as a stored value.
    void value(const Expression &expression, Level level);
    /// The same, a text under the dialect's collation, for comparing and sorting. A column carries it
    /// already.
    void collated(const Expression &expression);
    /// The expression as a test: the engine takes every number but 0 as true.
    void condition(const Expression &expression, Level level);

    Step m_step;

private:
    void column(const Expression &expression);
    void iif(const Expression &expression);
    void comparison(const Expression &expression);
    void between(const Expression &expression, Level level);
    void arithmetic(const Expression &expression, Level level);
    void cast(const Expression &expression, Level level);
    void call(const Expression &expression);

    template <typename Body>
    void enclosed(bool needed, Body body)
    {
        if (needed)
            write("(");
        body();
        if (needed)
            write(")");
    }

    const CatalogTable *m_target;
};

} // namespace sql
