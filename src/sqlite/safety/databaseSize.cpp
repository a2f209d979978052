#include "databaseSize.h"

#include <sqlite3.h>

namespace {

long long fileSize(sqlite3* db, int whichFile)
{
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    if (sqlite3_file_control(db, "main", whichFile, static_cast<void*>(&file)) == SQLITE_OK &&
        file->pMethods != nullptr) {
        file->pMethods->xFileSize(file, &size);
    }
    return size;
}

}  // namespace

long long databaseSize(sqlite3* db)
{
    return fileSize(db, SQLITE_FCNTL_FILE_POINTER) + fileSize(db, SQLITE_FCNTL_JOURNAL_POINTER);
}
