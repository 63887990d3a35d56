#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

class QAction;
class QWidget;
class Screen;

/// A control's kind by its role, whatever the toolkit's class is called.
enum class ControlKind {
    CommandButton,
    OptionButton,
    CheckBox,
    Frame,
    Menu, ///< a menu or an entry of one (a QAction; separators do not count)
    Label,
    TextBox,
    ComboBox,
    DTPicker,
    PictureBox,
    Image,
    Line,
    FlexGrid,
    DataGrid,
    StatusBar,
    Other
};

/// All named controls of a screen, its menus (QMenu) and their entries (QAction) among them, in the order of
/// their making. Controls inside of frames, picture boxes and scroll areas are included.
QList<QObject *> controlsOf(const Screen &screen);
/// A QLabel that shows a picture is an Image; a plain QWidget or a QFrame without a line's shape is a
/// PictureBox; any table that is no FlexGrid is a DataGrid.
ControlKind kindOf(const QObject *control);
/// The kind's name, such as "CommandButton"; empty for Other.
QStringView kindName(ControlKind kind);
/// True for a frame, picture box or scroll area: other controls stand in it, at places of its own.
bool holdsControls(const QObject *control);

/// Caption of a button, option, check box, frame, label or menu entry, and of a grid with a property
/// `caption`; empty for other kinds.
QString captionOf(const QObject *control);
/// Nothing happens for kinds without a caption. An `&` in the caption marks the key of the next letter.
void setCaption(QObject *control, const QString &caption);

/// The direction of a widget. Entries of menus have none: they give false, and setting it does nothing.
bool rightToLeftOf(const QObject *control);
void setRightToLeft(QObject *control, bool on);

/// A control without a name for the eye gets its accessible name from this text; a list, whose entry is read
/// as its name, its description too.
void setAccessibleText(QWidget *control, const QString &text);

/// Turns Arabic-Indic digits to ASCII as they are typed, pasted or set into the box, and refuses nothing. A
/// line edit gets a validator for it. For QLineEdit and QPlainTextEdit.
void takeAsciiDigits(QWidget *textBox);
