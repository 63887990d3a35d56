#pragma once

#include <vector>

class MemberSelection;
class QScrollArea;
class QWidget;
class Screen;

/// How an entry screen shares out its height: its members take what the boxes above them and the row of
/// commands at the lower edge leave, and the screen grows with them. A desktop too small for the designed
/// height does not shrink it.
class EntryLayout
{
public:
    struct Parts {
        Screen *screen;
        MemberSelection *members;
        QScrollArea *groupArea;
        QScrollArea *memberArea;
        QWidget *besideGroups;           ///< a button in the row of the group area
        std::vector<QWidget *> commands; ///< the row at the lower edge
    };
    explicit EntryLayout(Parts parts);

    /// Makes the screen as high as its lines of members need, as far as the desktop has room; the others
    /// scroll.
    void grow() const;
    /// Lays out what stands below the boxes in the screen's present height.
    void layOut() const;

private:
    int memberTop() const;

    Parts m_parts;
    int m_leastHeight;
};
