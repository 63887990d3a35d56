#pragma once

#include <QtCore/QString>

#include <vector>

class Player;

/// One person of a family as the agent types it.
struct Person {
    QString name;
    QString sex; ///< as the list shows it in the session's language
    QString title;
    QString relation; ///< the same
    QString born;     ///< dd/MM/yyyy
    QString group;
};

/// A ledger row that the story must leave.
struct ExpectedShare {
    QString name;
    QString amount;
};

/// One family's first revenue, in one language.
struct Story {
    QString name; ///< of the folder that the store lies in
    bool arabic = true;
    QString deceased;
    std::vector<Person> family;
    QString revenue;
    std::vector<ExpectedShare> shares; ///< in the order of the ledger
};

/// The four stories: two families, each in Arabic and in English.
std::vector<Story> stories();

/// Plays the very first start, which makes the store and ends by itself.
void playFirstStart(Player &player);
/// Plays the start on the empty store: a first user is made, the language chosen.
void playFirstUser(Player &player, const Story &story);
/// Plays the login, the register and the revenue. `lastly` is called on the main screen before it closes.
void playRevenue(Player &player, const Story &story, const std::function<void()> &lastly);
