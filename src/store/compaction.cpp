#include "store/compaction.h"

#include "platform/database/compaction.h"
#include "platform/runtime/files.h"
#include "store/connection_strings.h"

using namespace Qt::Literals::StringLiterals;

bool CompactStore(const QString &sourcePath, const QString &tempPath, const QString &password)
{
    if (fileExists(tempPath))
        deleteFile(tempPath); // left by an earlier crash
    compactStoreFile(connectionStringOf(sourcePath, password),
                     connectionStringOf(tempPath, password, u";Jet OLEDB:Engine Type=5"_s));
    // One replacing rename instead of a delete and a rename: a crash between those two would leave no store.
    replaceFile(tempPath, sourcePath);
    return true;
}
