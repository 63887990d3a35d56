#include "platform/ui/screen.h"

#include "platform/ui/controls.h"
#include "platform/ui/process.h"
#include "platform/ui/reading_order.h"
#include "platform/ui/twips.h"
#include "platform/ui/wait.h"

#include <QtCore/QEvent>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QPushButton>

#include <new>
#include <utility>

namespace
{
QList<Screen *> &loadedList()
{
    static QList<Screen *> screens;
    return screens;
}

std::function<void(Screen &)> &helpKey()
{
    static std::function<void(Screen &)> help;
    return help;
}

/// Where the last `new` of a screen put it, so that its constructor can tell that it was made by `new`.
struct Allocation {
    const char *begin = nullptr;
    std::size_t size = 0;
} lastAllocation;
} // namespace

void *Screen::operator new(std::size_t size)
{
    void *memory = ::operator new(size);
    lastAllocation = {static_cast<const char *>(memory), size};
    return memory;
}

void Screen::operator delete(void *memory)
{
    ::operator delete(memory);
}

Screen::Screen(const QString &name)
{
    const auto *self = reinterpret_cast<const char *>(this);
    m_deletesItself = lastAllocation.begin && self >= lastAllocation.begin &&
                      self < lastAllocation.begin + lastAllocation.size;
    lastAllocation = {};
    setObjectName(name);
    setLayoutDirection(Qt::LeftToRight); // of its own, whatever the language of the boxes is
}

Screen::~Screen()
{
    loadedList().removeOne(this);
}

QList<Screen *> Screen::loadedScreens()
{
    return loadedList();
}

Screen *Screen::of(QObject *object)
{
    for (; object; object = object->parent()) {
        if (auto *screen = qobject_cast<Screen *>(object))
            return screen;
    }
    return nullptr;
}

Screen::InUse::InUse(Screen *screen) : m_screen(screen)
{
    if (m_screen)
        ++m_screen->m_uses;
}

Screen::InUse::~InUse()
{
    if (m_screen && --m_screen->m_uses == 0 && m_screen->m_discarded)
        m_screen->deleteWhenUnused();
}

void Screen::deleteWhenUnused()
{
    // Not deleteLater(): a wait inside of one of the screen's own routines would carry it out.
    QMetaObject::invokeMethod(
        qApp,
        [self = QPointer<Screen>(this)] {
            if (self && self->m_discarded && self->m_uses == 0)
                delete self.data();
        },
        Qt::QueuedConnection);
}

void Screen::load()
{
    if (m_loaded)
        return;
    const InUse inUse(this);
    m_discarded = false;
    if (!surface())
        setCentralWidget(new QWidget);
    m_loaded = true;
    m_resized = false;
    loadedList().append(this);

    QPalette light = QApplication::palette();
    light.setColor(QPalette::Window, QColor(240, 240, 240));
    surface()->setPalette(light);
    surface()->installEventFilter(this);
    makeLegible(surface());
    layOut();
    try {
        Form_Load();
    } catch (...) {
        loadedList().removeOne(this);
        m_loaded = false;
        m_discarded = m_deletesItself;
        throw;
    }
}

void Screen::makeLegible(QWidget *control)
{
    const ControlKind kind = kindOf(control);
    const bool text = kind == ControlKind::Label || kind == ControlKind::CheckBox ||
                      kind == ControlKind::OptionButton || kind == ControlKind::Frame;
    if (text && control->styleSheet().isEmpty())
        control->setAutoFillBackground(true);
    if (kind == ControlKind::Label) {
        auto *label = static_cast<QLabel *>(control);
        if (label->textFormat() == Qt::AutoText)
            label->setTextFormat(Qt::PlainText);
        // Letters keep off the sides of the opaque box. Above and below they need all of it: the line of a
        // fallback font can be taller than the box is meant for.
        if ((label->alignment() & Qt::AlignVCenter) && label->contentsMargins().isNull()) {
            const int side = qMax(2, label->margin());
            label->setMargin(0);
            label->setContentsMargins(side, 0, side, 0);
        }
    }
    if (!holdsControls(control))
        return;
    control->installEventFilter(this); // tells of controls that are added later
    const auto children = control->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (QWidget *child : children)
        makeLegible(child);
}

void Screen::layOut() const
{
    if (QLayout *bars = layout())
        bars->activate();
}

void Screen::prepareShowing()
{
    layOut();
    if (!m_resized) {
        m_resized = true;
        Form_Resize();
    }
}

void Screen::showModal()
{
    const InUse inUse(this);
    load();
    const QPointer<Screen> self(this);
    if (!m_loaded) // its own load took it away again
        return;
    if (isVisible())
        hide(); // the modality of a window that is shown can't change
    setWindowModality(Qt::ApplicationModal);
    prepareShowing();
    show();
    activateWindow();
    serveEventsUntil([&self] { return !self || !self->isVisible(); });
    if (self)
        self->setWindowModality(Qt::NonModal);
}

