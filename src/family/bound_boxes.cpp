#include "family/bound_boxes.h"

#include "platform/runtime/runtime_error.h"

#include <QtCore/QEvent>
#include <QtWidgets/QLineEdit>

#include <algorithm>
#include <utility>

BoundBoxes::BoundBoxes(std::vector<QLineEdit *> boxes, QStringList fields, QObject *parent)
    : QObject(parent), m_boxes(std::move(boxes)), m_fields(std::move(fields)), m_typed(m_boxes.size(), false)
{
    for (int i = 0; i < count(); ++i) {
        connect(box(i), &QLineEdit::textEdited, this, [this, i] { m_typed[size_t(i)] = true; });
        box(i)->installEventFilter(this);
    }
}

BoundBoxes::~BoundBoxes()
{
    unbind();
}

void BoundBoxes::bind(const RecordsetPtr &rows)
{
    unbind();
    m_rows = rows;
    m_moved = rows->moveComplete.connect([this] { show(); });
    m_changed = rows->fieldChanged.connect([this](int field) {
        for (int i = 0; i < count(); ++i) {
            if (m_rows->fieldIndex(m_fields[i]) == field)
                show(i);
        }
    });
    show();
}

void BoundBoxes::unbind()
{
    if (!m_rows)
        return;
    m_rows->moveComplete.disconnect(m_moved);
    m_rows->fieldChanged.disconnect(m_changed);
    m_rows.reset();
}

bool BoundBoxes::hasRow() const
{
    return m_rows && m_rows->isOpen() &&
           (m_rows->editMode() == EditMode::Add || (!m_rows->bof() && !m_rows->eof()));
}

void BoundBoxes::show()
{
    for (int i = 0; i < count(); ++i)
        show(i);
}

void BoundBoxes::show(int index)
{
    m_typed[size_t(index)] = false;
    box(index)->setText(hasRow() ? m_rows->value(field(index)).toText() : QString());
    box(index)->setCursorPosition(0);
}

bool BoundBoxes::hasUnwritten() const
{
    return std::ranges::find(m_typed, true) != m_typed.end();
}

void BoundBoxes::writeAll()
{
    for (int i = 0; i < count(); ++i)
        write(i);
}

void BoundBoxes::write(int index)
{
    if (!m_typed[size_t(index)] || !hasRow())
        return;
    const QString text = box(index)->text();
    const auto codes = m_codes.find(index);
    const qsizetype word = codes == m_codes.end() ? -1 : codes->second.indexOf(text);
    if (word >= 0)
        m_rows->setValue(field(index), qint32(word + 1));
    else
        m_rows->setValue(field(index), text.isEmpty() && codes != m_codes.end() ? Value() : Value(text));
    show(index);
    if (word >= 0)
        box(index)->setText(text);
}

bool BoundBoxes::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut) {
        for (int i = 0; i < count(); ++i) {
            // A text that its field does not take stays in the box; the next writeAll() tells.
            if (watched == box(i))
                ignoringErrors([this, i] { write(i); });
        }
    }
    return QObject::eventFilter(watched, event);
}
