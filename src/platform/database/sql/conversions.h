#pragma once

#include "platform/database/sql/bound.h"

/// The dialect's rules for values of unlike types.
namespace sql
{

/// FieldInfo::definedSize of a type of fixed length.
int fixedSize(FieldType type);

/// The expression as another type; literals are converted at once.
/// @throws RuntimeError -2147217913 for a literal that can't be converted.
bound::Expression converted(bound::Expression expression, FieldType type);

/// The type of an expression that is now the one and now the other operand.
FieldType commonType(const bound::Expression &left, const bound::Expression &right);

/// Makes two expressions comparable: a quoted text follows the other side's type, a computed text is read as
/// a number beside a number, money is compared as money.
/// @throws RuntimeError -2147217913 for what has no common reading, such as a text column and a number.
void alignForComparison(bound::Expression &left, bound::Expression &right);

/// The expression as a column takes it; literals are checked against the column's size and range.
/// @throws RuntimeError -2147217913 for an unreadable literal, -2147217833 for a text that is too long,
/// -2147217887 for a refused empty text, 6 for a number outside the column's range.
bound::Expression assigned(bound::Expression expression, const CatalogColumn &column);

/// A call of one of the engine's functions.
bound::Expression call(const char *function, FieldType type, std::vector<bound::Expression> operands);

/// A node over operands, of a type's own size.
bound::Expression node(bound::Expression::Kind kind, FieldType type, std::vector<bound::Expression> operands);

/// A literal of a type.
bound::Expression literal(Value value, FieldType type);

} // namespace sql
