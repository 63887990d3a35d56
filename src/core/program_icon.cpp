#include "core/program_icon.h"

using namespace Qt::Literals::StringLiterals;

// Outside of every namespace, as the toolkit asks. A static library's resources are not there by themselves.
static void loadPictures()
{
    Q_INIT_RESOURCE(program_icon);
}

namespace
{

QString pictureOf(int side)
{
    return u":/icons/quvana-%1.png"_s.arg(side);
}

} // namespace

QIcon programIcon()
{
    loadPictures();
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(pictureOf(side));
    return icon;
}

QPixmap programPicture()
{
    loadPictures();
    return QPixmap(pictureOf(256));
}
