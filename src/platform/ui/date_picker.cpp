#include "platform/ui/date_picker.h"

#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"

#include <QtCore/QEvent>
#include <QtCore/QLocale>
#include <QtCore/QSignalBlocker>
#include <QtGui/QFocusEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCalendarWidget>

using namespace Qt::Literals::StringLiterals;

DatePicker::DatePicker(QWidget *parent) : QDateEdit(parent)
{
    setTimeSpec(Qt::UTC);
    // Set under the right-to-left direction, the format would be turned around; digits and slashes need no
    // turning.
    setLayoutDirection(Qt::LeftToRight);
    setDisplayFormat(u"dd/MM/yyyy"_s);
    unsetLayoutDirection();
    setDateRange({1601, 1, 1}, {9999, 12, 31});
    setCalendarPopup(true);
    calendarWidget()->parentWidget()->installEventFilter(this);
}

QDateTime DatePicker::value() const
{
    return m_set.isValid() && m_set.date() == date() ? m_set : makeDate(date());
}

void DatePicker::setValue(const QDateTime &value)
{
    m_set = value;
    setDate(value.date());
}

QValidator::State DatePicker::validate(QString &input, int &position) const
{
    input = asciiDigits(input);
    return QDateEdit::validate(input, position);
}

void DatePicker::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier))
        return dropDown();
    const QString text = asciiDigits(event->text());
    if (text == event->text())
        return QDateEdit::keyPressEvent(event);
    QKeyEvent ascii(event->type(), text.at(0).unicode(), event->modifiers(), text);
    QDateEdit::keyPressEvent(&ascii);
}

void DatePicker::focusInEvent(QFocusEvent *event)
{
    QDateEdit::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    const bool returned = reason == Qt::ActiveWindowFocusReason && m_entered;
    m_entered = true;
    // The toolkit would begin with the year under the right-to-left direction.
    if (isRightToLeft() && !returned && reason != Qt::MouseFocusReason && reason != Qt::PopupFocusReason)
        setSelectedSection(reason == Qt::BacktabFocusReason ? YearSection : DaySection);
}

void DatePicker::changeEvent(QEvent *event)
{
    QDateEdit::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        setAlignment((isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                     Qt::AlignVCenter);
}

void DatePicker::dropDown()
{
    // Only a press on its arrow opens the calendar at its place.
    constexpr int intoArrow = 6;
    const QPoint arrow(isRightToLeft() ? intoArrow : width() - intoArrow, height() / 2);
    QMouseEvent press(QEvent::MouseButtonPress, arrow, mapToGlobal(arrow), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    mousePressEvent(&press);
}

void DatePicker::mousePressEvent(QMouseEvent *event)
{
    speakSessionLanguage();
    QDateEdit::mousePressEvent(event);
}

void DatePicker::speakSessionLanguage()
{
    // Month and day names in the language of the boxes; a locale whose digits are ASCII.
    const bool arabic = QGuiApplication::layoutDirection() == Qt::RightToLeft;
    const QLocale locale = arabic ? QLocale(QLocale::Arabic, QLocale::UnitedArabEmirates)
                                  : QLocale(QLocale::English, QLocale::UnitedKingdom);
    QCalendarWidget *calendar = calendarWidget();
    if (calendar->locale() == locale)
        return;
    const QSignalBlocker quiet(calendar);
    calendar->setLocale(locale);
    // Another first day of the week moves the days, but the calendar leaves its mark where it was.
    calendar->setSelectedDate(date() == maximumDate() ? date().addDays(-1) : date().addDays(1));
    calendar->setSelectedDate(date());
}

bool DatePicker::eventFilter(QObject *watched, QEvent *event)
{
    // Behind the calendar's own end, when the picked date stands in the box.
    if (watched == calendarWidget()->parentWidget() && event->type() == QEvent::Hide)
        QMetaObject::invokeMethod(this, &DatePicker::closeUp, Qt::QueuedConnection);
    return QDateEdit::eventFilter(watched, event);
}
