#include "checking.h"

#include "access.h"
#include "every_screen.h"
#include "hand.h"
#include "looks.h"
#include "platform/ui/screen.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
QString nameOf(const Look &look)
{
    return u"%1-%2%3"_s.arg(look.arabic ? u"arabic"_s : u"english"_s)
        .arg(look.points)
        .arg(look.bold ? u"-bold"_s : QString());
}

/// Also as small as its window can be made.
QStringList facesOf(Screen &screen)
{
    QStringList faults = lookFaults(screen);
    const QSize shown = screen.size();
    screen.resize(screen.minimumSizeHint());
    if (screen.size() == shown)
        return faults;
    for (const QString &fault : lookFaults(screen))
        faults << u"when small, "_s + fault;
    screen.resize(shown);
    return faults;
}
} // namespace

QStringList checkEveryScreen(const QString &folder)
{
    QStringList faults;
    const auto lookAt = [&](const Look &look) {
        visitEveryScreen(look, [&](Screen &screen, const QString &name) {
            const QString shown = name + u'-' + nameOf(look);
            const QStringList looks = facesOf(screen);
            if (!looks.isEmpty())
                hand::savePicture(screen, folder + u'/' + shown + u".png"_s);
            QStringList found = looks;
            if (look.points == 8 && !look.bold) // letters change nothing for who does not see them
                found << accessFaults(screen);
            for (const QString &fault : found)
                faults << shown + u": "_s + fault;
        });
    };
    for (const bool arabic : {true, false}) {
        for (const qint16 points : {qint16(8), qint16(10), qint16(12)})
            for (const bool bold : {false, true})
                lookAt({arabic, points, bold});
        lookAt({arabic, 18, true}); // comes with the next login when it was chosen once
    }
    return faults;
}
