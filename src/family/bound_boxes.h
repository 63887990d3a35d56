#pragma once

#include "platform/database/recordset.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <map>
#include <vector>

class QLineEdit;

/// Text boxes bound to fields of the current row of a set. A box shows its field's value; what a user types,
/// pastes or drops there reaches the field when the box is left or by writeAll(). Text that the program sets
/// in a box never does.
class BoundBoxes : public QObject
{
    Q_OBJECT

public:
    /// One field name for each box.
    BoundBoxes(std::vector<QLineEdit *> boxes, QStringList fields, QObject *parent);
    ~BoundBoxes() override;

    void bind(const RecordsetPtr &rows);

    QLineEdit *box(int index) const { return m_boxes[size_t(index)]; }
    const QString &field(int index) const { return m_fields[index]; }
    int count() const { return int(m_boxes.size()); }

    /// Shows the current row; all boxes are empty without one. What was not written is forgotten.
    void show();
    /// Shows the field's value in one box.
    void show(int index);

    /// Makes a box of codes: one of these words typed there gives the field its code, its place from 1 on,
    /// and stays for the eye. No text is no code.
    void setCodes(int index, const QStringList &words) { m_codes[index] = words; }

    /// True when a box holds typed text that has not reached its field.
    bool hasUnwritten() const;
    /// Writes what was typed. @throws RuntimeError when a field does not take its text; the box keeps it.
    void writeAll();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void write(int index);
    bool hasRow() const;
    void unbind();

    std::vector<QLineEdit *> m_boxes;
    QStringList m_fields;
    std::vector<bool> m_typed;          ///< typed since the box last showed its field
    std::map<int, QStringList> m_codes; ///< words of the boxes of codes
    RecordsetPtr m_rows;
    int m_moved = 0;
    int m_changed = 0;
};
