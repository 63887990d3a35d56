#pragma once

#include "platform/ui/screen.h"

class GuideView;
class QHBoxLayout;
class QLineEdit;
class QPushButton;

/// The page of the user's guide that tells about a screen, without folder and ending: `revenue` for
/// `frmRevenue`. Empty for a name that no screen of the program has.
QString guidePageOf(const QString &screenName);

/// Shows the guide at the screen's page, in the session's language. It stands beside the other screens and
/// takes input also while the asking screen is modal. Asked from the guide itself, its first page.
void showGuide(Screen &asking);

/// The window that shows the guide's pages, which are Markdown files inside of the program. It keeps the
/// language that it was loaded in.
///
/// Controls: `page`, `cmdContents`, `cmdBack`, `cmdForward`, `txtFind`, `cmdFind`, `cmdClose`.
/// Keys: F1 the first page, Ctrl+F to the text to find, F3 finds it again, Alt with the arrows back and
/// forward, Escape closes.
class GuideWindow : public Screen
{
    Q_OBJECT

public:
    GuideWindow();

    bool isArabic() const { return rightToLeft(); }
    /// Comes to the front beside that screen, at one of the guide's pages.
    void showBeside(Screen &asking, const QString &page);

protected:
    bool Form_KeyDown(QKeyEvent *event) override;

private:
    void build();
    QPushButton *addButton(QHBoxLayout &row, const char *name, const QString &text);
    void find();
    void tellHistory();

    GuideView *m_view = nullptr;
    QLineEdit *m_find = nullptr;
    QPushButton *m_back = nullptr;
    QPushButton *m_forward = nullptr;
};
