#pragma once

class Player;
struct Story;

/// Corrects the revenue's note and cancels the expense in the general table, reads the two audit rows of
/// that, moves them to an archive, looks at it and merges it back. Begins and ends on the main screen, behind
/// the entries of both.
void playCorrections(Player &player, const Story &story);
