#include "platform/ui/record_moves.h"

#include "platform/database/recordset.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>

std::optional<RecordMove> recordMoveOf(const QKeyEvent &event)
{
    const bool ctrl = event.modifiers() & Qt::ControlModifier;
    switch (event.key()) {
    case Qt::Key_End:
        return RecordMove::Last;
    case Qt::Key_Home:
        return RecordMove::First;
    case Qt::Key_Up:
    case Qt::Key_PageUp:
        return ctrl ? RecordMove::First : RecordMove::Previous;
    case Qt::Key_Down:
    case Qt::Key_PageDown:
        return ctrl ? RecordMove::Last : RecordMove::Next;
    default:
        return std::nullopt;
    }
}

void moveRecord(Recordset &set, RecordMove move)
{
    switch (move) {
    case RecordMove::First:
        return set.moveFirst();
    case RecordMove::Last:
        return set.moveLast();
    case RecordMove::Previous:
        if (!set.bof())
            set.movePrevious();
        if (set.bof() && set.recordCount() > 0) {
            QApplication::beep();
            set.moveFirst();
        }
        return;
    case RecordMove::Next:
        if (!set.eof())
            set.moveNext();
        if (set.eof() && set.recordCount() > 0) {
            QApplication::beep();
            set.moveLast();
        }
        return;
    }
}
