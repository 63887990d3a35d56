#include "tour.h"

#include "core/engine.h"
#include "entry/frmExpense.h"
#include "entry/frmRevenue.h"
#include "family/frmMembers.h"
#include "platform/ui/application.h"
#include "platform/ui/controls.h"
#include "presentation/prepare_screen.h"
#include "shell/frmLogin.h"
#include "shell/frmMain.h"
#include "users/frmChanges.h"
#include "users/frmNewUser.h"
#include "utilities/frmSelectDates.h"

#include <QtCore/QDir>
#include <QtCore/QHash>

using namespace Qt::Literals::StringLiterals;

namespace
{

struct Look {
    bool arabic;
    qint16 points;
    bool bold;
};

void takePicture(Screen &screen, const QString &file)
{
    serveEvents();
    screen.grab().save(file);
}

/// Loads an instance of its own and drops it without unloading: the main screen's unload would close the
/// store.
template <typename Class>
void pictureOf(const QString &folder, const QString &suffix)
{
    Class screen;
    screen.load();
    screen.show();
    takePicture(screen, folder + u'/' + screen.objectName() + suffix);
}

/// The login screen chooses Arabic by itself when it loads: for an English picture its own captions are put
/// back.
void pictureOfLogin(const QString &folder, const QString &suffix, bool arabic)
{
    frmLogin screen;
    QHash<QObject *, QString> captions;
    for (QObject *control : controlsOf(screen))
        captions.insert(control, captionOf(control));
    screen.load();
    if (!arabic) {
        engine.isArabic = false;
        for (auto it = captions.cbegin(); it != captions.cend(); ++it)
            setCaption(it.key(), it.value());
        MirrorControls(screen);
        PrepareScreen(screen);
    }
    screen.show();
    takePicture(screen, folder + u'/' + screen.objectName() + suffix);
}

} // namespace

void takeTour(const QString &folder)
{
    QDir().mkpath(folder);
    const Engine before = engine; // frmLogin also sets the user: all of it is put back at the end
    for (const Look look :
         {Look{true, 8, true}, Look{false, 8, true}, Look{true, 12, false}, Look{false, 12, false}}) {
        engine.isArabic = look.arabic;
        engine.userFontName = u"Arial"_s;
        engine.userFontSize = look.points;
        engine.userFontBold = look.bold;
        const QString suffix = u"-%1-%2.png"_s.arg(look.arabic ? u"arabic"_s : u"english"_s).arg(look.points);
        pictureOfLogin(folder, suffix, look.arabic);
        pictureOf<frmMain>(folder, suffix);
        pictureOf<frmNewUser>(folder, suffix);
        pictureOf<frmChanges>(folder, suffix);
        pictureOf<frmMembers>(folder, suffix);
        pictureOf<frmExpense>(folder, suffix);
        pictureOf<frmRevenue>(folder, suffix);
        pictureOf<frmSelectDates>(folder, suffix);
    }
    engine = before;
}
