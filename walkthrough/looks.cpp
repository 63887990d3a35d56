#include "looks.h"

#include "entry/elided_label.h"
#include "look_measures.h"
#include "platform/ui/controls.h"
#include "platform/ui/screen.h"

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
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace
{
/// The smallest display that the program is made for, less the bars of a desktop.
constexpr QSize leastDisplay(1280, 660);
constexpr int largestUsualFont = 12; ///< points
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

bool isInScrollArea(const QWidget &control)
{
    const QWidget *parent = control.parentWidget();
    return parent && qobject_cast<const QScrollArea *>(parent->parentWidget());
}

class LookCheck
{
public:
    explicit LookCheck(Screen &screen) : m_screen(screen), m_picture(screen.grab().toImage()) {}

    QStringList faults();

private:
    void lookAtWindow();
    void lookAtMenuBar();
    void lookAtPlace(const QWidget &control);
    void lookAtNeighbours(const QList<const QWidget *> &controls);
    void lookAtRoom(const QWidget &control);
    void lookAtTitle(const QGroupBox &frame);
    void lookAtText(const QWidget &control, const QString &text, Qt::Alignment alignment);
    void lookAtPlaceholder(const QString &name, const QLineEdit &line);
    void lookAtInk(const QWidget &control);
    void lookAtGrid(const QTableView &grid);
    void lookAtHeadings(const QHeaderView &headings, const QString &grid);

    void requireRoom(const QString &name, QSize wanted, QSize room);
    void requireContrast(const QString &name, const QColor &ink, const QColor &ground);
    void requireContrast(const QString &name, const QWidget &control, const QColor &ink, const QRect &text);
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

void LookCheck::requireRoom(const QString &name, QSize wanted, QSize room)
{
    if (wanted.width() > room.width() || wanted.height() > room.height())
        tell(name, u"is clipped: %1 in %2"_s.arg(numbers(wanted), numbers(room)));
}

void LookCheck::requireContrast(const QString &name, const QColor &ink, const QColor &ground)
{
    const double ratio = contrast(ink, ground);
    if (ratio < leastContrast)
        tell(name, u"has a contrast of %1: %2 on %3"_s.arg(QString::number(ratio, 'f', 1),
                                                           ink.name(QColor::HexArgb), ground.name()));
}

QColor LookCheck::shown(const QWidget &control, QPoint place) const
{
    const QPointF there = QPointF(control.mapTo(&m_screen, place)) * m_picture.devicePixelRatio();
    const QPoint pixel = there.toPoint();
    return m_picture.valid(pixel) ? m_picture.pixelColor(pixel) : QColor();
}

/// Against what is painted behind the text: the grounds differ from line to line alone, so that the best
/// pixel of each line is ground. The corners may be round.
void LookCheck::requireContrast(const QString &name, const QWidget &control, const QColor &ink,
                                const QRect &text)
{
    const int corner = std::min(5, text.height() / 3);
    const int step = std::max(1, text.width() / 12);
    QColor worst;
    for (int y = text.top() + corner; y <= text.bottom() - corner; y += 2) {
        QColor ground;
        for (int x = text.left(); x <= text.right(); x += step)
            if (const QColor seen = shown(control, {x, y});
                seen.isValid() && (!ground.isValid() || contrast(ink, seen) > contrast(ink, ground)))
                ground = seen;
        if (ground.isValid() && (!worst.isValid() || contrast(ink, ground) < contrast(ink, worst)))
            worst = ground;
    }
    if (worst.isValid())
        requireContrast(name, ink, worst);
}

void LookCheck::lookAtWindow()
{
    const QString name = m_screen.objectName();
    const QSize least = m_screen.minimumSizeHint();
    const bool taken = name == u"ReportPreview" || name == u"GuideWindow"; // they take what room there is
    const QSize size = taken ? least : m_screen.size();
    if (m_screen.surface()->font().pointSize() <= largestUsualFont &&
        (size.width() > leastDisplay.width() || size.height() > leastDisplay.height()))
        tell(name, u"is larger than a small display: "_s + numbers(size));
    if (m_screen.width() < least.width() || m_screen.height() < least.height())
        tell(name, u"is smaller than its controls: "_s + numbers(m_screen.size()));
}

void LookCheck::lookAtMenuBar()
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
            tell(entry->text(), u"does not fit into the menu bar"_s);
        else if (entry->isEnabled())
            requireContrast(entry->text(), *bar, inkOf(*bar), place.adjusted(2, 2, -2, -2));
    }
}

void LookCheck::lookAtPlace(const QWidget &control)
{
    if (!isInScrollArea(control) && !control.parentWidget()->rect().contains(control.geometry()))
        tell(control.objectName(), u"reaches outside"_s);
}

