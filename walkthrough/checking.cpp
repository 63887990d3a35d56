#include "checking.h"

#include "access.h"
#include "every_screen.h"
#include "looks.h"
#include "platform/ui/screen.h"

using namespace Qt::Literals::StringLiterals;

QStringList checkEveryScreen()
{
    QStringList faults;
    for (const bool arabic : {true, false})
        for (const qint16 points : {8, 10, 12})
            for (const bool bold : {false, true}) {
                const QString place = u"%1 %2 %3: "_s.arg(arabic ? u"arabic"_s : u"english"_s)
                                          .arg(points)
                                          .arg(bold ? u"bold"_s : u"plain"_s);
                visitEveryScreen({arabic, points, bold}, [&](Screen &screen, const QString &name) {
                    for (const QString &fault : lookFaults(screen) + accessFaults(screen))
                        faults << name + u' ' + place + fault;
                });
            }
    return faults;
}
