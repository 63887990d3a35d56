#include "store/compaction.h"

#include "platform/database/store_file.h"
#include "store/connection_strings.h"
#include "store/files.h"

bool CompactStore(const QString &sourcePath, const QString &tempPath, const QString &password)
{
    if (fileExists(tempPath))
        deleteFile(tempPath); // left by an earlier crash
    compactStoreFile(connectionStringOf(sourcePath, password), connectionStringOf(tempPath, password));
    // One replacing rename instead of a delete and a rename: a crash between those two would leave no store.
    replaceFile(tempPath, sourcePath);
    return true;
}
