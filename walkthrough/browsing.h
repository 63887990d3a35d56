#pragma once

class Player;
struct Story;

/// Browses what the story has entered and checks what the browsers show against the story's data. Begins and
/// ends on the main screen: the changes menu, the ledger sorted, filtered, in a range of dates, searched and
/// totalled, and then the general table with the expense's shares under its row.
void playBrowsers(Player &player, const Story &story);