void Screen::showModeless()
{
    const bool loadedBefore = m_loaded;
    load();
    if (!m_loaded)
        return;
    if (!isVisible()) {
        prepareShowing();
        show();
    } else if (!loadedBefore) {
        return; // its own load has shown it, and another screen may have come to the front since
    } else {
        if (isMinimized())
            showNormal();
        raise();
    }
    activateWindow();
}

void Screen::hideScreen()
{
    hide();
}

void Screen::unload()
{
    if (!m_loaded || m_unloading)
        return;
    const InUse inUse(this);
    {
        const QScopedValueRollback unloading(m_unloading, true);
        if (!Form_QueryUnload())
            return;
        Form_Unload();
        m_loaded = false;
        loadedList().removeOne(this);
        hide();
    }
    m_discarded = m_deletesItself; // the end of this use deletes it
    if (loadedList().isEmpty())
        lookForLastScreen();
}

void Screen::setRightToLeft(bool on)
{
    setLayoutDirection(on ? Qt::RightToLeft : Qt::LeftToRight);
}

int Screen::scaleWidth() const
{
    layOut();
    return surface() ? twipsFromPixels(surface()->width()) : 0;
}

void Screen::paintGround(std::function<void(QPainter &, QSize)> painting)
{
    m_groundPaintings.push_back(std::move(painting));
    renderGround();
}

void Screen::clearGround()
{
    m_groundPaintings.clear();
    renderGround();
}

void Screen::renderGround()
{
    layOut();
    m_ground = {};
    if (surface() && !m_groundPaintings.empty() && !surface()->size().isEmpty()) {
        const QSize size = surface()->size();
        m_ground = QPixmap(size * devicePixelRatio());
        m_ground.setDevicePixelRatio(devicePixelRatio());
        m_ground.fill(palette().color(QPalette::Window));
        QPainter painter(&m_ground);
        for (const auto &painting : m_groundPaintings)
            painting(painter, size);
    }
    if (surface())
        surface()->update();
}

void Screen::setHourglass(bool on)
{
    static bool shown = false;
    if (on == shown)
        return;
    shown = on;
    if (on)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

bool Screen::Form_KeyDown(QKeyEvent *)
{
    return false;
}

bool Screen::previewKey(QKeyEvent *event)
{
    if (!m_loaded || m_unloading)
        return false;
    if (Form_KeyDown(event))
        return true;
    if (event->key() != Qt::Key_F1 || event->modifiers() != Qt::NoModifier || !helpKey())
        return false;
    helpKey()(*this);
    return true;
}

void Screen::setHelp(std::function<void(Screen &)> help)
{
    helpKey() = std::move(help);
}

void Screen::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    QPushButton *pressed = enter ? qobject_cast<QPushButton *>(focusWidget()) : nullptr;
    if (!pressed && (enter || event->key() == Qt::Key_Escape)) {
        for (auto *button : findChildren<QPushButton *>()) {
            if (enter ? button->isDefault() : button->property("cancel").toBool())
                pressed = button;
        }
    }
    if (pressed && pressed->isVisible() && pressed->isEnabled())
        pressed->click();
    else if (event->key() == Qt::Key_Escape && property("cancel").toBool())
        close();
    else
        QMainWindow::keyPressEvent(event);
}

void Screen::orderTabs() const
{
    if (surface())
        tabInReadingOrder(*surface(), readingDirection());
}

bool Screen::focusNextPrevChild(bool next)
{
    orderTabs(); // controls come, go and move while it is shown
    return QMainWindow::focusNextPrevChild(next);
}

void Screen::showEvent(QShowEvent *event)
{
    orderTabs(); // the first one gets the keys
    QMainWindow::showEvent(event);
}

void Screen::closeEvent(QCloseEvent *event)
{
    runEventRoutine([this] { unload(); });
    event->setAccepted(!m_loaded);
}

bool Screen::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ChildPolished:
        if (auto *added = static_cast<QChildEvent *>(event)->child(); added->isWidgetType())
            makeLegible(static_cast<QWidget *>(added));
        break;
    case QEvent::Paint:
        if (watched == surface() && !m_ground.isNull())
            QPainter(surface()).drawPixmap(0, 0, m_ground);
        break;
    case QEvent::Resize:
        if (watched == surface()) {
            renderGround();
            if (m_loaded && m_resized)
                runEventRoutine([this] { Form_Resize(); });
        }
        break;
    default:
        break;
    }
    return QMainWindow::eventFilter(watched, event);
}
