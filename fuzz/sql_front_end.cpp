#include "fuzz/support.h"
#include "platform/database/errors.h"
#include "platform/database/recordset.h"

using namespace Qt::Literals::StringLiterals;

/// A statement text on a seeded store; whatever it writes is rolled back.
FUZZ_HARNESS(sql_front_end)
{
    const ConnectionPtr &store = fuzz::seededStore();
    const QString text = QString::fromUtf8(input);
    store->beginTrans();
    const auto refused = fuzz::refusal([&] {
        const RecordsetPtr rows = Recordset::create();
        rows->open(text, store, CursorType::Static, LockType::Optimistic);
        if (!rows->isOpen())
            return;
        for (int row = 0; row < rows->rowCount(); ++row) {
            for (int field = 0; field < rows->fieldCount(); ++field)
                rows->valueAt(row, field).toText();
        }
    });
    // What the dialect takes, the engine must take too: only what depends on the rows may fail there.
    const int engineFailure = data_errors::engineFailure({}).number();
    if (refused && refused->number() == engineFailure &&
        refused->description() != data_errors::duplicateKey().description()) {
        std::fprintf(stderr, "%s\n", refused->what());
        fuzz::require(false, "the engine takes what the dialect takes");
    }
    store->rollbackTrans();
}
