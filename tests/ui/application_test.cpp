#include "platform/runtime/runtime_error.h"
#include "platform/ui/application.h"
#include "platform/ui/process.h"
#include "platform/ui/screen.h"
#include "platform/ui/wait.h"
#include "support/screens.h"

#include <QtCore/QTimer>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace
{
/// A screen with one button, whose routines a test gives.
class Probe : public Screen
{
public:
    Probe() : Screen(u"frmProbe"_s)
    {
        setCentralWidget(new QWidget);
        auto *go = new QPushButton(u"Go"_s, surface());
        go->setObjectName(u"cmdGo"_s);
        connect(go, &QPushButton::clicked, this, [this] { go_Click(); });
    }
    std::function<void()> go_Click = [] {};
};

TEST(Application, EndsTheProcessOnAnUntrappedFailureAfterRollingBack)
{
    ScriptedDialogs dialogs;
    bool rolledBack = false;
    setUntrappedHook([&] { rolledBack = true; });
    dialogs.expectUntrapped(u"-2147217900 (80040e14)"_s, u"Syntax error."_s).meanwhile([&] {
        EXPECT_TRUE(rolledBack);
        reportUntrapped(runtime_errors::overflow()); // a second one while the box stands: not shown
    });
    Probe outer;
    Probe inner;
    outer.load();
    inner.load();
    inner.go_Click = [] { throw RuntimeError(-2147217900, u"store"_s, u"Syntax error."_s); };
    outer.go_Click = [&] {
        click(inner, "cmdGo"); // a routine that sends an event itself ends with that
        ADD_FAILURE() << "ran on";
    };
    EXPECT_TRUE(processEnded(1, [&] { click(outer, "cmdGo"); }));
}

TEST(Application, UnwindsNestedWaitsAndCallsNoRoutineWhenTheProcessEnds)
{
    Probe modal;
    Probe waiting;
    waiting.load();
    waiting.go_Click = [&] {
        onModal<Probe>([&](Probe &) {
            later([] {
                QTimer::singleShot(0, qApp, [] { ADD_FAILURE() << "a routine was called"; });
                endProcess(7);
            });
            serveEventsUntil([] { return false; }); // the wait that ends only with the process
            ADD_FAILURE() << "ran on behind the wait";
        });
        modal.showModal();
        ADD_FAILURE() << "ran on behind the modal screen";
    };
    EXPECT_TRUE(processEnded(7, [&] {
        click(waiting, "cmdGo");
        EXPECT_TRUE(processEnding());
        click(waiting, "cmdGo"); // no routine is called any more
        QCoreApplication::processEvents();
    }));
}

TEST(Application, EndsWithTheLastScreenButNotUnderADialog)
{
    setEndsWithLastScreen(true);
    Probe first;
    Probe second;
    EXPECT_TRUE(processEnded(0, [&] {
        first.load();
        first.unload();
        second.load(); // a screen that follows at once keeps the process alive
        serveEvents();
        EXPECT_FALSE(processEnding());
        onModal<QMessageBox>([&](QMessageBox &box) {
            second.unload();
            serveEvents();
            EXPECT_FALSE(processEnding());
            box.accept();
        });
        showMessage(u"still to be read"_s);
        serveEventsUntil([] { return false; });
    }));
}

TEST(Screen, MadeByNewGoesByItselfButNotBelowARoutineThatWaits)
{
    Probe &busy = theScreen<Probe>();
    EXPECT_EQ(&theScreen<Probe>(), &busy);
    const QPointer waiting(&busy);
    busy.go_Click = [&] {
        later([&] { busy.unload(); });
        for (int i = 0; i < 5; ++i)
            serveEvents();
        EXPECT_FALSE(waiting.isNull());
        EXPECT_FALSE(busy.isLoaded());
        EXPECT_NE(&theScreen<Probe>(), &busy); // made anew
    };
    busy.load();
    click(busy, "cmdGo");
    serveEvents();
    EXPECT_TRUE(waiting.isNull());

    const QPointer shown(&theScreen<Probe>());
    onModal<Probe>([](Probe &modal) { modal.unload(); });
    shown->showModal();
    serveEvents();
    EXPECT_TRUE(shown.isNull());
}

} // namespace
