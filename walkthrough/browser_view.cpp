#include "browser_view.h"

#include "hand.h"
#include "platform/ui/flex_grid.h"
#include "platform/ui/screen.h"
#include "player.h"

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

FlexGrid &gridOf(const Screen &screen)
{
    return dynamic_cast<FlexGrid &>(hand::reach(screen, "FGrid"));
}

QStringList column(const Screen &screen, const QString &field)
{
    const FlexGrid &grid = gridOf(screen);
    QStringList texts;
    for (int row = grid.fixedRows(); row < grid.rows(); ++row)
        texts << grid.textMatrix(row, grid.columnOf(field));
    return texts;
}

QStringList sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

void expect(const QStringList &found, const QStringList &expected, const QString &what)
{
    if (found != expected)
        throw std::runtime_error(
            u"%1: found %2; expected %3"_s.arg(what, found.join(u" | "_s), expected.join(u" | "_s))
                .toStdString());
}

void chooseInBrowser(Player &player, const char *menu, const char *entry)
{
    player.onIdle(browser, [=](Screen &screen) { hand::chooseMenu(screen, menu, entry); });
}

void closeBrowser(Player &player)
{
    player.onIdle(browser, [](Screen &screen) { hand::click(screen, "cmdClose"); });
}