/// Controls of one parent: none over another, and what stands in a row or a column stands exactly so.
void LookCheck::lookAtNeighbours(const QList<const QWidget *> &controls)
{
    constexpr int line = 60; // pixels: what is higher stands beside several rows
    for (const QWidget *a : controls)
        for (const QWidget *b : controls) {
            if (a >= b || a->parentWidget() != b->parentWidget() || a->parentWidget()->layout())
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
            if (m_screen.objectName() == u"frmSelectDates")
                continue; // its row stands in the middle, as wide as its words
            for (const int offColumn :
                 {std::abs(first.left() - second.left()), std::abs(first.right() - second.right())})
                if (offColumn > 0 && offColumn < nearMiss)
                    tell(names, u"are off their column by %1"_s.arg(offColumn));
        }
}

void LookCheck::lookAtRoom(const QWidget &control)
{
    constexpr int air = 4; // pixels beside a caption
    const QString name = control.objectName();
    const auto needs = [&](const QString &text, Centred centred) {
        return QSize(textSize(control, text).width(), inkHeight(control, text, centred));
    };
    const QString anything = u"Ág إِنَّ"_s; // what anybody may type
    if (const auto *elided = qobject_cast<const ElidedLabel *>(&control)) {
        QHelpEvent pointed(QEvent::ToolTip, {1, 1}, control.mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(const_cast<ElidedLabel *>(elided), &pointed);
        const bool told = !elided->text().isEmpty() && QToolTip::text() == elided->text().toHtmlEscaped();
        QToolTip::hideText();
        const QSize whole = needs(elided->text(), Centred::ByLine);
        requireRoom(name, told ? QSize(0, whole.height()) : whole, control.contentsRect().size());
    } else if (const auto *label = qobject_cast<const QLabel *>(&control)) {
        if (label->wordWrap())
            requireRoom(name, {0, label->heightForWidth(label->width())}, label->size());
        else if (label->text().contains(u'\n'))
            requireRoom(name, label->sizeHint(), label->size());
        else if (label->sizePolicy().horizontalPolicy() != QSizePolicy::Ignored)
            requireRoom(name, needs(label->text(), Centred::ByLine),
                        label->contentsRect().size() - QSize(2 * label->margin(), 0));
    } else if (const auto *push = qobject_cast<const QPushButton *>(&control)) {
        requireRoom(name, needs(push->text(), Centred::ByLine), push->size() - QSize(2 * air, 4));
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&control)) {
        if (!button->text().isEmpty())
            requireRoom(name, {button->sizeHint().width(), needs(button->text(), Centred::ByLine).height()},
                        button->size());
    } else if (const auto *frame = qobject_cast<const QGroupBox *>(&control)) {
        lookAtTitle(*frame);
    } else if (const auto *combo = qobject_cast<const QComboBox *>(&control)) {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        option.editable = combo->isEditable();
        const QRect field =
            combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo);
        const Centred centred = combo->isEditable() ? Centred::ByFont : Centred::ByLine;
        QSize longest(0, needs(anything, centred).height());
        for (int i = 0; i < combo->count(); ++i)
            longest = longest.expandedTo(needs(combo->itemText(i), centred));
        if (const QLineEdit *line = combo->lineEdit())
            longest = longest.expandedTo(needs(line->placeholderText(), centred));
        requireRoom(name, longest, field.size() - QSize(4, 0));
    } else if (const auto *box = qobject_cast<const QLineEdit *>(&control)) {
        const QString text = box->displayText().isEmpty() ? box->placeholderText() : box->displayText();
        const bool scrolls = box->isEnabled() && !box->isReadOnly() && !box->displayText().isEmpty();
        requireRoom(name,
                    {scrolls ? 0 : textSize(*box, text).width(), needs(anything, Centred::ByFont).height()},
                    box->size() - QSize(2 * air, 4));
    } else if (const auto *picker = qobject_cast<const QDateTimeEdit *>(&control)) {
        requireRoom(name, {picker->sizeHint().width(), needs(picker->text(), Centred::ByFont).height()},
                    picker->size() - QSize(0, 4));
    } else if (const auto *text = qobject_cast<const QPlainTextEdit *>(&control)) {
        requireRoom(name, {0, 2 * text->fontMetrics().height()}, text->viewport()->size());
    }
}

/// A title that fits, above what stands in the frame.
void LookCheck::lookAtTitle(const QGroupBox &frame)
{
    if (frame.title().isEmpty())
        return;
    requireRoom(frame.objectName(), textSize(frame, frame.title()), frame.size() - QSize(16, 0));
    const auto children = frame.findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (const QWidget *child : children)
        if (child->isVisible() && child->y() < frame.fontMetrics().height())
            tell(child->objectName(), u"lies over the title of its frame"_s);
}

void LookCheck::lookAtText(const QWidget &control, const QString &text, Qt::Alignment alignment)
{
    const Qt::Alignment place = QStyle::visualAlignment(control.layoutDirection(), alignment);
    if (isAmount(text) && !(place & Qt::AlignRight))
        tell(control.objectName(), u"has an amount that is not on the right: "_s + text);
    if (control.isRightToLeft() && turnsAround(text))
        tell(control.objectName(), u"turns numbers around: "_s + text);
}

