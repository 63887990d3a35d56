#pragma once

#include "platform/database/recordset.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <vector>

class ElidedLabel;
class QCheckBox;
class QPushButton;
class QScrollArea;

/// The members of an entry screen: the parallel control arrays `Check1`, `LBLName` and `LBLShare` with one
/// element for each listed member, and the array of group buttons. The first element of each array stands
/// in the Designer file; the others are loaded after its model and named after it. The index is the only link
/// between a tick and a name.
class MemberSelection : public QObject
{
    Q_OBJECT

public:
    /// Where the first elements stand. Each area's content is laid out here, from its right edge to the left.
    struct Places {
        QScrollArea *memberArea;
        QCheckBox *check;
        ElidedLabel *name;
        ElidedLabel *share;
        QScrollArea *groupArea;
        QPushButton *group;
    };
    MemberSelection(const Places &places, QObject *parent);

    /// One button for each group number of the valid members; the first one hides when there is none.
    void rebuildGroups();

    /// Lists the members of a statement in the order of its rows. Ticks stay at their index. `captionOf` is
    /// asked for the share's caption of each row; nothing leaves the caption as it stands.
    using CaptionOf = std::function<std::optional<QString>(int index, const Recordset &row)>;
    void rebuildMembers(const QString &statement, const CaptionOf &captionOf);

    int count() const { return int(m_names.size()); }
    bool isTicked(int index) const;
    qint16 CountSelected() const;
    /// Names of the ticked members by ascending index.
    QStringList selectedNames() const;

    void tickAll();
    void clearTicks();
    void clearShares();
    /// Shows one caption at each ticked member; the captions of the others stay.
    void showShares(const QString &caption);
    /// Ticks the valid members of a button's group and nobody else. Other names are left alone, equal ones
    /// are all ticked.
    void tickGroup(int button);

    /// Heights in pixels that show every line, or a number of lines.
    int memberHeight() const;
    int groupHeight() const;
    int groupHeight(int lines) const;

    /// Lays the elements out in their areas as these stand now.
    void layOut();

    /// Unloads all elements but the first ones.
    void clearArrays();

Q_SIGNALS:
    void groupClicked(int button);

private:
    void resizeMembers(int count);
    void loadMember(int index);
    void loadGroup(int index);
    void layOutMember(int index);
    int groupsPerLine() const;

    Places m_places;
    std::vector<QCheckBox *> m_checks;   ///< Check1
    std::vector<ElidedLabel *> m_names;  ///< LBLName
    std::vector<ElidedLabel *> m_shares; ///< LBLShare
    std::vector<QPushButton *> m_groups;
};
