#include "presentation/prepare_screen.h"

#include "core/engine.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/application.h"
#include "platform/ui/controls.h"
#include "platform/ui/fonts.h"
#include "platform/ui/screen.h"
#include "presentation/grow_screen.h"
#include "presentation/vocabulary.h"

#include <QtCore/QMetaProperty>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QStatusBar>

using namespace Qt::Literals::StringLiterals;

namespace
{
/// Three vowel marks stand in front of the word, so that no kind equals it and status bars are never touched:
/// that is meant.
constexpr QStringView statusBarKind = u"ٍٍٍStatusBar";

void setPropertyByName(QObject *control, const char *name, const QVariant &value)
{
    if (control->metaObject()->indexOfProperty(name) < 0)
        throw RuntimeError(438, u"Quvana"_s, u"Object doesn't support this property or method"_s);
    control->setProperty(name, value);
}

Qt::Alignment languageAlignment()
{
    return (engine.isArabic ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute;
}

void translateCaption(QObject *control)
{
    if (engine.isArabic)
        setCaption(control, translate(captionOf(control)));
}

void translateAccessibleName(QWidget &control)
{
    if (!control.accessibleName().isEmpty())
        setAccessibleText(&control, translate(control.accessibleName()));
}

/// The screen's font with what the session sets on it. Before the first login the session has neither a name
/// nor a size, and the designed ones stay.
QFont sessionFont(const Screen &screen)
{
    const QFont designed = screen.surface()->font();
    const QString name = engine.userFontName.isEmpty() ? designed.families().value(0) : engine.userFontName;
    const int size = engine.userFontSize < 1 ? designed.pointSize() : engine.userFontSize;
    return readableFont(name, size, engine.userFontBold);
}

void alignPanels(QObject *statusBar)
{
    for (auto *panel : statusBar->findChildren<QLabel *>())
        panel->setAlignment(engine.isArabic ? Qt::AlignCenter : Qt::AlignLeft);
}

void prepareControl(QObject *control)
{
    switch (kindOf(control)) {
    case ControlKind::CommandButton:
    case ControlKind::OptionButton:
    case ControlKind::CheckBox:
    case ControlKind::Frame:
    case ControlKind::Menu:
        translateCaption(control);
        break;
    case ControlKind::Label:
        translateCaption(control);
        // No label has a property of this spelling: labels keep their designed alignment here, which is
        // meant.
        ignoringErrors([&] { setPropertyByName(control, "allignment", engine.isArabic ? 1 : 0); });
        setRightToLeft(control, engine.isArabic);
        break;
    case ControlKind::FlexGrid:
        setRightToLeft(control, true); // in English too: that is meant
        break;
    case ControlKind::DataGrid:
        setRightToLeft(control, true);
        translateCaption(control);
        break;
    default:
        if (kindName(kindOf(control)) == statusBarKind)
            alignPanels(control);
        break;
    }
}

bool isMirrored(ControlKind kind)
{
    switch (kind) {
    case ControlKind::CommandButton:
    case ControlKind::Label:
    case ControlKind::CheckBox:
    case ControlKind::TextBox:
    case ControlKind::DTPicker:
    case ControlKind::Frame:
    case ControlKind::PictureBox:
    case ControlKind::Image:
    case ControlKind::ComboBox:
        return true;
    default:
        return false;
    }
}

/// To the left or right of the page itself, whatever the control's direction is.
void alignText(QWidget *control)
{
    const Qt::Alignment across = languageAlignment();
    if (auto *label = qobject_cast<QLabel *>(control)) {
        label->setAlignment(across | (label->alignment() & Qt::AlignVertical_Mask));
    } else if (auto *line = qobject_cast<QLineEdit *>(control)) {
        line->setAlignment(across | (line->alignment() & Qt::AlignVertical_Mask));
    } else if (auto *box = qobject_cast<QPlainTextEdit *>(control)) {
        QTextOption option = box->document()->defaultTextOption();
        option.setAlignment(across);
        box->document()->setDefaultTextOption(option);
    }
}
} // namespace

void PrepareScreen(Screen &screen)
{
    ignoringErrors([&] { loadToolkitWords(engine.isArabic); });
    ignoringErrors([&] { screen.setRightToLeft(engine.isArabic); });
    if (engine.isArabic) {
        ignoringErrors([&] { screen.setCaption(translate(screen.caption())); });
        engine.textAreYouSure = u"هل أنت متأكد؟ "_s;
        engine.textSaveChanges = u"هل تريد حفظ هذه التحديثات؟"_s;
        const QString name = screen.objectName();
        // These three never mirror here: that is meant.
        if (name != u"frmRevenue" && name != u"frmExpense" && name != u"frmChanges")
            ignoringErrors([&] { MirrorControls(screen); });
        engine.languageSuffix = u"ar"_s;
    } else {
        engine.textAreYouSure = u"Are you sure? "_s;
        engine.textSaveChanges = u"Do you want to save the changes?"_s;
        engine.languageSuffix = u"en"_s;
    }

    const QFont font = sessionFont(screen);
    screen.surface()->setFont(font);
    ignoringErrors([&] { growScreen(screen, font); });
    const auto controls = controlsOf(screen);
    for (QObject *control : controls) {
        if (control->isWidgetType() && kindOf(control) != ControlKind::Menu)
            static_cast<QWidget *>(control)->setFont(font);
        ignoringErrors([&] { prepareControl(control); });
        if (control->isWidgetType())
            translateAccessibleName(*static_cast<QWidget *>(control));
    }
    ignoringErrors([&] { PaintScreenFrame(screen); });
    ignoringErrors([&] { PaintGradient(screen, 200, 100, 300, 1); });
}

void MirrorControls(Screen &screen)
{
    screen.scaleWidth(); // lays the surface out, so that its width is the shown one
    QWidget *first = nullptr;
    QWidget *previous = nullptr;
    QWidget *next = nullptr;
    QWidget *last = nullptr;
    const auto controls = controlsOf(screen);
    for (QObject *object : controls) {
        const ControlKind kind = kindOf(object);
        if (!isMirrored(kind))
            continue;
        // A control in a frame mirrors within the frame, whose own place mirrors on the screen.
        auto *control = static_cast<QWidget *>(object);
        const int inner = control->parentWidget()->width();
        control->move(inner - (control->x() + control->width()), control->y());
        if (kind == ControlKind::Label || kind == ControlKind::TextBox)
            alignText(control);

        const QString name = control->objectName();
        if (name == u"cmdFirst")
            first = control;
        else if (name == u"cmdPrevious")
            previous = control;
        else if (name == u"cmdNext")
            next = control;
        else if (name == u"cmdLast")
            last = control;
    }
    if (!first || !previous || !next || !last)
        return;
    const auto exchange = [](QWidget *a, QWidget *b) {
        const int left = a->x();
        a->move(b->x(), a->y());
        b->move(left, b->y());
    };
    exchange(first, last);
    exchange(previous, next);
}
