#pragma once

#include <optional>

class QKeyEvent;
class Recordset;

// The four moves of a screen's navigation buttons.

enum class RecordMove { First, Previous, Next, Last };

/// Home and End; Up and Page Up, Down and Page Down, which go to the ends with Ctrl. Nothing for other keys.
std::optional<RecordMove> recordMoveOf(const QKeyEvent &event);

/// Moves the current row. Beyond an end it beeps and stands on the row there.
/// @throws RuntimeError as the set's moves do
void moveRecord(Recordset &set, RecordMove move);
