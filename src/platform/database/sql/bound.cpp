#include "platform/database/sql/bound.h"

#include <algorithm>
#include <cstring>

namespace sql::bound
{

bool equal(const Expression &left, const Expression &right)
{
    if (left.kind != right.kind || left.type != right.type || left.op != right.op ||
        left.source != right.source || left.column != right.column || left.literal != right.literal)
        return false;
    if (left.kind == Expression::Kind::Subselect)
        return false;
    if (left.kind == Expression::Kind::Call && std::strcmp(left.function, right.function) != 0)
        return false;
    return std::equal(left.operands.begin(), left.operands.end(), right.operands.begin(),
                      right.operands.end(), equal);
}

} // namespace sql::bound
