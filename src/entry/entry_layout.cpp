#include "entry/entry_layout.h"

#include "entry/member_selection.h"
#include "platform/ui/screen.h"

#include <QtGui/QScreen>
#include <QtWidgets/QScrollArea>

#include <algorithm>
#include <utility>

namespace
{

constexpr int margin = 12;         ///< between the areas of the screen, in pixels
constexpr int titleBarHeight = 40; ///< of a window that is not shown yet
constexpr int groupLinesShown = 3; ///< more lines of group buttons scroll

} // namespace

EntryLayout::EntryLayout(Parts parts)
    : m_parts(std::move(parts)), m_leastHeight(m_parts.screen->surface()->minimumHeight())
{
}

void EntryLayout::grow() const
{
    Screen &screen = *m_parts.screen;
    QWidget &surface = *screen.surface();
    const int bars = screen.minimumSizeHint().height() - surface.minimumHeight();
    const int title = screen.isVisible() ? screen.frameGeometry().height() - screen.height() : titleBarHeight;
    const int room = screen.screen()->availableGeometry().height() - title - bars;
    const int needed =
        memberTop() + m_parts.members->memberHeight() + margin + m_parts.commands.front()->height() + margin;
    surface.setMinimumHeight(std::min(needed, std::max(room, m_leastHeight)));
    screen.resize(screen.width(), std::max(screen.height(), bars + surface.minimumHeight()));
    layOut();
}

void EntryLayout::layOut() const
{
    const int commandTop = m_parts.screen->surface()->height() - margin - m_parts.commands.front()->height();
    for (QWidget *command : m_parts.commands)
        command->move(command->x(), commandTop);
    const MemberSelection &members = *m_parts.members;
    m_parts.groupArea->setFixedHeight(std::min(members.groupHeight(), members.groupHeight(groupLinesShown)));
    QScrollArea *area = m_parts.memberArea;
    area->setGeometry(area->x(), memberTop(), area->width(), commandTop - margin - memberTop());
    m_parts.members->layOut();
}

int EntryLayout::memberTop() const
{
    return m_parts.groupArea->y() + std::max(m_parts.groupArea->height(), m_parts.besideGroups->height()) +
           margin;
}
