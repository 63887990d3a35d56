#pragma once

#include <QtCore/QString>

class QObject;
class QWidget;
class Screen;

/// What a person does to a screen: shared by the walk-through and the tests. Every key and click goes through
/// the application's event dispatch. A control that is missing, hidden or disabled throws std::runtime_error:
/// a person could not reach it.
namespace hand
{
/// A control, menu or menu entry by its name; null when there is none.
QObject *find(const Screen &screen, const char *name);
/// The message for a missing control: names those that are there.
QString missing(const Screen &screen, const char *name);
/// Visible on its screen (shown or not) and enabled.
bool isShown(const Screen &screen, const char *name);
bool isEnabled(const Screen &screen, const char *name);
/// The widget, when a person can reach it.
QWidget &reach(const Screen &screen, const char *name);

/// Clicks a control with the mouse, an option or a check box on its mark.
void click(const Screen &screen, const char *name);
/// Puts the focus on a box and types, key by key; a line feed is the Enter key.
void typeText(const Screen &screen, const char *name, const QString &text);
/// The same in place of what the box holds; in a date picker `dd/MM/yyyy`.
void fill(const Screen &screen, const char *name, const QString &text);
/// The same for whatever widget has the keys.
void fill(QWidget &box, const QString &text);
/// Pastes from the clipboard in place of what the box holds: for long texts.
void paste(const Screen &screen, const char *name, const QString &text);
/// A key to one widget, or to the control with the focus.
void pressKey(QWidget &target, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void pressKey(const Screen &screen, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Opens the drop-down list and takes the entry with the Enter key.
void choose(const Screen &screen, const char *combo, const QString &entry);
/// Clicks the menu in the menu bar and then its entry, through the submenu that holds it; for an entry of the
/// bar itself `entry` is null.
void chooseMenu(const Screen &screen, const char *menu, const char *entry);
/// Clicks an entry of the menu that stands open.
void choosePopup(const Screen &screen, const char *entry);

/// Clicks a cell of a FlexGrid that is in view; rows and columns count as the grid does.
void clickCell(const Screen &screen, const char *grid, int row, int column,
               Qt::MouseButton button = Qt::LeftButton);
/// Double-clicks a cell or a heading of a FlexGrid that is in view.
void doubleClickCell(const Screen &screen, const char *grid, int row, int column);
void doubleClickHeading(const Screen &screen, const char *grid, int column);

/// Saves a picture of a window to a PNG file and makes its folder.
void savePicture(QWidget &window, const QString &file);
} // namespace hand
