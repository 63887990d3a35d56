#include "shell/maintenance.h"

#include "core/engine.h"
#include "core/typed_input.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/hourglass.h"
#include "store/compaction.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

void reportAndStamp()
{
    if (!engine.compactSucceeded) {
        // For a result that CompactStore never gives; kept as its counterpart.
        showMessage(u"Failed"_s + u"\r\n"_s + u"لم تتم العمليه بنجاح"_s);
        return;
    }
    showMessage(u"Successful"_s + u"\r\n"_s + u"تمت العمليه بنجاح"_s);
    engine.lastCompacted = today();
    engine.dbConnection->execute(u"update settings set lastcompacted='"_s +
                                 generalDate(engine.lastCompacted) + u"'"_s);
}

} // namespace

void maintainStore()
{
    showMessage(u"Please wait..  database is being maintained"_s + u"\r\n"_s + u"\r\n"_s +
                u"فضلا إنتظر قليلا حتى تتم صيانة قاعدة البيانات"_s);
    saveTypedInput();
    if (engine.dbConnection->isOpen())
        engine.dbConnection->close();
    {
        const Hourglass hourglass;
        engine.compactSucceeded =
            CompactStore(engine.activeStorePath, engine.compactTempPath, engine.storePassword);
    }
    engine.dbConnection->open(engine.connectionString);
    reportAndStamp();
}
