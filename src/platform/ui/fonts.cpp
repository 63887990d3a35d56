#include "platform/ui/fonts.h"

#include <QtCore/QStringList>

using namespace Qt::Literals::StringLiterals;

QFont readableFont(const QString &family, int points, bool bold)
{
    QStringList families;
    if (!family.isEmpty())
        families << family;
    families << u"Noto Sans"_s << u"Noto Sans Arabic"_s << u"DejaVu Sans"_s;
    families.removeDuplicates();

    QFont font;
    font.setFamilies(families);
    font.setPointSize(points < 1 ? 1 : points);
    font.setBold(bold);
    font.setStyleHint(QFont::SansSerif);
    return font;
}
