#pragma once

#include <sqlite3.h>

/// Called by SQLite with each connection that is opened.
using OnOpen = int (*)(sqlite3* db, char** errorText, const sqlite3_api_routines* api);

void addAutoExtension(OnOpen onOpen);
void removeAutoExtension(OnOpen onOpen);
