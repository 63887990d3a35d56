#include "browser/filters.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

TEST(Filters, TheFirstSidePressedJoinsTheValidPieceOfTheLoad)
{
    Filters filters;
    filters.choose(Filters::Credit::Expenses);
    EXPECT_EQ(filters.combinedFilter, u"(creditordebit = false) and valid=true"_s);
}

} // namespace
