#include "stress/soak_hand.h"

#include "platform/ui/flex_grid.h"
#include "platform/ui/screen.h"
#include "walkthrough/hand.h"

#include <QtCore/QFile>
#include <QtWidgets/QComboBox>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

Screen &loaded(const char *name)
{
    for (Screen *screen : Screen::loadedScreens()) {
        if (screen->objectName() == QLatin1StringView(name))
            return *screen;
    }
    throw std::runtime_error(std::string("no ") + name + " was opened");
}

void useScreen(Screen &mainScreen, const char *button, const char *name, const SoakUser::Action &use)
{
    hand::click(mainScreen, "Command3");
    Screen &changes = loaded("frmChanges");
    hand::click(changes, button);
    Screen &screen = loaded(name);
    use(screen);
    hand::click(screen, "cmdClose");
    hand::click(changes, "Command9");
}

FlexGrid &gridOf(Screen &screen)
{
    return dynamic_cast<FlexGrid &>(hand::reach(screen, "FGrid"));
}

QString someDay(SoakUser &user)
{
    return u"%1/%2/2004"_s.arg(1 + user.pick(28), 2, 10, QChar(u'0'))
        .arg(1 + user.pick(12), 2, 10, QChar(u'0'));
}

QString someText(SoakUser &user)
{
    const QString texts[] = {u"planted %1"_s, u"planted rent of house %1"_s, u"planted إيجار العمارة %1"_s};
    return texts[user.pick(3)].arg(user.pick(1'000'000));
}

void chooseSome(Screen &screen, SoakUser &user, const char *combo)
{
    const auto &box = dynamic_cast<QComboBox &>(hand::reach(screen, combo));
    hand::choose(screen, combo, box.itemText(user.pick(box.count())));
}

void chooseDates(Screen &screen, SoakUser &user, const QString &from, const QString &to)
{
    user.onModal("frmSelectDates", [=](Screen &dates) {
        hand::fill(dates, "DateFromx", from);
        hand::fill(dates, "DateTox", to);
        hand::click(dates, "cmdOK");
    });
    hand::click(screen, "btnDateSelect");
}

void readReport(Screen &preview, SoakUser &user)
{
    constexpr const char *buttons[] = {"cmdNext",    "cmdLast",     "cmdPrevious", "cmdFirst",
                                       "cmdZoomOut", "cmdFitWidth", "cmdFitPage",  "cmdZoomIn"};
    for (int i = user.pick(4); i > 0; --i)
        hand::click(preview, buttons[user.pick(8)]);
    if (user.oneIn(3)) {
        hand::click(preview, user.oneIn(4) ? "cmdPrint" : "cmdSave");
        expectFile(user);
    }
    hand::click(preview, "cmdClose");
}

void expectFile(const SoakUser &user)
{
    QFile file(user.lastFile);
    if (!file.open(QFile::ReadOnly) || file.size() == 0)
        throw std::runtime_error("nothing was saved at " + user.lastFile.toStdString());
    if (user.lastFile.endsWith(u".pdf") && !file.read(5).startsWith("%PDF-"))
        throw std::runtime_error("no PDF at " + user.lastFile.toStdString());
}
