#pragma once

#include "platform/runtime/money.h"

#include <QtCore/QStringList>

#include <array>
#include <optional>

/// The valid members as the generator sees them, in the order of their relation.
struct GeneratorFamily {
    static constexpr int mostMembers = 100;

    QStringList memberNames;
    QList<qint32> memberRelations; ///< 1 wife, 2 son, 3 daughter
    /// Heads of the relations 1, 2 and 3, unevenly counted: the first group has one too many, the last one
    /// too few, and a last group of one head has none. That is meant.
    std::array<int, 3> relationCount{};

    int memberCount() const { return int(memberNames.size()); }
};

/// Reads the family through `engine.dbConnection`. @throws RuntimeError 9 with more than 100 valid members.
GeneratorFamily readGeneratorFamily();

/// A member's share of a made-up revenue of so many whole units, rounded to two decimals, halves away from
/// zero; nothing for a relation that has none. @throws RuntimeError 11 where the heads are counted as none.
std::optional<Money> generatedRevenueShare(qint32 amount, qint32 relation, const GeneratorFamily &family);
/// The share of a made-up expense, rounded likewise. `parts` is at least 1.
Money generatedExpenseShare(qint32 amount, int parts);
