#pragma once

#include "entry/member_selection.h"
#include "platform/ui/screen.h"

#include <memory>

class DatePicker;
class EntryLayout;
class QAction;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;
class QStatusBar;
struct Entry;

/// What the two entry screens have in common: the boxes of an entry and those tests of them that both make,
/// the members with the group buttons, and the selection commands. How an amount is divided, who must be
/// ticked and how the entry is posted is each screen's own.
class EntryScreen : public Screen
{
    Q_OBJECT

public:
    explicit EntryScreen(const QString &name);
    ~EntryScreen() override;

    qint16 CountSelected() const;

protected:
    /// The controls that each screen names in its own way.
    struct OwnBoxes {
        QLineEdit *amount;
        QPlainTextEdit *note;
        QPlainTextEdit *paymentDetail;
    };
    /// Takes the controls of the Designer file over. For the constructor, behind setupUi().
    template <typename Ui>
    void takeControls(const Ui &ui, const OwnBoxes &boxes, QPushButton *firstGroup);

    /// Fills the boxes as a screen begins, in the session's language: the kinds of transaction that the
    /// statement selects from `details`, payment in cash, today. Puts the focus on the amount.
    void loadBoxes(const QString &kinds);
    /// MemberSelection::rebuildMembers(), and the screen grows with its lines.
    void listMembers(const QString &statement, const MemberSelection::CaptionOf &captionOf);

    MemberSelection &members() { return *m_members; }
    QString amountText() const;

    /// Whether the amount's text is a number; if not, tells so and goes to the box.
    bool amountIsNumeric(const QString &orElse);
    /// The same with the question for the amount that a division needs.
    bool amountIsGiven();
    /// Whether note, payment detail and date can be posted; if not, tells the first fault and goes to its
    /// box.
    bool boxesAreFilled();
    /// Ends an entry for which nobody is ticked, not without dividing once more.
    void refuseNobody();
    /// What the boxes hold.
    Entry entry() const;

    /// The Enter key in the amount's box, and the division of the commands. Other keys go into the box.
    virtual void enterAmount() = 0;
    virtual void cmdDivide_Click() = 0;
    virtual void cmdReDivide_Click() = 0;
    virtual void cmdEntry_Click() = 0;

    void Form_Unload() override;
    void Form_Resize() override;
    /// The page is laid out from the right in both languages.
    Qt::LayoutDirection readingDirection() const override { return Qt::RightToLeft; }

    QString m_paymentMethod; ///< the word that is posted, Arabic in both languages

private:
    /// The controls that have the same names on both screens.
    struct Controls {
        QComboBox *kind;
        DatePicker *date;
        QRadioButton *payByCheck;
        QPushButton *all, *clear, *divide, *reDivide, *entry;
        QAction *exit;
        QStatusBar *statusBar;
        MemberSelection::Places places;
    };
    void setUp();
    static bool refuse(const QString &message, QWidget *boxAtFault);

    void cmdAll_Click();
    void cmdClear_Click();
    void mnuExit_Click();

    OwnBoxes m_boxes{};
    Controls m_controls{};
    MemberSelection *m_members = nullptr;
    std::unique_ptr<EntryLayout> m_layout;
};

// --- details of the template

template <typename Ui>
void EntryScreen::takeControls(const Ui &ui, const OwnBoxes &boxes, QPushButton *firstGroup)
{
    m_boxes = boxes;
    m_controls = {ui.ComboGType,
                  ui.DTPicker1,
                  ui.Option1_1,
                  ui.cmdAll,
                  ui.cmdClear,
                  ui.cmdDivide,
                  ui.cmdReDivide,
                  ui.cmdEntry,
                  ui.mnuExit,
                  ui.StatusBar1,
                  {ui.MemberArea, ui.Check1_0, ui.LBLName_0, ui.LBLShare_0, ui.GroupArea, firstGroup}};
    setUp();
}