void LookCheck::lookAtPlaceholder(const QString &name, const QLineEdit &line)
{
    if (!line.placeholderText().isEmpty())
        requireContrast(name, line, line.palette().color(QPalette::Active, QPalette::PlaceholderText),
                        line.rect().adjusted(3, 0, -3, 0));
}

void LookCheck::lookAtInk(const QWidget &control)
{
    constexpr int markWidth = 28; // of an option, a check box or the arrow of a box
    const QString name = control.objectName();
    const bool shadow = m_screen.objectName() == u"frmAbout" && name == u"Label2"; // tells nothing by itself
    if (!control.isEnabled() || shadow)
        return;
    const QRect whole = control.rect();
    const int atLeft = control.isRightToLeft() ? 0 : markWidth;
    if (const auto *label = qobject_cast<const QLabel *>(&control)) {
        if (!label->text().isEmpty())
            requireContrast(name, control, inkOf(control), label->contentsRect());
    } else if (qobject_cast<const QPushButton *>(&control)) {
        requireContrast(name, control, inkOf(control), whole.adjusted(5, 0, -5, 0));
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&control)) {
        if (!button->text().isEmpty())
            requireContrast(name, control, inkOf(control), whole.adjusted(atLeft, 0, atLeft - markWidth, 0));
    } else if (const auto *frame = qobject_cast<const QGroupBox *>(&control)) {
        const QRect title(2, 0, frame->width() - 4, frame->fontMetrics().height());
        if (!frame->title().isEmpty())
            requireContrast(name, control, inkOf(control), title);
    } else if (const auto *combo = qobject_cast<const QComboBox *>(&control)) {
        requireContrast(name, control, inkOf(control), whole.adjusted(markWidth - atLeft, 0, -atLeft, 0));
        if (combo->lineEdit())
            lookAtPlaceholder(name, *combo->lineEdit());
    } else if (const QLineEdit *line = lineOf(control)) {
        const QPalette colors = line->palette();
        requireContrast(name, *line, inkOf(*line), line->rect().adjusted(3, 0, -3, 0));
        lookAtPlaceholder(name, *line);
        requireContrast(name, colors.color(QPalette::Active, QPalette::HighlightedText),
                        colors.color(QPalette::Active, QPalette::Highlight));
    } else if (const auto *text = qobject_cast<const QPlainTextEdit *>(&control)) {
        requireContrast(name, *text->viewport(), inkOf(*text->viewport()), text->viewport()->rect());
    }
}

void LookCheck::lookAtHeadings(const QHeaderView &headings, const QString &grid)
{
    for (int section = 0; section < headings.count(); ++section) {
        const QString text = headings.model()->headerData(section, Qt::Horizontal).toString();
        const int left = headings.sectionViewportPosition(section);
        const int width = headings.sectionSize(section);
        if (headings.isSectionHidden(section) || text.isEmpty())
            continue;
        const QString name = grid + u'[' + text + u']';
        requireRoom(name, {textSize(headings, text).width(), inkHeight(headings, text, Centred::ByLine)},
                    {width - 4, headings.height()});
        if (left >= 0 && left + width <= headings.viewport()->width())
            requireContrast(name, *headings.viewport(), inkOf(headings),
                            {left + 2, 4, width - 4, headings.height() - 8});
    }
}

/// The cells that are in view.
void LookCheck::lookAtGrid(const QTableView &grid)
{
    lookAtHeadings(*grid.horizontalHeader(), grid.objectName());
    const QRect view = grid.viewport()->rect();
    const QPalette &colors = grid.palette();
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
            requireRoom(name,
                        {grid.fontMetrics().horizontalAdvance(text), inkHeight(grid, text, Centred::ByLine)},
                        place.size() - QSize(6, 0));
            const auto alignment = cell.data(Qt::TextAlignmentRole).value<Qt::Alignment>();
            if (isAmount(text) &&
                !(QStyle::visualAlignment(grid.layoutDirection(), alignment) & Qt::AlignRight))
                tell(name, u"has an amount that is not on the right: "_s + text);
            if (grid.isRightToLeft() && turnsAround(text))
                tell(name, u"turns numbers around: "_s + text);
            const bool picked = grid.selectionMode() == QTableView::NoSelection
                                    ? cell == grid.currentIndex()
                                    : grid.selectionModel()->isSelected(cell);
            const QVariant own = cell.data(Qt::ForegroundRole);
            const QColor ink = own.isValid() && !picked
                                   ? own.value<QColor>()
                                   : colors.color(picked ? QPalette::HighlightedText : QPalette::Text);
            requireContrast(name, *grid.viewport(), ink, place.adjusted(2, 4, -2, -4));
            if (m_faults.size() > before)
                told << heading; // one of a column tells enough
        }
}

QStringList LookCheck::faults()
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
    return LookCheck(screen).faults();
}
