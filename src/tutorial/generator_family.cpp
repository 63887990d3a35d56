#include "tutorial/generator_family.h"

#include "core/engine.h"
#include "platform/runtime/format.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

double quotient(double amount, int heads)
{
    if (heads == 0)
        throw runtime_errors::divisionByZero();
    return amount / heads;
}

void countHeads(GeneratorFamily &family)
{
    int heads = 0;
    qint32 previous = family.memberRelations.value(0);
    for (int i = 0; i < family.memberCount(); ++i) {
        const qint32 relation = family.memberRelations[i];
        ++heads; // before the comparison: that is why the count is uneven
        if (relation == previous && i < family.memberCount() - 1)
            continue;
        if (previous >= 1 && previous <= qint32(family.relationCount.size()))
            family.relationCount[std::size_t(previous - 1)] = heads;
        heads = 0;
        previous = relation;
    }
}

} // namespace

GeneratorFamily readGeneratorFamily()
{
    GeneratorFamily family;
    const auto members = Recordset::create();
    members->open(u"select * from members where valid=true order by relation "_s, engine.dbConnection,
                  CursorType::Static);
    for (; !members->eof(); members->moveNext()) {
        if (family.memberCount() == GeneratorFamily::mostMembers)
            throw runtime_errors::outOfRange();
        family.memberNames += members->value(u"name"_s).toText();
        family.memberRelations += members->value(u"relation"_s).toInt();
    }
    members->close();
    countHeads(family);
    return family;
}

std::optional<Money> generatedRevenueShare(qint32 amount, qint32 relation, const GeneratorFamily &family)
{
    const auto &[wives, sons, daughters] = family.relationCount;
    double share = 0;
    switch (relation) {
    case 1:
        share = quotient(amount * 1.0 / 8, wives);
        break;
    case 2:
        share = quotient(amount * 7.0 / 8, sons * 2 + daughters) * 2;
        break;
    case 3:
        share = quotient(amount * 7.0 / 8, sons * 2 + daughters);
        break;
    default:
        return std::nullopt;
    }
    return readMoney(format(share, u"##,###,##0.00"_s));
}

Money generatedExpenseShare(qint32 amount, int parts)
{
    return readMoney(format(quotient(amount, parts), u"#,###,##0.00"_s));
}
