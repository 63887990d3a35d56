#include "platform/ui/qt_dialogs.h"

#include "platform/runtime/numbers.h"
#include "platform/ui/color_number.h"
#include "platform/ui/fonts.h"
#include "platform/ui/screen.h"
#include "platform/ui/wait.h"

#include <QtCore/QPointer>
#include <QtGui/QFontDatabase>
#include <QtGui/QFontInfo>
#include <QtGui/QScreen>
#include <QtPrintSupport/QPrintDialog>
#include <QtWidgets/QApplication>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFontDialog>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStyle>
#include <QtWidgets/QVBoxLayout>

#include <array>
#include <memory>

using namespace Qt::Literals::StringLiterals;

QWidget *windowInUse()
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget *active = QApplication::activeWindow())
        return active;
    QWidget *last = nullptr;
    for (Screen *screen : Screen::loadedScreens()) {
        if (screen->isVisible())
            last = screen;
    }
    return last;
}

namespace
{
/// Without the mark of a key, which would part the joined letters of an Arabic caption.
template <typename Control>
void joinLetters(Control &control)
{
    if (control.text().isRightToLeft())
        control.setText(control.text().remove(u'&'));
}

/// Shows a dialog and serves events until it is answered. The window below may vanish meanwhile and take the
/// dialog with it: that counts as rejected.
template <typename Dialog>
bool runDialog(const QPointer<Dialog> &dialog)
{
    const DialogWait standing;
    for (auto *button : dialog->template findChildren<QAbstractButton *>())
        joinLetters(*button);
    for (auto *label : dialog->template findChildren<QLabel *>()) {
        if (label->buddy())
            joinLetters(*label);
    }
    dialog->setWindowModality(Qt::ApplicationModal);
    dialog->show();
    dialog->activateWindow();
    serveEventsUntil([&] { return !dialog || !dialog->isVisible(); });
    return dialog && dialog->result() != QDialog::Rejected;
}

/// Deletes a dialog at the end of its routine, unless it went with its parent.
template <typename Dialog>
class Owned
{
public:
    explicit Owned(Dialog *dialog) : m_dialog(dialog) {}
    ~Owned() { delete m_dialog.data(); }
    Owned(const Owned &) = delete;
    Owned &operator=(const Owned &) = delete;
    Dialog *operator->() const { return m_dialog.data(); }
    const QPointer<Dialog> &pointer() const { return m_dialog; }

private:
    QPointer<Dialog> m_dialog;
};

bool isSignOfNumber(const QString &text, qsizetype place)
{
    return (text[place] == u'-' || text[place] == u'+') && place + 1 < text.size() &&
           text[place + 1].isDigit();
}

/// Each line isolated, so that it reads in its own direction whatever the box's is; a number's sign stays on
/// its left behind Arabic words, too; words too long to wrap get places where they may break.
QString readableText(const QString &text)
{
    constexpr int longestWord = 40;
    QString shown;
    int wordLength = 0;
    bool open = false;
    for (qsizetype place = 0; place < text.size(); ++place) {
        const QChar c = text[place];
        if (c == u'\r')
            continue;
        if (c == u'\n') {
            if (open)
                shown += QChar(0x2069);
            open = false;
            wordLength = 0;
            shown += c;
            continue;
        }
        if (!open)
            shown += QChar(0x2068);
        open = true;
        if (wordLength == 0 && isSignOfNumber(text, place))
            shown += QChar(0x200E);
        wordLength = c.isSpace() ? 0 : wordLength + 1;
        if (wordLength > longestWord && !c.isLowSurrogate() && !c.isMark()) {
            shown += QChar(0x200B);
            wordLength = 1;
        }
        shown += c;
    }
    if (open)
        shown += QChar(0x2069);
    return shown;
}

QMessageBox::Icon iconOf(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

/// To the side on which the box begins: the toolkit would look at the text, and not into its isolates.
Qt::Alignment leadingSide(const QWidget &box)
{
    return QStyle::visualAlignment(box.layoutDirection(), Qt::AlignLeading) | Qt::AlignAbsolute;
}

void setMessageText(QMessageBox &box, const MessageRequest &request)
{
    constexpr int width = 520;
    const QString text = readableText(request.text);
    const Qt::Alignment alignment =
        (request.rightAligned ? Qt::AlignRight | Qt::AlignAbsolute : leadingSide(box)) | Qt::AlignVCenter;
    const int roof = box.screen()->availableGeometry().height() / 2;
    const QRect needed = box.fontMetrics().boundingRect(QRect(0, 0, width, 1 << 20), Qt::TextWordWrap, text);

    box.setTextFormat(Qt::PlainText);
    if (needed.height() <= roof) {
        box.setText(text);
        if (auto *label = box.findChild<QLabel *>(u"qt_msgbox_label"_s)) {
            label->setAlignment(alignment);
            label->setWordWrap(true);
            label->setMinimumWidth(qMin(needed.width() + 8, width));
        }
        return;
    }
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment((alignment & ~Qt::AlignVCenter) | Qt::AlignTop);
    label->setWordWrap(true);
    label->setMargin(6);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *area = new QScrollArea;
    area->setWidget(label);
    area->setWidgetResizable(true);
    area->setMinimumSize(width + 40, roof);
    auto *grid = qobject_cast<QGridLayout *>(box.layout());
    grid->addWidget(area, 1, request.icon == MessageIcon::None ? 1 : 2);
}

/// The colours that the font dialog offers, as 0xBBGGRR.
constexpr std::array<qint32, 16> offeredColors{
    0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080, 0x808000, 0xC0C0C0,
    0x808080, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF,
};

/// The font to begin with, by a family and a style that are there. The dialog looks for the style by its name
/// in the list, but asks for the toolkit's word in the session's language, which no list has.
QFont listedFont(const FontChoice &choice)
{
    QFont font = readableFont(choice.name, choice.size, choice.bold);
    const QString family = QFontInfo(font).family();
    font.setFamilies({family});
    for (const QString &style : QFontDatabase::styles(family)) {
        const QFont listed = QFontDatabase::font(family, style, font.pointSize());
        const bool fits = listed.style() == QFont::StyleNormal && listed.weight() == font.weight();
        const qsizetype best = font.styleName().size(); // the longer names are those of narrow cuts
        if (fits && (best == 0 || style.size() < best))
            font.setStyleName(style);
    }
    return font;
}

QPixmap colorSample(qint32 color)
{
    QPixmap sample(48, 14);
    sample.fill(colorOf(color));
    return sample;
}

QComboBox *colorBox(qint32 chosen)
{
    auto *box = new QComboBox;
    box->setObjectName(u"color"_s);
    box->setIconSize({48, 14});
    for (const qint32 color : offeredColors)
        box->addItem(colorSample(color), {}, color);
    if (box->findData(chosen) < 0)
        box->addItem(colorSample(chosen), {}, chosen);
    box->setCurrentIndex(box->findData(chosen));
    return box;
}
} // namespace

MessageAnswer QtDialogs::message(const MessageRequest &request)
{
    const Owned box(new QMessageBox(windowInUse()));
    box->setWindowTitle(request.title.isEmpty() ? programTitle() : request.title);
    box->setIcon(iconOf(request.icon));
    if (request.buttons == MessageButtons::YesNo) {
        box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box->setDefaultButton(QMessageBox::Yes);
        box->setEscapeButton(QMessageBox::No);
    } else {
        box->setStandardButtons(QMessageBox::Ok);
        box->setDefaultButton(QMessageBox::Ok);
        box->setEscapeButton(QMessageBox::Ok);
    }
    setMessageText(*box.operator->(), request);

    const bool answered = runDialog(box.pointer());
    if (request.buttons == MessageButtons::Ok)
        return MessageAnswer::Ok;
    return answered && box->result() == QMessageBox::Yes ? MessageAnswer::Yes : MessageAnswer::No;
}

QString QtDialogs::input(const QString &prompt, const QString &title, const QString &defaultText)
{
    const Owned box(new QInputDialog(windowInUse()));
    box->setInputMode(QInputDialog::TextInput);
    box->setWindowTitle(title.isEmpty() ? programTitle() : title);
    box->setLabelText(readableText(prompt));
    box->setTextValue(defaultText);
    for (auto *label : box->findChildren<QLabel *>()) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setAlignment(leadingSide(*box.operator->()) | Qt::AlignVCenter);
    }
    box->resize(420, box->sizeHint().height());
    return runDialog(box.pointer()) ? asciiDigits(box->textValue()) : QString();
}

