#pragma once

#include <sqlite3.h>

#include <vector>

#include "Operation.h"

/// While it lives, SQLite works through it by default: it hands everything on to the system's VFS
/// and records what is done to databases, their journals and logs. One at a time, to be made before
/// a database is opened, and to go after it is closed.
///
/// A log's index (-shm) is not recorded: it is memory shared by processes, and whoever opens the
/// database first after a power cut makes it anew.
class RecordingVfs {
public:
    RecordingVfs();
    ~RecordingVfs();
    RecordingVfs(const RecordingVfs&) = delete;
    RecordingVfs& operator=(const RecordingVfs&) = delete;

    const std::vector<Operation>& operations() const { return m_operations; }

private:
    std::vector<Operation> m_operations;
    sqlite3_vfs m_vfs;
};
