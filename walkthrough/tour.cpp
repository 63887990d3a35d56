#include "tour.h"

#include "every_screen.h"
#include "hand.h"
#include "platform/ui/screen.h"

using namespace Qt::Literals::StringLiterals;

void takeTour(const QString &folder)
{
    for (const Look look :
         {Look{true, 8, true}, Look{false, 8, true}, Look{true, 12, false}, Look{false, 12, false}}) {
        const QString suffix = u"-%1-%2.png"_s.arg(look.arabic ? u"arabic"_s : u"english"_s).arg(look.points);
        visitEveryScreen(look, [&](Screen &screen, const QString &name) {
            hand::savePicture(screen, folder + u'/' + name + suffix);
        });
    }
}
