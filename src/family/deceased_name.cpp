#include "family/deceased_name.h"

#include "core/engine.h"
#include "platform/ui/dialogs.h"

using namespace Qt::Literals::StringLiterals;

void recordDeceasedName()
{
    const QString name =
        askText(u"فضلاً أدخل إسم المورٍث"_s, u"تسجيل إسم الأب الذي إنتقل إلى رحمة الله"_s, engine.deceasedName);
    // Asked whatever was typed, also after a Cancel. Meant.
    if (!askYesNo(engine.textAreYouSure) || name.isEmpty() || name == engine.deceasedName)
        return;
    engine.dbConnection->execute(u"update settings set desceased='"_s + name + u'\'');
    engine.deceasedName = name;
}