std::optional<FontChoice> QtDialogs::font(const FontChoice &initial)
{
    const Owned box(new QDialog(windowInUse()));
    auto *chooser = new QFontDialog(listedFont(initial));
    chooser->setWindowFlags(Qt::Widget);
    chooser->setSizeGripEnabled(false);
    chooser->setOptions(QFontDialog::NoButtons | QFontDialog::DontUseNativeDialog);
    auto *color = colorBox(initial.color);
    auto *colorLabel = new QLabel(QColorDialog::tr("Select Color"));
    colorLabel->setBuddy(color);
    auto *colorRow = new QHBoxLayout;
    colorRow->setContentsMargins(chooser->layout()->contentsMargins());
    colorRow->addWidget(colorLabel);
    colorRow->addWidget(color);
    colorRow->addStretch();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto *layout = new QVBoxLayout(box.operator->());
    layout->addWidget(chooser);
    layout->addLayout(colorRow);
    layout->addWidget(buttons);
    box->setWindowTitle(chooser->windowTitle().isEmpty() ? programTitle() : chooser->windowTitle());
    QObject::connect(buttons, &QDialogButtonBox::accepted, box.operator->(), &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, box.operator->(), &QDialog::reject);
    QObject::connect(chooser, &QDialog::finished, box.operator->(), &QDialog::done);
    chooser->show();

    if (!runDialog(box.pointer()))
        return std::nullopt;
    const QFont chosen = chooser->currentFont();
    const QStringList families = chosen.families();
    return FontChoice{families.isEmpty() ? chosen.family() : families.first(), chosen.pointSize(),
                      chosen.bold(), color->currentData().toInt()};
}

std::optional<QString> QtDialogs::saveFile(const SaveFileRequest &request)
{
    const Owned box(new QFileDialog(windowInUse()));
    box->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite);
    box->setAcceptMode(QFileDialog::AcceptSave);
    box->setFileMode(QFileDialog::AnyFile);
    QStringList filters;
    const QStringList parts = request.filter.split(u'|', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters << parts[i] + u" ("_s + QString(parts[i + 1]).replace(u';', u' ') + u')';
    if (!filters.isEmpty())
        box->setNameFilters(filters);
    QString extension = request.defaultExtension;
    if (extension.startsWith(u'.'))
        extension.remove(0, 1);
    box->setDefaultSuffix(extension);
    box->selectFile(request.fileName);
    if (!runDialog(box.pointer()) || box->selectedFiles().isEmpty())
        return std::nullopt;
    return box->selectedFiles().constFirst();
}

bool QtDialogs::print(QPrinter &printer)
{
    const Owned box(new QPrintDialog(&printer, windowInUse()));
    return runDialog(box.pointer());
}
