#pragma once

class QFont;
class Screen;

/// Gives the controls of a screen the room that a font asks for: their places and sizes grow by as much as
/// its letters are larger than those that the screens are designed for, bold ones at 12 points. A smaller
/// font leaves the designed sizes, and no screen grows so far that it would not fit on its display. The
/// window grows with it, and a later call starts at the designed sizes again.
void growScreen(Screen &screen, const QFont &font);
