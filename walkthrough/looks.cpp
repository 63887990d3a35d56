#include "looks.h"

#include "entry/elided_label.h"
#include "platform/ui/controls.h"
#include "platform/ui/screen.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QAction>
#include <QtGui/QHelpEvent>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace
{
/// The smallest display that the program is made for, less the bars of a desktop.
constexpr QSize leastDisplay(1280, 660);
constexpr double leastContrast = 4.5;
constexpr int nearMiss = 4; ///< pixels: edges this close to each other are meant to be one line

/// What lies over another control on purpose.
struct MeantOverlap {
    QStringView screen, upper, lower;
};
constexpr MeantOverlap meantOverlaps[] = {
    {u"frmMain", u"lblTutorial", u"Label1"},   // the mark of the tutorial, on the title
    {u"frmAbout", u"Label1", u"Label2"},       // the name over its shadow
    {u"frmUniversalGrid", u"DGrid", u"FGrid"}, // the shares of a row, over the rows
};

bool isMeantOverlap(const QString &screen, const QString &a, const QString &b)
{
    return std::ranges::any_of(meantOverlaps, [&](const MeantOverlap &meant) {
        return meant.screen == screen &&
               ((meant.upper == a && meant.lower == b) || (meant.upper == b && meant.lower == a));
    });
}

double luminance(const QColor &color)
{
    const auto part = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

double contrast(const QColor &ink, const QColor &ground)
{
    const double cover = ink.alphaF();
    const auto mixed = [cover](double over, double under) { return over * cover + under * (1 - cover); };
    const double a = luminance(QColor::fromRgbF(static_cast<float>(mixed(ink.redF(), ground.redF())),
                                                static_cast<float>(mixed(ink.greenF(), ground.greenF())),
                                                static_cast<float>(mixed(ink.blueF(), ground.blueF()))));
    const double b = luminance(ground);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

/// The text as it is drawn: lines of second fonts can be taller than the font says.
QSize textSize(const QWidget &control, const QString &text)
{
    return control.fontMetrics().boundingRect(QRect(0, 0, 10000, 10000), Qt::TextShowMnemonic, text).size();
}

bool isInScrollArea(const QWidget &control)
{
    const QWidget *parent = control.parentWidget();
    return parent && qobject_cast<const QScrollArea *>(parent->parentWidget());
}

/// An amount as the screens write it.
bool isAmount(const QString &text)
{
    static const QRegularExpression amount(
        u"^[\\x{2066}-\\x{2069}]*-?[0-9,]+\\.[0-9]+[\\x{2066}-\\x{2069}]*$"_s);
    return amount.match(text).hasMatch();
}

/// Two numbers whose order would turn around in a line from right to left.
bool turnsAround(const QString &text)
{
    static const QRegularExpression isolate(u"[\\x{2066}-\\x{2068}][^\\x{2069}]*\\x{2069}"_s);
    static const QRegularExpression turning(u"[0-9][-+ ]+[0-9]|(^|[^0-9])[-+][0-9]|[0-9]%"_s);
    return turning.match(QString(text).remove(isolate)).hasMatch();
}

class Look
{
public:
    explicit Look(Screen &screen) : m_screen(screen), m_picture(screen.grab().toImage()) {}

    QStringList faults();

private:
    void lookAtWindow();
    void lookAtMenuBar();
    void lookAtPlace(const QWidget &control);
    void lookAtNeighbours(const QList<const QWidget *> &controls);
    void lookAtRoom(const QWidget &control);
    void lookAtText(const QWidget &control, const QString &text, Qt::Alignment alignment);
    void lookAtInk(const QWidget &control);
    void lookAtGrid(const QTableView &grid);
    void lookAtHeadings(const QHeaderView &headings, const QString &grid);

    void requireRoom(const QString &name, QSize wanted, QSize room);
    void requireContrast(const QString &name, const QColor &ink, const QColor &ground);
    void requireContrast(const QWidget &control, const QColor &ink, const QRect &text, bool left, bool right);
    QColor shown(const QWidget &control, QPoint place) const;
    void tell(const QString &name, const QString &what) { m_faults << name + u' ' + what; }

    Screen &m_screen;
    QImage m_picture;
    QStringList m_faults;
};

QColor inkOf(const QWidget &control)
{
    return control.palette().color(QPalette::Active, control.foregroundRole());
}

/// The line in which a box or a picker is typed; null for other kinds.
const QLineEdit *lineOf(const QWidget &control)
{
    const auto *line = qobject_cast<const QLineEdit *>(&control);
    return line || !qobject_cast<const QDateTimeEdit *>(&control) ? line : control.findChild<QLineEdit *>();
}

QString numbers(QSize size)
{
    return u"%1x%2"_s.arg(size.width()).arg(size.height());
}

void Look::requireRoom(const QString &name, QSize wanted, QSize room)
{
    if (wanted.width() > room.width() || wanted.height() > room.height())
        tell(name, u"is clipped: %1 in %2"_s.arg(numbers(wanted), numbers(room)));
}

void Look::requireContrast(const QString &name, const QColor &ink, const QColor &ground)
{
    const double ratio = contrast(ink, ground);
    if (ratio < leastContrast)
        tell(name, u"has a contrast of %1: %2 on %3"_s.arg(QString::number(ratio, 'f', 1),
                                                           ink.name(QColor::HexArgb), ground.name()));
}

QColor Look::shown(const QWidget &control, QPoint place) const
{
    const QPointF there = QPointF(control.mapTo(&m_screen, place)) * m_picture.devicePixelRatio();
    const QPoint pixel = there.toPoint();
    return m_picture.valid(pixel) ? m_picture.pixelColor(pixel) : QColor();
}

/// Against what is painted beside the text: the grounds differ from line to line alone. The corners may be
/// round.
void Look::requireContrast(const QWidget &control, const QColor &ink, const QRect &text, bool left,
                           bool right)
{
    const int corner = std::min(5, text.height() / 3);
    QColor worst;
    for (int y = text.top() + corner; y <= text.bottom() - corner; y += 2)
        for (const int x : {text.left(), text.right()}) {
            const QColor ground = shown(control, {x, y});
            if ((x == text.left() ? left : right) && ground.isValid() &&
                (!worst.isValid() || contrast(ink, ground) < contrast(ink, worst)))
                worst = ground;
        }
    if (worst.isValid())
        requireContrast(control.objectName(), ink, worst);
}

void Look::lookAtWindow()
{
    const QSize least = m_screen.minimumSizeHint().expandedTo(m_screen.minimumSize());
    if (m_screen.width() > leastDisplay.width() || m_screen.height() > leastDisplay.height())
        tell(m_screen.objectName(), u"is larger than a small display: "_s + numbers(m_screen.size()));
    if (m_screen.width() < least.width() || m_screen.height() < least.height())
        tell(m_screen.objectName(), u"is smaller than its controls: "_s + numbers(m_screen.size()));
}

void Look::lookAtMenuBar()
{
    const auto *bar = m_screen.findChild<QMenuBar *>();
    if (!bar || !bar->isVisible())
        return;
    const QList<QAction *> entries = bar->actions();
    for (const QAction *entry : entries) {
        if (!entry->isVisible())
            continue;
        const QRect place = bar->actionGeometry(const_cast<QAction *>(entry));
        if (place.isEmpty() || !bar->rect().contains(place))
            tell(entry->objectName(), u"does not fit into the menu bar"_s);
        else if (entry->isEnabled())
            requireContrast(*bar, inkOf(*bar), place.adjusted(2, 2, -2, -2), true, true);
    }
}

void Look::lookAtPlace(const QWidget &control)
{
    if (!isInScrollArea(control) && !control.parentWidget()->rect().contains(control.geometry()))
        tell(control.objectName(), u"reaches outside"_s);
}

/// Controls of one parent: none over another, and what stands in a row or a column stands exactly so.
void Look::lookAtNeighbours(const QList<const QWidget *> &controls)
{
    constexpr int line = 60; // pixels: what is higher stands beside several rows
    for (const QWidget *a : controls)
        for (const QWidget *b : controls) {
            if (a >= b || a->parentWidget() != b->parentWidget())
                continue;
            const QRect first = a->geometry();
            const QRect second = b->geometry();
            const QString names = a->objectName() + u" and "_s + b->objectName();
            if (isMeantOverlap(m_screen.objectName(), a->objectName(), b->objectName()))
                continue;
            if (first.intersects(second)) {
                tell(names, u"lie over each other"_s);
                continue;
            }
            const int offRow = std::abs(first.center().y() - second.center().y());
            if (first.height() < line && second.height() < line && offRow > 1 && offRow < line / 4)
                tell(names, u"are off their row by %1"_s.arg(offRow));
            for (const int offColumn :
                 {std::abs(first.left() - second.left()), std::abs(first.right() - second.right())})
                if (offColumn > 0 && offColumn < nearMiss)
                    tell(names, u"are off their column by %1"_s.arg(offColumn));
        }
}

void Look::lookAtRoom(const QWidget &control)
{
    const QString name = control.objectName();
    const QSize line(0, textSize(control, u"Ág إِنَّ"_s).height()); // what anybody may type
    if (const auto *elided = qobject_cast<const ElidedLabel *>(&control)) {
        QHelpEvent pointed(QEvent::ToolTip, {1, 1}, control.mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(const_cast<ElidedLabel *>(elided), &pointed);
        const bool told = QToolTip::text() == elided->text().toHtmlEscaped();
        QToolTip::hideText();
        const QSize whole = elided->sizeHint();
        requireRoom(name, told ? QSize(0, whole.height()) : whole, control.size());
    } else if (const auto *label = qobject_cast<const QLabel *>(&control)) {
        if (label->wordWrap())
            requireRoom(name, {0, label->heightForWidth(label->width())}, label->size());
        else if (label->sizePolicy().horizontalPolicy() != QSizePolicy::Ignored)
            requireRoom(name, label->sizeHint(), label->size());
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&control)) {
        if (!button->text().isEmpty())
            requireRoom(name, button->sizeHint(), button->size());
    } else if (const auto *frame = qobject_cast<const QGroupBox *>(&control)) {
        QStyleOptionGroupBox option;
        option.initFrom(frame);
        option.text = frame->title();
        option.subControls = frame->title().isEmpty() ? QStyle::SC_None : QStyle::SC_GroupBoxLabel;
        const QRect title =
            frame->style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, frame);
        requireRoom(name, textSize(*frame, frame->title()), {frame->width() - 16, frame->height()});
        const auto children = frame->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        for (const QWidget *child : children)
            if (!frame->title().isEmpty() && child->isVisible() && child->y() <= title.bottom())
                tell(child->objectName(), u"lies over the title of its frame"_s);
    } else if (const auto *combo = qobject_cast<const QComboBox *>(&control)) {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        option.editable = combo->isEditable();
        const QRect field =
            combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo);
        QSize longest = line;
        for (int i = 0; i < combo->count(); ++i)
            longest = longest.expandedTo(textSize(*combo, combo->itemText(i)));
        requireRoom(name, longest, field.size() - QSize(4, 0));
    } else if (const auto *box = qobject_cast<const QLineEdit *>(&control)) {
        const QString text = box->displayText().isEmpty() ? box->placeholderText() : box->displayText();
        const int width = box->isReadOnly() || !box->isEnabled() || box->displayText().isEmpty()
                              ? textSize(*box, text).width()
                              : 0; // what is typed scrolls
        requireRoom(name, line + QSize(width, 0), box->contentsRect().size() - QSize(8, 4));
    } else if (const auto *picker = qobject_cast<const QDateTimeEdit *>(&control)) {
        requireRoom(name, picker->sizeHint(), picker->size());
    } else if (const auto *text = qobject_cast<const QPlainTextEdit *>(&control)) {
        requireRoom(name, line + QSize(0, 8), text->viewport()->size());
    }
}

void Look::lookAtText(const QWidget &control, const QString &text, Qt::Alignment alignment)
{
    const Qt::Alignment place = QStyle::visualAlignment(control.layoutDirection(), alignment);
    if (isAmount(text) && !(place & Qt::AlignRight))
        tell(control.objectName(), u"has an amount that is not on the right: "_s + text);
    if (control.isRightToLeft() && turnsAround(text))
        tell(control.objectName(), u"turns numbers around: "_s + text);
}

void Look::lookAtInk(const QWidget &control)
{
    if (!control.isEnabled())
        return;
    const bool fromRight = control.isRightToLeft();
    const QRect whole = control.rect();
    if (const auto *label = qobject_cast<const QLabel *>(&control)) {
        if (!label->text().isEmpty())
            requireContrast(control, inkOf(control), label->contentsRect().adjusted(1, 0, -1, 0), true, true);
    } else if (qobject_cast<const QPushButton *>(&control)) {
        requireContrast(control, inkOf(control), whole.adjusted(5, 0, -5, 0), true, true);
    } else if (qobject_cast<const QAbstractButton *>(&control)) { // its mark stands at the beginning
        requireContrast(control, inkOf(control), whole.adjusted(1, 0, -1, 0), fromRight, !fromRight);
    } else if (const auto *frame = qobject_cast<const QGroupBox *>(&control)) {
        const QRect title(2, 0, frame->width() - 4, textSize(*frame, frame->title()).height());
        if (!frame->title().isEmpty())
            requireContrast(control, inkOf(control), title, true, true);
    } else if (qobject_cast<const QComboBox *>(&control)) { // its arrow stands at the end
        requireContrast(control, inkOf(control), whole.adjusted(4, 0, -4, 0), !fromRight, fromRight);
    } else if (const QLineEdit *line = lineOf(control)) {
        const QPalette colors = line->palette();
        const QRect text = line->rect().adjusted(3, 0, -3, 0);
        requireContrast(*line, inkOf(*line), text, !fromRight, fromRight);
        if (!line->placeholderText().isEmpty())
            requireContrast(*line, colors.color(QPalette::Active, QPalette::PlaceholderText), text,
                            !fromRight, fromRight);
        requireContrast(control.objectName(), colors.color(QPalette::Active, QPalette::HighlightedText),
                        colors.color(QPalette::Active, QPalette::Highlight));
    } else if (const auto *text = qobject_cast<const QPlainTextEdit *>(&control)) {
        const QWidget &inner = *text->viewport();
        requireContrast(inner, inkOf(inner), inner.rect().adjusted(1, 0, -1, 0), true, true);
    }
}

void Look::lookAtHeadings(const QHeaderView &headings, const QString &grid)
{
    for (int section = 0; section < headings.count(); ++section) {
        const QString text = headings.model()->headerData(section, Qt::Horizontal).toString();
        const int left = headings.sectionViewportPosition(section);
        const int width = headings.sectionSize(section);
        if (headings.isSectionHidden(section) || text.isEmpty())
            continue;
        const QString name = grid + u'[' + text + u']';
        requireRoom(name, textSize(headings, text), {width - 4, headings.height()});
        if (left >= 0 && left + width <= headings.viewport()->width())
            requireContrast(name, inkOf(headings),
                            shown(*headings.viewport(), {left + 2, headings.height() / 2}));
    }
}

/// The cells that are in view.
void Look::lookAtGrid(const QTableView &grid)
{
    lookAtHeadings(*grid.horizontalHeader(), grid.objectName());
    const QRect view = grid.viewport()->rect();
    const QPalette colors = grid.palette();
    QStringList told;
    for (int row = grid.rowAt(0); row >= 0 && row < grid.model()->rowCount(); ++row)
        for (int column = 0; column < grid.model()->columnCount(); ++column) {
            const QModelIndex cell = grid.model()->index(row, column);
            const QRect place = grid.visualRect(cell);
            const QString text = cell.data().toString();
            if (!view.contains(place) || text.isEmpty())
                continue;
            const QString heading = grid.model()->headerData(column, Qt::Horizontal).toString();
            if (told.contains(heading))
                continue;
            const qsizetype before = m_faults.size();
            const QString name = grid.objectName() + u'[' + heading + u' ' + QString::number(row) + u']';
            requireRoom(name, {grid.fontMetrics().horizontalAdvance(text), textSize(grid, text).height()},
                        place.size() - QSize(6, 0));
            const auto alignment = cell.data(Qt::TextAlignmentRole).value<Qt::Alignment>();
            if (isAmount(text) &&
                !(QStyle::visualAlignment(grid.layoutDirection(), alignment) & Qt::AlignRight))
                tell(name, u"has an amount that is not on the right: "_s + text);
            if (grid.isRightToLeft() && turnsAround(text))
                tell(name, u"turns numbers around: "_s + text);
            const bool picked = grid.selectionModel()->isSelected(cell);
            const QVariant own = cell.data(Qt::ForegroundRole);
            const QColor ink = own.isValid() && !picked
                                   ? own.value<QColor>()
                                   : colors.color(picked ? QPalette::HighlightedText : QPalette::Text);
            requireContrast(name, ink,
                            shown(*grid.viewport(), place.topLeft() + QPoint(2, place.height() / 2)));
            if (m_faults.size() > before)
                told << heading; // one of a column tells enough
        }
}

QStringList Look::faults()
{
    lookAtWindow();
    lookAtMenuBar();
    QList<const QWidget *> shownControls;
    const auto controls = controlsOf(m_screen);
    for (QObject *object : controls)
        if (const auto *control = qobject_cast<QWidget *>(object);
            control && control->isVisible() && !control->isWindow())
            shownControls << control;
    lookAtNeighbours(shownControls);
    if (const auto *bar = m_screen.findChild<QStatusBar *>(); bar && bar->isVisible()) {
        const auto panels = bar->findChildren<QLabel *>();
        for (const QLabel *panel : panels)
            shownControls << panel;
    }
    for (const QWidget *control : std::as_const(shownControls)) {
        lookAtPlace(*control);
        lookAtRoom(*control);
        lookAtInk(*control);
        if (const auto *grid = qobject_cast<const QTableView *>(control))
            lookAtGrid(*grid);
        else if (const auto *label = qobject_cast<const QLabel *>(control))
            lookAtText(*control, label->text(), label->alignment());
        else if (const auto *line = qobject_cast<const QLineEdit *>(control))
            lookAtText(*control, line->displayText(), line->alignment());
    }
    return m_faults;
}
} // namespace

QStringList lookFaults(Screen &screen)
{
    return Look(screen).faults();
}
