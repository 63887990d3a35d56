#pragma once

class Screen;

/// The first thing that each screen does when it loads: the session's language, direction and font on the
/// screen and its controls, the shared question texts and `engine.languageSuffix`, and the painted ground.
/// Errors are ignored statement by statement.
void PrepareScreen(Screen &screen);

/// Moves each control of the kinds that mirror to its mirror position, and exchanges the places of the four
/// navigation buttons so that their row keeps its order. Called once more, it turns the screen back.
void MirrorControls(Screen &screen);

/// Paints 100 bands of a colour that loses 3 of each part at each band. Styles: 1 from the top down, 2 from
/// the bottom up, 3 from the left, 4 from the right; any other counts as 1. A part above 255 counts as 255.
void PaintGradient(Screen &screen, int red, int green, int blue, int style);

/// Forgets what was painted and paints a raised frame along the edges.
void PaintScreenFrame(Screen &screen);
