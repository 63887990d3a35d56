#pragma once

#include "platform/ui/process.h"

#include <QtCore/QPointer>
#include <QtGui/QPixmap>
#include <QtWidgets/QMainWindow>

#include <cstddef>
#include <functional>
#include <type_traits>
#include <vector>

/// A window of the program. Its controls come from a Designer file whose top is a QMainWindow: a menu bar, a
/// central widget that is the screen's inner surface with absolutely placed controls, and perhaps a status
/// bar. A control is known by its objectName; the elements of a control array are named `txtFields_0`,
/// `txtFields_1` ...
///
/// Life: constructing builds the controls; load() runs Form_Load once and puts the screen on the list of
/// loaded screens; unload() runs Form_Unload, takes it off the list and deletes it once none of its routines
/// runs any more (unless its owner keeps it by value; one made by `new` must not be owned by a smart
/// pointer). A screen is shown by showModal() or showModeless(), which load it when it is not loaded yet.
/// Closing its window unloads it. Destroying a loaded screen takes it off the list without Form_Unload.
///
/// The routines run in this order: Form_Load, Form_Resize once before the screen is first shown and after
/// each change of its size, Form_QueryUnload, Form_Unload. A failure in Form_Load reaches the caller and
/// leaves the screen as unloading does, without Form_Unload.
///
/// Keys: Form_KeyDown sees every key that goes to this screen before the control with the focus does. Enter
/// then clicks the button with the focus or else the one whose `default` property is set; Escape clicks the
/// one with a dynamic property `cancel`, or closes a screen that has this property itself; unless a control
/// took the key. Tab goes over the controls in reading order, wherever they stand by then.
///
/// Loading also makes the screen legible: labels, check boxes, options and frames become opaque on the
/// painted ground, black on light, also those that are added later, and labels show their text as it stands
/// (no markup). A control with a style sheet of its own keeps its look.
class Screen : public QMainWindow
{
    Q_OBJECT

public:
    /// `name` is the name of the class, such as `frmMain`; it becomes the objectName.
    explicit Screen(const QString &name);
    ~Screen() override;

    void load();
    /// Shows it and serves events until it is hidden or unloaded. Other windows take no input meanwhile.
    /// Throws ProcessEnding when the process ended meanwhile.
    void showModal();
    /// Shows it beside the others and returns; a screen that is shown already comes to the front.
    void showModeless();
    /// Hides it; it stays loaded, and showModal() returns.
    void hideScreen();
    /// Unloads it: nothing happens when it is not loaded or when Form_QueryUnload refuses.
    void unload();
    /// Asks about what was typed into it and not saved yet, and saves it when the user says so; called while
    /// the store is still open, before the program ends.
    virtual void saveTyped() {}
    bool isLoaded() const { return m_loaded; }
    /// Made by `new`: unloading deletes it.
    bool deletesItself() const { return m_deletesItself; }
    /// Unloaded and to be deleted, as soon as none of its routines runs any more.
    bool isDiscarded() const { return m_discarded; }

    /// The screen to which an object belongs as a window's part; null for none.
    static Screen *of(QObject *object);
    /// Stands while one of a screen's routines may run: as long, an unloaded screen is not deleted.
    class InUse
    {
    public:
        explicit InUse(Screen *screen);
        ~InUse();
        InUse(const InUse &) = delete;
        InUse &operator=(const InUse &) = delete;

    private:
        QPointer<Screen> m_screen;
    };

    /// The loaded screens in the order of loading.
    static QList<Screen *> loadedScreens();

    QString caption() const { return windowTitle(); }
    void setCaption(const QString &caption) { setWindowTitle(caption); }
    bool rightToLeft() const { return layoutDirection() == Qt::RightToLeft; }
    /// Turns the window's own direction (menu bar, title) and the default of its controls. No control moves.
    void setRightToLeft(bool on);

    /// The inner surface on which the controls stand.
    QWidget *surface() const { return centralWidget(); }
    /// Inner width in twips.
    int scaleWidth() const;

    /// Keeps what the ground is painted with: called with a painter over the whole surface now and after each
    /// resize. Calls add up, in order; clearGround() forgets them.
    void paintGround(std::function<void(QPainter &painter, QSize surface)> painting);
    void clearGround();

    /// In place of QObject::connect: the routine runs under runEventRoutine(). It takes the signal's
    /// arguments or none.
    template <typename Sender, typename Signal, typename Context, typename Routine>
    static QMetaObject::Connection connect(const Sender *sender, Signal signal, Context *context,
                                           Routine routine)
    {
        return QObject::connect(sender, signal, context, [context, routine](auto... arguments) {
            runEventRoutine([&] { call(routine, context, arguments...); });
        });
    }

    /// The hourglass and back.
    static void setHourglass(bool on);

    /// Gives Form_KeyDown its look at a key; true when it took it. F1 then asks for help. The event dispatch
    /// calls this.
    bool previewKey(QKeyEvent *event);
    /// What F1 does on every screen whose Form_KeyDown leaves it; nothing until it is set.
    static void setHelp(std::function<void(Screen &asking)> help);

    static void *operator new(std::size_t size);
    /// The toolkit's meta types ask for it.
    static void *operator new(std::size_t, void *where) noexcept { return where; }
    static void operator delete(void *memory);

protected:
    virtual void Form_Load() {}
    /// False keeps the screen.
    virtual bool Form_QueryUnload() { return true; }
    virtual void Form_Unload() {}
    /// Sees each key before the control that has the focus; true takes it.
    virtual bool Form_KeyDown(QKeyEvent *event);
    virtual void Form_Resize() {}
    /// The side from which Tab goes over the page: that where the language begins, but for a screen that is
    /// laid out for one direction alone.
    virtual Qt::LayoutDirection readingDirection() const { return layoutDirection(); }

    bool focusNextPrevChild(bool next) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Calls a context's own routine or a free one, with the arguments when it takes them.
    template <typename Routine, typename Context, typename... Arguments>
    static void call(const Routine &routine, Context *context, Arguments... arguments)
    {
        if constexpr (std::is_invocable_v<Routine, Context *, Arguments...>)
            std::invoke(routine, context, arguments...);
        else if constexpr (std::is_invocable_v<Routine, Context *>)
            std::invoke(routine, context);
        else if constexpr (std::is_invocable_v<Routine, Arguments...>)
            std::invoke(routine, arguments...);
        else
            std::invoke(routine);
    }

    void layOut() const;
    void prepareShowing();
    void orderTabs() const;
    void makeLegible(QWidget *control);
    void renderGround();
    void deleteWhenUnused();

    bool m_deletesItself = false;
    bool m_discarded = false;
    int m_uses = 0;
    bool m_loaded = false;
    bool m_unloading = false;
    bool m_resized = false; ///< Form_Resize has run since loading
    std::vector<std::function<void(QPainter &, QSize)>> m_groundPaintings;
    QPixmap m_ground;
};

/// The one instance of a screen class that the program shares: made when it is first asked for, and anew
/// after it was unloaded.
template <typename Class>
Class &theScreen()
{
    static QPointer<Class> instance;
    Class *screen = instance.data();
    if (screen == nullptr || screen->isDiscarded()) {
        screen = new Class;
        instance = screen;
    }
    return *screen;
}
