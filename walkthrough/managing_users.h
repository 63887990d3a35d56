#pragma once

class Player;
struct Story;

/// Takes a second user on, corrects that user's name, reads the audit row of it and changes the password of
/// the first one. Begins and ends on the main screen.
void playUsers(Player &player, const Story &story);
