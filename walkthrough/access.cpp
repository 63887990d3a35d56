#include "access.h"

#include "core/engine.h"
#include "hand.h"
#include "platform/ui/controls.h"
#include "platform/ui/screen.h"
#include "presentation/vocabulary.h"

#include <QtGui/QAccessible>
#include <QtGui/QAction>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTableView>

#include <algorithm>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace
{

bool hasArabic(const QString &text)
{
    return std::ranges::any_of(text, [](QChar c) { return c.script() == QChar::Script_Arabic; });
}

/// Names that are data or stand in their own language.
bool keepsItsLanguage(const Screen &screen, const QString &control)
{
    return (screen.objectName() == u"frmInformation" && control == u"mnuExit") || // Arabic on both
           control.startsWith(u"Check1_") ||                                      // of members
           control.startsWith(u"mnuName_") ||                                     // of members
           control.startsWith(u"Command4_") ||                                    // numbers of groups
           control == u"mnuArabic"; // chosen by those who read no English
}

class Check
{
public:
    explicit Check(Screen &screen) : m_screen(screen) {}

    QStringList faults()
    {
        if (auto *read = QAccessible::queryAccessibleInterface(&m_screen))
            readTree(*read);
        else
            m_faults << u"the screen cannot be read"_s;
        checkMnemonics();
        checkTabOrder();
        return m_faults;
    }

private:
    void readTree(QAccessibleInterface &element);
    void readName(const QAccessibleInterface &element, const QString &control);
    void readTable(QAccessibleTableInterface &table, QTableView &view);
    void readHeaders(const QList<QAccessibleInterface *> &headers, const QString &cell);
    void checkMnemonics();
    void checkKeys(const QStringList &captions, const QString &place);
    QList<QWidget *> tabbed();
    void checkTabOrder();

    Screen &m_screen;
    QStringList m_faults;
};

// --- names

void Check::readTree(QAccessibleInterface &element)
{
    const QAccessible::State state = element.state();
    const bool menu = element.role() == QAccessible::MenuItem || element.role() == QAccessible::PopupMenu;
    if (state.invisible && !menu)
        return;
    QObject *object = element.object();
    const auto *widget = qobject_cast<QWidget *>(object);
    if (widget != nullptr && widget->focusProxy() != nullptr)
        return; // a part of another control
    const QString control = object != nullptr ? object->objectName() : QString();
    const bool separator = element.role() == QAccessible::Separator;
    const bool text = element.role() == QAccessible::StaticText; // its own name, which may be empty
    if ((state.focusable || element.role() == QAccessible::MenuItem) && !separator && !text)
        readName(element, control);
    auto *table = qobject_cast<QTableView *>(object);
    if (table != nullptr && element.tableInterface() != nullptr)
        return readTable(*element.tableInterface(), *table);
    for (int i = 0; i < element.childCount(); ++i) {
        if (QAccessibleInterface *child = element.child(i))
            readTree(*child);
    }
}

/// What a reader says before the content. The name of a list is its entry.
QString nameOf(const QAccessibleInterface &element)
{
    if (element.role() != QAccessible::ComboBox)
        return element.text(QAccessible::Name);
    const auto labels = element.relations(QAccessible::Label);
    return labels.isEmpty() ? element.text(QAccessible::Description)
                            : labels.first().first->text(QAccessible::Name);
}

void Check::readName(const QAccessibleInterface &element, const QString &control)
{
    const QString name = nameOf(element);
    if (name.trimmed().isEmpty())
        m_faults << u"%1 has no name"_s.arg(control);
    else if (keepsItsLanguage(m_screen, control))
        return;
    else if (engine.isArabic && !hasArabic(name) && translate(name) != name)
        m_faults << u"%1 is called \"%2\" in English"_s.arg(control, name);
    else if (!engine.isArabic && hasArabic(name))
        m_faults << u"%1 is called \"%2\" in Arabic"_s.arg(control, name);
}

void Check::readHeaders(const QList<QAccessibleInterface *> &headers, const QString &cell)
{
    if (headers.isEmpty())
        m_faults << cell + u" has no heading"_s;
    for (QAccessibleInterface *header : headers) {
        readName(*header, u"the heading of "_s + cell);
        // The toolkit makes a new one for each question and keeps none of them.
        QAccessible::deleteAccessibleInterface(QAccessible::registerAccessibleInterface(header));
    }
}

/// Reads the first rows that are in view, cell by cell.
void Check::readTable(QAccessibleTableInterface &table, QTableView &view)
{
    constexpr int rows = 3;
    const int top = view.rowAt(0);
    for (int row = top; row >= 0 && row < std::min(top + rows, view.model()->rowCount()); ++row) {
        for (int column = 0; column < view.model()->columnCount(); ++column) {
            const QModelIndex index = view.model()->index(row, column);
            if (!index.flags().testFlag(Qt::ItemIsEnabled))
                continue; // the fixed column, in which nothing ever stands
            const QString place = u"%1 %2, %3"_s.arg(view.objectName()).arg(row).arg(column);
            QAccessibleInterface *cell = table.cellAt(row, column);
            if (cell == nullptr || cell->tableCellInterface() == nullptr) {
                m_faults << place + u" cannot be read"_s;
                continue;
            }
            QString shown = index.data(Qt::DisplayRole).toString();
            shown.removeIf([](QChar c) { return c.category() == QChar::Other_Format; });
            if (cell->text(QAccessible::Name).simplified() != shown.simplified())
                m_faults << u"%1 reads \"%2\""_s.arg(place, cell->text(QAccessible::Name));
            if (cell->state().focused != (index == view.currentIndex()))
                m_faults << place + u" is not told apart from the current cell"_s;
            readHeaders(cell->tableCellInterface()->columnHeaderCells(), place);
            readHeaders(cell->tableCellInterface()->rowHeaderCells(), place);
        }
    }
}

// --- keys of captions

void Check::checkKeys(const QStringList &captions, const QString &place)
{
    QList<QKeySequence> taken;
    for (const QString &caption : captions) {
        const QKeySequence key = QKeySequence::mnemonic(caption);
        if (!key.isEmpty() && taken.contains(key))
            m_faults << u"%1: \"%2\" shares its key with another"_s.arg(place, caption);
        taken << key;
    }
}

QStringList captionsOf(const QList<QAction *> &actions)
{
    QStringList captions;
    for (const QAction *action : actions) {
        if (action->isVisible())
            captions << action->text();
    }
    return captions;
}

void Check::checkMnemonics()
{
    QStringList captions = captionsOf(m_screen.menuBar()->actions());
    const auto controls = controlsOf(m_screen);
    for (QObject *object : controls) {
        if (const auto *menu = qobject_cast<QMenu *>(object))
            checkKeys(captionsOf(menu->actions()), menu->objectName());
        else if (const auto *control = qobject_cast<QWidget *>(object); control && control->isVisible())
            captions << captionOf(object);
    }
    checkKeys(captions, u"the screen"_s);
}

// --- the order of Tab

/// Laid out for one direction in both languages.
bool readsFromRight(const Screen &screen)
{
    return engine.isArabic || screen.objectName() == u"frmRevenue" || screen.objectName() == u"frmExpense";
}

/// What stands beside the other control: itself or the frame around it.
QWidget *unitBeside(QWidget *control, const QWidget *other)
{
    while (!control->parentWidget()->isAncestorOf(other))
        control = control->parentWidget();
    return control;
}

/// Whether a line from side to side between two controls crosses none of those around them.
bool isParted(const QWidget &above, const QWidget &below, const QList<QWidget *> &all)
{
    int reached = above.geometry().bottom();
    QList<QRect> places;
    for (QWidget *control : all) {
        while (control != nullptr && control->parentWidget() != above.parentWidget())
            control = control->parentWidget();
        if (control != nullptr)
            places << control->geometry();
    }
    std::ranges::sort(places, {}, [](const QRect &place) { return place.top(); });
    for (const QRect &place : places) {
        if (place.top() <= reached)
            reached = std::max(reached, place.bottom());
    }
    return reached < below.y();
}

/// Whether a reader comes to the first control before the second.
bool isReadBefore(QWidget *first, QWidget *second, const QList<QWidget *> &all, bool fromRight)
{
    const QWidget *a = unitBeside(first, second);
    const QWidget *b = unitBeside(second, first);
    const QRect one = a->geometry();
    const QRect two = b->geometry();
    const auto hasMiddleOf = [](const QRect &place, const QRect &of) {
        return place.top() <= of.center().y() && of.center().y() <= place.bottom();
    };
    if (hasMiddleOf(one, two) || hasMiddleOf(two, one))
        return fromRight ? one.left() > two.right() : one.right() < two.left();
    const bool column = one.left() <= two.right() && two.left() <= one.right();
    return one.bottom() < two.top() && (column || isParted(*a, *b, all));
}

/// Whether its kind is there to be typed into, picked from or pressed, so that Tab must come to it. Options
/// are gone over by the arrows.
bool takesInput(const QWidget &control)
{
    switch (kindOf(&control)) {
    case ControlKind::CommandButton:
    case ControlKind::CheckBox:
    case ControlKind::TextBox:
    case ControlKind::ComboBox:
    case ControlKind::DTPicker:
    case ControlKind::FlexGrid:
    case ControlKind::DataGrid:
        return true;
    default:
        return false;
    }
}

/// Presses Tab until the keys are where they were before.
QList<QWidget *> Check::tabbed()
{
    constexpr int limit = 400;
    hand::pressKey(m_screen, Qt::Key_Tab);
    QList<QWidget *> order{m_screen.focusWidget()};
    for (int i = 0; i < limit && order.first() != nullptr; ++i) {
        hand::pressKey(m_screen, Qt::Key_Tab);
        QWidget *now = m_screen.focusWidget();
        if (now == order.last())
            continue; // from cell to cell, or from day to month
        if (now == order.first())
            return order;
        if (now == nullptr || order.contains(now))
            break;
        order << now;
    }
    if (order.size() > 1)
        m_faults << u"Tab does not come back to %1"_s.arg(order.first()->objectName());
    order.removeAll(nullptr);
    return order;
}

void Check::checkTabOrder()
{
    QWidget *before = m_screen.focusWidget();
    QList<QWidget *> order = tabbed();
    const auto widgets = m_screen.surface()->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        const bool wanted = widget->isVisible() && widget->isEnabled() && widget->focusProxy() == nullptr &&
                            (takesInput(*widget) || (widget->focusPolicy() & Qt::TabFocus)) &&
                            !widget->objectName().isEmpty() && !widget->objectName().startsWith(u"qt_");
        if (wanted && !order.contains(widget))
            m_faults << u"Tab does not reach %1"_s.arg(widget->objectName());
    }
    // The round has no beginning of its own: taken where the fewest controls stand too late.
    QStringList fewest;
    for (qsizetype turn = 0; turn < order.size(); ++turn) {
        QStringList faults;
        for (qsizetype i = 0; i < order.size(); ++i) {
            for (qsizetype k = i + 1; k < order.size(); ++k) {
                if (isReadBefore(order[k], order[i], order, readsFromRight(m_screen)))
                    faults << u"Tab comes to %1 before %2"_s.arg(order[i]->objectName(),
                                                                 order[k]->objectName());
            }
        }
        if (turn == 0 || faults.size() < fewest.size())
            fewest = faults;
        std::rotate(order.begin(), std::next(order.begin()), order.end());
    }
    m_faults << fewest;
    if (before != nullptr)
        before->setFocus();
}

} // namespace

QStringList accessFaults(Screen &screen)
{
    return Check(screen).faults();
}
