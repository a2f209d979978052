#include "RecordingVfs.h"

#include <map>
#include <string>

namespace {

using Kind = Operation::Kind;

/// A file that SQLite has open: the system's, with this VFS in the place of what changes it.
struct OpenedFile {
    std::string name;
    const sqlite3_io_methods* system;
    sqlite3_io_methods recording;
};

std::vector<Operation>* g_operations = nullptr;
sqlite3_vfs* g_system = nullptr;
sqlite3_syscall_ptr g_systemOpenFolder = nullptr;
std::map<sqlite3_file*, OpenedFile> g_openedFiles;

constexpr const char* OPEN_FOLDER = "openDirectory";

std::string nameOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

int writeFile(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset)
{
    const OpenedFile& opened = g_openedFiles.at(file);
    const int code = opened.system->xWrite(file, bytes, size, offset);
    if (code == SQLITE_OK) {
        g_operations->push_back(
            {Kind::WRITE, opened.name, static_cast<std::size_t>(offset),
             std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(size))});
    }
    return code;
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size)
{
    const OpenedFile& opened = g_openedFiles.at(file);
    const int code = opened.system->xTruncate(file, size);
    if (code == SQLITE_OK) {
        g_operations->push_back({Kind::TRUNCATE, opened.name, static_cast<std::size_t>(size), ""});
    }
    return code;
}

int syncFile(sqlite3_file* file, int flags)
{
    const OpenedFile& opened = g_openedFiles.at(file);
    // Recorded first: the system's VFS goes on to the folder, where that is due.
    g_operations->push_back({Kind::SYNC, opened.name, 0, ""});
    return opened.system->xSync(file, flags);
}

int closeFile(sqlite3_file* file)
{
    file->pMethods = g_openedFiles.at(file).system;
    g_openedFiles.erase(file);
    return file->pMethods->xClose(file);
}

bool exists(const char* path)
{
    int found = 0;
    g_system->xAccess(g_system, path, SQLITE_ACCESS_EXISTS, &found);
    return found != 0;
}

void record(sqlite3_file* file, const std::string& name)
{
    OpenedFile& opened = g_openedFiles[file];
    opened = {name, file->pMethods, *file->pMethods};
    opened.recording.xWrite = writeFile;
    opened.recording.xTruncate = truncateFile;
    opened.recording.xSync = syncFile;
    opened.recording.xClose = closeFile;
    file->pMethods = &opened.recording;
}

int openFile(sqlite3_vfs* /*vfs*/, const char* path, sqlite3_file* file, int flags, int* flagsUsed)
{
    constexpr int RECORDED = SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_MAIN_JOURNAL | SQLITE_OPEN_WAL;
    const bool isRecorded = path != nullptr && (flags & RECORDED) != 0;
    const bool isNew = isRecorded && !exists(path);
    const int code = g_system->xOpen(g_system, path, file, flags, flagsUsed);
    if (code == SQLITE_OK && isRecorded) {
        record(file, nameOf(path));
        if (isNew) {
            g_operations->push_back({Kind::CREATE, nameOf(path), 0, ""});
        }
    }
    return code;
}

int openFolder(const char* path, int* descriptor)
{
    // SQLite opens a folder to sync it, and for nothing else.
    g_operations->push_back({Kind::SYNC_FOLDER, "", 0, ""});
    return reinterpret_cast<int (*)(const char*, int*)>(g_systemOpenFolder)(path, descriptor);
}

int removeFile(sqlite3_vfs* /*vfs*/, const char* path, int syncFolder)
{
    // Recorded in between: the system's VFS removes the file, and then syncs the folder.
    const bool isThere = exists(path);
    const std::size_t before = g_operations->size();
    const int code = g_system->xDelete(g_system, path, syncFolder);
    if (isThere && !exists(path)) {
        g_operations->insert(g_operations->begin() + static_cast<std::ptrdiff_t>(before),
                             {Kind::REMOVE, nameOf(path), 0, ""});
    }
    return code;
}

}  // namespace

RecordingVfs::RecordingVfs() : m_vfs(*sqlite3_vfs_find(nullptr))
{
    g_operations = &m_operations;
    g_system = sqlite3_vfs_find(nullptr);
    g_systemOpenFolder = g_system->xGetSystemCall(g_system, OPEN_FOLDER);
    g_system->xSetSystemCall(g_system, OPEN_FOLDER,
                             reinterpret_cast<sqlite3_syscall_ptr>(openFolder));
    m_vfs.zName = "recording";
    m_vfs.xOpen = openFile;
    m_vfs.xDelete = removeFile;
    sqlite3_vfs_register(&m_vfs, 1);
}

RecordingVfs::~RecordingVfs()
{
    sqlite3_vfs_unregister(&m_vfs);
    sqlite3_vfs_register(g_system, 1);
    g_system->xSetSystemCall(g_system, OPEN_FOLDER, g_systemOpenFolder);
    g_operations = nullptr;
}
