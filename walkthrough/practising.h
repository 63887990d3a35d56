#pragma once

class Player;
struct Story;

/// Starts the tutorial, lets it make up twenty expenses and then a few revenues, and goes back to the real
/// store. Begins and ends on the main screen.
void playPractice(Player &player, const Story &story);
