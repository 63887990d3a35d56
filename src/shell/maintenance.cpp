#include "shell/maintenance.h"

#include "core/engine.h"
#include "core/typed_input.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/progress.h"
#include "presentation/work_name.h"
#include "store/compaction.h"

#include <QtCore/QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr qint64 largeStore = 20'000'000; // bytes, that take a second or more

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
    {
        ProgressNotice notice(workName(Work::Waiting), {});
        // It has to stand before the long statements begin: no window can come up in the middle of one.
        QLabel *line = QFileInfo(engine.activeStorePath).size() > largeStore ? notice.show() : nullptr;
        const ProgressLine waiting(line, workName(Work::Waiting));
        if (engine.dbConnection->isOpen())
            engine.dbConnection->close();
        engine.compactSucceeded =
            CompactStore(engine.activeStorePath, engine.compactTempPath, engine.storePassword);
    }
    engine.dbConnection->open(engine.connectionString);
    reportAndStamp();
}
